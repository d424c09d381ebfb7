#include "app/WayOut.h"

#include "app/ControlNames.h"
#include "app/controls/StatusBar.h"

#include <QPushButton>
#include <QRubberBand>
#include <QTimer>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MarkMs = 2000;

void mark(QWidget& control) {
    const QString name = u"WayOut"_s;
    if (control.findChild<QRubberBand*>(name, Qt::FindDirectChildrenOnly))
        return;
    auto* band = new QRubberBand(QRubberBand::Rectangle, &control);
    band->setObjectName(name);
    band->setGeometry(control.rect());
    band->show();
    QTimer::singleShot(MarkMs, band, &QObject::deleteLater);
}

/// Whether there was one.
bool markButtons(const QWidget& window, const QStringList& captions) {
    bool marked = false;
    const auto buttons = window.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (!button->isVisible() || !button->isEnabled() || !captions.contains(button->text()))
            continue;
        mark(*button);
        marked = true;
    }
    return marked;
}

} // namespace

void pointOutTheWayOut(const QWidget& window) {
    bool leaves = markButtons(window, {u"離開"_s});
    if (auto* bar = window.findChild<StatusBar*>(); bar && bar->isLeaveRaised()) {
        mark(*bar->findChild<StatusPanel*>(indexed(u"StbTool"_s, StatusBar::LeavePanel)));
        leaves = true;
    }
    if (!leaves)
        markButtons(window, {u"取消"_s, u"存檔"_s});
}

} // namespace pontrel
