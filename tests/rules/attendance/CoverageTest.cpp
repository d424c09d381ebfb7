#include "Opening.h"

#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate& Day = Opening::Day;

} // namespace

/// Which positions of a day leave and write-offs cover.
class CoverageTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    /// Leave rows "type begin end", parted by commas.
    void addLeave(const QString& EmpNo, const QString& rows) {
        for (const QString& row : rows.split(u',', Qt::SkipEmptyParts)) {
            const QStringList parts = row.trimmed().split(u' ');
            addLeaveDay(it().database(), EmpNo, Day, parts[0], QTime::fromString(parts[1], Qt::ISODate),
                        QTime::fromString(parts[2], Qt::ISODate));
        }
    }

    int calculate() { return it().calculate(); }

    /// The employee's daily row with the flags of a family set at the positions, as "134".
    static QString rowWith(const QString& EmpNo, const QString& family, const QString& positions) {
        Fields fields;
        for (const QChar position : positions)
            fields.append({family + position, true});
        return dailyRow(EmpNo, Day, u"A"_s, fields);
    }

  private Q_SLOTS:
    /// Standard times 08:00, 12:00, 13:00 and 17:00; no punches, and a slot that finds no exceptions.
    void init() {
        if (!opening_)
            opening_ = std::make_unique<Opening>();
        it().store.clear();
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        it().addRostered(u"00001"_s);
    }

    void leaveCoversPositions_data() {
        QTest::addColumn<QString>("leave");
        QTest::addColumn<QString>("covered");
        QTest::newRow("no leave row covers nothing") << u""_s << u""_s;
        QTest::newRow("08:00 to 12:00") << u"01 08:00 12:00"_s << u"12"_s;
        QTest::newRow("13:00 to 17:00") << u"01 13:00 17:00"_s << u"34"_s;
        QTest::newRow("08:00 to 17:00") << u"01 08:00 17:00"_s << u"1234"_s;
        QTest::newRow("10:00 to 15:00") << u"01 10:00 15:00"_s << u"123"_s;
        QTest::newRow("12:30 to 16:00") << u"01 12:30 16:00"_s << u"23"_s;
        QTest::newRow("14:00 to 15:00") << u"01 14:00 15:00"_s << u"3"_s;
        QTest::newRow("12:10 to 12:50") << u"01 12:10 12:50"_s << u"2"_s;
        QTest::newRow("09:00 to 11:00, before noon, covers the whole day")
            << u"01 09:00 11:00"_s << u"1234"_s;
        QTest::newRow("two rows of a day add up") << u"01 14:00 15:00, 03 12:10 12:50"_s << u"23"_s;
        QTest::newRow("a leave that starts before the day counts from its beginning")
            << u"01 06:00 12:00"_s << u"12"_s;
        QTest::newRow("a leave that ends before the day is found in no part for its end")
            << u"01 06:00 07:00"_s << u"1234"_s;
        QTest::newRow("a leave after the day lies in the fourth part") << u"01 18:00 19:00"_s << u"4"_s;
        QTest::newRow("a leave to the second before noon stays in the first part")
            << u"01 09:00 11:59:59"_s << u"1234"_s;
        QTest::newRow("a leave to noon reaches the second part") << u"01 09:00 12:00:00"_s << u"12"_s;
        QTest::newRow("a leave from the second before 13:00") << u"01 12:59:59 14:00"_s << u"23"_s;
        QTest::newRow("a leave to 23:59:58 ends in the fourth part") << u"01 17:30 23:59:58"_s << u"4"_s;
        QTest::newRow("a leave to 23:59:59 is found in no part for its end, and runs on")
            << u"01 13:00 23:59:59"_s << u"34"_s;
        QTest::newRow("a leave at 23:59:59 alone touches nothing") << u"01 23:59:59 23:59:59"_s << u""_s;
        QTest::newRow("a row that is found nowhere keeps the places of the row before")
            << u"01 13:00 17:00, 01 23:59:59 23:59:59"_s << u"34"_s;
        QTest::newRow("a row without a start keeps the 1 that stands for it")
            << u"01 12:10 13:30, 01 23:59:59 12:30"_s << u"234"_s;
        QTest::newRow("a row without an end keeps the end of the row before")
            << u"01 14:00 15:00, 01 14:30 23:59:59"_s << u"3"_s;
    }
    void leaveCoversPositions() {
        QFETCH(QString, leave);
        QFETCH(QString, covered);
        addLeave(u"00001"_s, leave);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{rowWith(u"00001"_s, u"FH"_s, covered)});
    }

    void leaveOfType14LeavesItsEndsUncovered_data() {
        QTest::addColumn<QString>("leave");
        QTest::addColumn<QString>("covered");
        QTest::newRow("08:00 to 17:00 as the only row") << u"14 08:00 17:00"_s << u"23"_s;
        QTest::newRow("08:00 to 12:00 has nothing between its ends") << u"14 08:00 12:00"_s << u""_s;
        QTest::newRow("10:00 to 15:00") << u"14 10:00 15:00"_s << u"2"_s;
        QTest::newRow("within one part") << u"14 14:00 15:00"_s << u""_s;
        QTest::newRow("before noon, from the first part on") << u"14 09:00 11:00"_s << u"234"_s;
        QTest::newRow("followed by another type the rule does not apply")
            << u"14 08:00 17:00, 01 12:10 12:50"_s << u"1234"_s;
        QTest::newRow("behind another type the rule applies to its own ends")
            << u"01 08:00 12:00, 14 13:00 17:00"_s << u"12"_s;
        QTest::newRow("it uncovers what another row covered")
            << u"01 08:00 17:00, 14 12:10 12:50"_s << u"134"_s;
        QTest::newRow("type 014 is another") << u"014 08:00 17:00"_s << u"1234"_s;
    }
    void leaveOfType14LeavesItsEndsUncovered() {
        QFETCH(QString, leave);
        QFETCH(QString, covered);
        addLeave(u"00001"_s, leave);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{rowWith(u"00001"_s, u"FH"_s, covered)});
    }

    void leaveOfType14ThatTouchesNoPartEndsTheRun_data() {
        QTest::addColumn<QString>("leave");
        QTest::addColumn<QString>("covered");
        QTest::newRow("neither start nor end") << u"14 23:59:59 23:59:59"_s << u""_s;
        QTest::newRow("no end: the start is uncovered before the failure") << u"14 06:00 07:00"_s << u"234"_s;
        QTest::newRow("no end, behind a row that covers all")
            << u"01 08:00 17:00, 14 06:00 07:00"_s << u"23"_s; // The end of the row before: no failure here.
    }
    void leaveOfType14ThatTouchesNoPartEndsTheRun() {
        QFETCH(QString, leave);
        QFETCH(QString, covered);
        it().addRostered(u"00002"_s);
        addLeave(u"00001"_s, leave);
        const bool fails = !leave.contains(u',');
        QCOMPARE(calculate(), fails ? error::UnknownName : 0);
        const QStringList rows = it().committedRows(u"AtteTemp1"_s);
        QCOMPARE(rows.first(), rowWith(u"00001"_s, u"FH"_s, covered));
        QCOMPARE(rows.size(), fails ? 1 : 2);
        QCOMPARE(it().committedRows(u"Atte02"_s).size(), fails ? 0 : 2);
        QCOMPARE(it().committedRows(u"View02"_s).size(), fails ? 1 : 2);
    }

    /// Pos and SavedPos start at 0 at each call.
    void placesAreNotKeptFromOneEmployeeToTheNext() {
        it().addRostered(u"00002"_s);
        addLeave(u"00001"_s, u"01 13:00 17:00"_s);
        addLeave(u"00002"_s, u"14 23:59:59 23:59:59"_s);
        QCOMPARE(calculate(), error::UnknownName);
        QCOMPARE(it().rows(u"AtteTemp1"_s),
                 (QStringList{rowWith(u"00001"_s, u"FH"_s, u"34"_s), rowWith(u"00002"_s, u"FH"_s, u""_s)}));
    }

    void theTypeOfOneEmployeesLastRowDoesNotReachTheNext() {
        it().addRostered(u"00002"_s);
        it().addRostered(u"00003"_s);
        addLeave(u"00001"_s, u"14 08:00 17:00"_s);
        addLeave(u"00003"_s, u"01 08:00 17:00"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s),
                 (QStringList{rowWith(u"00001"_s, u"FH"_s, u"23"_s), rowWith(u"00002"_s, u"FH"_s, u""_s),
                              rowWith(u"00003"_s, u"FH"_s, u"1234"_s)}));
    }

    void aNullInALeaveRowEndsTheRunAndTheRowsBeforeItCount_data() {
        QTest::addColumn<QString>("column");
        QTest::addColumn<Value>("value");
        QTest::addColumn<int>("number");
        for (const char* column : {"HoliNo", "BegTime", "EndTime", "HoliHours"})
            QTest::addRow("a null in %s", column)
                << QString::fromLatin1(column) << Value() << error::InvalidNull;
        QTest::newRow("hours beyond 16 bits") << u"HoliHours"_s << Value(32768) << error::Overflow;
    }
    void aNullInALeaveRowEndsTheRunAndTheRowsBeforeItCount() {
        QFETCH(QString, column);
        QFETCH(Value, value);
        QFETCH(int, number);
        addLeave(u"00001"_s, u"01 12:10 12:50"_s);
        addLeaveDay(it().database(), u"00001"_s, Day, u"01"_s, QTime(13, 0), QTime(17, 0), {{column, value}});
        QCOMPARE(calculate(), number);
        QCOMPARE(it().committedRows(u"AtteTemp1"_s), QStringList{rowWith(u"00001"_s, u"FH"_s, u"2"_s)});
        QCOMPARE(it().committedRows(u"Atte02"_s), QStringList());
    }

    void leaveOfAnotherDayOrEmployeeCoversNothing() {
        addLeaveDay(it().database(), u"00001"_s, Day.addDays(-1), u"01"_s, QTime(8, 0), QTime(17, 0));
        addLeave(u"00002"_s, u"01 08:00 17:00"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{rowWith(u"00001"_s, u"FH"_s, u""_s)});
    }

    void aWriteOffCoversThePositionsThatHaveAReason_data() {
        QTest::addColumn<QStringList>("reasons");
        QTest::addColumn<QString>("covered");
        QTest::newRow("the second alone") << QStringList{QString(), u"01"_s, QString(), QString()} << u"2"_s;
        QTest::newRow("all four") << QStringList{u"01"_s, u"02"_s, u"zz"_s, u"1"_s} << u"1234"_s;
        QTest::newRow("empty texts are no reason") << QStringList{u""_s, u""_s, u"01"_s, u""_s} << u"3"_s;
        QTest::newRow("a blank is one") << QStringList{u" "_s, u""_s, u""_s, u""_s} << u"1"_s;
        QTest::newRow("nulls are none") << QStringList{QString(), QString(), QString(), QString()} << u""_s;
    }
    void aWriteOffCoversThePositionsThatHaveAReason() {
        QFETCH(QStringList, reasons);
        QFETCH(QString, covered);
        addWriteOff(it().database(), u"00001"_s, Day, reasons[0], reasons[1], reasons[2], reasons[3]);
        addWriteOff(it().database(), u"00001"_s, Day.addDays(1), u"01"_s, u"01"_s, u"01"_s, u"01"_s);
        addWriteOff(it().database(), u"00002"_s, Day, u"01"_s, u"01"_s, u"01"_s, u"01"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{rowWith(u"00001"_s, u"FC"_s, covered)});
    }
};

QTEST_GUILESS_MAIN(CoverageTest)
#include "CoverageTest.moc"
