#include "app/IFrmQuery.h"
#include "app/Lookup.h"
#include "app/Module1.h"
#include "app/controls/TabPages.h"
#include "store/DataSource.h"
#include "store/StatementText.h"
#include "windows/attendance/Form3.h"

#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>

// What the window looks up: the punches of an employee, the results of a query, the rows that follow a
// result.

namespace pontrel {

using namespace Qt::StringLiterals;

void Form3::Text1_Change() {
    EmpNotFound = false;
    gRecordset = sharedDatabase().openRecordset(u"SELECT EmpName FROM Base06 WHERE EmpNo ="_s +
                                                textLiteral(Text1->text()));
    if (gRecordset.AtEOF())
        EmpNotFound = true; // the label keeps the name found last, as is meant
    else
        Label3->setText(gRecordset.field(u"EmpName"_s).joined());
    gRecordset.Close();
}

void Form3::Text1_Enter() {
    if (EmpNotFound) {
        tell(u"無此【員工代碼】,請重新輸入"_s, WarningTitle);
        Text1->setFocus();
        return;
    }
    trapRead([this] { showPunchesOfEmployee(); });
}

void Form3::showPunchesOfEmployee() {
    const QString EmpNo = Text1->text();
    Data1[PunchQueryTab]->setRecordSource(u" Select *  From Atte01  Where EmpNo = "_s + textLiteral(EmpNo) +
                                          u" Order by UseDate desc,UseTime"_s);
    Data1[PunchQueryTab]->Refresh();
    Data1[PunchQueryTab]->MoveLastAndFirst();
    readNames();
    TDBG2->refreshCells();
    gRecordset = sharedDatabase().openRecordset(u"SELECT EmpNo, EmpName   From Base06  Where EmpNo ="_s +
                                                textLiteral(EmpNo));
    // The code as the store spells it. It goes in last: the change reads another set into the shared one.
    const QString code = gRecordset.field(u"EmpNo"_s).joined();
    Label3->setText(gRecordset.field(u"EmpName"_s).joined());
    gRecordset.Close();
    Text1->setText(code);
}

void Form3::Search_Click() {
    searchCode(LookupKind::QFrmEmpNO, *Text1, LookupKey::Enter);
}

void Form3::queryResults(Tab tab) {
    IFrmQuery::ask(this);
    DataSource& results = *Data1.at(static_cast<std::size_t>(tab));
    if (const auto statement = queryStatement(tab == ExceptionTab ? u"Atte03"_s : u"Atte02"_s, u"UseDate"_s,
                                              UnitQuery::ByDayAndUnit))
        results.setRecordSource(*statement);
    const QScopedValueRollback binding(binding_, true);
    refreshSource(results);
    showRowsOfResult();
}

void Form3::showRowsOfResult() {
    const int tab = SSTab1->currentIndex();
    if (tab != ExceptionTab && tab != AttendanceQueryTab)
        return;
    DataSource& results = *Data1.at(static_cast<std::size_t>(tab));
    // Without a current row the small grids keep what they hold.
    if (results.isEmpty() || results.recordset().AbsolutePosition() < 0)
        return;
    const QString EmpNo = results.recordset().field(u"EmpNo"_s).joined();
    const QString UseDate = results.recordset().field(u"UseDate"_s).joined();
    if (EmpNo.isEmpty() && UseDate.isEmpty())
        return;
    Data3[1]->setRecordSource(u"Select * from Holi04 Where EmpNo ="_s + textLiteral(EmpNo) +
                              u"     and HoliDate ="_s + dateLiteral(UseDate));
    Data3[1]->Refresh();
    Data3[2]->setRecordSource(u"Select * from Canc02 Where EmpNo ="_s + textLiteral(EmpNo) +
                              u"     and CnlDate ="_s + dateLiteral(UseDate));
    Data3[2]->Refresh();
}

} // namespace pontrel
