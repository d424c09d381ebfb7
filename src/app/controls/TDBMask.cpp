#include "app/controls/TDBMask.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

#include <utility>

namespace pontrel {

namespace {

constexpr QChar Blank = u'_';

/// Full-width digits, as an input method gives them, become plain ones.
QString plainDigits(const QString& text) {
    QString plain = text;
    for (QChar& character : plain) {
        if (character.isDigit() && character.unicode() > 0x7f)
            character = QChar(u'0' + character.digitValue());
    }
    return plain;
}

} // namespace

TDBMask::TDBMask(QWidget* parent) : QLineEdit(parent) {
    // The places are "permitted", not "required": a mask with required places keeps Enter to itself until it
    // is full.
    setInputMask(QStringLiteral("00/00/00;_"));
    connect(this, &QLineEdit::textChanged, this, &TDBMask::noteText);
}

QString TDBMask::value() const {
    QString places = displayText().remove(u'/');
    while (places.endsWith(Blank))
        places.chop(1);
    return places.replace(Blank, u' ');
}

void TDBMask::setValue(const QString& value) {
    if (value.size() > Places) {
        known_.clear();
        clear();
        return;
    }
    QString text = value.leftJustified(Places, u' ');
    text.insert(4, u'/').insert(2, u'/');
    setText(text);
}

void TDBMask::noteText() {
    const QString now = value();
    if (std::exchange(known_, now) != now)
        Q_EMIT changed();
}

void TDBMask::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        focusNextPrevChild(true);
        return;
    }
    const QString plain = plainDigits(event->text());
    if (plain != event->text()) {
        insert(plain);
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void TDBMask::inputMethodEvent(QInputMethodEvent* event) {
    QInputMethodEvent plain(event->preeditString(), event->attributes());
    plain.setCommitString(plainDigits(event->commitString()), event->replacementStart(),
                          event->replacementLength());
    QLineEdit::inputMethodEvent(&plain);
}

void TDBMask::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (value().isEmpty())
        home(false); // typing starts at the year, wherever the blank mask was clicked
}

} // namespace pontrel
