#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable ownOrders() {
    return {
        selects(u"A table with a key comes by its key", u"SELECT TitleNo,Title From Base01",
                u"'01'|'科長'\n'02'|'專員'"),
        selects(u"A table with a key of two columns comes by both", u"select * from Rule03",
                u"'00001'|2001-03-05|'A'\n'00002'|2001-03-05|'A'\n'00003'|2001-03-05|'B'\n"
                u"'a0001'|2001-03-05|'A'\n'00001'|2001-03-06|''\n'00002'|2001-03-06|'B'\n"
                u"'00003'|2001-03-06|'A'"),
        selects(u"A condition on the second column of the key keeps its order",
                u"select YMD from Rule03 where EmpNo = '00002'", u"2001-03-05\n2001-03-06"),
        selects(u"A condition on the first column of the key leaves the second to order",
                u"select EmpNo from Rule03 where YMD = #2001/3/5#", u"'00001'\n'00002'\n'00003'\n'a0001'"),
        selects(u"A range of keys keeps their order",
                u"select EmpNo from Base06 where EmpNo between '00002' and 'ZZZZZ'",
                u"'00002'\n'00003'\n'00004'\n'a0001'"),
        selects(u"Alternatives come by the key and not by the condition",
                u"select TimeNo from Base04 where TimeNo = 'B' or TimeNo = 'A'", u"'A'\n'B'"),
        selects(u"A row inserted later takes its place by the key", u"select hymd from Rule01",
                u"2001-01-01\n2001-01-15\n2001-02-28\n2001-10-10")
            .after(u"insert into Rule01(hymd)  values(# 2001/1/15 # )"),
        selects(u"A table without a key comes as it was entered",
                u"select SuitNo,HoliNo,HoliYearBeg from Holi02",
                u"'1'|'01'|3\n'1'|'01'|1\n'2'|'04'|0\n'1'|'99'|0\n'9'|'01'|0"),
        selects(u"A condition on a table without a key keeps the order of entry",
                u"select UseTime from AtteTemp where UseDate = #2001/3/5# and EmpNo = '00002'",
                u"20:30:00\n18:00:00\n18:00:00\n08:03:00\n12:15:00"),
        selects(u"A range on a table without a key keeps the order of entry",
                u"select EmpNo,HoliDate from Holi04 where HoliDate between #2001/2/1# and #2001/3/5#",
                u"'00001'|2001-03-05\n'00002'|2001-03-05\n'00001'|2001-02-01"),
        selects(u"The first row of a table with a key is that of the lowest key",
                u"SELECT top 1 TimeNo,TimeName From base04", u"'A'|'日班'"),
        selects(u"The first row is asked with single blanks",
                u"SELECT top 1 StdT1, StdT2,StdT3, StdT4 From base04",
                u"08:00:00|12:00:00|13:00:00|17:00:00"),
        selects(u"The first row of a table without a key is the one entered first",
                u"SELECT top 1 EmpNo,OverHours From Over01", u"'00002'|2"),
        selects(u"The first row may be asked with an order",
                u"SELECT top 1 EmpNo From Base06 Order by EmpNo desc", u"'a0001'"),
    };
}

StatementTable joinOrders() {
    return {
        selects(u"A join comes by the table that is listed first",
                u"Select Base03.WorkNo,Base01.TitleNo From Base03,Base01",
                u"'1'|'01'\n'1'|'02'\n'2'|'01'\n'2'|'02'"),
        selects(u"A join listed the other way comes the other way",
                u"Select Base03.WorkNo,Base01.TitleNo From Base01,Base03",
                u"'1'|'01'\n'2'|'01'\n'1'|'02'\n'2'|'02'"),
        selects(u"A join over the roster comes by slots where they are listed first",
                u"Select Rule03.EmpNo,Rule03.YMD From Base04,Rule03 Where Rule03.TimeNo = Base04.TimeNo",
                u"'00001'|2001-03-05\n'00002'|2001-03-05\n'a0001'|2001-03-05\n'00003'|2001-03-06\n"
                u"'00003'|2001-03-05\n'00002'|2001-03-06"),
        selects(u"A join over the roster comes by days where it is listed first",
                u"Select Rule03.EmpNo,Rule03.YMD From Rule03,Base04 Where Rule03.TimeNo = Base04.TimeNo",
                u"'00001'|2001-03-05\n'00002'|2001-03-05\n'00003'|2001-03-05\n'a0001'|2001-03-05\n"
                u"'00002'|2001-03-06\n'00003'|2001-03-06"),
        selects(u"A join with a table without a key comes by its order of entry",
                u"Select Holi02.HoliYearBeg,Holi01.HoliType From Holi02,Holi01 "
                u"Where Holi02.HoliNo = Holi01.HoliNo",
                u"3|'特休'\n1|'特休'\n0|'病假'\n0|'特休'"),
        selects(u"A nested join comes by its innermost first table",
                u"SELECT Holi02.HoliYearBeg,Holi01.HoliNo FROM Holi01 INNER JOIN Holi02 "
                u"ON Holi01.HoliNo = Holi02.HoliNo",
                u"3|'01'\n1|'01'\n0|'01'\n0|'04'"),
        selects(u"A condition on the table listed last changes no order",
                u"Select Base02.UnitNo,Base06.EmpNo From Base02,Base06 Where Base06.UnitNo = Base02.UnitNo "
                u"and Base06.EmpNo between '00001' and '00003'",
                u"'0100'|'00002'\n'0100'|'00003'\n'0200'|'00001'"),
    };
}

