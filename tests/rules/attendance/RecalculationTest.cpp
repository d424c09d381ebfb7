#include "Opening.h"

#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

const Fields Afternoon{{u"Time3", QTime(13, 0)}, {u"FT3", true}, {u"Time4", QTime(17, 0)}, {u"FT4", true}};
const Fields MorningMissing{{u"F1", true}, {u"F2", true}, {u"Expt", true}};
const Fields MorningOnLeave{{u"FH1", true}, {u"FH2", true}};

} // namespace

/// The recalculation of a day after leave notes and write-offs were entered.
class RecalculationTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    void importAfternoons(const QByteArrayList& codes, QDate day = Day) {
        QByteArray file;
        for (const QByteArray& EmpNo : codes)
            file += punchLine(EmpNo, day, QTime(13, 0)) + punchLine(EmpNo, day, QTime(17, 0));
        it().import(day.toString(u"yyyyMMdd"_s) + u".txt"_s, file);
        it().host.calls.clear();
        it().host.progressValues.clear();
    }

    void takeMorningOff(const QString& EmpNo, QDate day = Day) {
        addLeaveDay(it().database(), EmpNo, day, u"01"_s, QTime(8, 0), QTime(12, 0));
    }

  private Q_SLOTS:
    void init() {
        opening_ = std::make_unique<Opening>();
        addSlot(it().database(), u"A"_s);
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s}) {
            addEmployee(it().database(), EmpNo);
            addRoster(it().database(), EmpNo, Day, u"A"_s);
        }
    }

    void afterALeaveNoteForAMissingMorningTheRowLeavesTheExceptions() {
        importAfternoons({"00001", "00002"});
        const QString stays = dailyRow(u"00002"_s, Day, u"A"_s, Afternoon + MorningMissing);
        QCOMPARE(it().rows(u"Atte03"_s),
                 (QStringList{dailyRow(u"00001"_s, Day, u"A"_s, Afternoon + MorningMissing), stays}));
        takeMorningOff(u"00001"_s);
        it().host.progressValue = 0;
        it().calculation.Recalculate(Day);
        const QString excused = dailyRow(u"00001"_s, Day, u"A"_s, Afternoon + MorningOnLeave);
        QCOMPARE(it().rows(u"Atte02"_s), (QStringList{excused, stays}));
        QCOMPARE(it().rows(u"Atte03"_s), QStringList{stays});
        QCOMPARE(it().rows(u"AtteTemp1"_s), (QStringList{excused, stays}));
        QCOMPARE(
            it().host.calls,
            (QStringList{u"hourglass"_s, u"normal pointer"_s,
                         u"showExceptions Select * from Atte03  Where UseDate = #2001/3/5# order by usedate "
                         "desc,empno"_s,
                         u"tell 2001/3/5異常處理已完成!!"_s}));
        QCOMPARE(it().host.insideStage, QStringList());
        QCOMPARE(it().host.progressValues, (QList<int>{2, 4}));
        QVERIFY(it().calculation.finished());
        QVERIFY(it().calculation.RecalcDone());
        QVERIFY(!it().calculation.ImportRunning());
    }

    void aDayWithoutExceptionsEmptiesTheStagingTableAndShowsTheMessage() {
        addRoster(it().database(), u"00001"_s, Day.addDays(1), u"A"_s);
        importAfternoons({"00001"});
        it().calculation.Recalculate(Day.addDays(1));
        QCOMPARE(it().rows(u"AtteTemp1"_s), QStringList());
        QCOMPARE(it().host.calls.last(), u"tell 2001/3/6異常處理已完成!!"_s);
        QVERIFY(it().calculation.finished());
    }

    void recalculationDoneIsSetFromTheFirstOnAndNotBefore() {
        QVERIFY(!it().calculation.RecalcDone());
        importAfternoons({"00001"});
        QVERIFY(!it().calculation.RecalcDone());
        it().calculation.Recalculate(Day);
        importAfternoons({"00001"}, Day.addDays(1));
        QVERIFY(it().calculation.RecalcDone());
    }

    void coverCanBeAddedButNotTakenAway() {
        takeMorningOff(u"00001"_s);
        it().import(u"20010305.txt"_s, {});
        const Fields afternoonMissing{{u"F3", true}, {u"F4", true}, {u"Expt", true}};
        const QString row = dailyRow(u"00001"_s, Day, u"A"_s, MorningOnLeave + afternoonMissing);
        QCOMPARE(it().rows(u"Atte02"_s).first(), row);
        it().database().execute(u"delete * from Holi04"_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(it().rows(u"Atte02"_s).first(), row);
        addWriteOff(it().database(), u"00001"_s, Day, u""_s, u""_s, u"01"_s, u"01"_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(it().rows(u"Atte02"_s).first(),
                 dailyRow(u"00001"_s, Day, u"A"_s, MorningOnLeave + Fields{{u"FC3", true}, {u"FC4", true}}));
        QCOMPARE(rowsOfSelection(it().database(), u"Select EmpNo from Atte03"_s), QStringList{u"00002"_s});
    }

    void minutesOfDelayAreWorkedOutAnewAndThoseOfTheCushionStay() {
        it().import(u"20010305.txt"_s,
                    punchLine("00001", Day, QTime(8, 10)) + punchLine("00001", Day, QTime(13, 3)));
        const Fields punched{{u"Time1", QTime(8, 10)}, {u"FT1", true},  {u"Time3", QTime(13, 3)},
                             {u"FT3", true},           {u"F2", true},   {u"F4", true},
                             {u"Expt", true},          {u"Cushion3", 3}};
        QCOMPARE(it().rows(u"Atte02"_s).first(),
                 dailyRow(u"00001"_s, Day, u"A"_s,
                          punched + Fields{{u"F1", true}, {u"Delay1", 5}, {u"DelayF", 1}}));
        addWriteOff(it().database(), u"00001"_s, Day, u"01"_s, u""_s, u"01"_s, u""_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(it().rows(u"Atte02"_s).first(),
                 dailyRow(u"00001"_s, Day, u"A"_s, punched + Fields{{u"FC1", true}, {u"FC3", true}}));
    }

    void punchesAreNotAssignedAgain() {
        importAfternoons({"00001"});
        it().database().execute(u"Update Base04 Set StrIn3 = #16:00:00#"_s);
        addPunch(it().database(), u"00001"_s, Day, QTime(8, 0));
        const QStringList before = it().rows(u"Atte02"_s) + it().rows(u"Atte03"_s) + it().rows(u"View02"_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(it().rows(u"Atte02"_s) + it().rows(u"Atte03"_s) + it().rows(u"View02"_s), before);
    }

    void anEmployeeWithoutAnExceptionIsNotTouched() {
        it().import(u"20010305.txt"_s,
                    punchLine("00001", Day, QTime(8, 0)) + punchLine("00001", Day, QTime(12, 0)) +
                        punchLine("00001", Day, QTime(13, 0)) + punchLine("00001", Day, QTime(17, 0)));
        const QStringList before = it().rows(u"Atte02"_s);
        takeMorningOff(u"00001"_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(it().rows(u"Atte02"_s), before);
    }

    void otherDaysAreNotTouched() {
        addRoster(it().database(), u"00001"_s, Day.addDays(1), u"A"_s);
        importAfternoons({"00001"});
        importAfternoons({"00001"}, Day.addDays(1));
        takeMorningOff(u"00001"_s, Day.addDays(1));
        const QStringList before = it().rows(u"Atte02"_s) + it().rows(u"Atte03"_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(it().rows(u"Atte02"_s) + it().rows(u"Atte03"_s), before);
        it().calculation.Recalculate(Day.addDays(1));
        QCOMPARE(rowsOfSelection(it().database(), u"Select EmpNo,UseDate from Atte03"_s),
                 (QStringList{u"00001|2001-03-05"_s, u"00002|2001-03-05"_s}));
    }

    void aLeavingDateDoesNotKeepAnExceptionFromItsRecalculation() {
        importAfternoons({"00001"});
        it().database().execute(u"Update Base06 Set LeaveDate = #2001/3/1#"_s);
        it().database().execute(u"delete * from Rule03"_s);
        takeMorningOff(u"00001"_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(rowsOfSelection(it().database(), u"Select EmpNo from Atte03"_s), QStringList{u"00002"_s});
    }

    void anImportAfterARecalculationPutsItsRowsInThePlaceOfWhatIsThere() {
        importAfternoons({"00001", "00002"});
        it().calculation.Recalculate(Day);
        it().host.answer = false;
        // The staged rows of the recalculated day are worked on once more, beside a new one each.
        it().database().execute(u"delete * from AtteTemp where EmpNo = '00001'"_s);
        it().import(u"20010305.txt"_s, {});
        const Fields absent{{u"F1", true}, {u"F2", true}, {u"F3", true}, {u"F4", true}, {u"Expt", true}};
        const QStringList rows{dailyRow(u"00001"_s, Day, u"A"_s, absent),
                               dailyRow(u"00002"_s, Day, u"A"_s, Afternoon + MorningMissing)};
        QCOMPARE(it().rows(u"Atte02"_s), rows);
        QCOMPARE(it().rows(u"Atte03"_s), rows);
        QCOMPARE(it().rows(u"AtteTemp1"_s), (QStringList{rows[0], rows[1], rows[0], rows[1]}));
    }

    /// Each slot's list is read when its turn comes and is not disturbed by what is written while it is
    /// walked.
    void anExceptionOfTwoSlotsIsWorkedOnAtBothTurns() {
        addSlot(it().database(), u"B"_s, {{u"CardType", 1}});
        const auto old = [&](const QString& EmpNo, const QString& TimeNo, const Fields& more) {
            const Fields fields =
                Fields{{u"EmpNo", EmpNo}, {u"UseDate", Day}, {u"TimeNo", TimeNo}, {u"Expt", true}} + more;
            insertRow(it().database(), u"Atte03"_s, fields);
            insertRow(it().database(), u"Atte02"_s, fields);
        };
        old(u"00001"_s, u"A"_s, {{u"F2", true}});
        old(u"00001"_s, u"B"_s, {{u"FT1", true}, {u"Time1", QTime(8, 10)}});
        old(u"00002"_s, u"A"_s, {{u"FT1", true}});
        takeMorningOff(u"00002"_s);
        addWriteOff(it().database(), u"00002"_s, Day, u""_s, u""_s, u"01"_s, u"01"_s);
        it().calculation.Recalculate(Day);
        // Both rows of 00001 are judged by slot A with the punch of the second; slot B adds nothing to it.
        const QStringList rows{
            dailyRow(u"00001"_s, Day, u"A"_s,
                     {{u"F1", true}, {u"F2", true}, {u"F3", true}, {u"F4", true}, {u"Expt", true}}),
            dailyRow(u"00001"_s, Day, u"B"_s,
                     {{u"FT1", true},
                      {u"Time1", QTime(8, 10)},
                      {u"Delay1", 5},
                      {u"DelayF", 1},
                      {u"F1", true},
                      {u"F2", true},
                      {u"F3", true},
                      {u"F4", true},
                      {u"Expt", true}})};
        QCOMPARE(it().rows(u"Atte03"_s), rows);
        QCOMPARE(it().rows(u"Atte02"_s),
                 rows +
                     QStringList{dailyRow(
                         u"00002"_s, Day, u"A"_s,
                         {{u"FT1", true}, {u"FH1", true}, {u"FH2", true}, {u"FC3", true}, {u"FC4", true}})});
    }

    /// RecalcDone is set also by a recalculation that ends early.
    void anErrorEndsTheRecalculationSilently() {
        addSlot(it().database(), u"B"_s);
        addEmployee(it().database(), u"00003"_s);
        addRoster(it().database(), u"00003"_s, Day, u"B"_s);
        importAfternoons({"00001", "00002", "00003"});
        takeMorningOff(u"00001"_s);
        addLeaveDay(it().database(), u"00002"_s, Day, u"01"_s, QTime(8, 0), QTime(), {{u"EndTime", Value()}});
        takeMorningOff(u"00003"_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(it().errorNumber(), error::InvalidNull);
        QVERIFY(!it().calculation.finished());
        QVERIFY(it().calculation.RecalcDone());
        QCOMPARE(it().host.calls, QStringList{u"hourglass"_s});
        QVERIFY(!it().database().inStage());
        // The reset of the flags and what was done before the error stay: the rest of the day has lost its
        // faults.
        const QString excused = dailyRow(u"00001"_s, Day, u"A"_s, Afternoon + MorningOnLeave);
        const QStringList reset{dailyRow(u"00002"_s, Day, u"A"_s, Afternoon),
                                dailyRow(u"00003"_s, Day, u"B"_s, Afternoon)};
        QCOMPARE(it().committedRows(u"Atte03"_s), reset);
        QCOMPARE(it().committedRows(u"Atte02"_s), QStringList{excused} + reset);
        QCOMPARE(it().committedRows(u"AtteTemp1"_s), QStringList{excused} + reset);
    }

    void anErrorInARowOfTimeSlotsKeepsTheSlotsBeforeIt() {
        addSlot(it().database(), u"B"_s, {{u"CardType", Value()}});
        importAfternoons({"00001"});
        QCOMPARE(it().errorNumber(), error::InvalidNull);
        takeMorningOff(u"00001"_s);
        it().calculation.Recalculate(Day);
        QCOMPARE(it().errorNumber(), error::InvalidNull);
        QCOMPARE(it().committedRows(u"Atte02"_s).first(),
                 dailyRow(u"00001"_s, Day, u"A"_s, Afternoon + MorningOnLeave));
    }
};

QTEST_GUILESS_MAIN(RecalculationTest)
#include "RecalculationTest.moc"
