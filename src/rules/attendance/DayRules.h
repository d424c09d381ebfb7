#pragma once

#include "rules/attendance/DayFacts.h"
#include "rules/attendance/EmployeeDay.h"
#include "rules/attendance/SlotTimes.h"

namespace pontrel {

// What is judged of one employee and day, in this order. Each works on all rows of the day.

/// Sets FH1 to FH4 from the leave rows of the day. Throws RunTimeError for a null in a row, and where a leave
/// of type "14" touches no part of the day.
void MarkLeaveCover(EmployeeDay& day, DayFacts::FactRows leave, const SlotTimes& slot);

/// Sets FC1 to FC4 from the write-off entry of the day.
void MarkWriteOffCover(EmployeeDay& day, DayFacts::FactRows writeOffs);

/// Writes the minutes of cushion, delay and early leave. Throws error 9 for a kind of elasticity that the
/// number of punches does not allow.
void CalcLateEarly(EmployeeDay& day, const SlotTimes& slot);

/// Sets DelayF, F1 to F4 and Expt, stores the rows, and moves them on: exceptions to Atte03; in a rerun also
/// all rows to Atte02, in place of what both tables held of the day. Throws RunTimeError.
void ClassifyExceptions(EmployeeDay& day, int CardType, bool rerun);

} // namespace pontrel
