#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

constexpr QStringView sentinel = u"Update Base06 Set LeaveDate= #2038/01/01# Where IsNull(LeaveDate) = true ";

constexpr QStringView allSlots =
    u"Select TimeNo,CardType,StrIn1,StdT1,StdT2,EndOut2,StrIn3,StdT3,StdT4,EndOut4 "
    u",ElstMin,ElstType,Cushion,Delay,Earlier,Cushion1,Delay1,Earlier1 ,StdC1 ,StdC2,StdC3,StdC4   "
    u"from Base04 ";

StatementTable employeeStatements() {
    return {
        selects(u"The slots come by their codes with all working values", allSlots,
                u"'A'|4|07:00:00|08:00:00|12:00:00|12:30:00|12:31:00|13:00:00|17:00:00|19:00:00|0|0|5|25|10|"
                u"5|25|10|True*4\n"
                u"'B'|2|21:00:00|22:00:00|null*4|06:00:00|07:00:00|0|0|10|20|15|10|20|15|True|False|False|"
                u"True")
            .named(u"TimeNo|CardType|StrIn1|StdT1|StdT2|EndOut2|StrIn3|StdT3|StdT4|EndOut4|ElstMin|ElstType|"
                   u"Cushion|Delay|Earlier|Cushion1|Delay1|Earlier1|StdC1|StdC2|StdC3|StdC4"),
        selects(u"Employees of a slot have arrived and not left",
                u"Select Rule03.EmpNo    From Base06,Rule03  Where Rule03.EmpNo = Base06.EmpNo     "
                u"And Rule03.YMD =#2001/3/5#    And Rule03.TimeNo = 'A'    "
                u"And  Base06.ArriveDate <= #2001/3/5#    And Base06.LeaveDate >= #2001/3/5#",
                u"'00001'\n'00002'")
            .named(u"EmpNo")
            .after(sentinel),
        selects(u"Without the sentinel a current employee is not met",
                u"Select Rule03.EmpNo    From Base06,Rule03  Where Rule03.EmpNo = Base06.EmpNo     "
                u"And Rule03.YMD =#2001/3/5#    And Rule03.TimeNo = 'A'    "
                u"And  Base06.ArriveDate <= #2001/3/5#    And Base06.LeaveDate >= #2001/3/5#",
                u""),
        selects(u"On the day of leaving an employee still counts",
                u"Select Rule03.EmpNo    From Base06,Rule03  Where Rule03.EmpNo = Base06.EmpNo     "
                u"And Rule03.YMD =#2001/3/5#    And Rule03.TimeNo = 'B'    "
                u"And  Base06.ArriveDate <= #2001/3/5#    And Base06.LeaveDate >= #2001/3/5#",
                u"'00003'")
            .after(sentinel),
        selects(u"On the day after leaving an employee is out",
                u"Select Rule03.EmpNo    From Base06,Rule03  Where Rule03.EmpNo = Base06.EmpNo     "
                u"And Rule03.YMD =#2001/3/6#    And Rule03.TimeNo = 'A'    "
                u"And  Base06.ArriveDate <= #2001/3/6#    And Base06.LeaveDate >= #2001/3/6#",
                u"")
            .after(sentinel),
        selects(u"A slot with the empty code has its rest rows",
                u"Select Rule03.EmpNo    From Base06,Rule03  Where Rule03.EmpNo = Base06.EmpNo     "
                u"And Rule03.YMD =#2001/3/6#    And Rule03.TimeNo = ''    "
                u"And  Base06.ArriveDate <= #2001/3/6#    And Base06.LeaveDate >= #2001/3/6#",
                u"'00001'")
            .after(sentinel),
        fails(u"A slot code with an apostrophe breaks the list of its employees",
              u"Select Rule03.EmpNo    From Base06,Rule03  Where Rule03.EmpNo = Base06.EmpNo     "
              u"And Rule03.YMD =#2001/3/5#    And Rule03.TimeNo = '''    "
              u"And  Base06.ArriveDate <= #2001/3/5#    And Base06.LeaveDate >= #2001/3/5#",
              error::Syntax),
        selects(u"A recalculation takes the employees of the exceptions",
                u"Select EmpNo from Atte03  where UseDate = #2001/3/5#     and TimeNo = 'A' Order by EmpNo ",
                u"'00001'\n'00002'"),
    };
}

