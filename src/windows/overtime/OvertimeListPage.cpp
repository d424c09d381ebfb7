#include "windows/overtime/OvertimeListPage.h"

#include "app/CodeNames.h"
#include "rules/Session.h"
#include "rules/overtime/Overtime.h"
#include "store/DataSource.h"
#include "windows/overtime/OvertimeTab.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int CodeWidth = 80;

} // namespace

OvertimeListPage::OvertimeListPage()
    : RecordTab({.index = OvertimeListTab, .caption = u"加班明細"_s, .table = u"Over01"_s, .hasFrame = false})
    , employee_(addCode({.number = UnknownCode,
                         .kind = LookupKind::QFrmEmpNO,
                         .box = u"Text5"_s,
                         .search = u"Search(1)"_s,
                         .label = u"Label4(96)"_s,
                         .caption = u"員工代號："_s,
                         .spokenName = u"員工代號"_s,
                         .width = CodeWidth,
                         .check = CodeCheck::Enter,
                         .afterSearch = LookupKey::Enter}))
    , grid_(makeGrid(u"TDBG1(0)"_s)) {
    employee_->onEnter([this] { list(); });
    grid_->setEmptyText(u"沒有加班資料。請輸入員工代號後按 Enter。"_s);
    grid_->setColumns({{u"補休"_s, u"Rest"_s, 34, Qt::AlignLeft, {}},
                       {u"請領"_s, u"Draw"_s, 34, Qt::AlignLeft, {}},
                       {u"員工碼"_s, u"EmpNo"_s, 60, Qt::AlignLeft, {}},
                       named(names_, {u"姓名"_s, u"EmpNo"_s, 60, Qt::AlignLeft, {}}),
                       {u"加班日期"_s, u"OverDate"_s, 68, Qt::AlignLeft, {}},
                       {u"開始"_s, u"BegTime"_s, 40, Qt::AlignLeft, {}},
                       {u"結束"_s, u"EndTime"_s, 40, Qt::AlignLeft, {}},
                       {u"時數"_s, u"OverHours"_s, 34, Qt::AlignRight, {}},
                       {u"登錄人員"_s, u"Account"_s, 60, Qt::AlignLeft, {}},
                       {u"實際登錄時間"_s, u"TransDate"_s, 106, Qt::AlignLeft, {}}});
    auto* line = new QGridLayout;
    employee_->addTo(*line, 0, 0);
    line->setColumnStretch(1, 1);
    rows().addLayout(line);
    rows().addWidget(grid_, 1);
}

void OvertimeListPage::list() {
    openSource(source(), overtimeOfEmployee(employee_->text()));
    readNames(names_, sharedDatabase(), EmployeeNames);
    grid_->refreshCells();
}

} // namespace pontrel
