#include "rules/attendance/DayRules.h"
#include "store/StagedCopy.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"

#include <array>
#include <cstdlib>
#include <initializer_list>

namespace pontrel {

namespace {

constexpr std::int64_t HalfDay = 4 * 3600;

/// DelayF is the last position with minutes and only that, so that an earlier one sets no fault by itself.
void markDelay(DayRow& row) {
    if (row.Delay(1) > 0)
        row.DelayF() = 1;
    if (row.Earlier(2) > 0)
        row.DelayF() = 2;
    if (row.Delay(3) > 0)
        row.DelayF() = 3;
    if (row.Earlier(4) > 0)
        row.DelayF() = 4;
}

bool isFaulty(DayRow& row, int position) {
    return row.DelayF() == position ||
           !(row.FT(position) != 0 || row.FH(position) != 0 || row.FC(position) != 0);
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

/// A morning of under four hours between its two punches is an exception without a fault. The size of the
/// difference counts, as its text "hh:mm:ss" does not show which of the two is the later.
void markShortMorning(DayRow& row) {
    const bool punched = row.Time(1) != DayRow::NoTime && row.Time(2) != DayRow::NoTime;
    const bool excused = row.FH(1) != 0 || row.FC(1) != 0 || row.FH(2) != 0 || row.FC(2) != 0;
    if (punched && !excused && std::abs(row.Time(2) - row.Time(1)) < HalfDay)
        row.Expt() = 1;
}

void markExceptions(DayRow& row, int CardType) {
    markDelay(row);
    switch (CardType) {
    case 1:
        markFaultsAndDay(row, {1});
        break;
    case 2:
        markFaultsAndDay(row, {1, 4});
        break;
    case 3:
        markFaultsThenDay(row, {1, 3, 4});
        break;
    case 4:
        markFaultsThenDay(row, {1, 2, 3, 4});
        markShortMorning(row);
        break;
    default:
        // Without punches, and above four, a day is never an exception, whatever its minutes.
        break;
    }
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
        markExceptions(row, CardType);
    day.store();
    moveOn(day, rerun);
}

} // namespace pontrel
