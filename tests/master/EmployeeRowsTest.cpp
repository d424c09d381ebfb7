#include "master/Form1Fixture.h"

#include "app/LookupProcess.h"

#include <QHeaderView>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Add = u"CtrlCmd5(0)"_s;
const QString Modify = u"CtrlCmd5(1)"_s;
const QString Delete = u"CtrlCmd5(2)"_s;
const QString Save = u"CtrlCmd5(4)"_s;
const QString Query = u"CtrlCmd5(5)"_s;
const QString Last = u"CtrlCmd5(9)"_s;
const QString Seniority = u"CtrlCmd5(13)"_s;
const QString Entitlement = u"CtrlCmd5(14)"_s;
const QDate Sentinel(2038, 1, 1);

/// The tab of the employees, and what becomes of their rows.
class RowsFixture : public Form1Fixture {
  public:
    void addThree() {
        for (int number = 1; number <= 3; ++number)
            addEmployee(database(), u"1000%1"_s.arg(number));
    }
    void openPage() { open(5); }
    [[nodiscard]] QString code() const { return text(u"Text6(0)"_s); }
    [[nodiscard]] QStringList stored(const QString& columns) {
        return rowsOfSelection(database(), u"select %1 from Base06 order by EmpNo"_s.arg(columns));
    }
    void addSeniorityInputs() {
        addEmployee(
            database(), u"10001"_s,
            {{u"IniArrDate", QDate(1990, 3, 15)}, {u"BreakY", 14}, {u"SoldierY", 24}, {u"HoliExper", 1}});
    }
    void expectDate(const QString& places) {
        answers.expect(u"FrmI1Date"_s, [places](QWidget& dialog) {
            QTest::keyClicks(&control(dialog, u"TDBMask1(0)"_s), places);
            click(control(dialog, u"Command1(0)"_s));
        });
    }
};

int grantWithANull(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(5);
        click(control(form, Entitlement));
    });
}

int monthsBeyondSixteenBits(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(5);
        click(control(form, Add));
        control<QTabWidget>(form, u"SSTab2"_s).setCurrentIndex(1);
        control(form, u"Text6(8)"_s).setFocus();
        QTest::keyClicks(&control(form, u"Text6(8)"_s), u"9999"_s);
        control(form, u"Text6(12)"_s).setFocus();
    });
}

} // namespace

class EmployeeRowsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void addClearsMasksAndNames();
    void aNewRowKeepsItsEmptyDates();
    void aModifiedRowWithEmptyDatesEndsWithNulls();
    void aRealSentinelIsLostAtAnyonesSave();
    void theStartOfSeniorityIsLeftAlone();
    void aSaveReturnsToTheFirstPageAndTheSavedRow();
    void deleteEndsOnTheFirstRow();
    void deletingTheLastEmployeeLeavesTheEmptyState();
    void anEmployeeWithOvertimeOrLeaveStays_data();
    void anEmployeeWithOvertimeOrLeaveStays();
    void queryFindsTheEmployeeOfTheLookup();
    void aCancelledQueryFindsTheLastPick();
    void theQueryButtonIsOnWithRowsAlone();
    void theCalculationsAreNeverDisabled();
    void seniorityIsComputedUpToTheDate();
    void aCancelledDateComputesUpTo2038();
    void aFailedSeniorityFreesTheToolbarOverTheWindow();
    void grantsReachTheScreenWithTheRefresh();
    void aNullInTheGrantsEndsTheProgram();
    void monthsBeyondSixteenBitsEndTheProgram();
    void thirtyColumnsScroll();
};

void EmployeeRowsTest::addClearsMasksAndNames() {
    RowsFixture fixture;
    insertRow(fixture.database(), u"Base02"_s, {{u"UnitNo", u"1000"}, {u"Unit", u"會計課"}});
    addEmployee(fixture.database(), u"10001"_s,
                {{u"UnitNo", u"1000"}, {u"Birth", QDate(1970, 2, 3)}, {u"IniArrDate", QDate(1990, 1, 1)}});
    fixture.openPage();
    QCOMPARE(fixture.label(u"Label12"_s), u"會計課"_s);
    fixture.press(Add);
    for (int index = 0; index < 4; ++index)
        QCOMPARE(fixture.at<TDBMask>(u"TDBMask1(%1)"_s.arg(index)).value(), QString());
    for (const QString& name : {u"Label12"_s, u"Label13"_s, u"Label14"_s, u"Label15"_s, u"Label4(0)"_s})
        QCOMPARE(fixture.label(name), QString());
    QCOMPARE(fixture.text(u"Text6(8)"_s) + fixture.text(u"Text6(9)"_s), u"00"_s);
}

