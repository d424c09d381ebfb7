#pragma once

#include <QDate>
#include <QString>

namespace pontrel {

/// The year of the common era that the calendar of the Republic of China counts as 0.
inline constexpr int RepublicZero = 1911;

inline constexpr int DaysOfWeek = 7;
inline constexpr int MonthsOfYear = 12;

/// The place of a day in its week, which begins with Sunday at 0.
[[nodiscard]] inline int placeInWeek(QDate day) {
    return day.dayOfWeek() % DaysOfWeek; // Qt counts Sunday as the seventh
}

/// The weekday at a place in the week as one character, "日" for Sunday.
[[nodiscard]] inline QChar weekday(int place) {
    return u"日一二三四五六"[place];
}

[[nodiscard]] inline QChar weekday(QDate day) {
    return weekday(placeInWeek(day));
}

} // namespace pontrel
