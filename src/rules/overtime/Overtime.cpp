#include "rules/overtime/Overtime.h"

#include "rules/attendance/Minutes.h"
#include "store/StatementText.h"

namespace pontrel {

using namespace Qt::StringLiterals;

std::int16_t overtimeHours(QTime begin, QTime end) {
    return MinutesToHours(MinutesBetween(begin, end));
}

QString overtimeOfEmployee(const QString& EmpNo) {
    return u"Select * From Over01 Where EmpNo = "_s + textLiteral(EmpNo) + u" Order by OverDate desc"_s;
}

QString overtimeTotal(const QString& EmpNo, QDate first, QDate last) {
    return u" Select EmpNo,Sum(OverHours) as SubTot From Over01  where OverDate between  "_s +
           dateLiteral(first) + u" and "_s + dateLiteral(last) + u"     and EmpNo = "_s + textLiteral(EmpNo) +
           u"  Group by EmpNo "_s;
}

QString punchesOfDay(const QString& EmpNo, QDate day) {
    return u"Select * from View02 Where UseDate ="_s + dateLiteral(day) + u" and EmpNo = "_s +
           textLiteral(EmpNo);
}

} // namespace pontrel
