#include "app/Window.h"

#include "app/Events.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/WindowRegistry.h"
#include "rules/Session.h"
#include "store/DataSource.h"
#include "store/RunTimeError.h"

#include <QApplication>
#include <QTabWidget>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The window in which a control lies; null for one of the toolbar.
const Window* windowAround(const QWidget& control) {
    const QWidget* ancestor = &control;
    while (ancestor && !qobject_cast<const Window*>(ancestor))
        ancestor = ancestor->parentWidget();
    return static_cast<const Window*>(ancestor);
}

} // namespace

// A sub-window's tab order is that of its own controls, whatever window lies beneath it.
Window::Window(QWidget* parent) : QWidget(parent, Qt::SubWindow) {
    setAutoFillBackground(true);
    hide(); // Until it is opened, also where its parent is shown first.
}

void Window::open() {
    if (!loaded_) {
        loaded_ = true;
        onLoad();
    }
    if (unloaded_)
        return;
    show();
    raise();
    takeFocus();
}

void Window::unload() {
    if (unloaded_)
        return;
    unloaded_ = true;
    // The object outlives this call in any case, also where the unload routine ends in a run-time error.
    deleteLater();
    onUnload();
    const auto sources = findChildren<DataSource*>();
    for (DataSource* source : sources)
        source->close();
    hide();
    giveFocusBack();
}

void Window::jumpTo(int module, int tab) {
    unload();
    OpenToolWindow(static_cast<std::int16_t>(module));
    const Window* opened = moduleWindow(module);
    auto* tabs = opened ? opened->findChild<QTabWidget*>(u"SSTab1"_s) : nullptr;
    if (tabs && tab >= 0)
        tabs->setCurrentIndex(tab);
}

bool Window::openTrapped(const std::function<void()>& routine, const QString& message) {
    return trapOpen(routine, message);
}

bool Window::focusNextPrevChild(bool next) {
    QWidget::focusNextPrevChild(next);
    return true;
}

void Window::takeFocus() {
    const QWidget* current = window()->focusWidget();
    if (current && current != this && isAncestorOf(current))
        return;
    if (QWidget* last = focusWidget(); last && last != this && last->isEnabled() && last->isVisibleTo(this))
        last->setFocus();
    else
        focusNextPrevChild(true);
    // Without a control of its own it still takes the keyboard away from what it covers.
    QWidget* now = window()->focusWidget();
    const Window* around = now ? windowAround(*now) : nullptr;
    if (around && around != this)
        now->clearFocus();
}

void Window::giveFocusBack() {
    if (QWidget* current = window()->focusWidget(); current && isAncestorOf(current))
        current->clearFocus();
    const QObjectList& siblings = parent()->children(); // In the order in which they lie upon each other.
    for (auto sibling = siblings.crbegin(); sibling != siblings.crend(); ++sibling) {
        auto* beneath = qobject_cast<Window*>(*sibling);
        if (beneath && beneath->isVisible()) {
            beneath->takeFocus();
            return;
        }
    }
}

bool trapRead(const std::function<void()>& routine, const QString& message) {
    try {
        routine();
        return true;
    } catch (const RunTimeError& error) {
        logError(error);
        MsgBox(message, u"異常警告"_s);
        return false;
    }
}

bool trapOpen(const std::function<void()>& routine, const QString& message) {
    const bool opened = trapRead(routine, message);
    if (!opened)
        gOpenFailed = true;
    return opened;
}

} // namespace pontrel
