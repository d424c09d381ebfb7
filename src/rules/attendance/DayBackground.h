#pragma once

#include "rules/attendance/SlotTimes.h"
#include "store/Database.h"

#include <QString>

namespace pontrel {

// What is told of an employee's day from the rows of the employee and of his slot. Each throws RunTimeError.

/// When the one employee of the store has come and left, as far as he is there.
[[nodiscard]] QString employmentText(Database& database);

/// The times of a slot that it does not set, each with the value that it has from a slot before it; empty
/// where there are none.
[[nodiscard]] QString carriedTimes(Database& database, const SlotTimes& slot);

} // namespace pontrel
