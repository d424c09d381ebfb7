#pragma once

#include "store/Database.h"

namespace pontrel {

/// The two tables that take rows by position from a staging table which is emptied only now and then.
enum class CopyTarget { Atte01, Atte02 };

/// Offers all rows of AtteTemp to Atte01, or of AtteTemp1 to Atte02, in the order of their insertion; rows
/// that the key refuses are dropped without a word. Rows known to be there already are passed over, so that
/// the cost does not grow with what earlier days left behind; the outcome is that of the full copy. Throws
/// RunTimeError.
void copyStaged(Database& database, CopyTarget target);

/// Puts the staged results of an employee's day in place of those in Atte02: a condition on EmpNo and
/// UseDate, with its "Where". Throws RunTimeError.
void replaceResults(Database& database, const QString& employeeAndDay);

} // namespace pontrel
