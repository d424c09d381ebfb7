#include "EmployeeDesk.h"

#include "rules/master/Seniority.h"
#include "store/RunTimeError.h"
#include "support/Errors.h"

#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// An employee with everything that the calculation must leave alone filled in.
Fields employee(const QString& EmpNo, const Value& IniArrDate, const Value& BreakY, const Value& SoldierY) {
    return {{u"EmpNo", EmpNo},
            {u"EmpName", u"王小明"},
            {u"SuitNo", u"1"},
            {u"UnitNo", u"0001"},
            {u"ArriveDate", QDate(1995, 7, 1)},
            {u"IniArrDate", IniArrDate},
            {u"BreakY", BreakY},
            {u"SoldierY", SoldierY},
            {u"HoliExper", 77},
            {u"ThisYearHD", 7.0},
            {u"ThisYearUse", 1.4},
            {u"ThisYearLeft", 5.4},
            {u"LastYearLeft", 2.0},
            {u"LeaveHD", 5.0},
            {u"SickHD", 28.0},
            {u"Memo", u"不變"}};
}

QString row(const Fields& fields) {
    return expectedRow(u"Base06"_s, fields);
}

QString rowWith(const Fields& fields, int HoliExper) {
    return row(with(fields, {u"HoliExper", HoliExper}));
}

} // namespace

/// The leave seniority of all employees up to a date.
class SeniorityTest : public QObject {
    Q_OBJECT

    std::unique_ptr<EmployeeDesk> desk_;
    EmployeeDesk& it() { return *desk_; }

    void add(const Fields& fields) { insertRow(it().database(), u"Base06"_s, fields); }
    void compute() {
        it().store.commit();
        ComputeSeniority(it().database(), it().host);
    }

  private Q_SLOTS:
    void init() {
        desk_ = std::make_unique<EmployeeDesk>();
        it().store.holdOpen();
    }

    void seniorityIsInWholeYears_data() {
        QTest::addColumn<QDate>("IniArrDate");
        QTest::addColumn<int>("BreakY");
        QTest::addColumn<int>("SoldierY");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<int>("HoliExper");
        const QDate start(1990, 3, 15);
        const QDate yearEnd(2000, 12, 31);
        QTest::newRow("130 months, 14 of broken and 24 of military service are 14 years")
            << start << 14 << 24 << yearEnd << 14;
        QTest::newRow("a month less is a year less") << start << 13 << 24 << yearEnd << 13;
        QTest::newRow("179 months are still 14 years") << start << 25 << 24 << yearEnd << 14;
        QTest::newRow("180 months are 15") << start << 26 << 24 << yearEnd << 15;
        QTest::newRow("nothing added: 130 months are 10 years") << start << 0 << 0 << yearEnd << 10;
        QTest::newRow("broken service adds as it stands") << start << 2 << 0 << yearEnd << 11;
        QTest::newRow("military service adds the same") << start << 0 << 2 << yearEnd << 11;
        QTest::newRow("the last day of a month counts into the next")
            << QDate(1990, 1, 31) << 0 << 0 << yearEnd << 11;
        QTest::newRow("the day before it does not")
            << QDate(1990, 1, 31) << 0 << 0 << QDate(2000, 12, 30) << 10;
        QTest::newRow("the first day of a month neither")
            << QDate(1990, 1, 31) << 0 << 0 << QDate(2000, 12, 1) << 10;
        QTest::newRow("the day of the month plays no part")
            << QDate(1999, 5, 31) << 0 << 0 << QDate(2000, 5, 1) << 1;
        QTest::newRow("a day short of the month is a year less")
            << QDate(1999, 5, 1) << 0 << 0 << QDate(2000, 4, 29) << 0;
        QTest::newRow("31 January to 31 January is a month: with 11 more a year")
            << QDate(2000, 1, 31) << 0 << 11 << QDate(2000, 1, 31) << 1;
        QTest::newRow("1 January to 30 January is none: with 11 more no year")
            << QDate(2000, 1, 1) << 0 << 11 << QDate(2000, 1, 30) << 0;
        QTest::newRow("28 February of a leap year is not its month's end")
            << QDate(1999, 3, 1) << 0 << 0 << QDate(2000, 2, 28) << 0;
        QTest::newRow("29 February is") << QDate(1999, 3, 1) << 0 << 0 << QDate(2000, 2, 29) << 1;
        QTest::newRow("28 February of another year is")
            << QDate(1998, 3, 31) << 0 << 0 << QDate(1999, 2, 28) << 1;
        QTest::newRow("the day itself gives no year")
            << QDate(2000, 5, 10) << 0 << 0 << QDate(2000, 5, 10) << 0;
        QTest::newRow("forty years to the day") << QDate(1970, 7, 1) << 0 << 0 << QDate(2010, 6, 30) << 40;
        QTest::newRow("and two days before") << QDate(1970, 7, 1) << 0 << 0 << QDate(2010, 6, 29) << 39;
        QTest::newRow("a hundred years") << QDate(1899, 12, 31) << 0 << 0 << QDate(1999, 12, 30) << 100;
        const QDate january(2000, 1, 15);
        QTest::newRow("a start 5 months ahead is cut to 0") << QDate(2000, 6, 1) << 0 << 0 << january << 0;
        QTest::newRow("11 months ahead as well") << QDate(2000, 12, 31) << 0 << 0 << january << 0;
        QTest::newRow("12 months ahead are minus one year") << QDate(2001, 1, 1) << 0 << 0 << january << -1;
        QTest::newRow("23 months ahead still") << QDate(2001, 12, 31) << 0 << 0 << january << -1;
        QTest::newRow("24 months ahead are minus two") << QDate(2002, 1, 1) << 0 << 0 << january << -2;
        QTest::newRow("a month added to 12 ahead gives 0") << QDate(2001, 1, 1) << 0 << 1 << january << 0;
        QTest::newRow("24 months added to 12 ahead give a year")
            << QDate(2001, 1, 1) << 12 << 12 << january << 1;
        QTest::newRow("negative months take away") << QDate(1999, 1, 1) << -1 << 0 << january << 0;
        QTest::newRow("down to minus one year") << QDate(1999, 1, 1) << -12 << -12 << january << -1;
        QTest::newRow("the most months of 16 bits") << QDate(2000, 1, 1) << 32767 << 0 << january << 2730;
        QTest::newRow("in both: the sum is not held to 16 bits")
            << QDate(2000, 1, 1) << 32767 << 32767 << january << 5461;
        QTest::newRow("the fewest months of 16 bits") << QDate(2000, 1, 1) << -32768 << 0 << january << -2730;
    }
    void seniorityIsInWholeYears() {
        QFETCH(QDate, IniArrDate);
        QFETCH(int, BreakY);
        QFETCH(int, SoldierY);
        QFETCH(QDate, date);
        QFETCH(int, HoliExper);
        const Fields one = employee(u"00001"_s, IniArrDate, BreakY, SoldierY);
        add(one);
        it().host.date = date;
        compute();
        QCOMPARE(it().employees(), QStringList{rowWith(one, HoliExper)});
        QCOMPARE(it().host.calls, (QStringList{u"askDate"_s, u"refreshRecordBar"_s}));
    }

