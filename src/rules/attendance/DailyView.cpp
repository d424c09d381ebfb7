#include "rules/attendance/DailyCalculation.h"
#include "rules/attendance/Minutes.h"
#include "store/StatementText.h"

#include <array>

namespace pontrel {

void DailyCalculation::FillDailyView(QDate date) {
    const QString day = dateLiteral(date);
    runStage(database_, [&] {
        database_.execute(
            QStringLiteral(
                "insert into View02(EmpNo,UseDate) Select EmpNo,%1 From Base06 Where LeaveDate >= %1")
                .arg(day));
        // Deliberate: the list is filled once, and what an employee does not overwrite goes into his row as
        // well.
        std::array<int, 12> list{};
        const Rows employees =
            database_.select(QStringLiteral("select EmpNo from Base06 Where LeaveDate >= %1").arg(day));
        for (const std::vector<Value>& employee : employees) {
            const QString EmpNo = employee.at(0).toText();
            const Rows punches = database_.select(
                QStringLiteral(
                    "select UseTime from AtteTemp where UseDate = %1    and EmpNo = %2 order by UseTime")
                    .arg(day, textLiteral(EmpNo)));
            for (std::size_t punch = 0; punch < punches.count(); ++punch) {
                const QTime UseTime = punches.at(punch, std::size_t{0}).toTime();
                if (punch < list.size())
                    list[punch] = secondOfDay(UseTime);
            }
            writeDailyView(day, EmpNo, list);
        }
    });
}

void DailyCalculation::writeDailyView(const QString& day, const QString& EmpNo,
                                      const std::array<int, 12>& list) {
    QStringList assignments;
    for (std::size_t place = 0; place < list.size(); ++place)
        assignments += QStringLiteral("T%1=%2").arg(QString::number(place + 1), timeLiteral(list[place]));
    const QString where = QStringLiteral(" UseDate =%1    And EmpNo = %2").arg(day, textLiteral(EmpNo));
    database_.execute(QStringLiteral("Update View02 Set ") + assignments.join(u',') +
                      QStringLiteral(" Where") + where);
    for (std::size_t place = 1; place <= list.size(); ++place)
        database_.execute(
            QStringLiteral("Update View02 Set T%1 = Null Where format(T%1,'hh:nn:ss')='00:00:00' AND")
                .arg(place) +
            where);
}

void DailyCalculation::SetSlotTime(QDate date, const QString& EmpNo, QTime time, int slot) {
    database_.execute(
        QStringLiteral("Update AtteTemp1 Set Time%1 =%2 , FT%1 = True Where UseDate =%3    And EmpNo = %4")
            .arg(QString::number(slot), timeLiteral(secondOfDay(time)), dateLiteral(date),
                 textLiteral(EmpNo)));
}

} // namespace pontrel
