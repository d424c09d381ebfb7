#include "demo/Plan.h"
#include "demo/Rows.h"

#include <algorithm>
#include <array>

namespace pontrel::demo {

namespace {

QDate january(int day) {
    return {2010, 1, day};
}

QDate february(int day) {
    return {2010, 2, day};
}

/// What overtime is given as.
enum class Given { Nothing, Rest, Pay };

/// Overtime that was entered by hand, after the end of the employee's slot.
struct Overtime {
    int employee;
    QDate day;
    int hours;
    Given given;
    const char16_t* remark; ///< Null where there is none, as after an entry for many.
};

const std::vector<Overtime>& overtime() {
    using enum Given;
    static const std::vector<Overtime> all{
        {10007, january(28), 3, Pay, u"年度結帳"},
        {10007, january(29), 4, Pay, u"年度結帳"},
        {10008, january(28), 3, Pay, u"年度結帳"},
        {10008, january(29), 3, Rest, u"年度結帳"},
        {10009, january(29), 2, Rest, u"年度結帳"},
        {10011, february(3), 2, Rest, u"系統更新"},
        {10011, february(24), 4, Rest, u"主機搬遷，機房停電前備份全部資料，並於次日開機後逐台核對"},
        {10012, february(24), 4, Pay, u"主機搬遷"},
        {10013, february(24), 3, Nothing, nullptr},
        {10015, february(5), 2, Pay, u"標案送件"},
        {10017, february(5), 2, Pay, u"標案送件"},
        {10021, february(8), 3, Pay, u"年前趕工"},
        {10022, february(8), 3, Pay, u"年前趕工"},
        {10023, february(8), 3, Pay, u"年前趕工"},
        {10023, february(9), 3, Pay, u"年前趕工"},
        {10024, february(9), 2, Rest, u"年前趕工"},
        {10025, february(9), 3, Pay, u"年前趕工"},
        {10026, february(10), 4, Pay, u"年前趕工"},
        {10027, february(10), 4, Rest, u"年前趕工"},
        {10028, february(10), 2, Nothing, nullptr},
        {10029, february(11), 2, Nothing, nullptr},
        {10031, february(11), 3, Pay, u"年前趕工"},
        {10033, february(25), 2, Rest, u"客戶驗廠"},
        {10034, february(25), 2, Rest, u"客戶驗廠"},
        {10036, february(26), 3, Pay, u"盤點"},
        {10037, february(26), 3, Pay, u"盤點"},
    };
    return all;
}

/// Swipes written off before the days of the roster.
const std::vector<WriteOff>& earlierWriteOffs() {
    static const std::vector<WriteOff> all{
        {10005, january(12), {u"01", nullptr, nullptr, nullptr}},
        {10005, february(3), {u"01", nullptr, nullptr, nullptr}},
        {10005, february(23), {nullptr, nullptr, nullptr, u"01"}},
        {10009, february(4), {u"02", u"02", u"02", u"02"}},
        {10009, february(5), {u"02", u"02", nullptr, nullptr}},
        {10015, january(20), {nullptr, nullptr, nullptr, u"04"}},
        {10015, february(10), {nullptr, nullptr, nullptr, u"04"}},
        {10017, february(25), {nullptr, nullptr, u"04", u"04"}},
        {10021, february(2), {nullptr, u"03", u"03", nullptr}},
        {10022, february(2), {nullptr, u"03", u"03", nullptr}},
        {10023, february(2), {nullptr, u"03", nullptr, nullptr}},
        {10026, february(22), {u"01", nullptr, nullptr, nullptr}},
        {10026, february(24), {nullptr, nullptr, nullptr, u"01"}},
        {10034, february(11), {u"01", nullptr, nullptr, u"01"}},
    };
    return all;
}

void writeOvertime(Database& database, const Overtime& entry) {
    const Employee& employee = *std::ranges::find(employees(), entry.employee, &Employee::number);
    // Everybody's first shift is by day; half an hour of rest comes before.
    const QTime begin = rosteredSlot(employee, FirstDay)->standard[3].addSecs(30 * 60);
    insertRow(database, QStringLiteral("Over01"),
              {{u"EmpNo", employee.code()},
               {u"OverDate", entry.day},
               {u"BegTime", begin},
               {u"EndTime", begin.addSecs(entry.hours * 3600)},
               {u"OverHours", entry.hours},
               {u"Memo", entry.remark != nullptr ? Value(entry.remark) : Value()},
               {u"Rest", entry.given == Given::Rest},
               {u"Draw", entry.given == Given::Pay},
               {u"Account", u"demo"},
               {u"TransDate", entry.day.startOfDay()}});
}

} // namespace

void writeEarlierEntries(Database& database) {
    for (const Overtime& entry : overtime())
        writeOvertime(database, entry);
    for (const WriteOff& entry : earlierWriteOffs())
        writeWriteOff(database, entry);
}

} // namespace pontrel::demo
