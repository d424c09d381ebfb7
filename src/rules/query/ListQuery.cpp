#include "rules/query/ListQuery.h"

#include "store/StatementText.h"

namespace pontrel {

using namespace Qt::StringLiterals;

std::optional<QString> listStatement(const ListQuery& query, const QString& table, const QString& dateColumn,
                                     UnitQuery unitQuery) {
    const QString all = u" Select * from "_s + table + u' ';
    const auto byDay = [&] { return u" where "_s + dateColumn + u" = "_s + dateLiteral(query.day); };
    switch (query.kind) {
    case 0:
        return u"Select * from "_s + table;
    case 1:
        return all + byDay() + u" Order by  EmpNo"_s;
    case 2:
        return all + byDay() + u"     and EmpNo = "_s + textLiteral(query.EmpNo) + u"  Order by EmpNo,"_s +
               dateColumn;
    case 3:
        return all + u" where EmpNo = "_s + textLiteral(query.EmpNo) + u" Order by "_s + dateColumn + u' ';
    case 4:
        if (unitQuery == UnitQuery::None)
            return std::nullopt;
        return u" Select "_s + table + u".* from "_s + table + u",Base06"_s + byDay() +
               u"     and Base06.EmpNo = "_s + table + u".EmpNo     and Base06.UnitNo = "_s +
               textLiteral(query.UnitNo) + u"  Order by base06.EmpNo,"_s + dateColumn;
    default:
        return std::nullopt;
    }
}

} // namespace pontrel
