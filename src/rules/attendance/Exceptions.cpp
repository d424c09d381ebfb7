#include "rules/attendance/DayObserver.h"
#include "rules/attendance/DayRules.h"
#include "rules/attendance/HalfDay.h"
#include "store/StagedCopy.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace pontrel {

namespace {

constexpr std::int64_t HalfDay = HalfDayMinutes * 60;

void tellDelay(DayObserver& observer, DayRow& row) {
    const int marked = static_cast<int>(row.DelayF());
    for (int position = 1; position <= Positions; ++position)
        if (row.minutes(position) > 0 && position != marked)
            observer.told({.decision = Decision::DelayPassedOver,
                           .position = position,
                           .minutes = static_cast<int>(row.minutes(position))});
    observer.told({.decision = marked == 0 ? Decision::NoDelay : Decision::DelayMarked, .position = marked});
}

/// DelayF is the last position with minutes and only that, so that an earlier one sets no fault by itself.
void markDelay(DayRow& row, DayObserver* observer) {
    for (int position = 1; position <= Positions; ++position)
        if (row.minutes(position) > 0)
            row.DelayF() = position;
    if (observer != nullptr)
        tellDelay(*observer, row);
}

bool isFaulty(DayRow& row, int position) {
    return row.DelayF() == position ||
           !(row.FT(position) != 0 || row.FH(position) != 0 || row.FC(position) != 0);
}

/// The mark of a position that is asked for, as it stands when it has been set or not.
void tellMark(DayObserver& observer, DayRow& row, int position) {
    DayStep step{.decision = Decision::FaultMissing, .position = position};
    if (row.DelayF() == position) {
        step.decision = Decision::FaultByMinutes;
        step.minutes = static_cast<int>(row.minutes(position));
    } else if (!isFaulty(row, position)) {
        step.decision = row.F(position) != 0    ? Decision::FaultStands
                        : row.FT(position) != 0 ? Decision::FineByPunch
                        : row.FH(position) != 0 ? Decision::FineByLeave
                                                : Decision::FineByWriteOff;
    }
    observer.told(step);
}

void tellMarks(DayObserver& observer, DayRow& row, int CardType, std::initializer_list<int> asked) {
    for (int position = 1; position <= Positions; ++position)
        if (std::find(asked.begin(), asked.end(), position) != asked.end())
            tellMark(observer, row, position);
        else
            observer.told({.decision = Decision::NotAsked, .position = position, .count = CardType});
}

/// For fewer than three punches each fault makes the day an exception at once.
void markFaultsAndDay(DayRow& row, std::initializer_list<int> positions) {
    for (const int position : positions) {
        if (isFaulty(row, position)) {
            row.F(position) = 1;
            row.Expt() = 1;
        }
    }
}

/// For three punches and more the day is an exception by any fault, an older one included.
void markFaultsThenDay(DayRow& row, std::initializer_list<int> positions) {
    for (const int position : positions)
        if (isFaulty(row, position))
            row.F(position) = 1;
    for (const int position : positions)
        if (row.F(position) != 0)
            row.Expt() = 1;
}

/// A morning of under four hours between its two punches is an exception without a fault.
void markShortMorning(DayRow& row, DayObserver* observer) {
    const std::optional<std::int64_t> morning = judgedMorning(row);
    if (!morning)
        return;
    if (*morning < HalfDay)
        row.Expt() = 1;
    if (observer != nullptr)
        observer->told({.decision = *morning < HalfDay ? Decision::ShortMorning : Decision::FullMorning,
                        .from = static_cast<int>(row.Time(1) / 60),
                        .to = static_cast<int>(row.Time(2) / 60),
                        .minutes = static_cast<int>(*morning / 60)});
}

void markFaults(DayRow& row, int CardType, DayObserver* observer) {
    const auto tell = [&](std::initializer_list<int> asked) {
        if (observer != nullptr)
            tellMarks(*observer, row, CardType, asked);
    };
    switch (CardType) {
    case 1:
        markFaultsAndDay(row, {1});
        tell({1});
        break;
    case 2:
        markFaultsAndDay(row, {1, 4});
        tell({1, 4});
        break;
    case 3:
        markFaultsThenDay(row, {1, 3, 4});
        tell({1, 3, 4});
        break;
    case 4:
        markFaultsThenDay(row, {1, 2, 3, 4});
        tell({1, 2, 3, 4});
        markShortMorning(row, observer);
        break;
    default:
        // Without punches, and above four, a day is never an exception, whatever its minutes.
        if (observer != nullptr)
            observer->told({.decision = Decision::NoExceptionsKept, .count = CardType});
        break;
    }
}

void markExceptions(DayRow& row, int CardType, DayObserver* observer) {
    markDelay(row, observer);
    markFaults(row, CardType, observer);
    if (observer != nullptr)
        observer->told({.decision = row.Expt() != 0 ? Decision::DayException : Decision::DayInOrder});
}

/// The rows' way on. An insert of exceptions is left out where there is none.
void moveOn(EmployeeDay& day, bool rerun) {
    static const StatementForm intoExceptions(QStringLiteral(
        "Insert into Atte03 Select * from AtteTemp1 Where EmpNo = ''    and UseDate =#2000/1/1#    and "
        "Expt =True "));
    Database& database = day.database();
    const auto where = [&day] {
        return QStringLiteral("Where EmpNo = %1    and UseDate =%2")
            .arg(textLiteral(day.EmpNo()), day.dayLiteral());
    };
    if (rerun)
        database.execute(QStringLiteral("Delete * from Atte03 ") + where());
    if (day.hasException())
        database.execute(intoExceptions, std::array<Value, 2>{day.EmpNo(), day.date()});
    if (rerun)
        replaceResults(database, where());
}

} // namespace

void ClassifyExceptions(EmployeeDay& day, int CardType, bool rerun) {
    for (DayRow& row : day.rows())
        markExceptions(row, CardType, day.isObserved(row) ? day.observer() : nullptr);
    day.store();
    moveOn(day, rerun);
}

} // namespace pontrel
