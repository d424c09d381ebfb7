#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable punchFileStatements() {
    return {
        selects(u"The import reads its settings", u"select HandPath,LenEmpNo,IntervalSec from Syst01",
                u"'punch'|5|10")
            .named(u"HandPath|LenEmpNo|IntervalSec"),
        changes(u"The sentinel goes into every empty leaving date",
                u"Update Base06 Set LeaveDate= #2038/01/01# Where IsNull(LeaveDate) = true ", 3,
                u"Base06 ~1 LeaveDate='2038-01-01'\n"
                u"Base06 ~2 LeaveDate='2038-01-01'\n"
                u"Base06 ~4 LeaveDate='2038-01-01'"),
        changes(u"The sentinel is taken out again in its other spelling",
                u"Update Base06 Set LeaveDate= null Where LeaveDate =#2038-01-01#", 1,
                u"Base06 ~5 LeaveDate=null"),
        changes(u"A swipe is written to the staging table",
                u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)"
                u"values('00002',#2001/03/05#,#17:02:03#,'255','001')",
                1, u"AtteTemp +'00002'|'2001-03-05'|'17:02:03'|'255'|'001'"),
        changes(u"Blanks of the card field are kept",
                u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)"
                u"values(' 12  ',#2001/03/05#,#17:02:03#,'   ',' 1 ')",
                1, u"AtteTemp +' 12  '|'2001-03-05'|'17:02:03'|'   '|' 1 '"),
        changes(u"The staging table takes a repeated swipe",
                u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)"
                u"values('00001',#2001/03/05#,#08:00:59#,'255','001')",
                1, u"AtteTemp +'00001'|'2001-03-05'|'08:00:59'|'255'|'001'"),
        fails(u"An apostrophe in the card field breaks the insert",
              u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)"
              u"values('00'02',#2001/03/05#,#17:02:03#,'255','001')",
              error::Syntax),
        fails(u"A line whose date is no day breaks the insert",
              u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)"
              u"values('00002',#2001/02/30#,#17:02:03#,'255','001')",
              error::Syntax),
        fails(u"A line whose month is 00 breaks the insert",
              u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)"
              u"values('00002',#2001/00/05#,#17:02:03#,'255','001')",
              error::Syntax),
        fails(u"A line whose time is 24 o'clock breaks the insert",
              u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)"
              u"values('00002',#2001/03/05#,#24:00:00#,'255','001')",
              error::Syntax),
        fails(u"A line whose date is blank breaks the insert",
              u"insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)"
              u"values('00002',#    /  /  #,#17:02:03#,'255','001')",
              error::Syntax),
        changes(u"The earlier reader writes straight to the punches",
                u"insert into Atte01(EmpNo,UseDate,UseTime,class,ReaderID)"
                u"values('00002',#2001/03/05#,#17:02:03#,'255','001')",
                1, u"Atte01 +'00002'|'2001-03-05'|'17:02:03'|'255'|'001'"),
        changes(u"A punch that is there already is dropped without a word",
                u"insert into Atte01(EmpNo,UseDate,UseTime,class,ReaderID)"
                u"values('00001',#2001/03/05#,#08:00:59#,'255','001')",
                0, u""),
        changes(u"The bulk copy takes new punches in their order and drops the others",
                u" Insert into Atte01 Select * from AtteTemp", 5,
                u"Atte01 +'00001'|'2001-03-05'|'17:01:00'|'255'|'001'\n"
                u"Atte01 +'00002'|'2001-03-05'|'20:30:00'|'081'|'002'\n"
                u"Atte01 +'00002'|'2001-03-05'|'18:00:00'|'081'|'002'\n"
                u"Atte01 +'00002'|'2001-03-05'|'12:15:00'|'082'|'001'\n"
                u"Atte01 +'00003'|'2001-03-05'|'18:30:00'|'081'|'003'"),
        changes(u"The bulk copy run twice adds nothing the second time",
                u"Insert into Atte01 Select * from AtteTemp", 0, u"")
            .after(u"Insert into Atte01 Select * from AtteTemp"),
        selects(u"The grid of the punches shows the day",
                u"Select * from Atte01  Where UseDate = #2001/3/5# order by usedate desc,empno,UseTime",
                u"'00001'|2001-03-05|08:00:59|'255'|'001'\n"
                u"'00002'|2001-03-05|08:03:00|'000'|'001'")
            .named(u"EmpNo|UseDate|UseTime|class|ReaderID"),
    };
}

