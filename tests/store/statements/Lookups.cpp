#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

StatementTable lookupStatements() {
    return {
        selects(
            u"Employees whose codes start so come by code and name",
            u"select * from Base06 where empno like '0000*' order by EmpNo,EmpName",
            u"'00001'|'林小明'|False|null|'0200'|'010'|'02'|'2'|'2'|1975-11-20|2001-03-05|null*4|3|null*22\n"
            u"'00002'|'陳大文'|True|'A123456789'|'0100'|'010'|'01'|'1'|'1'|1970-05-06|1995-07-01|null|"
            u"1990-03-15|14|24|14|7.0|1.4|5.4|2.0|0.0|2.0|5.0|0.0|5.0|30.0|0.4|29.4|null*10\n"
            u"'00003'|'王離職'|False|null|'0100'|'020'|'02'|'1'|null|null|1990-01-01|2001-03-05|null*26\n"
            u"'00004'|'李哨兵'|False|null|'0200'|null*4|2038-01-01*3|null*26")
            .named(u"EmpNo|EmpName|Sex|IdNo|UnitNo|ClsNo|TitleNo|WorkNo|SuitNo|Birth|ArriveDate|LeaveDate|"
                   u"IniArrDate|BreakY|SoldierY|HoliExper|ThisYearHD|ThisYearUse|ThisYearLeft|LastYearHD|"
                   u"LastYearUse|LastYearLeft|LeaveHD|LeaveUse|LeaveLeft|SickHD|SickUse|SickLeft|Memo|"
                   u"Telephone|Address|ExperLevel|SalaryLevel|SalaryPoint|BackGround|Exam|Webpsw|WebNo"),
        selects(u"The start of a code is met in any case",
                u"select * from Base06 where empno like 'A*' order by EmpNo,EmpName",
                u"'a0001'|'Ann Lee'|False|null|'a300'|'020'|null|'1'|'1'|null|2001-03-06|null*27"),
        selects(u"One text must start both code and name",
                u"select * from Base06 where empno like 'a*' and empname like  'a*' order by EmpNo,EmpName",
                u"'a0001'|'Ann Lee'|False|null|'a300'|'020'|null|'1'|'1'|null|2001-03-06|null*27"),
        selects(u"A name in Han characters starts no code",
                u"select * from Base06 where empno like '陳*' and empname like  '陳*' "
                u"order by EmpNo,EmpName",
                u""),
        fails(u"An apostrophe typed as the start of a code breaks the lookup",
              u"select * from Base06 where empno like ''*' order by EmpNo,EmpName", error::Syntax),
    };
}

std::vector<FindCase> findCases() {
    return {
        {u"The first code with the typed start is found, no blank before it", u"Base06", u"empno like'0*'",
         u"'00001'|'林小明'"},
        {u"A longer start narrows the search", u"Base06", u"empno like'00003*'", u"'00003'|'王離職'"},
        {u"The start of a code is found in any case", u"Base06", u"empno like'A*'", u"'a0001'|'Ann Lee'"},
        {u"A start of nothing is met by the first row", u"Base06", u"empno like'*'", u"'00001'|'林小明'"},
        {u"A start that no code has is not found", u"Base06", u"empno like'9*'", u""},
        {u"The first name with the typed start is found", u"Base06", u"empname like'王*'",
         u"'00003'|'王離職'"},
        {u"A name in letters is found in any case", u"Base06", u"empname like'aNN l*'", u"'a0001'|'Ann Lee'"},
        {u"An apostrophe in the start of a code breaks the search", u"Base06", u"empno like''*'", u"",
         error::Syntax},
        {u"An apostrophe in the start of a name breaks the search", u"Base06", u"empname like'O'B*'", u"",
         error::Syntax},
        {u"A picked employee is found", u"Base06", u"empno ='00002'", u"'00002'|'陳大文'"},
        {u"An employee picked in another case is found", u"Base06", u"empno ='A0001'", u"'a0001'|'Ann Lee'"},
        {u"No pick finds nobody", u"Base06", u"empno =''", u""},
        {u"A note is found by its number", u"Holi03", u"BusNo ='200103050002'", u"'200103050002'|'00001'"},
        {u"A number of no note is not found", u"Holi03", u"BusNo ='200103059999'", u""},
        {u"The search goes in the order of the set", u"select * from Base06 order by EmpName desc",
         u"empno like'0000*'", u"'00002'|'陳大文'"},
        {u"The search is over the rows of the set alone", u"select * from Base06 where empno like '00*'",
         u"empno ='a0001'", u""},
        {u"A condition on a column that the set has not fails", u"Holi03", u"Nothing ='1'", u"",
         error::UnknownName},
        {u"A condition that ends early fails", u"Holi03", u"BusNo =", u"", error::Syntax},
    };
}

} // namespace pontrel::test
