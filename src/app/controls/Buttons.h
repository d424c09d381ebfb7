#pragma once

#include "app/ControlNames.h"

#include <QList>
#include <QPushButton>
#include <QStringList>

namespace pontrel {

/// A button of that object name, spoken of by its caption.
[[nodiscard]] inline QPushButton* makeButton(QWidget* parent, const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAccessibleName(caption);
    return button;
}

/// The buttons array(0), array(1) and so on, one for each caption.
[[nodiscard]] inline QList<QPushButton*> makeButtons(QWidget* parent, const QString& array,
                                                     const QStringList& captions) {
    QList<QPushButton*> buttons;
    for (const QString& caption : captions)
        buttons << makeButton(parent, indexed(array, static_cast<int>(buttons.size())), caption);
    return buttons;
}

} // namespace pontrel
