#include "windows/overtime/Form6Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::entry;
using namespace Qt::StringLiterals;

namespace {

/// Three rows: two of one employee, two of one day.
class QueryFixture : public Form6Fixture {
  public:
    QueryFixture() {
        add(evening(u"10001"_s, 2, 1));
        add(evening(u"10002"_s, 1, 2));
        add(evening(u"10001"_s, 1, 3));
        open();
    }

    /// The hours of the rows that the moves lead through.
    [[nodiscard]] QStringList walk() {
        QStringList hours;
        press(u"CtrlCmd0(6)"_s);
        const int count = panel(1).section(u'/', 1).toInt();
        for (int row = 0; row < count; ++row, press(Next))
            hours << text(u"Text1(4)"_s);
        return hours;
    }
};

} // namespace

/// What the query of the entries shows, and for how long.
class Form6QueryTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aDayIsListedByEmployee();
    void aDayAndAnEmployee();
    void anEmployeeIsListedByDay();
    void allOfIt();
    void aCancelledDateFindsNothingUntilTheRefresh();
    void aUnitLeavesTheListAsItIs();
    void aCancelledDialogRepeatsTheLastKind();
};

void Form6QueryTest::aDayIsListedByEmployee() {
    QueryFixture it;
    it.expectKind(1);
    it.expectDate(u"990301"_s);
    it.press(Query);
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
    QCOMPARE(it.walk(), QStringList({u"3"_s, u"2"_s}));
    it.press(Refresh);
    QCOMPARE(it.walk(), QStringList({u"1"_s, u"2"_s, u"3"_s}));
}

void Form6QueryTest::aDayAndAnEmployee() {
    QueryFixture it;
    it.expectKind(2);
    it.expectDate(u"990301"_s);
    it.expectPick(u"QFrmEmpNO"_s, 0);
    it.press(Query);
    QCOMPARE(it.walk(), QStringList{u"3"_s});
    QCOMPARE(it.names(), u"王小明|會計課|科員|日班"_s);
}

void Form6QueryTest::anEmployeeIsListedByDay() {
    QueryFixture it;
    it.expectKind(3);
    it.expectPick(u"QFrmEmpNO"_s, 0);
    it.press(Query);
    QCOMPARE(it.walk(), QStringList({u"3"_s, u"1"_s}));
}

void Form6QueryTest::allOfIt() {
    QueryFixture it;
    it.expectKind(3);
    it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(Query);
    QCOMPARE(it.walk(), QStringList{u"2"_s});
    it.expectKind(0);
    it.press(Query);
    QCOMPARE(it.walk(), QStringList({u"1"_s, u"2"_s, u"3"_s}));
}

void Form6QueryTest::aCancelledDateFindsNothingUntilTheRefresh() {
    QueryFixture it;
    it.expectKind(1);
    it.answers.expectClick(u"FrmI1Date"_s, u"Command1(1)"_s);
    it.press(Query);
    QCOMPARE(gDate1, QDate(2038, 1, 1));
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 5, 10, 11, 12, 13}));
    QCOMPARE(it.text(u"Text1(0)"_s), QString());
    it.press(Refresh);
    QCOMPARE(it.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(it.walk(), QStringList({u"1"_s, u"2"_s, u"3"_s}));
    QCOMPARE(it.answers.trouble(), QString());
}

void Form6QueryTest::aUnitLeavesTheListAsItIs() {
    QueryFixture it;
    it.expectKind(3);
    it.expectPick(u"QFrmEmpNO"_s, 0);
    it.press(Query);
    it.expectKind(4);
    it.expectDate(u"990301"_s);
    it.answers.expectClick(u"QFrmUnitNo"_s, u"Command1(0)"_s);
    it.press(Query);
    QCOMPARE(it.walk(), QStringList({u"3"_s, u"1"_s}));
    QCOMPARE(it.answers.trouble(), QString());
}

void Form6QueryTest::aCancelledDialogRepeatsTheLastKind() {
    QueryFixture it;
    it.expectKind(3);
    it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(Query);
    it.press(Refresh);
    it.answers.expectClick(u"IFrmQuery"_s, u"Command1(1)"_s);
    it.press(Query);
    QCOMPARE(it.walk(), QStringList{u"2"_s});
}

int main(int argc, char** argv) {
    return runTests<Form6QueryTest>(argc, argv);
}

#include "Form6QueryTest.moc"
