#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable punchScreenStatements() {
    return {
        changes(u"Purging removes punches up to and with the day",
                u" delete * from Atte01   where UseDate <= #2001/3/4#", 2, u"Atte01 -2 3"),
        changes(u"Purging by the date of a cancel removes all punches",
                u" delete * from Atte01   where UseDate <= #2038/1/1#", 4, u"Atte01 -1 2 3 4"),
        selects(u"A cancelled punch query shows an empty day",
                u"Select * from Atte01  Where UseDate = #2038/1/1# order by usedate desc,empno,UseTime", u""),
        selects(u"An employee's punches come with the latest day first",
                u" Select *  From Atte01  Where EmpNo = '00001' Order by UseDate desc,UseTime",
                u"'00001'|2001-03-05|08:00:59|'255'|'001'\n"
                u"'00001'|2001-03-04|08:00:00|'255'|'001'\n"
                u"'00001'|2001-03-02|08:10:00|'255'|'001'"),
        selects(u"The name of an employee is looked up", u"SELECT EmpName FROM Base06 WHERE EmpNo ='00001'",
                u"'林小明'")
            .named(u"EmpName"),
        selects(u"The name of nobody is not found", u"SELECT EmpName FROM Base06 WHERE EmpNo =''", u""),
        fails(u"A typed apostrophe breaks the lookup of a name",
              u"SELECT EmpName FROM Base06 WHERE EmpNo ='O'Neil'", error::Syntax),
        selects(u"Code and name of an employee are shown",
                u"SELECT EmpNo, EmpName   From Base06  Where EmpNo ='00002'", u"'00002'|'陳大文'"),
        selects(u"A grid reads all names by their codes", u"SELECT EmpNo, EmpName   From Base06 ",
                u"'00001'|'林小明'\n'00002'|'陳大文'\n'00003'|'王離職'\n'00004'|'李哨兵'\n'a0001'|'Ann Lee'")
            .named(u"EmpNo|EmpName"),
        selects(u"A grid reads all leave types", u"SELECT HoliNo, HoliType   From Holi01 ",
                u"'01'|'特休'\n'03'|'事假'\n'04'|'病假'\n'14'|'公出'"),
        selects(u"A grid reads all write-off reasons", u"SELECT CnlNo, CnlName   From Canc01 ",
                u"'A1'|'忘刷卡'\n'B2'|'公出'\n'C33'|'長碼'\n'D4'|'A1'"),
    };
}

