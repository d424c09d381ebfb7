#include "windows/master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

const QString Question = u"確認刪除|確定刪除這筆資料?|"_s;
const QString Refused = u"錯誤訊息|此員工已有加班/請假資料,無法刪除!|確定"_s;

} // namespace

/// Deleting employees, and finding one by the query.
class EmployeeDeleteTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void deleteAsksAndNoKeepsTheRow();
    void deleteEndsOnTheFirstRow_data();
    void deleteEndsOnTheFirstRow();
    void deletingTheLastEmployeeLeavesTheEmptyState();
    void anEmployeeWithOvertimeOrLeaveIsKept_data();
    void anEmployeeWithOvertimeOrLeaveIsKept();
    void theOtherEmployeesGoAllTheSame();
    void anyFailureGetsTheSameMessage();
    void rowsOfOtherTablesStay();
    void queryGoesToTheChosenEmployee();
    void queryByTheStartOfCodeAndName();
    void queryCancelledFindsTheLastPick();
    void queryWithoutAPickStays();
    void queryOfACodeThatIsGoneStays();
    void queryFindsWithoutRegardToCase();
    void queryListsThoseWhoHaveLeft();
};

void EmployeeDeleteTest::deleteAsksAndNoKeepsTheRow() {
    EmployeeFixture fixture;
    fixture.addPlain(3);
    fixture.openEmployees();
    fixture.press(Next);
    fixture.answers.expectMsgBox(MsgAnswer::No);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt& question = fixture.answers.seen().constFirst();
    QVERIFY(fixture.lastMessage().startsWith(Question));
    QCOMPARE(question.icon, MsgIcon::Question);
    QCOMPARE(question.buttons.size(), 2);
    QCOMPARE(fixture.employees().size(), 3);
    QCOMPARE(fixture.code(), u"10002"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
}

void EmployeeDeleteTest::deleteEndsOnTheFirstRow_data() {
    QTest::addColumn<int>("position");
    for (int position = 1; position <= 4; ++position)
        QTest::addRow("row %d of 4", position) << position;
}

void EmployeeDeleteTest::deleteEndsOnTheFirstRow() {
    QFETCH(const int, position);
    EmployeeFixture fixture;
    fixture.addPlain(4);
    fixture.openEmployees();
    for (int row = 1; row < position; ++row)
        fixture.press(Next);
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QStringList expected;
    for (int number = 1; number <= 4; ++number) {
        if (number != position)
            expected << employeeRow(EmployeeFixture::plain(number));
    }
    QCOMPARE(fixture.employees(), expected);
    QCOMPARE(fixture.code(), position == 1 ? u"10002"_s : u"10001"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(fixture.at<TDBGrid>(u"TDBGrid1"_s).currentIndex().row(), 0);
    QCOMPARE(shownRows(fixture.at<TDBGrid>(u"TDBGrid1"_s)).size(), 3);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
}

void EmployeeDeleteTest::deletingTheLastEmployeeLeavesTheEmptyState() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.employees(), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithoutRows);
    QCOMPARE(
        fixture.shown({text6(0), text6(1), u"TDBMask1(0)"_s, u"Text7(0)"_s, u"Label25(0)"_s}).join(QString()),
        QString());
    QCOMPARE(fixture.shownMonths(), u"0|0|0|0"_s);
    QCOMPARE(shownRows(fixture.at<TDBGrid>(u"TDBGrid1"_s)), QStringList());
    // And the tab goes on from there.
    fixture.press(Add);
    fixture.enter(text6(0), u"10002"_s);
    fixture.press(Save);
    QCOMPARE(fixture.employees(), QStringList{employeeRow({{u"EmpNo", u"10002"}})});
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
}

void EmployeeDeleteTest::anEmployeeWithOvertimeOrLeaveIsKept_data() {
    QTest::addColumn<QString>("table");
    QTest::addRow("overtime rows") << u"Over01"_s;
    QTest::addRow("leave notes") << u"Holi03"_s;
}

void EmployeeDeleteTest::anEmployeeWithOvertimeOrLeaveIsKept() {
    QFETCH(const QString, table);
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.add(fullEmployee(u"10002"_s));
    fixture.add(fullEmployee(u"10003"_s));
    Fields note{{u"EmpNo", u"10002"}};
    if (table == u"Holi03"_s)
        note << Field(u"BusNo", u"90030001");
    insertRow(fixture.database(), table, note);
    const QStringList employees = fixture.employees();
    const QStringList notes = rowsOf(fixture.database(), table);
    fixture.openEmployees();
    fixture.press(Next);
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.lastMessage(), Refused);
    QCOMPARE(fixture.answers.seen().constLast().icon, MsgIcon::Exclamation);
    QCOMPARE(fixture.employees(), employees);
    QCOMPARE(rowsOf(fixture.database(), table), notes);
    QCOMPARE(fixture.shown({text6(0), text6(1)}), QStringList({u"10002"_s, u"王小明"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
    // Without the note the same employee goes.
    fixture.database().execute(u"delete * from "_s + table);
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.employees(), QStringList({employees.at(0), employees.at(2)}));
}

void EmployeeDeleteTest::theOtherEmployeesGoAllTheSame() {
    EmployeeFixture fixture;
    fixture.addPlain(2);
    insertRow(fixture.database(), u"Over01"_s, {{u"EmpNo", u"10002"}});
    fixture.openEmployees();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.employees(), QStringList{employeeRow(EmployeeFixture::plain(2))});
}

