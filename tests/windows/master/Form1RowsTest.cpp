#include "windows/master/Form1Pages.h"

#include "app/LookupProcess.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

enum Button { Add = 0, Modify = 1, Delete = 2, Cancel = 3, Save = 4, Last = 9, Refresh = 10 };

/// Adds a row of that code on that tab and saves it.
int saveACode(const QStringList& arguments) {
    const int tab = arguments.at(0).toInt();
    const QString code = arguments.value(1);
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(tab);
        const PlainPage& page = PlainPages.at(tab);
        click(control(form, u"CtrlCmd%1(0)"_s.arg(tab)));
        QTest::keyClicks(&control(form, page.codeBox()), code);
        QTest::keyClicks(&control(form, page.nameBox()), u"other"_s);
        click(control(form, u"CtrlCmd%1(4)"_s.arg(tab)));
    });
}

/// As an input method hands over what was composed, after what the box holds.
void commitText(QLineEdit& box, const QString& text) {
    box.end(false);
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&box, &event);
}

const Scenarios AllScenarios = {{u"saveACode"_s, saveACode}};

} // namespace

/// Rows entered, changed and deleted on the master data's tabs 0 to 4.
class Form1RowsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNewRowIsStoredAndBecomesCurrent_data() { eachPlainPage(); }
    void aNewRowIsStoredAndBecomesCurrent();
    void theFirstRowOfATableIsStored_data() { eachPlainPage(); }
    void theFirstRowOfATableIsStored();
    void aModifiedRowIsStoredAndStaysCurrent_data() { eachPlainPage(); }
    void aModifiedRowIsStoredAndStaysCurrent();
    void cancelStoresNothing_data() { eachPlainPage(); }
    void cancelStoresNothing();
    void aRowWithoutANameIsStored_data() { eachPlainPage(); }
    void aRowWithoutANameIsStored();
    void twoCodesOfOneNameAreStored_data() { eachPlainPage(); }
    void twoCodesOfOneNameAreStored();
    void anApostropheIsStored_data() { eachPlainPage(); }
    void anApostropheIsStored();
    void aRefusedCodeEndsTheProgramAtSave_data();
    void aRefusedCodeEndsTheProgramAtSave();
    void boxesTakeWhatTheirColumnsHold_data();
    void boxesTakeWhatTheirColumnsHold();
    void deleteEndsOnTheLastRow_data() { eachPlainPage(); }
    void deleteEndsOnTheLastRow();
    void deleteAnsweredNoKeepsTheRow_data() { eachPlainPage(); }
    void deleteAnsweredNoKeepsTheRow();
    void deleteOfTheOnlyRowLeavesTheEmptyState_data() { eachPlainPage(); }
    void deleteOfTheOnlyRowLeavesTheEmptyState();
    void aRefusedDeleteTellsAndLeavesAtOnce_data() { eachPlainPage(); }
    void aRefusedDeleteTellsAndLeavesAtOnce();
    void aCodeThatEmployeesUseIsDeleted_data() { eachPlainPage(); }
    void aCodeThatEmployeesUseIsDeleted();
    void aReturnToTheTabStandsOnTheFirstRow_data() { eachPlainPage(); }
    void aReturnToTheTabStandsOnTheFirstRow();
};

void Form1RowsTest::aNewRowIsStoredAndBecomesCurrent() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(2);
    fixture.openPage();
    fixture.pressButton(Add);
    QCOMPARE(fixture.text(fixture.page().codeBox()), QString());
    QCOMPARE(fixture.text(fixture.page().nameBox()), QString());
    fixture.typeRow(u"0"_s, u"新名"_s);
    fixture.pressButton(Save);
    const PlainPage& page = fixture.page();
    QCOMPARE(fixture.rows(), QStringList({page.row(u"0"_s, u"新名"_s), page.row(u"1"_s, u"名1"_s),
                                          page.row(u"2"_s, u"名2"_s)}));
    // At the end of the rows until they are read again in the table's own order.
    QCOMPARE(fixture.shown(), u"資料錄:3/3|0|新名"_s);
    fixture.pressButton(Refresh);
    QCOMPARE(fixture.shown(), u"資料錄:1/3|0|新名"_s);
}

void Form1RowsTest::theFirstRowOfATableIsStored() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.openPage();
    fixture.pressButton(Add);
    fixture.typeRow(u"Z"_s, u"第一"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{fixture.page().row(u"Z"_s, u"第一"_s)});
    QCOMPARE(fixture.shown(), u"資料錄:1/1|Z|第一"_s);
    QCOMPARE(fixture.on(), QList<int>({0, 1, 2, 6, 7, 8, 9, 10, 11, 12}));
}

void Form1RowsTest::aModifiedRowIsStoredAndStaysCurrent() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(3);
    fixture.openPage();
    fixture.pressButton(Last);
    fixture.pressButton(Modify);
    fixture.typeRow(u"9"_s, u"改名"_s);
    fixture.pressButton(Save);
    const PlainPage& page = fixture.page();
    QCOMPARE(fixture.rows(), QStringList({page.row(u"1"_s, u"名1"_s), page.row(u"2"_s, u"名2"_s),
                                          page.row(u"9"_s, u"改名"_s)}));
    QCOMPARE(fixture.shown(), u"資料錄:3/3|9|改名"_s);
}

