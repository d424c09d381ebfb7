#include "rules/writeoff/WriteOffCounts.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <QTest>

#include <memory>
#include <random>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate First(2001, 3, 1);
const QDate Last(2001, 3, 31);

/// The count statement by statement, as its text has it.
void countLongWay(Database& database, const QString& EmpNo, const QString& first, const QString& last) {
    database.execute(u"delete * from View01"_s);
    for (const auto& reason : database.select(u"SELECT CnlNo From Canc01 "_s)) {
        const QString CnlNo = reason.front().joined();
        database.execute(u"Insert Into View01(EmpNo,BegDate,EndDate,CnlNo) Values('%1',#%2#,#%3#,'%4')"_s.arg(
            EmpNo, first, last, CnlNo));
        for (int swipe = 1; swipe <= 4; ++swipe) {
            const QString count =
                database
                    .select(
                        u"SELECT count(*) as CnlTimes   From Canc02   where CnlDate between  #%1# and #%2# "
                        "    and EmpNo = '%3'     and CnlNo%4 = '%5'"_s.arg(first, last, EmpNo,
                                                                            QString::number(swipe), CnlNo))
                    .at(0, 0)
                    .joined();
            database.execute(
                u"Update View01 Set CnlTimes = CnlTimes + %1 Where EmpNo = '%2'   and CnlNo = '%3'"_s.arg(
                    count, EmpNo, CnlNo));
        }
    }
    database.execute(u"delete * from View01  Where CnlTimes = 0"_s);
}

} // namespace

