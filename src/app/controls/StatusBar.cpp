#include "app/controls/StatusBar.h"

#include "app/ControlNames.h"
#include "app/controls/Keys.h"
#include "app/controls/LockKeys.h"
#include "store/Clock.h"
#include "store/Format.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QTimer>

#include <utility>

namespace pontrel {

namespace {

/// A panel as the button that it is: assistive technology would take it for a mere text.
class AccessibleButtonPanel : public QAccessibleWidget {
  public:
    explicit AccessibleButtonPanel(StatusPanel& panel)
        : QAccessibleWidget(&panel, QAccessible::Button), panel_(panel) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.disabled = !panel_.isRaised();
        return state;
    }
    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (panel_.isRaised())
            names.prepend(pressAction());
        return names;
    }
    void doAction(const QString& actionName) override {
        if (actionName != pressAction())
            QAccessibleWidget::doAction(actionName);
        else if (!QApplication::activeModalWidget()) // an action passes a dialog that blocks a click
            Q_EMIT panel_.clicked();
    }

  private:
    StatusPanel& panel_;
};

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object) {
    auto* panel = qobject_cast<StatusPanel*>(object);
    return panel && panel->isToldAsButton() ? new AccessibleButtonPanel(*panel) : nullptr;
}

void tellStateChanged(StatusPanel& panel) {
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(&panel, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void StatusPanel::mousePressEvent(QMouseEvent* event) {
    event->accept();
    pressed_ = event->button() == Qt::LeftButton;
}

void StatusPanel::mouseReleaseEvent(QMouseEvent* event) {
    // A click that began elsewhere, or in a dialog that is gone, is none of the panel's.
    const bool wasPressed = event->button() == Qt::LeftButton && std::exchange(pressed_, false);
    if (wasPressed && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

void StatusPanel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Space || isEnter(*event))
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
    setAccessibleName(QStringLiteral("狀態列"));
    QAccessible::installFactory(makeAccessible); // once, however often it is called
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    constexpr std::array<int, PanelCount> Shares{30, 14, 8, 8, 8, 9, 14, 9};
    for (int index = 1; index <= PanelCount; ++index) {
        auto* made = new StatusPanel(this);
        if (index == LeavePanel)
            made->tellAsButton(); // before anything is set: what it is first asked for is kept
        made->setObjectName(indexed(QStringLiteral("StbTool"), index));
        made->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        made->setTextFormat(Qt::PlainText);
        made->setAlignment(index <= 2 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
        const auto place = static_cast<std::size_t>(index - 1);
        row->addWidget(made, Shares[place]);
        panels_[place] = made;
    }
    // Dimmed as buttons are while a key is off: the colour alone tells it.
    for (const int key : {3, 4, 5})
        panel(key)->setForegroundRole(QPalette::ButtonText);
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
    const bool changed = std::exchange(leaveRaised_, raised) != raised;
    StatusPanel* leave = panel(LeavePanel);
    leave->setFrameStyle(raised ? QFrame::StyledPanel | QFrame::Raised : QFrame::Panel | QFrame::Sunken);
    // Reached by the keyboard, but a click does not take the focus from the control that has it.
    leave->setFocusPolicy(raised ? Qt::TabFocus : Qt::NoFocus);
    if (changed)
        tellStateChanged(*leave);
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
