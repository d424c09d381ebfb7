#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable lastLatenessStatements() {
    return {
        changes(u"Morning delay sets the last lateness to 1",
                u"Update AtteTemp1 Set DelayF = 1 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and Delay1> 0 ",
                1, u"AtteTemp1 ~1 DelayF=1")
            .after(u"Update AtteTemp1 Set Delay1 = 1 Where EmpNo = '00001'     and UseDate =#2001/3/5#"),
        changes(u"Without morning delay the last lateness stays",
                u"Update AtteTemp1 Set DelayF = 1 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and Delay1> 0 ",
                0, u""),
        changes(u"Early leave at noon sets the last lateness to 2",
                u"Update AtteTemp1 Set DelayF = 2 Where EmpNo = '00002'     and UseDate =#2001/3/5#     "
                u"and Earlier2 >0",
                2, u"AtteTemp1 ~2 DelayF=2\nAtteTemp1 ~3 DelayF=2")
            .after(u"Update AtteTemp1 Set Earlier2 = 1 Where EmpNo = '00002'     and UseDate =#2001/3/5#"),
        changes(u"Afternoon delay sets the last lateness to 3",
                u"Update AtteTemp1 Set DelayF = 3 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and delay3 > 0",
                1, u"AtteTemp1 ~1 DelayF=3"),
        changes(u"Early leave in the evening sets the last lateness to 4",
                u"Update AtteTemp1 Set DelayF = 4 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and Earlier4 > 0",
                1, u"AtteTemp1 ~1 DelayF=4"),
    };
}

