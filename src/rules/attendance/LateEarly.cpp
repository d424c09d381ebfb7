#include "rules/attendance/DayObserver.h"
#include "rules/attendance/DayRules.h"
#include "rules/attendance/Minutes.h"
#include "store/RunTimeError.h"

#include <optional>

namespace pontrel {

namespace {

struct Range {
    int first = 0;
    int last = 0;
};

/// The positions that are judged; none where minutes do not exist, 0 where the combination is not foreseen.
std::optional<Range> judgedPositions(int ElstType, int CardType) {
    switch (ElstType) {
    case 0:
        return Range{1, 4};
    case 1:
        return std::nullopt;
    case 2:
        return CardType == 4 ? Range{3, 4} : Range{};
    case 3:
        return CardType == 3 ? Range{1, 1} : CardType == 4 ? Range{1, 2} : Range{};
    case 4:
        return CardType == 4 ? Range{1, 4} : Range{};
    default:
        return Range{};
    }
}

/// A time of day out of minutes, which may pass midnight.
QTime clock(int minutes) {
    return QTime(0, 0).addSecs(wrappedMinutes(minutes) * 60);
}

QTime clockOfSecond(std::int64_t second) {
    return QTime(0, 0).addSecs(static_cast<int>(second));
}

int standardOf(const SlotTimes& slot, int position) {
    switch (position) {
    case 1:
        return slot.StdT1;
    case 2:
        return slot.StdT2;
    case 3:
        return slot.StdT3;
    default:
        return slot.StdT4;
    }
}

/// Deliberate: the morning's cushion serves both halves, the afternoon's only where there is none in the
/// morning.
bool takesMorningCushion(const SlotTimes& slot) {
    return slot.Cushion > 0;
}

int cushionOf(const SlotTimes& slot) {
    return takesMorningCushion(slot) ? slot.Cushion : slot.Cushion1;
}

/// Minutes after the standard time within the cushion, 0 where there are none. Time is a second of the day.
int cushionMinutes(const SlotTimes& slot, int Std, std::int64_t Time) {
    const int X = cushionOf(slot);
    if (X > 0 && Time > Std * 60 && (Std + X) * 60 >= Time)
        return MinutesBetween(clock(Std), clockOfSecond(Time));
    return 0;
}

struct Allowance {
    int cushion; ///< Behind which the delay is counted.
    int delay;
};

/// Deliberate: which half's values count depends on the morning's delay, not on the position.
bool takesMorningDelay(const SlotTimes& slot) {
    return slot.Delay > 0;
}

Allowance delayOf(const SlotTimes& slot) {
    return takesMorningDelay(slot) ? Allowance{slot.Cushion, slot.Delay}
                                   : Allowance{slot.Cushion1, slot.Delay1};
}

/// Minutes after the end of the cushion within the delay, 0 where there are none.
int delayMinutes(const SlotTimes& slot, int Std, std::int64_t Time) {
    const auto [X, Y] = delayOf(slot);
    if (Y > 0 && Time > (Std + X) * 60 && (Std + X + Y) * 60 >= Time)
        return MinutesBetween(clock(Std + X), clockOfSecond(Time));
    return 0;
}

int earlyMinutes(const SlotTimes& slot, int Std, std::int64_t Time) {
    // Deliberate: the allowances are switches only, their size does not matter.
    if ((slot.Earlier > 0 || slot.Earlier1 > 0) && Time < Std * 60)
        return MinutesBetween(clockOfSecond(Time), clock(Std));
    return 0;
}

/// Whether a row takes minutes at the position: it has a punch there and nothing that excuses it.
bool takesMinutes(DayRow& row, int position) {
    return row.FT(position) != 0 && row.FH(position) == 0 && row.FC(position) == 0;
}

DayStep stepOf(Decision decision, int position, int Std, std::int64_t Time) {
    return {.decision = decision, .position = position, .time = static_cast<int>(Time / 60), .standard = Std};
}

/// Tells why the row takes no minutes at the position, where something keeps it from that. Whether so.
bool tellExcuse(DayObserver& observer, DayRow& row, DayStep& step) {
    if (takesMinutes(row, step.position))
        return false;
    if (isWayIn(step.position))
        step.minutes = static_cast<int>(row.Cushion(step.position));
    step.decision = row.FH(step.position) != 0   ? Decision::LeaveExcuses
                    : row.FC(step.position) != 0 ? Decision::WriteOffExcuses
                                                 : Decision::TimeWithoutPunch;
    observer.told(step);
    return true;
}

/// The half whose values count, 1 or 2, where they are other ones than the position's own; else 0.
int foreignHalf(int position, bool takesMorning, bool halvesDiffer) {
    const bool isMorning = position == 1;
    return !halvesDiffer || takesMorning == isMorning ? 0 : takesMorning ? 1 : 2;
}

void tellArrival(DayObserver& observer, EmployeeDay& day, const SlotTimes& slot, DayStep step, int c, int d) {
    if (tellExcuse(observer, day.rows().back(), step))
        return;
    const Allowance allowance = delayOf(slot);
    const bool cushionsDiffer = slot.Cushion != slot.Cushion1;
    step.cushion = allowance.cushion;
    if (c < 1 && (d >= 1 || step.time > step.standard))
        step.half = foreignHalf(step.position, takesMorningDelay(slot),
                                slot.Delay != slot.Delay1 || (cushionsDiffer && allowance.delay > 0));
    if (c >= 1) {
        step.decision = Decision::WithinCushion;
        step.half = foreignHalf(step.position, takesMorningCushion(slot), cushionsDiffer);
        step.cushion = cushionOf(slot);
        step.minutes = c;
    } else if (d >= 1) {
        step.decision = Decision::Late;
        step.minutes = d;
    } else if (step.time > step.standard) {
        step.decision = Decision::LateUncounted;
        step.allowance = allowance.delay;
    } else {
        step.decision = Decision::OnTime;
    }
    observer.told(step);
}

void tellDeparture(DayObserver& observer, EmployeeDay& day, const SlotTimes& slot, DayStep step, int e) {
    if (tellExcuse(observer, day.rows().back(), step))
        return;
    const bool isMorning = step.position == 2;
    if (e >= 1 && (isMorning ? slot.Earlier : slot.Earlier1) == 0)
        step.half = isMorning ? 2 : 1;
    step.decision = e >= 1                      ? Decision::LeftEarly
                    : step.time < step.standard ? Decision::EarlyUncounted
                                                : Decision::NotEarly;
    step.minutes = e;
    observer.told(step);
}

/// The observer is that of the row whose time this is, null for any other row.
void judge(EmployeeDay& day, const SlotTimes& slot, int position, std::int64_t Time, DayObserver* observer) {
    const int Std = standardOf(slot, position);
    const bool required = slot.StdC.at(static_cast<std::size_t>(position - 1));
    if (Time == DayRow::NoTime || Time == 0) {
        if (observer != nullptr)
            observer->told({.decision = Decision::NoTime, .position = position});
        return;
    }
    if (!required) {
        if (observer != nullptr)
            observer->told(stepOf(Decision::NotRequired, position, Std, Time));
        return;
    }
    if (isWayIn(position)) {
        const int c = cushionMinutes(slot, Std, Time);
        const int d = delayMinutes(slot, Std, Time);
        for (DayRow& row : day.rows()) {
            if (!takesMinutes(row, position))
                continue;
            if (c >= 1)
                row.Cushion(position) = c;
            else if (d >= 1)
                row.Delay(position) = d;
        }
        if (observer != nullptr)
            tellArrival(*observer, day, slot, stepOf(Decision::OnTime, position, Std, Time), c, d);
        return;
    }
    const int e = earlyMinutes(slot, Std, Time);
    for (DayRow& row : day.rows())
        if (e >= 1 && takesMinutes(row, position))
            row.Earlier(position) = e;
    if (observer != nullptr)
        tellDeparture(*observer, day, slot, stepOf(Decision::NotEarly, position, Std, Time), e);
}

void tellRange(EmployeeDay& day, const SlotTimes& slot, const std::optional<Range>& range) {
    if (day.observer() == nullptr)
        return;
    DayStep step{.decision = Decision::NoMinutes, .count = slot.ElstType};
    if (range && range->first == 0) {
        step.decision = Decision::CannotJudge;
        step.number = slot.CardType;
    } else if (range) {
        step.decision = Decision::PositionsJudged;
        step.from = range->first;
        step.to = range->last;
    }
    day.observer()->told(step);
}

} // namespace

void CalcLateEarly(EmployeeDay& day, const SlotTimes& slot) {
    const auto range = judgedPositions(slot.ElstType, slot.CardType);
    tellRange(day, slot, range);
    if (!range)
        return;
    // Several rows of the day are worked through one after the other, and each result goes to all of them.
    for (std::size_t index = 0; index < day.rows().size(); ++index) {
        if (range->first == 0)
            throw runTimeError(error::SubscriptOutOfRange, QStringLiteral("Time(0)"));
        for (int position = range->first; position <= range->last; ++position)
            judge(day, slot, position, day.rows()[index].Time(position),
                  day.isObserved(day.rows()[index]) ? day.observer() : nullptr);
    }
}

} // namespace pontrel
