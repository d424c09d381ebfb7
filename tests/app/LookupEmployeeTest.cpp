#include "app/LookupFixture.h"
#include "app/LookupProcess.h"
#include "store/DataSource.h"

#include <QInputMethodEvent>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

using enum LookupKind;

/// Employees whose codes and names begin alike in part.
void addEmployees(Database& database) {
    addEmployee(database, u"A1"_s, {{u"EmpName", u"王小明"}});
    addEmployee(database, u"AB1"_s, {{u"EmpName", u"陳美惠"}, {u"LeaveDate", QDate(2001, 3, 5)}});
    addEmployee(database, u"AB2"_s, {{u"EmpName", u"陳大同"}});
    addEmployee(database, u"B1"_s, {{u"EmpName", u"林志明"}});
}

const QStringList AllEmployees{u"A1|王小明|"_s, u"AB1|陳美惠|2001/3/5"_s, u"AB2|陳大同|"_s, u"B1|林志明|"_s};

QLineEdit& box(const QWidget& dialog, int index) {
    return control<QLineEdit>(dialog, u"Text%1"_s.arg(index));
}

/// Commits a text as an input method does.
void compose(QLineEdit& box, const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(&box, &event);
}

QString recordSourceOf(const QWidget& dialog) {
    return dialog.findChild<DataSource*>(u"Data1"_s)->RecordSource();
}

/// In a process of its own: types an apostrophe into a box of the lookup behind the login.
int typeAnApostrophe(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    answers.expect(u"QFrmEmpNO"_s, [&answers, &arguments](QWidget& dialog) {
        expectEndMessage(answers);
        QTest::keyClicks(&control(dialog, arguments.constFirst()), u"O'"_s);
        writeLine(u"the dialog goes on"_s);
    });
    return runProgram([] { Lookup::ask(QFrmEmpNO, gMDI); });
}

const Scenarios AllScenarios = {{u"typeAnApostrophe"_s, typeAnApostrophe}};

} // namespace

/// The lookup of employees, with its two search boxes.
class LookupEmployeeTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void formerEmployeesAreListedWithTheirLeavingDate();
    void typingABMovesToTheFirstCodeThatStartsSo();
    void aNamesStartMovesTheList();
    void withoutAMatchTheListStays();
    void capitalsDoNotCount();
    void typingInAnEmptyListDoesNothing();
    void leavingTheBoxesChangesNothingThatIsSeen();
    void enterMovesOnAlsoOnTheButtons();
    void anApostropheEndsTheProgram_data();
    void anApostropheEndsTheProgram();
};