    void aCancelledDialogComputesUpTo2January2038() {
        const Fields before = employee(u"00001"_s, QDate(2000, 1, 31), 0, 0);
        const Fields after = employee(u"00002"_s, QDate(2000, 2, 1), 0, 0);
        add(before);
        add(after);
        it().host.date = QDate(2038, 1, 1);
        compute();
        QCOMPARE(it().employees(), (QStringList{rowWith(before, 38), rowWith(after, 37)}));
    }

    void employeesWhoHaveLeftAreIncluded() {
        const Fields gone =
            with(employee(u"00001"_s, QDate(1990, 3, 15), 0, 0), {u"LeaveDate", QDate(1998, 5, 31)});
        add(gone);
        compute();
        QCOMPARE(it().employees(), QStringList{rowWith(gone, 10)});
    }

    void anEmployeeWithoutSeniorityGetsIt() {
        const Fields fresh{
            {u"EmpNo", u"A%1"}, {u"IniArrDate", QDate(1990, 3, 15)}, {u"BreakY", 0}, {u"SoldierY", 0}};
        add(fresh);
        compute();
        QCOMPARE(it().employees(), QStringList{rowWith(fresh, 10)});
    }

    void runningItTwiceLeavesTheSameResult() {
        const Fields one = employee(u"00001"_s, QDate(1990, 3, 15), 14, 24);
        add(one);
        compute();
        compute();
        QCOMPARE(it().employees(), QStringList{rowWith(one, 14)});
    }

