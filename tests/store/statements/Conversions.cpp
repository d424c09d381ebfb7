#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

StatementTable dateColumns() {
    return {
        changes(u"A date written into a time leaves its time of day",
                u"Update AtteTemp1 Set T1 = #2038/01/01# Where EmpNo = '00001' and UseDate =#2001/3/5#", 1,
                u"AtteTemp1 ~1 T1='00:00:00'"),
        changes(u"A moment written into a time leaves its time of day",
                u"Update AtteTemp1 Set T1 = #2001/3/5 09:10:11# Where EmpNo = '00001' "
                u"and UseDate =#2001/3/5#",
                1, u"AtteTemp1 ~1 T1='09:10:11'"),
        changes(u"A date written into a moment stands at midnight",
                u"Update Holi03 Set TransDate = #2001/3/8# Where BusNo = '200103050001'", 1,
                u"Holi03 ~2 TransDate='2001-03-08 00:00:00'"),
        changes(u"Quoted text is read as a date",
                u"Update Over01 Set OverDate = '2001/3/8' Where OverHours = 3", 1,
                u"Over01 ~3 OverDate='2001-03-08'"),
        changes(u"Quoted text is read as a date with a month in letters",
                u"Update Over01 Set OverDate = '2001-Mar-08' Where OverHours = 3", 1,
                u"Over01 ~3 OverDate='2001-03-08'"),
        changes(u"Quoted text that is no day becomes null in a date",
                u"Update Over01 Set OverDate = '2001/2/30' Where OverHours = 3", 1,
                u"Over01 ~3 OverDate=null"),
        changes(u"A quoted word becomes null in a date",
                u"Update Over01 Set OverDate = 'x' Where OverHours = 3", 1, u"Over01 ~3 OverDate=null"),
        changes(u"An empty quoted text becomes null in a date",
                u"Update Over01 Set OverDate = '' Where OverHours = 3", 1, u"Over01 ~3 OverDate=null"),
        changes(u"Quoted text is read as a time", u"Update Over01 Set EndTime = '8:5' Where OverHours = 3", 1,
                u"Over01 ~3 EndTime='08:05:00'"),
        changes(u"Quoted text that is no time becomes null in a time",
                u"Update Over01 Set EndTime = '24:00' Where OverHours = 3", 1, u"Over01 ~3 EndTime=null"),
        changes(u"An empty quoted text becomes null in a time",
                u"Update Over01 Set EndTime = '' Where OverHours = 3", 1, u"Over01 ~3 EndTime=null"),
        changes(u"A quoted date leaves midnight in a time",
                u"Update Over01 Set EndTime = '2001/3/8' Where OverHours = 3", 1,
                u"Over01 ~3 EndTime='00:00:00'"),
        changes(u"Quoted text is read as a moment",
                u"Update Over01 Set TransDate = '2001-Mar-08 09:10:11' Where OverHours = 3", 1,
                u"Over01 ~3 TransDate='2001-03-08 09:10:11'"),
        changes(u"Quoted text that is no moment becomes null in one",
                u"Update Over01 Set TransDate = '2001-Mar-08 25:10:11' Where OverHours = 2", 1,
                u"Over01 ~1 TransDate=null"),
        changes(u"A row is kept when its quoted date and times are not readable",
                u"Insert Into Holi04(BusNo,EmpNo, HoliNo, HoliDate, BegTime, EndTime, HoliHours,TimeNo)"
                u"Values('200103070001','00001','03','','__:__','x',8,'A')",
                1, u"Holi04 +'200103070001'|'00001'|'03'|null*3|8|'A'"),
        changes(u"A row is dropped when a date of its key is not readable",
                u"insert into Canc02(EmpNo,CnlDate,CnlNo1) values('00001','x','A1')", 0, u""),
        changes(u"A changed row is dropped when a date of its key is not readable",
                u"Update Canc02 Set CnlDate = 'x' Where EmpNo = '00003'", 0, u""),
    };
}

StatementTable numberColumns() {
    return {
        changes(u"Quoted text is read as a whole number",
                u"Update Over01 Set OverHours = '12' Where OverHours = 3", 1, u"Over01 ~3 OverHours=12"),
        changes(u"A quoted word becomes null in a whole number",
                u"Update Over01 Set OverHours = 'x' Where OverHours = 3", 1, u"Over01 ~3 OverHours=null"),
        changes(u"An empty quoted text becomes null in a whole number",
                u"Update Over01 Set OverHours = '' Where OverHours = 3", 1, u"Over01 ~3 OverHours=null"),
        changes(u"A number with a word behind it becomes null",
                u"Update Over01 Set OverHours = '12x' Where OverHours = 3", 1, u"Over01 ~3 OverHours=null"),
        changes(u"A fraction is rounded into a whole number",
                u"Update Over01 Set OverHours = 2.6 Where OverHours = 1", 1, u"Over01 ~4 OverHours=3"),
        changes(u"A half is rounded down to the even number",
                u"Update Over01 Set OverHours = 2.5 Where OverHours = 1", 1, u"Over01 ~4 OverHours=2"),
        changes(u"A half is rounded up to the even number",
                u"Update Over01 Set OverHours = 3.5 Where OverHours = 1", 1, u"Over01 ~4 OverHours=4"),
        changes(u"A quoted half is rounded to the even number",
                u"Update Over01 Set OverHours = '2.5' Where OverHours = 1", 1, u"Over01 ~4 OverHours=2"),
        changes(u"A number below zero is written", u"Update Over01 Set OverHours = -1 Where OverHours = 3", 1,
                u"Over01 ~3 OverHours=-1"),
        changes(u"A whole number is written into a column of fractions",
                u"Update Holi03 Set HoliHours = 7 Where BusNo = '200103050001'", 1,
                u"Holi03 ~2 HoliHours=7.0"),
        changes(u"Quoted text is read as a fraction",
                u"Update Holi03 Set HoliHours = '1.4' Where BusNo = '200103050001'", 1,
                u"Holi03 ~2 HoliHours=1.4"),
        changes(u"A quoted fraction below zero is read",
                u"Update Holi03 Set HoliHours = '-0.5' Where BusNo = '200103050001'", 1,
                u"Holi03 ~2 HoliHours=-0.5"),
        changes(u"A quoted word becomes null in a column of fractions",
                u"Update Holi03 Set HoliHours = 'x' Where BusNo = '200103050001'", 1,
                u"Holi03 ~2 HoliHours=null"),
        changes(u"Digits stay text in a text column", u"Update Over01 Set Memo = '007' Where OverHours = 3",
                1, u"Over01 ~3 Memo='007'"),
        changes(u"A date stays text in a text column",
                u"Update Over01 Set Memo = '2001/3/8' Where OverHours = 3", 1, u"Over01 ~3 Memo='2001/3/8'"),
        changes(u"An empty text stays so in a text column",
                u"Update Over01 Set Memo = '' Where OverHours = 3", 1, u"Over01 ~3 Memo=''"),
    };
}

} // namespace

StatementTable conversionStatements() {
    StatementTable all = dateColumns();
    const StatementTable numbers = numberColumns();
    all.insert(all.end(), numbers.begin(), numbers.end());
    return all;
}

} // namespace pontrel::test
