#include "rules/attendance/DailyCalculation.h"

#include "rules/NoDate.h"
#include "rules/attendance/PunchFile.h"
#include "store/Format.h"
#include "store/StatementText.h"

#include <algorithm>

namespace pontrel {

namespace {

constexpr int BarEnd = 110;

} // namespace

DailyCalculation::DailyCalculation(Database& database, AttendanceHost& host, DayObserver* observer)
    : database_(database), host_(host), observer_(observer) {}

void DailyCalculation::ReadPunchFile() {
    finished_ = false;
    lastError_.reset();
    const Settings settings = readSettings();
    // Deliberate: the action ends without a word, and what was done and shown until then stays.
    try {
        importFile(settings);
    } catch (const RunTimeError& failure) {
        lastError_ = failure;
    }
}

DailyCalculation::Settings DailyCalculation::readSettings() {
    const Rows rows = database_.select(QStringLiteral("select HandPath,LenEmpNo,IntervalSec from Syst01"));
    if (rows.isEmpty())
        throw runTimeError(error::NoCurrentRecord, QStringLiteral("Syst01"));
    return {rows.at(0, u"HandPath").toText(), rows.at(0, u"LenEmpNo").toInt16(),
            rows.at(0, u"IntervalSec").toByte()};
}

void DailyCalculation::importFile(const Settings& settings) {
    const std::optional<QString> path = host_.choosePunchFile(settings.HandPath);
    if (!path)
        return;
    const QString dayText = fileDayText(*path);
    fillSentinel();
    const QDate date = fileDay(dayText);
    UseRecord2Pontrel(date, *path, settings.LenEmpNo, settings.IntervalSec);
    takeProgress();
    addProgress(2);
    BuildPunchOvertime(date);
    addProgress(2);
    CalcSlotLoop(date, false);
    clearSentinel();
    host_.setProgress(BarEnd);
    host_.setPointer(Pointer::Normal);
    host_.tell(dayText + QStringLiteral("資料已轉入成功!!"), WarningTitle);
    host_.refreshExceptions();
    host_.setProgressShown(false);
    importRunning_ = false;
    finished_ = true;
}

void DailyCalculation::fillSentinel() {
    database_.execute(QStringLiteral("Update Base06 Set LeaveDate= ") + dateLiteral(NoDate) +
                      QStringLiteral(" Where IsNull(LeaveDate) = true "));
}

/// Deliberate: a real leaving date of that day goes as well.
void DailyCalculation::clearSentinel() {
    database_.execute(QStringLiteral("Update Base06 Set LeaveDate= null Where LeaveDate =") +
                      dateLiteral(NoDate));
}

void DailyCalculation::Recalculate(QDate date) {
    finished_ = false;
    lastError_.reset();
    recalcDone_ = true;
    // Deliberate: as with the import, an error ends the action without a word.
    try {
        recalculateDay(date);
    } catch (const RunTimeError& failure) {
        lastError_ = failure;
    }
}

void DailyCalculation::recalculateDay(QDate date) {
    const QString day = dateLiteral(date);
    runStage(database_, [&] {
        // Deliberate: cushions and cover are not reset, so that a recalculation can add cover but not take it
        // away.
        database_.execute(
            QStringLiteral("Update Atte03,Atte02 Set Atte03.F1 = False ,Atte03.F2 = False,Atte03.F3 = False,"
                           "Atte03.F4 = False,Atte03.Expt = False,Atte03.DelayF = 0,Atte03.Delay1 = 0 ,"
                           "Atte03.Earlier2 = 0 ,Atte03.Delay3 = 0 ,Atte03.Earlier4 = 0,Atte02.F1 = False ,"
                           "Atte02.F2 = False,Atte02.F3 = False,Atte02.F4 = False,Atte02.Expt = False,"
                           "Atte02.DelayF = 0,Atte02.Delay1 = 0 ,Atte02.Earlier2 = 0 ,Atte02.Delay3 = 0 ,"
                           "Atte02.Earlier4 = 0  Where Atte03.EmpNo =Atte02.EmpNo       and "
                           "Atte03.UseDate = Atte02.UseDate      and Atte03.UseDate =") +
            day);
        database_.execute(QStringLiteral("Delete  * From AtteTemp1"));
        database_.execute(QStringLiteral("Insert into AtteTemp1 select * from Atte03  where UseDate = ") +
                          day);
    });
    host_.setPointer(Pointer::Hourglass);
    CalcSlotLoop(date, true);
    host_.setPointer(Pointer::Normal);
    host_.showExceptions(
        QStringLiteral("Select * from Atte03  Where UseDate = %1 order by usedate desc,empno").arg(day));
    host_.tell(shortDate(date) + QStringLiteral("異常處理已完成!!"), WarningTitle);
    finished_ = true;
}

void DailyCalculation::addProgress(int step) {
    bar_ = std::min(BarEnd, bar_ + step);
    host_.setProgress(bar_);
}

void DailyCalculation::addProgressBelow100(int step) {
    if (bar_ < 100)
        addProgress(step);
}

} // namespace pontrel
