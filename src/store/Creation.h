#pragma once

#include <QString>
#include <QStringList>

namespace pontrel {

struct Table;

// Pieces of a store's creation, in the engine's language, which its upgrade shares.

/// The statement that creates the table under that name.
[[nodiscard]] QString tableDefinition(const Table& table, const QString& name);

/// The tables that grow by the day, whose keys begin with it.
[[nodiscard]] QStringList dailyTables();

/// The index by which the counts of an employee's write-offs are found.
[[nodiscard]] QString viewReasonIndex();

/// The statement that creates the table of the copy marks: see CopyMarks.
[[nodiscard]] QString copyMarkTable();

/// What the engine is told about the keys of the daily tables, so that it answers a question by employee from
/// them, day by day, without having looked at the rows.
[[nodiscard]] QStringList keyStatistics();

} // namespace pontrel
