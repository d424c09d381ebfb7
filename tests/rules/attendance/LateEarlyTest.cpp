#include "Opening.h"

#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate& Day = Opening::Day;

} // namespace

/// Minutes of cushion, delay and early leave.
class LateEarlyTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    int calculate() { return it().calculate(); }

    static void add(const char* title, const QString& slot, const QString& punches, const QString& row) {
        QTest::newRow(title) << slot << punches << row;
    }

  private Q_SLOTS:
    void init() {
        if (!opening_)
            opening_ = std::make_unique<Opening>();
        it().store.clear();
        it().addRostered(u"00001"_s);
    }

    /// The slot has 5 minutes of cushion, 25 of delay and 10 of early leave in both halves where the row says
    /// nothing else. It requires no number of punches, so that minutes show in DelayF and make no exception.
    void punchesBecomeMinutes_data() {
        QTest::addColumn<QString>("slot");
        QTest::addColumn<QString>("punches");
        QTest::addColumn<QString>("row");
        add("08:00 gives nothing", u""_s, u"08:00"_s, u"Time1=08:00 FT1"_s);
        add("08:01 is one minute of cushion", u""_s, u"08:01"_s, u"Time1=08:01 FT1 Cushion1=1"_s);
        add("08:05 is five minutes of cushion", u""_s, u"08:05"_s, u"Time1=08:05 FT1 Cushion1=5"_s);
        add("08:06 is one minute late", u""_s, u"08:06"_s, u"Time1=08:06 FT1 Delay1=1 DelayF=1"_s);
        add("08:30 is 25 minutes late", u""_s, u"08:30"_s, u"Time1=08:30 FT1 Delay1=25 DelayF=1"_s);
        add("08:31 is not assigned at all", u""_s, u"08:31"_s, u"T1=08:31"_s);
        add("08:00:59 is not late", u""_s, u"08:00:59"_s, u"Time1=08:00 FT1"_s);
        add("11:59 is one minute early", u""_s, u"11:59"_s, u"Time2=11:59 FT2 Earlier2=1 DelayF=2"_s);
        add("12:00 is not early", u""_s, u"12:00"_s, u"Time2=12:00 FT2"_s);
        add("11:30 is 30 minutes early where the window holds it", u"Earlier=30"_s, u"11:30"_s,
            u"Time2=11:30 FT2 Earlier2=30 DelayF=2"_s);
        add("without both allowances nobody leaves early", u"Earlier=0 Earlier1=0"_s, u"11:57 16:57"_s,
            u"Time2=11:57 FT2 Time4=16:57 FT4"_s);
        add("the afternoon's allowance switches the morning on", u"Earlier=0"_s, u"11:57"_s,
            u"Time2=11:57 FT2 Earlier2=3 DelayF=2"_s);
        add("the morning's allowance switches the afternoon on, and its size does not matter",
            u"Earlier=1 Earlier1=0"_s, u"16:56"_s, u"Time4=16:56 FT4 Earlier4=4 DelayF=4"_s);
        add("13:03 is three minutes of cushion", u""_s, u"13:03"_s, u"Time3=13:03 FT3 Cushion3=3"_s);
        add("13:10 is five minutes late", u""_s, u"13:10"_s, u"Time3=13:10 FT3 Delay3=5 DelayF=3"_s);
        add("16:50 is ten minutes early", u""_s, u"16:50"_s, u"Time4=16:50 FT4 Earlier4=10 DelayF=4"_s);
        add("17:00 is not early", u""_s, u"17:00"_s, u"Time4=17:00 FT4"_s);
        add("late in the morning and early in the afternoon: the last position stands", u""_s,
            u"08:10 16:50"_s, u"Time1=08:10 FT1 Delay1=5 Time4=16:50 FT4 Earlier4=10 DelayF=4"_s);
        add("the morning's cushion serves the afternoon, however long the afternoon's", u"Cushion1=15"_s,
            u"13:10"_s, u"Time3=13:10 FT3 Delay3=5 DelayF=3"_s);
        add("the afternoon's cushion serves the morning where there is none", u"Cushion=0 Cushion1=10"_s,
            u"08:04"_s, u"Time1=08:04 FT1 Cushion1=4"_s);
        add("behind a borrowed cushion the delay counts from the standard time", u"Cushion=0 Cushion1=10"_s,
            u"08:15"_s, u"Time1=08:15 FT1 Delay1=15 DelayF=1"_s);
        add("where both cushion and delay hold, the cushion stands", u"Cushion=0 Cushion1=10"_s, u"08:10"_s,
            u"Time1=08:10 FT1 Cushion1=10"_s);
        add("without the morning's delay the afternoon's pair counts", u"Delay=0 Cushion1=7 Delay1=20"_s,
            u"13:08"_s, u"Time3=13:08 FT3 Delay3=1 DelayF=3"_s);
        add("between the two cushions there is nothing", u"Delay=0 Cushion1=7 Delay1=20"_s, u"13:06"_s,
            u"Time3=13:06 FT3"_s);
        add("a larger afternoon allowance: a punch and no minutes", u"Delay=10 Delay1=40"_s, u"13:30"_s,
            u"Time3=13:30 FT3"_s);
        add("no allowance at all: a punch on time or none", u"Cushion=0 Delay=0 Cushion1=0 Delay1=0"_s,
            u"08:00 08:01"_s, u"Time1=08:00 FT1 T1=08:01"_s);
        add("neither cushion nor delay though the window is wide",
            u"Cushion=0 Delay=0 Cushion1=0 Delay1=0 StdT1=09:00 "
            "ElstType=4 CardType=4 ElstMin=30"_s,
            u"09:20 12:00 13:00 17:00"_s,
            u"Time1=09:20 FT1 Time2=12:00 FT2 Time3=13:00 FT3 Time4=17:00 FT4 Expt"_s);
        add("a punch that is not required is not judged", u"StdC1=0 StdC4=0"_s, u"08:10 16:50"_s,
            u"Time1=08:10 FT1 Time4=16:50 FT4"_s);
        add("required punches stand by their own position", u"StdC1=0"_s, u"08:10 13:10"_s,
            u"Time1=08:10 FT1 Time3=13:10 FT3 Delay3=5 DelayF=3"_s);
        add("a punch before midnight may have minutes", u"StrIn1=23:00 StdT1=23:50 Cushion=5 Delay=4"_s,
            u"23:52"_s, u"Time1=23:52 FT1 Cushion1=2"_s);
        add("a standard time whose cushion passes midnight takes the punch before it",
            u"StrIn3=23:00 StdT3=23:58 EndOut4=00:00"_s, u"23:59"_s, u"Time3=23:59 FT3 Cushion3=1"_s);
        add("at least eight hours: no minutes exist", u"ElstType=1 ElstMin=30"_s, u"08:20"_s, u"T1=08:20"_s);
        add("at least eight hours with four punches: no minutes exist", u"ElstType=1 CardType=4 ElstMin=30"_s,
            u"08:20"_s, u"Time1=08:20 FT1 F2 F3 F4 Expt"_s);
        add("an elastic morning judges the afternoon alone", u"ElstType=2 CardType=4 ElstMin=30"_s,
            u"08:10 12:00 13:10 16:55"_s,
            u"Time1=08:10 FT1 Time2=12:00 FT2 Time3=13:10 FT3 Delay3=5 Time4=16:55 FT4 Earlier4=5 DelayF=4 F4 Expt"_s);
        add("an elastic afternoon of three punches judges the arrival alone",
            u"ElstType=3 CardType=3 ElstMin=30 StdC2=0"_s, u"08:03 13:20 16:40"_s,
            u"Time1=08:03 FT1 Cushion1=3 Time3=13:20 FT3 Time4=16:40 FT4"_s);
        add("an elastic afternoon of four punches judges the morning", u"ElstType=3 CardType=4 ElstMin=30"_s,
            u"08:03 11:57 13:20 16:40"_s,
            u"Time1=08:03 FT1 Cushion1=3 Time2=11:57 FT2 Earlier2=3 Time3=13:20 FT3 Time4=16:40 FT4 DelayF=2 F2 Expt"_s);
        add("both halves elastic judge all four", u"ElstType=4 CardType=4 ElstMin=30"_s,
            u"08:10 11:55 13:03 16:58"_s,
            u"Time1=08:10 FT1 Delay1=5 Time2=11:55 FT2 Earlier2=5 Time3=13:03 FT3 Cushion3=3 Time4=16:58 FT4 "
            "Earlier4=2 DelayF=4 F4 Expt"_s);
    }
    void punchesBecomeMinutes() {
        QFETCH(QString, slot);
        QFETCH(QString, punches);
        QFETCH(QString, row);
        addSlot(it().database(), u"A"_s, Fields{{u"CardType", 0}} + fieldsOf(slot));
        for (const QString& time : punches.split(u' '))
            addPunch(it().database(), u"00001"_s, Day, QTime::fromString(time, Qt::ISODate));
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s, fieldsOf(row))});
    }

    void leaveOnAPositionSparesItsMinutes() {
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        addPunch(it().database(), u"00001"_s, Day, QTime(8, 20));
        addPunch(it().database(), u"00001"_s, Day, QTime(16, 50));
        addLeaveDay(it().database(), u"00001"_s, Day, u"01"_s, QTime(8, 0), QTime(12, 0));
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s),
                 QStringList{
                     dailyRow(u"00001"_s, Day, u"A"_s,
                              fieldsOf(u"Time1=08:20 FT1 FH1 FH2 Time4=16:50 FT4 Earlier4=10 DelayF=4"_s))});
    }

    void aWriteOffOnAPositionSparesItsMinutes() {
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        addPunch(it().database(), u"00001"_s, Day, QTime(8, 20));
        addPunch(it().database(), u"00001"_s, Day, QTime(16, 50));
        addWriteOff(it().database(), u"00001"_s, Day, u""_s, u""_s, u""_s, u"01"_s);
        QCOMPARE(calculate(), 0);
        QCOMPARE(
            it().rows(u"Atte02"_s),
            QStringList{dailyRow(u"00001"_s, Day, u"A"_s,
                                 fieldsOf(u"Time1=08:20 FT1 Delay1=15 DelayF=1 Time4=16:50 FT4 FC4"_s))});
    }

    /// Time(0) fails at the first employee of such a slot, with or without punches.
    void aKindThatTheNumberOfPunchesDoesNotAllowEndsTheRunAtTheFirstEmployee_data() {
        QTest::addColumn<int>("ElstType");
        QTest::addColumn<int>("CardType");
        QTest::addColumn<bool>("fails");
        for (const int ElstType : {0, 1, 2, 3, 4, 5, 255}) {
            for (const int CardType : {0, 1, 2, 3, 4, 5, 255}) {
                const bool judged = ElstType <= 1 || ((ElstType == 2 || ElstType == 4) && CardType == 4) ||
                                    (ElstType == 3 && (CardType == 3 || CardType == 4));
                QTest::addRow("kind %d with %d punches %s", ElstType, CardType, judged ? "passes" : "fails")
                    << ElstType << CardType << !judged;
            }
        }
    }
    void aKindThatTheNumberOfPunchesDoesNotAllowEndsTheRunAtTheFirstEmployee() {
        QFETCH(int, ElstType);
        QFETCH(int, CardType);
        QFETCH(bool, fails);
        addSlot(it().database(), u"A"_s, {{u"ElstType", ElstType}, {u"CardType", CardType}});
        it().addRostered(u"00002"_s);
        addLeaveDay(it().database(), u"00001"_s, Day, u"01"_s, QTime(13, 0), QTime(17, 0));
        QCOMPARE(calculate(), fails ? error::SubscriptOutOfRange : 0);
        const QStringList staged =
            rowsOfSelection(it().database(), u"Select EmpNo,FH3,FH4,Expt from AtteTemp1"_s);
        QCOMPARE(staged.size(), fails ? 1 : 2);
        if (fails)
            QCOMPARE(it().committedRows(u"AtteTemp1"_s),
                     QStringList{dailyRow(u"00001"_s, Day, u"A"_s, fieldsOf(u"FH3 FH4"_s))});
        QCOMPARE(it().committedRows(u"Atte02"_s).size(), fails ? 0 : 2);
        QCOMPARE(it().committedRows(u"Atte03"_s).size(), fails || CardType == 0 || CardType > 4 ? 0 : 2);
        QCOMPARE(it().committedRows(u"View02"_s).size(), fails ? 1 : 2);
    }

    void aSlotOfSuchAKindWithoutEmployeesDoesNoHarm() {
        addSlot(it().database(), u"B"_s, {{u"ElstType", 2}, {u"CardType", 3}});
        addSlot(it().database(), u"A"_s, {{u"CardType", 0}});
        QCOMPARE(calculate(), 0);
        QCOMPARE(it().rows(u"Atte02"_s), QStringList{dailyRow(u"00001"_s, Day, u"A"_s)});
    }
};

QTEST_GUILESS_MAIN(LateEarlyTest)
#include "LateEarlyTest.moc"
