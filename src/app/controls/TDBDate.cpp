#include "app/controls/TDBDate.h"

#include "app/controls/Colors.h"
#include "app/controls/NumberEntry.h"
#include "app/controls/TypedDay.h"
#include "store/Clock.h"
#include "store/Format.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The frame around the calendar, with the year of the Republic in its head, and below it what is being
/// typed. However it closes, the date control's arrow comes up again. Space chooses in it as Enter does.
class CalendarPopup : public QFrame {
  public:
    explicit CalendarPopup(TDBDate* date)
        : QFrame(date, Qt::Popup)
        , date_(date)
        , calendar_(new QCalendarWidget(this))
        , hint_(new QLabel(this)) {
        setFrameStyle(QFrame::Panel | QFrame::Raised);
        setObjectName(u"CalendarPopup"_s);
        setAccessibleName(u"月曆"_s);
        calendar_->setObjectName(u"Calendar"_s);
        calendar_->setAccessibleName(u"月曆"_s);
        calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
        calendar_->setDateEditEnabled(false);
        days_ = calendar_->findChild<QAbstractItemView*>();
        days_->installEventFilter(this);
        days_->viewport()->installEventFilter(this); // which has the mouse
        for (QToolButton* button : calendar_->findChildren<QToolButton*>())
            button->installEventFilter(this);
        switchInputMethodOff(*days_); // digits count as they are pressed
        hint_->setObjectName(u"Typed"_s);
        hint_->setTextFormat(Qt::PlainText);
        hint_->setAlignment(Qt::AlignCenter);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(1, 1, 1, 1);
        layout->setSpacing(1);
        layout->addWidget(calendar_);
        layout->addWidget(hint_);
        setFocusProxy(calendar_);
        addYearOfRepublic();
        beginAnew();
    }

    [[nodiscard]] QCalendarWidget* calendar() const { return calendar_; }

    /// Nothing is typed yet.
    void beginAnew() {
        typed_.clear();
        showHint();
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress)
            beginAnew();
        if (watched != days_ || event->type() != QEvent::KeyPress)
            return QFrame::eventFilter(watched, event);
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const TypedDay::Outcome outcome = typed_.take(key);
        if (outcome == TypedDay::Outcome::Day)
            calendar_->setSelectedDate(typed_.day());
        if (outcome == TypedDay::Outcome::NotMine && movesOn(key))
            typed_.clear();
        showHint();
        if (outcome != TypedDay::Outcome::NotMine)
            return true;
        if (key.key() != Qt::Key_Space)
            return QFrame::eventFilter(watched, event);
        Q_EMIT calendar_->activated(calendar_->selectedDate());
        return true;
    }
    void hideEvent(QHideEvent* event) override {
        QFrame::hideEvent(event);
        date_->hidePopup();
    }

  private:
    static bool movesOn(const QKeyEvent& key) {
        return key.key() >= Qt::Key_Home && key.key() <= Qt::Key_PageDown; // the arrow keys among them
    }
    /// Beside the year that the calendar has in its head.
    void addYearOfRepublic() {
        const auto* year = calendar_->findChild<QWidget*>(u"qt_calendar_yearbutton"_s);
        auto* head = year ? qobject_cast<QHBoxLayout*>(year->parentWidget()->layout()) : nullptr;
        if (!head)
            return;
        auto* republic = new QLabel(year->parentWidget());
        republic->setObjectName(u"YearOfRepublic"_s);
        republic->setForegroundRole(QPalette::HighlightedText);
        head->insertWidget(head->indexOf(year) + 1, republic);
        const auto show = [this, republic] { republic->setText(yearOfRepublic(calendar_->yearShown())); };
        connect(calendar_, &QCalendarWidget::currentPageChanged, republic, show);
        show();
    }
    void showHint() {
        hint_->setText(typed_.hint());
        days_->setAccessibleDescription(typed_.hint());
    }

    TDBDate* date_;
    QCalendarWidget* calendar_;
    QAbstractItemView* days_ = nullptr;
    QLabel* hint_;
    TypedDay typed_;
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
    auto* popup = new CalendarPopup(this);
    popup_ = popup;
    calendar_ = popup->calendar();
    connect(calendar_, &QCalendarWidget::activated, this, &TDBDate::choose);
    connect(calendar_, &QCalendarWidget::clicked, this, &TDBDate::choose);
}

void TDBDate::showPopup() {
    if (!popup_)
        makePopup();
    static_cast<CalendarPopup&>(*popup_).beginAnew();
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
    Q_EMIT chosen();
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
