#pragma once

#include "rules/attendance/DayAccount.h"

#include <QString>

#include <vector>

namespace pontrel {

/// The rows of the picture of a day, from above: the four positions, then these.
inline constexpr int UnlistedLane = 4;
inline constexpr int LeaveLane = 5;
inline constexpr int DayLanes = 6;

/// Something on the picture of a day. Times are minutes, before 0 and behind 1439 too.
struct DayMark {
    enum class Kind { Break, Window, Leave, Late, Early, Standard, Taken, NotTaken };
    Kind kind;
    int lane; ///< From 0; a break between the halves goes over all positions.
    int from;
    int to;             ///< The same as `from` of what has no length.
    QString text;       ///< For the tooltip and assistive technology.
    QString label = {}; ///< Written on it where there is room.
};

/// The marks of the day, those that lie over others last.
[[nodiscard]] std::vector<DayMark> marksOf(const DayAccount& account);

/// What the picture spans, in whole hours: the day, and what its marks have beyond it.
struct DaySpan {
    int from = 0;
    int to = 24 * 60;
};
[[nodiscard]] DaySpan spanOf(const std::vector<DayMark>& marks);

/// How the marks look, in a line.
[[nodiscard]] QString marksLegend();

/// What stands at the left of a lane, and at its right.
[[nodiscard]] QString laneName(int lane);
[[nodiscard]] QString laneOutcome(const DayAccount& account, int lane);

} // namespace pontrel
