#pragma once

#include <QPushButton>

namespace pontrel {

/// A button of that object name, spoken of by its caption.
[[nodiscard]] inline QPushButton* makeButton(QWidget* parent, const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAccessibleName(caption);
    return button;
}

} // namespace pontrel
