#include "Opening.h"

#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

QStringList leaveDates(Opening& opening) {
    return rowsOfSelection(opening.database(), u"Select EmpNo,LeaveDate from Base06"_s);
}

/// The four punches of a day without fault, at whole minutes.
QByteArray fullDay(const QByteArray& card) {
    return punchLine(card, Day, QTime(7, 58)) + punchLine(card, Day, QTime(12, 1)) +
           punchLine(card, Day, QTime(12, 50)) + punchLine(card, Day, QTime(17, 5));
}

QString fullDayRow(const QString& EmpNo) {
    return dailyRow(EmpNo, Day, u"A"_s,
                    {{u"Time1", QTime(7, 58)},
                     {u"Time2", QTime(12, 1)},
                     {u"Time3", QTime(12, 50)},
                     {u"Time4", QTime(17, 5)},
                     {u"FT1", true},
                     {u"FT2", true},
                     {u"FT3", true},
                     {u"FT4", true}});
}

/// A day without any punch: all four positions are faulty.
QString absentRow(const QString& EmpNo, QDate day = Day) {
    return dailyRow(EmpNo, day, u"A"_s,
                    {{u"F1", true}, {u"F2", true}, {u"F3", true}, {u"F4", true}, {u"Expt", true}});
}

} // namespace

