#include "app/ActionKeys.h"

#include "app/Events.h"

#include <QApplication>
#include <QPointer>
#include <QShortcut>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// Whether a modal dialog has come up since the object was made.
class DialogWatch : public QObject {
  public:
    DialogWatch() { qApp->installEventFilter(this); }

    [[nodiscard]] bool hasSeenOne() const { return seen_; }

  protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        seen_ = seen_ || event->type() == QEvent::WindowBlocked;
        return false;
    }

  private:
    bool seen_ = false;
};

void pressAsAClick(QAbstractButton& button) {
    const QPointer<QAbstractButton> pressed(&button);
    const DialogWatch dialogs;
    button.setFocus(Qt::ShortcutFocusReason);
    const bool isLeftAlone = pressed && button.window()->focusWidget() == &button && button.isVisible();
    if (isLeftAlone && !dialogs.hasSeenOne())
        button.click(); // which does nothing where it is off by now
}

} // namespace

QKeySequence keyOf(ActionKey action) {
    switch (action) {
    case ActionKey::New:
        return {u"Ctrl+N"_s};
    case ActionKey::Edit:
        return {u"F2"_s};
    case ActionKey::Save:
        return {u"Ctrl+S"_s};
    case ActionKey::Query:
        return {u"Ctrl+F"_s};
    case ActionKey::Refresh:
        return {u"F5"_s};
    case ActionKey::Print:
        return {u"Ctrl+P"_s};
    }
    return {};
}

void giveKey(QAbstractButton& button, ActionKey action) {
    auto* shortcut = new QShortcut(keyOf(action), &button);
    shortcut->setAutoRepeat(false);
    onEvent(shortcut, &QShortcut::activated, &button, [&button] { pressAsAClick(button); });
    const QString says = button.toolTip().isEmpty() ? button.text() : button.toolTip();
    button.setToolTip(u"%1（%2）"_s.arg(says, shortcut->key().toString()));
}

} // namespace pontrel
