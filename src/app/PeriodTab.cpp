#include "app/PeriodTab.h"

#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/KeyHook.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

RecordTabPlan withoutFrame(RecordTabPlan plan) {
    plan.hasFrame = false;
    return plan;
}

} // namespace

PeriodTab::PeriodTab(RecordTabPlan plan, const PeriodTabParts& parts)
    : RecordTab(withoutFrame(std::move(plan)))
    , employee_(addCode(parts.employee))
    , first_(addDate(parts.dates, u"期間起日"_s, {}, parts.rules))
    , last_(addDate(parts.dates + 1, u"期間迄日"_s, {}, parts.rules))
    , grid_(makeGrid(parts.grid))
    , atKeys_(parts.atKeys) {
    placeBehind(last_.date, {employee_->search()});
    grid_->setColumns(parts.columns);
    grid_->setEmptyText(u"沒有資料。請輸入員工代碼，再輸入期間的起日與迄日。"_s);
    auto* lines = new QGridLayout;
    lines->setHorizontalSpacing(FieldSpacing);
    lines->setColumnStretch(1, 1);
    employee_->addTo(*lines, 0, 0);
    lines->addWidget(fields().caption(u"期間："_s, first_.mask), 1, 0, Qt::AlignRight);
    lines->addLayout(fieldLine({first_.mask, first_.date, fields().caption(u"～"_s), last_.mask, last_.date}),
                     1, 1);
    rows().addLayout(lines);
    rows().addWidget(grid_, 1);
}

QDate PeriodTab::first() const {
    return first_.date->date();
}

QDate PeriodTab::last() const {
    return last_.date->date();
}

QDate PeriodTab::firstTyped() const {
    const std::optional<QDate> typed = DatePair::dateOf(first_.mask->value());
    const bool isHeld = DatePair::dateOf(DatePair::maskText(first())) == first();
    const bool isChosen = first_.mask->value().isEmpty() && !isHeld;
    return isChosen ? first() : typed.value_or(QDate());
}

bool PeriodTab::isEndTyped() const {
    return DatePair::dateOf(last_.mask->value()).has_value();
}

void PeriodTab::endTouched() {
    if (isEndTyped())
        ask();
}

void PeriodTab::connectControls(FormState&) {
    onEvent(last_.mask, &TDBMask::changed, this, [this] { endTouched(); });
    if (atKeys_)
        onKeyDown(*last_.mask, [this](const QKeyEvent&) {
            endTouched(); // which a key that changes the mask does once more, behind the change
            return false;
        });
    onEvent(last_.date, &TDBDate::changed, this, [this] {
        // One that the mask cannot hold; any other comes by way of it.
        if (last_.mask->value().isEmpty() && last().isValid())
            ask();
    });
}

} // namespace pontrel
