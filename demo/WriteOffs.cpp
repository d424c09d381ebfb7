#include "demo/Plan.h"
#include "demo/Rows.h"

namespace pontrel::demo {

namespace {

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

} // namespace

const std::vector<WriteOff>& writeOffs() {
    // The first night of a week has no departure in the morning before it.
    static const std::vector<WriteOff> all{
        {10039, march(1), {nullptr, nullptr, nullptr, u"05"}},
        {10040, march(1), {nullptr, nullptr, nullptr, u"05"}},
        {10039, march(8), {nullptr, nullptr, nullptr, u"05"}},
        {10040, march(8), {nullptr, nullptr, nullptr, u"05"}},
        {10041, march(8), {nullptr, nullptr, nullptr, u"05"}},
        {10042, march(8), {nullptr, nullptr, nullptr, u"05"}},
        {10023, march(4), {u"01", nullptr, nullptr, nullptr}},
        {10037, march(9), {nullptr, nullptr, nullptr, u"01"}},
        {10021, march(11), {nullptr, u"03", u"03", nullptr}},
    };
    return all;
}

void writeWriteOff(Database& database, const WriteOff& entry) {
    const auto reason = [&entry](std::size_t position) {
        return entry.reasons[position] ? Value(entry.reasons[position]) : Value();
    };
    insertRow(database, QStringLiteral("Canc02"),
              {{u"EmpNo", QString::number(entry.employee)},
               {u"CnlDate", entry.day},
               {u"CnlNo1", reason(0)},
               {u"CnlNo2", reason(1)},
               {u"CnlNo3", reason(2)},
               {u"CnlNo4", reason(3)},
               {u"Account", u"demo"},
               {u"TransDate", entry.day.startOfDay()}});
}

void writeWriteOffs(Database& database) {
    for (const Reason& reason : writeOffReasons())
        insertRow(database, QStringLiteral("Canc01"), {{u"CnlNo", reason.code}, {u"CnlName", reason.name}});
    for (const WriteOff& entry : writeOffs())
        writeWriteOff(database, entry);
}

} // namespace pontrel::demo
