#pragma once

#include <QDate>
#include <QString>
#include <QTime>

#include <cstdint>

namespace pontrel {

/// The whole hours of overtime from begin to end, over midnight where the end is the earlier time of day.
/// Part of an hour counts nothing: neither the least overtime of the settings nor the seconds take part.
[[nodiscard]] std::int16_t overtimeHours(QTime begin, QTime end);

// What the lists of overtime show, as selections. Each throws error 3075 for a value that breaks it.

/// The employee's overtime, the latest day first.
[[nodiscard]] QString overtimeOfEmployee(const QString& EmpNo);

/// The hours of the employee's overtime from the first day to the last, both included, as SubTot: one row, or
/// none where there is no overtime.
[[nodiscard]] QString overtimeTotal(const QString& EmpNo, QDate first, QDate last);

/// The employee's raw punches of the day, T1 to T12: one row, or none.
[[nodiscard]] QString punchesOfDay(const QString& EmpNo, QDate day);

} // namespace pontrel
