#include "Opening.h"

#include "store/RunTimeError.h"
#include "support/Errors.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

} // namespace

/// Ways in which the read button ends without its message, and what is there afterwards.
class ImportFailureTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    [[nodiscard]] QStringList leaveDates() {
        return rowsOfSelection(it().database(), u"Select EmpNo,LeaveDate from Base06"_s);
    }

    /// The state of an action that ended while the bar was running.
    void verifyEndedSilently(int number) {
        QCOMPARE(it().errorNumber(), number);
        QVERIFY(!it().calculation.finished());
        QVERIFY(it().calculation.ImportRunning());
        QVERIFY(it().host.progressShown);
        QCOMPARE(it().host.pointer, Pointer::Hourglass);
        QVERIFY(!it().host.calls.join(u'\n').contains(u"tell "_s));
        QVERIFY(!it().database().inStage());
        QCOMPARE(leaveDates(), QStringList{u"00001|2038-01-01"_s});
    }

  private Q_SLOTS:
    void init() {
        opening_ = std::make_unique<Opening>();
        addSlot(it().database(), u"A"_s);
        addEmployee(it().database(), u"00001"_s);
        addRoster(it().database(), u"00001"_s, Day, u"A"_s);
    }

    void cancelInTheDialogChangesNothingAtAll() {
        it().calculation.ReadPunchFile();
        QCOMPARE(it().host.calls, QStringList{u"choosePunchFile "_s + it().store.punchFolder()});
        QCOMPARE(leaveDates(), QStringList{u"00001|null"_s});
        QVERIFY(!it().calculation.finished());
        QVERIFY(!it().calculation.lastError());
        QVERIFY(!it().calculation.ImportRunning());
        QCOMPARE(it().host.progressValues, QList<int>());
    }

    void settingsThatCannotBeReadAreNoSilentEnd_data() {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<int>("number");
        QTest::newRow("no row of settings") << u"delete * from Syst01"_s << error::NoCurrentRecord;
        QTest::newRow("no punch folder") << u"Update Syst01 Set HandPath = Null"_s << error::InvalidNull;
        QTest::newRow("no length of codes") << u"Update Syst01 Set LenEmpNo = Null"_s << error::InvalidNull;
        QTest::newRow("a length beyond 16 bits")
            << u"Update Syst01 Set LenEmpNo = 40000"_s << error::Overflow;
        QTest::newRow("no interval") << u"Update Syst01 Set IntervalSec = Null"_s << error::InvalidNull;
        QTest::newRow("an interval beyond 8 bits")
            << u"Update Syst01 Set IntervalSec = 256"_s << error::Overflow;
    }
    void settingsThatCannotBeReadAreNoSilentEnd() {
        QFETCH(QString, statement);
        it().database().execute(statement);
        QTEST(errorOf([&] { it().calculation.ReadPunchFile(); }), "number");
        QCOMPARE(it().host.calls, QStringList());
    }

    void aBadFileNameEndsAfterTheSentinelAndBeforeTheBar_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("no such day") << u"20010230.txt"_s;
        QTest::newRow("letters") << u"punches.txt"_s;
        QTest::newRow("a short name") << u"a.t"_s;
    }
    void aBadFileNameEndsAfterTheSentinelAndBeforeTheBar() {
        QFETCH(QString, name);
        it().import(name, punchLine("00001", Day, QTime(8, 0)));
        QCOMPARE(it().errorNumber(), error::TypeMismatch);
        QCOMPARE(leaveDates(), QStringList{u"00001|2038-01-01"_s});
        QCOMPARE(it().host.calls, QStringList{u"choosePunchFile "_s + it().store.punchFolder()});
        QVERIFY(!it().calculation.ImportRunning());
        QVERIFY(!it().calculation.finished());
        QCOMPARE(it().rows(u"AtteTemp"_s), QStringList());
    }

    void aBadLineEndsTheActionAndTheRowsBeforeItStay_data() {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<int>("number");
        const QByteArray good = punchLine("00001", Day, QTime(9, 0));
        QTest::newRow("an invalid date") << QByteArray(good).replace(12, 8, "20010230") << error::Syntax;
        QTest::newRow("an invalid time") << QByteArray(good).replace(20, 6, "250000") << error::Syntax;
        QTest::newRow("a blank in the date") << QByteArray(good).replace(18, 2, " 5") << error::Syntax;
        QTest::newRow("a quote inside the card") << QByteArray(good).replace(9, 1, "'") << error::Syntax;
        QTest::newRow("two quotes inside the card") << QByteArray(good).replace(8, 2, "''") << error::Syntax;
        QTest::newRow("a quote inside the class") << QByteArray(good).replace(27, 1, "'") << error::Syntax;
        QTest::newRow("a quote inside the reader") << QByteArray(good).replace(33, 1, "'") << error::Syntax;
        QTest::newRow("an empty line is no swipe, a swipe of zeros has no date")
            << QByteArray("0000007000\n") << error::Syntax;
        QTest::newRow("a swipe behind a key without a time")
            << QByteArray(punchLine("00001", Day, QTime(9, 0), "000", "42")).replace(20, 6, "999999") + good
            << error::TypeMismatch;
    }
    void aBadLineEndsTheActionAndTheRowsBeforeItStay() {
        QFETCH(QByteArray, line);
        QFETCH(int, number);
        it().import(u"20010305.txt"_s,
                    punchLine("00001", Day, QTime(8, 0)) + line + punchLine("00001", Day, QTime(10, 0)));
        verifyEndedSilently(number);
        QCOMPARE(it().committedRows(u"AtteTemp"_s), QStringList{punchRow(u"00001"_s, Day, QTime(8, 0))});
        QCOMPARE(it().rows(u"Atte01"_s) + it().rows(u"AtteTemp1"_s) + it().rows(u"View02"_s), QStringList());
        QCOMPARE(it().host.calls, (QStringList{u"choosePunchFile "_s + it().store.punchFolder(),
                                               u"hourglass"_s, u"bar shown"_s}));
        QCOMPARE(it().host.progressValues, QList<int>());
    }

    void aFileThatCannotBeOpenedFailsAfterTheQuestionAndTheDeletes() {
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)));
        it().host.calls.clear();
        it().host.punchFile = it().store.punchFolder() + u"/gone/20010305.txt"_s;
        it().calculation.ReadPunchFile();
        verifyEndedSilently(error::FileNotFound);
        QCOMPARE(it().host.calls, (QStringList{u"choosePunchFile "_s + it().store.punchFolder(),
                                               u"confirm 這一天的資料已經轉入,是否要取代掉?"_s,
                                               u"hourglass"_s, u"bar shown"_s}));
        for (const QString& table :
             {u"AtteTemp"_s, u"AtteTemp1"_s, u"Atte01"_s, u"Atte02"_s, u"Atte03"_s, u"View02"_s})
            QCOMPARE(it().committedRows(table), QStringList());
    }

    void whatIsNoRegularFileFailsWhereItIsOpenedWithoutWaiting_data() {
        QTest::addColumn<QString>("target");
        QTest::newRow("a pipe") << QString();
        QTest::newRow("a link to a pipe") << u"pipe"_s;
        QTest::newRow("a link to a device") << u"/dev/zero"_s;
        QTest::newRow("a link to a device without content") << u"/dev/null"_s;
        QTest::newRow("a link to a folder") << u"."_s;
    }
    void whatIsNoRegularFileFailsWhereItIsOpenedWithoutWaiting() {
        QFETCH(QString, target);
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)));
        it().host.calls.clear();
        const QString folder = it().store.punchFolder() + u'/';
        const QString path = folder + u"other-20010305.txt"_s;
        const QString pipe = target.isEmpty() ? path : folder + u"pipe"_s;
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        if (!target.isEmpty())
            QVERIFY(QFile::link(target, path));
        it().host.punchFile = path;
        it().calculation.ReadPunchFile();
        verifyEndedSilently(error::FileAccess);
        QCOMPARE(it().host.calls, (QStringList{u"choosePunchFile "_s + it().store.punchFolder(),
                                               u"confirm 這一天的資料已經轉入,是否要取代掉?"_s,
                                               u"hourglass"_s, u"bar shown"_s}));
        for (const QString& table : {u"AtteTemp"_s, u"Atte01"_s, u"Atte02"_s})
            QCOMPARE(it().committedRows(table), QStringList());
    }

    void afterAnImportThatEndedEarlyALaterOneOpensItsFileNormally() {
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)) + "0000007000\n");
        verifyEndedSilently(error::Syntax);
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(9, 0)));
        QVERIFY(it().calculation.finished());
        QVERIFY(!it().calculation.ImportRunning());
        QCOMPARE(it().errorNumber(), 0);
        QCOMPARE(leaveDates(), QStringList{u"00001|null"_s});
        // The punches that the first left in the staging table arrive with the second.
        const QStringList punches{punchRow(u"00001"_s, Day, QTime(8, 0)),
                                  punchRow(u"00001"_s, Day, QTime(9, 0))};
        QCOMPARE(it().rows(u"AtteTemp"_s), punches);
        QCOMPARE(it().rows(u"Atte01"_s), punches);
    }

    void resultsLeftByAnImportThatEndedEarlyArriveWithTheNext() {
        // The second employee has leave of type 14 before the day begins, which ends the calculation at him.
        addEmployee(it().database(), u"00002"_s);
        addRoster(it().database(), u"00002"_s, Day, u"A"_s);
        addLeaveDay(it().database(), u"00002"_s, Day, u"14"_s, QTime(6, 0), QTime(7, 0));
        it().import(u"20010305.txt"_s, {});
        QCOMPARE(it().errorNumber(), error::UnknownName);
        const QStringList faults = rowsOfSelection(it().database(), u"Select EmpNo,F1,Expt from AtteTemp1"_s);
        QCOMPARE(faults, (QStringList{u"00001|True|True"_s, u"00002|False|False"_s}));
        QCOMPARE(it().committedRows(u"AtteTemp1"_s).size(), 2);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList());
        QCOMPARE(rowsOfSelection(it().database(), u"Select EmpNo from Atte03"_s), QStringList{u"00001"_s});
        it().database().execute(u"delete * from Holi04"_s);
        it().import(u"20010306.txt"_s, {});
        QVERIFY(it().calculation.finished());
        QCOMPARE(rowsOfSelection(it().database(), u"Select EmpNo,UseDate,F1,Expt from Atte02"_s),
                 (QStringList{u"00001|2001-03-05|True|True"_s, u"00002|2001-03-05|False|False"_s}));
    }

    void twoOvertimeSwipesOfOneSecondEndTheActionBeforeTheTimeSlots() {
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(18, 0), "081") +
                                           punchLine("00001", Day, QTime(18, 0), "081"));
        verifyEndedSilently(error::NoCurrentRecord);
        QCOMPARE(it().committedRows(u"Atte01"_s),
                 QStringList{punchRow(u"00001"_s, Day, QTime(18, 0), u"081"_s)});
        QCOMPARE(it().rows(u"Over01"_s) + it().rows(u"AtteTemp1"_s), QStringList());
        QCOMPARE(it().host.progressValues, (QList<int>{12, 14}));
    }

    void aWindowThatCannotShowThePunchesEndsTheActionAsWell() {
        it().host.onCall = [](const QString& call) {
            if (call.startsWith(u"showPunches"))
                throw runTimeError(error::StoreLocked);
        };
        it().import(u"20010305.txt"_s, punchLine("00001", Day, QTime(8, 0)));
        verifyEndedSilently(error::StoreLocked);
        QCOMPARE(it().rows(u"Atte01"_s), QStringList{punchRow(u"00001"_s, Day, QTime(8, 0))});
        QCOMPARE(it().rows(u"AtteTemp1"_s), QStringList());
    }
};

QTEST_GUILESS_MAIN(ImportFailureTest)
#include "ImportFailureTest.moc"
