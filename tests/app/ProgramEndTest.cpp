#include "app/Toolbar.h"
#include "app/Window.h"
#include "store/RunTimeError.h"
#include "support/AppSupport.h"
#include "support/Dump.h"
#include "support/TableTakenAway.h"
#include "windows/StartProcess.h"

#include <QDialog>
#include <QFile>
#include <QPushButton>

#include <stdexcept>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The store is gone when a button of the toolbar is clicked.
int failAtTheToolbar(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    answers.expect(u"MsgBox"_s, reportAndClose);
    whenIdle(answers, [] {
        writeLine(QFile::remove(gDbPath + u"Pontrel.mdb"_s) ? u"removed"_s : u"kept"_s);
        click(*gMDI->Tb().button(3));
        writeLine(u"the caller goes on"_s);
    });
    return start();
}

/// A statement of a window's button fails: the table of punches is away.
int failInAModuleWindow(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    answers.expectClick(u"FrmI1Date"_s, u"Command1(0)"_s);
    answers.expect(u"MsgBox"_s, reportAndClose);
    whenIdle(answers, [] {
        click(*gMDI->Tb().button(3));
        const TableTakenAway away(gDbPath + u"Pontrel.mdb"_s, "Atte01");
        click(control(*moduleWindow(3), u"CtrlCmd0(9)"_s));
        writeLine(u"the caller goes on"_s);
    });
    return start();
}

/// The routine of a button in a modal dialog inserts a row in a stage and fails.
void openFailingDialog() {
    QDialog dialog(gMDI);
    dialog.setObjectName(u"Probe"_s);
    QPushButton button(u"失敗"_s, &dialog);
    button.setObjectName(u"Fail"_s);
    onEvent(&button, &QPushButton::clicked, &dialog, [] {
        OpenDB();
        const Stage stage(*gDatabase);
        gDatabase->execute(u"Insert into Base01(TitleNo,Title) Values('0001','經理')"_s);
        gDatabase->execute(u"delete * from Nowhere"_s);
    });
    dialog.exec();
    writeLine(u"the caller goes on"_s);
}

int failInADialog(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    answers.expectClick(u"Probe"_s, u"Fail"_s);
    answers.expect(u"MsgBox"_s, reportAndClose);
    whenIdle(answers, [] { guarded(openFailingDialog); });
    return start();
}

int failWithAnOpenStage(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    answers.expect(u"MsgBox"_s, reportAndClose);
    whenIdle(answers, [] {
        OpenDB();
        const Stage stage(*gDatabase);
        gDatabase->execute(u"Insert into Base01(TitleNo,Title) Values('0001','經理')"_s);
        endWithError(runTimeError(error::Overflow));
    });
    return start();
}

int throwUncaught(const QStringList& arguments) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    answers.expect(u"MsgBox"_s, reportAndClose);
    whenIdle(answers, [&arguments] {
        if (arguments.constFirst() == u"run-time error"_s)
            throw runTimeError(error::NoCurrentRecord);
        throw std::runtime_error("of another kind");
    });
    return start();
}

const Scenarios AllScenarios = {{u"failAtTheToolbar"_s, failAtTheToolbar},
                                {u"failInAModuleWindow"_s, failInAModuleWindow},
                                {u"failInADialog"_s, failInADialog},
                                {u"failWithAnOpenStage"_s, failWithAnOpenStage},
                                {u"throwUncaught"_s, throwUncaught}};

/// The message of the end, as reportAndClose() tells it.
QString endLine(int number, const QString& text) {
    return u"MsgBox|Pontrel|執行階段錯誤 '%1': %2|3"_s.arg(number).arg(text);
}

} // namespace

/// How a run-time error that nothing traps ends the program, seen from outside.
class ProgramEndTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anErrorAtTheToolbarEndsTheProgram();
    void anErrorInAModuleWindowEndsTheProgram();
    void anErrorInAModalDialogEndsTheProgramAtOnce();
    void anOpenStageIsCommittedAtTheEnd();
    void whatNoRoutineCatchesEndsTheProgram_data();
    void whatNoRoutineCatchesEndsTheProgram();
};

void ProgramEndTest::anErrorAtTheToolbarEndsTheProgram() {
    const TestStore store;
    OtherProcess program(store.folder(), u"failAtTheToolbar"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList({LoginLine, u"removed"_s, endLine(3024, u"找不到資料庫檔案"_s)}));
    QVERIFY(!QFile::exists(store.path()));
}

void ProgramEndTest::anErrorInAModuleWindowEndsTheProgram() {
    TestStore store;
    OtherProcess program(store.folder(), u"failInAModuleWindow"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList({LoginLine, endLine(3078, u"敘述中有不存在的資料表名稱"_s)}));
    QVERIFY(!QFile::exists(store.path() + u"-journal"_s));
}

void ProgramEndTest::anErrorInAModalDialogEndsTheProgramAtOnce() {
    TestStore store;
    OtherProcess program(store.folder(), u"failInADialog"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList({LoginLine, endLine(3078, u"敘述中有不存在的資料表名稱"_s)}));
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList{u"0001|經理"_s});
    QVERIFY(!QFile::exists(store.path() + u"-journal"_s));
}

void ProgramEndTest::anOpenStageIsCommittedAtTheEnd() {
    TestStore store;
    OtherProcess program(store.folder(), u"failWithAnOpenStage"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList({LoginLine, endLine(6, u"溢位"_s)}));
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList{u"0001|經理"_s});
    QVERIFY(!QFile::exists(store.path() + u"-journal"_s));
}

void ProgramEndTest::whatNoRoutineCatchesEndsTheProgram_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("message");
    QTest::addRow("a run-time error") << u"run-time error"_s << endLine(3021, u"沒有目前的資料錄"_s);
    QTest::addRow("another exception") << u"other"_s << endLine(51, u"內部錯誤"_s);
}

void ProgramEndTest::whatNoRoutineCatchesEndsTheProgram() {
    QFETCH(const QString, kind);
    QFETCH(const QString, message);
    const TestStore store;
    OtherProcess program(store.folder(), u"throwUncaught"_s, {kind});
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList({LoginLine, message}));
}

int main(int argc, char** argv) {
    return runTests<ProgramEndTest>(argc, argv, AllScenarios);
}

#include "ProgramEndTest.moc"
