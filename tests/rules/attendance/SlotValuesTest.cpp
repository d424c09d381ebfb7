#include "Opening.h"

#include "rules/attendance/DayFacts.h"
#include "rules/attendance/SlotTimes.h"
#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate& Day = Opening::Day;

} // namespace

/// The working values of a time slot, what is read for its employees at once, and errors in the middle of a
/// slot.
class SlotValuesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    int calculate() { return it().calculate(); }

    /// Codes and first punches of what another program sees in the table.
    QStringList committed(const QString& table) {
        const auto other = it().store.connect();
        return rowsOfSelection(*other, u"Select EmpNo,TimeNo,Time1,T1 from "_s + table);
    }

  private Q_SLOTS:
    void init() {
        if (!opening_)
            opening_ = std::make_unique<Opening>();
        it().store.clear();
    }

    void aRowOfTimeSlotsIsReadIntoWorkingValues() {
        addSlot(it().database(), u"A"_s,
                {{u"StrIn1", QTime(7, 1, 59)},
                 {u"ElstMin", 59},
                 {u"ElstType", 255},
                 {u"CardType", 3},
                 {u"StdC2", false},
                 {u"Delay1", 26},
                 {u"Earlier1", 11},
                 {u"Cushion1", 6}});
        const Rows rows = it().database().select(u"Select * from Base04"_s);
        SlotTimes slot;
        slot.read(rows, 0);
        QCOMPARE(slot.TimeNo, u"A"_s);
        QCOMPARE((QList<int>{slot.CardType, slot.ElstType, slot.StrIn1, slot.StdT1, slot.StdT2, slot.EndOut2,
                             slot.StrIn3, slot.StdT3, slot.StdT4, slot.EndOut4, slot.ElstMin, slot.Cushion,
                             slot.Delay, slot.Earlier, slot.Cushion1, slot.Delay1, slot.Earlier1}),
                 (QList<int>{3, 255, 421, 480, 720, 750, 751, 780, 1020, 1380, 59, 5, 25, 10, 6, 26, 11}));
        QCOMPARE(slot.StdC, (std::array<bool, 4>{true, false, true, true}));
    }

    void aNullTimeKeepsWhatTheRowBeforeItGave() {
        for (const QString& TimeNo : {u"A"_s, u"B"_s, u"C"_s}) {
            addSlot(it().database(), TimeNo,
                    {{u"StrIn1", TimeNo == u"B"_s ? Value() : Value(QTime(5, TimeNo == u"A"_s ? 30 : 50))},
                     {u"CardType", 0}});
            const QString EmpNo = u"0000"_s + TimeNo;
            it().addRostered(EmpNo, TimeNo);
            addPunch(it().database(), EmpNo, Day, QTime(5, 20));
            addPunch(it().database(), EmpNo, Day, QTime(5, 40));
        }
        QCOMPARE(calculate(), 0);
        QCOMPARE(committed(u"Atte02"_s),
                 (QStringList{u"0000A|A|05:40:00|05:20:00"_s, u"0000B|B|05:40:00|05:20:00"_s,
                              u"0000C|C|null|05:20:00"_s}));
    }

    /// Working values carried over nulls start at 0 at each call.
    void aNullTimeInTheFirstRowIsMidnightAtEachCall() {
        addSlot(it().database(), u"A"_s, {{u"StrIn1", Value()}, {u"CardType", 0}});
        addSlot(it().database(), u"B"_s, {{u"CardType", 0}});
        it().addRostered(u"00001"_s, u"A"_s);
        addPunch(it().database(), u"00001"_s, Day, QTime(0, 30));
        const QStringList expected{u"00001|A|00:30:00|null"_s};
        QCOMPARE(calculate(), 0);
        QCOMPARE(committed(u"Atte02"_s), expected);
        it().database().execute(u"delete * from Atte02"_s);
        it().database().execute(u"delete * from AtteTemp1"_s);
        // The last row of the first call had 07:00.
        QCOMPARE(calculate(), 0);
        QCOMPARE(committed(u"Atte02"_s), expected);
    }

    void aRowThatCannotBeReadEndsTheLoopThere_data() {
        QTest::addColumn<QString>("column");
        QTest::addColumn<Value>("value");
        QTest::addColumn<int>("number");
        for (const char* column :
             {"ElstMin", "Cushion", "Delay", "Earlier", "Cushion1", "Delay1", "Earlier1"}) {
            const QString name = QString::fromLatin1(column);
            QTest::addRow("a null in %s", column) << name << Value() << error::TypeMismatch;
            QTest::addRow("60 minutes in %s", column) << name << Value(60) << error::TypeMismatch;
            QTest::addRow("minutes below 0 in %s", column) << name << Value(-1) << error::TypeMismatch;
            QTest::addRow("hundreds of minutes in %s", column) << name << Value(100) << error::TypeMismatch;
            QTest::addRow("59 minutes in %s", column) << name << Value(59) << 0;
            QTest::addRow("0 minutes in %s", column) << name << Value(0) << 0;
        }
        QTest::newRow("a null in CardType") << u"CardType"_s << Value() << error::InvalidNull;
        QTest::newRow("a CardType beyond 255") << u"CardType"_s << Value(256) << error::Overflow;
        QTest::newRow("a CardType below 0") << u"CardType"_s << Value(-1) << error::Overflow;
        QTest::newRow("a CardType of 5 is a legal value") << u"CardType"_s << Value(5) << 0;
        QTest::newRow("a CardType of 255 is a legal value") << u"CardType"_s << Value(255) << 0;
        QTest::newRow("a null in ElstType") << u"ElstType"_s << Value() << error::InvalidNull;
        QTest::newRow("an ElstType beyond 255") << u"ElstType"_s << Value(256) << error::Overflow;
        QTest::newRow("an ElstType below 0") << u"ElstType"_s << Value(-1) << error::Overflow;
    }
    void aRowThatCannotBeReadEndsTheLoopThere() {
        QFETCH(QString, column);
        QFETCH(Value, value);
        QFETCH(int, number);
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        addSlot(it().database(), u"B"_s, Fields{{u"CardType", 0}} + Fields{{column, value}});
        addSlot(it().database(), u"C"_s, {{u"CardType", 0}});
        for (const QString& TimeNo : {u"A"_s, u"B"_s, u"C"_s})
            it().addRostered(u"0000"_s + TimeNo, TimeNo);
        QCOMPARE(calculate(), number);
        const QStringList all{u"0000A|A|null|null"_s, u"0000B|B|null|null"_s, u"0000C|C|null|null"_s};
        QCOMPARE(committed(u"Atte02"_s), number == 0 ? all : all.first(1));
        QCOMPARE(committed(u"AtteTemp1"_s), number == 0 ? all : all.first(1));
    }

    /// The employee's blank rows are there, later employees and slots are not calculated, and all of it is
    /// committed.
    void aPunchWithoutATimeLeavesTheEmployeesBlankRows() {
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        addSlot(it().database(), u"B"_s, {{u"CardType", 0}});
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s, u"00003"_s})
            it().addRostered(EmpNo, u"A"_s);
        it().addRostered(u"00004"_s, u"B"_s);
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s, u"00003"_s})
            addPunch(it().database(), EmpNo, Day, QTime(8, 0));
        addPunch(it().database(), u"00002"_s, Day, QTime());
        QCOMPARE(calculate(), error::InvalidNull);
        QCOMPARE(committed(u"AtteTemp1"_s),
                 (QStringList{u"00001|A|08:00:00|null"_s, u"00002|A|null|null"_s}));
        QCOMPARE(it().committedRows(u"View02"_s),
                 (QStringList{viewRow(u"00001"_s, Day, {QTime(8, 0)}), viewRow(u"00002"_s, Day, {})}));
        QCOMPARE(committed(u"Atte02"_s), QStringList());
        QVERIFY(!it().database().inStage());
    }

    void aBlankRowAtAnErrorLeavesStagedRowsAndViewAsTheyWere() {
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        it().addRostered(u"00001"_s, u"A"_s);
        const Fields old{
            {u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"TimeNo", u"A"}, {u"Time1", QTime(7, 7, 7)}};
        insertRow(it().database(), u"AtteTemp1"_s, old);
        insertRow(it().database(), u"View02"_s,
                  {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"T3", QTime(3, 0)}});
        addPunch(it().database(), u"00001"_s, Day, QTime());
        QCOMPARE(calculate(), error::InvalidNull);
        QCOMPARE(it().committedRows(u"AtteTemp1"_s),
                 (QStringList{expectedRow(u"AtteTemp1"_s, old), dailyRow(u"00001"_s, Day, u"A"_s)}));
        QCOMPARE(it().committedRows(u"View02"_s),
                 QStringList{expectedRow(u"View02"_s,
                                         {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"T3", QTime(3, 0)}})});
    }

    void aCodeWithAnApostropheEndsTheSlotBeforeAnyRowOfIt() {
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        for (const QString& EmpNo : {u"00001"_s, u"O'002"_s, u"O0003"_s})
            it().addRostered(EmpNo, u"A"_s);
        QCOMPARE(calculate(), error::Syntax);
        QCOMPARE(committed(u"AtteTemp1"_s), QStringList{u"00001|A|null|null"_s});
        QCOMPARE(it().committedRows(u"View02"_s), QStringList{viewRow(u"00001"_s, Day, {})});
    }

    void aSlotCodeWithAnApostropheEndsTheLoop() {
        addSlot(it().database(), u"'"_s, {{u"CardType", 0}});
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        it().addRostered(u"00001"_s, u"A"_s);
        QCOMPARE(calculate(), error::Syntax);
        QCOMPARE(committed(u"AtteTemp1"_s), QStringList());
    }

    void whatIsReadAtOnceIsWhatIsReadEmployeeByEmployee() {
        addSlot(it().database(), u"A"_s);
        const QStringList codes{u"a0001"_s, u"A0002"_s, u"B0003"_s, u"B0004"_s};
        for (const QString& EmpNo : codes)
            it().addRostered(EmpNo, u"A"_s);
        for (const QString& EmpNo : {u"A0001"_s, u"a0001"_s, u"B0003"_s, u"C0009"_s})
            for (const QTime& time : {QTime(9, 0), QTime(8, 0), QTime(8, 0), QTime(0, 0)})
                addPunch(it().database(), EmpNo, Day, time);
        DayFacts together(it().database(), Day);
        DayFacts oneByOne(it().database(), Day, 3);
        for (const QString& EmpNo : codes) {
            const auto shown = [&](DayFacts& facts) {
                QStringList lines;
                for (const auto& row : facts.punchesOf(EmpNo))
                    lines += row.at(1).joined() + u" x "_s + row.at(2).joined();
                return lines;
            };
            const QStringList expected = shown(oneByOne);
            QCOMPARE(shown(together), expected);
            if (EmpNo == u"a0001"_s)
                QCOMPARE(expected, (QStringList{u"00:00:00 x 2"_s, u"08:00:00 x 4"_s, u"09:00:00 x 2"_s}));
        }
    }

    void rowsWithoutACodeBelongToNoEmployee() {
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        it().addRostered(u""_s, u"A"_s);
        it().addRostered(u"00001"_s, u"A"_s);
        insertRow(it().database(), u"AtteTemp"_s,
                  {{u"UseDate", Day}, {u"UseTime", QTime(8, 0)}, {u"class", u"255"}});
        insertRow(it().database(), u"Holi04"_s, {{u"HoliDate", Day}, {u"HoliNo", u"01"}});
        addPunch(it().database(), u"00001"_s, Day, QTime(8, 1));
        QCOMPARE(calculate(), 0);
        QCOMPARE(committed(u"Atte02"_s), (QStringList{u"|A|null|null"_s, u"00001|A|08:01:00|null"_s}));
    }

    void leaveAndWriteOffsAreReadInTheOrderOfTheirEntry() {
        addSlot(it().database(), u"A"_s);
        it().addRostered(u"00001"_s, u"A"_s);
        it().addRostered(u"00002"_s, u"A"_s);
        for (const QString& HoliNo : {u"14"_s, u"01"_s, u"03"_s}) {
            addLeaveDay(it().database(), u"00001"_s, Day, HoliNo, QTime(9, 0), QTime(10, 0));
            addLeaveDay(it().database(), u"00002"_s, Day, u"02"_s, QTime(8, 0), QTime(9, 0));
        }
        addLeaveDay(it().database(), u"00001"_s, Day.addDays(1), u"05"_s, QTime(9, 0), QTime(10, 0));
        addWriteOff(it().database(), u"00002"_s, Day, u"1"_s, QString(), u""_s, u"4"_s);
        DayFacts facts(it().database(), Day);
        QStringList types;
        for (const auto& row : facts.leaveOf(u"00001"_s))
            types += row.at(1).joined();
        QCOMPARE(types, (QStringList{u"14"_s, u"01"_s, u"03"_s}));
        QVERIFY(facts.writeOffsOf(u"00001"_s).empty());
        QCOMPARE(facts.writeOffsOf(u"00002"_s).size(), std::size_t{1});
        QCOMPARE(facts.writeOffsOf(u"00002"_s)[0], (std::vector<Value>{u"00002", u"1", Value(), u"", u"4"}));
    }
};

QTEST_GUILESS_MAIN(SlotValuesTest)
#include "SlotValuesTest.moc"
