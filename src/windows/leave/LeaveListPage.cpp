#include "windows/leave/LeaveListPage.h"

#include "app/CodeNames.h"
#include "app/Window.h"
#include "app/controls/TDBGrid.h"
#include "store/StatementText.h"
#include "windows/leave/LeaveNames.h"
#include "windows/leave/LeaveTab.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

LeaveListPage::LeaveListPage(int tab, const LeaveNames& names)
    : RecordTab({.index = tab, .caption = u"瀏覽"_s, .table = u"Holi03"_s, .hasFrame = false}) {
    CodeBox* employee = addCode({.number = EmployeeBrowsed,
                                 .kind = LookupKind::QFrmEmpNO,
                                 .box = u"Text5"_s,
                                 .search = u"Search(6)"_s,
                                 .searchCaption = u"查詢"_s,
                                 .label = u"Label4(96)"_s,
                                 .caption = u"員工代碼："_s,
                                 .spokenName = u"員工代碼"_s,
                                 .width = 90,
                                 .check = CodeCheck::Enter});
    employee->onEnter([this, employee] { showNotesOf(employee->text()); });
    TDBGrid* grid = makeGrid(u"TDBGrid1(3)"_s);
    grid->setColumns({{u"請領"_s, u"Money"_s, 32, Qt::AlignLeft, {}},
                      {u"假單編號"_s, u"BusNo"_s, 88, Qt::AlignLeft, {}},
                      named(names.types, {u"假別"_s, u"HoliNo"_s, 80, Qt::AlignLeft, {}}),
                      {u"請假開始"_s, u"HoliBegDate"_s, 66, Qt::AlignLeft, {}},
                      {{}, u"HoliBegTime"_s, 39, Qt::AlignLeft, {}},
                      {u"請假結束"_s, u"HoliEndDate"_s, 66, Qt::AlignLeft, {}},
                      {{}, u"HoliEndTime"_s, 39, Qt::AlignLeft, {}},
                      {u"天數"_s, u"HoliHours"_s, 34, Qt::AlignRight, {}},
                      {u"說明"_s, u"HoliDesc"_s, 92, Qt::AlignLeft, {}}});
    grid->setEmptyText(u"沒有假單。請輸入員工代碼後按 Enter，或先到「輸入假單」新增。"_s);
    grid->horizontalHeader()->setStretchLastSection(true);
    auto* line = new QGridLayout;
    line->setColumnStretch(1, 1);
    employee->addTo(*line, 0, 0);
    rows().addLayout(line);
    rows().addWidget(grid, 1);
}

void LeaveListPage::showNotesOf(const QString& EmpNo) {
    trapRead([&] {
        openSource(source(), u" Select *   From Holi03   Where EmpNo = "_s + textLiteral(EmpNo) +
                                 u" Order by HoliBegDate desc,HoliNo"_s);
    });
}

} // namespace pontrel