    void anErrorEndsTheRunAndTheEmployeesBeforeItKeepTheirNewSeniority_data() {
        QTest::addColumn<QString>("EmpNo");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("number");
        const QString second = u"00002"_s;
        QTest::newRow("no first date in public service")
            << second << u"IniArrDate"_s << u"null"_s << error::InvalidNull;
        QTest::newRow("no months of broken service")
            << second << u"BreakY"_s << u"null"_s << error::InvalidNull;
        QTest::newRow("no months of military service")
            << second << u"SoldierY"_s << u"null"_s << error::InvalidNull;
        QTest::newRow("broken service over 16 bits")
            << second << u"BreakY"_s << u"32768"_s << error::Overflow;
        QTest::newRow("broken service under 16 bits")
            << second << u"BreakY"_s << u"-32769"_s << error::Overflow;
        QTest::newRow("military service over 16 bits")
            << second << u"SoldierY"_s << u"32768"_s << error::Overflow;
        QTest::newRow("military service under 16 bits")
            << second << u"SoldierY"_s << u"-32769"_s << error::Overflow;
        QTest::newRow("an apostrophe in the code") << u"00001'"_s << u"BreakY"_s << u"14"_s << error::Syntax;
    }
    void anErrorEndsTheRunAndTheEmployeesBeforeItKeepTheirNewSeniority() {
        QFETCH(QString, EmpNo);
        QFETCH(QString, column);
        QFETCH(QString, value);
        QFETCH(int, number);
        const Fields first = employee(u"00001"_s, QDate(1990, 3, 15), 14, 24);
        const Fields bad = with(employee(EmpNo, QDate(1990, 3, 15), 14, 24), {column, valueOf(value)});
        const Fields last = employee(u"00003"_s, QDate(1990, 3, 15), 14, 24);
        // What comes first is by the codes, not by entry.
        add(last);
        add(bad);
        add(first);
        QStringList seen;
        it().host.onCall = [&](const QString& call) {
            if (call.startsWith(u"openFailed"_s))
                seen = it().employees();
        };
        compute();
        const QStringList expected{rowWith(first, 14), row(bad), row(last)};
        QCOMPARE(it().employees(), expected);
        // The message comes when everything is kept already, and the bar is left alone.
        QCOMPARE(seen, expected);
        QCOMPARE(it().host.calls, (QStringList{u"askDate"_s, u"openFailed %1"_s.arg(number)}));
        QCOMPARE(it().host.insideStage, QStringList());
        QVERIFY(!it().database().inStage());
    }

    void anErrorAtTheFirstEmployeeKeepsAllOldFigures() {
        const Fields bad = employee(u"00001"_s, Value(), 0, 0);
        const Fields good = employee(u"00002"_s, QDate(1990, 3, 15), 0, 0);
        add(bad);
        add(good);
        compute();
        QCOMPARE(it().employees(), (QStringList{row(bad), row(good)}));
        QCOMPARE(it().host.calls, (QStringList{u"askDate"_s, u"openFailed 94"_s}));
    }

    void aDialogLeftWithoutADateIsANullAtTheFirstEmployee() {
        const Fields one = employee(u"00001"_s, QDate(1990, 3, 15), 0, 0);
        add(one);
        it().host.date = QDate();
        compute();
        QCOMPARE(it().employees(), QStringList{row(one)});
        QCOMPARE(it().host.calls, (QStringList{u"askDate"_s, u"openFailed 94"_s}));
    }

    void withoutEmployeesOnlyTheBarIsRefreshed() {
        it().host.date = QDate();
        compute();
        QCOMPARE(it().host.calls, (QStringList{u"askDate"_s, u"refreshRecordBar"_s}));
    }

    void theTrapIsSetAtTheFirstEmployeeAndHoldsForTheBar() {
        it().host.onCall = [](const QString& call) {
            if (call == u"refreshRecordBar"_s)
                throw runTimeError(error::ObjectNotSet);
        };
        QCOMPARE(errorOf([this] { compute(); }), error::ObjectNotSet);
        const Fields one = employee(u"00001"_s, QDate(1990, 3, 15), 0, 0);
        add(one);
        it().host.calls.clear();
        QCOMPARE(errorOf([this] { compute(); }), 0);
        QCOMPARE(it().host.calls, (QStringList{u"askDate"_s, u"refreshRecordBar"_s, u"openFailed 91"_s}));
        QCOMPARE(it().employees(), QStringList{rowWith(one, 10)});
    }

    void figuresThatCannotBeStoredAreToldAsAnyError() {
        const Fields one = employee(u"00001"_s, QDate(1990, 3, 15), 0, 0);
        add(one);
        it().store.commit();
        {
            const ForeignReader reader(it().store.path());
            compute();
        }
        QCOMPARE(it().employees(), QStringList{row(one)});
        QCOMPARE(it().host.calls, (QStringList{u"askDate"_s, u"openFailed 3260"_s}));
        QVERIFY(!it().database().inStage());
    }

    void allEmployeesAreOneStageAlsoWhereAnErrorLeavesIt_data() {
        QTest::addColumn<bool>("fails");
        QTest::newRow("to the end") << false;
        QTest::newRow("to an employee without a first date") << true;
    }
    void allEmployeesAreOneStageAlsoWhereAnErrorLeavesIt() {
        QFETCH(bool, fails);
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s, u"00003"_s})
            add(employee(EmpNo, QDate(1990, 3, 15), 0, 0));
        add(employee(u"00004"_s, fails ? Value() : Value(QDate(1990, 3, 15)), 0, 0));
        it().store.commit();
        const int before = it().commits();
        int atTheBar = 0;
        it().host.onCall = [&](const QString& call) {
            if (call != u"askDate"_s)
                atTheBar = it().commits();
        };
        compute();
        QCOMPARE(atTheBar, before + 1);
        QCOMPARE(it().commits(), before + 1);
        QCOMPARE(it().host.insideStage, QStringList());
        QCOMPARE(rowsOfSelection(it().database(), u"Select EmpNo From Base06 Where HoliExper = 10"_s).size(),
                 fails ? 3 : 4);
    }
};

QTEST_GUILESS_MAIN(SeniorityTest)
#include "SeniorityTest.moc"