void EmployeeRowsTest::aNewRowKeepsItsEmptyDates() {
    RowsFixture fixture;
    fixture.openPage();
    fixture.press(Add);
    fixture.type(u"Text6(0)"_s, u"10001"_s);
    fixture.press(Save);
    QCOMPARE(rowsOf(fixture.database(), u"Base06"_s),
             QStringList{expectedRow(u"Base06"_s, {{u"EmpNo", u"10001"}})});
}

void EmployeeRowsTest::aModifiedRowWithEmptyDatesEndsWithNulls() {
    RowsFixture fixture;
    addEmployee(fixture.database(), u"10001"_s,
                {{u"Birth", QDate(1970, 2, 3)}, {u"ArriveDate", Value()}, {u"LeaveDate", QDate(2001, 1, 1)}});
    fixture.openPage();
    fixture.press(Modify);
    fixture.at<TDBMask>(u"TDBMask1(0)"_s).clear();
    fixture.at<TDBMask>(u"TDBMask1(2)"_s).clear();
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.stored(u"Birth,ArriveDate,LeaveDate"_s), QStringList{u"null|null|null"_s});
    // The screen reads the nulls just written.
    for (int index = 0; index < 3; ++index)
        QVERIFY(!fixture.at<TDBDate>(u"TDBDate1(%1)"_s.arg(index)).date().isValid());
}

void EmployeeRowsTest::aRealSentinelIsLostAtAnyonesSave() {
    RowsFixture fixture;
    fixture.addThree();
    fixture.database().execute(u"update Base06 set Birth = #2038-01-01# where EmpNo = '10003'"_s);
    fixture.openPage();
    fixture.press(Modify);
    fixture.press(Save);
    QCOMPARE(fixture.stored(u"EmpNo,Birth"_s).last(), u"10003|null"_s);
    // A new row's save does it as well.
    fixture.database().execute(u"update Base06 set ArriveDate = #2038-01-01# where EmpNo = '10003'"_s);
    fixture.press(Add);
    fixture.type(u"Text6(0)"_s, u"10004"_s);
    fixture.press(Save);
    QCOMPARE(fixture.stored(u"EmpNo,ArriveDate"_s).at(2), u"10003|null"_s);
}

void EmployeeRowsTest::theStartOfSeniorityIsLeftAlone() {
    RowsFixture fixture;
    addEmployee(fixture.database(), u"10001"_s, {{u"IniArrDate", Sentinel}});
    addEmployee(fixture.database(), u"10002"_s, {{u"IniArrDate", Value()}});
    fixture.openPage();
    fixture.press(Modify);
    fixture.press(Save);
    fixture.press(Last);
    fixture.press(Modify);
    fixture.press(Save);
    QCOMPARE(fixture.stored(u"IniArrDate"_s), QStringList({u"2038-01-01"_s, u"null"_s}));
}

void EmployeeRowsTest::aSaveReturnsToTheFirstPageAndTheSavedRow() {
    RowsFixture fixture;
    fixture.addThree();
    fixture.openPage();
    fixture.press(Last);
    fixture.press(Modify);
    fixture.at<QTabWidget>(u"SSTab2"_s).setCurrentIndex(3);
    fixture.press(Save);
    QCOMPARE(fixture.at<QTabWidget>(u"SSTab2"_s).currentIndex(), 0);
    QCOMPARE(fixture.code(), u"10003"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    QCOMPARE(fixture.panel(2), QString());
}

void EmployeeRowsTest::deleteEndsOnTheFirstRow() {
    RowsFixture fixture;
    fixture.addThree();
    fixture.openPage();
    fixture.press(u"CtrlCmd5(8)"_s);
    fixture.answers.expectMsgBox(MsgAnswer::No);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"確定刪除這筆資料?"_s);
    QCOMPARE(fixture.answers.seen().constFirst().title, u"確認刪除"_s);
    QCOMPARE(fixture.code(), u"10002"_s);
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.stored(u"EmpNo"_s), QStringList({u"10001"_s, u"10003"_s}));
    QCOMPARE(fixture.code(), u"10001"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
}

