#include "app/controls/HintedList.h"

#include "app/controls/EmptyText.h"

namespace pontrel {

HintedList::HintedList(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(ExtendedSelection);
}

void HintedList::setEmptyText(const QString& text) {
    emptyText_ = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void HintedList::paintEvent(QPaintEvent* event) {
    QListWidget::paintEvent(event);
    if (count() == 0)
        paintEmptyText(*this, emptyText_);
}

} // namespace pontrel
