#pragma once

#include "app/help/HelpText.h"
#include "app/help/HelpWindow.h"
#include "support/AppSupport.h"
#include "windows/EveryWindow.h"

#include <QLabel>
#include <QTreeWidget>

namespace pontrel::test {

/// The help windows that are there, in sight or not.
[[nodiscard]] inline int helpWindows() {
    int count = 0;
    const auto windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows)
        count += qobject_cast<const HelpWindow*>(window) != nullptr;
    return count;
}

/// Presses F1 as the keyboard does, in the window of that widget, and waits until the help has the keyboard.
inline void pressHelpKey(QWidget& widget) {
    QTest::keyClick(widget.window()->windowHandle(), Qt::Key_F1);
    if (!HelpWindow::current() || !QTest::qWaitForWindowActive(HelpWindow::current()))
        QTest::qFail("F1 has opened no help", __FILE__, __LINE__);
}

/// Presses a key in the help, which has to be open.
inline void keyInHelp(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(HelpWindow::current()->windowHandle(), key, modifiers);
}

/// Closes the help by Escape and waits until its object has gone.
inline void closeHelp() {
    if (!HelpWindow::current())
        return;
    keyInHelp(Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The place shown in the help, as "chapter#heading".
[[nodiscard]] inline QString placeInHelp() {
    if (!HelpWindow::current())
        return QStringLiteral("no help");
    const HelpPlace place = HelpWindow::current()->place();
    return place.chapter + u'#' + place.heading;
}

[[nodiscard]] inline HelpText& helpText() {
    return control<HelpText>(*HelpWindow::current(), QStringLiteral("HelpText"));
}

} // namespace pontrel::test
