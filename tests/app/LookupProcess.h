#pragma once

#include "app/Module1.h"
#include "support/AppSupport.h"
#include "windows/RegisterWindows.h"
#include "app/Start.h"

#include <QMessageBox>

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

} // namespace pontrel::test
