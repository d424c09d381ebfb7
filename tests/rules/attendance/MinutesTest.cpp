#include "rules/attendance/Minutes.h"
#include "store/RunTimeError.h"
#include "support/Errors.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;

class MinutesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void minutesBetweenTwoTimes_data() {
        QTest::addColumn<QTime>("start");
        QTest::addColumn<QTime>("end");
        QTest::addColumn<int>("minutes");
        QTest::newRow("from 23:50 to 00:10 it is 20 minutes over midnight")
            << QTime(23, 50) << QTime(0, 10) << 20;
        QTest::newRow("equal times give 0, never 1440") << QTime(8, 0) << QTime(8, 0) << 0;
        QTest::newRow("seconds do not count: 08:00:59 to 08:01:00 is a minute")
            << QTime(8, 0, 59) << QTime(8, 1) << 1;
        QTest::newRow("a later second of the same minute gives 0") << QTime(8, 0, 1) << QTime(8, 0, 59) << 0;
        QTest::newRow("an earlier second of the same minute gives 0")
            << QTime(8, 0, 59) << QTime(8, 0, 1) << 0;
        QTest::newRow("one minute back is nearly a day") << QTime(8, 0) << QTime(7, 59) << 1439;
        QTest::newRow("from 00:00 to 23:59") << QTime(0, 0) << QTime(23, 59) << 1439;
        QTest::newRow("an afternoon") << QTime(13, 0) << QTime(17, 30) << 270;
    }
    void minutesBetweenTwoTimes() {
        QFETCH(QTime, start);
        QFETCH(QTime, end);
        QTEST(int{MinutesBetween(start, end)}, "minutes");
    }

    void hoursOfMinutes_data() {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("up");
        QTest::addColumn<int>("down");
        QTest::newRow("no minutes are no hour") << 0 << 0 << 0;
        QTest::newRow("one minute fills an hour") << 1 << 1 << 0;
        QTest::newRow("59 minutes are one hour up and none down") << 59 << 1 << 0;
        QTest::newRow("60 minutes are one hour") << 60 << 1 << 1;
        QTest::newRow("61 minutes are two hours up") << 61 << 2 << 1;
        QTest::newRow("119 minutes are one hour down") << 119 << 2 << 1;
        QTest::newRow("120 minutes are two hours") << 120 << 2 << 2;
        QTest::newRow("the largest number of 16 bits") << 32767 << 547 << 546;
        QTest::newRow("minus one is cut toward zero, and one more up") << -1 << 1 << 0;
        QTest::newRow("minus an hour") << -60 << -1 << -1;
        QTest::newRow("the smallest number of 16 bits") << -32768 << -545 << -546;
    }
    void hoursOfMinutes() {
        QFETCH(int, minutes);
        const auto narrow = static_cast<std::int16_t>(minutes);
        QTEST(int{MinutesToHoursUp(narrow)}, "up");
        QTEST(int{MinutesToHours(narrow)}, "down");
    }

    void sumsOf16BitsOverflow() {
        QCOMPARE(int{add16(32766, 1)}, 32767);
        QCOMPARE(int{subtract16(-32767, 1)}, -32768);
        QCOMPARE(int{multiply16(-128, 256)}, -32768);
        QCOMPARE(errorOf([] { return add16(32767, 1); }), error::Overflow);
        QCOMPARE(errorOf([] { return add16(-32768, -1); }), error::Overflow);
        QCOMPARE(errorOf([] { return subtract16(-32768, 1); }), error::Overflow);
        QCOMPARE(errorOf([] { return multiply16(182, 181); }), error::Overflow);
        QCOMPARE(errorOf([] { return multiply16(256, -129); }), error::Overflow);
    }
};

QTEST_GUILESS_MAIN(MinutesTest)
#include "MinutesTest.moc"
