#pragma once

#include <QDateTime>

#include <functional>

namespace pontrel::clock {

/// The present moment in local time. The one place that asks the machine's clock.
[[nodiscard]] QDateTime now();
[[nodiscard]] QDate today();

/// Replaces the source of now(), for tests and for what is told as of another day; an empty function goes
/// back to the machine's clock. Returns the source before it.
std::function<QDateTime()> setSource(std::function<QDateTime()> source);

} // namespace pontrel::clock
