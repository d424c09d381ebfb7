#include "rules/reports/Catalogue.h"

#include "rules/reports/FormulaText.h"
#include "store/RunTimeError.h"

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

// What the formulas are put together from. A mark in brackets stands for a value of the choice:
// FormulaText.h.

QString period(const QString& column) {
    return u"{"_s + column + u"} >= date([date 0]) and {"_s + column + u"} <= date([date 1])"_s;
}

QString employeesOf(const QString& table) {
    return u" and {"_s + table + u".EmpNo} >= '[combo 0]' and {"_s + table + u".EmpNo} <= '[combo 1]'"_s;
}

const QString Units = u" and {Base06.UnitNo} >= '[combo 2]' and {Base06.UnitNo} <= '[combo 3]'"_s;
const QString WorkTypes = u" and {Base06.WorkNo} >= '[combo 4]' and {Base06.WorkNo} <= '[combo 5]'"_s;
const QString Arrived = u" and {Base06.ArriveDate} <= date([date 0])"_s;
const QString Current = u" and isnull({Base06.LeaveDate}) = true "_s;

// The pieces are joined in that order, which differs from report to report.

std::vector<Report> basicReports() {
    constexpr ReportTab tab = ReportTab::Basic;
    const ReportFields none{.masks = 0, .masksLeft = 0b1100, .combos = 0};
    const auto fields = [](unsigned masks, unsigned combos) {
        return ReportFields{.masks = masks, .combos = combos};
    };
    const QString units = u"{Base06.UnitNo} >= '[combo 2]' and {Base06.UnitNo} <= '[combo 3]'"_s;
    const QString current = u" and isnull({Base06.LeaveDate}) = true"_s;
    return {
        // Deliberate: the plain lists run with whatever formula the report before them has left.
        {u"a01"_s, tab, 0, u"職稱代碼一覽表"_s, {}, {}, none},
        {u"a02"_s, tab, 1, u"單位代碼一覽表"_s, {}, {}, none},
        {u"a03"_s, tab, 2, u"聘僱類別一覽表"_s, {}, {}, none},
        {u"a04"_s, tab, 3, u"差假別一覽表"_s, {}, {}, none},
        {u"a05"_s, tab, 4, u"註銷原因一覽表"_s, {}, {}, none},
        {u"a06"_s, tab, 5, u"新進員工一覽表"_s, period(u"Base06.ArriveDate"_s), {}, fields(0b0011, 0)},
        {u"a07"_s,
         tab,
         6,
         u"離職員工一覽表"_s,
         u"{Base06.LeaveDate} >= date([date 2]) and {Base06.LeaveDate} <= date([date 3])"_s,
         {},
         fields(0b1100, 0)},
        {u"a08"_s,
         tab,
         7,
         u"班別員工一覽表"_s,
         u"{Base06.ClsNo} >= '[combo 0]' and {Base06.ClsNo} <= '[combo 1]'"_s + Current,
         {},
         fields(0, 0b0000011)},
        {u"a09"_s,
         tab,
         8,
         u"每月壽星一覽表"_s,
         u" month({Base06.Birth}) = [month] and isnull({Base06.LeaveDate}) =true"_s,
         {},
         fields(0, 0b1000000)},
        {u"a10"_s,
         tab,
         9,
         u"員工基本資料明細"_s,
         units + u" and {Base06.EmpNo} >= '[combo 4]' and {Base06.EmpNo} <= '[combo 5]'"_s + current,
         {},
         fields(0, 0b0111100)},
        {u"a11"_s, tab, 10, u"單位別員工基本資料表"_s, units + current, {}, fields(0, 0b0001100)},
    };
}

std::vector<Report> rosterReports() {
    constexpr ReportTab tab = ReportTab::Roster;
    const QString roster = period(u"Rule03.Ymd"_s) + employeesOf(u"Rule03"_s) + Units + Arrived;
    const QString changes = period(u"Rule04.Ymd"_s) + employeesOf(u"Rule04"_s) + Units + Arrived;
    return {
        {u"B01"_s, tab, 0, u"員工個人排班表"_s, roster, {}, {}},
        {u"B02"_s, tab, 1, u"單位員工排班表"_s, roster, {}, {}},
        {u"B03"_s, tab, 2, u"員工調班次數統計表"_s, changes, {}, {}},
    };
}

