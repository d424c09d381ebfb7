#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable employeeStatements() {
    return {
        selects(u"A typed unit is found", u"SELECT Unit FROM Base02 WHERE UnitNo ='0200'", u"'總務室'"),
        selects(u"A typed class is found", u"SELECT ClassName FROM Base05 WHERE ClsNo ='010'", u"'常日班'"),
        selects(u"A typed title is found", u"SELECT Title FROM Base01 WHERE TitleNo ='02'", u"'專員'"),
        selects(u"A typed employment type is found", u"SELECT WorkType FROM Base03 WHERE WorkNo ='1'",
                u"'正式'"),
        selects(u"A typed scheme is found", u"SELECT SuitRule FROM Syst03 WHERE SuitNo ='2'", u"'約聘人員'"),
        selects(u"A typed code of nothing is missed", u"SELECT Unit FROM Base02 WHERE UnitNo =''", u""),
        fails(u"An apostrophe typed as a code breaks its lookup",
              u"SELECT Unit FROM Base02 WHERE UnitNo ='''", error::Syntax),
        changes(u"A save takes the sentinel out of leaving dates",
                u"Update Base06 Set LeaveDate= null Where LeaveDate =#2038-01-01#", 1,
                u"Base06 ~5 LeaveDate=null"),
        changes(u"A save takes the sentinel out of births",
                u"Update Base06 Set Birth= null Where Birth =#2038-01-01#", 1, u"Base06 ~5 Birth=null"),
        changes(u"A save takes the sentinel out of dates of joining",
                u"Update Base06 Set ArriveDate= null Where ArriveDate =#2038-01-01#", 1,
                u"Base06 ~5 ArriveDate=null"),
    };
}

StatementTable seniorityStatements() {
    return {
        selects(u"Seniority walks all employees by their codes",
                u"SELECT EmpNo,IniArrDate,BreakY,SoldierY FROM Base06 ",
                u"'00001'|null*3\n'00002'|1990-03-15|14|24\n'00003'|null*3\n'00004'|null*3\n'a0001'|null*3")
            .named(u"EmpNo|IniArrDate|BreakY|SoldierY"),
        changes(u"Seniority is written as quoted text into a number",
                u"Update Base06 set HoliExper ='14' Where EmpNo = '00001'", 1, u"Base06 ~2 HoliExper=14"),
        changes(u"Seniority below zero is stored so",
                u"Update Base06 set HoliExper ='-1' Where EmpNo = 'a0001'", 1, u"Base06 ~4 HoliExper=-1"),
        fails(u"A code with an apostrophe breaks its seniority",
              u"Update Base06 set HoliExper ='3' Where EmpNo = '0'1'", error::Syntax),
        selects(u"Entitlement reads three codes of the settings",
                u"SELECT ThisYearRest,Leave,Sick FROM Syst01", u"'01'|'03'|'04'")
            .named(u"ThisYearRest|Leave|Sick"),
        selects(u"Entitlement walks all employees by their codes",
                u"SELECT EmpNo,SuitNo,HoliExper,ThisYearHD,ThisYearLeft,LeaveHD,LeaveLeft,SickHD,SickLeft "
                u"FROM Base06 ",
                u"'00001'|'2'|3|null*6\n"
                u"'00002'|'1'|14|7.0|5.4|5.0|5.0|30.0|29.4\n"
                u"'00003'|null*8\n"
                u"'00004'|null*8\n"
                u"'a0001'|'1'|null*7"),
        selects(u"Grants of a scheme and leave come as they were entered",
                u"SELECT HoliYearBeg,HoliYearEnd,HoliDays FROM Holi02 WHERE SuitNo = '1'     "
                u"AND HoliNo = '01'",
                u"3|5|10.0\n1|3|7.0")
            .named(u"HoliYearBeg|HoliYearEnd|HoliDays"),
        selects(u"A scheme without grants of a leave has none",
                u"SELECT HoliYearBeg,HoliYearEnd,HoliDays FROM Holi02 WHERE SuitNo = '2'     "
                u"AND HoliNo = '01'",
                u""),
    };
}

StatementTable accountStatements() {
    return {
        selects(u"The login reads accounts by their names, capitals first",
                u"SELECT account, password,f1,f2,f3,f4,f5,f6,f7,f8   From syst02 ",
                u"'ABC'|'pw1'|True*7|False\n'abc'|'Pw1'|True|False*6|True")
            .named(u"account|password|f1|f2|f3|f4|f5|f6|f7|f8"),
        selects(u"Accounts are the one text whose case counts",
                u"SELECT account, password,f1,f2,f3,f4,f5,f6,f7,f8   From syst02 Where Account = 'abc'",
                u"'abc'|'Pw1'|True|False*6|True"),
        selects(u"Passwords are compared with their case",
                u"SELECT account From syst02 Where Password = 'PW1'", u""),
    };
}

} // namespace

StatementTable masterStatements() {
    StatementTable all = employeeStatements();
    for (const StatementTable& part : {seniorityStatements(), accountStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
