#include "app/controls/FaultCells.h"

#include "app/controls/Colors.h"
#include "app/controls/TDBGridModel.h"

#include <QPainter>

namespace pontrel {

namespace {

constexpr int MarkSize = 6;
constexpr double MostTint = 0.3;
constexpr double TintStep = 0.05;
constexpr double Legible = 4.5; ///< Contrast of text with its ground.

const QColor RedOnLight(0xc0, 0x20, 0x18);
const QColor RedOnDark(0xff, 0x7a, 0x70);

bool hasFault(const QModelIndex& index) {
    return !index.data(TDBGridModel::FaultRole).toString().isEmpty();
}

} // namespace

QColor FaultCells::mark(const QPalette& palette) {
    return colors::isDark(palette) ? RedOnDark : RedOnLight;
}

QColor FaultCells::ground(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    for (double share = MostTint; share > 0; share -= TintStep) {
        const QColor tinted = colors::mixed(mark(palette), base, share);
        if (colors::contrast(tinted, palette.color(QPalette::Text)) >= Legible)
            return tinted;
    }
    return base;
}

void FaultCells::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (hasFault(index))
        option->backgroundBrush = ground(option->palette);
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
    painter->setBrush(isSelected ? option.palette.color(QPalette::HighlightedText) : mark(option.palette));
    painter->drawPolygon(QPolygon({corner - QPoint(MarkSize, 0), corner, corner + QPoint(0, MarkSize)}));
    painter->restore();
}

} // namespace pontrel