void Form1RowsTest::cancelStoresNothing() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(2);
    fixture.openPage();
    fixture.pressButton(Last);
    for (const Button begin : {Add, Modify}) {
        fixture.pressButton(begin);
        fixture.typeRow(u"7"_s, u"改名"_s);
        fixture.pressButton(Cancel);
        QCOMPARE(fixture.rows(),
                 QStringList({fixture.page().row(u"1"_s, u"名1"_s), fixture.page().row(u"2"_s, u"名2"_s)}));
        QCOMPARE(fixture.shown(), u"資料錄:2/2|2|名2"_s);
    }
}

void Form1RowsTest::aRowWithoutANameIsStored() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.openPage();
    fixture.pressButton(Add);
    fixture.type(fixture.page().codeBox(), u"1"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{fixture.page().row(u"1"_s, QString())});
    // A name emptied later is a null as well.
    fixture.pressButton(Modify);
    fixture.type(fixture.page().nameBox(), u"名"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{fixture.page().row(u"1"_s, u"名"_s)});
    fixture.pressButton(Modify);
    fixture.type(fixture.page().nameBox(), QString());
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{fixture.page().row(u"1"_s, QString())});
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form1RowsTest::twoCodesOfOneNameAreStored() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(1);
    fixture.openPage();
    fixture.pressButton(Add);
    fixture.typeRow(u"2"_s, u"名1"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(),
             QStringList({fixture.page().row(u"1"_s, u"名1"_s), fixture.page().row(u"2"_s, u"名1"_s)}));
}

void Form1RowsTest::anApostropheIsStored() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.openPage();
    // A row's save joins no statement of its boxes' texts.
    fixture.pressButton(Add);
    fixture.typeRow(u"'"_s, u"O'Neil"_s);
    fixture.pressButton(Save);
    const PlainPage& page = fixture.page();
    QCOMPARE(rowsOfSelection(fixture.database(),
                             u"select %1,%2 from %3"_s.arg(page.codeColumn, page.nameColumn, page.table)),
             QStringList{u"'|O'Neil"_s});
    QCOMPARE(fixture.shown(), u"資料錄:1/1|'|O'Neil"_s);
}

void Form1RowsTest::aRefusedCodeEndsTheProgramAtSave_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("number");
    for (int tab = 0; tab < PlainPages.size(); ++tab) {
        const QByteArray table = PlainPages.at(tab).table.toLatin1();
        QTest::addRow("%s, a code that is there", table.constData()) << tab << u"A"_s << u"3022"_s;
        QTest::addRow("%s, no code", table.constData()) << tab << QString() << u"3314"_s;
    }
    QTest::addRow("Base02, a code that is there in other letters") << 1 << u"a"_s << u"3022"_s;
}

void Form1RowsTest::aRefusedCodeEndsTheProgramAtSave() {
    QFETCH(const int, tab);
    QFETCH(const QString, code);
    QFETCH(const QString, number);
    TestStore store;
    const PlainPage& page = PlainPages.at(tab);
    insertRow(store.database(), page.table, {{page.codeColumn, u"A"_s}, {page.nameColumn, u"名"_s}});
    OtherProcess program(store.folder(), u"saveACode"_s, {QString::number(tab), code});
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"Pontrel|執行階段錯誤 '%1':"_s.arg(number)),
             qUtf8Printable(lines.constFirst()));
    QCOMPARE(rowsOf(*store.connect(), page.table), QStringList{page.row(u"A"_s, u"名"_s)});
}

void Form1RowsTest::boxesTakeWhatTheirColumnsHold_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("codeLimit");
    QTest::addColumn<int>("nameLimit");
    QTest::newRow("titles") << 0 << 4 << 20;
    QTest::newRow("units") << 1 << 4 << 30;
    QTest::newRow("employment types") << 2 << 4 << 14;
    QTest::newRow("time slots, whose names have no limit") << 3 << 1 << 60;
    QTest::newRow("shift classes") << 4 << 3 << 14;
}

void Form1RowsTest::boxesTakeWhatTheirColumnsHold() {
    QFETCH(const int, tab);
    QFETCH(const int, codeLimit);
    QFETCH(const int, nameLimit);
    PlainPageFixture fixture(tab);
    fixture.openPage();
    fixture.pressButton(Add);
    const QString typed(60, u'x');
    fixture.typeRow(typed, typed);
    QCOMPARE(fixture.text(fixture.page().codeBox()), typed.left(codeLimit));
    QCOMPARE(fixture.text(fixture.page().nameBox()), typed.left(nameLimit));
    // Characters count, be they as rare as they may.
    const QString rare = u"𠮷"_s.repeated(nameLimit);
    fixture.typeRow(u"1"_s, rare);
    commitText(fixture.box(fixture.page().nameBox()), nameLimit < 60 ? u"名"_s : QString());
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{fixture.page().row(u"1"_s, rare)});
}

