#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

constexpr QStringView hoursByEmployee =
    u"SELECT EmpNo,sum(HoliHours) as hh ,(hh\\8 + (hh mod 8)*0.1) as hr From Holi03 Group by EmpNo";

StatementTable divisions() {
    return {
        selects(u"Whole division and remainder of whole numbers and of a half",
                u"Select HoliDays\\2 as q,HoliDays mod 2 as r From Holi02", u"5|0\n3|1\n15|0\n0|1\n1|0")
            .named(u"q|r"),
        selects(u"Halves go to the even number, quotients toward zero, remainders with the dividend",
                u"Select HoliDays\\3 as q,HoliDays mod 3 as r From Holi02", u"3|1\n2|1\n1|1\n-2|-2\n0|2")
            .after(u"Update Holi02 Set HoliDays = 3.5 Where SuitNo = '2'\n"
                   u"Update Holi02 Set HoliDays = -7.5 Where HoliNo = '99'"),
        selects(u"A fraction just under a half is rounded down, just over it up",
                u"Select HoliDays\\1 as q,HoliDays mod 10 as r From Holi02", u"10|0\n7|7\n2|2\n-8|-8\n3|3")
            .after(u"Update Holi02 Set HoliDays = 2.49 Where SuitNo = '2'\n"
                   u"Update Holi02 Set HoliDays = -7.51 Where HoliNo = '99'\n"
                   u"Update Holi02 Set HoliDays = 2.51 Where SuitNo = '9'"),
        selects(u"The divisor is rounded as well",
                u"Select HoliDays\\2.5 as q,HoliDays mod 3.5 as r From Holi02", u"5|2\n3|3\n15|2\n0|1\n1|2"),
        selects(u"A divisor below zero turns the quotient and not the remainder",
                u"Select HoliYearEnd\\-3 as q,HoliYearEnd mod -3 as r From Holi02",
                u"-1|2\n-1|0\n-33|0\n-3|0\n-3|0"),
        selects(u"Names given in the list serve later expressions of it",
                u"Select HoliDays\\3 as q,(q*2) as twice,(twice - q) as back From Holi02",
                u"3|6|3\n2|4|2\n10|20|10\n0*3\n0*3")
            .named(u"q|twice|back"),
        selects(u"A name given in the list is found in any case",
                u"Select HoliDays\\3 as Quot,(QUOT*2) as twice From Holi02 Where SuitNo = '2'", u"10|20"),
        selects(u"Sums and products keep their order",
                u"Select 2 + 3 * 4 as a,(2 + 3) * 4 as b,9 - 3 - 4 as c "
                u"From Syst01",
                u"14|20|2")
            .named(u"a|b|c"),
    };
}

StatementTable sums() {
    return {
        selects(u"A sum of fractions is turned into days and hours after rounding", hoursByEmployee,
                u"'00001'|12.75|1.5\n'00002'|1.0|0.1")
            .named(u"EmpNo|hh|hr")
            .after(u"Update Holi03 Set HoliHours = 4.25 Where EmpNo = '00001'"),
        selects(u"A sum below zero is turned with its sign after rounding", hoursByEmployee,
                u"'00001'|-12.75|-1.5\n'00002'|1.0|0.1")
            .after(u"Update Holi03 Set HoliHours = -4.25 Where EmpNo = '00001'"),
        selects(u"A sum of a half is rounded down to the even number", hoursByEmployee,
                u"'00001'|4.5|0.4\n'00002'|1.0|0.1")
            .after(u"Update Holi03 Set HoliHours = 1.5 Where EmpNo = '00001'"),
        selects(u"A sum of a half is rounded up to the even number", hoursByEmployee,
                u"'00001'|7.5|1.0\n'00002'|1.0|0.1")
            .after(u"Update Holi03 Set HoliHours = 2.5 Where EmpNo = '00001'"),
        selects(u"A sum that is null is turned into null", hoursByEmployee,
                u"'00001'|null|null\n'00002'|1.0|0.1")
            .after(u"Update Holi03 Set HoliHours = null Where EmpNo = '00001'"),
        selects(u"Several figures stand in one list",
                u"Select EmpNo,count(*) as n,max(HoliDate) as d,sum(HoliHours) as h From Holi04 "
                u"Group by EmpNo",
                u"'00001'|5|2001-03-09|26\n'00002'|1|2001-03-05|8"),
    };
}

StatementTable conditions() {
    return {
        selects(u"A greater number meets", u"Select EmpNo,CnlNo From View01 Where CnlTimes > 1",
                u"'00001'|'A1'"),
        selects(u"A greater or equal number meets", u"Select EmpNo,CnlNo From View01 Where CnlTimes >= 1",
                u"'00001'|'A1'\n'00002'|'B2'"),
        selects(u"A lesser number meets", u"Select EmpNo,CnlNo From View01 Where CnlTimes < 1",
                u"'00001'|'B2'\n'00002'|'A1'"),
        selects(u"A lesser or equal number meets", u"Select EmpNo,CnlNo From View01 Where CnlTimes <= 1",
                u"'00001'|'B2'\n'00002'|'B2'\n'00002'|'A1'"),
        selects(u"An unequal number meets", u"Select EmpNo,CnlNo From View01 Where CnlTimes <> 0",
                u"'00001'|'A1'\n'00002'|'B2'"),
        selects(u"A number lies between two with both ends",
                u"Select EmpNo,CnlNo From View01 Where AddUpTimes between 1 and 5",
                u"'00001'|'B2'\n'00002'|'B2'"),
        selects(u"And binds before or",
                u"Select EmpNo,CnlNo From View01 Where CnlTimes = 2 or CnlTimes = 0 and AddUpTimes = 5",
                u"'00001'|'A1'\n'00001'|'B2'"),
        selects(u"Brackets bind before and",
                u"Select EmpNo,CnlNo From View01 Where (CnlTimes = 2 or CnlTimes = 0) and AddUpTimes = 5",
                u"'00001'|'B2'"),
        selects(u"Not binds before and",
                u"Select EmpNo,CnlNo From View01 Where not CnlTimes = 0 and AddUpTimes = 0", u"'00001'|'A1'"),
        selects(u"The and of a range ends before the and of the condition",
                u"Select EmpNo,CnlNo From View01 Where CnlTimes between 0 and 1 and AddUpTimes between 1 "
                u"and 1",
                u"'00002'|'B2'"),
        selects(u"Brackets stand in brackets",
                u"Select EmpNo,CnlNo From View01 Where ((CnlTimes = 2) or ((CnlTimes = 0) and "
                u"(not(AddUpTimes = 5))))",
                u"'00001'|'A1'\n'00002'|'A1'"),
    };
}

} // namespace

StatementTable arithmeticStatements() {
    StatementTable all = divisions();
    for (const StatementTable& part : {sums(), conditions()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
