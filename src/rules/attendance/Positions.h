#pragma once

#include <QStringList>

namespace pontrel {

// The punches that a day can ask for have four positions, counted from 1 as the day goes: in and out of the
// morning, in and out of the afternoon.

inline constexpr int Positions = 4;

/// Their names, in their order.
[[nodiscard]] const QStringList& positionNames();

/// The name of a position; empty for a number that is none.
[[nodiscard]] QString positionName(int position);

/// Whether the employee arrives there, and so can be late; from the others he leaves.
[[nodiscard]] constexpr bool isWayIn(int position) {
    return position % 2 == 1;
}

} // namespace pontrel