std::vector<Report> attendanceReports() {
    constexpr ReportTab tab = ReportTab::Attendance;
    const QString days = period(u"Atte02.UseDate"_s) + employeesOf(u"Atte02"_s) + Units + WorkTypes + Arrived;
    const QString punches =
        period(u"View02.UseDate"_s) + employeesOf(u"View02"_s) + Units + WorkTypes + Arrived;
    const ReportFields marked{.punchMarks = true};
    return {
        {u"C01"_s, tab, 0, u"員工出勤狀況表"_s, days, {}, {}},
        {u"C02"_s, tab, 1, u"單位別員工出勤狀況表"_s, days, {}, {}},
        {u"C03"_s, tab, 2, u"個人別員工出勤狀況表"_s, days, {}, {}},
        {u"C04"_s, tab, 3, u"員工出勤異常表"_s, days + u"[punch mark]"_s, {}, marked},
        {u"C05"_s, tab, 4, u"單位出勤異常表"_s, days + u"[punch mark]"_s, {}, marked},
        {u"C06"_s, tab, 5, u"個人別員工出勤異常表"_s, days + u"[punch mark]"_s, {}, marked},
        {u"C07"_s, tab, 6, u"單位別原始打卡核對表"_s, punches, {}, {}},
        {u"C08"_s, tab, 7, u"個人別原始打卡核對表"_s, punches, {}, {}},
        {u"C09"_s,
         tab,
         8,
         u"未上班人員名單"_s,
         days + u" and {Atte02.F1} = true and {Atte02.Expt} = true "_s,
         {},
         {}},
        {u"C10"_s, tab, 9, u"遲到早退人員名單"_s, days + u" and {Atte02.DelayF} > 0 "_s, {}, {}},
    };
}

std::vector<Report> leaveReports() {
    constexpr ReportTab tab = ReportTab::Leave;
    const QString all = period(u"Holi04.HoliDate"_s) + employeesOf(u"Holi04"_s) + Units + WorkTypes;
    // Deliberate: only the first three types, in a parenthesis that stays open.
    const QString some = all + u"[three leave types]"_s + Current;
    const ReportFields oneDay{.masks = 0b01, .list = false, .listCaption = false};
    const ReportFields oneEmployee{.combos = 0b1, .list = false, .listCaption = false};
    return {
        {u"D01"_s, tab, 0, u"員工差假統計表"_s, some, {}, {}},
        {u"D02"_s, tab, 1, u"單位差假統計表"_s, some, {}, {}},
        {u"D03"_s, tab, 2, u"員工差假明細表"_s, some, {}, {}},
        {u"D04"_s, tab, 3, u"單位差假明細表"_s, all + Current + u"[leave types]"_s, {}, {}},
        {u"D05"_s, tab, 4, u"抽查總表"_s,
         u"{Holi04.HoliDate} = date([date 0]) "_s + employeesOf(u"Holi04"_s) + Units + WorkTypes + Current,
         Preparation::Headcount, oneDay},
        {u"D06"_s, tab, 5, u"員工勤惰紀錄卡"_s,
         period(u"Holi04.HoliDate"_s) + u" and {Holi04.EmpNo} = '[combo 0]'"_s, Preparation::EmployeeSums,
         oneEmployee},
    };
}

std::vector<Report> writeOffReports() {
    constexpr ReportTab tab = ReportTab::WriteOff;
    const ReportFields uncounted{.combos = 0b01111};
    const QString all;
    return {
        {u"E01"_s, tab, 0, u"單位員工註銷次數統計表"_s, all, Preparation::WriteOffCounts, uncounted},
        {u"E02"_s, tab, 1, u"員工註銷明細表"_s, all, Preparation::WriteOffDetail, uncounted},
        {u"E03"_s, tab, 2, u"單位員工註銷超次異常表"_s, all, Preparation::WriteOffCounts, {}},
        {u"E04"_s, tab, 3, u"單位員工註銷次數累計表"_s, all, Preparation::WriteOffCounts, uncounted},
    };
}

std::vector<Report> overtimeReports() {
    constexpr ReportTab tab = ReportTab::Overtime;
    const QString days = period(u"Over01.OverDate"_s);
    const QString employees = employeesOf(u"Over01"_s);
    const QString sums = days + employees + Units + WorkTypes + Current;
    return {
        {u"F01"_s, tab, 0, u"員工加班明細表"_s, days + Units + WorkTypes + Current + employees, {}, {}},
        {u"F02"_s, tab, 1, u"單位員工加班統計表"_s, sums, {}, {}},
        {u"F03"_s, tab, 2, u"個人別員工加班統計表"_s, sums, {}, {}},
        {u"F04"_s, tab, 3, u"單位加班時數統計表"_s, sums, {}, {}},
    };
}

const QStringList EmployeeDefaults{u"000000"_s, u"ZZZZZZ"_s};
const QStringList CodeDefaults{u"0000"_s, u"ZZZZ"_s};

const ReportRange Employees{RangeKind::Employee, 0, u"員工代號："_s, EmployeeDefaults};
const ReportRange UnitRange{RangeKind::Unit, 2, u"單    位："_s, CodeDefaults};
const ReportRange WorkTypeRange{RangeKind::WorkType, 4, u"聘僱類別："_s, CodeDefaults};

QString valueName(int index) {
    static const std::array names{u"Title"_s, u"Sdate"_s,   u"Edate"_s,  u"Att"_s,     u"Cushion"_s,
                                  u"Delay"_s, u"Earlier"_s, u"Absent"_s, u"Employee"_s};
    return names.at(static_cast<std::size_t>(index));
}

} // namespace