void EmployeeDeleteTest::anyFailureGetsTheSameMessage() {
    EmployeeFixture fixture;
    fixture.addPlain(2);
    fixture.openEmployees();
    // A row that another program has taken away meanwhile is one that cannot be deleted.
    fixture.database().execute(u"delete * from Base06 where EmpNo = '10001'"_s);
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.lastMessage(), Refused);
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
    fixture.press(Refresh);
    QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
    QCOMPARE(fixture.code(), u"10002"_s);
}

void EmployeeDeleteTest::rowsOfOtherTablesStay() {
    EmployeeFixture fixture;
    fixture.addPlain(2);
    addRoster(fixture.database(), u"10001"_s, {2001, 3, 5}, u"A"_s);
    addReadPunch(fixture.database(), u"10001"_s, {2001, 3, 5}, QTime(8, 0));
    fixture.openEmployees();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.employees(), QStringList{employeeRow(EmployeeFixture::plain(2))});
    QCOMPARE(rowsOf(fixture.database(), u"Rule03"_s), QStringList{u"10001|2001-03-05|A"_s});
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), QStringList{u"10001|2001-03-05|08:00:00|255|001"_s});
}

void EmployeeDeleteTest::queryGoesToTheChosenEmployee() {
    EmployeeFixture fixture;
    fixture.addPlain(4);
    fixture.openEmployees();
    for (const int row : {2, 0, 3}) {
        fixture.answers.expect(u"QFrmEmpNO"_s, [row](QWidget& dialog) {
            clickRow(dialog, row);
            clickOk(dialog);
        });
        fixture.press(Query);
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.answers.seen().constLast().title, u"員工代碼查詢"_s);
        QCOMPARE(fixture.shown({text6(0), text6(1)}),
                 QStringList({QString::number(10001 + row), u"員工%1"_s.arg(row + 1)}));
        QCOMPARE(fixture.panel(1), u"資料錄:%1/4"_s.arg(row + 1));
        QCOMPARE(fixture.panel(2), QString());
        QCOMPARE(fixture.at<TDBGrid>(u"TDBGrid1"_s).currentIndex().row(), row);
        QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
    }
    // The list is whole: nothing was narrowed.
    QCOMPARE(shownRows(fixture.at<TDBGrid>(u"TDBGrid1"_s)).size(), 4);
}

void EmployeeDeleteTest::queryByTheStartOfCodeAndName() {
    EmployeeFixture fixture;
    fixture.addPlain(3);
    fixture.add({{u"EmpNo", u"AB777"}, {u"EmpName", u"林大同"}});
    fixture.openEmployees();
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        QTest::keyClicks(&control(dialog, u"Text1"_s), u"AB"_s);
        clickOk(dialog);
    });
    fixture.press(Query);
    QCOMPARE(fixture.code(), u"AB777"_s);
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        typeInto(control<QLineEdit>(dialog, u"Text2"_s), u"員工2"_s);
        clickOk(dialog);
    });
    fixture.press(Query);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.code(), u"10002"_s);
}

void EmployeeDeleteTest::queryCancelledFindsTheLastPick() {
    EmployeeFixture fixture;
    fixture.addPlain(3);
    fixture.openEmployees();
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 2);
        clickOk(dialog);
    });
    fixture.press(Query);
    fixture.press(First);
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickCancel(dialog);
    });
    fixture.press(Query);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.code(), u"10003"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    // Also where the pick was made on another screen.
    gPickEmpNo = u"10002"_s;
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(Query);
    QCOMPARE(fixture.code(), u"10002"_s);
}

void EmployeeDeleteTest::queryWithoutAPickStays() {
    EmployeeFixture fixture;
    fixture.addPlain(3);
    fixture.openEmployees();
    fixture.press(Next);
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(Query);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.code(), u"10002"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
}

void EmployeeDeleteTest::queryOfACodeThatIsGoneStays() {
    EmployeeFixture fixture;
    fixture.addPlain(2);
    fixture.openEmployees();
    fixture.press(Next);
    gPickEmpNo = u"1000"_s; // The start of a code is none.
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(Query);
    QCOMPARE(fixture.code(), u"10002"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:2/2"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
}

void EmployeeDeleteTest::queryFindsWithoutRegardToCase() {
    EmployeeFixture fixture;
    fixture.addPlain(1);
    fixture.add({{u"EmpNo", u"ab001"}});
    fixture.openEmployees();
    gPickEmpNo = u"AB001"_s;
    fixture.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(Query);
    QCOMPARE(fixture.code(), u"ab001"_s);
}

void EmployeeDeleteTest::queryListsThoseWhoHaveLeft() {
    EmployeeFixture fixture;
    fixture.addPlain(1);
    fixture.add(fullEmployee(u"10009"_s));
    fixture.openEmployees();
    QStringList list;
    fixture.answers.expect(u"QFrmEmpNO"_s, [&list](QWidget& dialog) {
        list = listOf(dialog);
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    fixture.press(Query);
    QCOMPARE(list, QStringList({u"10001|員工1|"_s, u"10009|王小明|2005/6/30"_s}));
    QCOMPARE(fixture.code(), u"10009"_s);
}

int main(int argc, char** argv) {
    return runTests<EmployeeDeleteTest>(argc, argv);
}

#include "EmployeeDeleteTest.moc"
