#include "app/Toolbar.h"
#include "app/Window.h"
#include "store/RunTimeError.h"
#include "support/AppSupport.h"
#include "support/Dump.h"
#include "support/RecordTyping.h"
#include "support/TableTakenAway.h"
#include "windows/StartProcess.h"

#include <SQLiteCpp/SQLiteCpp.h>

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

/// A stage that cannot be committed, for another program is reading, is lost on the way of an error.
int failAndLoseAStage(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    answers.expect(u"MsgBox"_s, reportAndClose);
    whenIdle(answers, [] {
        SQLite::Database reader((gDbPath + u"Pontrel.mdb"_s).toStdString());
        reader.exec("BEGIN; SELECT count(*) FROM Base01");
        OpenDB();
        guarded([] {
            runStage(*gDatabase, [] {
                gDatabase->execute(u"Insert into Base01(TitleNo,Title) Values('0001','經理')"_s);
                throw runTimeError(error::Overflow);
            });
        });
    });
    return start();
}

/// What a clerk saves is refused by the store: a page of the window, the button that begins, a box and what
/// is typed into it, the button that saves.
int saveRefused(const QStringList& arguments) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    answers.expect(u"MsgBox"_s, reportAndClose);
    whenIdle(answers, [&arguments] {
        const bool settings = arguments.at(0) == u"settings"_s;
        OpenToolWindow(settings ? 8 : 1);
        if (settings)
            openChildWindow(u"FrmSysSet"_s);
        const Window& form = settings ? *childWindow(u"FrmSysSet"_s) : *moduleWindow(1);
        click(control(form, arguments.at(1)));
        typeInto(control<QLineEdit>(form, arguments.at(2)), arguments.at(3));
        click(control(form, arguments.at(4)));
        writeLine(u"the caller goes on"_s);
    });
    return start();
}

const Scenarios AllScenarios = {
    {u"failAtTheToolbar"_s, failAtTheToolbar},   {u"failInAModuleWindow"_s, failInAModuleWindow},
    {u"failInADialog"_s, failInADialog},         {u"failWithAnOpenStage"_s, failWithAnOpenStage},
    {u"failAndLoseAStage"_s, failAndLoseAStage}, {u"saveRefused"_s, saveRefused},
    {u"throwUncaught"_s, throwUncaught}};

/// The message of the end, as reportAndClose() tells it.
QString endLine(int number, const QString& text) {
    return u"MsgBox|Pontrel|執行階段錯誤 '%1': %2 程式即將結束。|3"_s.arg(QString::number(number), text);
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
    void theTechnicalTextGoesToTheErrorOutput();
    void theEndByALostStageTellsBothCausesThere();
    void whatTheStoreRefusedIsNamed_data();
    void whatTheStoreRefusedIsNamed();
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

void ProgramEndTest::theTechnicalTextGoesToTheErrorOutput() {
    const TestStore store;
    OtherProcess program(store.folder(), u"failInADialog"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QString errors = program.errors();
    QVERIFY2(errors.contains(u"3078: 敘述中有不存在的資料表名稱 (Nowhere) in: delete * from Nowhere\n"_s),
             qUtf8Printable(errors));
}

void ProgramEndTest::theEndByALostStageTellsBothCausesThere() {
    TestStore store;
    OtherProcess program(store.folder(), u"failAndLoseAStage"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList({LoginLine, endLine(3049, u"磁碟已滿,進行中的資料沒有存入"_s)}));
    const QString errors = program.errors();
    QVERIFY2(errors.contains(u"3049: 磁碟已滿,進行中的資料沒有存入 (database is locked, after: 6: 溢位)\n"_s),
             qUtf8Printable(errors));
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList());
}

void ProgramEndTest::whatTheStoreRefusedIsNamed_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const QStringList code{u"titles"_s, u"CtrlCmd0(0)"_s, u"Text1(0)"_s};
    QTest::addRow("a code that is there") << code + QStringList{u"a"_s, u"CtrlCmd0(4)"_s}
                                          << endLine(3022, u"代碼重複,資料無法存檔 欄位：職稱代碼「a」"_s);
    QTest::addRow("no code") << code + QStringList{QString(), u"CtrlCmd0(4)"_s}
                             << endLine(3314, u"必要的欄位沒有輸入資料 欄位：職稱代碼"_s);
    QTest::addRow("a text as a number")
        << QStringList{u"settings"_s, u"CtrlCmd(0)"_s, u"Text1(1)"_s, u"five"_s, u"CtrlCmd(2)"_s}
        << endLine(3421, u"輸入的資料不合欄位的型態 欄位：員工代碼長度「five」"_s);
}

void ProgramEndTest::whatTheStoreRefusedIsNamed() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, message);
    TestStore store;
    store.database().execute(u"Insert into Base01(TitleNo,Title) Values('A','經理')"_s);
    OtherProcess program(store.folder(), u"saveRefused"_s, arguments);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList({LoginLine, message}));
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList{u"A|經理"_s});
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
