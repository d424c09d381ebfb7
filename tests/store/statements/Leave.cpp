#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable grantStatements() {
    return {
        selects(u"Grants of known types and schemes carry both names",
                u" SELECT Syst03.SuitRule, Holi01.HoliType, Holi02.* "
                u"    FROM (Holi01 INNER JOIN Holi02 ON Holi01.HoliNo = Holi02.HoliNo) "
                u"INNER JOIN Syst03 ON Holi02.SuitNo = Syst03.SuitNo",
                u"'公務人員'|'特休'|'1'|'01'|3|5|10.0\n"
                u"'公務人員'|'特休'|'1'|'01'|1|3|7.0\n"
                u"'約聘人員'|'病假'|'2'|'04'|0|99|30.0")
            .named(u"SuitRule|HoliType|SuitNo|HoliNo|HoliYearBeg|HoliYearEnd|HoliDays"),
        selects(u"The name of a scheme is looked up", u"SELECT SuitRule FROM Syst03 WHERE SuitNo ='1'",
                u"'公務人員'"),
        selects(u"An unknown scheme is not found", u"SELECT SuitRule FROM Syst03 WHERE SuitNo ='9'", u""),
        selects(u"The name of a leave type is looked up", u"SELECT HoliType FROM Holi01 WHERE HoliNo ='03'",
                u"'事假'"),
        selects(u"Schemes come by their codes",
                u"SELECT SuitNo, SuitRule "
                u"  From Syst03 ",
                u"'1'|'公務人員'\n'2'|'約聘人員'"),
        selects(u"Leave types come by their codes",
                u"SELECT HoliNo, HoliType "
                u"  From Holi01 ",
                u"'01'|'特休'\n'03'|'事假'\n'04'|'病假'\n'14'|'公出'"),
        selects(u"Days with leave come once each and rising",
                u"SELECT distinct HoliDate "
                u"  From Holi04 ",
                u"2001-02-01\n2001-03-05\n2001-03-06\n2001-03-07\n2001-03-09")
            .named(u"HoliDate"),
        selects(u"A leave type tells that days off are skipped",
                u"SELECT HoliDeduct From Holi01 "
                u"WHERE HoliNo = '01'",
                u"True"),
        selects(u"A leave type that was never told so counts days off",
                u"SELECT HoliDeduct From Holi01 "
                u"WHERE HoliNo = '14'",
                u"False"),
    };
}

StatementTable noteLookupStatements() {
    return {
        selects(u"The note shows its employee with all balances",
                u"SELECT EmpNo,EmpName,UnitNo,ClsNo,TitleNo,WorkNo,ThisYearHD,ThisYearUse,ThisYearLeft,"
                u"LastYearHD,LastYearUse,LastYearLeft,LeaveHD,LeaveUse,LeaveLeft,SickHD,SickUse,SickLeft "
                u"FROM Base06  WHERE EmpNo ='00002'",
                u"'00002'|'陳大文'|'0100'|'010'|'01'|'1'|7.0|1.4|5.4|2.0|0.0|2.0|5.0|0.0|5.0|30.0|0.4|29.4"),
        selects(u"Balances never given are null",
                u"SELECT EmpNo,EmpName,UnitNo,ClsNo,TitleNo,WorkNo,ThisYearHD,ThisYearUse,ThisYearLeft,"
                u"LastYearHD,LastYearUse,LastYearLeft,LeaveHD,LeaveUse,LeaveLeft,SickHD,SickUse,SickLeft "
                u"FROM Base06  WHERE EmpNo ='00001'",
                u"'00001'|'林小明'|'0200'|'010'|'02'|'2'|null*12"),
        selects(u"The substitute's name is looked up",
                u"SELECT EmpName FROM Base06 "
                u" WHERE EmpNo ='00003'",
                u"'王離職'"),
        selects(u"The leave type's name is looked up with two blanks",
                u"SELECT HoliType FROM Holi01 "
                u" WHERE HoliNo ='04'",
                u"'病假'"),
        selects(u"A title is looked up", u"SELECT Title FROM Base01 WHERE TitleNo ='01'", u"'科長'"),
        selects(u"A class is looked up", u"SELECT ClassName FROM Base05 WHERE ClsNo ='020'", u"'輪班'"),
        selects(u"A unit is looked up in any case", u"SELECT Unit FROM Base02 WHERE UnitNo ='A300'",
                u"'資訊室'"),
        selects(u"An employment type is looked up", u"SELECT WorkType FROM Base03 WHERE WorkNo ='2'",
                u"'約聘'"),
        selects(u"The balances alone are read after a save",
                u"SELECT ThisYearHD,ThisYearUse,ThisYearLeft,LastYearHD,LastYearUse,LastYearLeft,LeaveHD,"
                u"LeaveUse,LeaveLeft,SickHD,SickUse,SickLeft FROM Base06 WHERE EmpNo ='00002'",
                u"7.0|1.4|5.4|2.0|0.0|2.0|5.0|0.0|5.0|30.0|0.4|29.4"),
    };
}

