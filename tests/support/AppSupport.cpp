#include "support/AppSupport.h"

#include "app/Module1.h"
#include "app/Start.h"
#include "rules/Session.h"
#include "support/Patience.h"
#include "windows/RegisterWindows.h"

#include <QApplication>
#include <QFile>
#include <QWheelEvent>

#include <csignal>
#include <cstdio>
#include <filesystem>

namespace pontrel::test {

using namespace Qt::StringLiterals;

namespace {

QString describeWidget(const QWidget& widget) {
    return u"%1 \"%2\""_s.arg(QString::fromLatin1(widget.metaObject()->className()), widget.objectName());
}

} // namespace

Shell::Shell(const TestStore& store) : window_(std::make_unique<MDI>()) {
    setProcessEnd([](int status) { throw ProgramEnded{status}; });
    registerWindows();
    gDbPath = databaseFolder(store.folder());
    gDbOpen = false;
    gOpenFailed = false;
    gLeaveValues = {};
    placeMainWindow(*window_);
    setAllRights(true);
    UnlockToolbar();
    trimSystemMenu();
    if (!QTest::qWaitForWindowActive(window_.get(), PatienceMs))
        qFatal("the main window does not become active");
}

Shell::~Shell() {
    setHourglass(false);
    window_.reset();
    CloseDB();
    gMDI = nullptr;
    gSysMenu = nullptr;
    gCloseText.clear();
    gOpenFailed = false;
    setAllRights(false);
    setProcessEnd({});
}

void setAllRights(bool given) {
    for (bool* flag : {&gF1, &gF2, &gF3, &gF4, &gF5, &gF6, &gF7, &gF8})
        *flag = given;
}

void click(QWidget& widget) {
    QWidget* window = widget.window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      widget.mapTo(window, widget.rect().center()));
    QCoreApplication::processEvents();
}

void turnWheel(QWidget& widget, bool up) {
    QWidget* window = widget.window();
    const QPointF place = widget.mapTo(window, widget.rect().center());
    constexpr int Step = 120;
    QWheelEvent turned(place, window->mapToGlobal(place), {}, {0, up ? Step : -Step}, Qt::NoButton,
                       Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&turned); // what does not come from outside moves no focus
    qApp->notify(window->windowHandle(), &turned);
}

std::optional<int> endOf(const std::function<void()>& routine) {
    try {
        routine();
    } catch (const ProgramEnded& end) {
        return end.status;
    }
    return std::nullopt;
}

OtherProcess::OtherProcess(const QString& programFolder, const QString& scenario,
                           const QStringList& arguments) {
    const QString program = programFolder + u"/pontrel"_s;
    if (!QFile::exists(program))
        placeExecutable(QCoreApplication::applicationFilePath(), program);
    process_.start(program, QStringList{u"--scenario"_s, scenario} + arguments);
    if (!process_.waitForStarted(PatienceMs))
        qFatal("%s does not start", qUtf8Printable(program));
}

OtherProcess::~OtherProcess() {
    if (isRunning())
        kill();
}

bool OtherProcess::waitForLine(const QString& line) {
    return QTest::qWaitFor([&] { return lines().contains(line) || !isRunning(); }, PatienceMs) &&
           lines().contains(line);
}

std::optional<int> OtherProcess::waitForEnd() {
    if (!QTest::qWaitFor([&] { return !isRunning(); }, PatienceMs) ||
        process_.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return process_.exitCode();
}

void OtherProcess::kill() {
    process_.kill();
    process_.waitForFinished(PatienceMs);
}

void OtherProcess::stop() {
    ::kill(static_cast<pid_t>(process_.processId()), SIGSTOP);
}

void OtherProcess::resume() {
    ::kill(static_cast<pid_t>(process_.processId()), SIGCONT);
}

QStringList OtherProcess::lines() {
    output_ += process_.readAllStandardOutput();
    return QString::fromUtf8(output_).split(u'\n', Qt::SkipEmptyParts);
}

void writeLine(const QString& line) {
    std::puts(qUtf8Printable(line));
    std::fflush(stdout);
}

void placeExecutable(const QString& executable, const QString& target) {
    const std::filesystem::path from = executable.toStdString();
    const std::filesystem::path to = target.toStdString();
    std::error_code refused;
    std::filesystem::create_hard_link(from, to, refused);
    if (refused)
        std::filesystem::copy_file(from, to);
}

void keepFoldersExecutable() {
    qputenv("TMPDIR", QFile::encodeName(QCoreApplication::applicationDirPath()));
}

std::optional<int> runScenario(int argc, char** argv, const Scenarios& scenarios) {
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments << QString::fromLocal8Bit(argv[index]);
    if (arguments.size() < 2 || arguments.constFirst() != u"--scenario"_s)
        return std::nullopt;
    return scenarios.at(arguments.at(1))(arguments.mid(2));
}

void noSuchControl(const QWidget& parent, const QString& name) {
    qFatal("%s has no control %s of that kind", qUtf8Printable(describeWidget(parent)), qUtf8Printable(name));
}

} // namespace pontrel::test