StatementTable replaceStatements() {
    return {
        selects(u"The punches of the day are counted",
                u"Select count(*) as cnt From Atte01 Where UseDate =#2001/3/5#", u"2")
            .named(u"cnt"),
        selects(u"A day without punches counts as 0",
                u"Select count(*) as cnt From Atte01 Where UseDate =#2001/3/6#", u"0"),
        changes(u"Replacing empties the staged punches", u"delete * from AtteTemp ", 10,
                u"AtteTemp -1 2 3 4 5 6 7 8 9 10"),
        changes(u"Replacing empties the staged results", u"delete * from AtteTemp1 ", 5,
                u"AtteTemp1 -1 2 3 4 5"),
        changes(u"Replacing removes the punches of the day",
                u"delete * from Atte01 where UseDate =#2001/3/5#", 2, u"Atte01 -1 4"),
        changes(u"Replacing removes the results of the day",
                u"delete * from Atte02 where UseDate =#2001/3/5#", 2, u"Atte02 -1 4"),
        changes(u"Replacing removes the exceptions of the day",
                u"delete * from Atte03 where UseDate = #2001/3/5#", 2, u"Atte03 -1 2"),
        changes(u"Replacing removes the raw punches of the day",
                u"delete * from View02 where UseDate =#2001/3/5#", 2, u"View02 -1 2"),
        changes(u"Replacing removes the overtime of the day, typed rows as well",
                u"delete * from Over01 where OverDate =#2001/3/5#", 2, u"Over01 -1 2"),
        changes(u"Replacing a day without rows removes nothing",
                u"delete * from Over01 where OverDate =#2001/3/4#", 0, u""),
    };
}

StatementTable punchOvertimeStatements() {
    return {
        selects(u"Overtime swipes are counted by employee",
                u"select EmpNo,count(*) as UseCnt from AtteTemp where UseDate =#2001/3/5#  "
                u"and Class ='081' group by EmpNo",
                u"'00002'|3\n'00003'|1")
            .named(u"EmpNo|UseCnt"),
        selects(u"Overtime swipes come once each and rising",
                u"select Distinct UseTime from AtteTemp  where UseDate =#2001/3/5#    and class ='081'     "
                u"and Empno='00002'",
                u"18:00:00\n20:30:00")
            .named(u"UseTime"),
        changes(u"A lone swipe makes overtime without an end",
                u"insert into [Over01](OverDate,EmpNo,BegTime,OverHours)"
                u"values(#2001/3/5#,'00003',#18:30:00#, 0)",
                1, u"Over01 +'00003'|'2001-03-05'|'18:30:00'|null|0|null|0|0|null|null"),
        changes(u"A pair of swipes makes overtime with its hours",
                u"insert into [Over01](OverDate,EmpNo,BegTime,EndTime,OverHours)"
                u"values(#2001/3/5#,'00002',#18:00:00#,#20:30:00#,2)",
                1, u"Over01 +'00002'|'2001-03-05'|'18:00:00'|'20:30:00'|2|null|0|0|null|null"),
        changes(u"The daily view gets a row for each employee who has not left",
                u"insert into View02(EmpNo,UseDate) Select EmpNo,#2001/3/5# From Base06 "
                u"Where LeaveDate >= #2001/3/5#",
                2, u"View02 +'00003'|'2001-03-05'|null*12\nView02 +'00004'|'2001-03-05'|null*12"),
        changes(u"Rows that the daily view has already are kept",
                u"insert into View02(EmpNo,UseDate) Select EmpNo,#2001/3/5# From Base06 "
                u"Where LeaveDate >= #2001/3/5#",
                3,
                u"View02 +'00003'|'2001-03-05'|null*12\n"
                u"View02 +'00004'|'2001-03-05'|null*12\n"
                u"View02 +'a0001'|'2001-03-05'|null*12")
            .after(u"Update Base06 Set LeaveDate= #2038/01/01# Where IsNull(LeaveDate) = true "),
        selects(u"The daily view walks employees by their codes",
                u"select EmpNo from Base06 Where LeaveDate >= #2001/3/5#", u"'00003'\n'00004'"),
        selects(u"The daily view reads punches of every class in time order",
                u"select UseTime from AtteTemp where UseDate = #2001/3/5#    and EmpNo = '00002' "
                u"order by UseTime",
                u"08:03:00\n12:15:00\n18:00:00\n18:00:00\n20:30:00"),
        changes(u"The daily view writes its twelve times",
                u"Update View02 Set T1=#08:00:59#,T2=#17:01:00#,T3=#00:00:00# ,T4=#00:00:00#,T5=#00:00:00#,"
                u"T6=#00:00:00# ,T7=#00:00:00#,T8=#00:00:00#,T9=#00:00:00#,T10=#00:00:00#,T11=#00:00:00#,"
                u"T12=#00:00:00# Where UseDate =#2001/3/5#    And EmpNo = '00001'",
                1,
                u"View02 ~2 T1='08:00:59' T4='00:00:00' T5='00:00:00' T6='00:00:00' T7='00:00:00' "
                u"T8='00:00:00' T9='00:00:00' T10='00:00:00' T11='00:00:00' T12='00:00:00'"),
        changes(u"A first time of midnight becomes none",
                u"Update View02 Set T1 = Null Where format(T1,'hh:nn:ss')='00:00:00'", 1,
                u"View02 ~3 T1=null"),
        changes(u"A second time of midnight becomes none",
                u"Update View02 Set T2 = Null Where format(T2,'hh:nn:ss')='00:00:00'", 1,
                u"View02 ~1 T2=null"),
        changes(u"A twelfth time that is null stays so",
                u"Update View02 Set T12 = Null Where format(T12,'hh:nn:ss')='00:00:00'", 0, u""),
    };
}

} // namespace

StatementTable importStatements() {
    StatementTable all = punchFileStatements();
    for (const StatementTable& part : {replaceStatements(), punchOvertimeStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
