#include "Opening.h"

#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate& Day = Opening::Day;
const QDate& Sentinel = Opening::Sentinel;

} // namespace

/// The walk over the time slots: who is worked on, which punches go where, and what ends it.
class SlotLoopTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    void punch(const QString& times, const QString& EmpNo = u"00001"_s) {
        for (const QString& time : times.split(u' ', Qt::SkipEmptyParts))
            addPunch(it().database(), EmpNo, Day, QTime::fromString(time, Qt::ISODate));
    }

    /// A slot whose calculation finds no exception, so that rows show what the assignment does alone.
    void addQuietSlot(const QString& TimeNo = u"A"_s, const Fields& more = {}) {
        addSlot(it().database(), TimeNo,
                Fields{{u"CardType", 0},
                       {u"StdC1", false},
                       {u"StdC2", false},
                       {u"StdC3", false},
                       {u"StdC4", false}} +
                    more);
    }

    int calculate(bool recalculating = false) { return it().calculate(recalculating); }

    QStringList calculatedCodes() { return rowsOfSelection(it().database(), u"Select EmpNo from Atte02"_s); }

    static Fields assigned(const QList<std::pair<int, QTime>>& taken, const QList<QTime>& others = {}) {
        Fields fields;
        for (const auto& [position, time] : taken) {
            fields.append({u"Time%1"_s.arg(position), time});
            fields.append({u"FT%1"_s.arg(position), true});
        }
        for (qsizetype place = 0; place < others.size(); ++place)
            fields.append({u"T%1"_s.arg(place + 1), others[place]});
        return fields;
    }

  private Q_SLOTS:
    void init() {
        if (!opening_)
            opening_ = std::make_unique<Opening>();
        it().store.clear();
        it().host.progressValue = 0;
        it().host.progressValues.clear();
    }

    void withoutATimeSlotNothingHappens() {
        it().addRostered(u"00001"_s);
        punch(u"08:00"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"AtteTemp1"_s) + it().rows(u"View02"_s) + it().rows(u"Atte02"_s), QStringList());
    }

    void aSlotWithoutEmployeesStillCopiesWhatIsStaged() {
        addQuietSlot();
        insertRow(it().database(), u"AtteTemp1"_s,
                  {{u"EmpNo", u"00009"}, {u"UseDate", Day}, {u"TimeNo", u"B"}});
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{dailyRow(u"00009"_s, Day, u"B"_s)});
    }

    void anEmployeeWithoutPunchesGetsARowOfNulls() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"AtteTemp1"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s)});
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s)});
        QCOMPARE(it().rows(u"Atte03"_s), QStringList());
        QCOMPARE(it().rows(u"View02"_s), QStringList{viewRow(u"00001"_s, Day, {})});
    }

    void punchesGoToTheirPositions_data() {
        QTest::addColumn<QString>("punches");
        QTest::addColumn<Fields>("expected");
        QTest::newRow("of 08:01 and 08:03 the first is taken")
            << u"08:01 08:03"_s << assigned({{1, QTime(8, 1)}}, {QTime(8, 3)});
        QTest::newRow("punches count in time order, however they arrived")
            << u"08:03 08:01"_s << assigned({{1, QTime(8, 1)}}, {QTime(8, 3)});
        QTest::newRow("seconds are cut off, not rounded") << u"08:00:59"_s << assigned({{1, QTime(8, 0)}});
        QTest::newRow("a punch before the earliest time stands in the list")
            << u"06:59:59 07:00"_s << assigned({{1, QTime(7, 0)}}, {QTime(6, 59)});
        QTest::newRow("the last second of a window's last minute is in it")
            << u"08:30:59"_s << assigned({{1, QTime(8, 30)}});
        QTest::newRow("the minute after it is not") << u"08:31"_s << assigned({}, {QTime(8, 31)});
        QTest::newRow("all four positions and two punches between")
            << u"07:58 09:00 12:00 12:40 15:00 17:30"_s
            << assigned({{1, QTime(7, 58)}, {2, QTime(12, 0)}, {3, QTime(12, 40)}, {4, QTime(17, 30)}},
                        {QTime(9, 0), QTime(15, 0)});
        QTest::newRow("the same second twice is taken once")
            << u"08:00 08:00"_s << assigned({{1, QTime(8, 0)}}, {QTime(8, 0)});
    }
    void punchesGoToTheirPositions() {
        QFETCH(QString, punches);
        QFETCH(Fields, expected);
        addQuietSlot();
        it().addRostered(u"00001"_s);
        punch(punches);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s, expected)});
    }

    void aPunchAtMidnightThatAPositionTakesIsNullAndItsFlagStands() {
        addQuietSlot(u"A"_s, {{u"StrIn1", QTime(0, 0)}});
        it().addRostered(u"00001"_s);
        punch(u"00:00:00 08:00"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s),
                 QStringList{dailyRow(u"00001"_s, Day, u"A"_s, {{u"FT1", true}, {u"T1", QTime(8, 0)}})});
        QCOMPARE(it().rows(u"View02"_s),
                 QStringList{expectedRow(u"View02"_s,
                                         {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"T2", QTime(8, 0)}})});
    }

    void theViewHoldsAllPunchesAndTheRowThoseThatNoPositionTook() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        punch(u"08:01:10 08:03:20"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s),
                 QStringList{dailyRow(u"00001"_s, Day, u"A"_s, assigned({{1, QTime(8, 1)}}, {QTime(8, 3)}))});
        QCOMPARE(it().rows(u"View02"_s), QStringList{viewRow(u"00001"_s, Day, {QTime(8, 1), QTime(8, 3)})});
    }

    void aPunchAtMidnightThatNoPositionTakesIsLost() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        punch(u"00:00:30 05:00"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s),
                 QStringList{dailyRow(u"00001"_s, Day, u"A"_s, {{u"T2", QTime(5, 0)}})});
        QCOMPARE(it().rows(u"View02"_s),
                 QStringList{expectedRow(u"View02"_s,
                                         {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"T2", QTime(5, 0)}})});
    }

    void aPunchInTheWindowsOfTwoPositionsDoesNotMoveOnFromATakenOne() {
        addQuietSlot(u"A"_s, {{u"StdT2", QTime(8, 20)}});
        it().addRostered(u"00001"_s);
        punch(u"08:00 08:10 08:40"_s);
        QCOMPARE(calculate(), 0);
        // 08:10 lies in the windows of 1 and 2, and 1 is taken; 08:40 lies in that of 2 alone.
        QCOMPARE(it().rows(u"Atte02"_s),
                 QStringList{dailyRow(u"00001"_s, Day, u"A"_s,
                                      assigned({{1, QTime(8, 0)}, {2, QTime(8, 40)}}, {QTime(8, 10)}))});
    }

    void ofFourteenPunchesTheLastTwoAreNowhere() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        QList<QTime> times;
        for (int index = 0; index < 14; ++index)
            times += QTime(4, 10 + index);
        for (const QTime& time : times)
            addPunch(it().database(), u"00001"_s, Day, time);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"View02"_s), QStringList{viewRow(u"00001"_s, Day, times.first(12))});
        QCOMPARE(it().rows(u"Atte02"_s),
                 QStringList{dailyRow(u"00001"_s, Day, u"A"_s, assigned({}, times.first(12)))});
    }

    void aPunchBehindTheTwelfthStillTakesItsPosition() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        QList<QTime> times;
        for (int index = 0; index < 13; ++index)
            times += QTime(4, 10 + index);
        for (const QTime& time : times + QList<QTime>{QTime(8, 0)})
            addPunch(it().database(), u"00001"_s, Day, time);
        QCOMPARE(calculate(), 0);
        QCOMPARE(
            it().rows(u"Atte02"_s),
            QStringList{dailyRow(u"00001"_s, Day, u"A"_s, assigned({{1, QTime(8, 0)}}, times.first(12)))});
    }

    void onlyOrdinaryPunchesOfTheDayTakePart() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        for (const QString& classCode : {u"081"_s, u"089"_s, u"001"_s, u"25"_s, u""_s})
            addPunch(it().database(), u"00001"_s, Day, QTime(7, 30), classCode);
        addPunch(it().database(), u"00001"_s, Day.addDays(1), QTime(7, 31));
        addPunch(it().database(), u"00002"_s, Day, QTime(7, 32));
        addPunch(it().database(), u"00001"_s, Day, QTime(7, 40), u"000"_s);
        addPunch(it().database(), u"00001"_s, Day, QTime(7, 50), u"255"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"View02"_s), QStringList{viewRow(u"00001"_s, Day, {QTime(7, 40), QTime(7, 50)})});
    }

    void codesAreTheSameInAnyCase() {
        addQuietSlot();
        addEmployee(it().database(), u"ab01"_s, {{u"LeaveDate", Sentinel}});
        addRoster(it().database(), u"AB01"_s, Day, u"a"_s);
        punch(u"08:00"_s, u"aB01"_s);
        addLeaveDay(it().database(), u"Ab01"_s, Day, u"01"_s, QTime(13, 0), QTime(17, 0));
        addWriteOff(it().database(), u"ab01"_s, Day, u""_s, u"01"_s, u""_s, u""_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s),
                 QStringList{dailyRow(u"AB01"_s, Day, u"A"_s,
                                      assigned({{1, QTime(8, 0)}}) +
                                          Fields{{u"FH3", true}, {u"FH4", true}, {u"FC2", true}})});
    }

    void whoIsCalculated_data() {
        QTest::addColumn<Fields>("employee");
        QTest::addColumn<bool>("calculated");
        QTest::newRow("arrived on the day") << Fields{{u"ArriveDate", Day}} << true;
        QTest::newRow("arrives the day after") << Fields{{u"ArriveDate", Day.addDays(1)}} << false;
        QTest::newRow("a null date of joining meets no condition")
            << Fields{{u"ArriveDate", Value()}} << false;
        QTest::newRow("leaving date equal to the day") << Fields{{u"LeaveDate", Day}} << true;
        QTest::newRow("left the day before") << Fields{{u"LeaveDate", Day.addDays(-1)}} << false;
        QTest::newRow("without the sentinel a null leaving date meets no condition")
            << Fields{{u"LeaveDate", Value()}} << false;
    }
    void whoIsCalculated() {
        QFETCH(Fields, employee);
        QFETCH(bool, calculated);
        addQuietSlot();
        addEmployee(it().database(), u"00001"_s, Fields{{u"LeaveDate", Sentinel}} + employee);
        addRoster(it().database(), u"00001"_s, Day, u"A"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(calculatedCodes(), calculated ? QStringList{u"00001"_s} : QStringList());
        QCOMPARE(it().rows(u"View02"_s).size(), calculated ? 1 : 0);
    }

    void anEmployeeWithoutARosterRowGetsNoRowAnywhere() {
        addQuietSlot();
        addEmployee(it().database(), u"00001"_s, {{u"LeaveDate", Sentinel}});
        addRoster(it().database(), u"00001"_s, Day.addDays(1), u"A"_s);
        it().addRostered(u"00002"_s, u""_s);
        it().addRostered(u"00003"_s, u"Z"_s);
        addRoster(it().database(), u"00004"_s, Day, u"A"_s);
        punch(u"08:00"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"AtteTemp1"_s) + it().rows(u"View02"_s) + it().rows(u"Atte02"_s), QStringList());
    }

    void nonWorkingDaysAreNotLookedAt() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        insertRow(it().database(), u"Rule01"_s, {{u"hymd", Day}});
        QCOMPARE(calculate(), 0);
        it().database().execute(u"delete * from Rule01"_s);
        QCOMPARE(calculatedCodes(), QStringList{u"00001"_s});
    }

    void slotsComeInTheOrderOfTheirCodesAndEmployeesOfTheirs() {
        addQuietSlot(u"B"_s);
        addQuietSlot(u"A"_s);
        it().addRostered(u"00003"_s, u"A"_s);
        it().addRostered(u"00001"_s, u"B"_s);
        it().addRostered(u"00002"_s, u"A"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"AtteTemp1"_s),
                 (QStringList{dailyRow(u"00002"_s, Day, u"A"_s), dailyRow(u"00003"_s, Day, u"A"_s),
                              dailyRow(u"00001"_s, Day, u"B"_s)}));
        QCOMPARE(it().host.progressValues, (QList<int>{2, 4, 6}));
        QCOMPARE(it().host.calls, QStringList());
    }

    void aRowOnceInTheResultsIsNotReplacedByTheCopy() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        const QString old = dailyRow(u"00001"_s, Day, u"A"_s, {{u"Time1", QTime(7, 7)}, {u"Expt", true}});
        insertRow(it().database(), u"Atte02"_s,
                  {{u"EmpNo", u"00001"},
                   {u"UseDate", Day},
                   {u"TimeNo", u"A"},
                   {u"Time1", QTime(7, 7)},
                   {u"Expt", true}});
        punch(u"08:00"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{old});
        QCOMPARE(it().rows(u"AtteTemp1"_s),
                 QStringList{dailyRow(u"00001"_s, Day, u"A"_s, assigned({{1, QTime(8, 0)}}))});
    }

    void aViewRowThatIsThereTakesTheDaysPunches() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        insertRow(it().database(), u"View02"_s,
                  {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"T1", QTime(1, 0)}, {u"T9", QTime(9, 0)}});
        punch(u"08:00 09:00"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"View02"_s), QStringList{viewRow(u"00001"_s, Day, {QTime(8, 0), QTime(9, 0)})});
    }

    /// Every update hits all the rows; of rows offered to a keyed table the first inserted wins.
    void stagedRowsOfTheSameDayAreAllHit() {
        addSlot(it().database(), u"A"_s, {{u"CardType", 1}});
        it().addRostered(u"00001"_s);
        const auto stageOld = [&](const QString& TimeNo, const Fields& more) {
            insertRow(it().database(), u"AtteTemp1"_s,
                      Fields{{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"TimeNo", TimeNo}} + more);
        };
        stageOld(u"A"_s, {{u"FC3", true}, {u"Cushion3", 7}, {u"T8", QTime(20, 0)}});
        stageOld(u"B"_s, {{u"FC1", true}, {u"Expt", true}});
        punch(u"08:10"_s);
        QCOMPARE(calculate(), 0);
        const Fields common = assigned({{1, QTime(8, 10)}});
        const Fields late{{u"Delay1", 5}, {u"DelayF", 1}, {u"F1", true}, {u"Expt", true}};
        const QString first =
            dailyRow(u"00001"_s, Day, u"A"_s, common + late + Fields{{u"FC3", true}, {u"Cushion3", 7}});
        const QString second =
            dailyRow(u"00001"_s, Day, u"B"_s, common + Fields{{u"FC1", true}, {u"Expt", true}});
        const QString fresh = dailyRow(u"00001"_s, Day, u"A"_s, common + late);
        QCOMPARE(it().rows(u"AtteTemp1"_s), (QStringList{first, second, fresh}));
        QCOMPARE(it().rows(u"Atte02"_s), (QStringList{first, second}));
        QCOMPARE(it().rows(u"Atte03"_s), (QStringList{first, second}));
    }

    /// T1 to T12 of a daily row are the punches that no slot took, those of View02 all of them.
    void theListsOfRowAndViewDiffer() {
        addQuietSlot();
        it().addRostered(u"00001"_s);
        punch(u"07:30 07:40 12:05 12:06"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s,
                                                              assigned({{1, QTime(7, 30)}, {2, QTime(12, 5)}},
                                                                       {QTime(7, 40), QTime(12, 6)}))});
        QCOMPARE(
            it().rows(u"View02"_s),
            QStringList{viewRow(u"00001"_s, Day, {QTime(7, 30), QTime(7, 40), QTime(12, 5), QTime(12, 6)})});
    }
};

QTEST_GUILESS_MAIN(SlotLoopTest)
#include "SlotLoopTest.moc"
