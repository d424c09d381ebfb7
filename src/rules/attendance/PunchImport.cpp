#include "rules/attendance/DailyCalculation.h"
#include "rules/attendance/PunchFile.h"
#include "store/StagedCopy.h"
#include "store/StatementText.h"

namespace pontrel {

void DailyCalculation::UseRecord2Pontrel(QDate date, const QString& fileName, std::int16_t LenEmpNo,
                                         std::uint8_t IntervalSec) {
    // Deliberate: the staging tables are emptied only where a day is replaced.
    if (hasPunches(date)) {
        if (!mayReplace())
            return;
        clearDay(date, Reader::Current);
    }
    startWork();
    runStage(database_, [&] {
        readLines(fileName, {{}, LenEmpNo, IntervalSec}, Reader::Current);
        addProgress(12);
        // In place of "Insert into Atte01 Select * from AtteTemp": the same rows arrive, but what earlier
        // imports left in the staging table and is known to be there is passed over.
        copyStaged(database_, CopyTarget::Atte01);
    });
    showDay(date);
}

bool DailyCalculation::hasPunches(QDate date) {
    const Rows count = database_.select(QStringLiteral("Select count(*) as cnt From Atte01 Where UseDate =") +
                                        dateLiteral(date));
    return count.at(0, u"cnt").toInteger() > 0;
}

bool DailyCalculation::mayReplace() {
    return host_.confirm(QStringLiteral("這一天的資料已經轉入,是否要取代掉?"), ProgramTitle);
}

void DailyCalculation::clearDay(QDate date, Reader reader) {
    host_.beforeReplacingDay();
    const QString day = dateLiteral(date);
    runStage(database_, [&] {
        database_.execute(QStringLiteral("delete * from AtteTemp "));
        if (reader == Reader::Current)
            database_.execute(QStringLiteral("delete * from AtteTemp1 "));
        database_.execute(QStringLiteral("delete * from Atte01 where UseDate =") + day);
        database_.execute(QStringLiteral("delete * from Atte02 where UseDate =") + day);
        database_.execute(QStringLiteral("delete * from Atte03 where UseDate = ") + day);
        if (reader == Reader::Current)
            database_.execute(QStringLiteral("delete * from View02 where UseDate =") + day);
        // Deliberate: overtime entered by hand goes as well.
        database_.execute(QStringLiteral("delete * from Over01 where OverDate =") + day);
    });
}

void DailyCalculation::startWork() {
    host_.setPointer(Pointer::Hourglass);
    host_.setProgressShown(true);
    takeProgress();
    importRunning_ = true;
}

void DailyCalculation::readLines(const QString& fileName, const Settings& settings, Reader reader) {
    const bool old = reader == Reader::Old;
    PunchFile file(fileName);
    PunchReader punches(settings.LenEmpNo, settings.IntervalSec,
                        old ? PunchReader::SameReader::Required : PunchReader::SameReader::NotAsked);
    PunchLine line;
    while (file.readLine(line)) {
        const std::optional<Punch> punch = punches.take(line);
        if (!punch)
            continue;
        const std::array values = punch->values();
        if (old)
            database_.execute(Punch::intoPunches(), values);
        database_.execute(Punch::intoStaging(), values);
    }
}

void DailyCalculation::showDay(QDate date) {
    host_.showPunches(
        QStringLiteral("Select * from Atte01  Where UseDate = %1 order by usedate desc,empno,UseTime")
            .arg(dateLiteral(date)));
}

void DailyCalculation::UseRecord2PontrelOld() {
    const Settings settings = readSettings();
    const std::optional<QString> path = host_.choosePunchFile(settings.HandPath);
    if (!path)
        return;
    const QString dayText = fileDayText(*path);
    const QDate date = fileDay(dayText);
    if (hasPunches(date)) {
        if (!mayReplace())
            return;
        clearDay(date, Reader::Old);
    }
    startWork();
    runStage(database_, [&] {
        readLines(*path, settings, Reader::Old);
        addProgressBelow100(2);
    });
    fillSentinel();
    BuildPunchOvertime(date);
    addProgressBelow100(2);
    CalcSlotLoop(date, false);
    addProgressBelow100(2);
    if (host_.confirm(QStringLiteral("是否繼續轉入原始打卡資料檔?"), ProgramTitle)) {
        runStage(database_, [&] {
            database_.execute(QStringLiteral("delete * from View02 where UseDate =") + dateLiteral(date));
            FillDailyView(date);
        });
        addProgressBelow100(2);
    }
    clearSentinel();
    host_.setPointer(Pointer::Normal);
    host_.tell(dayText + QStringLiteral("資料已轉入成功!!"), WarningTitle);
    showDay(date);
    host_.setProgressShown(false);
    importRunning_ = false;
}

} // namespace pontrel
