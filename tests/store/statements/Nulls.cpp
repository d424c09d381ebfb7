#include "store/statements/StatementCase.h"

namespace pontrel::test {

StatementTable nullStatements() {
    return {
        selects(u"Unequal to null is met by a value", u"SELECT EmpNo From Base06 Where LeaveDate <> null",
                u"'00003'\n'00004'"),
        selects(u"Unequal to null is met by the empty text",
                u"SELECT ClsNo From Base05 Where TimeNo1 <> null", u"'010'\n'020'"),
        selects(u"Equal to null is met by a null", u"SELECT EmpNo From Base06 Where LeaveDate = null",
                u"'00001'\n'00002'\n'a0001'"),
        selects(u"Equal to null is not met by the empty text",
                u"SELECT EmpNo,TimeNo From Rule03 Where TimeNo = null", u""),
        selects(u"The contrary of equal to null is met by a value",
                u"SELECT EmpNo From Base06 Where Not(LeaveDate = Null)", u"'00003'\n'00004'"),
        selects(u"The test for null answers false for a value",
                u"SELECT EmpNo From Base06 Where isnull(LeaveDate) = False", u"'00003'\n'00004'"),
        selects(u"The test for null is read in any case of letters",
                u"SELECT EmpNo From Base06 Where ISNULL(leavedate) = TRUE", u"'00001'\n'00002'\n'a0001'"),
        selects(u"The test for null is false for the empty text",
                u"SELECT EmpNo From Rule03 Where IsNull(TimeNo) = true", u""),
        selects(u"A comparison with a null is not met",
                u"SELECT EmpNo From Base06 Where LeaveDate >= #2001/03/05#", u"'00003'\n'00004'"),
        selects(u"The contrary of a comparison with a null is not met either",
                u"SELECT EmpNo From Base06 Where Not(LeaveDate >= #2001/03/06#)", u"'00003'"),
        selects(u"The empty text equals itself and no null", u"SELECT ClsNo From Base05 Where TimeNo1 = ''",
                u"'020'"),
        selects(u"A null does not equal the empty text", u"SELECT ClsNo From Base05 Where TimeNo3 = ''", u""),
        selects(u"A null is not unequal to the empty text",
                u"SELECT EmpNo,CnlDate From Canc02 Where CnlNo1 <> ''",
                u"'00001'|2001-01-10\n'00001'|2001-03-05\n'00003'|2001-03-05"),
        selects(u"A null lies in no range", u"SELECT EmpNo From Base06 Where ClsNo Between '' and 'ZZZZ'",
                u"'00001'\n'00002'\n'00003'\n'a0001'"),
        selects(u"Joining takes a null as empty", u"Select EmpNo & '-' & TimeNo as mark From AtteTemp1",
                u"'00001-A'\n'00002-A'\n'00002-A'\n'00001-A'\n'00003-'")
            .named(u"mark"),
        selects(u"A null takes part in no pattern", u"SELECT EmpNo From Base06 Where ClsNo like '*'",
                u"'00001'\n'00002'\n'00003'\n'a0001'"),
        selects(u"Counting a column passes over nulls", u"Select count(LeaveDate) as cnt From Base06", u"2"),
        selects(u"The greatest of a column passes over nulls", u"SELECT max(LeaveDate) as max From Base06",
                u"2038-01-01"),
        selects(u"A sum passes over nulls", u"Select Sum(OverHours) as SubTot From Over01", u"6"),
        selects(u"A sum of sums with a null in one column passes over that row",
                u"Select Sum(BreakY+HoliExper) as cnt from Base06", u"28"),
        changes(u"A null that is added to stays null",
                u"Update Over01 Set OverHours = OverHours + 1 Where EmpNo = '00002'", 2,
                u"Over01 ~1 OverHours=3"),
        changes(u"A column is set to null in each row that has none yet",
                u"Update Over01 Set Memo = Null Where OverDate = #2001/3/5#", 2, u"Over01 ~1 Memo=null"),
        selects(u"A flag that was never set is false", u"SELECT EmpNo,UseDate From Atte02 Where FT1 = False",
                u"'00001'|2001-03-03\n'00001'|2001-03-04\n'00003'|2001-03-05"),
        selects(u"The contrary of flags that were never set is true",
                u"SELECT EmpNo,UseDate From Atte02 Where Not(FT1 = True Or FH1 = True Or FC1 = True )",
                u"'00001'|2001-03-03\n'00001'|2001-03-04\n'00003'|2001-03-05"),
    };
}

} // namespace pontrel::test
