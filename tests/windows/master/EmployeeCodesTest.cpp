#include "support/Patience.h"
#include "windows/master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

const QStringList Names{u"Label12"_s, u"Label13"_s, u"Label14"_s, u"Label15"_s, u"Label4(0)"_s};

/// A box whose code is looked up, the label of the name, a known code and its name, and the message.
struct CodeBox {
    int box;
    QString label;
    QString code;
    QString name;
    QString otherCode;
    QString otherName;
    QString message;
    QString search;
    QString lookup;
    QString* pick;
};

const QList<CodeBox> CodeBoxes{
    {3, u"Label12"_s, u"1000"_s, u"會計課"_s, u"2000"_s, u"人事室"_s, u"無此【單位代碼】,請重新輸入"_s,
     u"Search(6)"_s, u"QFrmUnitNo"_s, &gPickUnitNo},
    {4, u"Label13"_s, u"D01"_s, u"日班"_s, u"N01"_s, u"夜班"_s, u"無此【班別代碼】,請重新輸入"_s,
     u"Search(7)"_s, u"QFrmClsNo"_s, &gPickClsNo},
    {5, u"Label14"_s, u"0001"_s, u"課長"_s, u"0002"_s, u"科員"_s, u"無此【職稱代碼】,請重新輸入"_s,
     u"Search(8)"_s, u"QFrmTitleNo"_s, &gPickTitleNo},
    {6, u"Label15"_s, u"0001"_s, u"正式職員"_s, u"0002"_s, u"約聘人員"_s,
     u"無此【聘雇類別代碼】,請重新輸入"_s, u"Search(9)"_s, u"QFrmWorkNo"_s, &gPickWorkNo},
    {7, u"Label4(0)"_s, u"1"_s, u"公務辦法"_s, u"2"_s, u"勞工辦法"_s, u"無此【適用辦法代碼】,請重新輸入"_s,
     u"Search(10)"_s, u"QFrmSuitNo"_s, &gPickSuitNo}};

void addCodeBoxRows() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < CodeBoxes.size(); ++index)
        QTest::addRow("%s", qPrintable(CodeBoxes.at(index).lookup)) << index;
}

} // namespace

/// The five code boxes of the employees' tab: their names, the check of what is typed, the lookups.
class EmployeeCodesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aKnownCodeShowsItsName_data() { addCodeBoxRows(); }
    void aKnownCodeShowsItsName();
    void anUnknownCodeIsToldAndKeepsTheFocus_data() { addCodeBoxRows(); }
    void anUnknownCodeIsToldAndKeepsTheFocus();
    void theClickThatLeftAnUnknownCodeIsNotCarriedOut();
    void aPageIsNotLeftWithAnUnknownCode();
    void anEmptiedBoxIsAnUnknownCode();
    void codesAreFoundWithoutRegardToCase();
    void aBoxThatWasNotChangedIsNotTested();
    void whatTheRowBringsWithItIsNotTested();
    void anUnknownCodeOfTheRowIsNotTestedWhenTabbedThrough();
    void aChangeOfAnotherBoxForgetsTheMiss();
    void aMaskForgetsTheMiss();
    void theTestAppliesToTheBoxLastChanged();
    void aMissOfABoxWithoutTheFocusIsNotTold();
    void browsingKeepsThePreviousName();
    void addClearsTheNamesAndCancelShowsThemAgain();
    void lookupsWriteTheChosenCode_data() { addCodeBoxRows(); }
    void lookupsWriteTheChosenCode();
    void lookupsWriteAlsoWhenCancelled_data() { addCodeBoxRows(); }
    void lookupsWriteAlsoWhenCancelled();
    void anUnknownPickIsWrittenWithoutAWord();
};

void EmployeeCodesTest::aKnownCodeShowsItsName() {
    QFETCH(const int, index);
    const CodeBox& each = CodeBoxes.at(index);
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    fixture.enter(text6(each.box), each.code);
    QCOMPARE(fixture.label(each.label), each.name);
    fixture.enter(text6(each.box), each.otherCode);
    QCOMPARE(fixture.label(each.label), each.otherName);
    for (const QString& other : Names) {
        if (other != each.label)
            QCOMPARE(fixture.label(other), QString());
    }
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(fixture.answers.seen().isEmpty());
    const QStringList columns{u"UnitNo"_s, u"ClsNo"_s, u"TitleNo"_s, u"WorkNo"_s, u"SuitNo"_s};
    QCOMPARE(fixture.employees(),
             QStringList{employeeRow({{u"EmpNo", u"10001"}, {columns.at(index), Value(each.otherCode)}})});
}

