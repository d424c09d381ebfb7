#include "app/controls/OptionButton.h"

#include <QKeyEvent>

namespace pontrel {

void OptionButton::keyPressEvent(QKeyEvent* event) {
    const bool clicksNext = isChecked(); // Qt's own arrow keys leave an option that is not chosen without it
    QRadioButton::keyPressEvent(event);
    const bool arrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                       event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    auto* next = qobject_cast<OptionButton*>(window()->focusWidget());
    if (arrow && !clicksNext && next && next != this)
        next->click();
}

} // namespace pontrel
