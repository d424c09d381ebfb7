#include "store/Schema.h"

#include <QHash>

namespace pontrel {

namespace {

using Columns = std::vector<Column>;

Column text(const char16_t* name, int length = 0) {
    return {QString::fromUtf16(name), ColumnType::Text, length};
}

Column typed(const char16_t* name, ColumnType type) {
    return {QString::fromUtf16(name), type};
}

Column integer(const char16_t* name) {
    return typed(name, ColumnType::Integer);
}

/// An integer that statements sum and add to, and so never starts as null.
Column counter(const char16_t* name) {
    Column column = integer(name);
    column.startsAsZero = true;
    return column;
}

Column real(const char16_t* name) {
    return typed(name, ColumnType::Real);
}

Column boolean(const char16_t* name) {
    return typed(name, ColumnType::Boolean);
}

Column date(const char16_t* name) {
    return typed(name, ColumnType::Date);
}

Column time(const char16_t* name) {
    return typed(name, ColumnType::Time);
}

Column dateTime(const char16_t* name) {
    return typed(name, ColumnType::DateTime);
}

Column exactText(const char16_t* name) {
    Column column = text(name);
    column.caseCounts = true;
    return column;
}

void append(Columns& columns, const Columns& more) {
    columns.insert(columns.end(), more.begin(), more.end());
}

/// Columns name1 to nameN made like the first.
Columns numbered(const Column& like, int count) {
    Columns columns;
    for (int number = 1; number <= count; ++number) {
        Column column = like;
        column.name += QString::number(number);
        columns.push_back(column);
    }
    return columns;
}

Table employees() {
    Columns columns{text(u"EmpNo", 10),       text(u"EmpName", 12),    boolean(u"Sex"),
                    text(u"IdNo", 10),        text(u"UnitNo", 4),      text(u"ClsNo", 3),
                    text(u"TitleNo", 4),      text(u"WorkNo", 4),      text(u"SuitNo", 1),
                    date(u"Birth"),           date(u"ArriveDate"),     date(u"LeaveDate"),
                    date(u"IniArrDate"),      integer(u"BreakY"),      integer(u"SoldierY"),
                    integer(u"HoliExper"),    real(u"ThisYearHD"),     real(u"ThisYearUse"),
                    real(u"ThisYearLeft"),    real(u"LastYearHD"),     real(u"LastYearUse"),
                    real(u"LastYearLeft"),    real(u"LeaveHD"),        real(u"LeaveUse"),
                    real(u"LeaveLeft"),       real(u"SickHD"),         real(u"SickUse"),
                    real(u"SickLeft"),        text(u"Memo", 20),       text(u"Telephone", 10),
                    text(u"Address", 60),     text(u"ExperLevel", 20), text(u"SalaryLevel", 20),
                    text(u"SalaryPoint", 20), text(u"BackGround", 20), text(u"Exam", 20),
                    text(u"Webpsw"),          text(u"WebNo")};
    return {QStringLiteral("Base06"), columns, {QStringLiteral("EmpNo")}};
}

Table slots() {
    Columns columns{text(u"TimeNo", 1), text(u"TimeName"), integer(u"CardType")};
    append(columns, numbered(boolean(u"StdC"), 4));
    append(columns, {time(u"StrIn1"), time(u"StrIn3")});
    append(columns, numbered(time(u"StdT"), 4));
    append(columns, {time(u"EndOut2"), time(u"EndOut4"), boolean(u"Rest"), integer(u"ElstType"),
                     integer(u"ElstMin"), integer(u"Cushion"), integer(u"Delay"), integer(u"Earlier"),
                     integer(u"Cushion1"), integer(u"Delay1"), integer(u"Earlier1")});
    return {QStringLiteral("Base04"), columns, {QStringLiteral("TimeNo")}};
}

Table classes() {
    Columns columns{text(u"ClsNo", 3), text(u"ClassName", 14)};
    append(columns, numbered(text(u"TimeNo", 1), 6));
    append(columns, numbered(integer(u"TimeDay"), 6));
    append(columns, numbered(integer(u"TimeRest"), 6));
    columns.push_back(boolean(u"ChkHoli"));
    return {QStringLiteral("Base05"), columns, {QStringLiteral("ClsNo")}};
}

Columns punchColumns() {
    return {text(u"EmpNo", 10), date(u"UseDate"), time(u"UseTime"), text(u"class", 3), text(u"ReaderID", 3)};
}

/// The columns of the daily result, the same in order in all three tables that pass rows by position.
Columns resultColumns() {
    Columns columns{text(u"EmpNo", 10), date(u"UseDate"), text(u"TimeNo", 1)};
    append(columns, numbered(time(u"Time"), 4));
    append(columns, numbered(boolean(u"FT"), 4));
    append(columns, numbered(boolean(u"FH"), 4));
    append(columns, numbered(boolean(u"FC"), 4));
    append(columns, numbered(time(u"T"), 12));
    append(columns, numbered(boolean(u"F"), 4));
    append(columns, {boolean(u"Expt"), counter(u"DelayF"), counter(u"Cushion1"), counter(u"Cushion3"),
                     counter(u"Delay1"), counter(u"Delay3"), counter(u"Earlier2"), counter(u"Earlier4"),
                     counter(u"Absent")});
    return columns;
}

// Keys of tables that grow by the day begin with the day, so that its rows go to the end of every tree.

QStringList punchKey() {
    return {QStringLiteral("UseDate"), QStringLiteral("EmpNo"), QStringLiteral("UseTime"),
            QStringLiteral("class"), QStringLiteral("ReaderID")};
}

QStringList resultKey() {
    return {QStringLiteral("UseDate"), QStringLiteral("EmpNo"), QStringLiteral("TimeNo")};
}

std::vector<Table> masterTables() {
    return {
        {QStringLiteral("Base01"), {text(u"TitleNo", 4), text(u"Title", 20)}, {QStringLiteral("TitleNo")}},
        {QStringLiteral("Base02"), {text(u"UnitNo", 4), text(u"Unit", 30)}, {QStringLiteral("UnitNo")}},
        {QStringLiteral("Base03"), {text(u"WorkNo", 4), text(u"WorkType", 14)}, {QStringLiteral("WorkNo")}},
        slots(),
        classes(),
        employees(),
        {QStringLiteral("Rule01"), {date(u"hymd")}, {QStringLiteral("hymd")}},
        {QStringLiteral("Rule03"),
         {text(u"EmpNo", 10), date(u"YMD"), text(u"TimeNo", 1)},
         {QStringLiteral("YMD"), QStringLiteral("EmpNo")}},
        {QStringLiteral("Rule04"), {text(u"EmpNo", 10), date(u"Ymd")}, {}}};
}

std::vector<Table> attendanceTables() {
    Columns rawPunches{text(u"EmpNo", 10), date(u"UseDate")};
    append(rawPunches, numbered(time(u"T"), 12));
    return {{QStringLiteral("Atte01"), punchColumns(), punchKey()},
            {QStringLiteral("AtteTemp"), punchColumns(), {}},
            {QStringLiteral("Atte02"), resultColumns(), resultKey()},
            {QStringLiteral("Atte03"), resultColumns(), resultKey()},
            {QStringLiteral("AtteTemp1"), resultColumns(), {}},
            {QStringLiteral("View02"), rawPunches, {QStringLiteral("UseDate"), QStringLiteral("EmpNo")}}};
}

std::vector<Table> leaveTables() {
    return {{QStringLiteral("Holi01"),
             {text(u"HoliNo", 2), text(u"HoliType", 10), boolean(u"HoliDeduct"), text(u"Memo", 20)},
             {QStringLiteral("HoliNo")}},
            {QStringLiteral("Holi02"),
             {text(u"SuitNo", 1), text(u"HoliNo", 2), integer(u"HoliYearBeg"), integer(u"HoliYearEnd"),
              real(u"HoliDays")},
             {}},
            {QStringLiteral("Holi03"),
             {text(u"BusNo"), text(u"EmpNo", 10), text(u"RepEmpNo", 10), text(u"HoliNo", 2),
              date(u"HoliBegDate"), time(u"HoliBegTime"), date(u"HoliEndDate"), time(u"HoliEndTime"),
              real(u"HoliHours"), text(u"HoliDesc", 20), boolean(u"Money"), text(u"Account"),
              dateTime(u"TransDate"), boolean(u"TransType")},
             {QStringLiteral("BusNo")}},
            {QStringLiteral("Holi04"),
             {text(u"BusNo"), text(u"EmpNo", 10), text(u"HoliNo", 2), date(u"HoliDate"), time(u"BegTime"),
              time(u"EndTime"), integer(u"HoliHours"), text(u"TimeNo", 1)},
             {}}};
}

std::vector<Table> writeOffAndOvertimeTables() {
    Columns entry{text(u"EmpNo", 10), date(u"CnlDate")};
    append(entry, numbered(text(u"CnlNo", 2), 4));
    append(entry, {text(u"Account"), dateTime(u"TransDate")});
    Columns detail{text(u"EmpNo", 10), date(u"CnlDate")};
    append(detail, numbered(text(u"CnlNo", 14), 4));
    return {
        {QStringLiteral("Canc01"),
         {text(u"CnlNo", 3), text(u"CnlName", 14), text(u"Memo", 14)},
         {QStringLiteral("CnlNo")}},
        {QStringLiteral("Canc02"), entry, {QStringLiteral("EmpNo"), QStringLiteral("CnlDate")}},
        {QStringLiteral("View01"),
         {text(u"EmpNo", 10), date(u"BegDate"), date(u"EndDate"), text(u"CnlNo", 3), counter(u"CnlTimes"),
          counter(u"AddUpTimes")},
         {}},
        {QStringLiteral("View03"), detail, {}},
        {QStringLiteral("Over01"),
         {text(u"EmpNo", 10), date(u"OverDate"), time(u"BegTime"), time(u"EndTime"), integer(u"OverHours"),
          text(u"Memo"), boolean(u"Rest"), boolean(u"Draw"), text(u"Account"), dateTime(u"TransDate")},
         {}}};
}

std::vector<Table> systemTables() {
    Columns account{exactText(u"Account"), exactText(u"Password")};
    append(account, numbered(boolean(u"f"), 8));
    return {{QStringLiteral("Syst01"),
             {text(u"HandPath"), integer(u"LenEmpNo"), integer(u"IntervalSec"), integer(u"HoliMin"),
              integer(u"OverTimeMin"), text(u"ThisYearRest", 2), text(u"LastYearRest", 2), text(u"Leave", 2),
              text(u"Sick", 2), text(u"CmpName")},
             {}},
            {QStringLiteral("syst02"), account, {QStringLiteral("Account")}},
            {QStringLiteral("Syst03"), {text(u"SuitNo", 1), text(u"SuitRule")}, {QStringLiteral("SuitNo")}}};
}

} // namespace

int Table::indexOf(QStringView column) const {
    for (std::size_t index = 0; index < columns.size(); ++index)
        if (column.compare(columns[index].name, Qt::CaseInsensitive) == 0)
            return static_cast<int>(index);
    return -1;
}

const std::vector<Table>& tables() {
    static const std::vector<Table> all = [] {
        std::vector<Table> result = masterTables();
        for (const auto& group :
             {attendanceTables(), leaveTables(), writeOffAndOvertimeTables(), systemTables()})
            result.insert(result.end(), group.begin(), group.end());
        return result;
    }();
    return all;
}

const Table* findTable(QStringView name) {
    for (const Table& table : tables())
        if (name.compare(table.name, Qt::CaseInsensitive) == 0)
            return &table;
    return nullptr;
}

} // namespace pontrel
