#include "app/controls/EmptyText.h"

#include <QAbstractScrollArea>
#include <QPainter>

namespace pontrel {

namespace {

constexpr int Margin = 12;

} // namespace

void paintEmptyText(QAbstractScrollArea& list, const QString& text) {
    QPainter painter(list.viewport());
    painter.setPen(list.palette().color(QPalette::Active, QPalette::PlaceholderText));
    painter.drawText(list.viewport()->rect().adjusted(Margin, Margin, -Margin, -Margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, text);
}

} // namespace pontrel