void EmployeeRowsTest::deletingTheLastEmployeeLeavesTheEmptyState() {
    RowsFixture fixture;
    addEmployee(fixture.database(), u"10001"_s);
    fixture.openPage();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(fixture.buttonsOn(5), QList<int>({0, 10, 12, 13, 14}));
    QCOMPARE(fixture.code(), QString());
}

void EmployeeRowsTest::anEmployeeWithOvertimeOrLeaveStays_data() {
    QTest::addColumn<QString>("table");
    QTest::addRow("overtime") << u"Over01"_s;
    QTest::addRow("a leave note") << u"Holi03"_s;
}

void EmployeeRowsTest::anEmployeeWithOvertimeOrLeaveStays() {
    QFETCH(const QString, table);
    RowsFixture fixture;
    fixture.addThree();
    Fields fields{{u"EmpNo", u"10001"}};
    if (table == u"Holi03")
        fields.append(Field(u"BusNo", u"0900001"));
    insertRow(fixture.database(), table, fields);
    fixture.openPage();
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().last().title, u"錯誤訊息"_s);
    QCOMPARE(fixture.answers.seen().last().text, u"此員工已有加班/請假資料,無法刪除!"_s);
    QCOMPARE(fixture.answers.seen().last().icon, MsgIcon::Exclamation);
    QCOMPARE(fixture.stored(u"EmpNo"_s), QStringList({u"10001"_s, u"10002"_s, u"10003"_s}));
    QCOMPARE(fixture.code(), u"10001"_s);
}

void EmployeeRowsTest::queryFindsTheEmployeeOfTheLookup() {
    RowsFixture fixture;
    fixture.addThree();
    fixture.openPage();
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 2);
        clickOk(dialog);
    });
    fixture.press(Query);
    QCOMPARE(fixture.code(), u"10003"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
}

void EmployeeRowsTest::aCancelledQueryFindsTheLastPick() {
    RowsFixture fixture;
    fixture.addThree();
    fixture.openPage();
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(Query);
    // No code has been picked yet: no match, and the row stays.
    QCOMPARE(fixture.code(), u"10001"_s);
    gPickEmpNo = u"10002"_s;
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(Query);
    QCOMPARE(fixture.code(), u"10002"_s);
}

void EmployeeRowsTest::theQueryButtonIsOnWithRowsAlone() {
    RowsFixture fixture;
    fixture.openPage();
    QVERIFY(!fixture.buttonsOn(5).contains(5));
    addEmployee(fixture.database(), u"10001"_s);
    fixture.press(u"CtrlCmd5(10)"_s);
    QVERIFY(fixture.buttonsOn(5).contains(5));
    fixture.press(Modify);
    QVERIFY(!fixture.buttonsOn(5).contains(5));
}

void EmployeeRowsTest::theCalculationsAreNeverDisabled() {
    RowsFixture fixture;
    fixture.openPage();
    const auto areOn = [&] {
        return fixture.at(Seniority).isEnabled() && fixture.at(Entitlement).isEnabled();
    };
    QVERIFY(areOn());
    fixture.press(Add);
    QVERIFY(areOn());
    // And they work there: the edit goes on after them.
    fixture.press(Entitlement);
    QCOMPARE(fixture.panel(2), u"新增資料"_s);
}

void EmployeeRowsTest::seniorityIsComputedUpToTheDate() {
    RowsFixture fixture;
    fixture.addSeniorityInputs();
    fixture.openPage();
    fixture.expectDate(u"891231"_s);
    fixture.press(Seniority);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.stored(u"HoliExper"_s), QStringList{u"14"_s});
    // The row on screen is read again by the refresh.
    QCOMPARE(fixture.text(u"Text6(12)"_s), u"1"_s);
    fixture.press(u"CtrlCmd5(10)"_s);
    QCOMPARE(fixture.text(u"Text6(12)"_s), u"14"_s);
}

void EmployeeRowsTest::aCancelledDateComputesUpTo2038() {
    RowsFixture fixture;
    fixture.addSeniorityInputs();
    fixture.openPage();
    fixture.answers.expectClick(u"FrmI1Date"_s, u"Command1(1)"_s);
    fixture.press(Seniority);
    // 2038-01 minus 1990-03 are 574 months; with 38 more they make 51 years.
    QCOMPARE(fixture.stored(u"HoliExper"_s), QStringList{u"51"_s});
}

