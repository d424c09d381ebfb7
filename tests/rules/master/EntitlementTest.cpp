#include "EntitlementDesk.h"

#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The days granted for the stored seniority.
class EntitlementTest : public QObject {
    Q_OBJECT

    std::unique_ptr<EntitlementDesk> desk_;
    EntitlementDesk& it() { return *desk_; }

  private Q_SLOTS:
    void init() { desk_ = std::make_unique<EntitlementDesk>(); }

    void aBandGrantsItsDays_data() {
        QTest::addColumn<int>("HoliExper");
        QTest::addColumn<QString>("bands");
        QTest::addColumn<int>("days"); // Keeps: the old figures stay.
        constexpr int Keeps = -99999;
        const QString ladder = u"1~3:7 3~5:10 5~10:14 10~99:30"_s;
        QTest::newRow("below the first band") << 0 << ladder << Keeps;
        QTest::newRow("below zero") << -1 << ladder << Keeps;
        QTest::newRow("at the first band's begin") << 1 << ladder << 7;
        QTest::newRow("just below its end") << 2 << ladder << 7;
        QTest::newRow("its end belongs to the next band") << 3 << ladder << 10;
        QTest::newRow("from 3 to 5 holds 4") << 4 << ladder << 10;
        QTest::newRow("and 5 falls to the band that begins there") << 5 << ladder << 14;
        QTest::newRow("just below a wider band's end") << 9 << ladder << 14;
        QTest::newRow("at the last band's begin") << 10 << ladder << 30;
        QTest::newRow("just below the last band's end") << 98 << ladder << 30;
        QTest::newRow("at the last band's end") << 99 << ladder << Keeps;
        QTest::newRow("above it") << 100 << ladder << Keeps;
        QTest::newRow("a band equal at both ends never matches") << 5 << u"5~5:12"_s << Keeps;
        QTest::newRow("a band turned round neither, in it") << 4 << u"5~3:12"_s << Keeps;
        QTest::newRow("nor at its begin") << 5 << u"5~3:12"_s << Keeps;
        QTest::newRow("nor at its end") << 3 << u"5~3:12"_s << Keeps;
        QTest::newRow("a gap between bands, at its begin") << 3 << u"0~3:7 5~9:10"_s << Keeps;
        QTest::newRow("a gap between bands, at its last year") << 4 << u"0~3:7 5~9:10"_s << Keeps;
        QTest::newRow("the band behind a gap") << 5 << u"0~3:7 5~9:10"_s << 10;
        QTest::newRow("bands in no order") << 4 << u"5~10:14 3~5:10 1~3:7"_s << 10;
        QTest::newRow("of two bands that overlap the one added last stands") << 4 << u"0~10:7 3~5:9"_s << 9;
        QTest::newRow("also where it grants less") << 4 << u"3~5:9 0~10:7"_s << 7;
        QTest::newRow("the last that matches, not the last") << 5 << u"0~10:7 5~6:12 0~3:1 6~9:2"_s << 12;
        QTest::newRow("the same band twice") << 4 << u"3~5:9 3~5:8"_s << 8;
        QTest::newRow("a seniority below zero in its band") << -5 << u"-5~0:3"_s << 3;
        QTest::newRow("its last year") << -1 << u"-5~0:3"_s << 3;
        QTest::newRow("its end") << 0 << u"-5~0:3"_s << Keeps;
        QTest::newRow("just below it") << -6 << u"-5~0:3"_s << Keeps;
        QTest::newRow("the most years of 16 bits have no end above") << 32767 << u"0~32767:3"_s << Keeps;
        QTest::newRow("a year less") << 32766 << u"0~32767:3"_s << 3;
        QTest::newRow("the fewest years of 16 bits") << -32768 << u"-32768~0:3"_s << 3;
        QTest::newRow("7.5 days are 8") << 4 << u"3~5:7.5"_s << 8;
        QTest::newRow("6.5 days are 6") << 4 << u"3~5:6.5"_s << 6;
        QTest::newRow("0.5 days are none") << 4 << u"3~5:0.5"_s << 0;
        QTest::newRow("1.5 days are 2") << 4 << u"3~5:1.5"_s << 2;
        QTest::newRow("2.5 days are 2") << 4 << u"3~5:2.5"_s << 2;
        QTest::newRow("7.4 days are 7") << 4 << u"3~5:7.4"_s << 7;
        QTest::newRow("6.6 days are 7") << 4 << u"3~5:6.6"_s << 7;
        QTest::newRow("-0.5 days are none") << 4 << u"3~5:-0.5"_s << 0;
        QTest::newRow("-1.5 days are -2") << 4 << u"3~5:-1.5"_s << -2;
        QTest::newRow("no days are granted as such") << 4 << u"3~5:0"_s << 0;
        QTest::newRow("the most days of 16 bits") << 4 << u"3~5:32767.4"_s << 32767;
        QTest::newRow("the fewest days of 16 bits") << 4 << u"3~5:-32768.5"_s << -32768;
    }
    void aBandGrantsItsDays() {
        QFETCH(int, HoliExper);
        QFETCH(QString, bands);
        QFETCH(int, days);
        const Fields one = employee(u"00001"_s, HoliExper);
        it().add(one);
        it().grant(Annual, bands);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(days == -99999 ? one : withAnnual(one, days))});
        QCOMPARE(it().host.calls, (QStringList{u"hourglass"_s, u"normal pointer"_s, u"refreshRecordBar"_s}));
    }

    void annualPersonalAndSickLeaveGetTheirOwnGrants() {
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Annual, u"3~5:10"_s);
        it().grant(Personal, u"0~99:5"_s);
        it().grant(Sick, u"0~99:28"_s);
        it().grant(u"02"_s, u"0~99:66"_s); // Of last year: nobody asks for it.
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(withSick(withPersonal(withAnnual(one, 10), 5), 28))});
    }

    void theFourthPassWritesNothing() {
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Sick, u"0~99:28"_s);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(withSick(one, 28))});
    }

    void aSchemeWithoutGrantsForALeaveKeepsItsOldFigures() {
        const Fields one = employee(u"00001"_s, 4, u"1"_s);
        const Fields two = employee(u"00002"_s, 4, u"2"_s);
        it().add(one);
        it().add(two);
        it().grant(Annual, u"3~5:10"_s, u"1"_s);
        it().grant(Personal, u"3~5:6"_s, u"2"_s);
        it().compute();
        QCOMPARE(it().employees(), (QStringList{rowOf(withAnnual(one, 10)), rowOf(withPersonal(two, 6))}));
    }

    void eachSchemeHasItsOwnBands() {
        const Fields one = employee(u"00001"_s, 4, u"1"_s);
        const Fields two = employee(u"00002"_s, 4, u"2"_s);
        const Fields three = employee(u"00003"_s, 9, u"1"_s);
        for (const Fields& each : {one, two, three})
            it().add(each);
        it().grant(Annual, u"0~5:10 5~99:20"_s, u"1"_s);
        it().grant(Annual, u"0~99:30"_s, u"2"_s);
        it().compute();
        QCOMPARE(it().employees(), (QStringList{rowOf(withAnnual(one, 10)), rowOf(withAnnual(two, 30)),
                                                rowOf(withAnnual(three, 20))}));
    }

    void codesAreComparedInAnyCase() {
        const Fields one = employee(u"00001"_s, 4, u"a"_s);
        const Fields two = employee(u"00002"_s, 4, u"A"_s);
        it().add(one);
        it().add(two);
        it().database().execute(u"Update Syst01 Set ThisYearRest='x1'"_s);
        it().grant(u"X1"_s, u"0~9:10"_s, u"A"_s);
        it().compute();
        QCOMPARE(it().employees(), (QStringList{rowOf(withAnnual(one, 10)), rowOf(withAnnual(two, 10))}));
    }

    void leavesOfTheSameCodeGetTheSameDays() {
        it().database().execute(u"Update Syst01 Set ThisYearRest='07',Leave='07',Sick='07'"_s);
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(u"07"_s, u"3~5:10"_s);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(withSick(withPersonal(withAnnual(one, 10), 10), 10))});
    }

    void employeesWhoHaveLeftAreIncluded() {
        const Fields gone = with(employee(u"00001"_s, 4), {u"LeaveDate", QDate(1998, 5, 31)});
        it().add(gone);
        it().grant(Annual, u"3~5:10"_s);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(withAnnual(gone, 10))});
    }

    void theStoredSeniorityCountsAndNotTheDates() {
        // Half a century of service, and a seniority of 4 from the last calculation.
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Annual, u"0~10:10 10~99:30"_s);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(withAnnual(one, 10))});
    }

    void anApostropheInAnEmployeesCodeBreaksNothing() {
        const Fields before = employee(u"0"_s, 4);
        const Fields one = employee(u"0'1"_s, 4);
        const Fields two = employee(u"0'2"_s, 9);
        const Fields behind = employee(u"01"_s, 0);
        for (const Fields& each : {behind, two, one, before})
            it().add(each);
        it().grant(Annual, u"3~5:10 5~99:14"_s);
        it().compute();
        QCOMPARE(it().employees(), (QStringList{rowOf(withAnnual(before, 10)), rowOf(withAnnual(one, 10)),
                                                rowOf(withAnnual(two, 14)), rowOf(behind)}));
    }

    void employeesOfOneSchemeAndSeniorityGetTheSame() {
        const Fields one = employee(u"00001"_s, 4);
        const Fields two = employee(u"00002"_s, 2);
        const Fields three = employee(u"00003"_s, 4);
        const Fields four = employee(u"00004"_s, 2);
        for (const Fields& each : {one, two, three, four})
            it().add(each);
        it().grant(Annual, u"3~5:10"_s);
        it().grant(Sick, u"0~3:28"_s);
        it().compute();
        QCOMPARE(it().employees(), (QStringList{rowOf(withAnnual(one, 10)), rowOf(withSick(two, 28)),
                                                rowOf(withAnnual(three, 10)), rowOf(withSick(four, 28))}));
    }

    void figuresThatWereNeverSetAreSet() {
        const Fields fresh{{u"EmpNo", u"00001"}, {u"SuitNo", u"1"}, {u"HoliExper", 4}};
        it().add(fresh);
        it().grant(Annual, u"3~5:10"_s);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(withAnnual(fresh, 10))});
    }

    void runningItTwiceLeavesTheSameResult() {
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Annual, u"3~5:10"_s);
        it().compute();
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(withAnnual(one, 10))});
    }

    void runningItAfterLeaveWasTakenGivesTheFullGrantBack() {
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Annual, u"3~5:10"_s);
        it().compute();
        it().database().execute(u"Update Base06 Set ThisYearUse=4,ThisYearLeft=6"_s);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(with(withAnnual(one, 10), {u"ThisYearUse", 4}))});
    }

    void withoutEmployeesThePointerIsSetBackAndTheBarRefreshed() {
        it().compute();
        QCOMPARE(it().host.calls, (QStringList{u"normal pointer"_s, u"refreshRecordBar"_s}));
    }

    void withoutASettingsRowTheCodesAreEmpty() {
        it().database().execute(u"Delete * From Syst01"_s);
        const Fields one = employee(u"00001"_s, 4);
        it().add(one);
        it().grant(Annual, u"3~5:10"_s);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(one)});
        it().grant(u""_s, u"3~5:11"_s);
        it().compute();
        QCOMPARE(it().employees(), QStringList{rowOf(withSick(withPersonal(withAnnual(one, 11), 11), 11))});
    }

    void allEmployeesAreOneStageAndTheBarComesBehindIt() {
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s, u"00003"_s})
            it().add(employee(EmpNo, 4));
        it().grant(Annual, u"0~99:10"_s);
        it().store.commit();
        const int before = it().commits();
        int atTheBar = 0;
        it().host.onCall = [&](const QString&) { atTheBar = it().commits(); };
        it().compute();
        QCOMPARE(atTheBar, before + 1);
        QCOMPARE(it().commits(), before + 1);
        QCOMPARE(it().host.insideStage, QStringList());
        QCOMPARE(it().host.calls, (QStringList{u"hourglass"_s, u"normal pointer"_s, u"refreshRecordBar"_s}));
    }
};

QTEST_GUILESS_MAIN(EntitlementTest)
#include "EntitlementTest.moc"