StatementTable noteNumberStatements() {
    return {
        selects(u"Notes of a day are counted by their prefix",
                u"SELECT COUNT(BusNo) as cnt FROM Holi03"
                u" WHERE BusNo LIKE '20010305' & '*'",
                u"2")
            .named(u"cnt"),
        selects(u"A day without notes counts as 0 by its prefix",
                u"SELECT COUNT(BusNo) as cnt FROM Holi03"
                u" WHERE BusNo LIKE '20010307' & '*'",
                u"0"),
        selects(u"The last note of a day is found under the name max",
                u"SELECT max(BusNo) as max FROM Holi03"
                u" WHERE BusNo LIKE '20010305' & '*'",
                u"'200103050002'")
            .named(u"max"),
        selects(u"A day without notes has no last one",
                u"SELECT max(BusNo) as max FROM Holi03"
                u" WHERE BusNo LIKE '20010307' & '*'",
                u"null"),
    };
}

StatementTable daySlotStatements() {
    return {
        selects(u"The slot of an employee's day has its standard times",
                u"SELECT Base04.TimeNo as TimeNo,StdT1, StdT2,StdT3, StdT4"
                u"      From Rule03, Base04"
                u"    Where Rule03.ymd = #2001/3/5#"
                u"         and Rule03.empno = '00001'"
                u"        and Rule03.timeno = base04.timeno",
                u"'A'|08:00:00|12:00:00|13:00:00|17:00:00")
            .named(u"TimeNo|StdT1|StdT2|StdT3|StdT4"),
        selects(u"A rest day has no slot",
                u"SELECT Base04.TimeNo as TimeNo,StdT1, StdT2,StdT3, StdT4"
                u"      From Rule03, Base04"
                u"    Where Rule03.ymd = #2001/3/6#"
                u"         and Rule03.empno = '00001'"
                u"        and Rule03.timeno = base04.timeno",
                u""),
        selects(u"Nobody has a slot",
                u"SELECT Base04.TimeNo as TimeNo,StdT1, StdT2,StdT3, StdT4"
                u"      From Rule03, Base04"
                u"    Where Rule03.ymd = #2001/3/5#"
                u"         and Rule03.empno = ''"
                u"        and Rule03.timeno = base04.timeno",
                u""),
        selects(u"The first slot is that of the lowest code",
                u"SELECT top 1 StdT1, StdT2,StdT3, StdT4"
                u"      From base04",
                u"08:00:00|12:00:00|13:00:00|17:00:00")
            .named(u"StdT1|StdT2|StdT3|StdT4"),
        selects(u"Without slots there is no first one",
                u"SELECT top 1 StdT1, StdT2,StdT3, StdT4"
                u"      From base04",
                u"")
            .after(u"delete * from Base04"),
    };
}

StatementTable dayRowStatements() {
    return {
        changes(u"A day row is written with date and times as quoted text",
                u"Insert Into Holi04(BusNo,EmpNo, HoliNo, HoliDate, BegTime, EndTime, HoliHours,TimeNo)"
                u"Values('200103070001','00001','03','2001/3/7','08:00','17:00',8,'A')",
                1, u"Holi04 +'200103070001'|'00001'|'03'|'2001-03-07'|'08:00:00'|'17:00:00'|8|'A'"),
        changes(u"A day row of a day off has no hours and no slot",
                u"Insert Into Holi04(BusNo,EmpNo, HoliNo, HoliDate, BegTime, EndTime, HoliHours,TimeNo)"
                u"Values('200103070001','00001','03','2001/03/10','08:00:00','17:00:30',0,'')",
                1, u"Holi04 +'200103070001'|'00001'|'03'|'2001-03-10'|'08:00:00'|'17:00:30'|0|''"),
        fails(u"A typed apostrophe breaks the day row",
              u"Insert Into Holi04(BusNo,EmpNo, HoliNo, HoliDate, BegTime, EndTime, HoliHours,TimeNo)"
              u"Values('200103070001','0'001','03','2001/3/7','08:00','17:00',8,'A')",
              error::Syntax),
        selects(u"Day rows of employee and date are counted",
                u"select count(*) as c from Holi04"
                u" where EmpNo='00001'"
                u"   and HoliDate =#2001/3/5#",
                u"1")
            .named(u"c"),
        changes(u"Day rows of a note are deleted",
                u"delete * from Holi04 "
                u"where BusNo = '200103050002'",
                3, u"Holi04 -1 2 3"),
        selects(u"Day rows of a note come as they were written",
                u"select * from Holi04 where BusNo ='200103050002'",
                u"'200103050002'|'00001'|'03'|2001-03-05|13:00:00|17:00:00|4|'A'\n"
                u"'200103050002'|'00001'|'03'|2001-03-06|08:00:00|17:00:00|8|''\n"
                u"'200103050002'|'00001'|'03'|2001-03-07|08:00:00|12:00:00|4|''"),
    };
}

} // namespace

StatementTable leaveStatements() {
    StatementTable all = grantStatements();
    for (const StatementTable& part :
         {noteLookupStatements(), noteNumberStatements(), daySlotStatements(), dayRowStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