const std::vector<Report>& reports() {
    static const std::vector<Report> all = [] {
        std::vector<Report> result;
        for (const auto& group : {basicReports(), rosterReports(), attendanceReports(), leaveReports(),
                                  writeOffReports(), overtimeReports()})
            result.insert(result.end(), group.begin(), group.end());
        return result;
    }();
    return all;
}

const Report* findReport(ReportTab tab, int option) {
    const auto found = std::ranges::find_if(
        reports(), [=](const Report& each) { return each.tab == tab && each.option == option; });
    return found == reports().end() ? nullptr : &*found;
}

const Report* findReport(QStringView code) {
    const auto found = std::ranges::find_if(
        reports(), [=](const Report& each) { return code.compare(each.code, Qt::CaseInsensitive) == 0; });
    return found == reports().end() ? nullptr : &*found;
}

const std::vector<ReportRange>& reportRanges(ReportTab tab) {
    static const std::array<std::vector<ReportRange>, 6> all{{
        {{RangeKind::ShiftClass, 0, u"班    別："_s, CodeDefaults},
         UnitRange,
         {RangeKind::Employee, 4, u"員工代號："_s, EmployeeDefaults},
         {RangeKind::Month, 6, u"月    份："_s, {u"1"_s}}},
        {Employees, UnitRange},
        {Employees, UnitRange, WorkTypeRange},
        {Employees, UnitRange, WorkTypeRange},
        {Employees, UnitRange, {RangeKind::WriteOffCount, 4, u"註銷次數："_s, {u"1"_s}}},
        {Employees, UnitRange, WorkTypeRange},
    }};
    return all.at(static_cast<std::size_t>(tab));
}

QString choicesStatement(RangeKind kind) {
    switch (kind) {
    case RangeKind::ShiftClass:
        return u"SELECT ClsNo, ClassName   From Base05 "_s;
    case RangeKind::Unit:
        return u"SELECT UnitNo, Unit   From Base02 "_s;
    case RangeKind::Employee:
        return u"SELECT EmpNo, EmpName   From Base06  where isnull(LeaveDate) = true  order by empno "_s;
    case RangeKind::WorkType:
        return u"SELECT WorkNo, WorkType   From Base03 "_s;
    case RangeKind::Month:
    case RangeKind::WriteOffCount:
        break;
    }
    return {};
}

QStringList numberChoices(RangeKind kind) {
    constexpr int Months = 12;
    constexpr int Counts = 10;
    const int last = kind == RangeKind::Month ? Months : kind == RangeKind::WriteOffCount ? Counts : 0;
    QStringList numbers;
    for (int number = 1; number <= last; ++number)
        numbers << QString::number(number);
    return numbers;
}

QStringList selectedCodes(const std::vector<ListEntry>& list, std::size_t most) {
    QStringList codes(static_cast<qsizetype>(most));
    for (std::size_t position = 0; position < list.size(); ++position) {
        if (!list[position].selected)
            continue;
        if (position >= most)
            throw runTimeError(error::SubscriptOutOfRange,
                               u"position %1 of a list for %2"_s.arg(position).arg(most));
        codes[static_cast<qsizetype>(position)] = list[position].text.left(2);
    }
    return codes;
}

ReportChoice defaultChoice(ReportTab tab, int option) {
    ReportChoice choice;
    choice.tab = tab;
    choice.option = option;
    choice.clickedOption = option;
    for (const ReportRange& range : reportRanges(tab))
        choice.combos += range.defaults;
    choice.writeOffUnits = {CodeDefaults[0], CodeDefaults[1]};
    return choice;
}

ReportCall reportCall(const ReportChoice& choice) {
    const Report* report = findReport(choice.tab, choice.option);
    if (report == nullptr)
        throw runTimeError(error::SubscriptOutOfRange, u"no report of option %1"_s.arg(choice.option));
    // The lists are read ahead of the options, also where the report does without them.
    QStringList codes;
    if (choice.tab == ReportTab::Leave)
        codes = selectedCodes(choice.list, MostLeaveTypes);
    else if (choice.tab == ReportTab::WriteOff)
        codes = selectedCodes(choice.list, MostWriteOffReasons);
    ReportCall call{report->code, std::nullopt};
    // Deliberate: these three are named by the click that was stored, not by the option that is on.
    if (report->fields.punchMarks)
        call.code = u"C0"_s + QString::number(choice.clickedOption + 1);
    if (report->formula)
        call.formula = joinFormula(*report->formula, choice, codes);
    return call;
}

NamedValue namedValue(int index, const QString& value) {
    return {index, valueName(index) + u"='"_s + value + u'\''}; // no statement
}

std::vector<NamedValue> periodValues(const ReportChoice& choice) {
    if (choice.tab == ReportTab::Basic)
        return {};
    return {namedValue(named::Sdate, choice.masks[0]), namedValue(named::Edate, choice.masks[1])};
}

} // namespace pontrel
