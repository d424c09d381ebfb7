#include "app/controls/TDBCalendar.h"

#include "app/controls/Colors.h"
#include "app/controls/DayKeys.h"
#include "app/controls/Keys.h"
#include "app/controls/NumberEntry.h"
#include "app/controls/TDBCalendarModel.h"
#include "store/Clock.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int LeastCellWidth = 30;
constexpr int LeastCellHeight = 24;
constexpr int HeadHeight = 26;
constexpr int TitlePixels = 15;
constexpr double CornerRadius = 4;
constexpr double RingGap = 5;

/// Paints a day: a filled field with bold figures in the group, a ring around today's figures, a frame around
/// the day selected. The three can be told apart where they meet, and without colours.
class DayPainter : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QString day = index.data().toString();
        if (day.isEmpty())
            return;
        const bool inGroup = index.data(TDBCalendarModel::InGroupRole).toBool();
        const bool enabled = option.state.testFlag(QStyle::State_Enabled);
        const auto state = enabled ? QPalette::Active : QPalette::Disabled;
        const colors::Calendar own = colors::calendar(option.palette);
        painter->save();
        // Over the ground that the view gives a place selected.
        painter->fillRect(option.rect, option.palette.color(state, QPalette::Base));
        painter->setRenderHint(QPainter::Antialiasing);
        QFont font = option.font;
        font.setBold(inGroup);
        painter->setFont(font);
        const QRectF field = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
        if (inGroup)
            paintField(*painter, field, enabled ? own.groupFill : own.disabledGroupFill);
        if (index.data(TDBCalendarModel::TodayRole).toBool())
            paintRing(*painter, field, enabled ? own.today : option.palette.color(QPalette::Mid));
        if (option.state.testFlag(QStyle::State_Selected))
            paintFrame(*painter, field, option);
        painter->setPen(inGroup && enabled ? own.groupText : option.palette.color(state, QPalette::Text));
        painter->drawText(option.rect, Qt::AlignCenter, day);
        painter->restore();
    }

  private:
    static void paintField(QPainter& painter, const QRectF& field, const QColor& color) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRoundedRect(field, CornerRadius, CornerRadius);
    }
    /// Round where there is room, else drawn out so that it touches no figure.
    static void paintRing(QPainter& painter, const QRectF& field, const QColor& color) {
        const double height = field.height() - RingGap;
        const double room = painter.fontMetrics().horizontalAdvance(QStringLiteral("00")) + 2.0 * RingGap;
        QRectF ring(0, 0, std::min(std::max(height, room), field.width() - RingGap), height);
        ring.moveCenter(field.center());
        painter.setPen(QPen(color, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(ring, height / 2, height / 2);
    }
    static void paintFrame(QPainter& painter, const QRectF& field, const QStyleOptionViewItem& option) {
        const bool focused = option.state.testFlag(QStyle::State_HasFocus);
        painter.setPen(QPen(option.palette.color(focused ? QPalette::Highlight : QPalette::Dark), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(field, CornerRadius, CornerRadius);
    }
};

/// The table of days: one of them is selected at all times, whatever keys are held at a click, and a double
/// click is two clicks.
class DayView : public QTableView {
  public:
    using QTableView::QTableView;

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* /*event*/) const override {
        return index.flags().testFlag(Qt::ItemIsSelectable) ? QItemSelectionModel::ClearAndSelect
                                                            : QItemSelectionModel::NoUpdate;
    }
};

/// A patch of the colour that days of the group are filled with.
class LegendSample : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        const colors::Calendar own = colors::calendar(palette());
        QPainter(this).fillRect(rect(), isEnabled() ? own.groupFill : own.disabledGroupFill);
    }
};

bool picksDay(const QKeyEvent& key) {
    return isPlainEnter(key) || (key.key() == Qt::Key_Space && !key.modifiers());
}

} // namespace

TDBCalendar::TDBCalendar(QWidget* parent) : QWidget(parent), model_(new TDBCalendarModel(this)) {
    makeDays();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(4);
    rows->addWidget(makeHead());
    rows->addWidget(days_, 1);
    rows->addWidget(makeLegend());
    setFocusProxy(days_);
    setDate(clock::today());
}

// Controls
// ------------------------------------------------------------------------------------------------------------

void TDBCalendar::makeDays() {
    days_ = new DayView(this);
    days_->setObjectName(u"Days"_s);
    days_->setModel(model_);
    days_->setItemDelegate(new DayPainter(days_));
    days_->setSelectionMode(QAbstractItemView::SingleSelection);
    days_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    days_->setShowGrid(false);
    days_->setTabKeyNavigation(false);
    days_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    days_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    days_->verticalHeader()->hide();
    for (QHeaderView* header : {days_->horizontalHeader(), days_->verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::Stretch);
        header->setSectionsClickable(false);
        header->setHighlightSections(false);
    }
    days_->horizontalHeader()->setMinimumSectionSize(LeastCellWidth);
    days_->verticalHeader()->setMinimumSectionSize(LeastCellHeight);
    days_->setMinimumSize(DaysOfWeek * LeastCellWidth + 2,
                          TDBCalendarModel::Weeks * LeastCellHeight +
                              days_->horizontalHeader()->sizeHint().height() + 2);
    switchInputMethodOff(*days_); // digits count as they are pressed
    days_->installEventFilter(this);
    connect(days_, &QTableView::clicked, this, [this](const QModelIndex& place) {
        typed_.clear();
        showHint();
        if (const QDate day = model_->dayAt(place); day.isValid())
            Q_EMIT picked(day);
    });
    connect(days_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& place) {
                if (const QDate day = model_->dayAt(place); day.isValid())
                    setDate(day);
            });
}

