#pragma once

#include "app/Module1.h"
#include "app/Start.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "support/AppSupport.h"
#include "windows/RegisterWindows.h"

#include <QMessageBox>
#include <QTabWidget>

#include <functional>

namespace pontrel::test {

/// In a process of its own: the login comes next and is answered as the user of a new store.
inline void expectLogin(PromptAnswers& answers) {
    answers.expect(QStringLiteral("frmLogin"), [](QWidget& dialog) {
        QTest::keyClicks(&control(dialog, QStringLiteral("txtUserName")), QStringLiteral("tester"));
        QTest::keyClicks(&control(dialog, QStringLiteral("txtPassword")), QStringLiteral("secret"));
        click(control(dialog, QStringLiteral("cmdOK")));
    });
}

/// The message that ends the program comes next: writes its title and first line and closes it.
inline void expectEndMessage(PromptAnswers& answers) {
    answers.expect(QStringLiteral("MsgBox"), [](QWidget& box) {
        const auto& message = static_cast<QMessageBox&>(box);
        writeLine(message.windowTitle() + u'|' + message.text().section(u'\n', 0, 0));
        QTest::keyClick(&box, Qt::Key_Escape);
    });
}

/// Runs the program; the routine once the main window stands idle after the login, as an event's routine. It
/// is told by a line that the routine came back.
inline int runProgram(const std::function<void()>& whenIdle) {
    QTimer idle;
    QObject::connect(&idle, &QTimer::timeout, &idle, [&idle, &whenIdle] {
        if (!gMDI || !gMDI->isVisible() || !gSysMenu)
            return;
        idle.stop();
        guarded(whenIdle);
        writeLine(QStringLiteral("the program goes on"));
    });
    idle.start(10);
    registerWindows();
    return Main();
}

/// The same for a run-time error in a module window: the routine has the window, opened on that tab. The
/// message of the error is written and closed.
inline int runOn(int module, int tab, const std::function<void(Window&)>& routine) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(static_cast<std::int16_t>(module));
        Window& form = *moduleWindow(module);
        control<QTabWidget>(form, QStringLiteral("SSTab1")).setCurrentIndex(tab);
        routine(form);
    });
}

/// Waits for the end of such a process. Empty where it ended with status 1 after a message of that run-time
/// error, else what it did.
[[nodiscard]] inline QString faultOfEnd(OtherProcess& program, int error) {
    const std::optional<int> status = program.waitForEnd();
    const QStringList lines = program.lines();
    if (status == 1 && lines.size() == 1 &&
        lines.constFirst().startsWith(QStringLiteral("Pontrel|執行階段錯誤 '%1':").arg(error)))
        return {};
    return QStringLiteral("status %1: %2").arg(status.value_or(-1)).arg(lines.join(u';'));
}

} // namespace pontrel::test