StatementTable assignmentStatements() {
    return {
        changes(u"A staged result starts without times, flags and minutes",
                u"Insert Into AtteTemp1(EmpNo,TimeNo,UseDate) Values('a0001','A',#2001/3/5#)", 1,
                u"AtteTemp1 +'a0001'|'2001-03-05'|'A'|null*4|0*12|null*12|0*13"),
        changes(u"The staging table takes an employee and day again",
                u"Insert Into AtteTemp1(EmpNo,TimeNo,UseDate) Values('00001','A',#2001/3/5#)", 1,
                u"AtteTemp1 +'00001'|'2001-03-05'|'A'|null*4|0*12|null*12|0*13"),
        changes(u"A raw row starts without times",
                u"Insert Into View02(EmpNo,UseDate) Values('a0001',#2001/3/5#)", 1,
                u"View02 +'a0001'|'2001-03-05'|null*12"),
        changes(u"A raw row that is there already is dropped",
                u"Insert Into View02(EmpNo,UseDate) Values('00001',#2001/3/5#)", 0, u""),
        selects(u"Ordinary punches of the day come in time order",
                u"Select UseTime from AtteTemp Where (Class='255' or  Class = '000')     "
                u"And UseDate =#2001/3/5#    And EmpNo = '00001' Order by UseTime ",
                u"08:00:59\n17:01:00"),
        selects(u"Punches of other classes take no part",
                u"Select UseTime from AtteTemp Where (Class='255' or  Class = '000')     "
                u"And UseDate =#2001/3/5#    And EmpNo = '00002' Order by UseTime ",
                u"08:03:00"),
        changes(u"All times and flags are written to every row of employee and day",
                u"Update AtteTemp1 Set Time1 =#08:03:00#,Time2 =#00:00:00# ,Time3 =#00:00:00#,"
                u"Time4 =#00:00:00# ,FT1 =True ,FT2 = False,FT3 = False,FT4 = False ,T1=#00:00:00#,"
                u"T2=#00:00:00#,T3=#00:00:00# ,T4=#00:00:00#,T5=#00:00:00#,T6=#00:00:00# ,T7=#00:00:00#,"
                u"T8=#00:00:00#,T9=#00:00:00# ,T10=#00:00:00#,T11=#00:00:00#,T12=#00:00:00# "
                u"Where UseDate =#2001/3/5#    And EmpNo = '00002'",
                2,
                u"AtteTemp1 ~2 Time2='00:00:00' Time3='00:00:00' Time4='00:00:00' T1='00:00:00' "
                u"T2='00:00:00' T3='00:00:00' T4='00:00:00' T5='00:00:00' T6='00:00:00' T7='00:00:00' "
                u"T8='00:00:00' T9='00:00:00' T10='00:00:00' T11='00:00:00' T12='00:00:00'\n"
                u"AtteTemp1 ~3 Time1='08:03:00' Time2='00:00:00' Time3='00:00:00' Time4='00:00:00' FT1=1 "
                u"T1='00:00:00' T2='00:00:00' T3='00:00:00' T4='00:00:00' T5='00:00:00' T6='00:00:00' "
                u"T7='00:00:00' T8='00:00:00' T9='00:00:00' T10='00:00:00' T11='00:00:00' T12='00:00:00'"),
        changes(u"One slot's time is written with its flag",
                u"Update AtteTemp1 Set Time2 =#12:01:00# , FT2 = True Where UseDate =#2001/3/4#    "
                u"And EmpNo = '00001'",
                1, u"AtteTemp1 ~4 Time2='12:01:00'"),
        changes(u"The raw row takes its twelve times",
                u"Update View02 Set T1=#08:03:00#,T2=#12:15:00#,T3=#00:00:00# ,T4=#00:00:00#,T5=#00:00:00#,"
                u"T6=#00:00:00# ,T7=#00:00:00#,T8=#00:00:00#,T9=#00:00:00#,T10=#00:00:00#,T11=#00:00:00#,"
                u"T12=#23:59:59# Where UseDate =#2001/3/5#      And EmpNo = '00002'",
                1,
                u"View02 ~1 T2='12:15:00' T3='00:00:00' T4='00:00:00' T5='00:00:00' T6='00:00:00' "
                u"T7='00:00:00' T8='00:00:00' T9='00:00:00' T10='00:00:00' T11='00:00:00' T12='23:59:59'"),
    };
}

