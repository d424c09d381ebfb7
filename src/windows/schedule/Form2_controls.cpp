#include "app/ActionKeys.h"
#include "app/CodeCombo.h"
#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/Ranges.h"
#include "app/TwoLists.h"
#include "app/controls/Buttons.h"
#include "app/controls/OptionButton.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TDBCalendar.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TabPages.h"
#include "store/DataSource.h"
#include "windows/schedule/Form2.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

// Which controls the window has, where they sit, and which routine answers each.

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int PageMargin = 4;
constexpr int ButtonWidth = 92;

QGridLayout* makeGridOn(QWidget* frame) {
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(8, 6, 8, 6);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);
    return grid;
}

} // namespace

Form2::Form2(QWidget* parent)
    : TabbedWindow(parent, u"Form2"_s, u"制度管理"_s)
    , watch_(new FocusWatch(this))
    , Data1(new DataSource(this)) {
    makeControls();
    connectControls();
}

void Form2::makeControls() {
    Data1->setObjectName(u"Data1"_s);
    SSTab1->addTab(makeCalendarTab(), u"行事曆"_s);
    SSTab1->addTab(makeGenerationTab(), u"排班作業"_s);
    SSTab1->addTab(makeAdjustmentTab(), u"修改班表"_s);
    addStatusBar();
}

QWidget* Form2::makeCalendarTab() {
    auto* page = new QWidget;
    TDBC1 = new TDBCalendar(page);
    TDBC1->setObjectName(u"TDBC1"_s);
    TDBC1->setAccessibleName(u"行事曆"_s);
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    rows->addWidget(TDBC1);
    return page;
}

QWidget* Form2::makeGenerationTab() {
    auto* page = new QWidget;
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    rows->setSpacing(4);
    rows->addWidget(makeGenerationFrame(page));
    rows->addWidget(makeQueryFrame(page));
    TDBG1 = new TDBGrid(page);
    TDBG1->setObjectName(u"TDBG1"_s);
    TDBG1->setAccessibleName(u"班表"_s);
    TDBG1->setColumns({{u"日期"_s, u"YMD"_s, 178, Qt::AlignLeft, {}},
                       {u"員工碼"_s, u"EmpNo"_s, 178, Qt::AlignLeft, {}},
                       {u"時段"_s, u"TimeNo"_s, 178, Qt::AlignLeft, {}}});
    TDBG1->setEmptyText(u"沒有班表。請先按「產生班別表」，或改條件後按「開始查詢」。"_s);
    TDBG1->setSource(Data1);
    rows->addWidget(TDBG1, 1);
    return page;
}

QWidget* Form2::makeGenerationFrame(QWidget* page) {
    auto* frame = new QFrame(page);
    frame->setObjectName(u"Frame1(0)"_s);
    frame->setFrameStyle(QFrame::StyledPanel);
    QGridLayout& grid = *makeGridOn(frame);
    addRange(grid, 0, 0, {u"員工代號："_s, u"Lb1(0)"_s, u"000000"_s, u"ZZZZZZ"_s});
    addDateRange(grid, 1, 0, u"Lb1(1)"_s);
    addRange(grid, 2, 2, {u"班    別："_s, u"Lb1(2)"_s, u"0000"_s, u"ZZZZ"_s});
    CmdCal = makeWideButton(frame, u"CmdCal"_s, u"產生班別表"_s);
    grid.addWidget(CmdCal, 0, 5, 3, 1, Qt::AlignVCenter);
    DoneUpTo = new QLabel(frame);
    DoneUpTo->setObjectName(u"DoneUpTo"_s);
    grid.addWidget(DoneUpTo, 2, 5, Qt::AlignHCenter | Qt::AlignBottom);
    return frame;
}

QWidget* Form2::makeQueryFrame(QWidget* page) {
    auto* frame = new QGroupBox(u"查詢班表條件設定"_s, page);
    frame->setObjectName(u"Frame1(1)"_s);
    QGridLayout& grid = *makeGridOn(frame);
    addRange(grid, 0, 4, {u"員工代號："_s, {}, u"000000"_s, u"ZZZZZZ"_s});
    addDateRange(grid, 1, 2, {});
    addRange(grid, 2, 6, {u"時    段："_s, {}, {}, u"Z"_s});
    CmdQuery = makeWideButton(frame, u"CmdQuery"_s, u"開始查詢"_s);
    giveKey(*CmdQuery, ActionKey::Query);
    grid.addWidget(CmdQuery, 0, 5, 3, 1, Qt::AlignVCenter);
    return frame;
}

QWidget* Form2::makeAdjustmentTab() {
    auto* page = new QWidget;
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    rows->setSpacing(4);
    rows->addWidget(makeFilterFrame(page));
    lists_ = new TwoLists(page);
    lists_->setEmptyText(u"請先設定條件，按「確定」列出員工。"_s);
    lists_->setObjectName(u"Lists"_s);
    lists_->setEnterSelectsFirst(true);
    rows->addWidget(lists_, 1);
    rows->addWidget(makeSettingFrame(page));
    return page;
}

