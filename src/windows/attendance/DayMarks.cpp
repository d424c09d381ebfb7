#include "windows/attendance/DayMarks.h"

#include "rules/attendance/DaySentences.h"

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MinutesOfHour = 60;

using Kind = DayMark::Kind;

QString fromTo(int from, int to) {
    return u"%1 至 %2"_s.arg(minuteText(from), minuteText(to));
}

/// The time between the halves, which is no break of the slot's own settings, the windows and the standard
/// times.
void addSlot(std::vector<DayMark>& marks, const DayAccount& account) {
    if (!account.slot)
        return;
    const SlotTimes& slot = *account.slot;
    if (slot.StdT2 < slot.StdT3)
        marks.push_back({Kind::Break, 0, slot.StdT2, slot.StdT3,
                         u"上午標準下班至下午標準上班 "_s + fromTo(slot.StdT2, slot.StdT3), u"中間"_s});
    for (const PunchWindow& window : account.windows)
        if (window.lower <= window.upper)
            marks.push_back({Kind::Window, window.position - 1, window.lower, window.upper,
                             sentenceOf({.decision = Decision::Window,
                                         .position = window.position,
                                         .from = window.lower,
                                         .to = window.upper})});
}

void addStandards(std::vector<DayMark>& marks, const DayAccount& account) {
    if (!account.slot)
        return;
    const int standards[] = {account.slot->StdT1, account.slot->StdT2, account.slot->StdT3,
                             account.slot->StdT4};
    for (int lane = 0; lane < Positions; ++lane)
        marks.push_back({Kind::Standard, lane, standards[lane], standards[lane],
                         u"%1標準時間 %2"_s.arg(positionName(lane + 1), minuteText(standards[lane]))});
}

void addLeave(std::vector<DayMark>& marks, const DayAccount& account) {
    for (const LeaveSpan& leave : account.leave)
        marks.push_back({Kind::Leave, LeaveLane, leave.from, std::max(leave.from, leave.to),
                         u"請假 %1 %2"_s.arg(leave.name, fromTo(leave.from, leave.to)), leave.name});
}

/// Lateness ends at the punch, early leave begins there.
void addMinutes(std::vector<DayMark>& marks, DayRow row) {
    for (int position = 1; position <= Positions; ++position) {
        const bool arrives = isWayIn(position);
        const auto minutes = static_cast<int>(row.minutes(position));
        if (minutes == 0 || row.Time(position) == DayRow::NoTime)
            continue;
        const auto time = static_cast<int>(row.Time(position) / 60);
        const QString text =
            (arrives ? u"%1遲到 %2 分"_s : u"%1早退 %2 分"_s).arg(positionName(position)).arg(minutes);
        if (arrives)
            marks.push_back({Kind::Late, position - 1, time - minutes, time, text});
        else
            marks.push_back({Kind::Early, position - 1, time, time + minutes, text});
    }
}

void addPunches(std::vector<DayMark>& marks, const DayAccount& account) {
    for (const DayPunch& punch : account.punches) {
        const bool taken = punch.position != 0;
        const QString told =
            taken ? u"%1 打卡，列為%2"_s.arg(minuteText(punch.time), positionName(punch.position))
                  : u"%1 打卡，未列入"_s.arg(minuteText(punch.time));
        marks.push_back({taken ? Kind::Taken : Kind::NotTaken, taken ? punch.position - 1 : UnlistedLane,
                         punch.time, punch.time, punch.step ? sentenceOf(*punch.step) : told});
    }
}

} // namespace

std::vector<DayMark> marksOf(const DayAccount& account) {
    std::vector<DayMark> marks;
    addSlot(marks, account);
    addLeave(marks, account);
    addMinutes(marks, account.stored);
    addStandards(marks, account);
    addPunches(marks, account);
    return marks;
}

DaySpan spanOf(const std::vector<DayMark>& marks) {
    DaySpan span;
    for (const DayMark& mark : marks) {
        span.from = std::min(span.from, mark.from);
        span.to = std::max(span.to, mark.to);
    }
    const auto hours = [](int minutes) { return (minutes + MinutesOfHour - 1) / MinutesOfHour; };
    return {-hours(-span.from) * MinutesOfHour, hours(span.to) * MinutesOfHour};
}

QString marksLegend() {
    return u"方框 收卡時間　┃ 標準時間　● 列入的打卡　○ 未列入　斜線 遲到　格線 早退　點狀 請假　直欄 中間"_s;
}

QString laneName(int lane) {
    return lane < Positions ? positionName(lane + 1) : lane == UnlistedLane ? u"未列入"_s : u"請假"_s;
}

QString laneOutcome(const DayAccount& account, int lane) {
    return account.hasRow && lane < Positions ? positionText(account.stored, lane + 1) : QString();
}

} // namespace pontrel
