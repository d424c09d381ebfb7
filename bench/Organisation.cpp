#include "Organisation.h"

#include "store/Database.h"
#include "store/Format.h"
#include "store/RunTimeError.h"

#include <QDir>
#include <QFile>

#include <random>

namespace pontrel::bench {

namespace {

constexpr int Slots = 5;

QString employeeCode(int number) {
    return QString::number(number).rightJustified(5, u'0');
}

QString slotOf(int number) {
    return QString::number(number % Slots + 1);
}

/// Each slot starts an hour after the one before it.
QTime shifted(int number, int hour, int minute) {
    return QTime(hour, minute).addSecs(number % Slots * 3600);
}

void createSlots(Database& database) {
    for (int slot = 0; slot < Slots; ++slot) {
        QString values = QStringLiteral("'%1','班%1',4,True,True,True,True").arg(slotOf(slot));
        for (const QTime time :
             {shifted(slot, 6, 0), shifted(slot, 8, 0), shifted(slot, 12, 0), shifted(slot, 12, 29),
              shifted(slot, 12, 30), shifted(slot, 13, 0), shifted(slot, 17, 0), shifted(slot, 19, 0)})
            values += QStringLiteral(",#%1#").arg(formatTime(time, QStringLiteral("hh:nn:ss")));
        database.execute(
            QStringLiteral("insert into Base04(TimeNo,TimeName,CardType,StdC1,StdC2,StdC3,StdC4,StrIn1,"
                           "StdT1,StdT2,EndOut2,StrIn3,StdT3,StdT4,EndOut4,ElstType,ElstMin,Cushion,"
                           "Delay,Earlier,Cushion1,Delay1,Earlier1) values(%1,0,0,5,30,10,5,30,10)")
                .arg(values));
    }
}

void createRoster(Database& database, const Organisation& organisation) {
    for (int number = 1; number <= organisation.employees; ++number) {
        const QString code = employeeCode(number);
        database.execute(
            QStringLiteral("insert into Base06(EmpNo,EmpName,UnitNo,ArriveDate) values('%1','員工%1','%2',"
                           "#2000/01/01#)")
                .arg(code, QStringLiteral("%1").arg(number % 40, 4, 10, QChar(u'0'))));
        for (int day = 0; day < organisation.days; ++day)
            database.execute(QStringLiteral("insert into Rule03(EmpNo,YMD,TimeNo) values('%1',#%2#,'%3')")
                                 .arg(code, shortDate(organisation.firstDay.addDays(day)), slotOf(number)));
    }
}

/// One in fifty is on leave, one in a hundred has a write-off, on every day.
void createCover(Database& database, const Organisation& organisation) {
    for (int day = 0; day < organisation.days; ++day) {
        const QString date = shortDate(organisation.firstDay.addDays(day));
        for (int number = 50; number <= organisation.employees; number += 50)
            database.execute(
                QStringLiteral("insert into Holi04(BusNo,EmpNo,HoliNo,HoliDate,BegTime,EndTime,HoliHours,"
                               "TimeNo) values('%1','%2','03',#%3#,#%4#,#%5#,4,'%6')")
                    .arg(QString::number(day * 1000 + number), employeeCode(number), date,
                         formatTime(shifted(number, 8, 0), QStringLiteral("hh:nn:ss")),
                         formatTime(shifted(number, 12, 0), QStringLiteral("hh:nn:ss")), slotOf(number)));
        for (int number = 100; number <= organisation.employees; number += 100)
            database.execute(
                QStringLiteral("insert into Canc02(EmpNo,CnlDate,CnlNo1) values('%1',#%2#,'01')")
                    .arg(employeeCode(number + 1 > organisation.employees ? 1 : number + 1), date));
    }
}

} // namespace

void Organisation::create(Database& database) const {
    Stage stage(database);
    createSlots(database);
    createRoster(database, *this);
    createCover(database, *this);
    stage.finish();
}

QString Organisation::writePunchFile(const QString& folder, QDate day) const {
    const QString path =
        QDir(folder).filePath(formatDate(day, QStringLiteral("yyyymmdd")) + QStringLiteral(".txt"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw runTimeError(error::FileAccess, file.errorString());
    std::minstd_rand random(static_cast<unsigned>(day.toJulianDay()));
    for (int punch = 0; punch < 4; ++punch) {
        static constexpr int hours[] = {8, 12, 13, 17};
        for (int number = 1; number <= employees; ++number) {
            // From ten minutes before the standard time to a little after; one in ten is late or leaves
            // early.
            const int late = static_cast<int>(random() % 10) == 0 ? 15 : -1;
            const int minutes =
                (punch % 2 == 0 ? late : -late) - static_cast<int>(random() % 8) * (punch % 2 == 0 ? 1 : -1);
            const QTime time =
                shifted(number, hours[punch], 0).addSecs(minutes * 60 + static_cast<int>(random() % 60));
            const QString line = QStringLiteral("0000000") + employeeCode(number) +
                                 formatDate(day, QStringLiteral("yyyymmdd")) +
                                 formatTime(time, QStringLiteral("hhnnss")) + QStringLiteral("25507001\n");
            file.write(line.toLatin1());
        }
    }
    return path;
}

} // namespace pontrel::bench
