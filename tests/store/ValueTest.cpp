#include "store/Value.h"
#include "store/Format.h"
#include "store/RunTimeError.h"
#include "support/Errors.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

class ValueTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNullInATypedVariableIsError94() {
        const Value null;
        QCOMPARE(errorOf([&] { return null.toText(); }), 94);
        QCOMPARE(errorOf([&] { return null.toInt16(); }), 94);
        QCOMPARE(errorOf([&] { return null.toByte(); }), 94);
        QCOMPARE(errorOf([&] { return null.toReal(); }), 94);
        QCOMPARE(errorOf([&] { return null.toBoolean(); }), 94);
        QCOMPARE(errorOf([&] { return null.toDate(); }), 94);
        QCOMPARE(errorOf([&] { return null.toTime(); }), 94);
        QCOMPARE(null.joined(), QString());
        QCOMPARE(runTimeError(94).text(), u"Null 的使用無效"_s);
    }

    void wholeNumbersAreRoundedToTheEvenAndBounded_data() {
        QTest::addColumn<double>("real");
        QTest::addColumn<int>("int16"); // 99999: overflow
        QTest::addColumn<int>("byte");
        QTest::newRow("a half down to even") << 2.5 << 2 << 2;
        QTest::newRow("a half up to even") << 3.5 << 4 << 4;
        QTest::newRow("a negative half") << -2.5 << -2 << 99999;
        QTest::newRow("rounds to minus nought") << -0.5 << 0 << 0;
        QTest::newRow("largest byte") << 255.4 << 255 << 255;
        QTest::newRow("past the largest byte") << 255.5 << 256 << 99999;
        QTest::newRow("largest") << 32767.4 << 32767 << 99999;
        QTest::newRow("past the largest") << 32767.5 << 99999 << 99999;
        QTest::newRow("least") << -32768.5 << -32768 << 99999;
        QTest::newRow("past the least") << -32769.0 << 99999 << 99999;
    }
    void wholeNumbersAreRoundedToTheEvenAndBounded() {
        QFETCH(double, real);
        QFETCH(int, int16);
        QFETCH(int, byte);
        if (int16 == 99999)
            QCOMPARE(errorOf([&] { return Value(real).toInt16(); }), 6);
        else
            QCOMPARE(Value(real).toInt16(), static_cast<std::int16_t>(int16));
        if (byte == 99999)
            QCOMPARE(errorOf([&] { return Value(real).toByte(); }), 6);
        else
            QCOMPARE(Value(real).toByte(), static_cast<std::uint8_t>(byte));
    }

    void aTextThatIsNoNumberIsAMismatch() {
        QCOMPARE(Value(u" 12 "_s).toInt16(), std::int16_t{12});
        QCOMPARE(errorOf([] { return Value(u"12a"_s).toInt16(); }), 13);
        QCOMPARE(errorOf([] { return Value(QString()).toInt16(); }), 13);
        QCOMPARE(errorOf([] { return Value(5).toDate(); }), 13);
        QCOMPARE(errorOf([] { return Value(u"nan"_s).toReal(); }), 13);
        QCOMPARE(errorOf([] { return Value(u"inf"_s).toReal(); }), 13);
    }

    void aDateOrTimeThatIsNoneIsANull() {
        QVERIFY(Value(QDate()).isNull());
        QVERIFY(Value(QTime()).isNull());
        QVERIFY(Value(QDateTime()).isNull());
    }

    void valuesJoinedIntoTextTakeTheirShortForms_data() {
        QTest::addColumn<QString>("joined");
        QTest::addColumn<QString>("expected");
        QTest::newRow("date") << Value(QDate(2001, 3, 5)).joined() << u"2001/3/5"_s;
        QTest::newRow("time") << Value(QTime(8, 5)).joined() << u"08:05:00"_s;
        QTest::newRow("midnight of a day")
            << Value(QDateTime(QDate(2001, 3, 5), QTime(0, 0), Qt::UTC)).joined() << u"2001/3/5"_s;
        QTest::newRow("true") << Value(true).joined() << u"True"_s;
        QTest::newRow("whole real") << Value(7.0).joined() << u"7"_s;
        QTest::newRow("tenths") << Value(4 + 6 * 0.1).joined() << u"4.6"_s;
        QTest::newRow("integer") << Value(-3).joined() << u"-3"_s;
        QTest::newRow("whole real below zero") << Value(-7.0).joined() << u"-7"_s;
        QTest::newRow("zero below zero") << Value(-0.0).joined() << u"0"_s;
        QTest::newRow("note number") << Value(202611150001.0).joined() << u"202611150001"_s;
        QTest::newRow("fifteen digits") << Value(999999999999999.0).joined() << u"999999999999999"_s;
        QTest::newRow("sixteen digits") << Value(1234567890123456.0).joined() << u"1.23456789012346e+15"_s;
        QTest::newRow("beyond whole numbers") << Value(1e300).joined() << u"1e+300"_s;
    }
    void valuesJoinedIntoTextTakeTheirShortForms() {
        QFETCH(QString, joined);
        QFETCH(QString, expected);
        QCOMPARE(joined, expected);
    }

    void datesAndTimesAreReadInTheStatedSpellingsOnly_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("slashes") << u"2001/03/05"_s << u"2001-03-05|"_s;
        QTest::newRow("hyphens and single digits") << u"2001-3-5"_s << u"2001-03-05|"_s;
        QTest::newRow("month in letters") << u"2026-nov-21 17:04:09"_s << u"2026-11-21|17:04:09"_s;
        QTest::newRow("blanks around") << u"  2001/3/5 "_s << u"2001-03-05|"_s;
        QTest::newRow("time without seconds") << u"8:05"_s << u"|08:05:00"_s;
        QTest::newRow("last second") << u"23:59:59"_s << u"|23:59:59"_s;
        QTest::newRow("leap day") << u"2000/2/29"_s << u"2000-02-29|"_s;
        QTest::newRow("no leap day") << u"2001/2/29"_s << QString();
        QTest::newRow("30th of February") << u"2001/02/30"_s << QString();
        QTest::newRow("24:00") << u"24:00"_s << QString();
        QTest::newRow("minute 60") << u"8:60"_s << QString();
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("blank") << u" "_s << QString();
        QTest::newRow("mixed separators") << u"2001/03-05"_s << QString();
        QTest::newRow("two-digit year") << u"01/03/05"_s << QString();
        QTest::newRow("three digits for a month") << u"2001/003/05"_s << QString();
        QTest::newRow("trailing letters") << u"2001/03/05x"_s << QString();
        QTest::newRow("time before date") << u"8:00 2001/03/05"_s << QString();
        QTest::newRow("digits of another script") << u"２００１/03/05"_s << QString();
        QTest::newRow("compact") << u"20010305"_s << QString();
    }
    void datesAndTimesAreReadInTheStatedSpellingsOnly() {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const auto parsed = parseDateTime(text);
        QCOMPARE(parsed ? parsed->date.toString(Qt::ISODate) + u'|' + parsed->time.toString(Qt::ISODate)
                        : QString(),
                 expected);
    }

    void patternsFormat_data() {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("expected");
        QTest::newRow("padded day") << u"yyyy/mm/dd"_s << u"2001/03/05"_s;
        QTest::newRow("mm after hh means minutes") << u"hh:mm:ss"_s << u"08:07:09"_s;
        QTest::newRow("nn always means minutes") << u"hh:nn"_s << u"08:07"_s;
        QTest::newRow("month in letters") << u"yyyy-mmm-dd hh:mm:ss"_s << u"2001-Mar-05 08:07:09"_s;
        QTest::newRow("month and day alone") << u"mmdd"_s << u"0305"_s;
        QTest::newRow("seconds alone") << u"ss"_s << u"09"_s;
        QTest::newRow("upper case") << u"YYYYMMDD"_s << u"20010305"_s;
    }
    void patternsFormat() {
        QFETCH(QString, pattern);
        QFETCH(QString, expected);
        QCOMPARE(formatDateTime(QDateTime(QDate(2001, 3, 5), QTime(8, 7, 9), Qt::UTC), pattern), expected);
    }

    void aNegativeDifferenceShowsItsSize() {
        QCOMPARE(formatDayFraction(-0.25, u"hh:mm:ss"_s), u"06:00:00"_s);
        QCOMPARE(formatDayFraction(239.0 / 1440.0, u"hh:mm:ss"_s), u"03:59:00"_s);
        QCOMPARE(formatDayFraction(1.5, u"hh:mm:ss"_s), u"12:00:00"_s);
    }

    void shortFormsDoNotFollowTheMachinesLocale() {
        QCOMPARE(shortDate(QDate(2001, 3, 5)), u"2001/3/5"_s);
        QCOMPARE(shortTime(QTime(8, 5, 59)), u"08:05"_s);
    }

    void aNumberIsReadAtTheStartOfAText_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("number");
        QTest::newRow("nothing") << QString() << 0.0;
        QTest::newRow("digits") << u"202611150001"_s << 202611150001.0;
        QTest::newRow("fifteen digits") << u"999999999999999"_s << 999999999999999.0;
        QTest::newRow("sixteen digits") << u"9999999999999998"_s << 9999999999999998.0;
        QTest::newRow("zeros ahead") << u"007"_s << 7.0;
        QTest::newRow("text behind") << u"12ab"_s << 12.0;
        QTest::newRow("text ahead") << u"ab12"_s << 0.0;
        QTest::newRow("blanks ahead") << u"  12"_s << 12.0;
        QTest::newRow("a sign") << u"-12"_s << -12.0;
        QTest::newRow("a fraction") << u"1.4 days"_s << 1.4;
        QTest::newRow("a fraction alone") << u".5"_s << 0.5;
        QTest::newRow("a second point") << u"1.2.3"_s << 1.2;
        QTest::newRow("digits of another script") << u"\u0661\u0662"_s << 0.0;
    }
    void aNumberIsReadAtTheStartOfAText() {
        QFETCH(const QString, text);
        QTEST(leadingNumber(text), "number");
    }
};

QTEST_GUILESS_MAIN(ValueTest)
#include "ValueTest.moc"
