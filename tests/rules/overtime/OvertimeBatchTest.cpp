#include "rules/overtime/OvertimeBatch.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/RecordingHost.h"
#include "support/TestStore.h"

#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate March5(2001, 3, 5);
const QDateTime Begun(QDate(2001, 3, 6), QTime(9, 10, 11));

} // namespace

/// The overtime batch: a row for each employee.
class OvertimeBatchTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStore> store_;
    std::unique_ptr<RecordingHost<>> host_;
    Database& database() { return store_->database(); }

    /// On the 5th, from 22:00 to 01:30.
    [[nodiscard]] static OvertimeBatch batchOf(const QStringList& entries) {
        return {.entries = entries,
                .date = March5,
                .BegTime = QTime(22, 0),
                .EndTime = QTime(1, 30),
                .OverHours = u"3"_s,
                .gAccount = u"clerk"_s,
                .TransDate = Begun};
    }
    [[nodiscard]] static Fields rowOf(const QString& EmpNo) {
        return {{u"EmpNo", EmpNo},          {u"OverDate", March5}, {u"BegTime", QTime(22, 0)},
                {u"EndTime", QTime(1, 30)}, {u"OverHours", 3},     {u"Account", u"clerk"},
                {u"TransDate", Begun}};
    }
    [[nodiscard]] static QStringList told(const QList<Fields>& rows) {
        QStringList texts;
        for (const Fields& row : rows)
            texts += expectedRow(u"Over01"_s, row);
        return texts;
    }
    [[nodiscard]] QStringList rows() { return rowsOf(database(), u"Over01"_s); }

    /// Number of the error, 0 where there is none.
    int run(const OvertimeBatch& batch) {
        return errorOf([&] {
            RunOvertimeBatch(database(), *host_, batch);
            return 0;
        });
    }

  private Q_SLOTS:
    void init() {
        store_ = std::make_unique<TestStore>();
        host_ = std::make_unique<RecordingHost<>>(&database());
        database().execute(u"update Syst01 set LenEmpNo = 5"_s);
    }

    void eachEntryIsARowInTheOrderOfTheList() {
        QCOMPARE(run(batchOf({u"10003  丙"_s, u"10001  甲"_s})), 0);
        QCOMPARE(rows(), told({rowOf(u"10003"_s), rowOf(u"10001"_s)}));
        QCOMPARE(host_->calls, QStringList());
        QVERIFY(!database().inStage());
    }

    void whatIsThereStays() {
        insertRow(database(), u"Over01"_s, rowOf(u"10001"_s));
        QCOMPARE(run(batchOf({u"10001  甲"_s})), 0);
        QCOMPARE(rows(), told({rowOf(u"10001"_s), rowOf(u"10001"_s)}));
    }

    void codesAreCutToTheirLength_data() {
        QTest::addColumn<int>("LenEmpNo");
        QTest::addColumn<QString>("EmpNo");
        QTest::newRow("shorter than the code") << 3 << u"100"_s;
        QTest::newRow("longer, with blanks and name") << 8 << u"10001  甲"_s;
        QTest::newRow("nothing of it") << 0 << u""_s;
        // Twelve characters are more than the column's ten.
        QTest::newRow("beyond the column") << 12 << u"10001  甲乙丙丁戊"_s;
    }
    void codesAreCutToTheirLength() {
        QFETCH(const int, LenEmpNo);
        QFETCH(const QString, EmpNo);
        database().execute(u"update Syst01 set LenEmpNo = %1"_s.arg(LenEmpNo));
        QCOMPARE(run(batchOf({EmpNo.size() == 12 ? EmpNo + u"己"_s : u"10001  甲"_s})), 0);
        QCOMPARE(rows(), told({rowOf(EmpNo)}));
    }

    void aLengthThatIsNoneIsAnError() {
        database().execute(u"update Syst01 set LenEmpNo = null"_s);
        QCOMPARE(run(batchOf({u"10001  甲"_s})), error::InvalidNull);
        database().execute(u"update Syst01 set LenEmpNo = -1"_s);
        QCOMPARE(run(batchOf({u"10001  甲"_s})), 5);
        QCOMPARE(rows(), QStringList());
    }

    void secondsOfTheTimesAreCut() {
        OvertimeBatch batch = batchOf({u"10001"_s});
        batch.BegTime = QTime(18, 0, 59);
        batch.EndTime = QTime(20, 30, 1);
        QCOMPARE(run(batch), 0);
        QCOMPARE(rows(), told({with(with(rowOf(u"10001"_s), {u"BegTime", QTime(18, 0)}),
                                    {u"EndTime", QTime(20, 30)})}));
    }

    void hoursAreTheNumberInTheText_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("hours");
        QTest::newRow("of no period") << u"12"_s << 12;
        QTest::newRow("none") << u"0"_s << 0;
        QTest::newRow("blanks around") << u" 7 "_s << 7;
        QTest::newRow("a fraction is rounded to the even hour below") << u"2.5"_s << 2;
        QTest::newRow("and to the one above") << u"3.5"_s << 4;
    }
    void hoursAreTheNumberInTheText() {
        QFETCH(const QString, text);
        QFETCH(const int, hours);
        OvertimeBatch batch = batchOf({u"10001"_s});
        batch.OverHours = text;
        QCOMPARE(run(batch), 0);
        QCOMPARE(rows(), told({with(rowOf(u"10001"_s), {u"OverHours", hours})}));
    }

    void whatBreaksTheStatementWritesNothing_data() {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QTime>("begin");
        QTest::addColumn<QTime>("end");
        QTest::addColumn<QString>("hours");
        const QTime time(8, 0);
        QTest::newRow("no date") << QDate() << time << time << u"0"_s;
        QTest::newRow("no begin") << March5 << QTime() << time << u"0"_s;
        QTest::newRow("no end") << March5 << time << QTime() << u"0"_s;
        QTest::newRow("no hours") << March5 << time << time << QString();
        for (const QString& hours : {u" "_s, u"a"_s, u"2a"_s, u"1+1"_s, u"1,5"_s, u"2 3"_s, u"."_s, u"'2'"_s,
                                     u"null"_s, u"1e3"_s, u"２"_s})
            QTest::addRow("hours \"%s\"", qPrintable(hours)) << March5 << time << time << hours;
    }
    void whatBreaksTheStatementWritesNothing() {
        QFETCH(const QDate, date);
        QFETCH(const QTime, begin);
        QFETCH(const QTime, end);
        QFETCH(const QString, hours);
        OvertimeBatch batch = batchOf({u"10001"_s, u"10002"_s});
        batch.date = date;
        batch.BegTime = begin;
        batch.EndTime = end;
        batch.OverHours = hours;
        QCOMPARE(run(batch), error::Syntax);
        QCOMPARE(rows(), QStringList());
    }

    void withoutEmployeesNothingElseIsLookedAt() {
        OvertimeBatch batch = batchOf({});
        batch.date = {};
        database().execute(u"update Syst01 set LenEmpNo = null"_s);
        QCOMPARE(run(batch), 0);
        QCOMPARE(host_->calls, QStringList({u"tell 錯誤訊息: 請選擇員工代碼...."_s,
                                            u"tell 錯誤訊息: 部份欄位未輸入所以存檔不成功,請重新輸入..."_s}));
        QCOMPARE(rows(), QStringList());
    }

    void anApostropheLeavesThoseBeforeIt() {
        QCOMPARE(run(batchOf({u"10001"_s, u"1000'"_s, u"10003"_s})), error::Syntax);
        QCOMPARE(rowsOf(*store_->connect(), u"Over01"_s), told({rowOf(u"10001"_s)}));
        OvertimeBatch batch = batchOf({u"10002"_s});
        batch.gAccount = u"o'neil"_s;
        QCOMPARE(run(batch), error::Syntax);
        QCOMPARE(rows(), told({rowOf(u"10001"_s)}));
    }
};

QTEST_GUILESS_MAIN(OvertimeBatchTest)
#include "OvertimeBatchTest.moc"
