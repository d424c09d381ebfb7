#include "windows/leave/LeaveHoursPage.h"

#include "store/DataSource.h"
#include "store/StatementText.h"
#include "windows/leave/LeaveTab.h"

namespace pontrel {

using namespace Qt::StringLiterals;

LeaveHoursPage::LeaveHoursPage(int tab)
    : PeriodTab({.index = tab, .caption = u"假時查詢"_s, .table = u"Holi01"_s},
                {.employee = {.number = EmployeeOfHours,
                              .kind = LookupKind::QFrmEmpNO,
                              .box = u"Text4"_s,
                              .search = u"Search(7)"_s,
                              .searchCaption = u"查詢"_s,
                              .label = u"Label4(97)"_s,
                              .caption = u"員工代碼："_s,
                              .spokenName = u"員工代碼"_s,
                              .width = 90,
                              .check = CodeCheck::Enter},
                 .dates = 3,
                 .rules = ModuleDatePair,
                 .grid = u"TDBGrid2"_s,
                 .columns = {{u"假別"_s, u"HNo"_s, 100, Qt::AlignLeft, {}},
                             {u"假別名稱"_s, u"HoliType"_s, 220, Qt::AlignLeft, {}},
                             {u"請假總日數"_s, u"hr"_s, 120, Qt::AlignRight, {}}}}) {}

void LeaveHoursPage::ask() {
    if (!first().isValid())
        return;
    source().setRecordSource(
        u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
        "  From Holi04,Holi01  where Holi04.HoliNo = Holi01.HoliNo      and Holi04.EmpNo = "_s +
        textLiteral(EmpNo()) + u"     and Holi04.HoliDate Between "_s + dateLiteral(first()) + u" and "_s +
        dateLiteral(last()) + u" Group by Holi04.HoliNo,HoliType "_s);
    source().Refresh();
}

} // namespace pontrel
