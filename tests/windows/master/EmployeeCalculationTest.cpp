#include "windows/master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

const QString OpenFailed = u"異常警告|資料庫開啟異常,請洽程式設計師|確定"_s;

/// The two calculations over a few employees.
class CalculationFixture : public EmployeeFixture {
  public:
    /// 14 years at the end of 2000, with an older figure stored.
    [[nodiscard]] static Fields counted(const QString& EmpNo) {
        Fields fields = fullEmployee(EmpNo);
        for (const Field& field :
             Fields{{u"IniArrDate", QDate(1990, 3, 15)}, {u"BreakY", 14}, {u"SoldierY", 24}})
            fields = with(fields, field);
        return fields;
    }
    [[nodiscard]] static QString countedRow(const QString& EmpNo, int HoliExper) {
        return employeeRow(with(counted(EmpNo), {u"HoliExper", HoliExper}));
    }
    void expectDate(const QString& places) {
        answers.expect(u"FrmI1Date"_s, [places](QWidget& dialog) {
            QTest::keyClicks(&control(dialog, u"TDBMask1(0)"_s), places);
            click(control(dialog, u"Command1(0)"_s));
        });
    }
    void grant(const QString& HoliNo, double days) { addGrant(database(), HoliNo, days); }
    /// Runs into an employee without a first date in public service.
    void failSeniority() {
        add(counted(u"10001"_s));
        add(with(counted(u"10002"_s), {u"IniArrDate", Value()}));
        add(counted(u"10003"_s));
        openEmployees();
        expectDate(u"891231"_s);
        answers.expectMsgBox();
        press(Seniority);
    }
    /// The name of the window that a user sees and reaches at the place.
    [[nodiscard]] QString onTopAt(QPoint place) {
        const QWidget* found = mainWindow().childAt(form().mapTo(&mainWindow(), place));
        for (; found; found = found->parentWidget()) {
            if (qobject_cast<const Window*>(found) || found->objectName() == u"Form0"_s)
                return found->objectName();
        }
        return {};
    }
};

} // namespace

/// The two calculations of the employees' tab, as they are started and seen on the window.
class EmployeeCalculationTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void seniorityIsStoredAndShownByARefresh();
    void seniorityLeavesThePointerAlone();
    void seniorityIsShownWhenTheRowIsReachedAgain();
    void aCancelledDateComputesUpTo2January2038();
    void seniorityDuringAnEditLeavesTheEditAsItIs();
    void aFailureOfTheSeniorityIsToldAndKeepsWhatWasReached();
    void afterAFailureForm0LiesOverTheLoadedWindow();
    void afterAFailureTheNextWindowIsClosedAtOnce_data();
    void afterAFailureTheNextWindowIsClosedAtOnce();
    void afterAFailureForm8StaysLoaded();
    void withoutEmployeesNothingFails();
    void grantsAreStoredAndShownByARefresh();
    void grantsReadTheStoredSeniority();
    void neitherCallsTheOther();
    void grantsDuringAnEditKeepTheTypedOnes();
    void grantsComeBackAfterLeaveWasTaken();
};

