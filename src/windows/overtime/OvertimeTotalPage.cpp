#include "windows/overtime/OvertimeTotalPage.h"

#include "app/CodeNames.h"
#include "rules/Session.h"
#include "rules/overtime/Overtime.h"
#include "store/DataSource.h"
#include "windows/overtime/OvertimeTab.h"

namespace pontrel {

using namespace Qt::StringLiterals;

OvertimeTotalPage::OvertimeTotalPage()
    : PeriodTab({.index = OvertimeTotalTab, .caption = u"加班查詢"_s, .table = u"Over01"_s},
                {.employee = {.number = UnknownCode,
                              .kind = LookupKind::QFrmEmpNO,
                              .box = u"Text4"_s,
                              .search = u"Search(2)"_s,
                              .label = u"Label4(97)"_s,
                              .caption = u"員工代號："_s,
                              .spokenName = u"員工代號"_s,
                              .width = 80,
                              .check = CodeCheck::Enter,
                              .afterSearch = LookupKey::Tab},
                 .dates = 2,
                 .rules = SilentDatePair,
                 .grid = u"TDBG1(1)"_s,
                 .columns = {{u"員工碼"_s, u"EmpNo"_s, 165, Qt::AlignLeft, {}},
                             named(names_, {u"姓名"_s, u"EmpNo"_s, 210, Qt::AlignLeft, {}}),
                             {u"加班總時數"_s, u"SubTot"_s, 150, Qt::AlignRight, {}}},
                 .atKeys = true}) {}

void OvertimeTotalPage::endTouched() {
    ask(); // whatever the mask holds: the date control keeps its date
}

void OvertimeTotalPage::ask() {
    if (!first().isValid() || !last().isValid())
        return;
    openSource(source(), overtimeTotal(EmpNo(), first(), last()));
    readNames(names_, sharedDatabase(), EmployeeNames);
    grid().refreshCells();
}

} // namespace pontrel
