#pragma once

#include "store/Database.h"
#include "support/Builders.h"

#include <QStringList>

namespace pontrel::test {

/// All rows of the table in its own order, one text each: the columns' values between bars, a null as "null",
/// a date as 2001-03-05, a time as 08:00:00, a boolean as True or False.
[[nodiscard]] QStringList rowsOf(Database& database, const QString& table);

/// The rows of a selection, likewise.
[[nodiscard]] QStringList rowsOfSelection(Database& database, const QString& statement);

/// What rowsOf() tells of a row of the table that was inserted with these fields alone: a test names what it
/// expects to be there, and everything else must be as a row starts.
[[nodiscard]] QString expectedRow(const QString& table, const Fields& fields);

/// The same for the rows of AtteTemp1, Atte02 and Atte03, which have the same columns.
[[nodiscard]] QString dailyRow(const QString& EmpNo, QDate day, const QString& TimeNo,
                               const Fields& more = {});

/// The tables that the daily work writes, each row led by its table's name, for comparing whole stores.
[[nodiscard]] QStringList dumpDailyTables(Database& database);

} // namespace pontrel::test