void EmployeeCalculationTest::seniorityIsStoredAndShownByARefresh() {
    CalculationFixture fixture;
    fixture.add(CalculationFixture::counted(u"10001"_s));
    fixture.add(with(CalculationFixture::counted(u"10002"_s), {u"LeaveDate", Value()}));
    fixture.openEmployees();
    fixture.press(Next);
    fixture.expectDate(u"891231"_s);
    fixture.press(Seniority);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().size(), 1);
    QCOMPARE(gDate1, QDate(2000, 12, 31));
    QCOMPARE(fixture.employees(),
             QStringList({CalculationFixture::countedRow(u"10001"_s, 14),
                          employeeRow(with(with(CalculationFixture::counted(u"10002"_s), {u"HoliExper", 14}),
                                           {u"LeaveDate", Value()}))}));
    // The row on the screen is not read again by itself.
    QCOMPARE(fixture.text(text6(12)), u"12"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/2"_s);
    fixture.press(Refresh);
    QCOMPARE(fixture.text(text6(12)), u"14"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
}

void EmployeeCalculationTest::seniorityLeavesThePointerAlone() {
    CalculationFixture fixture;
    fixture.add(with(CalculationFixture::counted(u"10001"_s), {u"IniArrDate", Value()}));
    fixture.openEmployees();
    fixture.expectDate(u"891231"_s);
    bool overTheMessage = true;
    fixture.answers.expect(u"MsgBox"_s, [&overTheMessage](QWidget& box) {
        overTheMessage = hourglass();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    fixture.press(Seniority);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(!overTheMessage);
}

void EmployeeCalculationTest::seniorityIsShownWhenTheRowIsReachedAgain() {
    CalculationFixture fixture;
    fixture.add(CalculationFixture::counted(u"10001"_s));
    fixture.add(CalculationFixture::counted(u"10002"_s));
    fixture.openEmployees();
    fixture.expectDate(u"891231"_s);
    fixture.press(Seniority);
    QCOMPARE(fixture.text(text6(12)), u"12"_s);
    fixture.press(Next);
    QCOMPARE(fixture.text(text6(12)), u"14"_s);
    fixture.press(Previous);
    QCOMPARE(fixture.text(text6(12)), u"14"_s);
}

void EmployeeCalculationTest::aCancelledDateComputesUpTo2January2038() {
    CalculationFixture fixture;
    fixture.add(
        with(with(with(fullEmployee(u"10001"_s), {u"IniArrDate", QDate(2000, 1, 31)}), {u"BreakY", 0}),
             {u"SoldierY", 0}));
    fixture.openEmployees();
    fixture.answers.expectClick(u"FrmI1Date"_s, u"Command1(1)"_s);
    fixture.press(Seniority);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gDate1, SentinelDate);
    QCOMPARE(rowsOfSelection(fixture.database(), u"select HoliExper from Base06"_s), QStringList{u"38"_s});
}

void EmployeeCalculationTest::seniorityDuringAnEditLeavesTheEditAsItIs() {
    CalculationFixture fixture;
    fixture.add(CalculationFixture::counted(u"10001"_s));
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.enter(text6(1), u"Typed"_s);
    fixture.expectDate(u"891231"_s);
    fixture.press(Seniority);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.text(text6(1)), u"Typed"_s);
    QCOMPARE(fixture.employees(), QStringList{CalculationFixture::countedRow(u"10001"_s, 14)});
    fixture.press(Save);
    // Only what was typed is written: the figure stays the new one.
    QCOMPARE(fixture.employees(),
             QStringList{employeeRow(with(with(CalculationFixture::counted(u"10001"_s), {u"HoliExper", 14}),
                                          {u"EmpName", u"Typed"}))});
}

void EmployeeCalculationTest::aFailureOfTheSeniorityIsToldAndKeepsWhatWasReached() {
    CalculationFixture fixture;
    fixture.failSeniority();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.lastMessage(), OpenFailed);
    QCOMPARE(
        fixture.employees(),
        QStringList({CalculationFixture::countedRow(u"10001"_s, 14),
                     employeeRow(with(CalculationFixture::counted(u"10002"_s), {u"IniArrDate", Value()})),
                     CalculationFixture::countedRow(u"10003"_s, 12)}));
}

void EmployeeCalculationTest::afterAFailureForm0LiesOverTheLoadedWindow() {
    CalculationFixture fixture;
    fixture.failSeniority();
    QVERIFY(gOpenFailed);
    QVERIFY(moduleWindow(1));
    QVERIFY(fixture.form().isVisible());
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(fixture.mainWindow().Tb().isEnabled());
    QCOMPARE(enabledButtons().first(3), QList<int>({1, 2, 3}));
    for (const QPoint place : {QPoint(5, 5), QPoint(280, 200), QPoint(560, 400)})
        QCOMPARE(fixture.onTopAt(place), u"Form0"_s);
    // Nothing of the window beneath answers.
    fixture.press(Add);
    QCOMPARE(fixture.panel(2), QString());
}

void EmployeeCalculationTest::afterAFailureTheNextWindowIsClosedAtOnce_data() {
    QTest::addColumn<int>("next");
    for (int next = 1; next <= 4; ++next)
        QTest::addRow("Form%d", next) << next;
}

void EmployeeCalculationTest::afterAFailureTheNextWindowIsClosedAtOnce() {
    QFETCH(const int, next);
    ProbeLog log;
    CalculationFixture fixture;
    fixture.failSeniority();
    if (!hasModuleWindow(next)) {
        ProbeWindow::registerAs(next, log);
        UnlockToolbar();
    }
    click(button(next));
    for (int index = 1; index <= 4; ++index)
        QVERIFY2(!moduleWindow(index), qPrintable(QString::number(index)));
    QVERIFY(!gOpenFailed);
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(fixture.mainWindow().Tb().isEnabled());
    // The one after it stays.
    click(button(1));
    QVERIFY(moduleWindow(1));
    QCOMPARE(fixture.mainWindow().windowTitle(), u"基本資料"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    if (log.loads > 0)
        registerModuleWindow(next, {});
}

void EmployeeCalculationTest::afterAFailureForm8StaysLoaded() {
    CalculationFixture fixture;
    fixture.failSeniority();
    click(button(8));
    QVERIFY(!moduleWindow(1));
    QVERIFY(moduleWindow(8));
    QVERIFY(!gOpenFailed);
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
}

void EmployeeCalculationTest::withoutEmployeesNothingFails() {
    CalculationFixture fixture;
    fixture.openEmployees();
    fixture.answers.expectClick(u"FrmI1Date"_s, u"Command1(1)"_s);
    fixture.press(Seniority);
    fixture.press(Entitlement);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().size(), 1);
    QVERIFY(!gOpenFailed);
    QVERIFY(!hourglass());
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithoutRows);
}

