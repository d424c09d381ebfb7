#pragma once

#include "rules/attendance/EmployeeDay.h"

#include <cstdint>
#include <cstdlib>
#include <optional>

namespace pontrel {

/// What a morning of four punches must last, in minutes.
inline constexpr int HalfDayMinutes = 240;

/// Seconds between the two punches of the morning, where both are there and neither leave nor a write-off
/// excuses one. Deliberate: the size counts, whichever of the two is the later.
[[nodiscard]] inline std::optional<std::int64_t> judgedMorning(DayRow& row) {
    const bool punched = row.Time(1) != DayRow::NoTime && row.Time(2) != DayRow::NoTime;
    const bool excused = row.FH(1) != 0 || row.FC(1) != 0 || row.FH(2) != 0 || row.FC(2) != 0;
    if (!punched || excused)
        return {};
    return std::abs(row.Time(2) - row.Time(1));
}

} // namespace pontrel
