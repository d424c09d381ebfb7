#pragma once

#include "tour/Clerk.h"

#include <QLabel>
#include <QString>
#include <QTableView>

#include <optional>

class QAbstractItemView;
class QModelIndex;

namespace pontrel::tour {

// What a person sees on the window in front.

template<typename Control>
[[nodiscard]] Control* visible(const QWidget& front, const QString& name) {
    auto* found = front.findChild<Control*>(name);
    return found && found->isVisible() ? found : nullptr;
}

/// The text of a label in sight; empty without it.
[[nodiscard]] QString textOf(const QWidget& front, const QString& label);

/// The rows of a list in sight; -1 without it.
[[nodiscard]] int rowsOf(const QWidget& front, const QString& grid);

/// The spot of a cell or entry of a list, where it is in view.
[[nodiscard]] std::optional<Spot> spotOf(const QAbstractItemView& view, const QModelIndex& index);

/// The spot of the first cell in view, row by row, that shows the text.
[[nodiscard]] std::optional<Spot> cellWith(const QTableView& view, const QString& text);

} // namespace pontrel::tour
