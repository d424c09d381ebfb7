#include "rules/attendance/Minutes.h"

#include "store/RunTimeError.h"

#include <limits>

namespace pontrel {

namespace {

constexpr int MinutesOfDay = 1440;

int minuteOfDay(QTime time) {
    return time.hour() * 60 + time.minute();
}

std::int16_t checked16(int value) {
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
        throw runTimeError(error::Overflow, QString::number(value));
    return static_cast<std::int16_t>(value);
}

} // namespace

std::int16_t MinutesBetween(QTime start, QTime end) {
    const int from = minuteOfDay(start);
    const int to = minuteOfDay(end);
    return checked16(to >= from ? to - from : MinutesOfDay - (from - to));
}

std::int16_t MinutesToHoursUp(std::int16_t minutes) {
    if (minutes >= 1 && minutes <= 59)
        return 1;
    const int hours = minutes / 60;
    return checked16(minutes % 60 == 0 ? hours : hours + 1);
}

std::int16_t MinutesToHours(std::int16_t minutes) {
    return checked16(minutes / 60);
}

std::int16_t add16(std::int16_t a, std::int16_t b) {
    return checked16(int{a} + int{b});
}

std::int16_t subtract16(std::int16_t a, std::int16_t b) {
    return checked16(int{a} - int{b});
}

std::int16_t multiply16(std::int16_t a, std::int16_t b) {
    return checked16(int{a} * int{b});
}

} // namespace pontrel
