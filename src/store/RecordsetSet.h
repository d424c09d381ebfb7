#pragma once

#include "store/Connection.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <optional>

namespace pontrel {

/// The rows behind a recordset: identities of a keyset, or all values of a snapshot.
struct Recordset::Set {
    struct Row {
        std::vector<Value> values;
        bool deleted = false; ///< The row is no longer in its table.
    };

    [[nodiscard]] static std::unique_ptr<Set> open(const std::shared_ptr<Database::Connection>& connection,
                                                   const QString& text);

    [[nodiscard]] qint64 count() const { return static_cast<qint64>(identities.size()); }
    [[nodiscard]] std::size_t indexOf(const QString& column) const; ///< Throws 3265.
    void requireRows() const;                                       ///< Throws 3021 for an empty set.
    void requireCurrent() const;  ///< Throws 3021 or, on a deleted row, 3167.
    void requireEditable() const; ///< Throws 3027 for a snapshot.

    void place(qint64 newPosition);
    [[nodiscard]] Row read(qint64 at);
    [[nodiscard]] std::vector<std::vector<Value>> read(qint64 first, qint64 end);
    [[nodiscard]] const std::vector<Value>& current();
    [[nodiscard]] bool currentDeleted();
    [[nodiscard]] std::optional<qint64> firstMatch(const QString& condition);

    [[nodiscard]] std::vector<Value>
    blankRow() const; ///< As a row starts that is inserted without any column.
    void beginBuffer(EditMode newMode, std::vector<Value> values);
    void dropBuffer();
    void writeNew();
    void writeChanges();
    void deleteCurrent();

    std::shared_ptr<Database::Connection> connection;
    QStringList columns;
    std::vector<ColumnType> types;
    const Table* table = nullptr; ///< Null for a snapshot.
    std::vector<int> tableColumns;
    std::vector<int> ridingColumns;
    QByteArray rowSql;
    std::vector<statement::LiteralForm> literalForms;
    std::vector<Value> literals;

    std::vector<qint64> identities;         ///< Of a snapshot: the rows' numbers.
    std::vector<std::vector<Value>> riding; ///< A keyset's riding columns, or all of a snapshot's, by row.
    std::vector<qint64> ridingRow;          ///< Place in riding by position; empty where riding is.

    qint64 position = 0;
    bool gap = false; ///< The current row has just been deleted; the position is its successor's.
    std::optional<Row> loaded;
    EditMode mode = EditMode::None;
    std::vector<Value> buffer;
    std::vector<bool> changed;
    std::optional<qint64> lastModified;
    bool noMatch = false;

  private:
    void readKeyset(const statement::SelectPlan& plan);
    void readSnapshot(const statement::SelectPlan& plan, SQLite::Statement& main);
    [[nodiscard]] std::vector<std::pair<QString, Value>> changedColumns() const;
    [[nodiscard]] std::optional<qint64> firstMatchByTable(const statement::ConditionPlan& plan,
                                                          const std::vector<Value>& values);
    [[nodiscard]] std::optional<qint64> firstMatchByRow(const statement::ConditionPlan& plan,
                                                        const std::vector<Value>& values);
};

} // namespace pontrel
