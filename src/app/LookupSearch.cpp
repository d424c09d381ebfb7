#include "app/Lookup.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

// The search buttons beside code fields, and what they do.

namespace pontrel {

namespace {

constexpr int PictureSize = 16;
constexpr int ButtonWidth = 30;

/// A magnifier in the colour of the text, drawn at twice its size for sharp screens.
QPixmap magnifier(const QColor& color) {
    constexpr int Sharpness = 2;
    QPixmap picture(PictureSize * Sharpness, PictureSize * Sharpness);
    picture.setDevicePixelRatio(Sharpness);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.6));
    painter.drawEllipse(QRectF(2, 2, 8, 8));
    painter.setPen(QPen(color, 2.4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(9.4, 9.4), QPointF(13.6, 13.6));
    return picture;
}

void sendKey(QWidget& field, Qt::Key key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&field, &press);
}

} // namespace

QPushButton* makeSearchButton(QWidget* page, const QString& name, const QString& accessibleName) {
    auto* button = new QPushButton(page);
    QIcon icon(magnifier(button->palette().color(QPalette::Active, QPalette::ButtonText)));
    icon.addPixmap(magnifier(button->palette().color(QPalette::Disabled, QPalette::ButtonText)),
                   QIcon::Disabled);
    button->setIcon(icon);
    button->setIconSize({PictureSize, PictureSize});
    button->setFixedWidth(ButtonWidth);
    button->setObjectName(name);
    button->setAccessibleName(accessibleName);
    return button;
}

void searchCode(LookupKind kind, QLineEdit& field, LookupKey key) {
    Lookup::ask(kind, field.window());
    // Deliberate: whichever button ended the lookup; a cancel writes the earlier pick into the field.
    field.setText(*lookupTexts(kind).result);
    if (key == LookupKey::None)
        return;
    field.setFocus();
    sendKey(field, key == LookupKey::Enter ? Qt::Key_Return : Qt::Key_Tab);
}

} // namespace pontrel
