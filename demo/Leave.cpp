#include "demo/Plan.h"
#include "demo/Rows.h"

#include <QHash>

#include <algorithm>

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
    int firstYear, lastYear;
    double days;
};

const std::vector<Grant>& grants() {
    static const std::vector<Grant> all = [] {
        std::vector<Grant> bands{{u"01", 1, 2, 7}, {u"01", 3, 4, 10}, {u"01", 5, 9, 14}};
        for (int years = 10; years < 25; ++years)
            bands.push_back({u"01", years, years, 15.0 + years - 10});
        bands.push_back({u"01", 25, 99, 30});
        bands.push_back({u"03", 0, 99, 14});
        bands.push_back({u"04", 0, 99, 30});
        return bands;
    }();
    return all;
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

/// Begin and end of a leave on a day of that slot.
std::pair<QTime, QTime> leaveTimes(const TimeSlot& slot, LeavePart part) {
    return {slot.standard[part == LeavePart::Afternoon ? 2 : 0],
            slot.standard[part == LeavePart::Morning ? 1 : 3]};
}

void writeNoteDay(Database& database, const LeaveNote& note, const QString& number, const Employee& employee,
                  QDate day) {
    // A day off keeps its row, without hours and slot; its times are those of the first slot of the list.
    const TimeSlot* slot = rosteredSlot(employee, day);
    const auto [begin, end] = leaveTimes(slot ? *slot : timeSlots().front(), note.part);
    insertRow(database, QStringLiteral("Holi04"),
              {{u"BusNo", number},
               {u"EmpNo", employee.code()},
               {u"HoliNo", note.leaveType},
               {u"HoliDate", day},
               {u"BegTime", begin},
               {u"EndTime", end},
               {u"HoliHours", slot ? leaveHours(*slot, note.part) : 0},
               {u"TimeNo", slot ? QString(slot->code) : QString()}});
}

void writeNote(Database& database, const LeaveNote& note, const QString& number) {
    const Employee& employee = *std::ranges::find(employees(), note.employee, &Employee::number);
    int hours = 0;
    for (QDate day = note.first; day <= note.last; day = day.addDays(1)) {
        writeNoteDay(database, note, number, employee, day);
        if (const TimeSlot* slot = rosteredSlot(employee, day))
            hours += leaveHours(*slot, note.part);
    }
    insertRow(database, QStringLiteral("Holi03"),
              {{u"BusNo", number},
               {u"EmpNo", employee.code()},
               {u"RepEmpNo", QString::number(note.substitute)},
               {u"HoliNo", note.leaveType},
               {u"HoliBegDate", note.first},
               {u"HoliBegTime", leaveTimes(*rosteredSlot(employee, note.first), note.part).first},
               {u"HoliEndDate", note.last},
               {u"HoliEndTime", leaveTimes(*rosteredSlot(employee, note.last), note.part).second},
               {u"HoliHours", daysAndHours(hours)},
               {u"HoliDesc", note.reason},
               {u"Money", false},
               {u"Account", u"demo"},
               {u"TransDate", note.entered.startOfDay()},
               {u"TransType", true}});
}

} // namespace

const std::vector<LeaveNote>& leaveNotes() {
    using enum LeavePart;
    static const std::vector<LeaveNote> all{
        {10005, 10006, u"01", march(2), march(2), WholeDay, u"私人行程", february(24)},
        {10008, 10009, u"03", march(4), march(4), Morning, u"銀行辦事", march(3)},
        {10012, 10011, u"04", march(9), march(9), WholeDay, u"感冒就醫", march(9)},
        {10014, 10015, u"10", march(10), march(11), WholeDay, u"南部客戶拜訪", march(8)},
        {10016, 10017, u"01", march(5), march(5), Afternoon, u"返鄉", march(2)},
        {10020, 10021, u"14", march(3), march(3), WholeDay, u"供應商稽核", march(2)},
        {10022, 10021, u"02", march(5), march(8), WholeDay, u"家庭旅遊", february(26)},
        {10025, 10023, u"04", march(1), march(1), Afternoon, u"牙科門診", march(1)},
        {10027, 10026, u"06", march(8), march(12), WholeDay, u"結婚", february(22)},
        {10032, 10033, u"05", march(11), march(11), WholeDay, u"教育訓練", march(1)},
        {10034, 10033, u"03", march(12), march(12), Afternoon, u"接送小孩", march(10)},
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

int leaveHours(const TimeSlot& slot, LeavePart part) {
    const int morning = slot.standard[0].secsTo(slot.standard[1]) / 60;
    const int afternoon = slot.standard[2].secsTo(slot.standard[3]) / 60;
    const int minutes =
        (part == LeavePart::Afternoon ? 0 : morning) + (part == LeavePart::Morning ? 0 : afternoon);
    return (minutes + 59) / 60;
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

void writeLeave(Database& database) {
    for (const LeaveType& type : leaveTypes())
        insertRow(database, QStringLiteral("Holi01"),
                  {{u"HoliNo", type.code}, {u"HoliType", type.name}, {u"HoliDeduct", type.skipsDaysOff}});
    const Rows schemes = database.select(QStringLiteral("Select SuitNo from Syst03"));
    for (const auto& scheme : schemes)
        for (const Grant& grant : grants())
            insertRow(database, QStringLiteral("Holi02"),
                      {{u"SuitNo", scheme.front()},
                       {u"HoliNo", grant.leaveType},
                       {u"HoliYearBeg", grant.firstYear},
                       {u"HoliYearEnd", grant.lastYear},
                       {u"HoliDays", grant.days}});

    // Numbered as they were entered: the day, then four places within it.
    QHash<QDate, int> entered;
    for (const LeaveNote& note : leaveNotes()) {
        const int place = ++entered[note.entered];
        writeNote(database, note,
                  note.entered.toString(QStringLiteral("yyyyMMdd")) +
                      QStringLiteral("%1").arg(place, 4, 10, QLatin1Char('0')));
    }

    for (const Reason& reason : writeOffReasons())
        insertRow(database, QStringLiteral("Canc01"), {{u"CnlNo", reason.code}, {u"CnlName", reason.name}});
    for (const WriteOff& entry : writeOffs())
        writeWriteOff(database, entry);
}

} // namespace pontrel::demo
