#pragma once

#include <QKeyEvent>

namespace pontrel {

/// Enter, of the letters or of the keypad, whatever other key is held with it.
[[nodiscard]] inline bool isEnter(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

/// Enter, of the letters or of the keypad, with no other key held.
[[nodiscard]] inline bool isPlainEnter(const QKeyEvent& key) {
    return isEnter(key) && !(key.modifiers() & ~Qt::KeypadModifier);
}

} // namespace pontrel