void LookupEmployeeTest::formerEmployeesAreListedWithTheirLeavingDate() {
    LookupFixture fixture;
    addEmployees(fixture.database());
    fixture.ask(QFrmEmpNO, [](QWidget& dialog) {
        QCOMPARE(listOf(dialog), AllEmployees);
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickEmpNo, u"AB1"_s);
}

void LookupEmployeeTest::typingABMovesToTheFirstCodeThatStartsSo() {
    LookupFixture fixture;
    addEmployees(fixture.database());
    fixture.ask(QFrmEmpNO, [](QWidget& dialog) {
        QVERIFY(box(dialog, 1).hasFocus());
        clickRow(dialog, 3);
        QTest::keyClicks(&box(dialog, 1), u"A"_s);
        QCOMPARE(currentOf(dialog), u"A1|王小明"_s);
        QTest::keyClicks(&box(dialog, 1), u"B"_s);
        QCOMPARE(currentOf(dialog), u"AB1|陳美惠"_s);
        QCOMPARE(control<TDBGrid>(dialog, u"TDBGrid2"_s).currentIndex().row(), 1);
        QCOMPARE(listOf(dialog), AllEmployees);
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickEmpNo, u"AB1"_s);
}

void LookupEmployeeTest::aNamesStartMovesTheList() {
    LookupFixture fixture;
    addEmployees(fixture.database());
    fixture.ask(QFrmEmpNO, [](QWidget& dialog) {
        compose(box(dialog, 2), u"陳"_s);
        QCOMPARE(currentOf(dialog), u"AB1|陳美惠"_s);
        compose(box(dialog, 2), u"大"_s);
        QCOMPARE(currentOf(dialog), u"AB2|陳大同"_s);
        QTest::keyClick(&box(dialog, 2), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box(dialog, 2), Qt::Key_Delete);
        QCOMPARE(currentOf(dialog), u"A1|王小明"_s);
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
}

void LookupEmployeeTest::withoutAMatchTheListStays() {
    LookupFixture fixture;
    addEmployees(fixture.database());
    fixture.ask(QFrmEmpNO, [](QWidget& dialog) {
        clickRow(dialog, 2);
        QTest::keyClicks(&box(dialog, 1), u"Z"_s);
        QCOMPARE(currentOf(dialog), u"AB2|陳大同"_s);
        compose(box(dialog, 2), u"明"_s);
        QCOMPARE(currentOf(dialog), u"AB2|陳大同"_s);
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickEmpNo, u"AB2"_s);
}

void LookupEmployeeTest::capitalsDoNotCount() {
    LookupFixture fixture;
    addEmployees(fixture.database());
    fixture.ask(QFrmEmpNO, [](QWidget& dialog) {
        QTest::keyClicks(&box(dialog, 1), u"ab"_s);
        QCOMPARE(currentOf(dialog), u"AB1|陳美惠"_s);
        clickCancel(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
}

void LookupEmployeeTest::typingInAnEmptyListDoesNothing() {
    LookupFixture fixture;
    gPickEmpNo = u"earlier"_s;
    fixture.ask(QFrmEmpNO, [](QWidget& dialog) {
        QTest::keyClicks(&box(dialog, 1), u"A"_s);
        compose(box(dialog, 2), u"王"_s);
        QCOMPARE(listOf(dialog), QStringList());
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickEmpNo, QString());
}

void LookupEmployeeTest::leavingTheBoxesChangesNothingThatIsSeen() {
    LookupFixture fixture;
    addEmployees(fixture.database());
    fixture.ask(QFrmEmpNO, [](QWidget& dialog) {
        QCOMPARE(recordSourceOf(dialog), u"Base06"_s);
        QTest::keyClicks(&box(dialog, 1), u"AB"_s);
        QTest::keyClick(&box(dialog, 1), Qt::Key_Tab);
        QCOMPARE(recordSourceOf(dialog),
                 u"select * from Base06 where empno like 'AB*' order by EmpNo,EmpName"_s);
        QCOMPARE(listOf(dialog), AllEmployees);
        compose(box(dialog, 2), u"林"_s);
        QTest::keyClick(&box(dialog, 2), Qt::Key_Tab);
        QCOMPARE(recordSourceOf(dialog),
                 u"select * from Base06 where empno like '林*' and empname like  '林*' "
                 u"order by EmpNo,EmpName"_s);
        QCOMPARE(listOf(dialog), AllEmployees);
        QCOMPARE(currentOf(dialog), u"B1|林志明"_s);
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickEmpNo, u"B1"_s);
}

void LookupEmployeeTest::enterMovesOnAlsoOnTheButtons() {
    LookupFixture fixture;
    addEmployees(fixture.database());
    fixture.ask(QFrmEmpNO, [](QWidget& dialog) {
        QWindow* window = dialog.windowHandle();
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(box(dialog, 2).hasFocus());
        QTest::keyClick(window, Qt::Key_Enter);
        QCOMPARE(dialog.focusWidget()->objectName(), u"TDBGrid2"_s);
        QTest::keyClick(window, Qt::Key_Tab);
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(dialog.focusWidget()->objectName(), u"Command1(1)"_s);
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(box(dialog, 1).hasFocus());
        QVERIFY(dialog.isVisible());
        // The blank presses a button.
        control(dialog, u"Command1(0)"_s).setFocus();
        QTest::keyClick(window, Qt::Key_Space);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickEmpNo, u"A1"_s);
}

void LookupEmployeeTest::anApostropheEndsTheProgram_data() {
    QTest::addColumn<QString>("box");
    QTest::addRow("in the code") << u"Text1"_s;
    QTest::addRow("in the name") << u"Text2"_s;
}

void LookupEmployeeTest::anApostropheEndsTheProgram() {
    QFETCH(const QString, box);
    TestStore store;
    addEmployees(store.database());
    OtherProcess program(store.folder(), u"typeAnApostrophe"_s, {box});
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines().size(), 1);
    QVERIFY2(program.lines().constFirst().startsWith(u"Pontrel|執行階段錯誤 '3075'"_s),
             qUtf8Printable(program.lines().constFirst()));
}

int main(int argc, char** argv) {
    return runTests<LookupEmployeeTest>(argc, argv, AllScenarios);
}

#include "LookupEmployeeTest.moc"
