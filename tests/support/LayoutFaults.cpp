#include "support/AppSupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace pontrel::test {

using namespace Qt::StringLiterals;

namespace {

QString describe(const QWidget& widget) {
    return u"%1 \"%2\""_s.arg(QString::fromLatin1(widget.metaObject()->className()), widget.objectName());
}

/// A control that is read or worked by itself, and not what holds others.
bool isLeaf(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QLabel*>(&widget);
}

/// The pixels that the caption of a control takes; 0 where it has none.
int captionWidth(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget); label && !label->wordWrap())
        return label->fontMetrics().horizontalAdvance(QString(label->text()).remove(u'&'));
    if (qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QRadioButton*>(&widget))
        return widget.sizeHint().width();
    if (const auto* button = qobject_cast<const QPushButton*>(&widget))
        return button->fontMetrics().horizontalAdvance(button->text());
    return 0;
}

} // namespace

QStringList layoutFaults(QWidget& window) {
    QStringList faults;
    QList<const QWidget*> leaves;
    const auto children = window.findChildren<QWidget*>();
    for (const QWidget* child : children) {
        const QWidget* parent = child->parentWidget();
        // What the toolkit puts into a control, and windows of their own, are not looked at.
        if (!child->isVisibleTo(&window) || !isLeaf(*child) || isLeaf(*parent) || child->isWindow() ||
            child->objectName().startsWith(u"qt_"))
            continue;
        if (captionWidth(*child) > child->width())
            faults << u"%1 cuts its caption"_s.arg(describe(*child));
        if (!parent->rect().contains(child->geometry()))
            faults << u"%1 reaches out of %2"_s.arg(describe(*child), describe(*parent));
        for (const QWidget* other : std::as_const(leaves)) {
            const QRect place(other->mapTo(&window, QPoint()), other->size());
            if (place.intersects(QRect(child->mapTo(&window, QPoint()), child->size())))
                faults << u"%1 lies over %2"_s.arg(describe(*child), describe(*other));
            if (!child->objectName().isEmpty() && child->objectName() == other->objectName())
                faults << u"%1 has the name of another control"_s.arg(describe(*child));
        }
        leaves << child;
    }
    return faults;
}

} // namespace pontrel::test
