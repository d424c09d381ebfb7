#include "app/controls/MaskedEdit.h"

#include "app/controls/NumberEntry.h"

#include <QFocusEvent>

#include <algorithm>

namespace pontrel {

MaskedEdit::MaskedEdit(QWidget* parent) : QLineEdit(parent) {
    switchInputMethodOff(*this);
    connect(this, &QLineEdit::textChanged, this, &MaskedEdit::takeText);
}

void MaskedEdit::setPlaces(const QString& mask) {
    setInputMask(mask + u';' + Blank);
}

void MaskedEdit::putText(const QString& text) {
    setText(text);
    home(false);
}

bool MaskedEdit::isBlank() const {
    const QString shown = displayText();
    return std::none_of(shown.begin(), shown.end(), [](QChar character) { return character.isNumber(); });
}

void MaskedEdit::takeText() {
    const QString shown = displayText();
    QString plain = plainDigits(shown);
    if (plain == shown) {
        if (isBlank())
            home(false);
        noteText();
        return;
    }
    const int cursor = cursorPosition();
    setText(plain.replace(Blank, u' ')); // comes back here
    setCursorPosition(cursor);
}

void MaskedEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // The base class does it for Tab alone; behind the last place all typing would be lost.
    if (event->reason() == Qt::OtherFocusReason)
        home(false);
}

void MaskedEdit::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (isBlank())
        home(false); // typing starts at the left, wherever the blank mask was clicked
}

} // namespace pontrel
