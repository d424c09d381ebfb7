#include "store/statements/StatementCase.h"

namespace pontrel::test {

StatementTable twoTableStatements() {
    return {
        changes(u"Columns of both tables are set, whichever stands first",
                u"Update Atte02,Atte03 Set Atte03.DelayF = 9 , Atte02.DelayF = 8 "
                u"Where Atte03.EmpNo =Atte02.EmpNo  and Atte03.UseDate = Atte02.UseDate",
                anyNumber, u"Atte02 ~1 DelayF=8\nAtte02 ~2 DelayF=8\nAtte03 ~1 DelayF=9\nAtte03 ~3 DelayF=9"),
        changes(u"The second table is changed though the first meets the condition no more",
                u"Update Atte03,Atte02 Set Atte03.DelayF = 0 , Atte02.Absent = 1 "
                u"Where Atte03.EmpNo =Atte02.EmpNo  and Atte03.UseDate = Atte02.UseDate "
                u"and Atte03.DelayF = 2",
                anyNumber, u"Atte02 ~1 Absent=1\nAtte03 ~1 DelayF=0"),
        changes(u"The first table is changed though the second meets the condition no more",
                u"Update Atte03,Atte02 Set Atte02.DelayF = 0 , Atte03.Absent = 1 "
                u"Where Atte03.EmpNo =Atte02.EmpNo  and Atte03.UseDate = Atte02.UseDate "
                u"and Atte02.DelayF = 2",
                anyNumber, u"Atte02 ~1 DelayF=0\nAtte03 ~1 Absent=1"),
        changes(u"Both tables are changed though the column that joins them is set",
                u"Update Atte03,Atte02 Set Atte03.UseDate = #2001/4/1# , Atte02.Absent = 1 "
                u"Where Atte03.EmpNo =Atte02.EmpNo  and Atte03.UseDate = Atte02.UseDate "
                u"and Atte03.UseDate = #2001/3/5#",
                anyNumber, u"Atte02 ~1 Absent=1\nAtte03 ~1 UseDate='2001-04-01'"),
        changes(u"Both tables are changed though both columns that join them are set",
                u"Update Atte03,Atte02 Set Atte02.EmpNo = '00009' , Atte03.EmpNo = '00008' "
                u"Where Atte03.EmpNo =Atte02.EmpNo  and Atte03.UseDate = Atte02.UseDate "
                u"and Atte03.UseDate = #2001/3/4#",
                anyNumber, u"Atte02 ~2 EmpNo='00009'\nAtte03 ~3 EmpNo='00008'"),
        changes(u"A row that meets several of the other table is changed, and all of those",
                u"Update Atte03,Atte02 Set Atte03.Absent = 1 , Atte02.Absent = 2 "
                u"Where Atte03.EmpNo =Atte02.EmpNo",
                anyNumber,
                u"Atte02 ~1 Absent=2\nAtte02 ~2 Absent=2\nAtte02 ~3 Absent=2\n"
                u"Atte03 ~1 Absent=1\nAtte03 ~2 Absent=1\nAtte03 ~3 Absent=1"),
        changes(u"The table set may be the one listed last",
                u"Update Canc01,View03 set CnlNo1 =Canc01.CnlName  Where Canc01.CnlNo = View03.CnlNo1 ",
                anyNumber, u"View03 ~1 CnlNo1='忘刷卡'"),
        changes(u"A column takes the other table's value, null included",
                u"update Rule03,Base06 set Rule03.[TimeNo] =Base06.SuitNo where Rule03.EmpNo =Base06.EmpNo "
                u"and Rule03.ymd = #2001/3/5#",
                anyNumber,
                u"Rule03 ~2 TimeNo='1'\nRule03 ~3 TimeNo='2'\nRule03 ~5 TimeNo=null\nRule03 ~6 TimeNo='1'"),
        changes(u"No row of either table is changed where none meet",
                u"Update Atte03,Atte02 Set Atte03.F1 = False , Atte02.F1 = True "
                u"Where Atte03.EmpNo =Atte02.EmpNo  and Atte03.UseDate = Atte02.UseDate "
                u"and Atte03.UseDate =#2001/3/3#",
                0, u""),
        changes(u"A changed row whose key is taken is dropped",
                u"update Rule03,Base06 set Rule03.YMD =#2001/3/6# where Rule03.EmpNo =Base06.EmpNo      "
                u"and Base06.ClsNo = '010'    and  Rule03.ymd = #2001/3/5#",
                0, u""),
        changes(u"Names in any case and in brackets reach both tables",
                u"UPDATE [atte03],ATTE02 SET [Atte03].[f1] = TRUE , atte02.F2 = false "
                u"WHERE [ATTE03].EMPNO = atte02.[empno] AND Atte03.usedate = Atte02.USEDATE "
                u"AND Atte03.EmpNo = '00002'",
                anyNumber, u"Atte02 ~1 F2=0\nAtte03 ~1 F1=1"),
    };
}

} // namespace pontrel::test
