#include "rules/master/Seniority.h"

#include "rules/Calendar.h"
#include "rules/Session.h"
#include "store/RunTimeError.h"
#include "store/StatementText.h"

#include <cstdint>

namespace pontrel {

namespace {

/// The months begun between the two dates; the day of the month plays no part. Negative where `until` lies
/// before `since`.
int monthBoundaries(QDate since, QDate until) {
    return (until.year() - since.year()) * MonthsOfYear + until.month() - since.month();
}

/// Whole years of leave seniority up to the date. Negative for who starts a year or more after it.
int seniorityYears(QDate IniArrDate, std::int16_t BreakY, std::int16_t SoldierY, QDate date) {
    // The day after, so that the last day of a month counts the month as complete.
    const int months = monthBoundaries(IniArrDate, date.addDays(1));
    // Deliberate: broken service adds to the seniority as military service does.
    return (months + BreakY + SoldierY) / MonthsOfYear;
}

void writeSeniority(Database& database, const Rows& employees, QDate date) {
    if (!date.isValid())
        throw runTimeError(error::InvalidNull, QStringLiteral("gDate1"));
    runStage(database, [&] {
        for (const std::vector<Value>& employee : employees) {
            const QString EmpNo = employee[0].toText();
            const int years =
                seniorityYears(employee[1].toDate(), employee[2].toInt16(), employee[3].toInt16(), date);
            database.execute(QStringLiteral("Update Base06 set HoliExper =%1 Where EmpNo = %2")
                                 .arg(textLiteral(QString::number(years)), textLiteral(EmpNo)));
        }
    });
}

} // namespace

void ComputeSeniority(Database& database, SeniorityHost& host) {
    // Deliberate: nothing tests for a cancelled dialog, whose date is used as any other.
    const QDate date = host.askDate();
    const Rows employees =
        database.select(QStringLiteral("SELECT EmpNo,IniArrDate,BreakY,SoldierY FROM Base06 "));
    if (employees.isEmpty()) {
        host.refreshRecordBar();
        return;
    }
    // The trap is set at the first employee and holds to the end, the bar included.
    try {
        writeSeniority(database, employees, date);
        host.refreshRecordBar();
    } catch (const RunTimeError& failure) {
        host.openFailed(failure);
    }
}

} // namespace pontrel
