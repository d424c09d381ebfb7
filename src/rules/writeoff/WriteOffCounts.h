#pragma once

#include "store/Database.h"

#include <QDate>
#include <QString>

namespace pontrel {

/// Fills View01 anew, for whoever reads it, with the number of swipes of the employee that each reason has
/// written off from the first day to the last, both included; reasons that did not occur have no row. A
/// period that lacks a day, as of an empty box, is an empty one. Throws RunTimeError; the rows of the reasons
/// before then stay, also those that did not occur.
void CountWriteOffs(Database& database, const QString& EmpNo, QDate first, QDate last);

} // namespace pontrel
