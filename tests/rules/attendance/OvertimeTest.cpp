#include "Opening.h"

#include "store/RunTimeError.h"
#include "support/Errors.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

} // namespace

/// Overtime rows out of the swipes of class "081".
class OvertimeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    void stage(const QString& EmpNo, const QString& times) {
        for (const QString& time : times.split(u' ', Qt::SkipEmptyParts))
            addPunch(it().database(), EmpNo, Day, QTime::fromString(time, Qt::ISODate), u"081"_s);
    }

    int buildAndTell() {
        return errorOf([&] { it().calculation.BuildPunchOvertime(Day); });
    }

  private Q_SLOTS:
    void init() {
        if (!opening_)
            opening_ = std::make_unique<Opening>();
        it().store.clear();
        it().host.progressValue = 0;
        it().host.progressValues.clear();
    }

    void swipesPairUpInTimeOrder_data() {
        QTest::addColumn<QString>("swipes");
        QTest::addColumn<QString>("rows"); // Begin, end or "-", hours of each.
        QTest::newRow("no swipe, no row") << u""_s << u""_s;
        QTest::newRow("18:00 and 20:30 are two hours") << u"18:00 20:30"_s << u"18:00 20:30 2"_s;
        QTest::newRow("18:00 and 18:09 are no row") << u"18:00 18:09"_s << u""_s;
        QTest::newRow("18:00, 18:09 and 20:00 are one row of two hours")
            << u"18:00 18:09 20:00"_s << u"18:00 20:00 2"_s;
        QTest::newRow("18:00 and 18:10 are a row of no hour") << u"18:00 18:10"_s << u"18:00 18:10 0"_s;
        QTest::newRow("in time order 01:00 comes before 23:00") << u"23:00 01:00"_s << u"01:00 23:00 22"_s;
        QTest::newRow("one swipe is a row without an end") << u"18:00"_s << u"18:00 - 0"_s;
        QTest::newRow("of three swipes the third gives none") << u"18:00 19:00 20:00"_s << u"18:00 19:00 1"_s;
        QTest::newRow("four swipes are two rows")
            << u"06:00 07:30 18:00 20:59"_s << u"06:00 07:30 1 18:00 20:59 2"_s;
        QTest::newRow("a repeat behind a pair does not close the next")
            << u"06:00 07:00 18:00 18:05 19:00"_s << u"06:00 07:00 1 18:00 19:00 1"_s;
        QTest::newRow("several repeats are passed over")
            << u"18:00 18:01 18:05 18:09 18:10"_s << u"18:00 18:10 0"_s;
        QTest::newRow("a repeat of the closing swipe opens the next pair")
            << u"18:00 20:00 20:05 22:00"_s << u"18:00 20:00 2 20:05 22:00 1"_s;
        QTest::newRow("three swipes of which two repeat the first are no row")
            << u"18:00 18:04 18:08"_s << u""_s;
        QTest::newRow("minutes count without their seconds: 18:00:59 to 18:10:00 closes")
            << u"18:00:59 18:10:00"_s << u"18:00:59 18:10:00 0"_s;
        QTest::newRow("minutes count without their seconds: 18:00:00 to 18:09:59 does not")
            << u"18:00:00 18:09:59"_s << u""_s;
        QTest::newRow("59 minutes are no hour") << u"18:00 18:59"_s << u"18:00 18:59 0"_s;
        QTest::newRow("60 minutes are one") << u"18:00 19:00"_s << u"18:00 19:00 1"_s;
        QTest::newRow("a swipe at 00:00:00 is a value") << u"00:00 02:00"_s << u"00:00 02:00 2"_s;
        QTest::newRow("a lone swipe at 00:00:00") << u"00:00"_s << u"00:00 - 0"_s;
    }
    void swipesPairUpInTimeOrder() {
        QFETCH(QString, swipes);
        QFETCH(QString, rows);
        stage(u"00001"_s, swipes);
        QCOMPARE(buildAndTell(), 0);
        QStringList expected;
        const QStringList parts = rows.split(u' ', Qt::SkipEmptyParts);
        for (qsizetype part = 0; part + 2 < parts.size(); part += 3)
            expected += overtimeRow(u"00001"_s, Day, QTime::fromString(parts[part], Qt::ISODate),
                                    QTime::fromString(parts[part + 1], Qt::ISODate), parts[part + 2].toInt());
        QCOMPARE(it().rows(u"Over01"_s), expected);
    }

    void eachEmployeeHasHisOwnPairsAndMovesTheBarByOne() {
        stage(u"00002"_s, u"18:00 19:00"_s);
        stage(u"00001"_s, u"20:00"_s);
        stage(u"a1"_s, u"07:00"_s);
        stage(u"A1"_s, u"09:00"_s);
        it().host.progressValue = 97;
        QCOMPARE(buildAndTell(), 0);
        QStringList rows = it().rows(u"Over01"_s);
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows[0], overtimeRow(u"00001"_s, Day, QTime(20, 0), QTime(), 0));
        QCOMPARE(rows[1], overtimeRow(u"00002"_s, Day, QTime(18, 0), QTime(19, 0), 1));
        // Codes that differ in case are one employee; the row has the code in one of the two.
        QCOMPARE(rows[2].toLower(), overtimeRow(u"a1"_s, Day, QTime(7, 0), QTime(9, 0), 2).toLower());
        QCOMPARE(it().host.progressValues, (QList<int>{98, 99, 100}));
    }

    void swipesOfOtherClassesAndDaysTakeNoPart() {
        addPunch(it().database(), u"00001"_s, Day, QTime(18, 0), u"255"_s);
        addPunch(it().database(), u"00001"_s, Day, QTime(18, 30), u"082"_s);
        addPunch(it().database(), u"00001"_s, Day.addDays(1), QTime(19, 0), u"081"_s);
        QCOMPARE(buildAndTell(), 0);
        QCOMPARE(it().rows(u"Over01"_s), QStringList());
        QCOMPARE(it().host.progressValues, QList<int>());
    }

    void swipesOfACodeThatNoEmployeeHasMakeRowsAllTheSame() {
        stage(u"99999"_s, u"18:00 20:00"_s);
        QCOMPARE(buildAndTell(), 0);
        QCOMPARE(it().rows(u"Over01"_s),
                 QStringList{overtimeRow(u"99999"_s, Day, QTime(18, 0), QTime(20, 0), 2)});
    }

    void rowsThatAreThereAreNotLookedAt() {
        stage(u"00001"_s, u"18:00 20:00"_s);
        QCOMPARE(buildAndTell(), 0);
        QCOMPARE(buildAndTell(), 0);
        const QString row = overtimeRow(u"00001"_s, Day, QTime(18, 0), QTime(20, 0), 2);
        QCOMPARE(it().rows(u"Over01"_s), (QStringList{row, row}));
    }

    void twoSwipesOfOneSecondEndTheRunBehindTheLastRow() {
        stage(u"00001"_s, u"18:00 20:00"_s);
        stage(u"00002"_s, u"18:00 19:00 20:00 20:00"_s);
        stage(u"00003"_s, u"18:00"_s);
        QCOMPARE(buildAndTell(), error::NoCurrentRecord);
        // What was done before stays, also for other programs.
        QCOMPARE(it().committedRows(u"Over01"_s),
                 (QStringList{overtimeRow(u"00001"_s, Day, QTime(18, 0), QTime(20, 0), 2),
                              overtimeRow(u"00002"_s, Day, QTime(18, 0), QTime(19, 0), 1)}));
        QCOMPARE(it().host.progressValues, QList<int>{1});
    }

    void aRepeatOfTheSameSecondBehindOneThatIsDroppedStillReadsPastTheEnd() {
        // Three counted, two found: the repeat takes one off the count, and yet a second is asked for in its
        // place.
        stage(u"00001"_s, u"18:00 18:05 18:05"_s);
        QCOMPARE(buildAndTell(), error::NoCurrentRecord);
        QCOMPARE(it().rows(u"Over01"_s), QStringList());
    }

    void moreThan255SwipesOfAnEmployeeOverflow() {
        it().store.holdOpen();
        for (int second = 0; second < 256; ++second)
            addPunch(it().database(), u"00001"_s, Day, QTime(18, 0).addSecs(second), u"081"_s);
        it().store.commit();
        QCOMPARE(buildAndTell(), error::Overflow);
        it().database().execute(u"delete * from AtteTemp where UseTime = #18:00:00#"_s);
        QCOMPARE(buildAndTell(), 0);
        QCOMPARE(it().rows(u"Over01"_s), QStringList());
    }

    void aCodeWithAnApostropheEndsTheRun() {
        stage(u"O'1"_s, u"18:00"_s);
        QCOMPARE(buildAndTell(), error::Syntax);
        QCOMPARE(it().rows(u"Over01"_s), QStringList());
    }
};

QTEST_GUILESS_MAIN(OvertimeTest)
#include "OvertimeTest.moc"
