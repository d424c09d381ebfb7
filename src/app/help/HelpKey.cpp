#include "app/help/HelpKey.h"

#include "app/Events.h"
#include "app/KeyHook.h"
#include "app/MDI.h"
#include "app/Window.h"
#include "app/help/HelpWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QTabWidget>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The captions of the tabs in front, from the outermost to the innermost.
QStringList tabsInFront(const QWidget& window) {
    QStringList captions;
    const QWidget* area = &window;
    while (area) {
        const auto all = area->findChildren<QTabWidget*>();
        const QWidget* page = nullptr;
        for (const QTabWidget* tabs : all) {
            if (tabs->isVisibleTo(area) && tabs->count() > 0) {
                captions << tabs->tabText(tabs->currentIndex());
                page = tabs->currentWidget();
                break;
            }
        }
        area = page;
    }
    return captions;
}

/// Closes what has dropped down, and tells the window over which it had.
QWidget* withoutPopups(QWidget* window) {
    while (QWidget* popup = QApplication::activePopupWidget()) {
        if (popup == window && popup->parentWidget())
            window = popup->parentWidget()->window();
        popup->close();
        if (popup == QApplication::activePopupWidget())
            break;
    }
    return window;
}

} // namespace

HelpPlace helpPlaceOf(const QWidget& window) {
    const Manual& manual = Manual::ofProgram();
    if (const auto* box = qobject_cast<const QMessageBox*>(&window))
        return manual.placeOfMessage(box->text());
    const QWidget* asked = &window;
    if (const auto* main = qobject_cast<const MDI*>(&window)) {
        if (const Window* front = main->frontWindow())
            asked = front;
    }
    return manual.placeOfWindow(asked->objectName(), asked->windowTitle(), tabsInFront(*asked));
}

HelpKey::HelpKey(QObject* application) : QObject(application) {
    application->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier)
        return false;
    QWidget* window = windowOf(*watched);
    if (!window)
        return false;
    if (!key.isAutoRepeat()) {
        guarded([window] {
            if (const QWidget* asked = withoutPopups(window))
                HelpWindow::open(helpPlaceOf(*asked));
        });
    }
    return true;
}

} // namespace pontrel
