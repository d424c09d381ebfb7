#pragma once

class QAbstractButton;
class QKeySequence;

namespace pontrel {

/// What many windows have a button for, each with a key of its own.
enum class ActionKey {
    New,     ///< Ctrl+N
    Edit,    ///< F2
    Save,    ///< Ctrl+S
    Query,   ///< Ctrl+F
    Refresh, ///< F5
    Print    ///< Ctrl+P
};

[[nodiscard]] QKeySequence keyOf(ActionKey action);

/// Gives the button the key of that action, and tells it in its tooltip, behind what that says or else the
/// caption. The key works where the button is in sight and on, in the window that has the keyboard, once for
/// each press however long it is held. It does what a click does: the focus goes to the button first, so that
/// a box is left with all that follows from it, and where a routine then puts the focus elsewhere, shows a
/// message or switches the button off, nothing is pressed.
void giveKey(QAbstractButton& button, ActionKey action);

} // namespace pontrel
