#include "LeaveDesk.h"
#include "support/EngineSteps.h"

#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The numbers of notes, the test for duplicates, and the lookups that splitting rests on.
class LeaveNotesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<LeaveDesk> desk_;
    LeaveDesk& it() { return *desk_; }

    void addNote(const QString& BusNo) {
        insertRow(it().database(), u"Holi03"_s, {{u"BusNo", BusNo}, {u"EmpNo", u"10001"}});
    }
    /// Notes from one number to another, all of their day.
    void addNotes(qint64 first, qint64 last) {
        const Stage stage(it().database());
        for (qint64 number = first; number <= last; ++number)
            addNote(QString::number(number));
    }
    [[nodiscard]] QString nextNumber() { return it().notes().NewBusNo(March5); }

    /// The working values as one text: times, code, rostered, deducting.
    [[nodiscard]] QString valuesNow() const {
        const LeaveValues& now = desk_->values;
        QStringList texts;
        for (const QTime& time : {now.StdT1, now.StdT2, now.StdT3, now.StdT4})
            texts += time.toString(u"hh:mm:ss"_s);
        return texts.join(u' ') + u" '"_s + now.TimeNo + (now.gDayRostered ? u"' rostered"_s : u"'"_s) +
               (now.gHoliDeduct ? u" deducts"_s : QString());
    }

  private Q_SLOTS:
    void init() { desk_ = std::make_unique<LeaveDesk>(); }
    void cleanup() { clock::setSource({}); }

    // Numbers

    void theFirstNoteOfADayHasNumber1_data() {
        QTest::addColumn<QStringList>("there");
        QTest::addColumn<QString>("next");
        QTest::newRow("no notes at all") << QStringList() << u"200103050001"_s;
        QTest::newRow("notes of other days")
            << QStringList{u"200103040007"_s, u"200103060003"_s, u"200003050009"_s} << u"200103050001"_s;
        QTest::newRow("one note") << QStringList{u"200103050001"_s} << u"200103050002"_s;
        QTest::newRow("a gap is not filled")
            << QStringList{u"200103050001"_s, u"200103050009"_s} << u"200103050010"_s;
        QTest::newRow("number 9999 carries into the next day")
            << QStringList{u"200103059999"_s} << u"200103060000"_s;
        QTest::newRow("that number is not found under today's start and offered again")
            << QStringList{u"200103059999"_s, u"200103060000"_s} << u"200103060000"_s;
        QTest::newRow("the greatest as text counts, not as a number")
            << QStringList{u"20010305999"_s, u"200103050012"_s} << u"20010306000"_s;
        QTest::newRow("the day alone as a number") << QStringList{u"20010305"_s} << u"20010306"_s;
        QTest::newRow("the number at the start of a text")
            << QStringList{u"200103050003-a"_s} << u"200103050004"_s;
        QTest::newRow("a text that only ends in the day") << QStringList{u"x20010305"_s} << u"200103050001"_s;
    }
    void theFirstNoteOfADayHasNumber1() {
        QFETCH(const QStringList, there);
        QFETCH(const QString, next);
        for (const QString& BusNo : there)
            addNote(BusNo);
        QCOMPARE(nextNumber(), next);
        QCOMPARE(it().noteRows().size(), there.size()); // nothing reserves the number
        QCOMPARE(nextNumber(), next);
    }

    void theDayIsThatOfTheClock() {
        clock::setSource([] { return QDateTime(QDate(2026, 11, 15), QTime(23, 59, 59)); });
        QCOMPARE(it().notes().NewBusNo(), u"202611150001"_s);
        clock::setSource([] { return QDateTime(QDate(2026, 11, 16), QTime(0, 0)); });
        QCOMPARE(it().notes().NewBusNo(), u"202611160001"_s);
    }

    void theNumberCostsTheSameAmongFewAndManyNotes() {
        const auto steps = [this] {
            (void)nextNumber(); // makes the statement ready
            const EngineSteps engine(it().database());
            (void)nextNumber();
            return engine.count();
        };
        addNote(u"200103040001"_s);
        addNote(u"200103050001"_s);
        addNote(u"200103060001"_s);
        const std::int64_t amongFew = steps();
        addNotes(200103040002, 200103040900);
        addNotes(200103050002, 200103050900);
        addNotes(200103060002, 200103060900);
        QCOMPARE(nextNumber(), u"200103050901"_s);
        QVERIFY(amongFew > 0);
        QCOMPARE(steps(), amongFew);
    }

    void aNumberBecomesTextWithoutGroupingOrPadding_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("BusNo");
        QTest::newRow("a note number") << u"202611150001"_s << u"202611150001"_s;
        QTest::newRow("a short one") << u"7"_s << u"7"_s;
        QTest::newRow("zeros ahead") << u"0007"_s << u"7"_s;
        QTest::newRow("text behind") << u"200103050001abc"_s << u"200103050001"_s;
        QTest::newRow("no number") << u"abc"_s << u"0"_s;
        QTest::newRow("nothing") << QString() << u"0"_s;
    }
    void aNumberBecomesTextWithoutGroupingOrPadding() {
        QFETCH(const QString, text);
        LeaveValues values;
        values.setBusNo(text);
        QTEST(values.BusNo(), "BusNo");
    }

    // Duplicates

    void aDayWithLeaveIsADuplicate_data() {
        QTest::addColumn<int>("rows"); ///< Of the day in the middle of three.
        QTest::addColumn<EditMode>("mode");
        QTest::addColumn<bool>("duplicate");
        QTest::newRow("adding, none") << 0 << EditMode::Add << false;
        QTest::newRow("adding, one") << 1 << EditMode::Add << true;
        QTest::newRow("editing, none") << 0 << EditMode::Edit << false;
        QTest::newRow("editing, its own") << 1 << EditMode::Edit << false;
        QTest::newRow("editing, a second note") << 2 << EditMode::Edit << true;
        QTest::newRow("editing, a third") << 3 << EditMode::Edit << true;
        QTest::newRow("neither, many") << 3 << EditMode::None << false;
    }
    void aDayWithLeaveIsADuplicate() {
        QFETCH(const int, rows);
        QFETCH(const EditMode, mode);
        // Another type and other times count as well.
        for (int row = 0; row < rows; ++row)
            addLeaveDay(it().database(), u"10001"_s, March5, u"0%1"_s.arg(row), QTime(8 + row, 0),
                        QTime(9 + row, 0));
        LeaveNotes notes = it().notes();
        QTEST(notes.IsLeaveDuplicate(u"10001"_s, March5.addDays(-1), March5.addDays(1), mode), "duplicate");
        QTEST(notes.IsLeaveDuplicate(u"10001"_s, March5, March5, mode), "duplicate");
        // Other employees and the days around are none.
        QVERIFY(!notes.IsLeaveDuplicate(u"10002"_s, March5.addDays(-1), March5.addDays(1), mode));
        QVERIFY(!notes.IsLeaveDuplicate(u"10001"_s, March5.addDays(1), March5.addDays(9), mode));
        QVERIFY(!notes.IsLeaveDuplicate(u"10001"_s, March5.addDays(-9), March5.addDays(-1), mode));
        // A range that ends before it begins has no day.
        QVERIFY(!notes.IsLeaveDuplicate(u"10001"_s, March5.addDays(1), March5, mode));
    }

    void rowsOfTwoDaysAreNoTwoRowsOfADay() {
        addLeaveDay(it().database(), u"10001"_s, March5, u"01"_s, QTime(8, 0), QTime(17, 0));
        addLeaveDay(it().database(), u"10001"_s, March5.addDays(1), u"01"_s, QTime(8, 0), QTime(17, 0));
        QVERIFY(!it().notes().IsLeaveDuplicate(u"10001"_s, March5, March5.addDays(1), EditMode::Edit));
    }

    // Lookups

    void aProgramStartsWithMidnightAndNoSlot() {
        QCOMPARE(valuesNow(), u"00:00:00 00:00:00 00:00:00 00:00:00 ''"_s);
        QCOMPARE(it().values.gBusNo, 0.0);
    }

    void aTypeTellsWhetherItDeducts() {
        it().notes().LoadHoliDeduct(u"01"_s);
        QVERIFY(it().values.gHoliDeduct);
        it().notes().LoadHoliDeduct(u"08"_s);
        QVERIFY(!it().values.gHoliDeduct);
        QCOMPARE(it().host.calls, QStringList());
    }

    void anUnknownTypeIsToldAndKeepsTheFlag() {
        it().notes().LoadHoliDeduct(u"99"_s);
        QVERIFY(!it().values.gHoliDeduct);
        it().notes().LoadHoliDeduct(u"01"_s);
        it().notes().LoadHoliDeduct(QString());
        QVERIFY(it().values.gHoliDeduct);
        QCOMPARE(it().host.calls, (QStringList{UnknownType, UnknownType}));
    }

    void aRosteredDayHasItsSlot() {
        addSlot(it().database(), u"B"_s, {{u"StdT1", QTime(9, 0, 30)}, {u"StdT4", QTime(18, 0)}});
        addRoster(it().database(), u"10001"_s, March5, u"b"_s);
        it().notes().LoadDaySlot(March5, u"10001"_s);
        QCOMPARE(valuesNow(), u"09:00:30 12:00:00 13:00:00 18:00:00 'B' rostered"_s);
    }

    void aDayWithoutRosterHasTheFirstSlotsTimesAndNoCode() {
        addSlot(it().database(), u"B"_s, {{u"StdT1", QTime(9, 0)}});
        addRoster(it().database(), u"10001"_s, March5, u"B"_s);
        it().notes().LoadDaySlot(March5, u"10001"_s);
        it().notes().LoadDaySlot(March5.addDays(1), u"10001"_s);
        QCOMPARE(valuesNow(), u"08:00:00 12:00:00 13:00:00 17:00:00 ''"_s);
        it().notes().LoadDaySlot(March5, u"10001"_s);
        it().notes().LoadDaySlot(March5, QString()); // nobody: the batch's default times
        QCOMPARE(valuesNow(), u"08:00:00 12:00:00 13:00:00 17:00:00 ''"_s);
    }

    void aRosterRowWithoutAKnownSlotIsNone() {
        addRoster(it().database(), u"10001"_s, March5, QString(u""_s));
        addRoster(it().database(), u"10002"_s, March5, u"Z"_s);
        insertRow(it().database(), u"Rule03"_s, {{u"EmpNo", u"10003"}, {u"YMD", March5}});
        for (const QString& EmpNo : {u"10001"_s, u"10002"_s, u"10003"_s}) {
            it().notes().LoadDaySlot(March5, EmpNo);
            QCOMPARE(valuesNow(), u"08:00:00 12:00:00 13:00:00 17:00:00 ''"_s);
        }
    }

    void withoutSlotsTheLastLookupsValuesStay() {
        addRoster(it().database(), u"10001"_s, March5, u"A"_s);
        it().notes().LoadDaySlot(March5, u"10001"_s);
        it().database().execute(u"delete * from Base04"_s);
        it().notes().LoadDaySlot(March5, u"10001"_s);
        QCOMPARE(valuesNow(), u"08:00:00 12:00:00 13:00:00 17:00:00 'A' rostered"_s);
        // So a leave on any day is counted by the slot that is gone.
        it().values.setBusNo(u"200103050001"_s);
        const Leave leave{u"10002"_s,         u"01"_s,      March5.addDays(30),
                          March5.addDays(31), QTime(10, 0), QTime(12, 0)};
        QCOMPARE(it().notes().CountLeaveHours(leave), std::int16_t{10});
        it().notes().InsertLeaveDays(leave);
        QCOMPARE(it().days(), (QStringList{dayRow(u"200103050001"_s, u"10002"_s, u"01"_s, March5.addDays(30),
                                                  QTime(10, 0), QTime(17, 0), 6, u"A"_s),
                                           dayRow(u"200103050001"_s, u"10002"_s, u"01"_s, March5.addDays(31),
                                                  QTime(8, 0), QTime(12, 0), 4, u"A"_s)}));
    }

    void aNullStandardTimeIsAnErrorWhereverItStands_data() {
        QTest::addColumn<QString>("column");
        for (int time = 1; time <= 4; ++time)
            QTest::addRow("StdT%d", time) << u"StdT%1"_s.arg(time);
    }
    void aNullStandardTimeIsAnErrorWhereverItStands() {
        QFETCH(const QString, column);
        it().database().execute(u"update Base04 set "_s + column + u" = null"_s);
        addRoster(it().database(), u"10001"_s, March5, u"A"_s);
        for (const QString& EmpNo : {u"10001"_s, u"10002"_s})
            QCOMPARE(errorOf([&] {
                         it().notes().LoadDaySlot(March5, EmpNo);
                         return 0;
                     }),
                     error::InvalidNull);
    }

    // The whole leave

    void anEmptyDateOrTimeIsAnErrorBeforeAnythingIsToldOrWritten_data() {
        QTest::addColumn<int>("empty");
        QTest::newRow("begin date") << 0;
        QTest::newRow("end date") << 1;
        QTest::newRow("begin time") << 2;
        QTest::newRow("end time") << 3;
    }
    void anEmptyDateOrTimeIsAnErrorBeforeAnythingIsToldOrWritten() {
        QFETCH(const int, empty);
        Leave leave{u"10001"_s, u"99"_s, March5, March5, QTime(8, 0), QTime(17, 0)};
        if (empty < 2)
            (empty == 0 ? leave.HoliBegDate : leave.HoliEndDate) = QDate();
        else
            (empty == 2 ? leave.HoliBegTime : leave.HoliEndTime) = QTime();
        LeaveNotes notes = it().notes();
        QCOMPARE(errorOf([&] { return notes.CountLeaveHours(leave); }), error::InvalidNull);
        QCOMPARE(errorOf([&] {
                     notes.InsertLeaveDays(leave);
                     return 0;
                 }),
                 error::InvalidNull);
        if (empty < 2)
            QCOMPARE(errorOf([&] {
                         return notes.IsLeaveDuplicate(leave.EmpNo, leave.HoliBegDate, leave.HoliEndDate,
                                                       EditMode::Add);
                     }),
                     error::InvalidNull);
        QCOMPARE(it().days(), QStringList());
        QCOMPARE(it().host.calls, QStringList());
    }

    void moreHoursThan16BitsHoldAreAnError() {
        // 4096 days of 8 hours are one hour too many.
        LeaveNotes notes = it().notes();
        Leave leave{u"10001"_s, u"08"_s, March5, March5.addDays(4094), QTime(8, 0), QTime(17, 0)};
        QCOMPARE(notes.CountLeaveHours(leave), std::int16_t{32760});
        leave.HoliEndTime = QTime(16, 0);
        leave.HoliEndDate = March5.addDays(4095);
        QCOMPARE(notes.CountLeaveHours(leave), std::int16_t{32767});
        leave.HoliEndTime = QTime(16, 1);
        QCOMPARE(errorOf([&] { return notes.CountLeaveHours(leave); }), error::Overflow);
    }

    void anApostropheBreaksTheStatementThatQuotesIt() {
        LeaveNotes notes = it().notes();
        const Leave employee{u"1'1"_s, u"01"_s, March5, March5, QTime(8, 0), QTime(17, 0)};
        const Leave type{u"10001"_s, u"0'"_s, March5, March5, QTime(8, 0), QTime(17, 0)};
        for (const Leave& leave : {employee, type}) {
            QCOMPARE(errorOf([&] { return notes.CountLeaveHours(leave); }), error::Syntax);
            QCOMPARE(errorOf([&] {
                         notes.InsertLeaveDays(leave);
                         return 0;
                     }),
                     error::Syntax);
        }
        QCOMPARE(errorOf([&] { return notes.IsLeaveDuplicate(u"1'1"_s, March5, March5, EditMode::Add); }),
                 error::Syntax);
        QCOMPARE(it().days(), QStringList());
    }

    void thePiecesOfALeaveLieSideBySideUnderOneNumberAndTheSpellingOfTheEntry() {
        it().values.setBusNo(u"200103050001"_s);
        addRoster(it().database(), u"10001"_s, March5, u"A"_s);
        it().addType(u"Ab"_s, true);
        it().notes().InsertLeaveDays({u"10001"_s, u"aB"_s, March5, March5, QTime(8, 0), QTime(12, 0)});
        it().notes().InsertLeaveDays({u"10001"_s, u"aB"_s, March5, March5, QTime(8, 0), QTime(12, 0)});
        QCOMPARE(it().days(), QStringList(2, dayRow(u"200103050001"_s, u"10001"_s, u"aB"_s, March5,
                                                    QTime(8, 0), QTime(12, 0), 4, u"A"_s)));
    }
};

QTEST_GUILESS_MAIN(LeaveNotesTest)
#include "LeaveNotesTest.moc"
