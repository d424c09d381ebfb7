#include "Opening.h"

#include "rules/attendance/DayRules.h"
#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);
const QDate Sentinel(2038, 1, 1);

void add(const char* title, int CardType, const char16_t* staged, const char16_t* added) {
    QTest::newRow(title) << CardType << QString::fromUtf16(staged) << QString::fromUtf16(added);
}

} // namespace

/// Faults and exceptions of a day, and where its rows go.
class ExceptionsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    static Fields identity(const QString& EmpNo, const QString& TimeNo = u"A"_s) {
        return {{u"EmpNo", EmpNo}, {u"UseDate", Day}, {u"TimeNo", TimeNo}};
    }

    void classify(const QString& EmpNo, int CardType, bool rerun = false) {
        EmployeeDay day(it().database(), Day, EmpNo);
        day.load();
        ClassifyExceptions(day, CardType, rerun);
    }

  private Q_SLOTS:
    void init() {
        if (!opening_)
            opening_ = std::make_unique<Opening>();
        it().store.clear();
    }

    /// The row as the steps before leave it, and what is added to it.
    void aRowIsJudged_data() {
        QTest::addColumn<int>("CardType");
        QTest::addColumn<QString>("staged");
        QTest::addColumn<QString>("added");
        const char16_t* onTime = u"Time1=08:00 FT1 Time2=12:00 FT2 Time3=13:00 FT3 Time4=17:00 FT4";
        add("4 punches, none there, no cover: all is faulty", 4, u"", u"F1 F2 F3 F4 Expt");
        add("4 punches on time, 08:00 to 12:00: no exception", 4, onTime, u"");
        add("a morning of 08:00 to 11:59 is an exception without a fault", 4,
            u"Time1=08:00 FT1 Time2=11:59 FT2 Time3=13:00 FT3 Time4=17:00 FT4", u"Expt");
        add("a second is enough", 4, u"Time1=08:00:01 FT1 Time2=12:00:00 FT2 FT3 FT4", u"Expt");
        add("leave on the whole day", 4, u"FH1 FH2 FH3 FH4", u"");
        for (const char16_t* cover : {u"FH1", u"FC1", u"FH2", u"FC2"})
            QTest::addRow("the half-day rule is barred by %s", qPrintable(QString::fromUtf16(cover)))
                << 4 << u"Time1=08:00 FT1 Time2=11:00 FT2 FT3 FT4 "_s + QString::fromUtf16(cover) << u""_s;
        add("it is not barred by cover of the afternoon", 4,
            u"Time1=08:00 FT1 Time2=11:00 FT2 FH3 FC3 FH4 FC4", u"Expt");
        add("it needs both punches of the morning", 4, u"Time2=03:00 FT1 FT2 FT3 FT4", u"");
        add("it needs both, the second too", 4, u"Time1=03:00 FT1 FT2 FT3 FT4", u"");
        add("a second punch before the first: the size of the difference decides", 4,
            u"Time1=12:00 FT1 Time2=08:01 FT2 FT3 FT4", u"Expt");
        add("a second punch four hours before the first", 4, u"Time1=12:00 FT1 Time2=08:00 FT2 FT3 FT4", u"");
        add("3 punches know no half-day rule", 3, u"Time1=08:00 FT1 Time2=09:00 FT2 FT3 FT4", u"");
        add("the afternoon has no like rule", 4,
            u"Time1=08:00 FT1 Time2=12:00 FT2 Time3=13:00 FT3 Time4=14:00 FT4", u"");
        add("no punches required: no exception whatever the minutes, though the position shows", 0,
            u"Delay1=5", u"DelayF=1");
        add("above 4 there is no exception either", 5, u"Delay3=5", u"DelayF=3");
        add("255", 255, u"", u"");
        add("1 punch: the first position alone is judged", 1, u"FT2 FT3 FT4", u"F1 Expt");
        add("1 punch there", 1, u"FT1", u"");
        add("1 punch and minutes elsewhere", 1, u"FT1 Earlier4=5", u"DelayF=4");
        add("1 punch and late", 1, u"FT1 Delay1=5", u"DelayF=1 F1 Expt");
        add("2 punches: a missing second or third position means nothing", 2, u"FT1 FT4", u"");
        add("2 punches: the first is missing", 2, u"FT4", u"F1 Expt");
        add("2 punches: the fourth is missing", 2, u"FT1", u"F4 Expt");
        add("2 punches: both are missing", 2, u"FT2 FT3", u"F1 F4 Expt");
        add("2 punches: minutes at the second position mean nothing", 2, u"FT1 FT4 Earlier2=3", u"DelayF=2");
        add("2 punches: early at the fourth", 2, u"FT1 FT4 Earlier4=3", u"DelayF=4 F4 Expt");
        add("3 punches: positions 1, 3 and 4", 3, u"", u"F1 F3 F4 Expt");
        add("3 punches: the second means nothing", 3, u"FT1 FT3 FT4 Earlier2=3", u"DelayF=2");
        add("3 punches: the first is missing", 3, u"FT3 FT4", u"F1 Expt");
        add("3 punches: the third is missing", 3, u"FT1 FT4", u"F3 Expt");
        add("3 punches: the fourth is missing", 3, u"FT1 FT3", u"F4 Expt");
        for (int position = 1; position <= 4; ++position) {
            const QString others = QString(u"FT1 FT2 FT3 FT4"_s).remove(u"FT%1"_s.arg(position));
            QTest::addRow("4 punches: position %d is missing", position)
                << 4 << others << u"F%1 Expt"_s.arg(position);
            QTest::addRow("position %d excused by leave is no fault", position)
                << 4 << others + u" FH%1"_s.arg(position) << u""_s;
            QTest::addRow("position %d excused by a write-off is no fault", position)
                << 4 << others + u" FC%1"_s.arg(position) << u""_s;
        }
        add("late at 1 and at 3: only the last position is faulty", 4, u"FT1 FT2 FT3 FT4 Delay1=5 Delay3=5",
            u"DelayF=3 F3 Expt");
        add("late at 1 and early at 4: only the last position is faulty", 4,
            u"FT1 FT2 FT3 FT4 Delay1=5 Earlier4=5", u"DelayF=4 F4 Expt");
        add("minutes at all four", 4, u"FT1 FT2 FT3 FT4 Delay1=1 Earlier2=1 Delay3=1 Earlier4=1",
            u"DelayF=4 F4 Expt");
        add("early at 2", 4, u"FT1 FT2 FT3 FT4 Earlier2=1", u"DelayF=2 F2 Expt");
        add("minutes within the cushion are no fault", 4, u"FT1 FT2 FT3 FT4 Cushion1=5 Cushion3=5", u"");
        add("minutes below 0 are none", 4, u"FT1 FT2 FT3 FT4 Delay1=-1", u"");
        add("a position from before stays where no minutes overwrite it", 4, u"FT1 FT2 FT3 FT4 DelayF=2",
            u"F2 Expt");
        add("minutes overwrite a position from before", 4, u"FT1 FT2 FT3 FT4 DelayF=4 Delay1=1",
            u"DelayF=1 F1 Expt");
        add("a fault from before makes an exception of three punches", 3, u"FT1 FT3 FT4 F3", u"Expt");
        add("a fault from before outside the three does not", 3, u"FT1 FT3 FT4 F2", u"");
        add("a fault from before makes an exception of four punches", 4, u"FT1 FT2 FT3 FT4 F2", u"Expt");
        add("a fault from before makes none of two punches", 2, u"FT1 FT4 F1", u"");
        add("an exception from before stays", 0, u"Expt", u"");
    }
    void aRowIsJudged() {
        QFETCH(int, CardType);
        QFETCH(QString, staged);
        QFETCH(QString, added);
        insertRow(it().database(), u"AtteTemp1"_s, identity(u"00001"_s) + fieldsOf(staged));
        insertRow(it().database(), u"AtteTemp1"_s, identity(u"00002"_s));
        classify(u"00001"_s, CardType);
        const QString row = dailyRow(u"00001"_s, Day, u"A"_s, fieldsOf(staged) + fieldsOf(added));
        QCOMPARE(it().rows(u"AtteTemp1"_s), (QStringList{row, dailyRow(u"00002"_s, Day, u"A"_s)}));
        const bool exception = (staged + u' ' + added).contains(u"Expt"_s);
        QCOMPARE(it().rows(u"Atte03"_s), exception ? QStringList{row} : QStringList());
        QCOMPARE(it().rows(u"Atte02"_s), QStringList());
    }

    void nullNumbersAreNoMinutesAndNoPositionAndStayNull() {
        insertRow(it().database(), u"AtteTemp1"_s, identity(u"00001"_s) + fieldsOf(u"FT1 FT2 FT4"_s));
        it().database().execute(
            u"Update AtteTemp1 Set DelayF = Null, Delay1 = Null, Earlier2 = Null, Cushion1 = Null"_s);
        classify(u"00001"_s, 4);
        QCOMPARE(rowsOfSelection(it().database(),
                                 u"Select DelayF,Delay1,Earlier2,Cushion1,F1,F3,Expt from AtteTemp1"_s),
                 QStringList{u"null|null|null|null|False|True|True"_s});
    }

    void theFirstRunMovesOnlyExceptionsAndTouchesNothingThatIsThere() {
        const Fields faulty = fieldsOf(u"F1 Expt"_s);
        insertRow(it().database(), u"AtteTemp1"_s,
                  identity(u"00001"_s) + faulty + Fields{{u"T1", QTime(9, 0)}});
        insertRow(it().database(), u"AtteTemp1"_s, identity(u"00001"_s, u"B"_s));
        insertRow(it().database(), u"Atte03"_s, identity(u"00001"_s) + faulty);
        insertRow(it().database(), u"Atte03"_s, identity(u"00001"_s, u"C"_s) + faulty);
        insertRow(it().database(), u"Atte02"_s, identity(u"00001"_s));
        const QStringList results = it().rows(u"Atte02"_s);
        const QStringList exceptions = it().rows(u"Atte03"_s);
        classify(u"00001"_s, 0);
        QCOMPARE(it().rows(u"Atte02"_s), results);
        QCOMPARE(it().rows(u"Atte03"_s), exceptions);
    }

    void aRerunPutsTheStagedRowsInThePlaceOfAllThatBothTablesHoldOfTheDay() {
        const Fields faulty = fieldsOf(u"F1 Expt"_s);
        insertRow(it().database(), u"AtteTemp1"_s, identity(u"00001"_s) + faulty);
        insertRow(it().database(), u"AtteTemp1"_s, identity(u"00001"_s, u"B"_s) + fieldsOf(u"T1=09:00"_s));
        insertRow(it().database(), u"AtteTemp1"_s, identity(u"00001"_s) + fieldsOf(u"T1=10:00 Expt"_s));
        for (const QString& table : {u"Atte02"_s, u"Atte03"_s}) {
            insertRow(it().database(), table, identity(u"00001"_s) + fieldsOf(u"F4 Expt"_s));
            insertRow(it().database(), table, identity(u"00001"_s, u"C"_s) + fieldsOf(u"F4 Expt"_s));
            insertRow(it().database(), table, identity(u"00002"_s) + fieldsOf(u"F4 Expt"_s));
        }
        classify(u"00001"_s, 0, true);
        const QString first = dailyRow(u"00001"_s, Day, u"A"_s, faulty);
        const QString other = dailyRow(u"00002"_s, Day, u"A"_s, fieldsOf(u"F4 Expt"_s));
        QCOMPARE(it().rows(u"Atte03"_s), (QStringList{first, other}));
        QCOMPARE(it().rows(u"Atte02"_s),
                 (QStringList{first, dailyRow(u"00001"_s, Day, u"B"_s, fieldsOf(u"T1=09:00"_s)), other}));
    }

    void aRowThatIsNoExceptionAnyMoreLeavesTheExceptionsAtARerun() {
        insertRow(it().database(), u"AtteTemp1"_s, identity(u"00001"_s) + fieldsOf(u"FT1"_s));
        insertRow(it().database(), u"Atte03"_s, identity(u"00001"_s) + fieldsOf(u"F1 Expt"_s));
        insertRow(it().database(), u"Atte02"_s, identity(u"00001"_s) + fieldsOf(u"F1 Expt"_s));
        classify(u"00001"_s, 1, true);
        QCOMPARE(it().rows(u"Atte03"_s), QStringList());
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s, fieldsOf(u"FT1"_s))});
    }

    void aDayIsStoredOnce() {
        EmployeeDay day(it().database(), Day, u"00001"_s);
        day.addRow(u"A"_s);
        day.store();
        day.rows().front().FT(1) = 1;
        day.store();
        day.storeQuietly();
        QCOMPARE(it().rows(u"AtteTemp1"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s)});
    }

    void theRequiredPunchesOfTheSlotPlayNoPart() {
        addSlot(it().database(), u"A"_s, {{u"StdC2", false}});
        addEmployee(it().database(), u"00001"_s, {{u"LeaveDate", Sentinel}});
        addRoster(it().database(), u"00001"_s, Day, u"A"_s);
        for (const QTime& time : {QTime(8, 0), QTime(13, 0), QTime(17, 0)})
            addPunch(it().database(), u"00001"_s, Day, time);
        it().calculation.CalcSlotLoop(Day, false);
        const QString row = dailyRow(u"00001"_s, Day, u"A"_s,
                                     fieldsOf(u"Time1=08:00 FT1 Time3=13:00 FT3 Time4=17:00 FT4 F2 Expt"_s));
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{row});
        QCOMPARE(it().rows(u"Atte03"_s), QStringList{row});
    }

    void aPunchAtMidnightCountsAsAPunch() {
        addSlot(it().database(), u"A"_s, {{u"StrIn1", QTime(0, 0)}, {u"CardType", 1}});
        addEmployee(it().database(), u"00001"_s, {{u"LeaveDate", Sentinel}});
        addRoster(it().database(), u"00001"_s, Day, u"A"_s);
        addPunch(it().database(), u"00001"_s, Day, QTime(0, 0));
        it().calculation.CalcSlotLoop(Day, false);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s, fieldsOf(u"FT1"_s))});
        QCOMPARE(it().rows(u"Atte03"_s), QStringList());
    }
};

QTEST_GUILESS_MAIN(ExceptionsTest)
#include "ExceptionsTest.moc"
