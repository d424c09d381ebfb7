#include "app/controls/NumberEntry.h"

#include <QComboBox>
#include <QInputMethodQueryEvent>
#include <QLineEdit>
#include <QValidator>

namespace pontrel {

namespace {

constexpr auto NumberHints = Qt::ImhPreferNumbers | Qt::ImhNoPredictiveText;

/// The plain characters for what a number is written with in full width.
QString plainNumber(const QString& text) {
    return plainDigits(text).replace(u'．', u'.').replace(u'－', u'-').replace(u'＋', u'+');
}

/// Answers in the control's place that it wants no input method. The widget attribute alone would not do: a
/// line edit says yes to this question whatever the attribute is.
class InputMethodOff : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::InputMethodQuery)
            return false;
        auto* query = static_cast<QInputMethodQueryEvent*>(event);
        watched->event(query);
        if (query->queries().testFlag(Qt::ImEnabled))
            query->setValue(Qt::ImEnabled, false);
        return true;
    }
};

/// Refuses nothing; what goes through it comes out plain.
class PlainNumbers : public QValidator {
  public:
    using QValidator::QValidator;

    State validate(QString& text, int& /*cursor*/) const override {
        text = plainNumber(text);
        return Acceptable;
    }
};

} // namespace

QString plainDigits(const QString& text) {
    QString plain = text;
    for (QChar& character : plain) {
        if (character.isDigit() && character.unicode() > 0x7f)
            character = QChar(u'0' + character.digitValue());
    }
    return plain;
}

void switchInputMethodOff(QWidget& control) {
    control.setAttribute(Qt::WA_InputMethodEnabled, false);
    control.installEventFilter(new InputMethodOff(&control));
    control.setInputMethodHints(NumberHints);
}

void makeNumberBox(QLineEdit& box) {
    switchInputMethodOff(box);
    box.setValidator(new PlainNumbers(&box));
}

void makeNumberBox(QComboBox& list) {
    list.setInputMethodHints(NumberHints); // which it hands to its box at times
    makeNumberBox(*list.lineEdit());
}

} // namespace pontrel
