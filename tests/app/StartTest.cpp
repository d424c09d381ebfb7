#include "app/Module1.h"
#include "app/RegisterWindows.h"
#include "app/SingleInstance.h"
#include "store/RunTimeError.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"

#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <stdexcept>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

// What the further processes do. Each runs Main as the program's entry does.

void report(const QWidget& dialog) {
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    const QString text = box ? box->text().simplified() : QString();
    const int icon = box ? static_cast<int>(box->icon()) : 0;
    writeLine(u"%1|%2|%3|%4"_s.arg(dialog.objectName(), dialog.windowTitle(), text, QString::number(icon)));
}

void reportAndClose(QWidget& dialog) {
    report(dialog);
    QTest::keyClick(&dialog, Qt::Key_Escape);
}

void logIn(QWidget& dialog) {
    report(dialog);
    QTest::keyClicks(&control(dialog, u"txtUserName"_s), u"tester"_s);
    QTest::keyClicks(&control(dialog, u"txtPassword"_s), u"secret"_s);
    click(control(dialog, u"cmdOK"_s));
}

int start() {
    registerWindows();
    const int status = Main();
    writeLine(u"Main returned"_s);
    return status;
}

/// Runs the routine once the main window stands idle after the login.
void whenIdle(QObject& context, std::function<void()> routine) {
    QTimer::singleShot(10, &context, [&context, routine = std::move(routine)] {
        if (gMDI && gMDI->isVisible() && gSysMenu)
            routine();
        else
            whenIdle(context, routine);
    });
}

/// Tells what comes first and stays: at the login; a message is closed.
int standAtTheFirstPrompt(const QStringList&) {
    QTimer timer;
    const QWidget* told = nullptr;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&told] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog || dialog == told)
            return;
        told = dialog;
        report(*dialog);
        if (auto* box = qobject_cast<QMessageBox*>(dialog))
            box->reject();
    });
    timer.start(5);
    return start();
}

int standIdle(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    whenIdle(answers, [] { writeLine(u"idle"_s); });
    return start();
}

int closeWhenIdle(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, [](QWidget& dialog) {
        writeLine(gMDI && !gMDI->isVisible() ? u"hidden"_s : u"shown"_s);
        logIn(dialog);
    });
    whenIdle(answers, [] {
        writeLine(gMDI->windowTitle());
        gMDI->close();
    });
    return start();
}

int cancelLogin(const QStringList& arguments) {
    const std::map<QString, PromptAnswers::Action> ways = {
        {u"button"_s, [](QWidget& dialog) { click(control(dialog, u"cmdCancel"_s)); }},
        {u"escape"_s, [](QWidget&) { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); }},
        {u"close box"_s, [](QWidget& dialog) { dialog.close(); }},
        {u"enter on the button"_s, [](QWidget& dialog) {
             control(dialog, u"cmdCancel"_s).setFocus();
             QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
         }}};
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, [&ways, &arguments](QWidget& dialog) {
        report(dialog);
        ways.at(arguments.constFirst())(dialog);
        writeLine(u"the dialog goes on"_s);
    });
    return start();
}

int logInAfterAFailedOpen(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, reportAndClose);
    answers.expect(u"frmLogin"_s, logIn);
    answers.expect(u"MsgBox"_s, reportAndClose);
    return start();
}

int logInAndFail(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    answers.expect(u"MsgBox"_s, reportAndClose);
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

const Scenarios AllScenarios = {{u"standAtTheFirstPrompt"_s, standAtTheFirstPrompt},
                                {u"standIdle"_s, standIdle},
                                {u"closeWhenIdle"_s, closeWhenIdle},
                                {u"cancelLogin"_s, cancelLogin},
                                {u"logInAfterAFailedOpen"_s, logInAfterAFailedOpen},
                                {u"logInAndFail"_s, logInAndFail},
                                {u"failInADialog"_s, failInADialog},
                                {u"failWithAnOpenStage"_s, failWithAnOpenStage},
                                {u"throwUncaught"_s, throwUncaught}};

const QString LoginLine = u"frmLogin|登入||0"_s;
const QString RunningLine = u"MsgBox|Pontrel|本程式執行中！|1"_s;
const QString OpenFailedLine = u"MsgBox|異常警告|資料庫開啟異常,請洽程式設計師|0"_s;

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeContent(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(path));
}

} // namespace

class StartTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aGoodLoginLeadsToTheMainWindowAndClosingEnds();
    void cancellingTheLoginEndsWithoutAnError_data();
    void cancellingTheLoginEndsWithoutAnError();
    void aSecondStartAtTheLoginIsRefused();
    void aSecondStartBehindTheLoginIsRefused();
    void theProgramItselfHoldsItsPlace();
    void ofManyStartsAtOnceOneIsFirst();
    void aKilledProgramFreesItsPlace();
    void anotherProgramFolderIsAnotherPlace();
    void everyPathToTheFolderIsTheSamePlace();
    void aStoreThatIsNoneIsToldAndLeftAsItIs_data();
    void aStoreThatIsNoneIsToldAndLeftAsItIs();
    void aStoreDamagedWithinEndsTheLogin();
    void aNullPasswordAtTheLoginEndsTheProgram();
    void anErrorInAModalDialogEndsTheProgramAtOnce();
    void anOpenStageIsCommittedAtTheEnd();
    void whatNoRoutineCatchesEndsTheProgram_data();
    void whatNoRoutineCatchesEndsTheProgram();
};

