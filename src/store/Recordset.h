#pragma once

#include "store/Database.h"
#include "store/Value.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace pontrel {

/// State of a recordset's current row.
enum class EditMode { None = 0, Edit = 1, Add = 2 };

/// A set of rows with a current row. Over a table, a plain selection from one, or a join that takes one table
/// whole, it is a keyset: identities are read at once, a row when it becomes current, so that it is seen as
/// it is now, and row operations act on that table. Any other set is a snapshot that cannot be edited (error
/// 3027). Movable, not copyable. The set must not outlive its connection.
class Recordset {
  public:
    Recordset(); ///< A closed set: every operation but Close throws error 91.
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    [[nodiscard]] bool isOpen() const;
    void Close(); ///< Gives the rows free; on a closed set it does nothing.

    // Position. A move in an empty set throws 3021; MoveNext past the last row sets AtEOF, MovePrevious past
    // the first AtBOF, and a further move that way throws 3021. Moving drops an edit that was not updated.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    [[nodiscard]] bool AtEOF() const;
    [[nodiscard]] bool AtBOF() const;
    [[nodiscard]] qint64 RecordCount() const;
    [[nodiscard]] qint64
    AbsolutePosition() const;     ///< From 0; 0 for an empty set, -1 before or behind the rows.
    void moveTo(qint64 position); ///< Makes the row at that position, from 0, current.

    /// A mark of the current row that stays good until the set is closed or run again.
    [[nodiscard]] qint64 Bookmark() const;
    void setBookmark(qint64 mark);             ///< Throws 3167 where the row is no longer in the set.
    [[nodiscard]] qint64 LastModified() const; ///< Mark of the row saved last; throws 3021 before any save.

    /// Makes the first row, in the set's order, that meets the condition current; without a match the row
    /// stays.
    void FindFirst(const QString& condition);
    [[nodiscard]] bool NoMatch() const; ///< Whether the last FindFirst found nothing.

    // Columns, by name in any case of letters (3265 where there is none) or by position.
    [[nodiscard]] QStringList columns() const;
    [[nodiscard]] ColumnType columnType(const QString& column) const;
    [[nodiscard]] Value
    field(const QString& column) const; ///< Of the edit buffer while editing; null for a deleted row.
    [[nodiscard]] Value field(int column) const;
    void setField(const QString& column,
                  const Value& value); ///< Writes to the edit buffer; 3020 without one.

    /// The values of the row at that position, without moving. Nulls for a row deleted meanwhile.
    [[nodiscard]] std::vector<Value> rowAt(qint64 position) const;
    /// The same for as many rows as there are from that position on, at most `count`, as they stand at one
    /// moment. Nobody can write while they are read: for some hundred at a time.
    [[nodiscard]] std::vector<std::vector<Value>> rowsAt(qint64 position, qint64 count) const;

    // Editing. Edit and AddNew fill a buffer in memory. Update writes the columns changed since: 3022 a key
    // is taken, 3314 a required column is empty, 3421 a text that its column cannot hold, 3167 the row is
    // gone.
    [[nodiscard]] EditMode editMode() const;
    void AddNew();
    void Edit();
    void
    Update(); ///< After an AddNew the row current before it stays current; LastModified marks the new one.
    void CancelUpdate(); ///< Drops the buffer; nothing without one.
    void Delete(); ///< Deletes the current row; it leaves the set, and no row is current until the next move.

  private:
    friend class Database;
    struct Set;
    explicit Recordset(std::unique_ptr<Set> set);
    [[nodiscard]] Set& set() const;
    std::unique_ptr<Set> set_;
};

} // namespace pontrel
