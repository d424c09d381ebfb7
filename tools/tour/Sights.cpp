#include "tour/Sights.h"

#include <QAbstractItemView>

namespace pontrel::tour {

QString textOf(const QWidget& front, const QString& label) {
    const auto* found = visible<QLabel>(front, label);
    return found ? found->text() : QString();
}

int rowsOf(const QWidget& front, const QString& grid) {
    const auto* found = visible<QAbstractItemView>(front, grid);
    return found ? found->model()->rowCount() : -1;
}

std::optional<Spot> spotOf(const QAbstractItemView& view, const QModelIndex& index) {
    const QRect place = view.visualRect(index);
    if (place.isEmpty() || !view.viewport()->rect().contains(place.center()))
        return std::nullopt;
    return Spot{view.viewport(), place.center()};
}

std::optional<Spot> cellWith(const QTableView& view, const QString& text) {
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        for (int column = 0; column < view.model()->columnCount(); ++column) {
            const QModelIndex cell = view.model()->index(row, column);
            const std::optional<Spot> spot =
                cell.data().toString() == text ? spotOf(view, cell) : std::nullopt;
            if (spot)
                return spot;
        }
    }
    return std::nullopt;
}

} // namespace pontrel::tour
