#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable calendarStatements() {
    return {
        selects(u"Days off come by date", u"select hymd from Rule01", u"2001-01-01\n2001-02-28\n2001-10-10")
            .named(u"hymd"),
        selects(u"A day off is found between blanks in its number signs",
                u"select count(*) as cnt from Rule01 where hymd = # 2001/2/28 # ", u"1"),
        selects(u"A working day is not among the days off",
                u"select count(*) as cnt from Rule01 where hymd = # 2001/3/1 # ", u"0"),
        changes(u"A click makes a day off", u"insert into Rule01(hymd)  values(# 2001/3/5 # )", 1,
                u"Rule01 +'2001-03-05'"),
        changes(u"A click makes a working day again", u"delete * from Rule01 where hymd =# 2001/2/28 # ", 1,
                u"Rule01 -1"),
        selects(u"Days off of a period are found with both its ends",
                u"SELECT hymd from Rule01 where hymd between #2001/01/01# and #2001/02/28#",
                u"2001-01-01\n2001-02-28"),
        selects(u"Days off of a single day without one are none",
                u"SELECT hymd from Rule01 where hymd between #2001/03/05# and #2001/03/05#", u""),
    };
}

StatementTable rosterRowStatements() {
    return {
        selects(u"A roster row of the class is counted",
                u"select count(*) as cnt From Rule03,Base06 where Base06.ClsNo ='010'    "
                u"and  Rule03.ymd = #2001/03/05#    and Base06.EmpNo = Rule03.EmpNo     "
                u"and Rule03.EmpNo = '00001'",
                u"1")
            .named(u"cnt"),
        selects(u"A roster row counts by the short date too",
                u"select count(*) as cnt From Rule03,Base06 where Base06.ClsNo ='010'    "
                u"and  Rule03.ymd = #2001/3/6#    and Base06.EmpNo = Rule03.EmpNo     "
                u"and Rule03.EmpNo = '00001'",
                u"1"),
        selects(u"A roster row of another class is not counted",
                u"select count(*) as cnt From Rule03,Base06 where Base06.ClsNo ='020'    "
                u"and  Rule03.ymd = #2001/03/05#    and Base06.EmpNo = Rule03.EmpNo     "
                u"and Rule03.EmpNo = '00001'",
                u"0"),
        changes(u"A roster row is inserted for a current employee of the class",
                u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo,  #2001/3/7#, 'B'  "
                u"From Base06  where Base06.ClsNo = '020'    and  Base06.EmpNo = 'a0001'    "
                u"and  isnull(Base06.LeaveDate) = True",
                1, u"Rule03 +'a0001'|'2001-03-07'|'B'"),
        changes(u"Roster rows are inserted for all current employees by their codes",
                u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo,  #2001/3/7#, 'A' "
                u"From Base06 where isnull(Base06.LeaveDate) = True",
                3,
                u"Rule03 +'00001'|'2001-03-07'|'A'\nRule03 +'00002'|'2001-03-07'|'A'\n"
                u"Rule03 +'a0001'|'2001-03-07'|'A'"),
        changes(u"A rest row is inserted with an empty text",
                u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo,  #2001/03/07#, ''  "
                u"From Base06  where Base06.ClsNo = '010'    and  Base06.EmpNo = '00002'    "
                u"and  isnull(Base06.LeaveDate) = True",
                1, u"Rule03 +'00002'|'2001-03-07'|''"),
        changes(u"The code of the employee's own row is inserted, not the one asked for",
                u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo,  #2001/3/7#, 'B'  "
                u"From Base06  where Base06.ClsNo = '020'    and  Base06.EmpNo = 'A0001'    "
                u"and  isnull(Base06.LeaveDate) = True",
                1, u"Rule03 +'a0001'|'2001-03-07'|'B'"),
        changes(u"No roster row is inserted for an employee who has left",
                u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo,  #2001/3/7#, 'B'  "
                u"From Base06  where Base06.ClsNo = '020'    and  Base06.EmpNo = '00003'    "
                u"and  isnull(Base06.LeaveDate) = True",
                0, u""),
        changes(u"A roster row that is there is not inserted again",
                u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo,  #2001/3/5#, 'B'  "
                u"From Base06  where Base06.ClsNo = '010'    and  Base06.EmpNo = '00001'    "
                u"and  isnull(Base06.LeaveDate) = True",
                0, u""),
        changes(u"A roster row of an employee who has left is rewritten",
                u"update Rule03,Base06 set Rule03.[TimeNo] ='A' where Rule03.EmpNo =Base06.EmpNo      "
                u"and Base06.ClsNo = '020'    and  Rule03.ymd = #2001/3/5#    and  Rule03.EmpNo = '00003'",
                anyNumber, u"Rule03 ~5 TimeNo='A'"),
        changes(u"A roster row becomes a rest by an empty text",
                u"update Rule03,Base06 set Rule03.[TimeNo] ='' where Rule03.EmpNo =Base06.EmpNo      "
                u"and Base06.ClsNo = '010'    and  Rule03.ymd = #2001/03/06#    and  Rule03.EmpNo = '00002'",
                anyNumber, u"Rule03 ~1 TimeNo=''"),
        changes(u"A roster row of another class is not rewritten",
                u"update Rule03,Base06 set Rule03.[TimeNo] ='B' where Rule03.EmpNo =Base06.EmpNo      "
                u"and Base06.ClsNo = '010'    and  Rule03.ymd = #2001/3/5#    and  Rule03.EmpNo = 'a0001'",
                0, u""),
        fails(u"A slot code with an apostrophe breaks the roster though no row is there",
              u"update Rule03,Base06 set Rule03.[TimeNo] =''' where Rule03.EmpNo =Base06.EmpNo      "
              u"and Base06.ClsNo = '010'    and  Rule03.ymd = #1999/1/1#    and  Rule03.EmpNo = '00001'",
              error::Syntax),
    };
}

