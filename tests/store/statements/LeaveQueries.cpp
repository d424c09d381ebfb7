#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable batchStatements() {
    return {
        selects(u"The four leave codes of the settings are read",
                u"select ThisYearRest,LastYearRest,Leave,Sick from Syst01", u"'01'|'02'|'03'|'04'")
            .named(u"ThisYearRest|LastYearRest|Leave|Sick"),
        selects(u"The balance of this year is read",
                u"select ThisYearHD,ThisYearUse,ThisYearLeft from Base06"
                u" WHERE EmpNo = '00002'",
                u"7.0|1.4|5.4"),
        selects(u"The balance of last year is read",
                u"select LastYearHD,LastYearUse,LastYearLeft from Base06"
                u" WHERE EmpNo = '00002'",
                u"2.0|0.0|2.0"),
        selects(u"The balance of personal leave is read",
                u"select LeaveHD,LeaveUse,LeaveLeft from Base06"
                u" WHERE EmpNo = '00002'",
                u"5.0|0.0|5.0"),
        selects(u"The balance of sick leave is read",
                u"select SickHD,SickUse,SickLeft from Base06"
                u" WHERE EmpNo = '00002'",
                u"30.0|0.4|29.4"),
        selects(u"The leave batch offers current employees",
                u"SELECT EmpNo, EmpName "
                u"  From Base06 "
                u" where isnull(LeaveDate) = True ",
                u"'00001'|'林小明'\n'00002'|'陳大文'\n'a0001'|'Ann Lee'"),
        changes(u"A batch writes a whole note by statement",
                u"insert into Holi03([BusNo],[EmpNo],[HoliNo],[HoliBegDate],[HoliBegTime],[HoliEndDate],"
                u"[HoliEndTime],[HoliHours],[Account],[TransDate],[TransType]) "
                u"Values('200103070001','00001','03',#2001/3/7#,#08:00#,#2001/3/7#,#17:00#,1,'admin', "
                u"#2001-Mar-07 09:10:11#,True)",
                1,
                u"Holi03 +'200103070001'|'00001'|null|'03'|'2001-03-07'|'08:00:00'|'2001-03-07'|'17:00:00'|"
                u"1.0|null|0|'admin'|'2001-03-07 09:10:11'|1"),
        changes(u"A batch writes hours as a tenth",
                u"insert into Holi03([BusNo],[EmpNo],[HoliNo],[HoliBegDate],[HoliBegTime],[HoliEndDate],"
                u"[HoliEndTime],[HoliHours],[Account],[TransDate],[TransType]) "
                u"Values('200103070001','00001','03',#2001/3/7#,#08:00#,#2001/3/7#,#12:00#,0.4,'', "
                u"#2001-Dec-31 23:59:59#,True)",
                1,
                u"Holi03 +'200103070001'|'00001'|null|'03'|'2001-03-07'|'08:00:00'|'2001-03-07'|'12:00:00'|"
                u"0.4|null|0|''|'2001-12-31 23:59:59'|1"),
        changes(u"A note number that is taken drops the note",
                u"insert into Holi03([BusNo],[EmpNo],[HoliNo],[HoliBegDate],[HoliBegTime],[HoliEndDate],"
                u"[HoliEndTime],[HoliHours],[Account],[TransDate],[TransType]) "
                u"Values('200103050001','00001','03',#2001/3/7#,#08:00#,#2001/3/7#,#17:00#,1,'admin', "
                u"#2001-Mar-07 09:10:11#,True)",
                0, u""),
        fails(u"An empty time box breaks the note of a batch",
              u"insert into Holi03([BusNo],[EmpNo],[HoliNo],[HoliBegDate],[HoliBegTime],[HoliEndDate],"
              u"[HoliEndTime],[HoliHours],[Account],[TransDate],[TransType]) "
              u"Values('200103070001','00001','03',#2001/3/7#,##,#2001/3/7#,#17:00#,1,'admin', "
              u"#2001-Mar-07 09:10:11#,True)",
              error::Syntax),
    };
}

