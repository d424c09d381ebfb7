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

/// The key that asks for a context menu, or its stand-in where a keyboard has none.
[[nodiscard]] inline bool isMenuKey(const QKeyEvent& key) {
    return key.key() == Qt::Key_Menu || (key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier);
}

} // namespace pontrel
