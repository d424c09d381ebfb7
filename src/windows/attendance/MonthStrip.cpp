#include "windows/attendance/MonthStrip.h"

#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/controls/Buttons.h"
#include "app/controls/Colors.h"
#include "app/controls/DayKeys.h"
#include "rules/Calendar.h"
#include "store/Format.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <array>
#include <functional>
#include <optional>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MostDays = 31;

using colors::Hue;

// In the order of DayState; the last three have the ground of a field.
constexpr std::array<std::optional<Hue>, DayStateCount> Hues{Hue::Red,     Hue::Orange,  Hue::Blue,
                                                             Hue::Violet,  Hue::Green,   Hue::Yellow,
                                                             std::nullopt, std::nullopt, std::nullopt};

} // namespace

/// A day in the strip: its number, its sign, its colour.
class DayCell : public QAbstractButton {
  public:
    DayCell(QWidget* parent, int number, std::function<bool(const QKeyEvent& key)> onKey)
        : QAbstractButton(parent), onKey_(std::move(onKey)) {
        setObjectName(indexed(u"Day"_s, number));
        setText(QString::number(number));
        setCheckable(true);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    void show(const MonthDay& day, bool chosen) {
        state_ = day.state;
        const QString spokenState = shortDate(day.date) + u' ' + stateName(day.state);
        setAccessibleName(spokenState);
        setToolTip(spokenState);
        setChecked(chosen);
        // Tab comes to the chosen day alone; from there the arrow keys lead on.
        setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
        setVisible(true);
        update();
    }

    [[nodiscard]] QSize sizeHint() const override {
        const QFontMetrics font = fontMetrics();
        return {font.horizontalAdvance(u"30"_s) + font.horizontalAdvance(u"假"_s) + 10, font.height() + 3};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const std::optional<Hue> hue = Hues.at(static_cast<std::size_t>(state_));
        const QRect area = rect().adjusted(1, 1, -1, -1);
        painter.fillRect(area, hue ? colors::ground(palette(), *hue) : palette().color(QPalette::Base));
        painter.setPen(QPen(palette().color(QPalette::Text), isChecked() ? 3 : 1));
        if (!isChecked())
            painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(isChecked() ? area.adjusted(1, 1, -1, -1) : area.adjusted(0, 0, -1, -1));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(area.adjusted(4, 0, -4, 0), Qt::AlignVCenter | Qt::AlignLeft, text());
        painter.drawText(area.adjusted(4, 0, -4, 0), Qt::AlignVCenter | Qt::AlignRight, stateSign(state_));
        if (hasFocus()) {
            QStyleOptionFocusRect focus;
            focus.initFrom(this);
            focus.rect = area.adjusted(3, 3, -3, -3);
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
        }
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->modifiers() & ~Qt::KeypadModifier || !onKey_(*event))
            QAbstractButton::keyPressEvent(event);
    }

  private:
    std::function<bool(const QKeyEvent& key)> onKey_;
    DayState state_ = DayState::NoRoster;
};

MonthStrip::MonthStrip(QWidget* parent) : QWidget(parent), caption_(new QLabel(this)) {
    setObjectName(u"MonthStrip"_s);
    setAccessibleName(u"當月各日"_s);
    makeCells();
    QPushButton* before = makeButton(this, indexed(u"CmdMonth"_s, 0), u"上月"_s);
    QPushButton* after = makeButton(this, indexed(u"CmdMonth"_s, 1), u"下月"_s);
    for (QPushButton* button : {before, after})
        button->setAutoDefault(false);
    onEvent(before, &QPushButton::clicked, this, [this] { choose(chosen_.addMonths(-1)); });
    onEvent(after, &QPushButton::clicked, this, [this] { choose(chosen_.addMonths(1)); });
    caption_->setObjectName(u"MonthCaption"_s);
    caption_->setAlignment(Qt::AlignCenter);
    auto* head = new QHBoxLayout;
    head->addWidget(before);
    head->addWidget(caption_, 1);
    head->addWidget(after);
    auto* days = new QGridLayout;
    days->setSpacing(1);
    for (int column = 0; column < DaysOfWeek; ++column) {
        auto* name = new QLabel(weekday(column), this);
        name->setObjectName(indexed(u"WeekDay"_s, column));
        name->setAlignment(Qt::AlignCenter);
        days->addWidget(name, 0, column);
    }
    days->setObjectName(u"Days"_s);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addLayout(head);
    rows->addLayout(days);
    rows->addStretch(1);
}

void MonthStrip::makeCells() {
    for (int number = 1; number <= MostDays; ++number) {
        auto* cell = new DayCell(this, number, [this](const QKeyEvent& key) { return moveByKey(key); });
        onEvent(cell, &QAbstractButton::clicked, this, [this, cell, number] {
            // A click checks the day; it is shown only where it can be read.
            cell->setChecked(number == chosen_.day());
            choose(QDate(chosen_.year(), chosen_.month(), number));
        });
        cells_.push_back(cell);
    }
}

void MonthStrip::setMonth(const std::vector<MonthDay>& days, QDate chosen) {
    const bool hadFocus = isAncestorOf(focusWidget()) && dynamic_cast<DayCell*>(focusWidget()) != nullptr;
    chosen_ = chosen;
    caption_->setText(u"%1年%2月"_s.arg(chosen.year()).arg(chosen.month()));
    auto* grid = findChild<QGridLayout*>(u"Days"_s);
    const int start = placeInWeek(days.front().date);
    for (std::size_t index = 0; index < cells_.size(); ++index) {
        DayCell* cell = cells_[index];
        if (index >= days.size()) {
            cell->hide();
            continue;
        }
        const int place = start + static_cast<int>(index);
        grid->addWidget(cell, place / DaysOfWeek + 1, place % DaysOfWeek);
        cell->show(days[index], days[index].date == chosen);
    }
    if (hadFocus)
        focusDay();
}

void MonthStrip::focusDay() {
    cells_.at(static_cast<std::size_t>(chosen_.day() - 1))->setFocus();
}

bool MonthStrip::moveByKey(const QKeyEvent& key) {
    const std::optional<QDate> day = dayByKey(chosen_, key);
    if (day)
        choose(*day);
    return day.has_value();
}

void MonthStrip::choose(QDate day) {
    if (day.isValid() && day.year() >= 100 && day.year() <= 9999)
        Q_EMIT dayChosen(day);
}

} // namespace pontrel
