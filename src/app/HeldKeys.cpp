#include "app/HeldKeys.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>

namespace pontrel {

namespace {

/// An X server gives the release and the press of one repeat the same time; passed on from another display
/// they may lie a little apart. No hand is that quick.
constexpr quint32 LongestPairMs = 5;

bool isAnswer(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space || key == Qt::Key_Escape;
}

bool isModifier(int key) {
    return key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock;
}

bool takesText(const QWidget* widget) {
    return widget &&
           (widget->testAttribute(Qt::WA_InputMethodEnabled) || qobject_cast<const QLineEdit*>(widget));
}

} // namespace

bool HeldKeys::note(const QKeyEvent& event, QWidget* focus) {
    if (event.type() == QEvent::KeyPress && !event.isAutoRepeat())
        endOtherRepeats(event.key());
    if (event.type() == QEvent::KeyRelease)
        noteRelease(shortcuts_[event.key()], event);
    if (!isAnswer(event.key()))
        return false;
    Key& key = keys_[event.key()];
    if (event.type() == QEvent::KeyRelease) {
        noteRelease(key, event);
        return false;
    }
    const bool repeat = notePress(key, event);
    if (!repeat)
        key.pressedIn = focus;
    return repeat && !(event.key() == Qt::Key_Space && takesText(focus) && key.pressedIn == focus);
}

bool HeldKeys::noteShortcut(const QKeyEvent& event) {
    if (!event.isAutoRepeat())
        endOtherRepeats(event.key());
    return notePress(shortcuts_[event.key()], event);
}

/// Whether it is a repeat.
bool HeldKeys::notePress(Key& key, const QKeyEvent& event) {
    const bool repeat = isRepeat(key, event);
    if (!event.isAutoRepeat()) {
        key.isDown = true;
        key.isOfKeyboard = event.nativeScanCode() != 0;
    }
    return repeat;
}

void HeldKeys::noteRelease(Key& key, const QKeyEvent& event) {
    if (event.isAutoRepeat())
        return;
    key.isDown = false;
    key.releasedAt.reset();
    if (event.nativeScanCode() != 0)
        key.releasedAt = static_cast<quint32>(event.timestamp());
}

/// A keyboard repeats the key alone that was pressed last.
void HeldKeys::endOtherRepeats(int pressed) {
    if (isModifier(pressed))
        return;
    for (std::map<int, Key>* keys : {&keys_, &shortcuts_}) {
        for (auto& [number, key] : *keys)
            key.isDown &= number == pressed;
    }
}

bool HeldKeys::isRepeat(const Key& key, const QKeyEvent& event) {
    if (event.isAutoRepeat() || key.isDown)
        return true;
    return key.releasedAt && event.nativeScanCode() != 0 &&
           static_cast<quint32>(event.timestamp()) - *key.releasedAt <= LongestPairMs;
}

void HeldKeys::noteOtherWindow() {
    for (std::map<int, Key>* keys : {&keys_, &shortcuts_}) {
        for (auto& [number, key] : *keys)
            key.isDown = key.isDown && !key.isOfKeyboard;
    }
}

} // namespace pontrel
