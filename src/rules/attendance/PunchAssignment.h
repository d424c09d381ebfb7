#pragma once

#include "rules/attendance/DayFacts.h"
#include "rules/attendance/EmployeeDay.h"
#include "rules/attendance/PunchWindows.h"

#include <array>

namespace pontrel {

class DayObserver;

/// One employee's ordinary punches of a day, sorted into the four positions of his time slot.
class PunchAssignment {
  public:
    /// Takes the punches in their order, each cut to its minute. The earliest in a position's window is
    /// taken, the rest stand in the list. Throws RunTimeError for a punch without a time.
    /// An observer is told of the windows and of each punch.
    PunchAssignment(DayFacts::FactRows punches, const PunchWindows& windows, DayObserver* observer = nullptr);

    /// Puts times, flags and the list of unassigned punches into all rows of the day.
    void writeTo(EmployeeDay& day) const;

    /// Adds the row of View02 with all punches of the day, or puts them into the one that is there.
    void writeView(EmployeeDay& day) const;

    /// Adds the row of View02 as it stands before the punches are looked at, where an error is already on its
    /// way.
    static void writeBlankViewQuietly(EmployeeDay& day) noexcept;

  private:
    static constexpr std::int64_t NoTime = DayRow::NoTime;
    using List = std::array<std::int64_t, 12>;

    void take(int minute, const PunchWindows& windows);
    void tellWindows(const PunchWindows& windows, bool hasPunches) const;
    void tellPunch(int minute, int position, bool free) const;
    void updateView(EmployeeDay& day) const;
    static void append(List& list, std::size_t& count, std::int64_t second);

    DayObserver* observer_;
    std::array<std::int64_t, 4> times_{NoTime, NoTime, NoTime, NoTime};
    std::array<bool, 4> taken_{};
    List unassigned_{};
    List all_{};
    std::size_t unassignedCount_ = 0;
    std::size_t allCount_ = 0;
};

} // namespace pontrel
