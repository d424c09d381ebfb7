#include "app/SingleInstance.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Patience.h"
#include "support/SavedFiles.h"
#include "windows/StartProcess.h"

#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

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

/// The shared connection stands open in a stage, as in the middle of an action.
int standInAStage(const QStringList&) {
    PromptAnswers answers;
    answers.expect(u"frmLogin"_s, logIn);
    std::optional<Stage> stage;
    whenIdle(answers, [&stage] {
        OpenDB();
        stage.emplace(*gDatabase);
        gDatabase->execute(u"Insert into Base01(TitleNo) Values('0001')"_s);
        writeLine(u"in a stage"_s);
    });
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

const Scenarios AllScenarios = {{u"standAtTheFirstPrompt"_s, standAtTheFirstPrompt},
                                {u"standIdle"_s, standIdle},
                                {u"standInAStage"_s, standInAStage},
                                {u"closeWhenIdle"_s, closeWhenIdle},
                                {u"cancelLogin"_s, cancelLogin},
                                {u"logInAfterAFailedOpen"_s, logInAfterAFailedOpen},
                                {u"logInAndFail"_s, logInAndFail}};

const QString RunningLine = u"MsgBox|Pontrel|本程式執行中！|1"_s;
const QString OpenFailedLine = u"MsgBox|異常警告|資料庫開啟異常,請洽程式設計師|0"_s;

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
    void noOtherUserCanTakeThePlace();
    void aLostDisplayEndsTheProgram();
    void aStoreThatIsNoneIsToldAndLeftAsItIs_data();
    void aStoreThatIsNoneIsToldAndLeftAsItIs();
    void aStoreDamagedWithinEndsTheLogin();
    void aNullPasswordAtTheLoginEndsTheProgram();
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
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_CONFIG_HOME"_s, store.folder()); // not the habits of whoever runs the test
    program.setProcessEnvironment(environment);
    program.start(path, QStringList());
    QVERIFY(program.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(!SingleInstance(store.folder()).isFirst(), PatienceMs);
    OtherProcess second(store.folder(), u"standAtTheFirstPrompt"_s);
    QCOMPARE(second.waitForEnd(), std::optional(0));
    QCOMPARE(second.lines(), QStringList({RunningLine, u"Main returned"_s}));
    QCOMPARE(program.state(), QProcess::Running);
    program.kill();
    QVERIFY(program.waitForFinished(PatienceMs));
}

void StartTest::ofManyStartsAtOnceOneIsFirst() {
    const TestStore store;
    std::array<std::unique_ptr<OtherProcess>, 4> starts;
    for (auto& each : starts)
        each = std::make_unique<OtherProcess>(store.folder(), u"standAtTheFirstPrompt"_s);
    int first = 0;
    int refused = 0;
    for (const auto& each : starts) {
        QVERIFY(QTest::qWaitFor([&each] { return !each->lines().isEmpty(); }, PatienceMs));
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

void StartTest::noOtherUserCanTakeThePlace() {
    if (::geteuid() != 0)
        QSKIP("Only root can become another user.");
    const TestStore store;
    // Open to all, as a folder that the program has not made itself may be.
    const auto everybody = QFile::permissions(store.folder()) | QFile::ReadGroup | QFile::ExeGroup |
                           QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(store.folder(), everybody));
    QVERIFY(QFile::setPermissions(store.folder() + u"/DB"_s, everybody));
    {
        const SingleInstance before(store.folder());
        QVERIFY(before.isFirst());
    }
    const QByteArray lock = QFile::encodeName(SingleInstance::lockFile(store.folder()));
    // The saved user brings root back.
    QCOMPARE(::seteuid(65534), 0);
    const int folder = ::open(QFile::encodeName(store.folder() + u"/DB"_s).constData(), O_RDONLY | O_CLOEXEC);
    const bool reachable = folder >= 0;
    const bool held = reachable && ::flock(folder, LOCK_EX | LOCK_NB) == 0;
    const int taken = ::open(lock.constData(), O_RDONLY | O_CLOEXEC);
    const int reason = errno;
    QCOMPARE(::seteuid(0), 0);
    if (!reachable)
        QSKIP("The folder for temporary files is closed to other users.");
    QVERIFY(held);
    QCOMPARE(taken, -1);
    QCOMPARE(reason, EACCES);
    const SingleInstance first(store.folder());
    QVERIFY(first.isFirst());
    QVERIFY(!SingleInstance(store.folder()).isFirst());
    ::close(folder);
}

void StartTest::aLostDisplayEndsTheProgram() {
    QProcess display;
    display.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
    QVERIFY(display.waitForStarted());
    QByteArray number;
    QTRY_VERIFY_WITH_TIMEOUT((number += display.readAllStandardOutput()).endsWith('\n'), PatienceMs);
    TestStore store;
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DISPLAY", ":" + number.trimmed());
    OtherProcess program(store.folder(), u"standInAStage"_s);
    qputenv("QT_QPA_PLATFORM", platform);
    qunsetenv("DISPLAY");
    QVERIFY(program.waitForLine(u"in a stage"_s));
    display.kill();
    QVERIFY(display.waitForFinished(PatienceMs));
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QString errors = program.errors();
    QVERIFY2(!errors.contains(u"Sanitizer"_s), qPrintable(errors));
    QCOMPARE(rowsOf(store.database(), u"Base01"_s), QStringList{u"0001|null"_s});
    QVERIFY(!QFile::exists(store.path() + u"-journal"_s));
}

void StartTest::aStoreThatIsNoneIsToldAndLeftAsItIs_data() {
    QTest::addColumn<bool>("there");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const TestStore store;
    const QByteArray good = contentOf(store.path());
    QByteArray foreign = good;
    foreign.replace(68, 4, QByteArray(4, '\0')); // Where the file carries the mark of its program.
    QTest::addRow("missing") << false << QByteArray() << u"3024: 找不到資料庫檔案 ("_s;
    QTest::addRow("empty") << true << QByteArray() << u"3343: 這個檔案不是本系統的資料庫 ("_s;
    QTest::addRow("a text") << true << QByteArray("no store at all\n")
                            << u"3343: 這個檔案不是本系統的資料庫 ("_s;
    QTest::addRow("a store of another program") << true << foreign << u"3343: 這個檔案不是本系統的資料庫 ("_s;
    QTest::addRow("cut off within its first page") << true << good.left(1000) << u"3049: 資料庫檔案損壞 ("_s;
}

void StartTest::aStoreThatIsNoneIsToldAndLeftAsItIs() {
    QFETCH(const bool, there);
    QFETCH(const QByteArray, content);
    QFETCH(const QString, reason);
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
    QCOMPARE(lines.at(2), u"MsgBox|Pontrel|執行階段錯誤 '91': 沒有開啟資料庫或資料集 程式即將結束。|3"_s);
    const QString errors = program.errors();
    QVERIFY2(errors.contains(u"pontrel: "_s + reason + store.path() + u": "_s), qPrintable(errors));
    QCOMPARE(QFile::exists(store.path()), there);
    if (there)
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
    QCOMPARE(
        program.lines(),
        QStringList({LoginLine, u"MsgBox|Pontrel|執行階段錯誤 '94': Null 的使用無效 程式即將結束。|3"_s}));
}

int main(int argc, char** argv) {
    return runTests<StartTest>(argc, argv, AllScenarios);
}

#include "StartTest.moc"
