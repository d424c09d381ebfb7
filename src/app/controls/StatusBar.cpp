#include "app/controls/StatusBar.h"

#include "app/controls/LockKeys.h"
#include "store/Clock.h"
#include "store/Format.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QTimer>

namespace pontrel {

void StatusPanel::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

void StatusPanel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

void StatusPanel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)
        Q_EMIT clicked();
    else
        QLabel::keyPressEvent(event);
}

void StatusPanel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = rect().adjusted(3, 3, -3, -3);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

StatusBar::StatusBar(QWidget* parent) : QWidget(parent), timer_(new QTimer(this)) {
    setObjectName(QStringLiteral("StbTool"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    constexpr std::array<int, PanelCount> Shares{30, 14, 8, 8, 8, 9, 14, 9};
    for (int index = 1; index <= PanelCount; ++index) {
        auto* made = new StatusPanel(this);
        made->setObjectName(QStringLiteral("StbTool(%1)").arg(index));
        made->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        made->setTextFormat(Qt::PlainText);
        made->setAlignment(index <= 2 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
        const auto place = static_cast<std::size_t>(index - 1);
        row->addWidget(made, Shares[place]);
        panels_[place] = made;
    }
    setText(3, QStringLiteral("CAPS"));
    setText(4, QStringLiteral("NUM"));
    setText(5, QStringLiteral("INS"));
    setText(LeavePanel, QStringLiteral("離開"));
    panel(LeavePanel)->setAccessibleName(QStringLiteral("離開"));
    setLeaveRaised(true);
    connect(panel(LeavePanel), &StatusPanel::clicked, this, [this] {
        if (leaveRaised_)
            Q_EMIT leaveClicked();
    });

    connect(&LockKeys::instance(), &LockKeys::changed, this, &StatusBar::showLockKeys);
    connect(timer_, &QTimer::timeout, this, [this] {
        LockKeys::instance().poll();
        showClock();
    });
    timer_->start(1000);
    showLockKeys();
    showClock();
}

StatusPanel* StatusBar::panel(int index) const {
    return panels_.at(static_cast<std::size_t>(index - 1));
}

QString StatusBar::text(int index) const {
    return panel(index)->text();
}

void StatusBar::setText(int index, const QString& text) {
    panel(index)->setText(text);
}

void StatusBar::showCounter(qint64 position, qint64 count) {
    setText(1, QStringLiteral("資料錄:%1/%2").arg(position + 1).arg(count));
}

void StatusBar::setLeaveRaised(bool raised) {
    leaveRaised_ = raised;
    StatusPanel* leave = panel(LeavePanel);
    leave->setFrameStyle(raised ? QFrame::StyledPanel | QFrame::Raised : QFrame::Panel | QFrame::Sunken);
    // Reached by the keyboard, but a click does not take the focus from the control that has it.
    leave->setFocusPolicy(raised ? Qt::TabFocus : Qt::NoFocus);
}

void StatusBar::showClock() {
    const QDateTime now = clock::now();
    setText(6, shortTime(now.time()));
    setText(7, shortDate(now.date()));
}

void StatusBar::showLockKeys() {
    const auto show = [this](int index, bool on) {
        StatusPanel* key = panel(index);
        key->setEnabled(on); // a key that is off shows dimmed
        key->setAccessibleName(key->text() + (on ? QStringLiteral(" 開") : QStringLiteral(" 關")));
    };
    show(3, LockKeys::instance().caps());
    show(4, LockKeys::instance().num());
    show(5, LockKeys::instance().ins());
}

} // namespace pontrel