QWidget* Form2::makeFilterFrame(QWidget* page) {
    auto* frame = new QGroupBox(u"設定班別人員篩選條件"_s, page);
    frame->setObjectName(u"Frame2"_s);
    QGridLayout& grid = *makeGridOn(frame);
    joinDate(4, makeDateFields(frame, u"Mk2(4)"_s, u"TDBD2(4)"_s, u"日期"_s));
    auto* caption = new QLabel(u"日    期："_s, frame);
    caption->setBuddy(dates_[4].mask);
    auto* line = new QHBoxLayout;
    line->setSpacing(4);
    line->addWidget(dates_[4].mask);
    line->addWidget(dates_[4].date);
    line->addStretch(1);
    grid.addWidget(caption, 0, 0, Qt::AlignRight);
    grid.addLayout(line, 0, 1, 1, 3);
    addRange(grid, 1, 8, {u"時    段："_s, {}, {}, u"Z"_s});
    Command2 = makeWideButton(frame, u"Command2"_s, u"確定"_s);
    grid.addWidget(Command2, 0, 5, 2, 1, Qt::AlignVCenter);
    return frame;
}

QWidget* Form2::makeSettingFrame(QWidget* page) {
    auto* frame = new QGroupBox(u"時段設定"_s, page);
    frame->setObjectName(u"Frame3"_s);
    auto* line = new QHBoxLayout(frame);
    line->setContentsMargins(8, 6, 8, 6);
    const std::array<QString, 2> captions = {u"放假"_s, u"上班"_s};
    for (std::size_t index = 0; index < Option1.size(); ++index) {
        auto* option = new OptionButton(captions.at(index), frame);
        option->setObjectName(indexed(u"Option1"_s, static_cast<int>(index)));
        option->setAccessibleName(option->text());
        line->addWidget(option);
        line->addSpacing(8);
        Option1.at(index) = option;
    }
    Option1[0]->setChecked(true);
    auto* slot = new CodeCombo(frame, indexed(u"Combo2"_s, 10), u"時段"_s, {});
    Combo2[10] = slot;
    Lb1_5 = new QLabel(u"時段："_s, frame);
    Lb1_5->setObjectName(u"Lb1(5)"_s);
    Lb1_5->setBuddy(slot);
    Lb1_5->setEnabled(false);
    slot->setEnabled(false);
    Command3 = makeWideButton(frame, u"Command3"_s, u"儲存設定"_s);
    giveKey(*Command3, ActionKey::Save);
    line->addWidget(Lb1_5);
    line->addWidget(slot);
    line->addStretch(1);
    line->addWidget(Command3);
    return frame;
}

void Form2::addRange(QGridLayout& grid, int row, int index, const CodeRangeTexts& texts) {
    const CodeRange range = addCodeRange(grid, row, u"Combo2"_s, index, texts);
    Combo2.at(static_cast<std::size_t>(index)) = range.first;
    Combo2.at(static_cast<std::size_t>(index) + 1) = range.last;
}

void Form2::addDateRange(QGridLayout& grid, int row, int index, const QString& labelName) {
    const DateRange range =
        pontrel::addDateRange(grid, row, index, {u"日    期："_s, labelName, u"Mk2"_s, u"TDBD2"_s});
    joinDate(index, range.first);
    joinDate(index + 1, range.last);
}

void Form2::joinDate(int index, const DateFields& pair) {
    dates_.at(static_cast<std::size_t>(index)) = pair;
    new DatePair(pair.mask, pair.date, index, ModuleDatePair, *watch_, updating_, badDateMark_);
}

QPushButton* Form2::makeWideButton(QWidget* frame, const QString& name, const QString& caption) {
    QPushButton* button = makeButton(frame, name, caption);
    button->setMinimumWidth(ButtonWidth);
    return button;
}

void Form2::connectControls() {
    EnterAsTab::install(*this);
    onEvent(TDBC1, &TDBCalendar::picked, this, [this](QDate day) { TDBC1_Pick(day); });
    for (CodeCombo* box : Combo2)
        onEvent(box, &QComboBox::activated, box, [box] { box->cutToCode(); });
    onEvent(CmdCal, &QPushButton::clicked, this, [this] { CmdCal_Click(); });
    onEvent(CmdQuery, &QPushButton::clicked, this, [this] { CmdQuery_Click(); });
    onEvent(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    onEvent(Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    for (OptionButton* option : Option1)
        onEvent(option, &OptionButton::clicked, this, [this] { Option1_Click(); });
    onEvent(SSTab1, &QTabWidget::currentChanged, this, [this] { SSTab1_Click(); });
    onEvent(Data1, &DataSource::Reposition, this, [this] {
        StbTool->showCounter(Data1->recordset().AbsolutePosition(), Data1->recordset().RecordCount());
    });
}

} // namespace pontrel
