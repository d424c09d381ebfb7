#include "demo/Plan.h"
#include "demo/Rows.h"
#include "rules/Session.h"
#include "rules/writeoff/WriteOffBatch.h"

namespace pontrel::demo {

using namespace Qt::StringLiterals;

namespace {

const QString Clerk = QStringLiteral("demo");

QDate march(int day) {
    return {2010, 3, day};
}

struct Reason {
    const char16_t* code;
    const char16_t* name;
};

const std::vector<Reason>& writeOffReasons() {
    static const std::vector<Reason> all{
        {u"01", u"忘記刷卡"}, {u"02", u"卡片遺失"}, {u"03", u"卡鐘故障"},
        {u"04", u"洽公未回"}, {u"05", u"夜班首日"},
    };
    return all;
}

Value reasonOf(const QString& code) {
    return code.isNull() ? Value() : Value(code);
}

void saveEntry(Database& database, const WriteOff& entry) {
    saveRow(database, QStringLiteral("Canc02"),
            {{u"EmpNo", employeeOf(entry.employees.front()).code()},
             {u"CnlDate", entry.day},
             {u"CnlNo1", reasonOf(entry.reasons[0])},
             {u"CnlNo2", reasonOf(entry.reasons[1])},
             {u"CnlNo3", reasonOf(entry.reasons[2])},
             {u"CnlNo4", reasonOf(entry.reasons[3])},
             {u"Account", Clerk},
             {u"TransDate", entry.day.startOfDay()}});
}

void runBatchOf(Database& database, const WriteOff& many) {
    QuietHost<> host;
    RunWriteOffBatch(database, host,
                     {.entries = listEntries(many.employees),
                      .date = many.day,
                      .reasons = many.reasons,
                      .gAccount = Clerk,
                      .TransDate = QDateTime(many.day, QTime(17, 30))});
}

} // namespace

const std::vector<WriteOff>& writeOffs() {
    // The first night of a week has no departure in the morning before it.
    static const std::vector<WriteOff> all{
        {{10039, 10040}, march(1), {{{}, {}, {}, u"05"_s}}},
        {{10039, 10040, 10041, 10042}, march(8), {{{}, {}, {}, u"05"_s}}},
        {{10023}, march(4), {{u"01"_s, {}, {}, {}}}},
        {{10037}, march(9), {{{}, {}, {}, u"01"_s}}},
        {{10021}, march(11), {{{}, u"03"_s, u"03"_s, {}}}},
    };
    return all;
}

void writeWriteOff(Database& database, const WriteOff& each) {
    if (each.employees.size() == 1)
        saveEntry(database, each);
    else
        runBatchOf(database, each);
}

void writeWriteOffs(Database& database) {
    for (const Reason& reason : writeOffReasons())
        insertRow(database, QStringLiteral("Canc01"), {{u"CnlNo", reason.code}, {u"CnlName", reason.name}});
    for (const WriteOff& each : writeOffs())
        writeWriteOff(database, each);
}

} // namespace pontrel::demo