void StartTest::aGoodLoginLeadsToTheMainWindowAndClosingEnds() {
    const TestStore store;
    OtherProcess program(store.folder(), u"closeWhenIdle"_s);
    QCOMPARE(program.waitForEnd(), std::optional(0));
    QCOMPARE(program.lines(),
             QStringList({u"hidden"_s, LoginLine, u"Pontrel V1.1 - Norvale"_s, u"Main returned"_s}));
}

void StartTest::cancellingTheLoginEndsWithoutAnError_data() {
    QTest::addColumn<QString>("way");
    for (const auto* way : {"button", "escape", "close box", "enter on the button"})
        QTest::addRow("%s", way) << QString::fromLatin1(way);
}

void StartTest::cancellingTheLoginEndsWithoutAnError() {
    QFETCH(const QString, way);
    const TestStore store;
    OtherProcess program(store.folder(), u"cancelLogin"_s, {way});
    QCOMPARE(program.waitForEnd(), std::optional(0));
    QCOMPARE(program.lines(), QStringList{LoginLine});
}

void StartTest::aSecondStartAtTheLoginIsRefused() {
    const TestStore store;
    OtherProcess first(store.folder(), u"standAtTheFirstPrompt"_s);
    QVERIFY(first.waitForLine(LoginLine));
    OtherProcess second(store.folder(), u"standAtTheFirstPrompt"_s);
    QCOMPARE(second.waitForEnd(), std::optional(0));
    QCOMPARE(second.lines(), QStringList({RunningLine, u"Main returned"_s}));
    QVERIFY(first.isRunning());
    QCOMPARE(first.lines(), QStringList{LoginLine});
}

void StartTest::aSecondStartBehindTheLoginIsRefused() {
    const TestStore store;
    OtherProcess first(store.folder(), u"standIdle"_s);
    QVERIFY(first.waitForLine(u"idle"_s));
    OtherProcess second(store.folder(), u"standAtTheFirstPrompt"_s);
    QCOMPARE(second.waitForEnd(), std::optional(0));
    QCOMPARE(second.lines(), QStringList({RunningLine, u"Main returned"_s}));
    QVERIFY(first.isRunning());
}