void Form1RowsTest::deleteEndsOnTheLastRow() {
    QFETCH(const int, tab);
    for (const int presses : {0, 1, 3}) {
        PlainPageFixture fixture(tab);
        fixture.addCodes(4);
        fixture.openPage();
        for (int press = 0; press < presses; ++press)
            fixture.pressButton(8);
        fixture.answers.expectMsgBox(MsgAnswer::Yes);
        fixture.pressButton(Delete);
        QCOMPARE(fixture.answers.trouble(), QString());
        const SeenPrompt& question = fixture.answers.seen().constFirst();
        QCOMPARE(question.title, u"確認刪除"_s);
        QCOMPARE(question.text, u"確定刪除這筆資料?"_s);
        QCOMPARE(question.icon, MsgIcon::Question);
        QCOMPARE(question.buttons.size(), 2);
        QStringList left;
        for (int code = 1; code <= 4; ++code) {
            if (code != presses + 1)
                left += fixture.page().row(QString::number(code), u"名%1"_s.arg(code));
        }
        QCOMPARE(fixture.rows(), left);
        QCOMPARE(fixture.shown(), u"資料錄:3/3|%1|名%1"_s.arg(presses == 3 ? 3 : 4));
    }
}

void Form1RowsTest::deleteAnsweredNoKeepsTheRow() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(2);
    fixture.openPage();
    fixture.answers.expectMsgBox(MsgAnswer::No);
    fixture.pressButton(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.rows().size(), 2);
    QCOMPARE(fixture.shown(), u"資料錄:1/2|1|名1"_s);
}

void Form1RowsTest::deleteOfTheOnlyRowLeavesTheEmptyState() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(1);
    fixture.openPage();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.pressButton(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.rows(), QStringList());
    QCOMPARE(fixture.shown(), u"資料錄:1/0||"_s);
    QCOMPARE(fixture.on(), QList<int>({0, 10, 11, 12}));
}

void Form1RowsTest::aRefusedDeleteTellsAndLeavesAtOnce() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(2);
    fixture.openPage();
    fixture.database().execute(
        u"delete * from %1 where %2 = '1'"_s.arg(fixture.page().table, fixture.page().codeColumn));
    // The routine ends without the bar's refresh: what stands in the counter is left alone.
    fixture.answers.expect(u"MsgBox"_s, [&fixture](QWidget& box) {
        fixture.at<QLabel>(u"StbTool(1)"_s).setText(u"as it was"_s);
        const auto& message = static_cast<QMessageBox&>(box);
        click(*message.button(QMessageBox::Yes));
    });
    fixture.answers.expectMsgBox();
    fixture.pressButton(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt& message = fixture.answers.seen().constLast();
    QCOMPARE(message.title, u"錯誤訊息"_s);
    QCOMPARE(message.text, u"無法刪除資料!"_s);
    QCOMPARE(message.icon, MsgIcon::Exclamation);
    QCOMPARE(message.buttons, QStringList{u"確定"_s});
    QCOMPARE(fixture.panel(1), u"as it was"_s);
    QCOMPARE(fixture.rows(), QStringList{fixture.page().row(u"2"_s, u"名2"_s)});
    // The window works on.
    fixture.pressButton(Refresh);
    QCOMPARE(fixture.shown(), u"資料錄:1/1|2|名2"_s);
}

void Form1RowsTest::aCodeThatEmployeesUseIsDeleted() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(1);
    addEmployee(fixture.database(), u"10001"_s,
                {{u"TitleNo", u"1"}, {u"UnitNo", u"1"}, {u"WorkNo", u"1"}, {u"ClsNo", u"1"}});
    insertRow(fixture.database(), u"Rule03"_s,
              {{u"EmpNo", u"10001"}, {u"YMD", QDate(2001, 3, 5)}, {u"TimeNo", u"1"}});
    const QStringList users =
        rowsOf(fixture.database(), u"Base06"_s) + rowsOf(fixture.database(), u"Rule03"_s);
    fixture.openPage();
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.pressButton(Delete);
    // The store keeps no tie between the code tables and those that use them.
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.rows(), QStringList());
    QCOMPARE(rowsOf(fixture.database(), u"Base06"_s) + rowsOf(fixture.database(), u"Rule03"_s), users);
}

void Form1RowsTest::aReturnToTheTabStandsOnTheFirstRow() {
    QFETCH(const int, tab);
    PlainPageFixture fixture(tab);
    fixture.addCodes(3);
    fixture.openPage();
    fixture.pressButton(Last);
    QCOMPARE(fixture.shown(), u"資料錄:3/3|3|名3"_s);
    fixture.clickTab(tab == 2 ? 0 : 2);
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    fixture.clickTab(tab);
    QCOMPARE(fixture.shown(), u"資料錄:1/3|1|名1"_s);
    fixture.pressButton(Last);
    fixture.clickTab(5);
    fixture.addCode(u"0"_s, u"新"_s);
    fixture.clickTab(tab);
    QCOMPARE(fixture.shown(), u"資料錄:1/4|0|新"_s);
}

int main(int argc, char** argv) {
    return runTests<Form1RowsTest>(argc, argv, AllScenarios);
}

#include "Form1RowsTest.moc"
