#include "windows/writeoff/WriteOffCountPage.h"

#include "app/CodeNames.h"
#include "rules/Session.h"
#include "rules/writeoff/WriteOffCounts.h"
#include "store/DataSource.h"
#include "windows/writeoff/WriteOffTab.h"

namespace pontrel {

using namespace Qt::StringLiterals;

WriteOffCountPage::WriteOffCountPage()
    : PeriodTab({.index = WriteOffCountTab, .caption = u"註銷查詢"_s, .table = u"View01"_s},
                {.employee = {.number = EmployeeCounted,
                              .kind = LookupKind::QFrmEmpNO,
                              .box = u"Text4"_s,
                              .search = u"Search(1)"_s,
                              .label = u"Label4(97)"_s,
                              .caption = u"員工代號："_s,
                              .spokenName = u"員工代號"_s,
                              .width = 80,
                              .afterSearch = LookupKey::Tab},
                 .dates = 2,
                 .rules = SilentDatePair,
                 .grid = u"TDBG1(1)"_s,
                 .columns = {{u"員工碼"_s, u"EmpNo"_s, 100, Qt::AlignLeft, {}},
                             named(employeeNames_, {u"姓名"_s, u"EmpNo"_s, 170, Qt::AlignLeft, {}}),
                             named(reasonNames_, {u"註銷原因"_s, u"CnlNo"_s, 190, Qt::AlignLeft, {}}),
                             {u"註銷次數"_s, u"CnlTimes"_s, 80, Qt::AlignRight, {}}},
                 .atKeys = true}) {}

void WriteOffCountPage::ask() {
    CountWriteOffs(sharedDatabase(), EmpNo(), firstTyped(), last());
    readNames(employeeNames_, sharedDatabase(), EmployeeNames);
    readNames(reasonNames_, sharedDatabase(), WriteOffReasonNames);
    openSource(source(), table());
}

} // namespace pontrel
