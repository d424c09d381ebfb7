#include "app/controls/FaultCells.h"

#include "app/controls/Colors.h"
#include "app/controls/TDBGridModel.h"

#include <QPainter>

namespace pontrel {

namespace {

constexpr int MarkSize = 6;

bool hasFault(const QModelIndex& index) {
    return !index.data(TDBGridModel::FaultRole).toString().isEmpty();
}

} // namespace

void FaultCells::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (hasFault(index))
        option->backgroundBrush = colors::faultGround(option->palette);
}

void FaultCells::paint(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    if (!hasFault(index))
        return;
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QPoint corner = option.rect.topRight() + QPoint(1, 0);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(isSelected ? option.palette.color(QPalette::HighlightedText)
                                 : colors::faultMark(option.palette));
    painter->drawPolygon(QPolygon({corner - QPoint(MarkSize, 0), corner, corner + QPoint(0, MarkSize)}));
    painter->restore();
}

} // namespace pontrel
