#include "app/ActionKeys.h"
#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/FormState.h"
#include "app/Ranges.h"
#include "app/controls/Buttons.h"
#include "app/controls/HintedList.h"
#include "app/controls/NumberEntry.h"
#include "app/controls/OptionButton.h"
#include "rules/attendance/Positions.h"
#include "windows/reports/ReportPage.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

// Which controls a tab has, and where they sit.

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int PageMargin = 4;
constexpr int ButtonWidth = 92;
constexpr int MostOptionsInColumn = 4;
constexpr int MostColumns = 3;    ///< Alike on all tabs that have the room.
constexpr int OptionSpacing = 14; ///< Between the columns of options.

QFrame* makeFrame(QWidget* parent) {
    auto* frame = new QFrame(parent);
    frame->setFrameStyle(QFrame::StyledPanel);
    return frame;
}

QGridLayout* makeGridOn(QWidget* frame) {
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(8, 6, 8, 6);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);
    return grid;
}

void keepPlaceWhenHidden(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

OptionButton* makeOption(QWidget* parent, const QString& name, const QString& caption) {
    auto* option = new OptionButton(caption, parent);
    option->setObjectName(name);
    option->setAccessibleName(caption);
    return option;
}

} // namespace

QString ReportPage::array(const QString& name) const {
    return name + QString::number(static_cast<int>(tab_) + 1);
}

void ReportPage::makeControls() {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    rows->setSpacing(PageMargin);
    auto* choosing = new QHBoxLayout;
    choosing->setSpacing(2 * PageMargin);
    choosing->addWidget(makeOptions());
    const bool hasList = tab_ == ReportTab::Leave || tab_ == ReportTab::WriteOff;
    if (hasList)
        choosing->addLayout(makeList(), 1);
    rows->addLayout(choosing, hasList ? 1 : 0);
    rows->addWidget(makeRanges());
    if (!hasList)
        rows->addStretch(1);
    rows->addLayout(makeButtons());
}

QWidget* ReportPage::makeOptions() {
    QFrame* frame = makeFrame(this);
    QGridLayout& grid = *makeGridOn(frame);
    grid.setHorizontalSpacing(OptionSpacing);
    std::vector<const Report*> own;
    for (const Report& report : reports()) {
        if (report.tab == tab_)
            own.push_back(&report);
    }
    const int count = static_cast<int>(own.size());
    const int columns = (count + MostOptionsInColumn - 1) / MostOptionsInColumn;
    const int inColumn = (count + columns - 1) / columns;
    for (int index = 0; index < count; ++index) {
        const Report& report = *own[static_cast<std::size_t>(index)];
        OptionButton* option = makeOption(frame, indexed(array(u"Option"_s), index), report.caption);
        option->setToolTip(report.code.toUpper());
        grid.addWidget(option, index % inColumn, index / inColumn);
        options_.push_back(option);
    }
    grid.setRowStretch(inColumn, 1);
    for (int column = 0; column < MostColumns; ++column)
        grid.setColumnStretch(column, 1);
    options_.front()->setChecked(true);
    return frame;
}

QLayout* ReportPage::makeList() {
    const bool isLeave = tab_ == ReportTab::Leave;
    listCaption_ = new QLabel(isLeave ? u"假    別："_s : u"註銷原因："_s, this);
    listCaption_->setObjectName(u"ListCaption"_s);
    keepPlaceWhenHidden(*listCaption_);
    list_ = new HintedList(this);
    list_->setObjectName(isLeave ? u"List1"_s : u"List2"_s);
    list_->setAccessibleName(spoken(listCaption_->text()));
    list_->setEmptyText(isLeave ? u"沒有假別。請先到「差假管理」的「假別設定」建立。"_s
                                : u"沒有註銷原因。請先到「註銷管理」的「註銷原因」建立。"_s);
    list_->setToolTip(u"按住 Ctrl 鍵可選取多項，Ctrl+A 全選"_s);
    listCaption_->setBuddy(list_);
    auto* line = new QHBoxLayout;
    line->setSpacing(PageMargin);
    line->addWidget(listCaption_, 0, Qt::AlignTop);
    line->addWidget(list_, 1);
    return line;
}