void EmployeeCalculationTest::grantsAreStoredAndShownByARefresh() {
    CalculationFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.add(with(fullEmployee(u"10002"_s), {u"SuitNo", u"2"}));
    fixture.grant(u"01"_s, 7.5);
    fixture.grant(u"03"_s, 6.5);
    fixture.grant(u"04"_s, 30);
    fixture.openEmployees();
    fixture.press(Entitlement);
    QVERIFY(fixture.answers.seen().isEmpty());
    QVERIFY(!hourglass());
    Fields granted = fullEmployee(u"10001"_s);
    for (const Field& field : Fields{{u"ThisYearHD", 8.0},
                                     {u"ThisYearLeft", 8.0},
                                     {u"LeaveHD", 6.0},
                                     {u"LeaveLeft", 6.0},
                                     {u"SickHD", 30.0},
                                     {u"SickLeft", 30.0}})
        granted = with(granted, field);
    // What is left is the whole grant, and another scheme's employee keeps his figures.
    QCOMPARE(
        fixture.employees(),
        QStringList({employeeRow(granted), employeeRow(with(fullEmployee(u"10002"_s), {u"SuitNo", u"2"}))}));
    const QStringList figures{text6(13),       u"Label25(0)"_s, text6(25),
                              u"Label25(4)"_s, text6(26),       u"Label25(5)"_s};
    QCOMPARE(fixture.shown(figures).join(u'|'), u"14|11.25|5|4.25|28|25.5"_s);
    fixture.press(Refresh);
    QCOMPARE(fixture.shown(figures).join(u'|'), u"8|8|6|6|30|30"_s);
    QCOMPARE(fixture.shown({u"Label25(2)"_s, u"Label25(6)"_s, u"Label25(7)"_s}).join(u'|'), u"2.5|0.5|3"_s);
}

void EmployeeCalculationTest::grantsReadTheStoredSeniority() {
    CalculationFixture fixture;
    fixture.add(with(CalculationFixture::counted(u"10001"_s), {u"HoliExper", 9}));
    fixture.grant(u"01"_s, 21);
    fixture.openEmployees();
    const auto annual = [&] {
        return rowsOfSelection(fixture.database(), u"select HoliExper,ThisYearHD,ThisYearLeft from Base06"_s);
    };
    fixture.press(Entitlement);
    QCOMPARE(annual(), QStringList{u"9|14|11.25"_s});
    fixture.expectDate(u"891231"_s);
    fixture.press(Seniority);
    QCOMPARE(annual(), QStringList{u"14|14|11.25"_s});
    fixture.press(Entitlement);
    QCOMPARE(annual(), QStringList{u"14|21|21"_s});
}

void EmployeeCalculationTest::neitherCallsTheOther() {
    CalculationFixture fixture;
    fixture.add(CalculationFixture::counted(u"10001"_s));
    fixture.grant(u"01"_s, 21);
    fixture.openEmployees();
    fixture.press(Entitlement);
    // No date is asked for, and the seniority stays.
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(rowsOfSelection(fixture.database(), u"select HoliExper from Base06"_s), QStringList{u"12"_s});
}

void EmployeeCalculationTest::grantsDuringAnEditKeepTheTypedOnes() {
    CalculationFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.grant(u"01"_s, 21);
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.clickPage(1);
    fixture.enter(text6(13), u"3"_s);
    fixture.press(Entitlement);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.text(text6(13)), u"3"_s);
    const auto annual = [&] {
        return rowsOfSelection(fixture.database(), u"select ThisYearHD,ThisYearLeft from Base06"_s);
    };
    QCOMPARE(annual(), QStringList{u"21|21"_s});
    fixture.press(Save);
    QCOMPARE(annual(), QStringList{u"3|3"_s});
}

void EmployeeCalculationTest::grantsComeBackAfterLeaveWasTaken() {
    CalculationFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.grant(u"01"_s, 14);
    fixture.openEmployees();
    for (int time = 1; time <= 2; ++time) {
        fixture.press(Entitlement);
        QCOMPARE(fixture.employees(),
                 QStringList{employeeRow(with(fullEmployee(u"10001"_s), {u"ThisYearLeft", 14.0}))});
        fixture.database().execute(u"update Base06 set ThisYearLeft = 4 where EmpNo = '10001'"_s);
    }
}

int main(int argc, char** argv) {
    return runTests<EmployeeCalculationTest>(argc, argv);
}

#include "EmployeeCalculationTest.moc"
