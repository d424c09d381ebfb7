#pragma once

#include <QString>

class QComboBox;
class QLineEdit;
class QWidget;

namespace pontrel {

/// Full-width digits, as an input method gives them, become plain ones.
[[nodiscard]] QString plainDigits(const QString& text);

/// Keeps the input method out of a control that takes digits alone, or no text at all: each key then counts
/// as it is pressed, and no window of candidates opens over the control. What an input method commits all the
/// same is taken.
void switchInputMethodOff(QWidget& control);

/// Makes the box one for numbers: the input method stays off, and full-width digits, points and signs become
/// plain ones however they came in (typed, committed, pasted). Anything else stays as it is entered. Takes
/// the place of the box's validator.
void makeNumberBox(QLineEdit& box);

/// The same of a list that can be typed into.
void makeNumberBox(QComboBox& list);

} // namespace pontrel