StatementTable generationStatements() {
    return {
        selects(u"Classes of a range of employees come once each and rising",
                u"select Distinct ClsNo From Base06 Where ClsNo Between '0000' and 'ZZZZ'      "
                u"and EmpNo Between '000000' and 'ZZZZZZ'",
                u"'010'\n'020'"),
        selects(u"A class without an employee in the range does not come",
                u"select Distinct ClsNo From Base06 Where ClsNo Between '0000' and 'ZZZZ'      "
                u"and EmpNo Between '00001' and '00002'",
                u"'010'"),
        selects(u"A step in use returns its slot, days, rests and the holiday flag",
                u"SELECT TimeNo2, TimeDay2, TimeRest2,ChkHoli     From Base05    Where ClsNo ='010'       "
                u"and TimeNo2 <> null",
                u"'B'|3|1|True")
            .named(u"TimeNo2|TimeDay2|TimeRest2|ChkHoli"),
        selects(u"A step whose slot is an empty text is in use",
                u"SELECT TimeNo1, TimeDay1, TimeRest1,ChkHoli     From Base05    Where ClsNo ='020'       "
                u"and TimeNo1 <> null",
                u"''|1|0|False"),
        selects(u"A step whose slot is null is not in use",
                u"SELECT TimeNo3, TimeDay3, TimeRest3,ChkHoli     From Base05    Where ClsNo ='010'       "
                u"and TimeNo3 <> null",
                u""),
        selects(u"Employees of a class come by their codes, those who have left as well",
                u"select EmpNo From Base06 Where EmpNo Between '000000' and 'ZZZZZZ'      and ClsNo = '020'",
                u"'00003'\n'a0001'"),
    };
}

StatementTable adjustmentStatements() {
    return {
        selects(u"The roster offers current employees",
                u"SELECT EmpNo, EmpName   From Base06  where isnull(LeaveDate) = true ",
                u"'00001'|'林小明'\n'00002'|'陳大文'\n'a0001'|'Ann Lee'")
            .named(u"EmpNo|EmpName"),
        selects(u"While the sentinel stands no employee is current",
                u"SELECT EmpNo, EmpName   From Base06  where isnull(LeaveDate) = true ", u"")
            .after(u"Update Base06 Set LeaveDate= #2038/01/01# Where IsNull(LeaveDate) = true "),
        selects(u"The roster offers classes by their codes", u"SELECT ClsNo, ClassName   From Base05 ",
                u"'010'|'常日班'\n'020'|'輪班'"),
        selects(u"The roster offers slots by their codes", u"SELECT TimeNo, TimeName   From Base04 ",
                u"'A'|'日班'\n'B'|'夜班'"),
        selects(u"The roster query needs no blank before its order",
                u"select * from rule03 where EmpNo Between '000000' and 'ZZZZZZ'    "
                u"and Ymd Between #2001/3/5# and #2001/3/6#     and TimeNo Between '' and 'Z'"
                u"Order by ymd,empno,timeno",
                u"'00001'|2001-03-05|'A'\n'00002'|2001-03-05|'A'\n'00003'|2001-03-05|'B'\n"
                u"'a0001'|2001-03-05|'A'\n'00001'|2001-03-06|''\n'00002'|2001-03-06|'B'\n"
                u"'00003'|2001-03-06|'A'")
            .named(u"EmpNo|YMD|TimeNo"),
        selects(u"A lower bound that is not empty leaves rest rows out",
                u"select * from rule03 where EmpNo Between '000000' and 'ZZZZZZ'    "
                u"and Ymd Between #2001/3/6# and #2001/3/6#     and TimeNo Between 'A' and 'Z'"
                u"Order by ymd,empno,timeno",
                u"'00002'|2001-03-06|'B'\n'00003'|2001-03-06|'A'"),
        fails(u"Empty date boxes break the roster query",
              u"select * from rule03 where EmpNo Between '000000' and 'ZZZZZZ'    "
              u"and Ymd Between ## and ##     and TimeNo Between '' and 'Z'Order by ymd,empno,timeno",
              error::Syntax),
        selects(u"Current employees on a slot of the day are gathered",
                u"SELECT Rule03.EmpNo, Base06.EmpName,Rule03.TimeNo   From Base06,Rule03  "
                u"where isnull(Base06.LeaveDate) = True     and Rule03.EmpNo = Base06.EmpNo     "
                u"and Rule03.Ymd = #2001/3/5#     and Rule03.TimeNo Between '' and 'Z'",
                u"'00001'|'林小明'|'A'\n'00002'|'陳大文'|'A'\n'a0001'|'Ann Lee'|'A'")
            .named(u"EmpNo|EmpName|TimeNo"),
        selects(u"The length of a code is read", u"select LenEmpNo from Syst01", u"5").named(u"LenEmpNo"),
        changes(u"A picked employee gets another slot",
                u"Update Rule03 Set TimeNo = 'B' Where EmpNo = '00001'      and Ymd = #2001/3/5#", 1,
                u"Rule03 ~3 TimeNo='B'"),
        changes(u"A picked employee without a row that day gets none",
                u"Update Rule03 Set TimeNo = '' Where EmpNo = '00001'      and Ymd = #2001/3/7#", 0, u""),
        fails(u"An empty date box breaks the change of a slot",
              u"Update Rule03 Set TimeNo = 'B' Where EmpNo = '00001'      and Ymd = ##", error::Syntax),
    };
}

} // namespace

StatementTable rosterStatements() {
    StatementTable all = calendarStatements();
    for (const StatementTable& part :
         {rosterRowStatements(), generationStatements(), adjustmentStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
