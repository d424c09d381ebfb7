#include "demo/Plan.h"
#include "demo/Rows.h"
#include "rules/Session.h"
#include "rules/leave/LeaveBatch.h"
#include "rules/leave/LeaveNotes.h"
#include "rules/master/Entitlement.h"
#include "rules/master/Seniority.h"
#include "store/Clock.h"

#include <algorithm>
#include <span>

namespace pontrel::demo {

namespace {

QDate march(int day) {
    return {2010, 3, day};
}

QDate february(int day) {
    return {2010, 2, day};
}

struct LeaveType {
    const char16_t* code;
    const char16_t* name;
    bool skipsDaysOff;
};

const std::vector<LeaveType>& leaveTypes() {
    static const std::vector<LeaveType> all{
        {u"01", u"休假", true},  {u"02", u"去年保留休假", true}, {u"03", u"事假", true},
        {u"04", u"病假", true},  {u"05", u"公假", true},         {u"06", u"婚假", true},
        {u"07", u"喪假", true},  {u"08", u"產假", false},        {u"09", u"補休", true},
        {u"10", u"公差", false}, {u"14", u"公出", true},
    };
    return all;
}

struct Grant {
    const char16_t* leaveType;
    int firstYear, endYear; ///< The band ends before the second.
    double days;
};

const std::vector<Grant>& grants() {
    static const std::vector<Grant> all = [] {
        std::vector<Grant> bands{{u"01", 1, 3, 7}, {u"01", 3, 5, 10}, {u"01", 5, 10, 14}};
        for (int years = 10; years < 25; ++years)
            bands.push_back({u"01", years, years + 1, 15.0 + years - 10});
        bands.push_back({u"01", 25, 99, 30});
        bands.push_back({u"03", 0, 99, 14});
        bands.push_back({u"04", 0, 99, 30});
        return bands;
    }();
    return all;
}

/// Begin and end of a leave on a day of that slot.
std::pair<QTime, QTime> leaveTimes(const TimeSlot& slot, LeavePart part) {
    return {slot.standard[part == LeavePart::Afternoon ? 2 : 0],
            slot.standard[part == LeavePart::Morning ? 1 : 3]};
}

/// Nobody looks on while the leave is entered, and nothing is to be told of it.
template<typename Host>
class Alone : public QuietHost<Host> {
  public:
    void tell(const QString& message, const QString& /*title*/) override {
        throw runTimeError(error::DataConversion, message);
    }
};

class BatchAlone final : public Alone<LeaveBatchHost> {
  public:
    void showHours(const QString& /*HoliHours*/) override {}
};

class SeniorityAlone final : public Alone<SeniorityHost> {
  public:
    [[nodiscard]] QDate askDate() override { return {2009, 12, 31}; }
    void refreshRecordBar() override {}
    void openFailed(const RunTimeError& cause) override { throw cause; }
};

/// While it lives it is the morning of the day.
class Morning {
  public:
    explicit Morning(QDate day)
        : former_(clock::setSource([day] { return day.startOfDay().addSecs(9 * 3600); })) {}
    ~Morning() { clock::setSource(former_); }
    Morning(const Morning&) = delete;
    Morning& operator=(const Morning&) = delete;

