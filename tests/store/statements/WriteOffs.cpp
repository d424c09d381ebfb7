#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable entryStatements() {
    return {
        selects(u"All write-offs come by employee and day", u"Select * from Canc02",
                u"'00001'|2001-01-10|'B2'|null*5\n"
                u"'00001'|2001-03-05|'A1'|'A1'|''|'B2'|'admin'|null\n"
                u"'00002'|2001-03-05|null|'B2'|null|null|'admin'|2001-03-06 10:00:00\n"
                u"'00003'|2001-03-05|'A1'|null*5"),
        selects(u"Write-offs of a day come by employee",
                u" Select * from Canc02  where CnlDate = #2001/3/5# Order by  EmpNo",
                u"'00001'|2001-03-05|'A1'|'A1'|''|'B2'|'admin'|null\n"
                u"'00002'|2001-03-05|null|'B2'|null|null|'admin'|2001-03-06 10:00:00\n"
                u"'00003'|2001-03-05|'A1'|null*5"),
        selects(u"Write-offs of a day and employee are found",
                u" Select * from Canc02  where CnlDate = #2001/3/5#     and EmpNo = '00002'  "
                u"Order by EmpNo,CnlDate",
                u"'00002'|2001-03-05|null|'B2'|null|null|'admin'|2001-03-06 10:00:00"),
        selects(u"Write-offs of an employee come by day",
                u" Select * from Canc02  where EmpNo = '00001' Order by CnlDate ",
                u"'00001'|2001-01-10|'B2'|null*5\n'00001'|2001-03-05|'A1'|'A1'|''|'B2'|'admin'|null"),
        selects(u"The name of a reason is looked up", u"SELECT CnlName FROM Canc01 WHERE CnlNo ='A1'",
                u"'忘刷卡'"),
        selects(u"The name of a reason is looked up in any case",
                u"SELECT CnlName FROM Canc01 WHERE CnlNo ='b2'", u"'公出'"),
        selects(u"The write-off batch offers current employees",
                u"SELECT EmpNo, EmpName   From Base06   where isnull(LeaveDate) = true",
                u"'00001'|'林小明'\n'00002'|'陳大文'\n'a0001'|'Ann Lee'"),
        changes(u"A batch removes an entry of employee and day",
                u"delete * from Canc02  where EmpNo ='00001'     and CnlDate =  #2001/3/5#", 1, u"Canc02 -2"),
        changes(u"A batch writes an entry with its moment",
                u"insert into Canc02(EmpNo,CnlDate,CnlNo1,CnlNo2,CnlNo3,CnlNo4,Account,TransDate) "
                u"values('00001', #2001/3/6#, 'A1','','','B2','admin',#2001-Mar-06 10:20:30#)",
                1, u"Canc02 +'00001'|'2001-03-06'|'A1'|''|''|'B2'|'admin'|'2001-03-06 10:20:30'"),
        changes(u"An entry of an employee and day that are taken is dropped",
                u"insert into Canc02(EmpNo,CnlDate,CnlNo1,CnlNo2,CnlNo3,CnlNo4,Account,TransDate) "
                u"values('00001', #2001/3/5#, 'B2','','','','admin',#2001-Mar-06 10:20:30#)",
                0, u""),
        fails(u"A typed apostrophe breaks the entry of a batch",
              u"insert into Canc02(EmpNo,CnlDate,CnlNo1,CnlNo2,CnlNo3,CnlNo4,Account,TransDate) "
              u"values('00001', #2001/3/6#, 'A'','','','B2','admin',#2001-Mar-06 10:20:30#)",
              error::Syntax),
        fails(u"An empty date box breaks the removal of an entry",
              u"delete * from Canc02  where EmpNo ='00001'     and CnlDate =  ##", error::Syntax),
    };
}

StatementTable countStatements() {
    return {
        changes(u"A count starts from an empty table", u"delete * from View01", 4, u"View01 -1 2 3 4"),
        selects(u"Reasons are counted by their codes", u"SELECT CnlNo From Canc01 ",
                u"'A1'\n'B2'\n'C33'\n'D4'"),
        changes(u"A counted reason starts at zero",
                u"Insert Into View01(EmpNo,BegDate,EndDate,CnlNo) "
                u"Values('00001',#2001/3/1#,#2001/3/31#,'C33')",
                1, u"View01 +'00001'|'2001-03-01'|'2001-03-31'|'C33'|0|0"),
        changes(u"A reason of nobody is counted as well",
                u"Insert Into View01(EmpNo,BegDate,EndDate,CnlNo) Values('',#2001/3/1#,#2001/3/31#,'A1')", 1,
                u"View01 +''|'2001-03-01'|'2001-03-31'|'A1'|0|0"),
        selects(u"A reason is counted in one place of the day",
                u"SELECT count(*) as CnlTimes   From Canc02   where CnlDate between  #2001/3/1# and "
                u"#2001/3/31#     and EmpNo = '00001'     and CnlNo2 = 'A1'",
                u"1")
            .named(u"CnlTimes"),
        selects(u"A period that ends before it begins counts nothing",
                u"SELECT count(*) as CnlTimes   From Canc02   where CnlDate between  #2001/3/31# and "
                u"#2001/3/1#     and EmpNo = '00001'     and CnlNo2 = 'A1'",
                u"0"),
        changes(u"A count is added to what stands there",
                u"Update View01 Set CnlTimes = CnlTimes + 1 Where EmpNo = '00001'   and CnlNo = 'A1'", 1,
                u"View01 ~1 CnlTimes=3"),
        changes(u"A count is added to a row inserted without one",
                u"Update View01 Set CnlTimes = CnlTimes + 4 Where EmpNo = '00001'   and CnlNo = 'C33'", 1,
                u"View01 ~5 CnlTimes=4")
            .after(u"Insert Into View01(EmpNo,BegDate,EndDate,CnlNo) "
                   u"Values('00001',#2001/3/1#,#2001/3/31#,'C33')"),
        changes(u"Reasons that did not occur are removed", u"delete * from View01  Where CnlTimes = 0", 2,
                u"View01 -2 4"),
    };
}

} // namespace

StatementTable writeOffStatements() {
    StatementTable all = entryStatements();
    const StatementTable counts = countStatements();
    all.insert(all.end(), counts.begin(), counts.end());
    return all;
}

} // namespace pontrel::test
