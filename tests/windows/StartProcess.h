#pragma once

#include "app/Module1.h"
#include "app/SafetyCopies.h"
#include "app/Start.h"
#include "support/AppSupport.h"
#include "windows/RegisterWindows.h"

#include <QMessageBox>

#include <functional>

namespace pontrel::test {

// What a further process does that runs Main as the program's entry does, and tells by lines.

/// The line of the login as it opens.
inline const QString LoginLine = QStringLiteral("frmLogin|登入||0");

/// Object name, title, text and icon.
inline void report(const QWidget& dialog) {
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    const QString text = box ? box->text().simplified() : QString();
    const int icon = box ? static_cast<int>(box->icon()) : 0;
    writeLine(QStringLiteral("%1|%2|%3|%4")
                  .arg(dialog.objectName(), dialog.windowTitle(), text, QString::number(icon)));
}

inline void reportAndClose(QWidget& dialog) {
    report(dialog);
    QTest::keyClick(&dialog, Qt::Key_Escape);
}

inline void logIn(QWidget& dialog) {
    report(dialog);
    QTest::keyClicks(&control(dialog, QStringLiteral("txtUserName")), QStringLiteral("tester"));
    QTest::keyClicks(&control(dialog, QStringLiteral("txtPassword")), QStringLiteral("secret"));
    click(control(dialog, QStringLiteral("cmdOK")));
}

/// With safety copies where they are what the scenario is about.
inline int start(bool makesCopies = false) {
    SafetyCopies::setEnabled(makesCopies);
    registerWindows();
    const int status = Main();
    writeLine(QStringLiteral("Main returned"));
    return status;
}

/// Runs the routine once the main window stands idle after the login.
inline void whenIdle(QObject& context, std::function<void()> routine) {
    QTimer::singleShot(10, &context, [&context, routine = std::move(routine)] {
        if (gMDI && gMDI->isVisible() && gSysMenu)
            routine();
        else
            whenIdle(context, routine);
    });
}

} // namespace pontrel::test