void EmployeeRowsTest::aFailedSeniorityFreesTheToolbarOverTheWindow() {
    RowsFixture fixture;
    fixture.addSeniorityInputs();
    addEmployee(fixture.database(), u"10002"_s, {{u"IniArrDate", Value()}, {u"HoliExper", 7}});
    fixture.openPage();
    fixture.expectDate(u"891231"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Seniority);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().last().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().last().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QCOMPARE(fixture.stored(u"HoliExper"_s), QStringList({u"14"_s, u"7"_s}));
    // The toolbar is free, Form0 lies over the window, which is still loaded, and the flag stands.
    MDI& window = fixture.mainWindow();
    QCOMPARE(window.windowTitle(), u"Pontrel V1.1 - Norvale"_s);
    QVERIFY(window.Tb().isEnabled());
    QVERIFY(gOpenFailed);
    QVERIFY(moduleWindow(1));
    const QWidget* onTop = window.childAt(fixture.form().mapTo(&window, QPoint(200, 200)));
    QVERIFY(onTop);
    QCOMPARE(onTop->objectName(), u"Form0"_s);
    // The next window of the first four is closed at once.
    OpenToolWindow(3);
    QVERIFY(!moduleWindow(3));
    QVERIFY(!moduleWindow(1));
    QVERIFY(!gOpenFailed);
    QCOMPARE(window.windowTitle(), u"Pontrel V1.1 - Norvale"_s);
}

void EmployeeRowsTest::grantsReachTheScreenWithTheRefresh() {
    RowsFixture fixture;
    addEmployee(fixture.database(), u"10001"_s, {{u"SuitNo", u"1"}, {u"HoliExper", 3}, {u"ThisYearHD", 1.0}});
    insertRow(fixture.database(), u"Holi02"_s,
              {{u"SuitNo", u"1"},
               {u"HoliNo", u"01"},
               {u"HoliYearBeg", 3},
               {u"HoliYearEnd", 5},
               {u"HoliDays", 7.5}});
    fixture.openPage();
    fixture.press(Entitlement);
    QCOMPARE(fixture.stored(u"ThisYearHD,ThisYearLeft,LeaveHD"_s), QStringList{u"8|8|null"_s});
    QVERIFY(!hourglass());
    QCOMPARE(fixture.text(u"Text6(13)"_s), u"1"_s);
    fixture.press(u"CtrlCmd5(10)"_s);
    QCOMPARE(fixture.text(u"Text6(13)"_s), u"8"_s);
}

void EmployeeRowsTest::aNullInTheGrantsEndsTheProgram() {
    TestStore store;
    addEmployee(store.database(), u"10001"_s, {{u"SuitNo", u"1"}, {u"HoliExper", 3}});
    insertRow(store.database(), u"Holi02"_s, {{u"SuitNo", u"1"}, {u"HoliNo", u"01"}, {u"HoliYearBeg", 3}});
    OtherProcess program(store.folder(), u"grantWithANull"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"Pontrel|執行階段錯誤 '94':"_s),
             qUtf8Printable(lines.constFirst()));
}

void EmployeeRowsTest::monthsBeyondSixteenBitsEndTheProgram() {
    TestStore store;
    OtherProcess program(store.folder(), u"monthsBeyondSixteenBits"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"Pontrel|執行階段錯誤 '6':"_s),
             qUtf8Printable(lines.constFirst()));
}

void EmployeeRowsTest::thirtyColumnsScroll() {
    RowsFixture fixture;
    fixture.addThree();
    fixture.openPage();
    auto& grid = fixture.at<TDBGrid>(u"TDBGrid1"_s);
    QCOMPARE(grid.model()->columnCount(), 30);
    grid.setCurrentIndex(grid.model()->index(1, 29));
    QVERIFY(grid.visualRect(grid.model()->index(1, 29)).intersects(grid.viewport()->rect()));
    QCOMPARE(fixture.code(), u"10002"_s);
    for (int column = 0; column < 30; ++column) {
        const QString caption = grid.model()->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(grid.columnWidth(column) >= grid.fontMetrics().horizontalAdvance(caption),
                 qUtf8Printable(caption));
    }
}

int main(int argc, char** argv) {
    return runTests<EmployeeRowsTest>(
        argc, argv,
        {{u"grantWithANull"_s, grantWithANull}, {u"monthsBeyondSixteenBits"_s, monthsBeyondSixteenBits}});
}

#include "EmployeeRowsTest.moc"
