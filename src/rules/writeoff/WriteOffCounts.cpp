#include "rules/writeoff/WriteOffCounts.h"

#include "store/StatementForm.h"
#include "store/StatementText.h"
#include "store/StoreText.h"

#include <QHash>

#include <array>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// How often each code stands in the entries of the employee and the period, by its folded case: one pass
/// over his rows in place of four for each reason.
QHash<QString, std::int64_t> countReasons(Database& database, const QString& EmpNo, QDate first, QDate last) {
    const Rows entries = database.select(
        u"SELECT CnlNo1,CnlNo2,CnlNo3,CnlNo4   From Canc02   where EmpNo = "_s + textLiteral(EmpNo) +
        u"     and CnlDate between  "_s + dateLiteral(first) + u" and "_s + dateLiteral(last));
    QHash<QString, std::int64_t> spelled;
    for (const std::vector<Value>& entry : entries) {
        for (const Value& reason : entry) {
            if (!reason.isNull())
                ++spelled[reason.toText()];
        }
    }
    QHash<QString, std::int64_t> counts;
    for (const auto& [reason, count] : spelled.asKeyValueRange())
        counts[foldedCode(reason)] += count;
    return counts;
}

void insertCounts(Database& database, const QString& EmpNo, QDate first, QDate last) {
    static const StatementForm insert(u"Insert Into View01(EmpNo,BegDate,EndDate,CnlNo,CnlTimes) "
                                      "Values('',#2000/1/1#,#2000/1/1#,'',0)"_s);
    const Rows reasons = database.select(u"SELECT CnlNo From Canc01 "_s);
    if (reasons.isEmpty() || !first.isValid() || !last.isValid())
        return;
    const QHash<QString, std::int64_t> counts = countReasons(database, EmpNo, first, last);
    for (const std::vector<Value>& reason : reasons) {
        const QString CnlNo = reason.front().joined();
        database.execute(insert,
                         std::array<Value, 5>{EmpNo, first, last, CnlNo, counts.value(foldedCode(CnlNo))});
    }
    database.execute(u"delete * from View01  Where CnlTimes = 0"_s);
}

} // namespace

void CountWriteOffs(Database& database, const QString& EmpNo, QDate first, QDate last) {
    runStage(database, [&] {
        database.execute(u"delete * from View01"_s);
        insertCounts(database, EmpNo, first, last);
    });
}

} // namespace pontrel
