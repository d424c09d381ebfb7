#pragma once

#include "app/controls/TDBGrid.h"

#include <QStringList>

namespace pontrel::test {

/// A cell as it is seen; a check mark as "v" or "-".
[[nodiscard]] inline QString shownCell(const QModelIndex& cell) {
    const QVariant mark = cell.data(Qt::CheckStateRole);
    if (!mark.isValid())
        return cell.data().toString();
    return mark.toInt() == Qt::Checked ? QStringLiteral("v") : QStringLiteral("-");
}

/// The rows that a grid shows, the texts of their columns between bars.
[[nodiscard]] inline QStringList shownRows(const TDBGrid& grid) {
    const QAbstractItemModel* model = grid.model();
    QStringList rows;
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells << shownCell(model->index(row, column));
        rows << cells.join(u'|');
    }
    return rows;
}

[[nodiscard]] inline QStringList shownCaptions(const TDBGrid& grid) {
    const QAbstractItemModel* model = grid.model();
    QStringList captions;
    for (int column = 0; column < model->columnCount(); ++column)
        captions << model->headerData(column, Qt::Horizontal).toString();
    return captions;
}

} // namespace pontrel::test
