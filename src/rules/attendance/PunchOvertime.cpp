#include "rules/attendance/DailyCalculation.h"
#include "rules/attendance/Minutes.h"
#include "rules/attendance/PunchClasses.h"
#include "store/StatementText.h"

namespace pontrel {

namespace {

/// A swipe within these minutes of the opening one is a repeat of it.
constexpr int LeastMinutes = 10;

} // namespace

void DailyCalculation::BuildPunchOvertime(QDate date) {
    takeProgress();
    runStage(database_, [&] {
        const Rows employees = database_.select(
            QStringLiteral("select EmpNo,count(*) as UseCnt from AtteTemp where UseDate =%1  "
                           "and Class =%2 group by EmpNo")
                .arg(dateLiteral(date), textLiteral(OvertimeClass)));
        for (std::size_t row = 0; row < employees.count(); ++row) {
            const std::uint8_t cnt = employees.at(row, u"UseCnt").toByte();
            if (cnt != 0)
                pairSwipes(date, employees.at(row, u"EmpNo").toText(), cnt);
            addProgressBelow100(1);
        }
    });
}

void DailyCalculation::pairSwipes(QDate date, const QString& EmpNo, std::uint8_t cnt) {
    const QString day = dateLiteral(date);
    const QString employee = textLiteral(EmpNo);
    const Rows swipes = database_.select(
        QStringLiteral(
            "select Distinct UseTime from AtteTemp  where UseDate =%1    and class =%3     and Empno=%2")
            .arg(day, employee, textLiteral(OvertimeClass)));
    std::optional<QTime> beg;
    std::size_t row = 0;
    for (int i = 1; i <= cnt; ++i, ++row) {
        // Two swipes of the same second are counted as two and found as one: the walk ends behind the last
        // row.
        if (row >= swipes.count())
            throw runTimeError(error::NoCurrentRecord, QStringLiteral("UseTime"));
        const QTime UseTime = swipes.at(row, std::size_t{0}).toTime();
        const QString time = timeLiteral(secondOfDay(UseTime));
        if (i % 2 == 1) {
            beg = UseTime;
            if (cnt == 1)
                database_.execute(
                    QStringLiteral(
                        "insert into [Over01](OverDate,EmpNo,BegTime,OverHours)values(%1,%2,%3, 0)")
                        .arg(day, employee, time));
            continue;
        }
        const std::int16_t m = MinutesBetween(*beg, UseTime);
        if (m < LeastMinutes) {
            // The next swipe is tried in place of this one.
            --i;
            --cnt;
            continue;
        }
        database_.execute(
            QStringLiteral(
                "insert into [Over01](OverDate,EmpNo,BegTime,EndTime,OverHours)values(%1,%2,%3,%4,%5)")
                .arg(day, employee, timeLiteral(secondOfDay(*beg)), time,
                     QString::number(MinutesToHours(m))));
    }
}

} // namespace pontrel
