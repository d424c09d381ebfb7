#include "rules/attendance/PunchAssignment.h"

#include "rules/attendance/DayObserver.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"

namespace pontrel {

namespace {

/// The table's null passes turn midnight into null, whether it stands for no punch or for a real one.
std::int64_t timeOrNull(std::int64_t second) {
    return second == 0 ? DayRow::NoTime : second;
}

} // namespace

PunchAssignment::PunchAssignment(DayFacts::FactRows punches, const PunchWindows& windows,
                                 DayObserver* observer)
    : observer_(observer) {
    if (observer_ != nullptr)
        tellWindows(windows, !punches.empty());
    for (const std::vector<Value>& punch : punches) {
        const QTime UseTime = punch.at(1).toTime();
        for (std::int64_t times = punch.at(2).toInteger(); times > 0; --times)
            take(UseTime.hour() * 60 + UseTime.minute(), windows);
    }
}

void PunchAssignment::take(int minute, const PunchWindows& windows) {
    const std::int64_t P = std::int64_t{minute} * 60;
    const int position = windows.positionOf(minute);
    // A punch whose position is taken is not tried in the windows behind it.
    const bool free = position != 0 && !taken_[static_cast<std::size_t>(position - 1)];
    if (observer_ != nullptr)
        tellPunch(minute, position, free);
    if (free) {
        times_[static_cast<std::size_t>(position - 1)] = timeOrNull(P);
        taken_[static_cast<std::size_t>(position - 1)] = true;
    } else {
        append(unassigned_, unassignedCount_, P);
    }
    append(all_, allCount_, P);
}

void PunchAssignment::tellWindows(const PunchWindows& windows, bool hasPunches) const {
    for (const PunchWindow& window : windows.all())
        observer_->told({.decision = Decision::Window,
                         .position = window.position,
                         .from = window.lower,
                         .to = window.upper});
    if (windows.all().empty())
        observer_->told({.decision = Decision::NoWindows});
    if (!hasPunches)
        observer_->told({.decision = Decision::NoPunches});
}

void PunchAssignment::tellPunch(int minute, int position, bool free) const {
    DayStep step{.decision = Decision::PunchOutside, .position = position, .time = minute};
    if (free) {
        step.decision = minute == 0 ? Decision::MidnightTaken : Decision::PunchTaken;
    } else if (position != 0) {
        step.decision = Decision::PositionTaken;
        const std::int64_t earlier = times_[static_cast<std::size_t>(position - 1)];
        step.earlier = earlier == NoTime ? 0 : static_cast<int>(earlier / 60);
    }
    observer_->told(step);
    if (allCount_ >= all_.size())
        observer_->told({.decision = Decision::PunchBeyondList, .time = minute});
}

/// The thirteenth and later punches of a list are lost.
void PunchAssignment::append(List& list, std::size_t& count, std::int64_t second) {
    if (count < list.size())
        list[count++] = second;
}

void PunchAssignment::writeTo(EmployeeDay& day) const {
    for (DayRow& row : day.rows()) {
        for (int position = 1; position <= Positions; ++position) {
            row.Time(position) = times_[static_cast<std::size_t>(position - 1)];
            row.FT(position) = taken_[static_cast<std::size_t>(position - 1)] ? 1 : 0;
        }
        for (std::size_t place = 0; place < unassigned_.size(); ++place)
            row.T(static_cast<int>(place) + 1) = timeOrNull(unassigned_[place]);
    }
}

void PunchAssignment::writeView(EmployeeDay& day) const {
    static const StatementForm form(QStringLiteral(
        "Insert Into View02(EmpNo,UseDate,T1,T2,T3,T4,T5,T6,T7,T8,T9,T10,T11,T12) "
        "Values('',#2000/1/1#,#08:00:00#,"
        "#08:00:00#,#08:00:00#,#08:00:00#,#08:00:00#,#08:00:00#,#08:00:00#,#08:00:00#,#08:00:00#,#08:00:00#,"
        "#08:00:00#,#08:00:00#)"));
    std::vector<Value> values{day.EmpNo(), day.date()};
    values.reserve(values.size() + all_.size());
    for (const std::int64_t second : all_)
        values.emplace_back(timeOrNull(second) == NoTime ? QTime()
                                                         : QTime(0, 0).addSecs(static_cast<int>(second)));
    // The key refuses the insert where the day has its row; then that row takes the punches.
    if (day.database().execute(form, values) == 0)
        updateView(day);
}

void PunchAssignment::updateView(EmployeeDay& day) const {
    QStringList assignments;
    for (std::size_t place = 0; place < all_.size(); ++place) {
        const bool none = timeOrNull(all_[place]) == NoTime;
        assignments += QStringLiteral("T%1=%2").arg(QString::number(place + 1),
                                                    none ? QStringLiteral("Null")
                                                         : timeLiteral(static_cast<int>(all_[place])));
    }
    day.database().execute(QStringLiteral("Update View02 Set %1 Where UseDate =%2      And EmpNo = %3")
                               .arg(assignments.join(u','), day.dayLiteral(), textLiteral(day.EmpNo())));
}

void PunchAssignment::writeBlankViewQuietly(EmployeeDay& day) noexcept {
    try {
        day.database().execute(QStringLiteral("Insert Into View02(EmpNo,UseDate) Values(%1,%2)")
                                   .arg(textLiteral(day.EmpNo()), day.dayLiteral()));
    } catch (const std::exception&) {
        // The error that brought us here says more.
    }
}

} // namespace pontrel