/// The read button: from the file's choice to the message of success.
class ImportTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

  private Q_SLOTS:
    void init() {
        opening_ = std::make_unique<Opening>();
        addSlot(it().database(), u"A"_s);
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s}) {
            addEmployee(it().database(), EmpNo);
            addRoster(it().database(), EmpNo, Day, u"A"_s);
        }
    }

    void aNewDayIsReadAndWorkedOut() {
        it().import(u"20010305.txt"_s, fullDay("00001") + punchLine("00001", Day, QTime(18, 0), "000", "42") +
                                           punchLine("00001", Day, QTime(18, 0, 5)) +
                                           punchLine("00001", Day, QTime(20, 30), "081"));
        QCOMPARE(
            it().host.calls,
            (QStringList{u"choosePunchFile "_s + it().store.punchFolder(), u"hourglass"_s, u"bar shown"_s,
                         u"showPunches Select * from Atte01  Where UseDate = #2001/3/5# order by usedate "
                         "desc,empno,UseTime"_s,
                         u"normal pointer"_s, u"tell 2001/03/05資料已轉入成功!!"_s, u"refreshExceptions"_s,
                         u"bar hidden"_s}));
        QCOMPARE(it().host.insideStage, QStringList());
        const QStringList punches{punchRow(u"00001"_s, Day, QTime(7, 58)),
                                  punchRow(u"00001"_s, Day, QTime(12, 1)),
                                  punchRow(u"00001"_s, Day, QTime(12, 50)),
                                  punchRow(u"00001"_s, Day, QTime(17, 5)),
                                  punchRow(u"00001"_s, Day, QTime(18, 0, 5), u"081"_s),
                                  punchRow(u"00001"_s, Day, QTime(20, 30), u"081"_s)};
        QCOMPARE(it().rows(u"AtteTemp"_s), punches);
        QCOMPARE(it().rows(u"Atte01"_s), punches);
        QCOMPARE(it().rows(u"Over01"_s),
                 QStringList{overtimeRow(u"00001"_s, Day, QTime(18, 0, 5), QTime(20, 30), 2)});
        const QStringList days{fullDayRow(u"00001"_s), absentRow(u"00002"_s)};
        QCOMPARE(it().rows(u"AtteTemp1"_s), days);
        QCOMPARE(it().rows(u"Atte02"_s), days);
        QCOMPARE(it().rows(u"Atte03"_s), days.mid(1));
        QCOMPARE(
            it().rows(u"View02"_s),
            (QStringList{viewRow(u"00001"_s, Day, {QTime(7, 58), QTime(12, 1), QTime(12, 50), QTime(17, 5)}),
                         viewRow(u"00002"_s, Day, {})}));
        QCOMPARE(leaveDates(it()), (QStringList{u"00001|null"_s, u"00002|null"_s}));
        // 12 for the file, 2, 1 for the one employee with overtime, 2, 2 for each employee of the slot, the
        // end.
        QCOMPARE(it().host.progressValues, (QList<int>{12, 14, 15, 17, 19, 21, 110}));
        QVERIFY(!it().calculation.ImportRunning());
        QVERIFY(it().calculation.finished());
        QVERIFY(!it().calculation.lastError());
        QCOMPARE(it().host.pointer, Pointer::Normal);
        QVERIFY(!it().host.progressShown);
    }

    void whileTheDayIsWorkedOnEveryCurrentEmployeeLeavesOnTheSentinel() {
        addEmployee(it().database(), u"00003"_s, {{u"LeaveDate", QDate(2001, 3, 1)}});
        QStringList seen;
        bool running = false;
        it().host.onCall = [&](const QString& call) {
            if (!call.startsWith(u"showPunches"))
                return;
            seen = it().committedRows(u"Atte01"_s) + leaveDates(it());
            running = it().calculation.ImportRunning();
        };
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)));
        QCOMPARE(seen, (QStringList{punchRow(u"00001"_s, Day, QTime(8, 0)), u"00001|2038-01-01"_s,
                                    u"00002|2038-01-01"_s, u"00003|2001-03-01"_s}));
        QVERIFY(running);
        QCOMPARE(leaveDates(it()), (QStringList{u"00001|null"_s, u"00002|null"_s, u"00003|2001-03-01"_s}));
    }

    void anEmployeeWhoReallyLeavesOnTheSentinelComesBackAsNull() {
        addEmployee(it().database(), u"00003"_s, {{u"LeaveDate", QDate(2038, 1, 1)}});
        it().import(u"20010305.txt"_s, {});
        QCOMPARE(leaveDates(it()), (QStringList{u"00001|null"_s, u"00002|null"_s, u"00003|null"_s}));
    }

    void anEmptyFileWithANewDateGivesEveryRosteredEmployeeADayWithoutPunches() {
        addEmployee(it().database(), u"00003"_s);
        it().import(u"20010305.txt"_s, {});
        QVERIFY(it().calculation.finished());
        QCOMPARE(it().rows(u"AtteTemp"_s) + it().rows(u"Atte01"_s) + it().rows(u"Over01"_s), QStringList());
        const QStringList days{absentRow(u"00001"_s), absentRow(u"00002"_s)};
        QCOMPARE(it().rows(u"AtteTemp1"_s), days);
        QCOMPARE(it().rows(u"Atte02"_s), days);
        QCOMPARE(it().rows(u"Atte03"_s), days);
        QCOMPARE(it().rows(u"View02"_s),
                 (QStringList{viewRow(u"00001"_s, Day, {}), viewRow(u"00002"_s, Day, {})}));
    }

    void aLineOf20CharactersIsSkippedWithAllItsFieldsShifted() {
        it().import(u"20010305.txt"_s, "12345678901234567890\n" + punchLine("00001", Day, QTime(8, 0)));
        QVERIFY(it().calculation.finished());
        QCOMPARE(it().rows(u"Atte01"_s), QStringList{punchRow(u"00001"_s, Day, QTime(8, 0))});
    }

    void theWorkingLengthOfACodeComesFromTheSettings() {
        it().database().execute(u"Update Syst01 Set LenEmpNo = 12"_s);
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)));
        QCOMPARE(it().rows(u"Atte01"_s), QStringList{punchRow(u"000000000001"_s, Day, QTime(8, 0))});
    }

    void theIntervalOfAKeyComesFromTheSettings() {
        it().database().execute(u"Update Syst01 Set IntervalSec = 20"_s);
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0), "000", "42") +
                                           punchLine("00001", Day, QTime(8, 0, 20)));
        QCOMPARE(it().rows(u"Atte01"_s), QStringList{punchRow(u"00001"_s, Day, QTime(8, 0, 20), u"081"_s)});
    }

    void theDateOfALineStaysWithItsPunchAndOnlyTheFilesDayIsWorkedOut() {
        addRoster(it().database(), u"00001"_s, Day.addDays(-1), u"A"_s);
        it().import(u"20010305.txt"_s, punchLine("00001", Day.addDays(-1), QTime(8, 0)) +
                                           punchLine("00001", Day.addDays(-1), QTime(18, 0), "081"));
        const QStringList punches{punchRow(u"00001"_s, Day.addDays(-1), QTime(8, 0)),
                                  punchRow(u"00001"_s, Day.addDays(-1), QTime(18, 0), u"081"_s)};
        QCOMPARE(it().rows(u"Atte01"_s), punches);
        QCOMPARE(it().rows(u"Over01"_s), QStringList());
        QCOMPARE(it().rows(u"Atte02"_s), (QStringList{absentRow(u"00001"_s), absentRow(u"00002"_s)}));
    }

    void aPunchThatStandsTwiceInTheFileIsStagedTwiceAndKeptOnce() {
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)) +
                                           punchLine("00001", Day, QTime(8, 0)) +
                                           punchLine("00001", Day, QTime(8, 1)));
        const QString first = punchRow(u"00001"_s, Day, QTime(8, 0));
        const QString second = punchRow(u"00001"_s, Day, QTime(8, 1));
        QCOMPARE(it().rows(u"AtteTemp"_s), (QStringList{first, first, second}));
        QCOMPARE(it().rows(u"Atte01"_s), (QStringList{first, second}));
        QCOMPARE(it().rows(u"View02"_s).first(),
                 viewRow(u"00001"_s, Day, {QTime(8, 0), QTime(8, 0), QTime(8, 1)}));
    }

    void theFileIsReadAsLatin1() {
        it().import(u"20010305.txt"_s, punchLine("\xe4\xbd\xa0\x41\xff", Day, QTime(8, 0)));
        QCOMPARE(it().rows(u"Atte01"_s),
                 QStringList{punchRow(u"\u00e4\u00bd\u00a0A\u00ff"_s, Day, QTime(8, 0))});
    }

    void readingTheSameDayTwiceAndAnsweringYesGivesTheSameRows() {
        const QByteArray file = fullDay("00001") + punchLine("00002", Day, QTime(18, 0), "081");
        it().import(u"20010305.txt"_s, file);
        const QStringList once = dumpDailyTables(it().database());
        insertRow(it().database(), u"Over01"_s,
                  {{u"EmpNo", u"00002"}, {u"OverDate", Day}, {u"BegTime", QTime(6, 0)}, {u"OverHours", 1}});
        insertRow(it().database(), u"Over01"_s,
                  {{u"EmpNo", u"00002"},
                   {u"OverDate", Day.addDays(1)},
                   {u"BegTime", QTime(6, 0)},
                   {u"OverHours", 1}});
        it().host.calls.clear();
        it().import(u"20010305.txt"_s, file);
        QCOMPARE(it().host.calls.at(1), u"confirm 這一天的資料已經轉入,是否要取代掉?"_s);
        QCOMPARE(it().host.insideStage, QStringList());
        const QString kept = overtimeRow(u"00002"_s, Day.addDays(1), QTime(6, 0), QTime(), 1);
        QCOMPARE(it().rows(u"Over01"_s),
                 (QStringList{kept, overtimeRow(u"00002"_s, Day, QTime(18, 0), QTime(), 0)}));
        QStringList twice = dumpDailyTables(it().database());
        twice.removeOne(u"Over01: "_s + kept);
        QCOMPARE(twice, once);
    }

    void replacingADayLeavesTheOtherDaysResults() {
        addRoster(it().database(), u"00001"_s, Day.addDays(1), u"A"_s);
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)));
        it().import(u"20010306.txt"_s, punchLine("00001", Day.addDays(1), QTime(8, 0)));
        const QStringList before = it().rows(u"Atte02"_s) + it().rows(u"Atte03"_s) + it().rows(u"View02"_s);
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)));
        QCOMPARE(it().rows(u"Atte02"_s) + it().rows(u"Atte03"_s) + it().rows(u"View02"_s), before);
        // The staging tables hold the replaced day alone.
        QCOMPARE(it().rows(u"AtteTemp"_s), QStringList{punchRow(u"00001"_s, Day, QTime(8, 0))});
        QCOMPARE(it().rows(u"AtteTemp1"_s).size(), 2);
    }

    void readingTheSameDayTwiceAndAnsweringNoChangesNoPunchButCalculatesAgain() {
        it().import(u"20010305.txt"_s, fullDay("00001") + punchLine("00002", Day, QTime(18, 0), "081"));
        const QStringList punches = it().rows(u"Atte01"_s);
        const QStringList staged = it().rows(u"AtteTemp1"_s);
        const QStringList results = it().rows(u"Atte02"_s) + it().rows(u"Atte03"_s) + it().rows(u"View02"_s);
        it().host.calls.clear();
        it().host.progressValues.clear();
        it().host.answer = false;
        it().import(u"20010305.txt"_s, punchLine("00002", Day, QTime(9, 0)));
        QCOMPARE(it().host.calls, (QStringList{u"choosePunchFile "_s + it().store.punchFolder(),
                                               u"confirm 這一天的資料已經轉入,是否要取代掉?"_s,
                                               u"normal pointer"_s, u"tell 2001/03/05資料已轉入成功!!"_s,
                                               u"refreshExceptions"_s, u"bar hidden"_s}));
        QCOMPARE(it().rows(u"Atte01"_s), punches);
        QCOMPARE(it().rows(u"AtteTemp"_s), punches);
        QCOMPARE(it().rows(u"Atte02"_s) + it().rows(u"Atte03"_s) + it().rows(u"View02"_s), results);
        // What is only added comes a second time.
        QCOMPARE(it().rows(u"AtteTemp1"_s), staged + staged);
        const QString overtime = overtimeRow(u"00002"_s, Day, QTime(18, 0), QTime(), 0);
        QCOMPARE(it().rows(u"Over01"_s), (QStringList{overtime, overtime}));
        QVERIFY(it().calculation.finished());
    }

    void theBarNeverPasses110() {
        it().import(u"20010305.txt"_s, fullDay("00001"));
        QCOMPARE(it().host.progressValue, 110);
        it().host.progressValues.clear();
        it().host.answer = false;
        it().import(u"20010305.txt"_s, {});
        QCOMPARE(it().host.progressValues, (QList<int>{110, 110, 110}));
    }

    void theBarStopsAt100WhileTheWorkGoesOn() {
        it().store.holdOpen();
        QByteArray file;
        for (int index = 100; index < 160; ++index) {
            const QByteArray EmpNo = "00" + QByteArray::number(index);
            addEmployee(it().database(), QString::fromLatin1(EmpNo));
            addRoster(it().database(), QString::fromLatin1(EmpNo), Day, u"A"_s);
            file += punchLine(EmpNo, Day, QTime(18, 0), "081");
        }
        it().store.commit();
        it().import(u"20010305.txt"_s, file);
        QList<int> expected{12, 14};
        for (int value = 15; value <= 74; ++value)
            expected += value;
        for (int value = 76; value <= 100; value += 2)
            expected += value;
        expected += 110;
        QCOMPARE(it().host.progressValues, expected);
        QCOMPARE(it().rows(u"Atte02"_s).size(), 62);
    }

    void purgedPunchesComeBackWithTheNextNewDay() {
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)));
        it().database().execute(u" delete * from Atte01   where UseDate <= #2001/3/5#"_s);
        QCOMPARE(it().rows(u"Atte01"_s), QStringList());
        it().import(u"20010306.txt"_s, punchLine("00001", Day.addDays(1), QTime(8, 0)));
        QCOMPARE(it().rows(u"Atte01"_s), (QStringList{punchRow(u"00001"_s, Day, QTime(8, 0)),
                                                      punchRow(u"00001"_s, Day.addDays(1), QTime(8, 0))}));
    }

    void aPurgedDayIsReadAgainWithoutAQuestionOnTopOfWhatIsStaged() {
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(18, 0), "081"));
        it().database().execute(u" delete * from Atte01   where UseDate <= #2001/3/5#"_s);
        it().host.calls.clear();
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(18, 0, 1), "081"));
        QVERIFY(!it().host.calls.join(u' ').contains(u"confirm"_s));
        QCOMPARE(it().rows(u"AtteTemp"_s),
                 (QStringList{punchRow(u"00001"_s, Day, QTime(18, 0), u"081"_s),
                              punchRow(u"00001"_s, Day, QTime(18, 0, 1), u"081"_s)}));
        // The first import's row stands; the second's two swipes lie too close together to make one.
        QCOMPARE(it().rows(u"Over01"_s), QStringList{overtimeRow(u"00001"_s, Day, QTime(18, 0), QTime(), 0)});
        QCOMPARE(it().rows(u"AtteTemp1"_s).size(), 4);
        QCOMPARE(it().rows(u"Atte02"_s).size(), 2);
    }
};

QTEST_GUILESS_MAIN(ImportTest)
#include "ImportTest.moc"
