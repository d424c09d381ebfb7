#include "rules/overtime/Overtime.h"
#include "demo/Plan.h"
#include "demo/Rows.h"
#include "rules/Session.h"
#include "rules/overtime/OvertimeBatch.h"

namespace pontrel::demo {

namespace {

const QString Clerk = QStringLiteral("demo");

QDate january(int day) {
    return {2010, 1, day};
}

QDate february(int day) {
    return {2010, 2, day};
}

/// What overtime is given as.
enum class Given { Rest, Pay };

/// Overtime that was entered by hand, half an hour after the end of the employee's slot.
struct Overtime {
    int employee;
    QDate day;
    int hours;
    Given given;
    const char16_t* remark;
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
        {10031, february(11), 3, Pay, u"年前趕工"},
        {10033, february(25), 2, Rest, u"客戶驗廠"},
        {10034, february(25), 2, Rest, u"客戶驗廠"},
        {10036, february(26), 3, Pay, u"盤點"},
        {10037, february(26), 3, Pay, u"盤點"},
    };
    return all;
}

/// The same overtime for several, on a day whose punches are not read.
struct OvertimeForMany {
    QDate day;
    QTime begin;
    QTime end;
    std::vector<int> employees;
    QDate entered;
};

const std::vector<OvertimeForMany>& overtimeForMany() {
    static const std::vector<OvertimeForMany> all{
        {february(10), {17, 30}, {19, 40}, {10028, 10029}, february(11)},
        {february(24), {22, 0}, {1, 30}, {10013}, february(25)},
        {{2010, 3, 6}, {8, 0}, {12, 30}, {10036, 10037, 10038}, {2010, 3, 8}},
    };
    return all;
}

void saveEntry(Database& database, const Overtime& entry) {
    // Everybody's first shift is by day; half an hour of rest comes before.
    const QTime begin = rosteredSlot(employeeOf(entry.employee), FirstDay)->standard[3].addSecs(30 * 60);
    const QTime end = begin.addSecs(entry.hours * 3600);
    saveRow(database, QStringLiteral("Over01"),
            {{u"EmpNo", QString::number(entry.employee)},
             {u"OverDate", entry.day},
             {u"BegTime", begin},
             {u"EndTime", end},
             {u"OverHours", int{overtimeHours(begin, end)}},
             {u"Memo", entry.remark},
             {u"Rest", entry.given == Given::Rest},
             {u"Draw", entry.given == Given::Pay},
             {u"Account", Clerk}});
}

void runBatchOf(Database& database, const OvertimeForMany& many) {
    QuietHost<> host;
    RunOvertimeBatch(database, host,
                     {.entries = listEntries(many.employees),
                      .date = many.day,
                      .BegTime = many.begin,
                      .EndTime = many.end,
                      .OverHours = QString::number(overtimeHours(many.begin, many.end)),
                      .gAccount = Clerk,
                      .TransDate = QDateTime(many.entered, QTime(9, 0))});
}

} // namespace

void writeOvertime(Database& database) {
    for (const Overtime& entry : overtime())
        saveEntry(database, entry);
    for (const OvertimeForMany& many : overtimeForMany())
        runBatchOf(database, many);
}

} // namespace pontrel::demo