void EmployeeCodesTest::anUnknownCodeIsToldAndKeepsTheFocus() {
    QFETCH(const int, index);
    const CodeBox& each = CodeBoxes.at(index);
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(each.box), each.code);
    fixture.enter(text6(each.box), u"Z"_s);
    // The name of the code before stays.
    QCOMPARE(fixture.label(each.label), each.name);
    for (const Qt::Key leave : {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Backtab}) {
        fixture.answers.expectMsgBox();
        fixture.key(leave);
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.lastMessage(), u"警告訊息|"_s + each.message + u"|確定"_s);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.focused(), text6(each.box), PatienceMs);
        QCOMPARE(fixture.box(text6(each.box)).selectedText(), u"Z"_s);
    }
    QCOMPARE(fixture.text(text6(each.box)), u"Z"_s);
    QCOMPARE(fixture.panel(2), u"新增資料"_s);
    // What is typed next takes the place of the refused code.
    fixture.keys(each.otherCode);
    QCOMPARE(fixture.text(text6(each.box)), each.otherCode);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.label(each.label), each.otherName);
    QVERIFY(fixture.focused() != text6(each.box));
    QCOMPARE(fixture.answers.seen().size(), 3);
}

void EmployeeCodesTest::theClickThatLeftAnUnknownCodeIsNotCarriedOut() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    fixture.enter(text6(3), u"Z"_s);
    for (const QString& button : {Save, Cancel, u"Search(7)"_s}) {
        fixture.answers.expectMsgBox();
        fixture.press(button);
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.panel(2), u"新增資料"_s);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.focused(), text6(3), PatienceMs);
    }
    QCOMPARE(fixture.employees(), QStringList());
}

void EmployeeCodesTest::aPageIsNotLeftWithAnUnknownCode() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(3), u"Z"_s);
    const std::array<std::function<void()>, 2> ways{
        [&] { fixture.clickPage(1); },
        [&] { fixture.key(Qt::Key_Tab, Qt::ControlModifier); },
    };
    for (const auto& leave : ways) {
        fixture.answers.expectMsgBox();
        leave();
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.lastMessage(), u"警告訊息|無此【單位代碼】,請重新輸入|確定"_s);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.focused(), text6(3), PatienceMs);
        QCOMPARE(fixture.pages().currentIndex(), 0);
    }
}

void EmployeeCodesTest::anEmptiedBoxIsAnUnknownCode() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.enter(text6(5), QString());
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.lastMessage(), u"警告訊息|無此【職稱代碼】,請重新輸入|確定"_s);
    QTRY_COMPARE_WITH_TIMEOUT(fixture.focused(), text6(5), PatienceMs);
}

void EmployeeCodesTest::codesAreFoundWithoutRegardToCase() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(4), u"d01"_s);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.label(u"Label13"_s), u"日班"_s);
    QVERIFY(fixture.answers.seen().isEmpty());
}

void EmployeeCodesTest::aBoxThatWasNotChangedIsNotTested() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    for (const CodeBox& each : CodeBoxes)
        click(fixture.box(text6(each.box)));
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.employees(), QStringList{employeeRow({{u"EmpNo", u"10001"}})});
}

void EmployeeCodesTest::whatTheRowBringsWithItIsNotTested() {
    // The scheme and the unit are the last boxes that change when the rows are shown.
    EmployeeFixture fixture;
    fixture.add({{u"EmpNo", u"10001"}, {u"SuitNo", u"1"}});
    fixture.openEmployees();
    fixture.press(Add);
    click(fixture.box(text6(7)));
    click(fixture.box(text6(1)));
    fixture.press(Cancel);
    fixture.database().execute(u"update Base06 set SuitNo = null, UnitNo = '9999'"_s);
    fixture.press(Refresh);
    fixture.press(Modify);
    click(fixture.box(text6(3)));
    click(fixture.box(text6(1)));
    fixture.press(Cancel);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeeCodesTest::anUnknownCodeOfTheRowIsNotTestedWhenTabbedThrough() {
    EmployeeFixture fixture;
    const Fields row{{u"EmpNo", u"10001"}, {u"UnitNo", u"9999"}, {u"ClsNo", u"X"}, {u"SuitNo", u"9"}};
    fixture.add(row);
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.enter(text6(1), u"A"_s);
    for (const CodeBox& each : CodeBoxes)
        click(fixture.box(text6(each.box)));
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.employees(), QStringList{employeeRow(row + Fields{{u"EmpName", u"A"}})});
}

void EmployeeCodesTest::aChangeOfAnotherBoxForgetsTheMiss() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    // Any of the boxes: one that is looked up, one that is not, one of another page.
    for (const int other : {1, 4, 24}) {
        fixture.enter(text6(3), u"Z%1"_s.arg(other));
        fixture.box(text6(other)).setText(other == 4 ? u"D01"_s : u"text"_s);
        fixture.key(Qt::Key_Tab);
        QVERIFY(fixture.focused() != text6(3));
    }
    QVERIFY(fixture.answers.seen().isEmpty());
}

void EmployeeCodesTest::aMaskForgetsTheMiss() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(3), u"Z"_s);
    fixture.mask(1).setValue(u"900131"_s);
    fixture.key(Qt::Key_Tab);
    QVERIFY(fixture.focused() != text6(3));
    QVERIFY(fixture.answers.seen().isEmpty());
}

