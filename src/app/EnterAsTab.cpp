#include "app/EnterAsTab.h"

#include "app/KeyHook.h"
#include "app/controls/Keys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

namespace pontrel {

namespace {

bool isButton(const QObject* object) {
    return qobject_cast<const QPushButton*>(object) || qobject_cast<const QToolButton*>(object);
}

bool isBox(const QObject* object) {
    return qobject_cast<const QLineEdit*>(object) || qobject_cast<const QCheckBox*>(object) ||
           qobject_cast<const QRadioButton*>(object) || qobject_cast<const QComboBox*>(object) ||
           qobject_cast<const QAbstractSpinBox*>(object);
}

} // namespace

void placeBehind(QWidget* control, const QList<QPushButton*>& buttons) {
    for (QPushButton* button : buttons) {
        QWidget::setTabOrder(control, button);
        control = button;
    }
}

EnterAsTab* EnterAsTab::install(QWidget& window) {
    auto* filter = new EnterAsTab(&window);
    const auto controls = window.findChildren<QWidget*>();
    for (QWidget* control : controls) {
        if (auto* button = qobject_cast<QPushButton*>(control))
            button->setAutoDefault(false);
        if (isButton(control) || isBox(control))
            control->installEventFilter(filter);
    }
    return filter;
}

void EnterAsTab::watch(QWidget& control) {
    control.installEventFilter(this);
    const auto parts = control.findChildren<QWidget*>();
    for (QWidget* part : parts)
        part->installEventFilter(this);
}

void EnterAsTab::leaveBoxesOf(QWidget& area) {
    const auto controls = area.findChildren<QWidget*>();
    for (QWidget* control : controls) {
        if (isBox(control))
            control->removeEventFilter(this);
    }
}

void EnterAsTab::sendTab() {
    QWidget* focus = QApplication::focusWidget();
    if (!focus)
        return;
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QCoreApplication::sendEvent(focus, &tab);
}

bool EnterAsTab::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !isEnter(static_cast<const QKeyEvent&>(*event)))
        return false;
    if (!isButton(watched))
        sendTab();
    else
        static_cast<QAbstractButton*>(watched)->click();
    return true;
}

} // namespace pontrel