StatementTable faultStatements() {
    return {
        changes(u"With one punch a day a missing arrival is an exception at once",
                u"Update AtteTemp1 Set Expt =True,F1 = True Where EmpNo = '00002'     "
                u"and UseDate =#2001/3/5#     "
                u"and (DelayF =1  or Not(FT1 = True Or FH1 = True Or FC1 = True ))",
                1, u"AtteTemp1 ~3 F1=1 Expt=1"),
        changes(u"With two punches a day leave excuses a missing departure",
                u"Update AtteTemp1 Set Expt =True ,F4 = True Where EmpNo = '00002'     "
                u"and UseDate =#2001/3/5#     "
                u"and (DelayF =4  or Not(FT4 = True Or FH4 = True Or FC4 = True))",
                1, u"AtteTemp1 ~3 F4=1 Expt=1"),
        changes(u"With three punches a day leave excuses a missing third",
                u"Update AtteTemp1 Set F3 = True Where EmpNo = '00002'     and UseDate =#2001/3/5#     "
                u"and (DelayF =3  or Not(FT3 = True Or FH3 = True Or FC3 = True ))",
                1, u"AtteTemp1 ~3 F3=1"),
        changes(u"With four punches a day a write-off excuses a missing second",
                u"Update AtteTemp1 Set F2 = True Where EmpNo = '00002'     and UseDate =#2001/3/5#     "
                u"and (DelayF =2  or Not(FT2 = True Or FH2 = True Or FC2 = True))",
                1, u"AtteTemp1 ~3 F2=1"),
        changes(u"A late slot is a fault in spite of its punch",
                u"Update AtteTemp1 Set F3 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and (DelayF =3  or Not(FT3 = True Or FH3 = True Or FC3 = True))",
                1, u"AtteTemp1 ~1 F3=1")
            .after(u"Update AtteTemp1 Set DelayF = 3 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                   u"and delay3 > 0"),
        changes(u"A slot with its punch in time is no fault",
                u"Update AtteTemp1 Set F1 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and (DelayF =1  or Not(FT1 = True Or FH1 = True Or FC1 = True))",
                0, u""),
        changes(u"Flags of a row that never set them read as false",
                u"Update AtteTemp1 Set F4 = True Where EmpNo = 'a0001'     and UseDate =#2001/3/5#     "
                u"and (DelayF =4  or Not(FT4 = True Or FH4 = True Or FC4 = True))",
                1, u"AtteTemp1 ~6 F4=1")
            .after(u"Insert Into AtteTemp1(EmpNo,TimeNo,UseDate) Values('a0001','A',#2001/3/5#)"),
        changes(u"With three punches a fault in one of them makes an exception",
                u"Update AtteTemp1 Set Expt = True Where EmpNo = '00001'     and UseDate =#2001/3/5#      "
                u"and (F1 = True or F3 = True or F4 = True) ",
                1, u"AtteTemp1 ~1 Expt=1")
            .after(u"Update AtteTemp1 Set F4 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#"),
        changes(u"With three punches a fault in the second makes none",
                u"Update AtteTemp1 Set Expt = True Where EmpNo = '00001'     and UseDate =#2001/3/5#      "
                u"and (F1 = True or F3 = True or F4 = True) ",
                0, u"")
            .after(u"Update AtteTemp1 Set F2 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#"),
        changes(u"With four punches a fault in the second makes an exception",
                u"Update AtteTemp1 Set Expt = True Where EmpNo = '00001'     and UseDate =#2001/3/5#      "
                u"and (F1 = True or F2 =True or F3 = True or F4 = True) ",
                1, u"AtteTemp1 ~1 Expt=1")
            .after(u"Update AtteTemp1 Set F2 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#"),
    };
}

StatementTable halfDayStatements() {
    return {
        changes(u"A morning of less than four hours is an exception",
                u"UPDATE Attetemp1 SET Expt = true Where Format(Time2 - Time1, 'hh:mm:ss') < "
                u"Format('04:00:00', 'hh:mm:ss')     And IsNull(Time1) = False And IsNull(Time2) = False    "
                u"and EmpNo = '00001'    and UseDate =#2001/3/5#    "
                u"and Not(FH1 = True or FC1 = True or FH2 = true or FC2 = true)",
                1, u"AtteTemp1 ~1 Expt=1"),
        changes(u"A morning of exactly four hours is none",
                u"UPDATE Attetemp1 SET Expt = true Where Format(Time2 - Time1, 'hh:mm:ss') < "
                u"Format('04:00:00', 'hh:mm:ss')     And IsNull(Time1) = False And IsNull(Time2) = False    "
                u"and EmpNo = '00001'    and UseDate =#2001/3/4#    "
                u"and Not(FH1 = True or FC1 = True or FH2 = true or FC2 = true)",
                0, u""),
        changes(u"A departure before the arrival counts by the size of the difference",
                u"UPDATE Attetemp1 SET Expt = true Where Format(Time2 - Time1, 'hh:mm:ss') < "
                u"Format('04:00:00', 'hh:mm:ss')     And IsNull(Time1) = False And IsNull(Time2) = False    "
                u"and EmpNo = '00003'    and UseDate =#2001/3/5#    "
                u"and Not(FH1 = True or FC1 = True or FH2 = true or FC2 = true)",
                1, u"AtteTemp1 ~5 Expt=1"),
        changes(u"A departure five hours before the arrival is no exception",
                u"UPDATE Attetemp1 SET Expt = true Where Format(Time2 - Time1, 'hh:mm:ss') < "
                u"Format('04:00:00', 'hh:mm:ss')     And IsNull(Time1) = False And IsNull(Time2) = False    "
                u"and EmpNo = '00003'    and UseDate =#2001/3/5#    "
                u"and Not(FH1 = True or FC1 = True or FH2 = true or FC2 = true)",
                0, u"")
            .after(u"Update AtteTemp1 Set Time2 =#07:00:00# , FT2 = True Where UseDate =#2001/3/5#    "
                   u"And EmpNo = '00003'"),
        changes(u"A morning with one time alone is none",
                u"UPDATE Attetemp1 SET Expt = true Where Format(Time2 - Time1, 'hh:mm:ss') < "
                u"Format('04:00:00', 'hh:mm:ss')     And IsNull(Time1) = False And IsNull(Time2) = False    "
                u"and EmpNo = '00002'    and UseDate =#2001/3/5#    "
                u"and Not(FH1 = True or FC1 = True or FH2 = true or FC2 = true)",
                0, u""),
        changes(u"Cover of the second slot bars the rule of the morning",
                u"UPDATE Attetemp1 SET Expt = true Where Format(Time2 - Time1, 'hh:mm:ss') < "
                u"Format('04:00:00', 'hh:mm:ss')     And IsNull(Time1) = False And IsNull(Time2) = False    "
                u"and EmpNo = '00001'    and UseDate =#2001/3/5#    "
                u"and Not(FH1 = True or FC1 = True or FH2 = true or FC2 = true)",
                0, u"")
            .after(u"Update AtteTemp1 set FC2 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#"),
    };
}

StatementTable moveStatements() {
    return {
        changes(u"An exception that stands already is not doubled",
                u"Insert into Atte03 Select * from AtteTemp1 Where EmpNo = '00001'    "
                u"and UseDate =#2001/3/4#    and Expt =True ",
                0, u""),
        changes(u"An exception is copied by position",
                u"Insert into Atte03 Select * from AtteTemp1 Where EmpNo = '00001'    "
                u"and UseDate =#2001/3/4#    and Expt =True ",
                1,
                u"Atte03 +'00001'|'2001-03-04'|'A'|'08:00:00'|'12:00:00'|null|null|1|1|0*10|null*12|0|0|1*3|"
                u"0*8")
            .after(u"Delete * from Atte03 Where EmpNo = '00001'    and UseDate =#2001/3/4#"),
        changes(u"A row that is no exception is not copied",
                u"Insert into Atte03 Select * from AtteTemp1 Where EmpNo = '00002'    "
                u"and UseDate =#2001/3/5#    and Expt =True ",
                0, u"")
            .after(u"Delete * from Atte03 Where EmpNo = '00002'    and UseDate =#2001/3/5#"),
        changes(u"A rerun removes the exception",
                u"Delete * from Atte03 Where EmpNo = '00001'    and UseDate =#2001/3/5#", 1, u"Atte03 -2"),
        changes(u"A rerun removes the result by the table's star",
                u"Delete Atte02.* from Atte02 Where EmpNo = '00002'    and UseDate =#2001/3/5#", 1,
                u"Atte02 -1"),
        changes(
            u"A rerun writes the result anew, of several rows the first",
            u" Insert into Atte02 Select * from AtteTemp1 Where EmpNo = '00002'    "
            u"and UseDate =#2001/3/5#",
            1,
            u"Atte02 +'00002'|'2001-03-05'|'A'|'08:03:00'|null*3|1|0*5|1|1|0|1|0|0|'20:30:00'|null*11|0*6|"
            u"3|0*6")
            .after(u"Delete Atte02.* from Atte02 Where EmpNo = '00002'    and UseDate =#2001/3/5#"),
    };
}

} // namespace

StatementTable exceptionStatements() {
    StatementTable all = lastLatenessStatements();
    for (const StatementTable& part : {faultStatements(), halfDayStatements(), moveStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
