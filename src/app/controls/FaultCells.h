#pragma once

#include <QStyledItemDelegate>

namespace pontrel {

/// Paints the cells of a grid: one with a fault (TDBGridModel::FaultRole) on a tinted ground and with a mark
/// in its upper corner, which tells it also where colours do not, as in the row selected.
class FaultCells : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace pontrel