StatementTable browseStatements() {
    return {
        selects(
            u"An employee's notes come with the latest first",
            u" Select * "
            u" From Holi03 "
            u" Where EmpNo = '00001'"
            u" Order by HoliBegDate desc,HoliNo",
            u"'200103060001'|'00001'|null|'04'|2001-03-09|08:00:00|2001-03-09|12:00:00|0.4|null|False|"
            u"'admin'|null|True\n"
            u"'200103050002'|'00001'|'00002'|'03'|2001-03-05|13:00:00|2001-03-07|12:00:00|2.0|'返鄉'|True|"
            u"'admin'|2001-03-05 09:10:11|True\n"
            u"'200102010001'|'00001'|null|'01'|2001-02-01|10:30:00|2001-02-01|17:00:00|0.6|null|False|"
            u"'admin'|null|True")
            .named(u"BusNo|EmpNo|RepEmpNo|HoliNo|HoliBegDate|HoliBegTime|HoliEndDate|HoliEndTime|HoliHours|"
                   u"HoliDesc|Money|Account|TransDate|TransType"),
        selects(u"An employee's day rows come with the latest first",
                u"select * from Holi04 where EmpNo ='00001' order by HoliDate desc ",
                u"'200103060001'|'00001'|'04'|2001-03-09|08:00:00|12:00:00|4|''\n"
                u"'200103050002'|'00001'|'03'|2001-03-07|08:00:00|12:00:00|4|''\n"
                u"'200103050002'|'00001'|'03'|2001-03-06|08:00:00|17:00:00|8|''\n"
                u"'200103050002'|'00001'|'03'|2001-03-05|13:00:00|17:00:00|4|'A'\n"
                u"'200102010001'|'00001'|'01'|2001-02-01|10:30:00|17:00:00|6|'A'"),
    };
}

StatementTable hourStatements() {
    return {
        selects(u"Hours by leave type are turned into days and hours",
                u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
                u"  From Holi04,Holi01"
                u"  where Holi04.HoliNo = Holi01.HoliNo "
                u"     and Holi04.EmpNo = '00001'"
                u"     and Holi04.HoliDate Between #2001/1/1# and #2001/12/31#"
                u" Group by Holi04.HoliNo,HoliType ",
                u"'01'|'特休'|6|0.6\n'03'|'事假'|16|2.0\n'04'|'病假'|4|0.4")
            .named(u"HNo|HoliType|hh|hr"),
        selects(u"Hours by leave type take the period with both its ends",
                u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
                u"  From Holi04,Holi01"
                u"  where Holi04.HoliNo = Holi01.HoliNo "
                u"     and Holi04.EmpNo = '00001'"
                u"     and Holi04.HoliDate Between #2001/3/5# and #2001/3/6#"
                u" Group by Holi04.HoliNo,HoliType ",
                u"'03'|'事假'|12|1.4"),
        selects(u"A leave type of no name drops out of the hours",
                u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
                u"  From Holi04,Holi01"
                u"  where Holi04.HoliNo = Holi01.HoliNo "
                u"     and Holi04.EmpNo = '00001'"
                u"     and Holi04.HoliDate Between #2001/1/1# and #2001/12/31#"
                u" Group by Holi04.HoliNo,HoliType ",
                u"'01'|'特休'|6|0.6\n'04'|'病假'|4|0.4")
            .after(u"delete * from Holi01 Where HoliNo = '03'"),
        selects(u"Hours below zero keep their sign in days and hours",
                u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
                u"  From Holi04,Holi01"
                u"  where Holi04.HoliNo = Holi01.HoliNo "
                u"     and Holi04.EmpNo = '00001'"
                u"     and Holi04.HoliDate Between #2001/3/9# and #2001/3/9#"
                u" Group by Holi04.HoliNo,HoliType ",
                u"'04'|'病假'|-12|-1.4")
            .after(u"Update Holi04 Set HoliHours = -12 Where HoliNo = '04'"),
        selects(u"Hours that are all null stay null in days and hours",
                u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
                u"  From Holi04,Holi01"
                u"  where Holi04.HoliNo = Holi01.HoliNo "
                u"     and Holi04.EmpNo = '00001'"
                u"     and Holi04.HoliDate Between #2001/3/9# and #2001/3/9#"
                u" Group by Holi04.HoliNo,HoliType ",
                u"'04'|'病假'|null|null")
            .after(u"Update Holi04 Set HoliHours = null Where HoliNo = '04'"),
        selects(u"An employee without leave has no hours",
                u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
                u"  From Holi04,Holi01"
                u"  where Holi04.HoliNo = Holi01.HoliNo "
                u"     and Holi04.EmpNo = '00003'"
                u"     and Holi04.HoliDate Between #2001/1/1# and #2001/12/31#"
                u" Group by Holi04.HoliNo,HoliType ",
                u""),
        fails(u"An empty first date breaks the hours by leave type",
              u"SELECT Holi04.HoliNo as HNo ,HoliType,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr"
              u"  From Holi04,Holi01"
              u"  where Holi04.HoliNo = Holi01.HoliNo "
              u"     and Holi04.EmpNo = '00001'"
              u"     and Holi04.HoliDate Between ## and #2001/12/31#"
              u" Group by Holi04.HoliNo,HoliType ",
              error::Syntax),
    };
}

} // namespace

StatementTable leaveQueryStatements() {
    StatementTable all = batchStatements();
    for (const StatementTable& part : {browseStatements(), hourStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