void EmployeeCodesTest::theTestAppliesToTheBoxLastChanged() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    // Two unknown codes: the first box is left in silence, since the second was changed last.
    fixture.enter(text6(3), u"Z"_s);
    fixture.box(text6(6)).setText(u"Y"_s);
    click(fixture.box(text6(6)));
    QCOMPARE(fixture.focused(), text6(6));
    QVERIFY(fixture.answers.seen().isEmpty());
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.lastMessage(), u"警告訊息|無此【聘雇類別代碼】,請重新輸入|確定"_s);
}

void EmployeeCodesTest::aMissOfABoxWithoutTheFocusIsNotTold() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    fixture.box(text6(7)).setText(u"9"_s);
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.employees(), QStringList{employeeRow({{u"EmpNo", u"10001"}, {u"SuitNo", u"9"}})});
}

void EmployeeCodesTest::browsingKeepsThePreviousName() {
    EmployeeFixture fixture;
    const auto coded = [](const QString& EmpNo, const QString& code, const QString& scheme) -> Fields {
        return {{u"EmpNo", Value(EmpNo)},  {u"UnitNo", Value(code)}, {u"ClsNo", Value(code.left(3))},
                {u"TitleNo", Value(code)}, {u"WorkNo", Value(code)}, {u"SuitNo", Value(scheme)}};
    };
    fixture.add(fullEmployee(u"10001"_s));
    fixture.add(coded(u"10002"_s, u"9999"_s, u"9"_s));
    fixture.add({{u"EmpNo", u"10003"}});
    fixture.openEmployees();
    const QStringList names{u"會計課"_s, u"日班"_s, u"課長"_s, u"約聘人員"_s, u"公務辦法"_s};
    QCOMPARE(fixture.shown(Names), names);
    fixture.press(Next);
    QCOMPARE(fixture.text(text6(3)), u"9999"_s);
    QCOMPARE(fixture.shown(Names), names);
    fixture.press(Next);
    QCOMPARE(fixture.text(text6(3)), QString());
    QCOMPARE(fixture.shown(Names), names);
    fixture.press(First);
    QVERIFY(fixture.answers.seen().isEmpty());
}

void EmployeeCodesTest::addClearsTheNamesAndCancelShowsThemAgain() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    const QStringList names = fixture.shown(Names);
    QVERIFY(!names.contains(QString()));
    fixture.press(Add);
    QCOMPARE(fixture.shown(Names), QStringList(5, QString()));
    fixture.press(Cancel);
    QCOMPARE(fixture.shown(Names), names);
}

void EmployeeCodesTest::lookupsWriteTheChosenCode() {
    QFETCH(const int, index);
    const CodeBox& each = CodeBoxes.at(index);
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.answers.expect(each.lookup, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    fixture.press(each.search);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.text(text6(each.box)), each.otherCode);
    QCOMPARE(fixture.label(each.label), each.otherName);
    QCOMPARE(*each.pick, each.otherCode);
    for (const CodeBox& other : CodeBoxes) {
        if (other.box != each.box)
            QCOMPARE(fixture.text(text6(other.box)), QString());
    }
}

void EmployeeCodesTest::lookupsWriteAlsoWhenCancelled() {
    QFETCH(const int, index);
    const CodeBox& each = CodeBoxes.at(index);
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    fixture.press(Modify);
    const auto cancel = [&] {
        fixture.answers.expect(each.lookup, [](QWidget& dialog) { clickCancel(dialog); });
        fixture.press(each.search);
    };
    // The first of its kind, cancelled, empties the box.
    QVERIFY(!fixture.text(text6(each.box)).isEmpty());
    cancel();
    QCOMPARE(fixture.text(text6(each.box)), QString());
    // Later ones write the earlier pick again, also one of another window.
    *each.pick = each.otherCode;
    cancel();
    QCOMPARE(fixture.text(text6(each.box)), each.otherCode);
    QCOMPARE(fixture.label(each.label), each.otherName);
    QCOMPARE(fixture.answers.trouble(), QString());
    fixture.press(Save);
    const QStringList columns{u"UnitNo"_s, u"ClsNo"_s, u"TitleNo"_s, u"WorkNo"_s, u"SuitNo"_s};
    QCOMPARE(fixture.employees(), QStringList{employeeRow(with(fullEmployee(u"10001"_s),
                                                               {columns.at(index), Value(each.otherCode)}))});
}

void EmployeeCodesTest::anUnknownPickIsWrittenWithoutAWord() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    gPickUnitNo = u"9999"_s;
    fixture.answers.expect(u"QFrmUnitNo"_s, [](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(u"Search(6)"_s);
    QCOMPARE(fixture.text(text6(3)), u"9999"_s);
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.employees(), QStringList{employeeRow({{u"EmpNo", u"10001"}, {u"UnitNo", u"9999"}})});
}

int main(int argc, char** argv) {
    return runTests<EmployeeCodesTest>(argc, argv);
}

#include "EmployeeCodesTest.moc"
