#pragma once

#include "app/Application.h"
#include "app/Events.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/WindowRegistry.h"
#include "rules/Session.h"
#include "support/TestStore.h"

#include <QImage>
#include <QPointer>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace pontrel::test {

/// What the program does in a process of its own, by name; the result is the exit status.
using Scenarios = std::map<QString, std::function<int(const QStringList& arguments)>>;

/// For main(): runs the test class in the program's application class, or where the program was started by
/// OtherProcess, the named scenario.
template<typename Test>
int runTests(int argc, char** argv, const Scenarios& scenarios = {});

/// The shell over a store, as it stands after Main and a good login: the main window shown and idle, all
/// rights given, the windows registered. The end of the process throws ProgramEnded. Everything goes with the
/// object.
class Shell {
  public:
    explicit Shell(const TestStore& store);
    ~Shell();
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    [[nodiscard]] MDI& window() { return *window_; }

  private:
    std::unique_ptr<MDI> window_;
};

/// Gives or takes all eight rights.
void setAllRights(bool given);

/// The control of that object name below the parent. Ends the test where there is none.
template<typename Control = QWidget>
Control& control(const QWidget& parent, const QString& name);

/// Clicks the middle of a widget as a mouse does: through its window, so that nothing disabled, covered or
/// blocked by a dialog answers.
void click(QWidget& widget);

/// Turns the wheel a step up over the middle of the widget, or down, as the mouse does.
void turnWheel(QWidget& widget, bool up);

/// Runs the routine; the status with which it would have ended the process, nothing where it came back. The
/// routine is to be called straight: Qt's own frames lose memory when they are left by force, so
/// that the end behind a click is for OtherProcess.
[[nodiscard]] std::optional<int> endOf(const std::function<void()>& routine);

/// What a window walker finds wrong with a window as it stands on screen, of its tabs the one in front: a
/// control without object name or accessible name, or with the name of another; a label with an access key or
/// a colon but without a buddy; a button that Enter would press from elsewhere; a caption without room
/// enough; a control that reaches out of its place or covers its neighbour.
[[nodiscard]] QStringList controlFaults(QWidget& window);

/// The controls of a shown window that no press of Tab reaches. Presses Tab until it comes round: the focus
/// ends somewhere else, and what the window does when a field is left is done.
[[nodiscard]] QStringList tabFaults(QWidget& window);

/// The names of the grids in sight of which some columns are not, but by a scroll bar.
[[nodiscard]] QStringList gridsOutOfSight(const QWidget& window);

/// A modal dialog as it stood when it was answered.
struct SeenPrompt {
    QString objectName;
    QString title;
    QString text;        ///< Of a message box or an input box.
    QStringList buttons; ///< Captions without access keys, from left to right.
    MsgIcon icon = MsgIcon::None;
    QImage picture;
};

/// Answers modal dialogs while a test's event loop stands in them. Each expectation answers one, in order;
/// the same dialog may be answered several times. A dialog that nobody expected is closed and told by
/// trouble().
class PromptAnswers : public QObject {
    Q_OBJECT
  public:
    using Action = std::function<void(QWidget& dialog)>;

    PromptAnswers();
    /// Fails the test where there is trouble that nobody has asked for since.
    ~PromptAnswers() override;
    PromptAnswers(const PromptAnswers&) = delete;
    PromptAnswers& operator=(const PromptAnswers&) = delete;

    /// The next dialog is the one of that object name; the action answers it.
    PromptAnswers& expect(const QString& objectName, Action action);
    /// The next is the one of that object name; the action looks at it and it stays open.
    PromptAnswers& expectAndLeave(const QString& objectName, Action action);
    /// The next is a message box, answered by its button.
    PromptAnswers& expectMsgBox(MsgAnswer answer = MsgAnswer::Ok);
    /// The next is the dialog, answered by a click on its control.
    PromptAnswers& expectClick(const QString& objectName, const QString& controlName);
    /// The next is the file dialog, where the file is chosen by its path; an empty path cancels.
    PromptAnswers& expectFile(const QString& path);

    [[nodiscard]] const QList<SeenPrompt>& seen() const { return seen_; }
    /// Empty where every expected dialog has come, in order, and no other.
    [[nodiscard]] QString trouble() const;

  private:
    struct Expectation {
        QString objectName;
        Action action;
        bool leave;
    };

    void poll();
    [[nodiscard]] bool answer(QWidget& dialog); ///< Whether the dialog is done with for now.

    QTimer timer_;
    QList<Expectation> expected_;
    QList<SeenPrompt> seen_;
    QStringList trouble_;
    QList<QPointer<QWidget>> inAction_;
    int waited_ = 0;
    mutable QString told_; ///< What trouble() has told last.
};

/// Another process that runs a scenario of this test program as the program pontrel of a program folder: a
/// copy of the executable stands in the folder, so that the folder is the program's. Killed with the object.
class OtherProcess {
  public:
    OtherProcess(const QString& programFolder, const QString& scenario, const QStringList& arguments = {});
    ~OtherProcess();
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    /// Waits until it has written the line; false where it ends or half a minute passes without it.
    [[nodiscard]] bool waitForLine(const QString& line);
    /// Waits for its end and tells the exit status; nothing where it hangs or crashes.
    [[nodiscard]] std::optional<int> waitForEnd();
    /// Ends it as a crash of the machine would.
    void kill();
    /// Lets it do nothing until it is resumed, as a machine does that has no time for it.
    void stop();
    void resume();

    [[nodiscard]] bool isRunning() const { return process_.state() != QProcess::NotRunning; }
    /// All that it has written by now.
    [[nodiscard]] QStringList lines();
    /// Whether the last of these lines is a whole one.
    [[nodiscard]] bool endsALine() const { return output_.endsWith('\n'); }
    [[nodiscard]] QString errors() { return QString::fromUtf8(process_.readAllStandardError()); }

  private:
    QProcess process_;
    QByteArray output_;
};

/// Writes a line for the process that started a scenario.
void writeLine(const QString& line);

/// Puts a copy of an executable into a folder, without copying its bytes where the file system allows it.
void placeExecutable(const QString& executable, const QString& target);

/// Puts the temporary folders of this process beside its executable: those of the system may refuse to run
/// programs.
void keepFoldersExecutable();

/// The scenario that the arguments name, where OtherProcess has started the program.
[[nodiscard]] std::optional<int> runScenario(int argc, char** argv, const Scenarios& scenarios);

[[noreturn]] void noSuchControl(const QWidget& parent, const QString& name);

template<typename Test>
int runTests(int argc, char** argv, const Scenarios& scenarios) {
    PontrelApplication application(argv);
    if (!scenarios.empty())
        keepFoldersExecutable();
    if (const std::optional<int> status = runScenario(argc, argv, scenarios))
        return *status;
    Test tests;
    return QTest::qExec(&tests, argc, argv);
}

template<typename Control>
Control& control(const QWidget& parent, const QString& name) {
    auto* found = parent.findChild<Control*>(name);
    if (!found)
        noSuchControl(parent, name);
    return *found;
}

} // namespace pontrel::test