QWidget* TDBCalendar::makeHead() {
    auto* head = new QWidget(this);
    title_ = new QLabel(head);
    title_->setObjectName(u"Month"_s);
    title_->setAlignment(Qt::AlignCenter);
    QFont font = title_->font();
    font.setBold(true);
    font.setPixelSize(TitlePixels);
    title_->setFont(font);
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(makeButton(u"PreviousYear"_s, u"«"_s, u"上一年"_s, -MonthsOfYear));
    row->addWidget(makeButton(u"PreviousMonth"_s, u"‹"_s, u"上個月"_s, -1));
    row->addWidget(title_, 1);
    row->addWidget(makeButton(u"NextMonth"_s, u"›"_s, u"下個月"_s, 1));
    row->addWidget(makeButton(u"NextYear"_s, u"»"_s, u"下一年"_s, MonthsOfYear));
    return head;
}

QToolButton* TDBCalendar::makeButton(const QString& name, const QString& caption, const QString& spoken,
                                     int months) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(caption);
    button->setAccessibleName(spoken);
    button->setToolTip(spoken);
    button->setFixedSize(HeadHeight + 4, HeadHeight);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus); // the keyboard has keys of its own for it, in the days
    connect(button, &QToolButton::clicked, this, [this, months] { setDate(date_.addMonths(months)); });
    return button;
}

QWidget* TDBCalendar::makeLegend() {
    auto* row = new QWidget(this);
    legendSample_ = new LegendSample(row);
    legendSample_->setFixedSize(14, 14);
    legend_ = new QLabel(row);
    legend_->setObjectName(u"Group"_s);
    legend_->setTextFormat(Qt::PlainText);
    hint_ = new QLabel(row);
    hint_->setObjectName(u"Typed"_s);
    hint_->setTextFormat(Qt::PlainText);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->setSpacing(6);
    layout->addWidget(legendSample_);
    layout->addWidget(legend_, 1);
    layout->addWidget(hint_);
    showHint();
    return row;
}

// The day selected
// ------------------------------------------------------------------------------------------------------------

void TDBCalendar::setDate(QDate date) {
    if (!date.isValid())
        return;
    const QDate day = std::clamp(date, QDate(FirstYear, 1, 1), QDate(LastYear, MonthsOfYear, 31));
    if (day == date_)
        return;
    const bool sameMonth = date_.isValid() && day.year() == date_.year() && day.month() == date_.month();
    date_ = day;
    if (!sameMonth)
        showMonth();
    showSelected();
    Q_EMIT dateChanged(day);
    if (!sameMonth)
        Q_EMIT monthChanged(day.year(), day.month());
}

void TDBCalendar::showMonth() {
    model_->setMonth(date_.year(), date_.month());
    const QString text =
        u"%1年%2月　%3"_s.arg(date_.year()).arg(date_.month()).arg(yearOfRepublic(date_.year()));
    title_->setText(text);
    days_->setAccessibleName(text);
}

void TDBCalendar::showSelected() {
    days_->setCurrentIndex(model_->placeOf(date_));
}

bool TDBCalendar::eventFilter(QObject* watched, QEvent* event) {
    if (watched != days_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (goByTyping(key))
        return true;
    if (picksDay(key)) {
        Q_EMIT picked(date_);
        return true;
    }
    const std::optional<QDate> day = dayByKey(date_, key);
    if (day) {
        setDate(*day);
        typed_.clear();
        showHint();
    }
    return day.has_value();
}

/// Whether the key was one of those that type a day.
bool TDBCalendar::goByTyping(const QKeyEvent& key) {
    const TypedDay::Outcome outcome = typed_.take(key);
    if (outcome == TypedDay::Outcome::Day) {
        const QDate day = typed_.day();
        if (day.year() < FirstYear || day.year() > LastYear)
            typed_.refuse();
        else
            setDate(day);
    }
    showHint();
    return outcome != TypedDay::Outcome::NotMine;
}

void TDBCalendar::showHint() {
    hint_->setText(typed_.hint());
    days_->setAccessibleDescription(typed_.hint());
}

// Groups
// ------------------------------------------------------------------------------------------------------------

TDBCalendar::Group* TDBCalendar::groupNamed(const QString& name) {
    const auto found = groups_.find(name);
    return found == groups_.end() ? nullptr : &found->second;
}

void TDBCalendar::createGroup(const QString& name, const QString& description) {
    groups_[name] = {description, {}};
    markDays();
}

void TDBCalendar::addDay(const QString& name, QDate day) {
    if (Group* group = groupNamed(name); group && day.isValid()) {
        group->days.insert(day);
        days_->viewport()->update();
    }
}

void TDBCalendar::removeDay(const QString& name, QDate day) {
    if (Group* group = groupNamed(name)) {
        group->days.erase(day);
        days_->viewport()->update();
    }
}

void TDBCalendar::clearDays(const QString& name) {
    if (Group* group = groupNamed(name)) {
        group->days.clear();
        days_->viewport()->update();
    }
}

bool TDBCalendar::hasDay(const QString& name, QDate day) const {
    const auto found = groups_.find(name);
    return found != groups_.end() && found->second.days.contains(day);
}

std::set<QDate> TDBCalendar::days(const QString& name) const {
    const auto found = groups_.find(name);
    return found == groups_.end() ? std::set<QDate>() : found->second.days;
}

void TDBCalendar::showGroup(const QString& name) {
    shownGroup_ = name;
    markDays();
}

void TDBCalendar::markDays() {
    const Group* group = groupNamed(shownGroup_);
    model_->setGroup(group ? &group->days : nullptr, group ? group->description : QString());
    legend_->setText(group ? group->description : QString());
    legendSample_->setVisible(group != nullptr);
}

} // namespace pontrel
