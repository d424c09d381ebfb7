#include "app/controls/DropList.h"

#include <QWheelEvent>

namespace pontrel {

DropList::DropList(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

void DropList::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace pontrel