void StartTest::theProgramItselfHoldsItsPlace() {
    const TestStore store;
    const QString path = store.folder() + u"/program"_s;
    placeExecutable(QStringLiteral(PONTREL_PROGRAM), path);
    QProcess program;
    program.start(path, QStringList());
    QVERIFY(program.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(!SingleInstance(store.folder()).isFirst(), 30'000);
    OtherProcess second(store.folder(), u"standAtTheFirstPrompt"_s);
    QCOMPARE(second.waitForEnd(), std::optional(0));
    QCOMPARE(second.lines(), QStringList({RunningLine, u"Main returned"_s}));
    QCOMPARE(program.state(), QProcess::Running);
    program.kill();
    QVERIFY(program.waitForFinished());
}

void StartTest::ofManyStartsAtOnceOneIsFirst() {
    const TestStore store;
    std::array<std::unique_ptr<OtherProcess>, 4> starts;
    for (auto& each : starts)
        each = std::make_unique<OtherProcess>(store.folder(), u"standAtTheFirstPrompt"_s);
    int first = 0;
    int refused = 0;
    for (const auto& each : starts) {
        QVERIFY(QTest::qWaitFor([&each] { return !each->lines().isEmpty(); }, 30'000));
        first += each->lines().constFirst() == LoginLine ? 1 : 0;
        refused += each->lines().constFirst() == RunningLine ? 1 : 0;
    }
    QCOMPARE(first, 1);
    QCOMPARE(refused, 3);
}

void StartTest::aKilledProgramFreesItsPlace() {
    const TestStore store;
    OtherProcess first(store.folder(), u"standAtTheFirstPrompt"_s);
    QVERIFY(first.waitForLine(LoginLine));
    first.kill();
    OtherProcess second(store.folder(), u"standAtTheFirstPrompt"_s);
    QVERIFY(second.waitForLine(LoginLine));
}

void StartTest::anotherProgramFolderIsAnotherPlace() {
    const TestStore store;
    const TestStore other;
    OtherProcess first(store.folder(), u"standAtTheFirstPrompt"_s);
    OtherProcess second(other.folder(), u"standAtTheFirstPrompt"_s);
    QVERIFY(first.waitForLine(LoginLine));
    QVERIFY(second.waitForLine(LoginLine));
}

void StartTest::everyPathToTheFolderIsTheSamePlace() {
    const TestStore store;
    const TestStore other;
    const QString link = other.folder() + u"/連結"_s;
    QVERIFY(QFile::link(store.folder(), link));
    const SingleInstance first(store.folder());
    QVERIFY(first.isFirst());
    for (const QString& path : {link, link + u'/', store.folder() + u"/DB/.."_s, store.folder()})
        QVERIFY(!SingleInstance(path).isFirst());
    QVERIFY(SingleInstance(other.folder()).isFirst());
}

void StartTest::aStoreThatIsNoneIsToldAndLeftAsItIs_data() {
    QTest::addColumn<bool>("there");
    QTest::addColumn<QByteArray>("content");
    const TestStore store;
    const QByteArray good = contentOf(store.path());
    QByteArray foreign = good;
    foreign.replace(68, 4, QByteArray(4, '\0')); // Where the file carries the mark of its program.
    QTest::addRow("missing") << false << QByteArray();
    QTest::addRow("empty") << true << QByteArray();
    QTest::addRow("a text") << true << QByteArray("no store at all\n");
    QTest::addRow("a store of another program") << true << foreign;
    QTest::addRow("cut off within its first page") << true << good.left(1000);
}

void StartTest::aStoreThatIsNoneIsToldAndLeftAsItIs() {
    QFETCH(const bool, there);
    QFETCH(const QByteArray, content);
    const TestStore store;
    QVERIFY(QFile::remove(store.path()));
    if (there)
        writeContent(store.path(), content);
    OtherProcess program(store.folder(), u"logInAfterAFailedOpen"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), OpenFailedLine);
    QCOMPARE(lines.at(1), LoginLine);
    QVERIFY2(lines.at(2).startsWith(u"MsgBox|Pontrel|執行階段錯誤 '91': "_s), qUtf8Printable(lines.at(2)));
    QCOMPARE(QFile::exists(store.path()), there);
    QCOMPARE(contentOf(store.path()), content);
}

void StartTest::aStoreDamagedWithinEndsTheLogin() {
    const TestStore store;
    QByteArray content = contentOf(store.path());
    constexpr qsizetype firstPages = 8192;
    QVERIFY(content.size() > 4 * firstPages);
    content.replace(firstPages, content.size() - firstPages, QByteArray(content.size() - firstPages, '\x5a'));
    writeContent(store.path(), content);
    OtherProcess program(store.folder(), u"logInAndFail"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QVERIFY2(lines.constLast().startsWith(u"MsgBox|Pontrel|執行階段錯誤 "_s),
             qUtf8Printable(lines.join(u'\n')));
    QVERIFY(!lines.contains(u"Main returned"_s));
    QCOMPARE(contentOf(store.path()), content);
}

void StartTest::aNullPasswordAtTheLoginEndsTheProgram() {
    TestStore store;
    insertRow(store.database(), u"syst02"_s, {{u"Account", u"a"_s}});
    OtherProcess program(store.folder(), u"logInAndFail"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(),
             QStringList({LoginLine, u"MsgBox|Pontrel|執行階段錯誤 '94': Null 的使用無效|3"_s}));
}

void StartTest::anErrorInAModalDialogEndsTheProgramAtOnce() {
    TestStore store;
    OtherProcess program(store.folder(), u"failInADialog"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0), LoginLine);
    QVERIFY2(lines.at(1).startsWith(u"MsgBox|Pontrel|執行階段錯誤 '3078': "_s), qUtf8Printable(lines.at(1)));
    QVERIFY(lines.at(1).endsWith(u"|3"_s));
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList{u"0001|經理"_s});
    QVERIFY(!QFile::exists(store.path() + u"-journal"_s));
}

void StartTest::anOpenStageIsCommittedAtTheEnd() {
    TestStore store;
    OtherProcess program(store.folder(), u"failWithAnOpenStage"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines().size(), 2);
    QVERIFY(program.lines().at(1).startsWith(u"MsgBox|Pontrel|執行階段錯誤 '6': "_s));
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList{u"0001|經理"_s});
    QVERIFY(!QFile::exists(store.path() + u"-journal"_s));
}

void StartTest::whatNoRoutineCatchesEndsTheProgram_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("message");
    QTest::addRow("a run-time error") << u"run-time error"_s << u"執行階段錯誤 '3021': "_s;
    QTest::addRow("another exception") << u"other"_s << u"執行階段錯誤 '51': 內部錯誤"_s;
}

void StartTest::whatNoRoutineCatchesEndsTheProgram() {
    QFETCH(const QString, kind);
    QFETCH(const QString, message);
    const TestStore store;
    OtherProcess program(store.folder(), u"throwUncaught"_s, {kind});
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines().size(), 2);
    QVERIFY2(program.lines().at(1).startsWith(u"MsgBox|Pontrel|"_s + message),
             qUtf8Printable(program.lines().at(1)));
}

int main(int argc, char** argv) {
    return runTests<StartTest>(argc, argv, AllScenarios);
}

#include "StartTest.moc"
