#pragma once

#include <QString>

namespace pontrel::test {

/// Turns a new store, closed and still of the present version, into one as version 1 laid it out: keys of the
/// daily tables that begin with the employee, indexes by day, and copy marks kept by triggers. Rows stay.
void layOutAsFirstVersion(const QString& store);

} // namespace pontrel::test
