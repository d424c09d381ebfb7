#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable dropped() {
    return {
        changes(u"A taken key drops the row", u"Insert into Base01(TitleNo,Title) Values('01','x')", 0, u""),
        changes(u"A key that differs in case alone is taken",
                u"Insert into Base02(UnitNo,Unit) Values('A300','x')", 0, u""),
        changes(u"An account that differs in case alone is another",
                u"Insert into syst02(Account,Password) Values('Abc','x')", 1, u"syst02 +'Abc'|'x'|0*8"),
        changes(u"A key that is null drops the row", u"Insert into Base06(EmpName) Values('x')", 0, u""),
        changes(u"A null in a part of the key drops the row",
                u"Insert into Rule03(EmpNo,TimeNo) Values('00001','A')", 0, u""),
        changes(u"A key that is an empty text is one", u"Insert into Base03(WorkNo,WorkType) Values('','x')",
                1, u"Base03 +''|'x'"),
        changes(u"Another day of an employee is another key",
                u"Insert into Rule03(EmpNo,YMD,TimeNo) Values('00001',#2001/3/7#,'A')", 1,
                u"Rule03 +'00001'|'2001-03-07'|'A'"),
        changes(u"Another slot of an employee and day is another result",
                u"Insert Into Atte02(EmpNo,TimeNo,UseDate) Values('00002','B',#2001/3/5#)", 1,
                u"Atte02 +'00002'|'2001-03-05'|'B'|null*4|0*12|null*12|0*13"),
        changes(u"A punch that differs in its reader alone is another",
                u"insert into Atte01(EmpNo,UseDate,UseTime,class,ReaderID)"
                u"values('00001',#2001/03/05#,#08:00:59#,'255','002')",
                1, u"Atte01 +'00001'|'2001-03-05'|'08:00:59'|'255'|'002'"),
        changes(u"A change to a taken key drops the row",
                u"Update Base01 Set TitleNo = '01' Where TitleNo = '02'", 0, u""),
        changes(u"A change of many rows drops those whose keys are taken",
                u"Update Rule03 Set YMD = #2001/3/6# Where YMD = #2001/3/5#", 1,
                u"Rule03 ~6 YMD='2001-03-06'"),
        changes(u"A change of a key to null drops the row",
                u"Update Base01 Set TitleNo = Null Where TitleNo = '02'", 0, u""),
        changes(u"A change of the case of a key is made",
                u"Update Base02 Set UnitNo = 'A300' Where UnitNo = 'a300'", 1, u"Base02 ~3 UnitNo='A300'"),
        changes(u"A copy drops rows whose keys are taken and keeps the rest",
                u"Insert into Rule03(EmpNo,YMD,TimeNo) Select EmpNo,#2001/3/6#,'B' From Base06", 2,
                u"Rule03 +'00004'|'2001-03-06'|'B'\nRule03 +'a0001'|'2001-03-06'|'B'"),
    };
}

StatementTable repeated() {
    return {
        changes(u"Grants may be repeated",
                u"Insert into Holi02(SuitNo,HoliNo,HoliYearBeg,HoliYearEnd,HoliDays) "
                u"Values('1','01',3,5,10)",
                1, u"Holi02 +'1'|'01'|3|5|10.0"),
        changes(u"Roster changes may be repeated",
                u"Insert into Rule04(EmpNo,Ymd) Values('00001',#2001/3/5#)", 1,
                u"Rule04 +'00001'|'2001-03-05'")
            .after(u"Insert into Rule04(EmpNo,Ymd) Values('00001',#2001/3/5#)"),
        changes(u"Counts may be repeated",
                u"Insert Into View01(EmpNo,BegDate,EndDate,CnlNo) "
                u"Values('00001',#2001/3/1#,#2001/3/31#,'A1')",
                1, u"View01 +'00001'|'2001-03-01'|'2001-03-31'|'A1'|0|0"),
        changes(u"A row without employee and day may be added where there is no key",
                u"Insert into View03(CnlNo1) Values('A1')", 1, u"View03 +null|null|'A1'|null*3"),
    };
}

StatementTable employeeDeletions() {
    return {
        fails(u"An employee with overtime and leave is not deleted",
              u"delete * from Base06 where EmpNo = '00001'", error::DeleteRefused),
        fails(u"An employee with overtime in another case is not deleted",
              u"delete * from Base06 where EmpNo = 'a0001'", error::DeleteRefused),
        fails(u"An employee with leave alone is not deleted",
              u"Delete Base06.* from Base06 Where EmpNo = '00002'", error::DeleteRefused)
            .after(u"delete * from Over01 "),
        fails(u"An employee with overtime alone is not deleted",
              u"delete * from Base06 Where EmpNo = '00002'", error::DeleteRefused)
            .after(u"delete * from Holi03 "),
        fails(u"One employee with overtime keeps all others", u"delete * from Base06", error::DeleteRefused),
        changes(u"An employee without overtime and leave is deleted",
                u"delete * from Base06 where EmpNo = '00003'", 1, u"Base06 -3"),
        changes(u"An employee who only stands in for others is deleted",
                u"delete * from Base06 where EmpNo = '00003'", 1, u"Base06 -3")
            .after(u"Update Holi03 Set RepEmpNo = '00003' Where BusNo = '200103050002'"),
        changes(u"An employee with day rows and write-offs alone is deleted",
                u"delete * from Base06 where EmpNo = '00001'", 1, u"Base06 -2")
            .after(u"delete * from Over01 \ndelete * from Holi03 "),
        changes(u"Overtime of an unknown employee is inserted",
                u"insert into [Over01](OverDate,EmpNo,BegTime,OverHours)"
                u"values(#2001/3/5#,'99999',#18:30:00#, 0)",
                1, u"Over01 +'99999'|'2001-03-05'|'18:30:00'|null|0|null|0|0|null|null"),
        changes(u"A unit in use is deleted", u"delete * from Base02 where UnitNo = '0100'", 1, u"Base02 -2"),
        changes(u"A leave type in use is deleted", u"delete * from Holi01 where HoliNo = '01'", 1,
                u"Holi01 -2"),
    };
}

} // namespace

StatementTable keyStatements() {
    StatementTable all = dropped();
    for (const StatementTable& part : {repeated(), employeeDeletions()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
