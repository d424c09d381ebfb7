#include "app/CodeNames.h"
#include "app/ControlNames.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "store/DataSource.h"
#include "windows/leave/LeaveNames.h"
#include "windows/leave/LeaveNotePage.h"
#include "windows/leave/LeaveTab.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

// Which controls the tab of the leave notes has, and where they sit.

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int BoxHeight = 21; ///< Lower than usual: the note stands above its day rows.
constexpr int LineSpacing = 1;
constexpr int CodeWidth = 36; ///< At least: a box is as wide as its longest code.
constexpr int DateWidth = 100;
constexpr int HeadSpacing = 16;
constexpr int HoursWidth = 44;
constexpr int FigureWidth = 40;
constexpr int FirstBalance = 11; ///< Of Label4.

QHBoxLayout* lineOf(std::initializer_list<QWidget*> parts) {
    auto* line = new QHBoxLayout;
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(4);
    for (QWidget* part : parts)
        line->addWidget(part);
    return line;
}

} // namespace

LeaveNotePage::LeaveNotePage(int tab, const LeaveNames& names)
    : RecordTab({.index = tab,
                 .caption = u"輸入假單"_s,
                 .table = u"Holi03"_s,
                 .frameCaption = u"假單輸入"_s,
                 .bar = wholeBarWithBack()})
    , Data2(addSource(u"Data2(0)"_s, u"Holi04"_s)) {
    // Ahead of the fields, of which Tab is to lead from the last one to the bar.
    QHBoxLayout* dayRows = makeDayRows(names);
    makeFields();
    rows().addWidget(&frame());
    rows().addLayout(dayRows, 1);
    rows().addWidget(&bar());
}

void LeaveNotePage::makeFields() {
    auto* grid = new QGridLayout(&frame());
    grid->setContentsMargins(6, 2, 6, 4);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(LineSpacing);
    QHBoxLayout* head = makeHead(*grid);
    addCodes(*grid);
    addPeriod(*grid, 4, Begin, u"自"_s, u"HoliBeg"_s);
    addPeriod(*grid, 5, End, u"至"_s, u"HoliEnd"_s);

    hours_ = fields().box(u"Text3(3)"_s, u"時數"_s, u"HoliHours"_s, HoursWidth);
    grid->addWidget(fields().caption(u"時數："_s, hours_), 3, 2, Qt::AlignRight);
    grid->addWidget(hours_, 3, 3, Qt::AlignLeft);
    QLineEdit* reason = fields().box(u"Text3(4)"_s, u"請假說明"_s, u"HoliDesc"_s);
    grid->addWidget(fields().caption(u"請假說明："_s, reason), 6, 0, Qt::AlignRight);
    grid->addWidget(reason, 6, 1, 1, 3);
    QCheckBox* claimed = fields().check(u"Check2"_s, {}, u"Money"_s);
    claimed->setAccessibleName(u"請領"_s);
    head->insertWidget(1, claimed);
    head->insertWidget(1, fields().caption(u"請領："_s, claimed));
    head->insertSpacing(1, HeadSpacing);

    addBalances(*grid, 2, 5);
    grid->setColumnStretch(1, 1);
    for (QLineEdit* box : frame().findChildren<QLineEdit*>())
        box->setFixedHeight(BoxHeight);
    for (const DateFields& dates : dates_)
        dates.date->setFixedHeight(BoxHeight);
    for (const CodeBox* code : {employee_, substitute_, type_})
        code->search()->setFixedHeight(BoxHeight);
}

QHBoxLayout* LeaveNotePage::makeHead(QGridLayout& grid) {
    BusNo = fields().shown(u"Label4(0)"_s, u"BusNo"_s);
    account_ = fields().shown(u"Label4(1)"_s, u"Account"_s);
    entryDate_ = fields().shown(u"Label4(9)"_s, u"TransDate"_s);
    entryKind_ = fields().shown(u"Label4(10)"_s, u"TransType"_s);
    QHBoxLayout* line = lineOf({BusNo});
    line->addStretch(1);
    for (QWidget* part : std::initializer_list<QWidget*>{fields().caption(u"登錄人員："_s, account_),
                                                         account_, entryDate_, entryKind_})
        line->addWidget(part);
    grid.addWidget(fields().caption(u"假單單號："_s, BusNo), 0, 0, Qt::AlignRight);
    grid.addLayout(line, 0, 1, 1, -1);
    return line;
}