/// How often each reason has written off a swipe.
class WriteOffCountsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStore> store_;

    Database& database() { return store_->database(); }
    void addReasons(const QStringList& codes) {
        for (const QString& CnlNo : codes)
            insertRow(database(), u"Canc01"_s, {{u"CnlNo", CnlNo}});
    }
    [[nodiscard]] QStringList counts() const { return rowsOf(*store_->connect(), u"View01"_s); }
    [[nodiscard]] static QString count(const QString& CnlNo, int CnlTimes, const QString& EmpNo = u"10001"_s,
                                       QDate first = First, QDate last = Last) {
        return expectedRow(u"View01"_s, {{u"EmpNo", EmpNo},
                                         {u"BegDate", first},
                                         {u"EndDate", last},
                                         {u"CnlNo", CnlNo},
                                         {u"CnlTimes", CnlTimes}});
    }
    /// Number of the error, 0 where there is none.
    [[nodiscard]] int countAndTell(const QString& EmpNo) {
        return errorOf([&] {
            CountWriteOffs(database(), EmpNo, First, Last);
            return 0;
        });
    }
    /// Rows of an earlier count, of somebody else.
    void addEarlierCount() {
        insertRow(database(), u"View01"_s, {{u"EmpNo", u"10009"}, {u"CnlNo", u"01"}, {u"CnlTimes", 7}});
    }

  private Q_SLOTS:
    void init() { store_ = std::make_unique<TestStore>(); }

    void eachReasonThatOccurredHasARow() {
        addReasons({u"03"_s, u"01"_s, u"02"_s});
        addEarlierCount();
        addWriteOff(database(), u"10001"_s, First, u"01"_s, {}, {}, u"03"_s);
        addWriteOff(database(), u"10001"_s, Last, u""_s, u"01"_s, u"01"_s, {});
        addWriteOff(database(), u"10001"_s, First.addDays(-1), u"02"_s, {}, {}, {});
        addWriteOff(database(), u"10001"_s, Last.addDays(1), u"02"_s, {}, {}, {});
        addWriteOff(database(), u"10002"_s, First, u"02"_s, {}, {}, {});
        CountWriteOffs(database(), u"10001"_s, First, Last);
        // Both ends of the period count; the earlier count is gone.
        QCOMPARE(counts(), QStringList({count(u"01"_s, 3), count(u"03"_s, 1)}));
        QVERIFY(!database().inStage());
    }

    void aReasonOnAllFourSwipesCountsFour() {
        addReasons({u"01"_s});
        addWriteOff(database(), u"10001"_s, First, u"01"_s, u"01"_s, u"01"_s, u"01"_s);
        CountWriteOffs(database(), u"10001"_s, First, Last);
        QCOMPARE(counts(), QStringList{count(u"01"_s, 4)});
    }

    void aBeginBehindTheEndLeavesNothing() {
        addReasons({u"01"_s});
        addEarlierCount();
        addWriteOff(database(), u"10001"_s, First, u"01"_s, {}, {}, {});
        CountWriteOffs(database(), u"10001"_s, Last, First);
        QCOMPARE(counts(), QStringList());
    }

    void withoutADayThePeriodIsEmpty() {
        addReasons({u"01"_s});
        addWriteOff(database(), u"10001"_s, First, u"01"_s, {}, {}, {});
        for (const auto& [first, last] : {std::pair(QDate(), Last), std::pair(First, QDate())}) {
            addEarlierCount();
            CountWriteOffs(database(), u"10001"_s, first, last);
            QCOMPARE(counts(), QStringList());
        }
    }

    void anEmployeeWithoutEntriesHasNoRow() {
        addReasons({u"01"_s});
        addEarlierCount();
        CountWriteOffs(database(), u"10001"_s, First, Last);
        QCOMPARE(counts(), QStringList());
        CountWriteOffs(database(), QString(), First, Last);
        QCOMPARE(counts(), QStringList());
    }

    void withoutReasonsThereIsNothingToCount() {
        addEarlierCount();
        addWriteOff(database(), u"10001"_s, First, u"01"_s, {}, {}, {});
        CountWriteOffs(database(), u"10001"_s, First, Last);
        QCOMPARE(counts(), QStringList());
        // And nothing that a code could break.
        CountWriteOffs(database(), u"1'001"_s, First, Last);
        QCOMPARE(counts(), QStringList());
    }

    void aReasonOfNoListIsNotCounted() {
        addReasons({u"01"_s});
        addWriteOff(database(), u"10001"_s, First, u"99"_s, u"01"_s, {}, {});
        CountWriteOffs(database(), u"10001"_s, First, Last);
        QCOMPARE(counts(), QStringList{count(u"01"_s, 1)});
    }

    void codesAreComparedWithoutTheirCase() {
        addReasons({u"aB"_s});
        addWriteOff(database(), u"x1"_s, First, u"AB"_s, u"ab"_s, u"aB"_s, u"ab "_s);
        CountWriteOffs(database(), u"X1"_s, First, Last);
        // The reason as its list spells it, the employee as it was typed.
        QCOMPARE(counts(), QStringList{count(u"aB"_s, 3, u"X1"_s)});
    }

    void anApostropheBreaksItsStatement() {
        addReasons({u"01"_s, u"02"_s, u"0'"_s, u"04"_s});
        addEarlierCount();
        addWriteOff(database(), u"10001"_s, First, u"02"_s, {}, {}, {});
        QCOMPARE(countAndTell(u"1'001"_s), error::Syntax);
        QCOMPARE(counts(), QStringList());
        // A reason's breaks behind those that come before it, which keep their rows, counted or not.
        database().execute(u"delete * from Canc01 where CnlNo = '01'"_s);
        addReasons({u"00"_s, u"0&"_s});
        addEarlierCount();
        QCOMPARE(countAndTell(u"10001"_s), error::Syntax);
        QCOMPARE(counts(), QStringList({count(u"0&"_s, 0)}));
        QVERIFY(!database().inStage());
    }

    void itLeavesWhatTheStatementsOneByOneWouldLeave() {
        const QStringList codes{u"01"_s, u"02"_s, u"a"_s, u"B"_s, u"0"_s};
        const QStringList stored = codes + QStringList{u"A"_s, u"b"_s, u"99"_s, u""_s, QString()};
        addReasons(codes);
        std::mt19937 random(20010305); // NOLINT: the same cases at every run
        const auto below = [&random](qsizetype end) {
            return static_cast<qsizetype>(random() % static_cast<unsigned>(end));
        };
        store_->holdOpen();
        for (int day = 0; day < 60; ++day) {
            for (const QString& EmpNo : {u"10001"_s, u"10002"_s, u"e1"_s}) {
                const auto reason = [&] { return stored.at(below(stored.size())); };
                addWriteOff(database(), EmpNo, First.addDays(day), reason(), reason(), reason(), reason());
            }
        }
        store_->commit();
        for (int round = 0; round < 30; ++round) {
            const QString EmpNo = QStringList{u"10001"_s, u"E1"_s, u"10009"_s}.at(below(3));
            const QDate first = First.addDays(below(60));
            const QDate last = first.addDays(below(40) - 5);
            countLongWay(database(), EmpNo, shortDateOf(first), shortDateOf(last));
            const QStringList expected = counts();
            CountWriteOffs(database(), EmpNo, first, last);
            QCOMPARE(counts(), expected);
        }
    }

  private:
    [[nodiscard]] static QString shortDateOf(QDate date) { return date.toString(u"yyyy/MM/dd"_s); }
};

QTEST_GUILESS_MAIN(WriteOffCountsTest)
#include "WriteOffCountsTest.moc"
