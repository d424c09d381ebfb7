#pragma once

#include <QTime>

#include <cstdint>

namespace pontrel {

/// Forward minutes from start to end, 0 to 1439, over midnight where the end is the earlier time of day.
/// Seconds do not count; equal times give 0.
[[nodiscard]] std::int16_t MinutesBetween(QTime start, QTime end);

/// The second of the day, 0 to 86399.
[[nodiscard]] inline int secondOfDay(QTime time) {
    return time.msecsSinceStartOfDay() / 1000;
}

/// The time as a statement that names hours and minutes alone has it.
[[nodiscard]] inline QTime cutToMinutes(QTime time) {
    return {time.hour(), time.minute()};
}

/// Whole hours that hold the minutes: 0 gives 0, 1 to 60 give 1, 61 gives 2.
[[nodiscard]] std::int16_t MinutesToHoursUp(std::int16_t minutes);

/// Whole hours in the minutes: 59 gives 0, 119 gives 1.
[[nodiscard]] std::int16_t MinutesToHours(std::int16_t minutes);

/// Sum, difference and product of 16-bit integers. Throw error 6 on overflow.
[[nodiscard]] std::int16_t add16(std::int16_t a, std::int16_t b);
[[nodiscard]] std::int16_t subtract16(std::int16_t a, std::int16_t b);
[[nodiscard]] std::int16_t multiply16(std::int16_t a, std::int16_t b);

} // namespace pontrel