StatementTable midnightStatements() {
    return {
        changes(u"A staged time of midnight becomes none",
                u"Update AtteTemp1 Set T2= Null Where format(T2,'hh:nn:ss')='00:00:00'      "
                u"and UseDate =#2001/3/5#      And EmpNo = '00001'",
                1, u"AtteTemp1 ~1 T2=null"),
        changes(u"A staged time of another hour stays",
                u"Update AtteTemp1 Set T1= Null Where format(T1,'hh:nn:ss')='00:00:00'      "
                u"and UseDate =#2001/3/5#      And EmpNo = '00001'",
                0, u""),
        changes(u"A slot's time of midnight becomes none in every row and keeps its flag",
                u"Update AtteTemp1 Set Time1= Null Where format(Time1,'hh:nn:ss')='00:00:00'      "
                u"and UseDate =#2001/3/5#      And EmpNo = '00002'",
                2, u"AtteTemp1 ~2 Time1=null\nAtteTemp1 ~3 Time1=null")
            .after(u"Update AtteTemp1 Set Time1 =#00:00:00# , FT1 = True Where UseDate =#2001/3/5#    "
                   u"And EmpNo = '00002'"),
        changes(u"A raw time of midnight becomes none for this employee and day",
                u"Update View02 Set T2= Null Where format(T2,'hh:nn:ss')='00:00:00'  AND UseDate =#2001/3/5#"
                u"   And EmpNo = '00002'",
                1, u"View02 ~1 T2=null"),
        changes(u"A raw time of midnight of another day stays",
                u"Update View02 Set T1= Null Where format(T1,'hh:nn:ss')='00:00:00'  AND UseDate =#2001/3/5#"
                u"   And EmpNo = '00001'",
                0, u""),
    };
}

StatementTable resultStatements() {
    return {
        changes(u"The staged rows go to the results by position, repeated and keyless ones are dropped",
                u"Insert into Atte02  Select * from AtteTemp1", 1,
                u"Atte02 +'00001'|'2001-03-05'|'A'|'08:00:00'|'11:59:00'|'13:20:00'|'16:40:00'|1*4|0*8|"
                u"'18:00:00'|'00:00:00'|null*10|0*9|15|0|20|0"),
        changes(
            u"Of staged rows with one key the first inserted wins",
            u"Insert into Atte02  Select * from AtteTemp1", 3,
            u"Atte02 +'00001'|'2001-03-05'|'A'|'08:00:00'|'11:59:00'|'13:20:00'|'16:40:00'|1*4|0*8|"
            u"'18:00:00'|'00:00:00'|null*10|0*9|15|0|20|0\n"
            u"Atte02 +'00002'|'2001-03-05'|'A'|'08:03:00'|null*3|1|0*5|1|1|0|1|0|0|'20:30:00'|null*11|0*6|"
            u"3|0*6\n"
            u"Atte02 +'00001'|'2001-03-04'|'A'|'08:00:00'|'12:00:00'|null|null|1|1|0*10|null*12|0|0|1*3|"
            u"0*8")
            .after(u"delete * from Atte02 "),
    };
}

} // namespace

StatementTable slotLoopStatements() {
    StatementTable all = employeeStatements();
    for (const StatementTable& part : {assignmentStatements(), midnightStatements(), resultStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
