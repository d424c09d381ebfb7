#include "app/controls/TDBDate.h"

#include "app/controls/Colors.h"

#include "store/Clock.h"
#include "store/Format.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QScreen>
#include <QTextCharFormat>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

namespace pontrel {

namespace {

/// The frame around the calendar. However it closes, the date control's arrow comes up again. Space chooses
/// in it as Enter does.
class CalendarPopup : public QFrame {
  public:
    explicit CalendarPopup(TDBDate* date) : QFrame(date, Qt::Popup), date_(date) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space)
            return QFrame::eventFilter(watched, event);
        QCalendarWidget* calendar = date_->calendar();
        Q_EMIT calendar->activated(calendar->selectedDate());
        return true;
    }
    void hideEvent(QHideEvent* event) override {
        QFrame::hideEvent(event);
        date_->hidePopup();
    }

  private:
    TDBDate* date_;
};

} // namespace

TDBDate::TDBDate(QWidget* parent) : QComboBox(parent) {
    addItem(QString());
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(10);
}

void TDBDate::setDate(QDate date) {
    if (date == date_ || (!date.isValid() && !date_.isValid()))
        return;
    date_ = date.isValid() ? date : QDate();
    // In full, month and day with two digits as in the mask beside it, where lists and status bar show short
    // dates: the mask speaks in years of the Republic and cannot show those from 2011 on.
    setItemText(0, date_.isValid() ? formatDate(date_, QStringLiteral("yyyy/mm/dd")) : QString());
    Q_EMIT changed();
}

QVariant TDBDate::value() const {
    return date_.isValid() ? QVariant(date_) : QVariant();
}

void TDBDate::setValue(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) {
        const auto read = parseDateTime(value.toString());
        setDate(read ? read->date : QDate());
    } else {
        setDate(value.toDate());
    }
}

void TDBDate::makePopup() {
    popup_ = new CalendarPopup(this);
    popup_->setFrameStyle(QFrame::Panel | QFrame::Raised);
    popup_->setObjectName(QStringLiteral("CalendarPopup"));
    popup_->setAccessibleName(QStringLiteral("月曆"));
    calendar_ = new QCalendarWidget(popup_);
    calendar_->setObjectName(QStringLiteral("Calendar"));
    calendar_->setAccessibleName(QStringLiteral("月曆"));
    calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar_->setDateEditEnabled(false);
    calendar_->findChild<QAbstractItemView*>()->installEventFilter(popup_);
    auto* layout = new QVBoxLayout(popup_);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(calendar_);
    popup_->setFocusProxy(calendar_);
    connect(calendar_, &QCalendarWidget::activated, this, &TDBDate::choose);
    connect(calendar_, &QCalendarWidget::clicked, this, &TDBDate::choose);
}

void TDBDate::showPopup() {
    if (!popup_)
        makePopup();
    calendar_->setSelectedDate(date_.isValid() ? date_ : clock::today());
    QTextCharFormat weekend; // Qt's own red is too pale, most of all on a dark ground
    weekend.setForeground(colors::calendar(calendar_->palette()).weekend);
    for (const auto day : {Qt::Saturday, Qt::Sunday})
        calendar_->setWeekdayTextFormat(day, weekend);
    const QSize size = popup_->sizeHint();
    const QRect room = screen()->availableGeometry();
    QPoint place = mapToGlobal(QPoint(0, height()));
    if (place.y() + size.height() > room.bottom())
        place.setY(mapToGlobal(QPoint(0, 0)).y() - size.height());
    place.setX(std::max(room.left(), std::min(place.x(), room.right() - size.width())));
    place.setY(std::max(room.top(), place.y()));
    popup_->setGeometry(QRect(place, size));
    popup_->show();
    calendar_->setFocus(Qt::PopupFocusReason);
}

void TDBDate::hidePopup() {
    if (popup_)
        popup_->hide();
    QComboBox::hidePopup();
}

void TDBDate::choose(QDate date) {
    hidePopup();
    setDate(date);
}

void TDBDate::moveBy(int days, int months) {
    setDate(date_.isValid() ? date_.addDays(days).addMonths(months) : clock::today());
}

void TDBDate::keyPressEvent(QKeyEvent* event) {
    const int months = event->modifiers().testFlag(Qt::ControlModifier) ? 12 : 1;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        focusNextPrevChild(true);
        return;
    case Qt::Key_Space:
    case Qt::Key_F4:
        showPopup();
        return;
    case Qt::Key_Down:
        if (event->modifiers().testFlag(Qt::AltModifier))
            showPopup();
        else
            moveBy(1, 0);
        return;
    case Qt::Key_Up:
        moveBy(-1, 0);
        return;
    case Qt::Key_PageDown:
        moveBy(0, months);
        return;
    case Qt::Key_PageUp:
        moveBy(0, -months);
        return;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (clearable_)
            setDate(QDate());
        return;
    default:
        // Typed letters would search the list of a combo box; here they mean nothing, and shortcuts go on
        // upwards.
        event->ignore();
    }
}

void TDBDate::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace pontrel