StatementTable queryStatements() {
    return {
        selects(u"All results come in the order of their key", u"Select * from Atte02",
                u"'00001'|2001-03-03|'A'|null*4|False*12|null*12|False|False|True|False|True|3|0*3|10|0*3\n"
                u"'00001'|2001-03-04|'A'|null*4|False*12|null*12|False*3|True|True|4|2|4|5|0|1|2|0\n"
                u"'00002'|2001-03-05|'A'|08:03:00|null*3|True|False*11|null*12|False|True|False|False|True|2|"
                u"3|0|5|0|7|0|0\n"
                u"'00003'|2001-03-05|'B'|null*4|False*12|null*12|False*5|0*8")
            .named(
                u"EmpNo|UseDate|TimeNo|Time1|Time2|Time3|Time4|FT1|FT2|FT3|FT4|FH1|FH2|FH3|FH4|FC1|FC2|FC3|"
                u"FC4|T1|T2|T3|T4|T5|T6|T7|T8|T9|T10|T11|T12|F1|F2|F3|F4|Expt|DelayF|Cushion1|Cushion3|"
                u"Delay1|Delay3|Earlier2|Earlier4|Absent"),
        selects(u"All exceptions come in the order of their key", u"Select * from Atte03",
                u"'00001'|2001-03-04|'A'|null*4|False*12|null*12|False*3|True|True|4|2|4|5|0|1|2|0\n"
                u"'00001'|2001-03-05|'A'|null*4|False*12|null*12|True|False*3|True|0*8\n"
                u"'00002'|2001-03-05|'A'|08:03:00|null*3|True|False*11|null*12|False|True|False|False|True|2|"
                u"3|0|5|0|7|0|0"),
        selects(u"Results of a day come by employee",
                u" Select * from Atte02 where UseDate = #2001/3/5# Order by  EmpNo",
                u"'00002'|2001-03-05|'A'|08:03:00|null*3|True|False*11|null*12|False|True|False|False|True|2|"
                u"3|0|5|0|7|0|0\n"
                u"'00003'|2001-03-05|'B'|null*4|False*12|null*12|False*5|0*8"),
        selects(u"Results of a day are asked with two blanks more",
                u" Select * from Atte02  where UseDate = #2001/3/3# Order by  EmpNo",
                u"'00001'|2001-03-03|'A'|null*4|False*12|null*12|False|False|True|False|True|3|0*3|10|0*3"),
        selects(u"Exceptions of a day and employee are found",
                u" Select * from Atte03 where UseDate = #2001/3/5#     and EmpNo = '00001'  "
                u"Order by EmpNo,UseDate",
                u"'00001'|2001-03-05|'A'|null*4|False*12|null*12|True|False*3|True|0*8"),
        selects(u"Results of an employee come by day",
                u" Select * from Atte02 where EmpNo = '00001' Order by UseDate ",
                u"'00001'|2001-03-03|'A'|null*4|False*12|null*12|False|False|True|False|True|3|0*3|10|0*3\n"
                u"'00001'|2001-03-04|'A'|null*4|False*12|null*12|False*3|True|True|4|2|4|5|0|1|2|0"),
        selects(u"Results of a day and unit are found through the employees",
                u" Select Atte02.* from Atte02,Base06 where UseDate = #2001/3/5#     "
                u"and Base06.EmpNo = Atte02.EmpNo     and Base06.UnitNo = '0100'  "
                u"Order by base06.EmpNo,UseDate",
                u"'00002'|2001-03-05|'A'|08:03:00|null*3|True|False*11|null*12|False|True|False|False|True|2|"
                u"3|0|5|0|7|0|0\n"
                u"'00003'|2001-03-05|'B'|null*4|False*12|null*12|False*5|0*8")
            .named(
                u"EmpNo|UseDate|TimeNo|Time1|Time2|Time3|Time4|FT1|FT2|FT3|FT4|FH1|FH2|FH3|FH4|FC1|FC2|FC3|"
                u"FC4|T1|T2|T3|T4|T5|T6|T7|T8|T9|T10|T11|T12|F1|F2|F3|F4|Expt|DelayF|Cushion1|Cushion3|"
                u"Delay1|Delay3|Earlier2|Earlier4|Absent"),
        selects(u"Exceptions of a day and unit are found through the employees",
                u" Select Atte03.* from Atte03,Base06 where UseDate = #2001/3/5#     "
                u"and Base06.EmpNo = Atte03.EmpNo     and Base06.UnitNo = '0200'  "
                u"Order by base06.EmpNo,UseDate",
                u"'00001'|2001-03-05|'A'|null*4|False*12|null*12|True|False*3|True|0*8"),
        selects(u"Leave of the exception in focus is shown",
                u"Select * from Holi04 Where EmpNo ='00001'     and HoliDate =#2001/3/5#",
                u"'200103050002'|'00001'|'03'|2001-03-05|13:00:00|17:00:00|4|'A'")
            .named(u"BusNo|EmpNo|HoliNo|HoliDate|BegTime|EndTime|HoliHours|TimeNo"),
        selects(u"Write-offs of the exception in focus are shown",
                u"Select * from Canc02 Where EmpNo ='00001'     and CnlDate =#2001/3/5#",
                u"'00001'|2001-03-05|'A1'|'A1'|''|'B2'|'admin'|null")
            .named(u"EmpNo|CnlDate|CnlNo1|CnlNo2|CnlNo3|CnlNo4|Account|TransDate"),
    };
}

