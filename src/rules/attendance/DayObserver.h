#pragma once

#include <QString>

namespace pontrel {

struct SlotTimes;

/// What the calculation of an employee's day decides, in the order in which it decides. The remarks name the
/// figures of a DayStep that go with it besides the position.
enum class Decision {
    // Which punch counts for which position.
    Window,          ///< Punches from `from` to `to` count for the position.
    NoWindows,       ///< None counts for any.
    NoPunches,       ///< There are none.
    PunchTaken,      ///< time
    MidnightTaken,   ///< The punch at 00:00 sets the flag and leaves no time.
    PositionTaken,   ///< time; earlier: the punch that took the position before.
    PunchOutside,    ///< time: no window holds it.
    PunchBeyondList, ///< time: the thirteenth or a later one, which no list keeps.
    PunchOfClass,    ///< time, code: of a class that no calculation of a day looks at. Not told by it.

    // What is excused.
    NoLeave,
    LeaveStands, ///< The position was covered by leave before.
    LeaveRow,    ///< code, from, to, positions: those it covers, none where it meets no part.
    LeaveRunsOn, ///< The same, covering what follows; count: 2 where both ends are in one part, 1 where only
                 ///< one end is in any.
    LeaveEndsUncovered, ///< code: of this type the position stays uncovered, as leave starts or ends in it;
                        ///< count: 1 where that is known from the leave before.
    NoWriteOff,
    WriteOffStands, ///< The position was written off before.
    WriteOff,       ///< code

    // Minutes.
    PositionsJudged,  ///< from, to: positions; count: the kind of elasticity.
    NoMinutes,        ///< count: the kind of elasticity, which knows none.
    CannotJudge,      ///< count, number: kind of elasticity and number of punches that end the run.
    NoTime,           ///< Nothing to judge at the position.
    NotRequired,      ///< time
    LeaveExcuses,     ///< time; minutes: a cushion of before, which stays.
    WriteOffExcuses,  ///< The same.
    TimeWithoutPunch, ///< The same: the row has a time and no flag of a punch.
    OnTime,           ///< time, standard
    WithinCushion,    ///< time, standard, cushion, minutes, half
    Late,             ///< time, standard, cushion, minutes, half
    LateUncounted,    ///< time, standard, cushion, allowance, half: outside of what is counted.
    NotEarly,         ///< time, standard
    LeftEarly,        ///< time, standard, minutes, half
    EarlyUncounted,   ///< time, standard

    // The marks.
    NoDelay,         ///< DelayF is 0.
    DelayMarked,     ///< DelayF is the position.
    DelayPassedOver, ///< minutes: those of the position make no mark, as a later one has some.
    NotAsked,        ///< count: the number of punches, which does not ask for the position.
    FaultByMinutes,  ///< minutes
    FaultMissing,
    FaultStands, ///< The mark was set before.
    FineByPunch,
    FineByLeave,
    FineByWriteOff,
    ShortMorning,     ///< from, to, minutes between them.
    FullMorning,      ///< from, to, minutes between them.
    NoExceptionsKept, ///< count: the number of punches, of which no day is an exception.
    DayException,
    DayInOrder
};
inline constexpr int DecisionCount = static_cast<int>(Decision::DayInOrder) + 1;

/// A decision with its figures. Times are minutes of the day, positions count from 1.
struct DayStep {
    Decision decision;
    int position = 0;
    int time = 0;
    int standard = 0; ///< The time that it is held against.
    int earlier = 0;
    int from = 0;
    int to = 0;
    int cushion = 0;
    int allowance = 0;
    /// Whose cushion and delay differ from the position's own and count, or whose switch alone lets early
    /// leave count: 1 the morning's, 2 the afternoon's.
    int half = 0;
    int minutes = 0;
    int count = 0;
    int number = 0;
    unsigned positions = 0; ///< A set: bit 0 is position 1.
    QString code = {};

    friend bool operator==(const DayStep&, const DayStep&) = default;
};

/// Listens to the calculation of employees' days. Where nobody does, nothing is told.
class DayObserver {
  public:
    virtual ~DayObserver() = default;

    /// A day begins, of this employee and with these settings.
    virtual void dayBegins(const QString& EmpNo, const SlotTimes& slot) = 0;
    virtual void told(const DayStep& step) = 0;
};

} // namespace pontrel
