#include "rules/leave/LeaveBalance.h"

#include "LeaveDesk.h"

#include <QTest>

#include <limits>
#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// All figures of an employee, each different.
Fields figures() {
    return {{u"EmpNo", u"20001"},   {u"EmpName", u"王小明"}, {u"ThisYearHD", 7.0},  {u"ThisYearUse", 1.4},
            {u"ThisYearLeft", 5.4}, {u"LastYearHD", 3.0},    {u"LastYearUse", 0.1}, {u"LastYearLeft", 2.7},
            {u"LeaveHD", 14.0},     {u"LeaveUse", 2.2},      {u"LeaveLeft", 11.6},  {u"SickHD", 30.0},
            {u"SickUse", 4.3},      {u"SickLeft", 25.5}};
}

} // namespace

/// Days and hours in one number, the balance that a type charges, and the charge.
class BalanceTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStore> store_;
    Database& database() { return store_->database(); }

    [[nodiscard]] QString employee() { return rowsOf(database(), u"Base06"_s).join(u'\n'); }
    [[nodiscard]] static QString rowOf(const Fields& fields) { return expectedRow(u"Base06"_s, fields); }

    [[nodiscard]] int chargeAndTell(std::size_t balance, std::int16_t hours) {
        return errorOf([&] {
            LeaveBalance(database(), u"20001"_s, balance).charge(hours);
            return 0;
        });
    }

  private Q_SLOTS:
    void init() { store_ = std::make_unique<TestStore>(); }

    void aNumberTellsHours_data() {
        QTest::addColumn<double>("number");
        QTest::addColumn<int>("hours");
        QTest::newRow("nothing") << 0.0 << 0;
        QTest::newRow("a day") << 1.0 << 8;
        QTest::newRow("hours alone") << 0.7 << 7;
        QTest::newRow("a day and four hours") << 1.4 << 12;
        QTest::newRow("a sum a little above") << 1.4000000000000002 << 12;
        QTest::newRow("a sum a little below") << 0.30000000000000004 - 0.1 + 0.1 << 3;
        QTest::newRow("eight tenths count as hours") << 1.8 << 16;
        QTest::newRow("nine tenths") << 0.9 << 9;
        QTest::newRow("half a tenth goes to the even one below") << 0.25 << 2;
        QTest::newRow("and above") << 0.75 << 8;
        QTest::newRow("more than half goes up") << 0.26 << 3;
        QTest::newRow("less goes down") << 0.74 << 7;
        QTest::newRow("a debt") << -1.4 << -12;
        QTest::newRow("a debt of hours") << -0.6 << -6;
        QTest::newRow("half a tenth of a debt") << -0.25 << -2;
        QTest::newRow("many days") << 365.5 << 2925;
        QTest::newRow("the most") << 214748364.7 << 1717986919;
    }
    void aNumberTellsHours() {
        QFETCH(const double, number);
        QTEST(int(hoursOfNumber(number)), "hours");
    }

    void aNumberBeyond32BitsIsAnError() {
        for (const double number :
             {214748365.0, -214748365.0, 1e300, std::numeric_limits<double>::infinity()})
            QCOMPARE(errorOf([&] { return hoursOfNumber(number); }), error::Overflow);
    }

    void hoursBecomeANumber_data() {
        QTest::addColumn<int>("hours");
        QTest::addColumn<QString>("number");
        QTest::newRow("none") << 0 << u"0"_s;
        QTest::newRow("one") << 1 << u"0.1"_s;
        QTest::newRow("three") << 3 << u"0.3"_s;
        QTest::newRow("seven") << 7 << u"0.7"_s;
        QTest::newRow("a day") << 8 << u"1"_s;
        QTest::newRow("twelve") << 12 << u"1.4"_s;
        QTest::newRow("sixteen") << 16 << u"2"_s;
        QTest::newRow("eighteen") << 18 << u"2.2"_s;
        QTest::newRow("thirty-eight") << 38 << u"4.6"_s;
        QTest::newRow("the most of a note") << 32767 << u"4095.7"_s;
        QTest::newRow("a debt") << -12 << u"-1.4"_s;
        QTest::newRow("a debt of a day") << -8 << u"-1"_s;
        QTest::newRow("a debt of hours") << -5 << u"-0.5"_s;
    }
    void hoursBecomeANumber() {
        QFETCH(const int, hours);
        QTEST(Value(numberOfHours(hours)).joined(), "number");
        QCOMPARE(int(hoursOfNumber(numberOfHours(hours))), hours);
    }

    void theCodesAreThoseOfTheSettings() {
        QCOMPARE(readBalanceCodes(database()), (BalanceCodes{u"01"_s, u"02"_s, u"03"_s, u"04"_s}));
        database().execute(u"Update Syst01 Set ThisYearRest='x1',LastYearRest=null,Leave='',Sick='S9'"_s);
        QCOMPARE(readBalanceCodes(database()), (BalanceCodes{u"x1"_s, std::nullopt, u""_s, u"S9"_s}));
        database().execute(u"delete * from Syst01"_s);
        QCOMPARE(errorOf([&] { return readBalanceCodes(database()); }), error::NoCurrentRecord);
    }

    void theFirstEqualCodeDecides() {
        const BalanceCodes usual{u"01"_s, u"02"_s, u"03"_s, u"04"_s};
        const auto place = [](std::size_t number) { return std::optional<std::size_t>(number); };
        QCOMPARE(balanceOf(u"01"_s, usual), place(0));
        QCOMPARE(balanceOf(u"02"_s, usual), place(1));
        QCOMPARE(balanceOf(u"03"_s, usual), place(2));
        QCOMPARE(balanceOf(u"04"_s, usual), place(3));
        QCOMPARE(balanceOf(u"05"_s, usual), std::nullopt);
        QCOMPARE(balanceOf(u"1"_s, usual), std::nullopt);
        QCOMPARE(balanceOf(u" 01"_s, usual), std::nullopt);
        QCOMPARE(balanceOf(u"01"_s, {u"02"_s, u"01"_s, u"01"_s, u"01"_s}), place(1));
        QCOMPARE(balanceOf(u"a"_s, {u"A"_s, u"a"_s, {}, {}}), place(1)); // the case counts
        QCOMPARE(balanceOf(QString(), {std::nullopt, std::nullopt, u""_s, {}}), place(2));
        QCOMPARE(balanceOf(QString(), {}), std::nullopt); // a null equals nothing
    }

    void aChargeMovesTakenAndLeftOfItsOwnBalance_data() {
        QTest::addColumn<int>("balance");
        QTest::addColumn<int>("hours");
        QTest::addColumn<Fields>("moved");
        // 7 may be taken, 1.4 taken; six hours more.
        QTest::newRow("this year's") << 0 << 6 << Fields{{u"ThisYearUse", 2.2}, {u"ThisYearLeft", 4.6}};
        QTest::newRow("last year's") << 1 << 8 << Fields{{u"LastYearUse", 1.1}, {u"LastYearLeft", 1.7}};
        QTest::newRow("personal leave") << 2 << 4 << Fields{{u"LeaveUse", 2.6}, {u"LeaveLeft", 11.2}};
        QTest::newRow("sick leave") << 3 << 16 << Fields{{u"SickUse", 6.3}, {u"SickLeft", 23.5}};
        QTest::newRow("more than there is")
            << 1 << 40 << Fields{{u"LastYearUse", 5.1}, {u"LastYearLeft", -2.1}};
    }
    void aChargeMovesTakenAndLeftOfItsOwnBalance() {
        QFETCH(const int, balance);
        QFETCH(const int, hours);
        QFETCH(const Fields, moved);
        insertRow(database(), u"Base06"_s, figures());
        QCOMPARE(chargeAndTell(static_cast<std::size_t>(balance), static_cast<std::int16_t>(hours)), 0);
        Fields expected = figures();
        for (const Field& field : moved)
            expected = with(expected, field);
        QCOMPARE(employee(), rowOf(expected));
    }

    void twoDaysOfABalanceOfOneLeaveADebtOfOne() {
        insertRow(database(), u"Base06"_s,
                  {{u"EmpNo", u"20001"}, {u"SickHD", 1.0}, {u"SickUse", 0.0}, {u"SickLeft", 1.0}});
        QCOMPARE(chargeAndTell(3, 16), 0);
        QCOMPARE(employee(),
                 rowOf({{u"EmpNo", u"20001"}, {u"SickHD", 1.0}, {u"SickUse", 2.0}, {u"SickLeft", -1.0}}));
    }

    void whatIsLeftIsTakenAnewFromTheOtherTwo() {
        insertRow(database(), u"Base06"_s, with(figures(), {u"ThisYearLeft", 99.0}));
        QCOMPARE(chargeAndTell(0, 0), 0);
        QCOMPARE(employee(), rowOf(with(figures(), {u"ThisYearLeft", 5.4})));
    }

    void noHoursWriteTheFiguresAnew() {
        // Eight and nine tenths are hours like others, and come out as days and hours.
        insertRow(database(), u"Base06"_s, with(figures(), {u"ThisYearUse", 1.9}));
        QCOMPARE(chargeAndTell(0, 0), 0);
        QCOMPARE(employee(), rowOf(with(with(figures(), {u"ThisYearUse", 2.1}), {u"ThisYearLeft", 4.7})));
    }

    void aNullFigureIsAnErrorThatLeavesTheEmployeeAsHeIs_data() {
        QTest::addColumn<QString>("column");
        QTest::newRow("may be taken") << u"ThisYearHD"_s;
        QTest::newRow("taken") << u"ThisYearUse"_s;
    }
    void aNullFigureIsAnErrorThatLeavesTheEmployeeAsHeIs() {
        QFETCH(const QString, column);
        const Fields without = with(figures(), {column, Value()});
        insertRow(database(), u"Base06"_s, without);
        QCOMPARE(LeaveBalance(database(), u"20001"_s, 0).hoursLeft(), std::int64_t{44});
        QCOMPARE(chargeAndTell(0, 6), error::InvalidNull);
        QCOMPARE(employee(), rowOf(without));
    }

    void aNullLeftIsAnErrorToWhoAsksAndNoneToTheCharge() {
        insertRow(database(), u"Base06"_s, with(figures(), {u"ThisYearLeft", Value()}));
        LeaveBalance balance(database(), u"20001"_s, 0);
        QCOMPARE(errorOf([&] { return balance.hoursLeft(); }), error::InvalidNull);
        balance.charge(6);
        QCOMPARE(employee(), rowOf(with(with(figures(), {u"ThisYearUse", 2.2}), {u"ThisYearLeft", 4.6})));
    }

    void anEmployeeWhomThereIsNotIsAnError() {
        QCOMPARE(errorOf([&] { return LeaveBalance(database(), u"20001"_s, 0).hoursLeft(); }),
                 error::NoCurrentRecord);
        QCOMPARE(chargeAndTell(0, 6), error::NoCurrentRecord);
        QCOMPARE(errorOf([&] { return LeaveBalance(database(), u"2'1"_s, 0).hoursLeft(); }), error::Syntax);
    }

    void hoursBeyond32BitsAreAnError() {
        insertRow(database(), u"Base06"_s,
                  with(with(figures(), {u"ThisYearHD", 214748364.0}), {u"ThisYearUse", -214748364.0}));
        QCOMPARE(chargeAndTell(0, 6), error::Overflow);
    }
};

QTEST_GUILESS_MAIN(BalanceTest)
#include "BalanceTest.moc"
