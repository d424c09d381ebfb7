#include "rules/overtime/Overtime.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate March5(2001, 3, 5);

void addRow(Database& database, const QString& EmpNo, QDate day, const Value& hours) {
    insertRow(database, u"Over01"_s, {{u"EmpNo", EmpNo}, {u"OverDate", day}, {u"OverHours", hours}});
}

} // namespace

/// The hours of overtime, and what its lists select.
class OvertimeListsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void hoursAreWhole_data() {
        QTest::addColumn<QTime>("begin");
        QTest::addColumn<QTime>("end");
        QTest::addColumn<int>("hours");
        QTest::newRow("over midnight") << QTime(22, 0) << QTime(1, 30) << 3;
        QTest::newRow("59 minutes") << QTime(8, 0) << QTime(8, 59) << 0;
        QTest::newRow("an hour") << QTime(8, 0) << QTime(9, 0) << 1;
        QTest::newRow("no time") << QTime(8, 0) << QTime(8, 0) << 0;
        QTest::newRow("a minute less than a day") << QTime(8, 0) << QTime(7, 59) << 23;
        QTest::newRow("seconds do not count") << QTime(8, 0, 59) << QTime(9, 0, 0) << 1;
    }
    void hoursAreWhole() {
        QFETCH(const QTime, begin);
        QFETCH(const QTime, end);
        QTEST(int{overtimeHours(begin, end)}, "hours");
    }

    void theListOfOneIsHisAlone() {
        TestStore store;
        addRow(store.database(), u"10001"_s, March5, 1);
        addRow(store.database(), u"10002"_s, March5, 2);
        addRow(store.database(), u"10001"_s, March5.addDays(2), 3);
        addRow(store.database(), u"10001"_s, March5.addDays(1), Value());
        const auto row = [](QDate day, const Value& hours) {
            return expectedRow(u"Over01"_s,
                               {{u"EmpNo", u"10001"}, {u"OverDate", day}, {u"OverHours", hours}});
        };
        QCOMPARE(rowsOfSelection(store.database(), overtimeOfEmployee(u"10001"_s)),
                 QStringList({row(March5.addDays(2), 3), row(March5.addDays(1), Value()), row(March5, 1)}));
        QCOMPARE(rowsOfSelection(store.database(), overtimeOfEmployee({})), QStringList());
    }

    void theTotalIsOfThePeriodWithItsEnds() {
        TestStore store;
        const auto total = [&](int first, int last) {
            return rowsOfSelection(store.database(),
                                   overtimeTotal(u"10001"_s, March5.addDays(first), March5.addDays(last)));
        };
        QCOMPARE(total(0, 9), QStringList());
        addRow(store.database(), u"10001"_s, March5, 1);
        addRow(store.database(), u"10001"_s, March5.addDays(3), 4);
        addRow(store.database(), u"10001"_s, March5.addDays(1), Value());
        addRow(store.database(), u"10002"_s, March5, 16);
        QCOMPARE(total(0, 3), QStringList{u"10001|5"_s});
        QCOMPARE(total(1, 3), QStringList{u"10001|4"_s});
        QCOMPARE(total(0, 2), QStringList{u"10001|1"_s});
        QCOMPARE(total(1, 1), QStringList{u"10001|null"_s}); // a row without hours
        QCOMPARE(total(2, 2), QStringList());
        QCOMPARE(total(3, 0), QStringList());
    }

    void thePunchesAreThoseOfTheDay() {
        TestStore store;
        const Fields punches{{u"EmpNo", u"10001"}, {u"UseDate", March5}, {u"T1", QTime(8, 1)}};
        insertRow(store.database(), u"View02"_s, punches);
        insertRow(store.database(), u"View02"_s, with(punches, {u"EmpNo", u"10002"}));
        insertRow(store.database(), u"View02"_s, with(punches, {u"UseDate", March5.addDays(1)}));
        QCOMPARE(rowsOfSelection(store.database(), punchesOfDay(u"10001"_s, March5)),
                 QStringList{expectedRow(u"View02"_s, punches)});
        QCOMPARE(rowsOfSelection(store.database(), punchesOfDay(u"10001"_s, March5.addDays(2))),
                 QStringList());
    }

    void whatBreaksASelectionIsAnError() {
        const QString apostrophe = u"z' or '1"_s;
        QCOMPARE(errorOf([&] { return overtimeOfEmployee(apostrophe); }), error::Syntax);
        QCOMPARE(errorOf([&] { return overtimeTotal(apostrophe, March5, March5); }), error::Syntax);
        QCOMPARE(errorOf([&] { return overtimeTotal(u"1"_s, {}, March5); }), error::Syntax);
        QCOMPARE(errorOf([&] { return overtimeTotal(u"1"_s, March5, {}); }), error::Syntax);
        QCOMPARE(errorOf([&] { return punchesOfDay(apostrophe, March5); }), error::Syntax);
        QCOMPARE(errorOf([&] { return punchesOfDay(u"1"_s, {}); }), error::Syntax);
    }
};

QTEST_GUILESS_MAIN(OvertimeListsTest)
#include "OvertimeListsTest.moc"
