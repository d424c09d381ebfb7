#include "windows/writeoff/WriteOffEntryPage.h"

#include "app/CodeNames.h"
#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "rules/Session.h"
#include "store/Clock.h"
#include "store/DataSource.h"
#include "store/Format.h"
#include "windows/writeoff/WriteOffTab.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int EmployeeLength = 5; ///< Of an entry; the column takes more.
constexpr int EmployeeWidth = 60;
constexpr int ReasonWidth = 36;
constexpr int FirstReasonLabel = 7; ///< The labels of the reasons count down.
constexpr int FirstReasonSearch = 6;

/// An entry of its own has the day alone, one of a batch the time as well.
QString shownStamp(const Value& stamp) {
    const bool dayAlone = !stamp.isNull() && stamp.toTime() == QTime(0, 0);
    return dayAlone ? shortDate(stamp.toDate()) : TDBGrid::shownText(stamp);
}

/// The row of Text5(index), which the caller completes with label and width.
CodeBoxRow codeRow(int index, LookupKind kind, const QString& caption, const QString& column, int search) {
    return {.number = EmployeeOfEntry + index,
            .kind = kind,
            .box = indexed(u"Text5"_s, index),
            .search = indexed(u"Search"_s, search),
            .caption = caption,
            .column = column,
            .spokenName = spoken(caption),
            .check = CodeCheck::Leaving,
            .refusal = CodeRefusal::LookupAndFocus,
            .afterSearch = LookupKey::Tab};
}

} // namespace

WriteOffEntryPage::WriteOffEntryPage()
    : RecordTab({.index = WriteOffEntryTab,
                 .caption = u"註銷明細"_s,
                 .table = u"Canc02"_s,
                 .bar = wholeBarWithBack()}) {
    TDBGrid* grid = makeList();
    makeCodes();
    frame().setLayout(makeLines());
    rows().addWidget(grid, 1);
    rows().addWidget(&frame());
    rows().addWidget(&bar());
}

TDBGrid* WriteOffEntryPage::makeList() {
    const auto reason = [](int position) {
        return GridColumn{positionName(position), u"CnlNo%1"_s.arg(position), 53, Qt::AlignLeft, {}};
    };
    TDBGrid* grid = makeGrid(u"TDBG1(0)"_s);
    grid->setColumns({{u"員工碼"_s, u"EmpNo"_s, 44, Qt::AlignLeft, {}},
                      named(employeeNames_, {u"姓名"_s, u"EmpNo"_s, 54, Qt::AlignLeft, {}}),
                      {u"註銷日期"_s, u"CnlDate"_s, 70, Qt::AlignLeft, {}},
                      reason(1),
                      reason(2),
                      reason(3),
                      reason(4),
                      {u"登錄人員"_s, u"Account"_s, 54, Qt::AlignLeft, {}},
                      {u"輸入時間"_s, u"TransDate"_s, 106, Qt::AlignLeft, shownStamp}});
    grid->setEmptyText(u"沒有註銷資料。請按「新增資料」建立，或按「更新」顯示全部。"_s);
    // Ahead of the grid, which shows the new rows with the names of now.
    onEvent(&source(), &DataSource::RowsChanged, this,
            [this] { readNames(employeeNames_, sharedDatabase(), EmployeeNames); });
    return grid;
}

void WriteOffEntryPage::makeCodes() {
    CodeBoxRow employee = codeRow(0, LookupKind::QFrmEmpNO, u"員工代號："_s, u"EmpNo"_s, 0);
    employee.label = u"Label4(96)"_s;
    employee.width = EmployeeWidth;
    employee.length = EmployeeLength;
    employee_ = addCode(employee);
    setFirstField(&employee_->box());
    date_ = addDate(1, u"註銷日期"_s, u"CnlDate"_s, SilentDatePair);
    for (int swipe = 0; swipe < static_cast<int>(reasons_.size()); ++swipe) {
        const auto place = static_cast<std::size_t>(swipe);
        CodeBoxRow reason = codeRow(swipe + 1, LookupKind::QFrmCnlNo, reasonCaption(swipe + 1),
                                    u"CnlNo%1"_s.arg(swipe + 1), FirstReasonSearch + swipe);
        reason.label = indexed(u"Label40"_s, FirstReasonLabel - swipe);
        reason.width = ReasonWidth;
        reasons_.at(place) = addCode(reason);
    }
}

QLayout* WriteOffEntryPage::makeLines() {
    account_ = fields().shown(u"Label4(0)"_s, u"Account"_s);
    entered_ = fields().shown(u"Label5"_s, u"TransDate"_s);
    auto* lines = new QGridLayout;
    lines->setHorizontalSpacing(FieldSpacing);
    lines->setVerticalSpacing(4);
    employee_->addTo(*lines, 0, 0);
    lines->addWidget(fields().caption(u"註銷日期："_s, date_.mask), 0, 2, Qt::AlignRight);
    lines->addLayout(fieldLine({date_.mask, date_.date}), 0, 3);
    for (int swipe = 0; swipe < static_cast<int>(reasons_.size()); ++swipe)
        reasons_.at(static_cast<std::size_t>(swipe))->addTo(*lines, 1 + swipe / 2, 2 * (swipe % 2));
    lines->addWidget(fields().caption(u"登錄人員："_s, account_), 3, 0, Qt::AlignRight);
    lines->addWidget(account_, 3, 1);
    lines->addWidget(fields().caption(u"實際輸入時間："_s, entered_), 3, 2, Qt::AlignRight);
    lines->addWidget(entered_, 3, 3);
    lines->setColumnStretch(1, 1);
    lines->setColumnStretch(3, 1);
    return lines;
}

RecordRules WriteOffEntryPage::rules() {
    return {.alsoWithRows = {BarAction::Query},
            .alsoWithoutRows = {BarAction::Query},
            .leftAlone = {BarAction::Back},
            .printTab = WriteOffReportsTab};
}

RecordSteps WriteOffEntryPage::steps() {
    return {.afterReposition = [this] { showNamesOfRow(); },
            .afterAdd = [this] { startRow(); },
            .focusFirst = [this] { focusFirst(); },
            .query = [this] { askForRows(u"CnlDate"_s); }};
}

void WriteOffEntryPage::startRow() {
    account_->setText(gAccount);
    entered_->setText(shortDate(clock::today()));
    clearMasks();
    for (CodeBox* reason : reasons_)
        reason->clearName();
}

void WriteOffEntryPage::focusFirst() {
    if (source().editMode() == EditMode::Add)
        date_.mask->setFocus();
    else
        employee_->box().setFocus();
}

void WriteOffEntryPage::showNamesOfRow() {
    if (source().editMode() != EditMode::None)
        return;
    employee_->showNameOfRow();
    for (CodeBox* reason : reasons_)
        reason->showNameOfRow();
}

} // namespace pontrel
