#pragma once

#include "store/Database.h"
#include "store/Value.h"

#include <QString>
#include <QStringList>

#include <map>
#include <vector>

namespace pontrel::test {

/// A row as one text: cells separated by "|"; null, True and False, whole numbers, reals with a decimal
/// point, dates and times bare, texts in single quotes. Three or more equal cells in a row are told once, as
/// null*12.
[[nodiscard]] QString renderRow(const std::vector<Value>& row);
[[nodiscard]] QStringList renderRows(const Rows& rows);

/// What the file of a store holds, read by the engine itself and not through the statement language: dates
/// and times appear as the texts, booleans as the numbers that are stored.
class Snapshot {
  public:
    explicit Snapshot(const QString& path);

    /// Rows of the table.
    [[nodiscard]] std::size_t count(const QString& table) const { return tables_.at(table).rows.size(); }

    /// What this snapshot has that the earlier one had not, in the order of the tables and of insertion:
    /// "Table -1 4" the rows deleted, by their number of insertion; "Table ~2 Column=value Column=value" a
    /// row changed; "Table +cell|cell" a row inserted, in full.
    [[nodiscard]] QStringList differencesFrom(const Snapshot& earlier) const;

  private:
    struct Content {
        QStringList columns;
        std::map<qint64, QStringList> rows; ///< By the number of insertion.
    };
    std::map<QString, Content> tables_;
};

/// The tables that a store has, in the order in which a snapshot tells them.
[[nodiscard]] const QStringList& storeTables();

} // namespace pontrel::test
