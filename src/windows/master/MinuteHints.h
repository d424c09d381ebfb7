#pragma once

#include <QString>

namespace pontrel {

/// What the minutes in that column of the time slots do, in their unit, for a tooltip.
[[nodiscard]] QString minuteHint(const QString& column);

} // namespace pontrel