void LeaveNotePage::addCodes(QGridLayout& grid) {
    const auto row = [](int index, int number, LookupKind kind, const QString& caption, const QString& column,
                        const QString& label) -> CodeBoxRow {
        return {.number = number,
                .kind = kind,
                .box = indexed(u"Text3"_s, index),
                .search = indexed(u"Search"_s, index + 2),
                .searchCaption = u"查詢"_s,
                .label = label,
                .caption = caption,
                .column = column,
                .spokenName = spoken(caption),
                .width = CodeWidth,
                .check = CodeCheck::Leaving,
                .refusal = CodeRefusal::Lookup};
    };
    CodeBoxRow employee =
        row(0, EmployeeOfNote, LookupKind::QFrmEmpNO, u"員工代碼："_s, u"EmpNo"_s, u"Label4(2)"_s);
    employee.related = {{u"TitleNo"_s, LookupKind::QFrmTitleNo, u"Label4(3)"_s},
                        {u"ClsNo"_s, LookupKind::QFrmClsNo, u"Label4(4)"_s},
                        {u"UnitNo"_s, LookupKind::QFrmUnitNo, u"Label4(5)"_s},
                        {u"WorkNo"_s, LookupKind::QFrmWorkNo, u"Label4(6)"_s}};
    CodeBoxRow substitute =
        row(1, SubstituteOfNote, LookupKind::QFrmEmpNO, u"代  理  人 :"_s, u"RepEmpNo"_s, u"Label4(7)"_s);
    substitute.refusal = CodeRefusal::MoveOn; // the message stands alone
    employee_ = addCode(employee);
    employee_->onFound(BalanceColumns, [this](const Rows& found) { showBalances(found); });
    substitute_ = addCode(substitute);
    type_ = addCode(row(2, TypeOfNote, LookupKind::QFrmHoliNo, u"假別代碼："_s, u"HoliNo"_s, u"Label4(8)"_s));

    // Behind the employee's name stand his title, class, unit and employment.
    QHBoxLayout* line = lineOf({&employee_->box(), employee_->search(), employee_->label()});
    for (std::size_t related = 0; related < employee.related.size(); ++related) {
        line->addSpacing(4);
        line->addWidget(employee_->relatedLabel(related));
    }
    line->addStretch(1);
    grid.addWidget(employee_->caption(), 1, 0, Qt::AlignRight);
    grid.addLayout(line, 1, 1, 1, -1);
    line = lineOf({&substitute_->box(), substitute_->search()});
    line->addWidget(substitute_->label(), 1);
    grid.addWidget(substitute_->caption(), 2, 0, Qt::AlignRight);
    grid.addLayout(line, 2, 1, 1, 3);
    type_->addTo(grid, 3, 0);
    setFirstField(&employee_->box());
}

void LeaveNotePage::addPeriod(QGridLayout& grid, int row, std::size_t end, const QString& word,
                              const QString& columns) {
    const int index = static_cast<int>(end);
    const DateFields dates = addDate(index, u"請假日期"_s + word, columns + u"Date"_s, ModuleDatePair);
    dates.date->setFixedWidth(DateWidth);
    TDBTime* time = fields().time(indexed(u"TDBTime1"_s, index), u"請假時間"_s + word, columns + u"Time"_s);
    dates_.at(end) = dates;
    TDBTime1.at(end) = time;
    QHBoxLayout* line = lineOf({fields().caption(word), dates.mask, dates.date, time});
    line->addStretch(1);
    if (end == Begin)
        grid.addWidget(fields().caption(u"請假日期："_s, dates.mask), row, 0, Qt::AlignRight);
    grid.addLayout(line, row, 1, 1, 3);
}

void LeaveNotePage::addBalances(QGridLayout& grid, int row, int column) {
    const std::array<QString, 3> headings{u"可休"_s, u"已休"_s, u"剩餘"_s};
    const std::array<QString, 4> captions{u"本年可休"_s, u"去年保休"_s, u"事假"_s, u"病假"_s};
    for (std::size_t index = 0; index < balances_.size(); ++index) {
        QLabel* figure = fields().shown(indexed(u"Label4"_s, FirstBalance + static_cast<int>(index)));
        figure->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        figure->setFixedSize(FigureWidth, BoxHeight);
        balances_.at(index) = figure;
        grid.addWidget(figure, row + 1 + static_cast<int>(index / headings.size()),
                       column + 1 + static_cast<int>(index % headings.size()));
    }
    // It reaches over the gap beside the columns: the reason needs the room.
    grid.addWidget(fields().caption(u"請假狀況："_s, balances_.front()), row, column - 1, 1, 2,
                   Qt::AlignRight);
    for (std::size_t heading = 0; heading < headings.size(); ++heading)
        grid.addWidget(fields().caption(headings.at(heading)), row, column + 1 + static_cast<int>(heading),
                       Qt::AlignHCenter);
    for (std::size_t caption = 0; caption < captions.size(); ++caption)
        grid.addWidget(fields().caption(captions.at(caption), balances_.at(headings.size() * caption)),
                       row + 1 + static_cast<int>(caption), column, Qt::AlignRight);
}

QHBoxLayout* LeaveNotePage::makeDayRows(const LeaveNames& names) {
    dayRows_ = makeGrid(u"TDBGrid1(2)"_s, *Data2);
    dayRows_->setEmptyText(u"假單存檔後，這裡逐日列出請假的時間。"_s);
    dayRows_->setAccessibleName(u"假單明細"_s);
    dayRows_->setColumns({named(names.types, {u"假別"_s, u"HoliNo"_s, 80, Qt::AlignLeft, {}}),
                          {u"日期"_s, u"HoliDate"_s, 66, Qt::AlignLeft, {}},
                          named(names.weekdays, {{}, u"HoliDate"_s, 66, Qt::AlignLeft, {}}),
                          {u"開始"_s, u"BegTime"_s, 39, Qt::AlignLeft, {}},
                          {u"結束"_s, u"EndTime"_s, 39, Qt::AlignLeft, {}},
                          {u"時數"_s, u"HoliHours"_s, 32, Qt::AlignRight, {}},
                          {u"時段"_s, u"TimeNo"_s, 32, Qt::AlignLeft, {}},
                          {u"假單編號"_s, u"BusNo"_s, 90, Qt::AlignLeft, {}}});
    CmdHD = new QPushButton(u"假單明細查詢"_s, this);
    CmdHD->setObjectName(u"CmdHD"_s);
    CmdHD->setAccessibleName(CmdHD->text());
    auto* caption = new QLabel(u"假單明細："_s, this);
    caption->setBuddy(dayRows_);
    auto* side = new QVBoxLayout;
    side->setSpacing(LineSpacing);
    side->addWidget(caption);
    side->addWidget(CmdHD);
    side->addStretch(1);
    auto* line = lineOf({});
    line->addLayout(side);
    line->addWidget(dayRows_, 1);
    return line;
}

} // namespace pontrel
