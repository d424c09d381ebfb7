#include "tour/Tour.h"

#include "app/Application.h"
#include "app/Prompts.h"
#include "app/Start.h"
#include "setup/SetupDialog.h"
#include "tour/Clerk.h"
#include "tour/Output.h"
#include "tour/ProgramFolder.h"
#include "tour/TourSteps.h"
#include "windows/RegisterWindows.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <array>
#include <chrono>
#include <csignal>
#include <future>
#include <thread>

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

const QString FailurePicture = u"00-failed"_s;
constexpr int WholeTourMs = 300'000;
constexpr std::chrono::milliseconds BetweenLooks(5);
constexpr std::array EndingSignals = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t visitor = 0; ///< The process that takes the steps; 0 for none.

/// Ends the visitor, so that this process comes to clear its folder away.
void endVisitor(int) {
    if (visitor != 0)
        ::kill(visitor, SIGTERM);
}

/// The platform without a screen as one on which every window has its usual size: its own screen has 800 by
/// 800. Throws StepFailed.
QString platformOnScreen(const ProgramFolder& folder) {
    const QString path = folder.path() + u"/screens.json"_s;
    const QByteArray screens = R"({"screens": [{"name": "tour", "x": 0, "y": 0, "width": 1024, "height": 768,
                                "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(screens) != screens.size())
        throw StepFailed{u"%1: %2"_s.arg(path, file.errorString())};
    return u"offscreen:configfile="_s + path;
}

/// What Qt's file dialog remembers of its user stays out of the tour, and the tour out of it.
QProcessEnvironment environmentIn(const ProgramFolder& folder) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (environment.value(u"QT_QPA_PLATFORM"_s) == u"offscreen")
        environment.insert(u"QT_QPA_PLATFORM"_s, platformOnScreen(folder));
    environment.insert(u"XDG_CONFIG_HOME"_s, folder.path());
    if (!environment.contains(u"XDG_RUNTIME_DIR"_s))
        environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
    return environment;
}

/// Qt's messages, without what a platform without a screen tells of every window.
void writeMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type != QtWarningMsg || !message.startsWith(u"This plugin does not support "))
        print(qFormatLogMessage(type, context, message), stderr);
}

/// Runs the program in its folder with somebody who drives it. Throws StepFailed where it did not come to a
/// good end; what it has told itself is not told again.
void visit(const ProgramFolder& folder, const QString& pictureFolder) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setProcessEnvironment(environmentIn(folder));
    process.start(folder.program(), {argumentOf(Part::Visit), pictureFolder});
    if (!process.waitForStarted())
        throw StepFailed{u"%1 cannot be started: %2"_s.arg(folder.program(), process.errorString())};
    visitor = static_cast<std::sig_atomic_t>(process.processId());
    for (const int signal : EndingSignals)
        std::signal(signal, endVisitor);
    const bool ended = process.waitForFinished(WholeTourMs);
    for (const int signal : EndingSignals)
        std::signal(signal, SIG_DFL);
    visitor = 0;
    if (!ended) {
        process.kill();
        process.waitForFinished();
        throw StepFailed{u"it did not come to its end within %1 seconds."_s.arg(WholeTourMs / 1000)};
    }
    if (process.exitStatus() != QProcess::NormalExit)
        throw StepFailed{u"the program crashed or was killed."_s};
    if (process.exitCode() != 0)
        throw StepFailed{};
}

/// Shows the set-up as somebody meets it who has never started the program. It only ends by a cancel.
void showSetup() {
    SetupDialog dialog(u"/home/clerk/Pontrel"_s, [](const SetupWish&) { return false; });
    (void)runModal(dialog);
}

void tellFailure(const QString& during, const StepFailed& failure) {
    print(u"The tour failed%1: %2"_s.arg(during, failure.reason), stderr);
}

} // namespace

QString argumentOf(Part part) {
    return part == Part::Visit ? u"--visit"_s : u"--second-start"_s;
}

int takeTour(const QString& pictureFolder) {
    bool good = false;
    try {
        if (!QDir().mkpath(pictureFolder))
            throw StepFailed{u"the folder %1 cannot be made."_s.arg(pictureFolder)};
        QFile::remove(u"%1/%2.png"_s.arg(pictureFolder, FailurePicture));
        visit(ProgramFolder(), pictureFolder);
        good = true;
    } catch (const StepFailed& failure) {
        if (!failure.reason.isEmpty())
            tellFailure({}, failure);
    }
    if (!QDir(pictureFolder).isEmpty())
        print(u"The pictures are in %1"_s.arg(pictureFolder), good ? stdout : stderr);
    return good ? 0 : 1;
}

int takePart(Part part, const QString& pictureFolder, char** arguments) {
    qInstallMessageHandler(writeMessage);
    const PontrelApplication application(arguments);
    registerWindows();
    Clerk clerk(pictureFolder);
    TourSteps steps(clerk, pictureFolder);
    std::promise<void> lastStep;
    std::thread person([&] {
        try {
            if (part == Part::Visit)
                steps.takeAll();
            else
                steps.takeSecondStart();
            lastStep.set_value();
        } catch (const StepFailed& failure) {
            tellFailure(u" while "_s + steps.current(), failure);
            clerk.takePictureOfFailure(FailurePicture);
            Clerk::endProgram();
        }
    });
    if (part == Part::Visit)
        showSetup();
    const int status = Main();
    // The last look may still wait for its answer, and one that waits in vain tells so.
    const std::future<void> done = lastStep.get_future();
    while (done.wait_for(BetweenLooks) != std::future_status::ready)
        QCoreApplication::processEvents();
    person.join();
    if (status != 0)
        tellFailure({}, {u"the program ended with status %1."_s.arg(status)});
    return status == 0 ? 0 : 1;
}

} // namespace pontrel::tour
