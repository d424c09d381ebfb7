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

/// Minutes after the standard time within the cushion, 0 where there are none. Time is a second of the day.
int cushionMinutes(const SlotTimes& slot, int Std, std::int64_t Time) {
    // Deliberate: the morning's cushion serves both halves, the afternoon's only where there is none in the
    // morning.
    const int X = slot.Cushion > 0 ? slot.Cushion : slot.Cushion1;
    if (X > 0 && Time > Std * 60 && (Std + X) * 60 >= Time)
        return MinutesBetween(clock(Std), clockOfSecond(Time));
    return 0;
}

/// Minutes after the end of the cushion within the delay, 0 where there are none.
int delayMinutes(const SlotTimes& slot, int Std, std::int64_t Time) {
    // Deliberate: which half's values count depends on the morning's delay, not on the position.
    const bool morning = slot.Delay > 0;
    const int X = morning ? slot.Cushion : slot.Cushion1;
    const int Y = morning ? slot.Delay : slot.Delay1;
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

void judge(EmployeeDay& day, const SlotTimes& slot, int position, std::int64_t Time) {
    const int Std = standardOf(slot, position);
    const bool required = slot.StdC.at(static_cast<std::size_t>(position - 1));
    if (Time == DayRow::NoTime || Time == 0 || !required)
        return;
    if (position == 1 || position == 3) {
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
        return;
    }
    const int e = earlyMinutes(slot, Std, Time);
    for (DayRow& row : day.rows())
        if (e >= 1 && takesMinutes(row, position))
            row.Earlier(position) = e;
}

} // namespace

void CalcLateEarly(EmployeeDay& day, const SlotTimes& slot) {
    const auto range = judgedPositions(slot.ElstType, slot.CardType);
    if (!range)
        return;
    // Several rows of the day are worked through one after the other, and each result goes to all of them.
    for (std::size_t index = 0; index < day.rows().size(); ++index) {
        if (range->first == 0)
            throw runTimeError(error::SubscriptOutOfRange, QStringLiteral("Time(0)"));
        for (int position = range->first; position <= range->last; ++position)
            judge(day, slot, position, day.rows()[index].Time(position));
    }
}

} // namespace pontrel