StatementTable statedOrders() {
    return {
        selects(u"Distinct rows come rising by their columns",
                u"Select distinct EmpNo,class From AtteTemp Where UseDate = #2001/3/5#",
                u"'00001'|'255'\n'00002'|'000'\n'00002'|'081'\n'00002'|'082'\n'00003'|'081'\n"
                u"'00003'|'255'"),
        selects(u"Distinct rows come rising by the columns as listed",
                u"Select distinct class,EmpNo From AtteTemp Where UseDate = #2001/3/5#",
                u"'000'|'00002'\n'081'|'00002'\n'081'|'00003'\n'082'|'00002'\n'255'|'00001'\n"
                u"'255'|'00003'"),
        selects(u"Distinct rows come rising without regard to case",
                u"Select distinct class From AtteTemp Where EmpNo = 'x'", u"'ab'\n'B'")
            .after(u"insert into AtteTemp(EmpNo,class) values('x','B')\n"
                   u"insert into AtteTemp(EmpNo,class) values('x','ab')\n"
                   u"insert into AtteTemp(EmpNo,class) values('x','ab')"),
        selects(u"Groups come rising by their columns",
                u"Select HoliNo,count(*) as cnt From Holi04 Group by HoliNo", u"'01'|2\n'03'|3\n'04'|1"),
        selects(u"Groups come by the order asked for",
                u"Select HoliNo,count(*) as cnt From Holi04 Group by HoliNo Order by HoliNo desc",
                u"'04'|1\n'03'|3\n'01'|2"),
        selects(u"Codes that differ in case are one group",
                u"Select count(*) as cnt,Sum(OverHours) as SubTot From Over01 Where EmpNo like 'a*' "
                u"Group by EmpNo",
                u"2|8")
            .after(u"insert into [Over01](OverDate,EmpNo,BegTime,OverHours)"
                   u"values(#2001/3/7#,'a0001',#18:30:00#, 7)"),
        selects(u"Falling and rising columns stand in one order",
                u"select EmpNo,YMD from Rule03 order by YMD desc,EmpNo",
                u"'00001'|2001-03-06\n'00002'|2001-03-06\n'00003'|2001-03-06\n'00001'|2001-03-05\n"
                u"'00002'|2001-03-05\n'00003'|2001-03-05\n'a0001'|2001-03-05"),
        selects(u"An order may use a column that is not shown",
                u"select EmpName from Base06 order by EmpNo desc",
                u"'Ann Lee'\n'李哨兵'\n'王離職'\n'陳大文'\n'林小明'"),
        selects(u"Rows that the order leaves equal come by the table's own order",
                u"Select class,UseTime From AtteTemp Where UseDate = #2001/3/5# and EmpNo = '00002' "
                u"Order by class",
                u"'000'|08:03:00\n'081'|20:30:00\n'081'|18:00:00\n'081'|18:00:00\n'082'|12:15:00"),
        changes(u"A copy of rows in order is inserted in that order",
                u"Insert into View03(EmpNo,CnlDate) Select EmpNo,YMD From Rule03 "
                u"Where YMD = #2001/3/6# Order by EmpNo desc",
                3,
                u"View03 +'00003'|'2001-03-06'|null*4\nView03 +'00002'|'2001-03-06'|null*4\n"
                u"View03 +'00001'|'2001-03-06'|null*4"),
    };
}

} // namespace

StatementTable orderStatements() {
    StatementTable all = ownOrders();
    for (const StatementTable& part : {joinOrders(), statedOrders()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
