#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable entryStatements() {
    return {
        selects(u"Overtime shows its employee's codes",
                u"SELECT EmpNo,EmpName,UnitNo,ClsNo,TitleNo,WorkNo FROM Base06  WHERE EmpNo ='a0001'",
                u"'a0001'|'Ann Lee'|'a300'|'020'|null|'1'")
            .named(u"EmpNo|EmpName|UnitNo|ClsNo|TitleNo|WorkNo"),
        selects(u"Overtime shows the title", u"SELECT Title FROM Base01 WHERE TitleNo ='02'", u"'專員'"),
        selects(u"Overtime shows the unit", u"SELECT Unit FROM Base02 WHERE UnitNo ='0100'", u"'人事室'"),
        selects(u"Overtime shows the class", u"SELECT ClassName FROM Base05 WHERE ClsNo ='010'", u"'常日班'"),
        selects(u"The reference punches of employee and day are shown",
                u"Select * from View02 Where UseDate =#2001/3/5# and EmpNo = '00001'",
                u"'00001'|2001-03-05|08:00:00|17:01:00|00:00:00|null*9")
            .named(u"EmpNo|UseDate|T1|T2|T3|T4|T5|T6|T7|T8|T9|T10|T11|T12"),
        changes(u"A batch writes overtime, neither rest nor claimed",
                u"insert into Over01([EmpNo],[OverDate],[BegTime],[EndTime],[OverHours],[Account],"
                u"[TransDate]) Values('00001',#2001/3/6#,#18:00#,#20:00#,2,'admin', #2001-Mar-06 20:10:00#)",
                1,
                u"Over01 +'00001'|'2001-03-06'|'18:00:00'|'20:00:00'|2|null|0|0|'admin'|"
                u"'2001-03-06 20:10:00'"),
        changes(u"A batch run again adds its rows again",
                u"insert into Over01([EmpNo],[OverDate],[BegTime],[EndTime],[OverHours],[Account],"
                u"[TransDate]) Values('00001',#2001/3/6#,#18:00#,#20:00#,2,'admin', #2001-Mar-06 20:10:00#)",
                1,
                u"Over01 +'00001'|'2001-03-06'|'18:00:00'|'20:00:00'|2|null|0|0|'admin'|"
                u"'2001-03-06 20:10:00'")
            .after(u"insert into Over01([EmpNo],[OverDate],[BegTime],[EndTime],[OverHours],[Account],"
                   u"[TransDate]) Values('00001',#2001/3/6#,#18:00#,#20:00#,2,'admin', "
                   u"#2001-Mar-06 20:10:00#)"),
        fails(u"Overtime without an end breaks the batch",
              u"insert into Over01([EmpNo],[OverDate],[BegTime],[EndTime],[OverHours],[Account],[TransDate]) "
              u"Values('00001',#2001/3/6#,#18:00#,##,2,'admin', #2001-Mar-06 20:10:00#)",
              error::Syntax),
        fails(u"Overtime without hours breaks the batch",
              u"insert into Over01([EmpNo],[OverDate],[BegTime],[EndTime],[OverHours],[Account],[TransDate]) "
              u"Values('00001',#2001/3/6#,#18:00#,#20:00#,,'admin', #2001-Mar-06 20:10:00#)",
              error::Syntax),
    };
}

StatementTable queryStatements() {
    return {
        selects(u"All overtime comes as it was entered", u"Select * from Over01",
                u"'00002'|2001-03-05|18:00:00|20:30:00|2|'結帳'|True|False|'admin'|2001-03-05 21:00:00\n"
                u"'00001'|2001-03-05|18:30:00|null|0|null|False|False|null|null\n"
                u"'00001'|2001-02-20|18:00:00|21:00:00|3|null|False|False|null|null\n"
                u"'A0001'|2001-03-06|18:00:00|19:59:00|1|null|False|False|null|null\n"
                u"'00002'|2001-03-20|18:00:00|null*3|False|False|null|null")
            .named(u"EmpNo|OverDate|BegTime|EndTime|OverHours|Memo|Rest|Draw|Account|TransDate"),
        selects(u"Overtime of a day comes by employee",
                u" Select * from Over01  where OverDate = #2001/3/5# Order by  EmpNo",
                u"'00001'|2001-03-05|18:30:00|null|0|null|False|False|null|null\n"
                u"'00002'|2001-03-05|18:00:00|20:30:00|2|'結帳'|True|False|'admin'|2001-03-05 21:00:00"),
        selects(u"Overtime of a day and employee is found",
                u" Select * from Over01  where OverDate = #2001/3/5#     and EmpNo = '00001'  "
                u"Order by EmpNo,OverDate",
                u"'00001'|2001-03-05|18:30:00|null|0|null|False|False|null|null"),
        selects(u"Overtime of an employee comes by day",
                u" Select * from Over01  where EmpNo = '00001' Order by OverDate ",
                u"'00001'|2001-02-20|18:00:00|21:00:00|3|null|False|False|null|null\n"
                u"'00001'|2001-03-05|18:30:00|null|0|null|False|False|null|null"),
        selects(u"A cancelled overtime query comes up empty",
                u" Select * from Over01  where OverDate = #2038/1/1# Order by  EmpNo", u""),
        selects(u"The overtime list has the latest day first",
                u"Select * From Over01 Where EmpNo = '00001' Order by OverDate desc",
                u"'00001'|2001-03-05|18:30:00|null|0|null|False|False|null|null\n"
                u"'00001'|2001-02-20|18:00:00|21:00:00|3|null|False|False|null|null"),
        selects(u"Overtime of an employee is summed in a period",
                u" Select EmpNo,Sum(OverHours) as SubTot From Over01  where OverDate between  #2001/2/20# "
                u"and #2001/3/5#     and EmpNo = '00001'  Group by EmpNo ",
                u"'00001'|3")
            .named(u"EmpNo|SubTot"),
        selects(u"Overtime without hours adds nothing to the sum",
                u" Select EmpNo,Sum(OverHours) as SubTot From Over01  where OverDate between  #2001/3/1# "
                u"and #2001/3/31#     and EmpNo = '00002'  Group by EmpNo ",
                u"'00002'|2"),
        selects(u"Overtime that has no hours at all sums to null",
                u" Select EmpNo,Sum(OverHours) as SubTot From Over01  where OverDate between  #2001/3/20# "
                u"and #2001/3/20#     and EmpNo = '00002'  Group by EmpNo ",
                u"'00002'|null"),
        selects(u"An employee without overtime in the period has no sum",
                u" Select EmpNo,Sum(OverHours) as SubTot From Over01  where OverDate between  #2001/4/1# "
                u"and #2001/4/30#     and EmpNo = '00001'  Group by EmpNo ",
                u""),
        fails(u"A blank date breaks the sum of overtime",
              u" Select EmpNo,Sum(OverHours) as SubTot From Over01  where OverDate between  ## and "
              u"#2001/4/30#     and EmpNo = '00001'  Group by EmpNo ",
              error::Syntax),
    };
}

} // namespace

StatementTable overtimeStatements() {
    StatementTable all = entryStatements();
    const StatementTable queries = queryStatements();
    all.insert(all.end(), queries.begin(), queries.end());
    return all;
}

} // namespace pontrel::test
