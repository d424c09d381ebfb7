#pragma once

#include <QStringList>

namespace pontrel::test {

/// The rows of a table that a formula selects, each by a column of its own, in the order of their insertion.
/// They are read as the report engine reads them: the table beside the Base06 row of the same EmpNo where it
/// has such a column, by a connection that knows no functions of the program's.
[[nodiscard]] QStringList selectedRows(const QString& path, const QString& table, const QString& column,
                                       const QString& formula);

} // namespace pontrel::test
