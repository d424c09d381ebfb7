#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace pontrel {

/// The date of a time alone, and day 0 where days are counted.
inline constexpr QDate BaseDate = QDate::fromJulianDay(2415019); // 1899-12-30

/// The short date of messages and joined text: year, month, day without leading zeros, as 2001/3/5.
[[nodiscard]] QString shortDate(QDate date);

/// The short time of grids: "hh:mm".
[[nodiscard]] QString shortTime(QTime time);

/// Formats by a pattern of "yyyy", "mm", "mmm" (English), "dd", "hh", "nn", "ss" in any case; "mm" after "hh"
/// means minutes. Other characters stand as they are.
[[nodiscard]] QString formatDateTime(const QDateTime& value, const QString& pattern);
[[nodiscard]] QString formatTime(QTime time, const QString& pattern);
[[nodiscard]] QString formatDate(QDate date, const QString& pattern);

/// Formats a difference of two times, a fraction of a day; a negative one shows its size.
[[nodiscard]] QString formatDayFraction(double days, const QString& pattern);

/// What a date or time text says: a date, a time of day, or both. Invalid members are absent.
struct DateTimeText {
    QDate date;
    QTime time;
};

/// Reads a date as year, month, day with "/" or "-" (one or two digits for month and day, or a month of three
/// English letters), a time as "h:m" or "h:m:s", or both with a blank between. Blanks around count nothing.
/// Nothing else is read: an empty text, the 30th of February, 24:00 give no value.
[[nodiscard]] std::optional<DateTimeText> parseDateTime(QStringView text);

/// The number at the start of a text, blanks ahead of it passed over; 0 where there is none.
[[nodiscard]] double leadingNumber(const QString& text);

} // namespace pontrel
