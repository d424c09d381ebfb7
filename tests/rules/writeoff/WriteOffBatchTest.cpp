#include "rules/writeoff/WriteOffBatch.h"
#include "rules/attendance/DailyCalculation.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/FakeHost.h"
#include "support/RecordingHost.h"
#include "support/TestStore.h"

#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);
const QDateTime Moment(QDate(2001, 3, 6), QTime(9, 10, 11));

} // namespace

/// The write-off batch: an entry of the day for each employee, in place of what he has.
class WriteOffBatchTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStore> store_;
    std::unique_ptr<RecordingHost<>> host_;

    Database& database() { return store_->database(); }
    [[nodiscard]] static WriteOffBatch batchOf(const QStringList& entries) {
        return {.entries = entries,
                .date = Day,
                .reasons = {u"01"_s, {}, {}, u"02"_s},
                .gAccount = u"clerk"_s,
                .TransDate = Moment};
    }
    void run(const WriteOffBatch& batch) { RunWriteOffBatch(database(), *host_, batch); }
    /// Number of the error, 0 where there is none.
    [[nodiscard]] int runAndTell(const WriteOffBatch& batch) {
        return errorOf([&] {
            run(batch);
            return 0;
        });
    }
    /// What the store has, as another connection sees it.
    [[nodiscard]] QStringList entries() const { return rowsOf(*store_->connect(), u"Canc02"_s); }
    [[nodiscard]] static QString entry(const QString& EmpNo,
                                       const QStringList& reasons = {u"01"_s, {}, {}, u"02"_s}) {
        return expectedRow(u"Canc02"_s, {{u"EmpNo", EmpNo},
                                         {u"CnlDate", Day},
                                         {u"CnlNo1", text(reasons.at(0))},
                                         {u"CnlNo2", text(reasons.at(1))},
                                         {u"CnlNo3", text(reasons.at(2))},
                                         {u"CnlNo4", text(reasons.at(3))},
                                         {u"Account", u"clerk"},
                                         {u"TransDate", Moment}});
    }
    /// An empty text, and no null.
    [[nodiscard]] static Value text(const QString& reason) { return {reason.isNull() ? u""_s : reason}; }

  private Q_SLOTS:
    void init() {
        store_ = std::make_unique<TestStore>();
        host_ = std::make_unique<RecordingHost<>>(&database());
        database().execute(u"Update Syst01 Set LenEmpNo = 5"_s);
    }

    void eachEmployeeGetsAnEntry() {
        run(batchOf({u"10003  周雅婷"_s, u"10001  王小明"_s, u"10002  "_s}));
        QCOMPARE(entries(), QStringList({entry(u"10001"_s), entry(u"10002"_s), entry(u"10003"_s)}));
        QCOMPARE(host_->calls, QStringList());
        QVERIFY(!database().inStage());
    }

    void anEntryOfTheDayIsReplacedWhateverItsReasons() {
        addWriteOff(database(), u"10001"_s, Day, u"03"_s, u"03"_s, u"03"_s, {});
        addWriteOff(database(), u"10001"_s, Day.addDays(1), u"03"_s, {}, {}, {});
        addWriteOff(database(), u"10002"_s, Day, u"03"_s, {}, {}, {});
        const QStringList before = entries();
        WriteOffBatch batch = batchOf({u"10001  王小明"_s});
        batch.reasons = {u"01"_s, {}, {}, {}};
        run(batch);
        // The reason of the second swipe is gone, for the batch names the first alone.
        QCOMPARE(entries(),
                 QStringList({entry(u"10001"_s, {u"01"_s, {}, {}, {}}), before.at(1), before.at(2)}));
    }

    void anEntryTakesTheSpellingOfTheBatch() {
        for (const QString& EmpNo : {u"a0001"_s, u"b0001"_s})
            addWriteOff(database(), EmpNo, Day, u"03"_s, u"03"_s, {}, {});
        run(batchOf({u"A0001"_s, u"b0001"_s, u"C0001"_s, u"c0001"_s}));
        // Codes that differ in their case alone are one; the last of them counts.
        QCOMPARE(entries(), QStringList({entry(u"A0001"_s), entry(u"b0001"_s), entry(u"c0001"_s)}));
    }

    void withoutReasonsTheEntryIsThereAndCoversNothing() {
        addEmployee(database(), u"10001"_s, {{u"LeaveDate", QDate(2038, 1, 1)}}); // as an import sees him
        addSlot(database(), u"A"_s);
        addRoster(database(), u"10001"_s, Day, u"A"_s);
        WriteOffBatch batch = batchOf({u"10001  王小明"_s});
        batch.reasons = {};
        run(batch);
        QCOMPARE(entries(), QStringList{entry(u"10001"_s, {{}, {}, {}, {}})});
        FakeHost host;
        DailyCalculation calculation(database(), host);
        calculation.CalcSlotLoop(Day, false);
        QCOMPARE(rowsOfSelection(database(), u"select FC1,FC2,FC3,FC4,F1,F4 from Atte02"_s),
                 QStringList{u"False|False|False|False|True|True"_s});
    }

    void aReasonCoversTheSwipeOfItsPlaceAlone() {
        addEmployee(database(), u"10001"_s, {{u"LeaveDate", QDate(2038, 1, 1)}}); // as an import sees him
        addSlot(database(), u"A"_s);
        addRoster(database(), u"10001"_s, Day, u"A"_s);
        WriteOffBatch batch = batchOf({u"10001  王小明"_s});
        batch.reasons = {QString(), QString(), u"01"_s, QString()};
        run(batch);
        FakeHost host;
        DailyCalculation calculation(database(), host);
        calculation.CalcSlotLoop(Day, false);
        QCOMPARE(rowsOfSelection(database(), u"select FC1,FC2,FC3,FC4,F3,F4 from Atte02"_s),
                 QStringList{u"False|False|True|False|False|True"_s});
    }

    void aReasonLongerThanItsColumnIsStoredWhole() {
        WriteOffBatch batch = batchOf({u"10001"_s});
        batch.reasons = {u"A12"_s, {}, {}, {}};
        run(batch);
        QCOMPARE(entries(), QStringList{entry(u"10001"_s, {u"A12"_s, {}, {}, {}})});
    }

    void aShorterLengthCutsTheCode_data() {
        QTest::addColumn<int>("length");
        QTest::addColumn<QStringList>("codes");
        QTest::newRow("to a code of nobody") << 5 << QStringList{u"10000"_s};
        QTest::newRow("the last of those that become one counts") << 4 << QStringList{u"1000"_s};
        QTest::newRow("the whole code") << 6 << QStringList{u"100001"_s, u"100002"_s};
        QTest::newRow("more than the code takes the blanks along")
            << 8 << QStringList{u"100001  "_s, u"100002  "_s};
        QTest::newRow("nothing of it") << 0 << QStringList{u""_s};
    }
    void aShorterLengthCutsTheCode() {
        QFETCH(const int, length);
        QFETCH(const QStringList, codes);
        database().execute(u"Update Syst01 Set LenEmpNo = %1"_s.arg(length));
        run(batchOf({u"100001  王小明"_s, u"100002  陳美惠"_s}));
        QStringList expected;
        for (const QString& EmpNo : codes)
            expected << entry(EmpNo);
        QCOMPARE(entries(), expected);
    }

    void withoutEmployeesNothingIsWritten() {
        // Not even the settings are read.
        database().execute(u"delete * from Syst01"_s);
        addWriteOff(database(), u"10001"_s, Day, u"03"_s, {}, {}, {});
        const QStringList before = entries();
        run(batchOf({}));
        QCOMPARE(host_->calls, QStringList({u"tell 錯誤訊息: 請選擇員工代碼...."_s,
                                            u"tell 錯誤訊息: 部份欄位未輸入所以存檔不成功,請重新輸入..."_s}));
        QCOMPARE(host_->insideStage, QStringList());
        QCOMPARE(entries(), before);
    }

    void anErrorOfTheSettingsComesAheadOfAllRows_data() {
        QTest::addColumn<QString>("spoil");
        QTest::addColumn<int>("number");
        QTest::newRow("no settings") << u"delete * from Syst01"_s << error::NoCurrentRecord;
        QTest::newRow("no length") << u"Update Syst01 Set LenEmpNo = Null"_s << error::InvalidNull;
        QTest::newRow("a negative length") << u"Update Syst01 Set LenEmpNo = -1"_s << 5;
    }
    void anErrorOfTheSettingsComesAheadOfAllRows() {
        QFETCH(const QString, spoil);
        QFETCH(const int, number);
        database().execute(spoil);
        QCOMPARE(runAndTell(batchOf({u"10001"_s})), number);
        QCOMPARE(entries(), QStringList());
    }

    void anEmptyDateBreaksTheFirstStatement() {
        addWriteOff(database(), u"10001"_s, Day, u"03"_s, {}, {}, {});
        const QStringList before = entries();
        WriteOffBatch batch = batchOf({u"10001"_s});
        batch.date = {};
        QCOMPARE(runAndTell(batch), error::Syntax);
        QCOMPARE(entries(), before);
    }

    void anApostropheBreaksItsStatement_data() {
        QTest::addColumn<int>("place"); ///< 0 the code, 1 to 4 a reason, 5 the account.
        QTest::newRow("in a code") << 0;
        for (int reason = 1; reason <= 4; ++reason)
            QTest::addRow("in reason %d", reason) << reason;
        QTest::newRow("in the account") << 5;
    }
    void anApostropheBreaksItsStatement() {
        QFETCH(const int, place);
        for (const QString& EmpNo : {u"10001"_s, u"10002"_s, u"10003"_s})
            addWriteOff(database(), EmpNo, Day, u"03"_s, {}, {}, {});
        const QStringList before = entries();
        WriteOffBatch batch = batchOf({u"10001"_s, place == 0 ? u"1'002"_s : u"10002"_s, u"10003"_s});
        if (place > 0 && place < 5)
            batch.reasons.at(static_cast<std::size_t>(place) - 1) = u"0' & '1"_s;
        else if (place == 5)
            batch.gAccount = u"o'neil"_s;
        QCOMPARE(runAndTell(batch), error::Syntax);
        // What came before stays. A reason or account breaks the insert, behind the delete.
        if (place == 0)
            QCOMPARE(entries(), QStringList({entry(u"10001"_s), before.at(1), before.at(2)}));
        else
            QCOMPARE(entries(), QStringList({before.at(1), before.at(2)}));
    }
};

QTEST_GUILESS_MAIN(WriteOffBatchTest)
#include "WriteOffBatchTest.moc"
