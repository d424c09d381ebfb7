#include "app/controls/TDBTime.h"

#include "app/Prompts.h"
#include "store/Format.h"

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFrame>

#include <utility>

namespace pontrel {

namespace {

constexpr int PairWidth = 3; // two digits and the colon after them

} // namespace

TDBTime::TDBTime(QWidget* parent) : MaskedEdit(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setShowSeconds(false);
    connect(this, &QLineEdit::editingFinished, this, &TDBTime::settle);
}

void TDBTime::setShowSeconds(bool shown) {
    const QTime kept = time();
    {
        const QSignalBlocker blocker(this); // another mask throws the text away on its way in
        showSeconds_ = shown;
        setPlaces(shown ? QStringLiteral("00:00:00") : QStringLiteral("00:00"));
    }
    setTime(kept);
    updateGeometry();
}

QTime TDBTime::time() const {
    if (isBlank())
        return {};
    if (settled_.isValid() && displayText() == shownText(settled_))
        return settled_;
    const QTime typed = typedTime();
    return typed.isValid() ? typed : settled_;
}

void TDBTime::setTime(QTime time) {
    settled_ = time;
    putText(time.isValid() ? shownText(time) : QString());
    noteText(); // the seconds alone may be others
}

void TDBTime::clear() {
    setTime({});
}

QVariant TDBTime::value() const {
    const QTime now = time();
    return now.isValid() ? QVariant(now) : QVariant();
}

void TDBTime::setValue(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) {
        const auto read = parseDateTime(value.toString());
        setTime(read ? read->time : QTime());
    } else {
        setTime(value.toTime());
    }
}

QString TDBTime::shownText(QTime time) const {
    return formatTime(time, showSeconds_ ? QStringLiteral("hh:nn:ss") : QStringLiteral("hh:nn"));
}

QTime TDBTime::typedTime() const {
    QString shown = displayText();
    // Seconds left out are none.
    if (shown.endsWith(QString(2, Blank)) && showSeconds_)
        shown.replace(2 * PairWidth, 2, QStringLiteral("00"));
    if (shown.contains(Blank))
        return {};
    const auto number = [&](int pair) {
        bool read = false; // a sign for a number, as "①", is none that counts
        const int value = shown.mid(pair * PairWidth, 2).toInt(&read);
        return read ? value : -1;
    };
    return QTime(number(0), number(1), showSeconds_ ? number(2) : 0);
}

void TDBTime::noteText() {
    if (isBlank())
        settled_ = {};
    const QTime now = time();
    if (std::exchange(known_, now) != now)
        Q_EMIT changed();
}

void TDBTime::settle() {
    const QTime now = time();
    if (!isBlank() && displayText() != shownText(now)) {
        if (!typedTime().isValid())
            beep();
        setTime(now);
    }
    settled_ = now;
}

/// Moves a digit that stands alone before the cursor to the second place, and the cursor behind the colon.
void TDBTime::endNumber() {
    const int first = cursorPosition() - 1;
    QString shown = displayText();
    if (first < 0 || first % PairWidth != 0 || shown.at(first) == Blank || shown.at(first + 1) != Blank)
        return;
    shown.replace(first + 1, 1, shown.at(first)).replace(first, 1, u'0');
    setText(shown.replace(Blank, u' '));
    setCursorPosition(first + PairWidth);
}

void TDBTime::keyPressEvent(QKeyEvent* event) {
    const QString typed = event->text();
    if (!isReadOnly() && (typed == u":" || typed == u"：")) {
        endNumber();
        return;
    }
    MaskedEdit::keyPressEvent(event);
}

QSize TDBTime::sizeHint() const {
    constexpr int TextMargin = 2; // on either side, as the base class leaves it
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QString widest = showSeconds_ ? QStringLiteral("00:00:00") : QStringLiteral("00:00");
    const int text = fontMetrics().horizontalAdvance(widest) + fontMetrics().maxWidth() / 2;
    const QMargins margins = textMargins();
    const QSize contents(text + 2 * TextMargin + margins.left() + margins.right(),
                         QLineEdit::sizeHint().height());
    const int width = style()->sizeFromContents(QStyle::CT_LineEdit, &option, contents, this).width();
    return {width, contents.height()};
}

} // namespace pontrel
