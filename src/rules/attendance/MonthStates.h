#pragma once

#include "rules/attendance/EmployeeDay.h"
#include "store/Database.h"

#include <QDate>
#include <QString>

#include <vector>

namespace pontrel {

/// How a day of an employee stands. Of several that would fit, the first one counts.
enum class DayState {
    Exception,  ///< An exception, but for those of Late.
    Late,       ///< Lateness or early leave, and no punch missing.
    Leave,      ///< A position is covered by leave.
    WrittenOff, ///< A position is written off.
    InOrder,
    NoResult, ///< On the roster, not calculated.
    LeftOut,  ///< On the roster, and in no calculation: not employed, or of a slot that is gone.
    DayOff,   ///< Rest by the roster; or of the holiday calendar, and not on the roster.
    NoRoster
};
inline constexpr int DayStateCount = static_cast<int>(DayState::NoRoster) + 1;

struct MonthDay {
    QDate date;
    DayState state = DayState::NoRoster;
};

/// By what a result row holds.
[[nodiscard]] DayState stateOf(DayRow row);

/// The days of the month that holds the day, in their order. The store holds results, roster and holidays of
/// one employee alone, and his dates with the leaving date filled as for a calculation. Throws RunTimeError.
[[nodiscard]] std::vector<MonthDay> statesOfMonth(Database& database, QDate day);

/// The name of the state, and a sign that tells it without colour.
[[nodiscard]] QString stateName(DayState state);
[[nodiscard]] QString stateSign(DayState state);

} // namespace pontrel
