#pragma once

#include <QDate>

#include <optional>

class QKeyEvent;

namespace pontrel {

/// The day to which a key leads where a month is shown in weeks: the arrow keys by days and weeks, Home and
/// End to the ends of the month, Page Up and Page Down by a month, with Ctrl by a year. Nothing for a key
/// that does not move.
[[nodiscard]] std::optional<QDate> dayByKey(QDate from, const QKeyEvent& key);

} // namespace pontrel
