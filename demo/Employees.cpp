#include "demo/Chance.h"
#include "demo/Plan.h"
#include "demo/Rows.h"
#include "store/Format.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pontrel::demo {

namespace {

using Names = std::vector<std::pair<const char16_t*, const char16_t*>>;

const Names& titles() {
    static const Names all{{u"0010", u"總經理"}, {u"0020", u"經理"},   {u"0030", u"課長"},
                           {u"0040", u"組長"},   {u"0050", u"工程師"}, {u"0060", u"專員"},
                           {u"0070", u"辦事員"}, {u"0080", u"技術員"}, {u"0090", u"作業員"},
                           {u"0100", u"警衛"}};
    return all;
}

const Names& units() {
    static const Names all{{u"1000", u"總經理室"}, {u"2000", u"人事課"}, {u"3000", u"會計課"},
                           {u"4000", u"資訊課"},   {u"5000", u"業務部"}, {u"6000", u"生產部"},
                           {u"6100", u"品管課"},   {u"7000", u"倉儲課"}, {u"8000", u"警衛室"}};
    return all;
}

const Names& workTypes() {
    static const Names all{{u"0001", u"正職"}, {u"0002", u"約聘"}, {u"0003", u"工讀"}, {u"0004", u"臨時"}};
    return all;
}

void writeNames(Database& database, const QString& table, const char16_t* code, const char16_t* name,
                const Names& rows) {
    for (const auto& row : rows)
        insertRow(database, table, {{code, row.first}, {name, row.second}});
}

/// An identity number of the usual form whose check digit is one off, so that it is nobody's.
QString identityNumber(const Employee& employee) {
    const QString digits =
        QStringLiteral("%1%2").arg(employee.male ? 1 : 2).arg(employee.number, 7, 10, QLatin1Char('0'));
    // The letter A stands for 10: 1 + 0 * 9.
    int sum = 1;
    for (int place = 0; place < 8; ++place)
        sum += digits[place].digitValue() * (8 - place);
    return u'A' + digits + QString::number((10 - sum % 10 + 1) % 10);
}

int wholeYears(QDate from, QDate to) {
    const int years = to.year() - from.year();
    return from.addYears(years) > to ? years - 1 : years;
}

/// What the personnel card tells of school, grade and examinations.
struct Career {
    Value level, salary, points, school, exam, remark;

    explicit Career(const Employee& employee) {
        static const std::array schools{u"大學畢業", u"專科畢業", u"高職畢業", u"研究所畢業"};
        static const std::array exams{u"電腦技能檢定", u"乙級技術士", u"會計師"};
        Chance chance(static_cast<std::uint32_t>(employee.number) + 7);
        // The lower its code, the higher a title stands.
        const int grade = std::max(1, 12 - QString::fromUtf16(employee.title).toInt() / 10);
        level = QStringLiteral("%1職等").arg(grade);
        salary = QStringLiteral("%1級").arg(chance.between(1, 7));
        points = QString::number(200 + grade * 40 + chance.below(8) * 5);
        school = schools.at(static_cast<std::size_t>(chance.below(4)));
        if (chance.below(2) == 0)
            exam = exams.at(static_cast<std::size_t>(chance.below(3)));
        if (employee.left.isValid())
            remark = u"約滿離職";
    }
};

void writeEmployee(Database& database, const Employee& employee) {
    Chance chance(static_cast<std::uint32_t>(employee.number));
    const int years = wholeYears(employee.arrived, QDate(2010, 1, 1));
    const double keptOver = years > 1 ? chance.below(3) : 0;
    const Career career(employee);
    // The schemes of a new store: 2 for those under the labour rules, 3 for those on contract.
    const bool onContract = QStringView(employee.workType) == u"0002";
    insertRow(database, QStringLiteral("Base06"),
              {{u"EmpNo", employee.code()},
               {u"EmpName", employee.name},
               {u"Sex", employee.male},
               {u"IdNo", identityNumber(employee)},
               {u"UnitNo", employee.unit},
               {u"ClsNo", employee.shiftClass},
               {u"TitleNo", employee.title},
               {u"WorkNo", employee.workType},
               {u"SuitNo", onContract ? u"3" : u"2"},
               {u"Birth", employee.birth},
               {u"ArriveDate", employee.arrived},
               {u"IniArrDate", employee.arrived},
               {u"BreakY", 0},
               {u"SoldierY", employee.male && chance.below(3) > 0 ? 22 : 0},
               {u"HoliExper", 0},
               {u"ThisYearHD", 0.0},
               {u"ThisYearUse", 0.0},
               {u"ThisYearLeft", 0.0},
               {u"LastYearHD", keptOver},
               {u"LastYearUse", 0.0},
               {u"LastYearLeft", keptOver},
               {u"LeaveHD", 0.0},
               {u"LeaveUse", 0.0},
               {u"LeaveLeft", 0.0},
               {u"SickHD", 0.0},
               {u"SickUse", 0.0},
               {u"SickLeft", 0.0},
               {u"Memo", career.remark},
               {u"ExperLevel", career.level},
               {u"SalaryLevel", career.salary},
               {u"SalaryPoint", career.points},
               {u"BackGround", career.school},
               {u"Exam", career.exam},
               {u"Telephone", QStringLiteral("分機%1").arg(employee.number % 1000)},
               {u"Address", QStringLiteral("範例市示範路%1號").arg(chance.between(1, 300))}});
}

} // namespace

void writeEmployees(Database& database) {
    writeNames(database, QStringLiteral("Base01"), u"TitleNo", u"Title", titles());
    writeNames(database, QStringLiteral("Base02"), u"UnitNo", u"Unit", units());
    writeNames(database, QStringLiteral("Base03"), u"WorkNo", u"WorkType", workTypes());

    for (const Employee& employee : employees())
        writeEmployee(database, employee);
}

const Employee& employeeOf(int number) {
    return *std::ranges::find(employees(), number, &Employee::number);
}

QStringList listEntries(const std::vector<int>& numbers) {
    QStringList entries;
    for (const int number : numbers)
        entries +=
            QString::number(number) + QStringLiteral("  ") + QString::fromUtf16(employeeOf(number).name);
    return entries;
}

void writeDepartures(Database& database) {
    for (const Employee& employee : employees()) {
        if (employee.left.isValid())
            database.execute(QStringLiteral("Update Base06 Set LeaveDate = #%1# Where EmpNo = '%2'")
                                 .arg(shortDate(employee.left), employee.code()));
    }
}

} // namespace pontrel::demo
