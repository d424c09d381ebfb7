#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable leaveCoverStatements() {
    return {
        selects(u"Leave rows of employee and day are read",
                u"Select HoliNo,BegTime,EndTime,HoliHours From Holi04 Where EmpNo = '00001'     "
                u"and HoliDate =#2001/3/5#",
                u"'03'|13:00:00|17:00:00|4")
            .named(u"HoliNo|BegTime|EndTime|HoliHours"),
        selects(u"Leave rows of one day come as they were entered",
                u"Select HoliNo,BegTime,EndTime,HoliHours From Holi04 Where EmpNo = '00001'     "
                u"and HoliDate =#2001/3/5#",
                u"'03'|13:00:00|17:00:00|4\n'01'|08:00:00|12:00:00|4")
            .after(u"Insert Into Holi04(BusNo,EmpNo, HoliNo, HoliDate, BegTime, EndTime, HoliHours,TimeNo)"
                   u"Values('200103040001','00001','01','2001/3/5','08:00','12:00',4,'A')"),
        selects(u"A day without leave has no rows",
                u"Select HoliNo,BegTime,EndTime,HoliHours From Holi04 Where EmpNo = '00001'     "
                u"and HoliDate =#2001/3/8#",
                u""),
        changes(u"Leave covers the first slot",
                u"Update AtteTemp1 set FH1 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#", 1,
                u"AtteTemp1 ~1 FH1=1"),
        changes(u"Leave covers the second slot",
                u"Update AtteTemp1 set FH2 = True Where EmpNo = '00001'     and UseDate =#2001/3/4#", 1,
                u"AtteTemp1 ~4 FH2=1"),
        changes(u"Leave covers the third slot in every row of the day, set already or not",
                u"Update AtteTemp1 set FH3 = True Where EmpNo = '00002'     and UseDate =#2001/3/5#", 2,
                u"AtteTemp1 ~3 FH3=1"),
        changes(u"Leave covers the fourth slot of nobody on another day",
                u"Update AtteTemp1 set FH4 = True Where EmpNo = '00002'     and UseDate =#2001/3/4#", 0, u""),
        changes(u"A cover by leave is taken back",
                u"Update AtteTemp1 set FH4 = False Where EmpNo = '00002'     and UseDate =#2001/3/5#", 2,
                u"AtteTemp1 ~2 FH4=0"),
        fails(u"A slot numbered 0 is a column that there is not",
              u"Update AtteTemp1 set FH0 = False Where EmpNo = '00002'     and UseDate =#2001/3/5#",
              error::UnknownName),
        fails(u"A slot numbered 0 fails also where no row would change",
              u"Update AtteTemp1 set FH0 = False Where EmpNo = '99999'     and UseDate =#2001/3/5#",
              error::UnknownName),
    };
}

StatementTable writeOffCoverStatements() {
    return {
        selects(u"The first write-off of the day is read",
                u"Select CnlNo1 From Canc02 Where EmpNo = '00001'     and CnlDate =#2001/3/5#", u"'A1'")
            .named(u"CnlNo1"),
        selects(u"The second write-off of the day is read",
                u"Select CnlNo2 From Canc02 Where EmpNo = '00002'     and CnlDate =#2001/3/5#", u"'B2'"),
        selects(u"An empty third write-off is an empty text",
                u"Select CnlNo3 From Canc02 Where EmpNo = '00001'     and CnlDate =#2001/3/5#", u"''"),
        selects(u"A fourth write-off never filled is null",
                u"Select CnlNo4 From Canc02 Where EmpNo = '00002'     and CnlDate =#2001/3/5#", u"null"),
        selects(u"A day without write-offs has no row",
                u"Select CnlNo1 From Canc02 Where EmpNo = '00001'     and CnlDate =#2001/3/6#", u""),
        changes(u"A write-off covers the first slot",
                u"Update AtteTemp1 set FC1 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#", 1,
                u"AtteTemp1 ~1 FC1=1"),
        changes(u"A write-off covers the second slot of each row",
                u"Update AtteTemp1 set FC2 = True Where EmpNo = '00002'     and UseDate =#2001/3/5#", 2,
                u"AtteTemp1 ~3 FC2=1"),
        changes(u"A write-off covers the third slot",
                u"Update AtteTemp1 set FC3 = True Where EmpNo = '00003'     and UseDate =#2001/3/5#", 1,
                u"AtteTemp1 ~5 FC3=1"),
        changes(u"A write-off covers the fourth slot",
                u"Update AtteTemp1 set FC4 = True Where EmpNo = '00001'     and UseDate =#2001/3/4#", 1,
                u"AtteTemp1 ~4 FC4=1"),
    };
}

StatementTable latenessStatements() {
    return {
        selects(u"The four times of each row are read",
                u"Select Time1,Time2,Time3,Time4 From AtteTemp1  Where EmpNo = '00002'     "
                u"and UseDate =#2001/3/5#",
                u"08:03:00|null*3\nnull*4")
            .named(u"Time1|Time2|Time3|Time4"),
        changes(u"Cushion minutes are written to a slot with a punch and without cover",
                u"Update AtteTemp1 Set Cushion1 = 3 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and FT1 = True and not(FH1 = True Or FC1 = True )",
                1, u"AtteTemp1 ~1 Cushion1=3"),
        changes(u"Delay minutes are not written to a slot without a punch",
                u"Update AtteTemp1 Set Delay3 = 12 Where EmpNo = '00002'     and UseDate =#2001/3/5#     "
                u"and FT3 = True and not(FH3 = True Or FC3 = True )",
                0, u""),
        changes(u"Delay minutes are not written to a slot that leave covers",
                u"Update AtteTemp1 Set Delay1 = 12 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and FT1 = True and not(FH1 = True Or FC1 = True )",
                0, u"")
            .after(u"Update AtteTemp1 set FH1 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#"),
        changes(u"Delay minutes are not written to a slot that is written off",
                u"Update AtteTemp1 Set Delay3 = 12 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and FT3 = True and not(FH3 = True Or FC3 = True )",
                0, u"")
            .after(u"Update AtteTemp1 set FC3 = True Where EmpNo = '00001'     and UseDate =#2001/3/5#"),
        changes(u"Early minutes are written to the second slot",
                u"Update AtteTemp1 Set Earlier2 = 1 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and FT2 = True and not(FH2 = True Or FC2 = True )",
                1, u"AtteTemp1 ~1 Earlier2=1"),
        changes(u"Early minutes are written over those of the fourth slot",
                u"Update AtteTemp1 Set Earlier4 = 120 Where EmpNo = '00001'     and UseDate =#2001/3/5#     "
                u"and FT4 = True and not(FH4 = True Or FC4 = True )",
                1, u"AtteTemp1 ~1 Earlier4=120"),
        changes(u"Of several rows those with a punch get the minutes",
                u"Update AtteTemp1 Set Cushion1 = 4 Where EmpNo = '00002'     and UseDate =#2001/3/5#     "
                u"and FT1 = True and not(FH1 = True Or FC1 = True )",
                1, u"AtteTemp1 ~2 Cushion1=4"),
    };
}

} // namespace

StatementTable coverStatements() {
    StatementTable all = leaveCoverStatements();
    for (const StatementTable& part : {writeOffCoverStatements(), latenessStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
