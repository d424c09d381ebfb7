#pragma once

#include "store/RunTimeError.h"
#include "store/Value.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace pontrel {

class Recordset;
class StatementForm;

/// The rows of a query, all read at once, in their order. Columns are found by name in any case of letters.
class Rows {
  public:
    Rows(std::shared_ptr<const QStringList> columns, std::vector<std::vector<Value>> rows)
        : columns_(std::move(columns)), rows_(std::move(rows)) {}

    [[nodiscard]] std::size_t count() const { return rows_.size(); }
    [[nodiscard]] bool isEmpty() const { return rows_.empty(); }
    [[nodiscard]] const QStringList& columns() const { return *columns_; }
    [[nodiscard]] const std::vector<Value>& row(std::size_t row) const { return rows_.at(row); }
    [[nodiscard]] const Value& at(std::size_t row, std::size_t column) const {
        return rows_.at(row).at(column);
    }
    /// Throws error 3265 for a column that the query does not have.
    [[nodiscard]] const Value& at(std::size_t row, QStringView column) const;
    [[nodiscard]] auto begin() const { return rows_.begin(); }
    [[nodiscard]] auto end() const { return rows_.end(); }

  private:
    std::shared_ptr<const QStringList> columns_;
    std::vector<std::vector<Value>> rows_;
};

/// One connection to the store. Statements are texts in the program's own statement language; each call runs
/// one. No statement stays open between calls. Not copyable; a recordset must not outlive its connection.
class Database {
  public:
    /// Opens an existing store for reading and writing. Throws 3024 where there is no file, 3343 where the
    /// file is not a store of this program, 3049 where it is damaged, 3051 where
    /// it cannot be read.
    explicit Database(const QString& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    [[nodiscard]] const QString& path() const;

    /// Runs an update, insert or delete. Rows that a key or a required column refuses are dropped without a
    /// word. Returns the number of rows changed. Throws RunTimeError.
    std::int64_t execute(const QString& statement);

    /// Runs the statement of that form with these values in place of its literals, one for each, of its kind
    /// or null. A text with an apostrophe breaks the statement (3075), as it does where it is joined. Throws
    /// RunTimeError.
    std::int64_t execute(const StatementForm& form, std::span<const Value> values);

    /// Runs a selection and reads all its rows. Throws RunTimeError.
    [[nodiscard]] Rows select(const QString& statement);

    /// Runs the selection of that form with these values in place of its literals, as execute() does.
    [[nodiscard]] Rows select(const StatementForm& form, std::span<const Value> values);

    /// Opens a table name or a selection as a set of rows that can be moved in and edited. Throws
    /// RunTimeError.
    [[nodiscard]] Recordset openRecordset(const QString& source);

    /// Runs a table name or a selection as openRecordset() does, but reads no more than its first row: for
    /// the errors of the statement, where nobody will look at the rows. Throws RunTimeError.
    void probe(const QString& source);

    /// Number of statements run on this connection since it was opened.
    [[nodiscard]] std::int64_t statementCount() const;

    [[nodiscard]] bool inStage() const;

    class Connection; ///< The prepared statements and the engine beneath; of use to this folder only.
    [[nodiscard]] const std::shared_ptr<Connection>& connection() const { return connection_; }

  private:
    std::shared_ptr<Connection> connection_;
};

/// Groups the statements of a long action into one transaction, which is committed when the guard ends, also
/// when an error leaves it. Guards nest: the outermost one counts. The destructor never throws; call finish()
/// to hear of a commit that failed.
class Stage {
  public:
    explicit Stage(Database& database);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// Commits now. Throws RunTimeError where the commit fails; the stage is then lost.
    void finish();

  private:
    std::shared_ptr<Database::Connection> connection_;
    bool open_ = true;
};

/// What is to be told of a failure: itself, or the error of a stage that could not be committed on its way
/// and is lost. For who catches an error at the end of an action.
[[nodiscard]] RunTimeError errorToTell(const RunTimeError& failure);

/// Commits open stages and closes every connection of the process. For the end of the program after an error;
/// no connection may be used afterwards. Never throws.
void closeAllConnections() noexcept;

} // namespace pontrel
