#include "app/Lookup.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

// The search buttons beside code fields, and what they do.

namespace pontrel {

namespace {

constexpr int PictureSize = 16;
constexpr int ButtonWidth = 30;

/// A magnifier in the colour that the text of buttons has, painted as sharp as the screen is.
class Magnifier : public QIconEngine {
  public:
    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State /*state*/) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor color = QGuiApplication::palette().color(group, QPalette::ButtonText);
        painter->save();
        painter->translate(place.topLeft());
        painter->scale(static_cast<double>(place.width()) / PictureSize,
                       static_cast<double>(place.height()) / PictureSize);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(color, 1.6));
        painter->drawEllipse(QRectF(2, 2, 8, 8));
        painter->setPen(QPen(color, 2.4, Qt::SolidLine, Qt::RoundCap));
        painter->drawLine(QPointF(9.4, 9.4), QPointF(13.6, 13.6));
        painter->restore();
    }
    /// On a transparent ground: the picture of an engine begins as it happens to be.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect({}, size), mode, state);
        return picture;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new Magnifier(*this); }
};

void sendKey(QWidget& field, Qt::Key key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&field, &press);
}

} // namespace

QPushButton* makeSearchButton(QWidget* page, const QString& name, const QString& accessibleName) {
    auto* button = new QPushButton(page);
    button->setIcon(QIcon(new Magnifier)); // which owns it
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