QWidget* ReportPage::makeRanges() {
    QFrame* frame = makeFrame(this);
    QGridLayout& grid = *makeGridOn(frame);
    if (tab_ == ReportTab::Basic) {
        addDates(grid, u"到職日期："_s);
        addDates(grid, u"離職日期："_s);
    } else {
        addDates(grid, u"日    期："_s);
    }
    for (const ReportRange& range : reportRanges(tab_))
        addCodes(grid, range);
    if (tab_ == ReportTab::Attendance)
        addPunchMarks(grid);
    return frame;
}

void ReportPage::addDates(QGridLayout& grid, const QString& caption) {
    const int first = static_cast<int>(dates_.size());
    const DateRange range =
        addDateRange(grid, grid.rowCount(), first,
                     {caption, indexed(u"DateCaption"_s, first), array(u"Mk"_s), array(u"TDBD"_s)});
    int index = first;
    for (const DateFields& pair : {range.first, range.last}) {
        dates_.push_back(pair);
        new DatePair(pair.mask, pair.date, index++, SilentDatePair, form_.watch, form_.updating, form_.mark);
    }
    dateRows_.push_back({range.caption, first, index});
}

void ReportPage::addCodes(QGridLayout& grid, const ReportRange& range) {
    const int row = grid.rowCount();
    const QString label = indexed(u"ComboCaption"_s, range.combo);
    QLabel* caption = nullptr;
    if (range.defaults.size() == 2) {
        const CodeRange boxes = addCodeRange(grid, row, array(u"Combo"_s), range.combo,
                                             {range.caption, label, range.defaults[0], range.defaults[1]});
        combos_.insert(combos_.end(), {boxes.first, boxes.last});
        caption = boxes.caption;
    } else {
        auto* box = new CodeCombo(grid.parentWidget(), indexed(array(u"Combo"_s), range.combo),
                                  spoken(range.caption), range.defaults[0]);
        box->addEntries(numberChoices(range.kind));
        makeNumberBox(*box);
        grid.addWidget(box, row, 1);
        caption = addRangeCaption(grid, row, range.caption, label, box);
        combos_.push_back(box);
    }
    comboKinds_.resize(combos_.size(), range.kind);
    comboRows_.push_back({caption, range.combo, static_cast<int>(combos_.size())});
}

void ReportPage::addPunchMarks(QGridLayout& grid) {
    FrameTS_ = new QWidget(grid.parentWidget());
    FrameTS_->setObjectName(u"FrameTS"_s);
    auto* line = new QHBoxLayout(FrameTS_);
    line->setContentsMargins(0, 2, 0, 2);
    line->setSpacing(6);
    for (const QString& caption : QStringList{u"全日"_s} + positionNames()) {
        const int index = static_cast<int>(punchMarks_.size());
        OptionButton* mark = makeOption(FrameTS_, indexed(u"OptionTS"_s, index), caption);
        line->addWidget(mark);
        punchMarks_.push_back(mark);
    }
    line->addStretch(1);
    punchMarks_.front()->setChecked(true);
    const int row = grid.rowCount();
    punchMarkCaption_ =
        addRangeCaption(grid, row, u"卡    別："_s, u"PunchMarkCaption"_s, punchMarks_.front());
    grid.addWidget(FrameTS_, row, 1, 1, 4);
    for (QWidget* part : {FrameTS_, static_cast<QWidget*>(punchMarkCaption_)})
        keepPlaceWhenHidden(*part);
}

QLayout* ReportPage::makeButtons() {
    auto* line = new QHBoxLayout;
    line->setSpacing(PageMargin);
    line->addStretch(1);
    const QStringList captions{u"列印"_s, u"離開"_s};
    for (int index = 0; index < captions.size(); ++index) {
        QPushButton* button = makeButton(this, indexed(array(u"Cmd"_s), index), captions.at(index));
        button->setMinimumWidth(ButtonWidth);
        line->addWidget(button);
        onEvent(button, &QPushButton::clicked, this, [this, index] { Cmd_Click(index); });
        if (index == 0)
            giveKey(*button, ActionKey::Print);
    }
    return line;
}

} // namespace pontrel
