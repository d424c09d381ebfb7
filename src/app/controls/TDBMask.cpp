#include "app/controls/TDBMask.h"
#include "app/controls/Keys.h"

#include <QKeyEvent>

#include <utility>

namespace pontrel {

TDBMask::TDBMask(QWidget* parent) : MaskedEdit(parent) {
    setPlaces(QStringLiteral("00/00/00"));
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
    putText(text);
}

void TDBMask::noteText() {
    const QString now = value();
    if (std::exchange(known_, now) != now)
        Q_EMIT changed();
}

void TDBMask::keyPressEvent(QKeyEvent* event) {
    if (isEnter(*event)) {
        focusNextPrevChild(true);
        return;
    }
    MaskedEdit::keyPressEvent(event);
}

} // namespace pontrel
