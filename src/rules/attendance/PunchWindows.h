#pragma once

#include "rules/attendance/SlotTimes.h"

#include <array>
#include <span>

namespace pontrel {

/// When a punch counts for one of the four positions of a slot; both bounds belong to it.
struct PunchWindow {
    int position = 0; ///< 1 to 4.
    int lower = 0;    ///< In minutes; a bound may lie before 0 or behind 1439.
    int upper = 0;
};

/// The windows of a time slot, in the order in which they are tried. A kind of elasticity and a number of
/// punches that have none take no punch at all.
class PunchWindows {
  public:
    explicit PunchWindows(const SlotTimes& slot);

    [[nodiscard]] std::span<const PunchWindow> all() const { return {windows_.data(), count_}; }

    /// The position, 1 to 4, of the first window that holds the minute of the day; 0 where none does.
    [[nodiscard]] int positionOf(int minute) const;

  private:
    void add(int position, int lower, int upper);
    void addRigid(const SlotTimes& slot);
    void addMorningElastic(const SlotTimes& slot);
    void addAfternoonElastic(const SlotTimes& slot);
    void addBothElastic(const SlotTimes& slot);

    std::array<PunchWindow, 4> windows_{};
    std::size_t count_ = 0;
};

} // namespace pontrel
