#pragma once

#include <QPointer>

#include <map>
#include <optional>

class QKeyEvent;
class QWidget;

namespace pontrel {

/// Tells a press of Enter, Space or Escape from what the key repeats while it is held, across all windows: a
/// further press counts after the key was really released, and not before. All other keys repeat freely, and
/// so does Space in the text box where it was pressed.
///
/// The platform's own mark of a repeat cannot be relied on: an X server sends a held key as releases and
/// presses, and Qt sees that they belong together only where nothing comes between them.
class HeldKeys {
  public:
    /// To be told of every key event of the user's, once, before it is delivered to what has the focus.
    /// Whether it is a repeat that nothing must see.
    [[nodiscard]] bool note(const QKeyEvent& event, QWidget* focus);

    /// To be told of every key of the user's ahead of that, when it is looked up among the shortcuts. Whether
    /// it is a repeat, which a shortcut that is one action a press must not see.
    [[nodiscard]] bool noteShortcut(const QKeyEvent& event);

    /// Another window has the keyboard. A release may have gone to the one before, or to none; a key of the
    /// keyboard that is still held shows by its next repeat.
    void noteOtherWindow();

    /// Another program has the keyboard, and with it every release.
    void forget() {
        keys_.clear();
        shortcuts_.clear();
    }

  private:
    struct Key {
        bool isDown = false;
        bool isOfKeyboard = false;           ///< And not sent by a program, which repeats nothing.
        std::optional<quint32> releasedAt{}; ///< By the display's clock, which wraps.
        QPointer<QWidget> pressedIn{};       ///< What had the focus at the real press.
    };

    void endOtherRepeats(int pressed);
    [[nodiscard]] static bool notePress(Key& key, const QKeyEvent& event);
    static void noteRelease(Key& key, const QKeyEvent& event);
    [[nodiscard]] static bool isRepeat(const Key& key, const QKeyEvent& event);

    std::map<int, Key> keys_;
    std::map<int, Key>
        shortcuts_; ///< Every key, as the shortcuts see it: a press that is one goes nowhere else.
};

} // namespace pontrel