StatementTable recalculationStatements() {
    return {
        changes(u"A recalculation resets the day in results and exceptions that meet",
                u"Update Atte03,Atte02 Set Atte03.F1 = False ,Atte03.F2 = False,Atte03.F3 = False,"
                u"Atte03.F4 = False,Atte03.Expt = False,Atte03.DelayF = 0,Atte03.Delay1 = 0 ,"
                u"Atte03.Earlier2 = 0 ,Atte03.Delay3 = 0 ,Atte03.Earlier4 = 0,Atte02.F1 = False ,"
                u"Atte02.F2 = False,Atte02.F3 = False,Atte02.F4 = False,Atte02.Expt = False,"
                u"Atte02.DelayF = 0,Atte02.Delay1 = 0 ,Atte02.Earlier2 = 0 ,Atte02.Delay3 = 0 ,"
                u"Atte02.Earlier4 = 0  Where Atte03.EmpNo =Atte02.EmpNo       "
                u"and Atte03.UseDate = Atte02.UseDate      and Atte03.UseDate =#2001/3/5#",
                anyNumber,
                u"Atte02 ~1 F2=0 Expt=0 DelayF=0 Delay1=0 Earlier2=0\n"
                u"Atte03 ~1 F2=0 Expt=0 DelayF=0 Delay1=0 Earlier2=0"),
        changes(u"A recalculation leaves the cushion minutes of another day as well",
                u"Update Atte03,Atte02 Set Atte03.F1 = False ,Atte03.F2 = False,Atte03.F3 = False,"
                u"Atte03.F4 = False,Atte03.Expt = False,Atte03.DelayF = 0,Atte03.Delay1 = 0 ,"
                u"Atte03.Earlier2 = 0 ,Atte03.Delay3 = 0 ,Atte03.Earlier4 = 0,Atte02.F1 = False ,"
                u"Atte02.F2 = False,Atte02.F3 = False,Atte02.F4 = False,Atte02.Expt = False,"
                u"Atte02.DelayF = 0,Atte02.Delay1 = 0 ,Atte02.Earlier2 = 0 ,Atte02.Delay3 = 0 ,"
                u"Atte02.Earlier4 = 0  Where Atte03.EmpNo =Atte02.EmpNo       "
                u"and Atte03.UseDate = Atte02.UseDate      and Atte03.UseDate =#2001/3/4#",
                anyNumber,
                u"Atte02 ~2 F4=0 Expt=0 DelayF=0 Delay1=0 Earlier2=0 Earlier4=0\n"
                u"Atte03 ~3 F4=0 Expt=0 DelayF=0 Delay1=0 Earlier2=0 Earlier4=0"),
        changes(u"A recalculation empties the staging table", u"Delete  * From AtteTemp1", 5,
                u"AtteTemp1 -1 2 3 4 5"),
        changes(u"A recalculation takes the exceptions of the day by their key",
                u"Insert into AtteTemp1 select * from Atte03  where UseDate = #2001/3/5#", 2,
                u"AtteTemp1 +'00001'|'2001-03-05'|'A'|null*4|0*12|null*12|1|0*3|1|0*8\n"
                u"AtteTemp1 +'00002'|'2001-03-05'|'A'|'08:03:00'|null*3|1|0*11|null*12|0|1|0|0|1|2|3|0|5|0|7|"
                u"0|0"),
        selects(u"The exceptions of the day come back to the grid",
                u"Select * from Atte03  Where UseDate = #2001/3/5# order by usedate desc,empno",
                u"'00001'|2001-03-05|'A'|null*4|False*12|null*12|True|False*3|True|0*8\n"
                u"'00002'|2001-03-05|'A'|08:03:00|null*3|True|False*11|null*12|False|True|False|False|True|2|"
                u"3|0|5|0|7|0|0"),
    };
}

} // namespace

StatementTable attendanceScreenStatements() {
    StatementTable all = punchScreenStatements();
    for (const StatementTable& part : {queryStatements(), recalculationStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