  private:
    std::function<QDateTime()> former_;
};

Leave leaveOf(const LeaveNote& note) {
    const Employee& employee = employeeOf(note.employee);
    return {employee.code(),
            QString::fromUtf16(note.leaveType),
            note.first,
            note.last,
            leaveTimes(*rosteredSlot(employee, note.first), note.part).first,
            leaveTimes(*rosteredSlot(employee, note.last), note.part).second};
}

/// Enters a note as the window does.
void enterNote(Database& database, LeaveValues& values, const LeaveNote& note) {
    Alone<ActionHost> host;
    LeaveNotes routines(database, host, values);
    const Leave leave = leaveOf(note);
    values.setBusNo(routines.NewBusNo());
    const std::int16_t hours = routines.CountLeaveHours(leave);
    if (routines.IsLeaveDuplicate(leave.EmpNo, leave.HoliBegDate, leave.HoliEndDate, EditMode::Add))
        host.tell(values.BusNo(), FaultTitle);
    routines.InsertLeaveDays(leave);
    saveRow(database, QStringLiteral("Holi03"),
            {{u"BusNo", values.BusNo()},
             {u"EmpNo", leave.EmpNo},
             {u"RepEmpNo", QString::number(note.substitute)},
             {u"HoliNo", leave.HoliNo},
             {u"HoliBegDate", leave.HoliBegDate},
             {u"HoliBegTime", leave.HoliBegTime},
             {u"HoliEndDate", leave.HoliEndDate},
             {u"HoliEndTime", leave.HoliEndTime},
             {u"HoliHours", Value(numberOfHours(hours)).joined()},
             {u"HoliDesc", note.reason},
             {u"Money", false},
             {u"Account", u"demo"},
             {u"TransDate", note.entered.startOfDay()},
             {u"TransType", true}});
}

bool sameBatch(const LeaveNote& one, const LeaveNote& other) {
    return !other.reason && QStringView(one.leaveType) == QStringView(other.leaveType) &&
           one.first == other.first && one.part == other.part && one.entered == other.entered;
}

/// Runs the batch of these notes, as the window does.
void runBatchOf(Database& database, LeaveValues& values, std::span<const LeaveNote> notes) {
    const Leave leave = leaveOf(notes.front());
    std::vector<int> numbers;
    std::ranges::transform(notes, std::back_inserter(numbers), &LeaveNote::employee);
    const LeaveBatch batch{.entries = listEntries(numbers),
                           .LenEmpNo = 5,
                           .HoliNo = leave.HoliNo,
                           .codes = readBalanceCodes(database),
                           .date = leave.HoliBegDate,
                           .HoliBegTime = leave.HoliBegTime,
                           .HoliEndTime = leave.HoliEndTime,
                           .gAccount = QStringLiteral("demo"),
                           .TransDate = clock::now()};
    BatchAlone host;
    RunLeaveBatch(database, host, values, batch);
}

void enterLeave(Database& database) {
    LeaveValues values;
    const std::vector<LeaveNote>& all = leaveNotes();
    for (auto note = all.begin(); note != all.end();) {
        const Morning morning(note->entered);
        if (note->reason) {
            enterNote(database, values, *note++);
            continue;
        }
        const auto end =
            std::find_if_not(note, all.end(), [&](const auto& each) { return sameBatch(*note, each); });
        runBatchOf(database, values, {note, end});
        note = end;
    }
}

} // namespace

const std::vector<LeaveNote>& leaveNotes() {
    using enum LeavePart;
    static const std::vector<LeaveNote> all{
        {10005, 0, u"01", march(2), march(2), WholeDay, nullptr, february(24)},
        {10008, 10009, u"03", march(4), march(4), Morning, u"銀行辦事", march(3)},
        {10012, 10011, u"04", march(9), march(9), WholeDay, u"感冒就醫", march(9)},
        {10014, 10015, u"10", march(10), march(11), WholeDay, u"南部客戶拜訪", march(8)},
        {10016, 0, u"01", march(5), march(5), Afternoon, nullptr, march(2)},
        {10020, 10021, u"14", march(3), march(3), WholeDay, u"供應商稽核", march(2)},
        {10022, 10021, u"02", march(5), march(8), WholeDay, u"家庭旅遊", february(26)},
        {10025, 0, u"04", march(1), march(1), Afternoon, nullptr, march(1)},
        {10027, 10026, u"06", march(8), march(12), WholeDay, u"結婚", february(22)},
        {10032, 10033, u"05", march(11), march(11), WholeDay, u"教育訓練", march(1)},
        {10034, 10033, u"03", march(12), march(12), Afternoon, u"接送小孩", march(10)},
        {10023, 0, u"01", march(10), march(10), Afternoon, nullptr, march(9)},
        {10024, 0, u"01", march(10), march(10), Afternoon, nullptr, march(9)},
        {10026, 0, u"01", march(10), march(10), Afternoon, nullptr, march(9)},
        {10028, 0, u"01", march(10), march(10), Afternoon, nullptr, march(9)},
        {10029, 0, u"01", march(10), march(10), Afternoon, nullptr, march(9)},
        {10038, 10036, u"04", march(3), march(4), WholeDay, u"腸胃炎", march(3)},
    };
    return all;
}

const LeaveNote* leaveOn(int employee, QDate day) {
    const auto note = std::ranges::find_if(leaveNotes(), [=](const LeaveNote& each) {
        return each.employee == employee && each.first <= day && day <= each.last;
    });
    return note == leaveNotes().end() ? nullptr : &*note;
}

void writeLeave(Database& database) {
    for (const LeaveType& type : leaveTypes())
        saveRow(database, QStringLiteral("Holi01"),
                {{u"HoliNo", type.code}, {u"HoliType", type.name}, {u"HoliDeduct", type.skipsDaysOff}});
    const Rows schemes = database.select(QStringLiteral("Select SuitNo from Syst03"));
    for (const auto& scheme : schemes)
        for (const Grant& grant : grants())
            saveRow(database, QStringLiteral("Holi02"),
                    {{u"SuitNo", scheme.front()},
                     {u"HoliNo", grant.leaveType},
                     {u"HoliYearBeg", grant.firstYear},
                     {u"HoliYearEnd", grant.endYear},
                     {u"HoliDays", grant.days}});

    SeniorityAlone host;
    ComputeSeniority(database, host);
    ComputeEntitlement(database, host);
    enterLeave(database);
}

} // namespace pontrel::demo
