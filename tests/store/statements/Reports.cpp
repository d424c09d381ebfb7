#include "store/RunTimeError.h"
#include "store/statements/StatementCase.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace pontrel::test {

namespace {

/// The comparisons of a column with the thirty reasons of the list, three a piece: the selected ones stand
/// first.
QString reasonCondition(const QString& column, const QStringList& selected) {
    QString text = u"("_s;
    for (int i = 0; i < 30; ++i) {
        static const QStringList joints{u"      or "_s, u"'  or "_s, u"' or "_s};
        if (i > 0) {
            text += i % 3 == 0 ? u"'"_s + joints[0] : joints[i % 3];
        }
        text += column + u"  = '"_s + selected.value(i);
    }
    return text + u"')"_s;
}

QString reasonList(const QStringList& selected) {
    return u"SELECT CnlNo From Canc01  Where "_s + reasonCondition(u"CnlNo"_s, selected);
}

QString detailInsert(const QStringList& selected) {
    QStringList conditions;
    for (int i = 1; i <= 4; ++i) {
        conditions << reasonCondition(u"CnlNo"_s + QString::number(i), selected);
    }
    return u"Insert Into View03(EmpNo, CnlDate, CnlNo1, CnlNo2, CnlNo3, CnlNo4)"
           " Select Canc02.EmpNo,Canc02.CnlDate,Canc02.CnlNo1,Canc02.CnlNo2,Canc02.CnlNo3,Canc02.CnlNo4 "
           "   From Base06,Canc02 "
           " where Canc02.EmpNo between '000000' and 'ZZZZZZ'"
           "   and Base06.UnitNo between '0000' and 'ZZZZ'"
           "   and Canc02.CnlDate between  #2001/3/1# and #2001/3/31#"
           "   and isnull(Base06.LeaveDate) = true "
           "   and Base06.EmpNo = Canc02.EmpNo "
           "   and ("_s +
           conditions.join(u"      or "_s) + u")"_s;
}

StatementTable choiceStatements() {
    return {
        selects(u"The title of reports is read", u"select CmpName from Syst01", u"'示範公司'")
            .named(u"CmpName"),
        selects(u"Reports offer classes",
                u"SELECT ClsNo, ClassName "
                u"  From Base05 ",
                u"'010'|'常日班'\n'020'|'輪班'"),
        selects(u"Reports offer units",
                u"SELECT UnitNo, Unit "
                u"  From Base02 ",
                u"'0100'|'人事室'\n'0200'|'總務室'\n'a300'|'資訊室'"),
        selects(u"Reports offer employment types",
                u"SELECT WorkNo, WorkType "
                u"  From Base03 ",
                u"'1'|'正式'\n'2'|'約聘'"),
        selects(u"Reports offer current employees by their codes",
                u"SELECT EmpNo, EmpName "
                u"  From Base06 "
                u" where isnull(LeaveDate) = true "
                u" order by empno ",
                u"'00001'|'林小明'\n'00002'|'陳大文'\n'a0001'|'Ann Lee'"),
        selects(u"Reports list leave types", u"SELECT HoliNo, HoliType From Holi01 ",
                u"'01'|'特休'\n'03'|'事假'\n'04'|'病假'\n'14'|'公出'"),
        selects(u"Reports list write-off reasons", u"SELECT CnlNo, CnlName From Canc01 ",
                u"'A1'|'忘刷卡'\n'B2'|'公出'\n'C33'|'長碼'\n'D4'|'A1'"),
    };
}

StatementTable figureStatements() {
    return {
        selects(u"Current employees of units and types are counted for the spot check",
                u"Select count(empno) as cnt from Base06 "
                u" Where Base06.UnitNo  between '0000' and 'ZZZZ'"
                u" and Base06.WorkNo between '0000' and 'ZZZZ'"
                u" and Base06.UnitNo between '0000' and 'ZZZZ'"
                u" and isnull(Base06.LeaveDate) = true ",
                u"3")
            .named(u"cnt"),
        selects(u"The unit range of the other tab narrows the spot check",
                u"Select count(empno) as cnt from Base06 "
                u" Where Base06.UnitNo  between '0000' and 'ZZZZ'"
                u" and Base06.WorkNo between '0000' and 'ZZZZ'"
                u" and Base06.UnitNo between '0100' and '0100'"
                u" and isnull(Base06.LeaveDate) = true ",
                u"1"),
        selects(u"Cushion minutes of both halves are summed",
                u"Select Sum(Cushion1+Cushion3) as cnt from Atte02 "
                u" Where EmpNo  = '00001'"
                u"      and UseDate between #2001/3/1# and #2001/3/31#",
                u"6")
            .named(u"cnt"),
        selects(u"Delay minutes of both halves are summed",
                u"Select Sum(Delay1+Delay3) as cnt from Atte02 "
                u" Where EmpNo  = '00001'"
                u"      and UseDate between #2001/3/1# and #2001/3/31#",
                u"15"),
        selects(u"Early minutes of both halves are summed",
                u"Select Sum(Earlier2+Earlier4) as cnt from Atte02 "
                u" Where EmpNo  = '00001'"
                u"      and UseDate between #2001/3/4# and #2001/3/4#",
                u"3"),
        selects(u"Absence sums to zero",
                u"Select Sum(Absent) as cnt from Atte02 "
                u" Where EmpNo  = '00001'"
                u"      and UseDate between #2001/3/1# and #2001/3/31#",
                u"0"),
        selects(u"A sum over no rows is null",
                u"Select Sum(Absent) as cnt from Atte02 "
                u" Where EmpNo  = '00001'"
                u"      and UseDate between #1999/3/1# and #1999/3/31#",
                u"null"),
    };
}

StatementTable countStatements() {
    static const QString twoReasons = reasonList({u"A1"_s, u"B2"_s});
    static const QString noReasons = reasonList({});
    static const QString cutReason = reasonList({u"A1"_s, u""_s, u"C3"_s});
    return {
        changes(u"The counts of a report start from an empty table", u"delete * from View01", 4,
                u"View01 -1 2 3 4"),
        selects(u"The chosen reasons come by their codes", twoReasons, u"'A1'\n'B2'"),
        selects(u"With no reason chosen the list is empty", noReasons, u""),
        selects(u"A reason of three characters is never met by two", cutReason, u"'A1'"),
        selects(u"Current employees with a reason at any time come once each",
                u"Select distinct Canc02.EmpNo from Canc02 ,Base06 "
                u" where Canc02.EmpNo between '000000' and 'ZZZZZZ'"
                u"   and Base06.UnitNo between '0000' and 'ZZZZ'"
                u"   and isnull(Base06.LeaveDate) = true "
                u"   and Base06.EmpNo = Canc02.EmpNo "
                u"   and (CnlNo1 ='B2' or CnlNo2 = 'B2' or CnlNo3 ='B2' or CnlNo4 ='B2')",
                u"'00001'\n'00002'")
            .named(u"EmpNo"),
        selects(u"An employee who has left is kept out of the counts",
                u"Select distinct Canc02.EmpNo from Canc02 ,Base06 "
                u" where Canc02.EmpNo between '00003' and '00003'"
                u"   and Base06.UnitNo between '0000' and 'ZZZZ'"
                u"   and isnull(Base06.LeaveDate) = true "
                u"   and Base06.EmpNo = Canc02.EmpNo "
                u"   and (CnlNo1 ='A1' or CnlNo2 = 'A1' or CnlNo3 ='A1' or CnlNo4 ='A1')",
                u""),
        changes(u"A report's row is inserted without counts",
                u"Insert Into View01(EmpNo,BegDate,EndDate,CnlNo)"
                u" Values('00002',#2001/3/1#,#2001/3/31#,'B2')",
                1, u"View01 +'00002'|'2001-03-01'|'2001-03-31'|'B2'|0|0"),
        selects(u"A report counts a reason from January on",
                u"SELECT count(*) as CnlTimes "
                u"  From Canc02 "
                u"  where CnlDate between  #2001/1/1# and #2001/3/31#"
                u"     and EmpNo = '00001'"
                u"     and CnlNo1 = 'B2'",
                u"1"),
        changes(u"A report adds to the count of the period",
                u"Update View01 Set CnlTimes = CnlTimes + 2"
                u" Where EmpNo = '00002'"
                u"     and CnlNo = 'B2'",
                1, u"View01 ~3 CnlTimes=3"),
        changes(u"A report adds to the count of the year",
                u"Update View01 Set AddUpTimes = AddUpTimes + 3"
                u" Where EmpNo = '00001'"
                u"     and CnlNo = 'B2'",
                1, u"View01 ~2 AddUpTimes=8"),
        changes(u"Employees without the reason in the period are dropped",
                u"delete * from View01 "
                u" Where CnlTimes = 0",
                2, u"View01 -2 4"),
        changes(u"Employees under the number of times are dropped",
                u"delete * from View01 "
                u" Where CnlTimes < 2",
                3, u"View01 -2 3 4"),
        fails(u"An empty number of times breaks the deletion",
              u"delete * from View01 "
              u" Where CnlTimes < ",
              error::Syntax),
        fails(u"A word as the number of times is an unknown name",
              u"delete * from View01 "
              u" Where CnlTimes < abc",
              error::UnknownName),
        changes(u"Employees without the reason in period and year are dropped",
                u"delete * from View01 "
                u" Where (CnlTimes = 0 and AddUpTimes = 0 ) ",
                1, u"View01 -4"),
    };
}

StatementTable detailStatements() {
    static const QString oneReason = detailInsert({u"B2"_s});
    static const QString lastReason = detailInsert({u"X"_s, u"X"_s, u"A1"_s});
    static const QString unknownReason = detailInsert(QStringList(30, u"X"_s));
    return {
        changes(u"The detail of a report starts from an empty table", u"delete * from View03", 2,
                u"View03 -1 2"),
        changes(u"The detail takes entries that name a reason in any place, or an empty one", oneReason, 2,
                u"View03 +'00001'|'2001-03-05'|'A1'|'A1'|''|'B2'\n"
                u"View03 +'00002'|'2001-03-05'|null|'B2'|null|null"),
        changes(u"The detail leaves out employees who have left", lastReason, 1,
                u"View03 +'00001'|'2001-03-05'|'A1'|'A1'|''|'B2'"),
        changes(u"The detail is empty for reasons that nobody has", unknownReason, 0, u""),
        changes(u"First codes are replaced by names",
                u"Update View03,Canc01 set CnlNo1 =Canc01.CnlName  Where Canc01.CnlNo = View03.CnlNo1 ",
                anyNumber, u"View03 ~1 CnlNo1='忘刷卡'"),
        changes(u"Second codes are replaced by names in any case",
                u"Update View03,Canc01 set CnlNo2 =Canc01.CnlName  Where Canc01.CnlNo = View03.CnlNo2 ",
                anyNumber, u"View03 ~1 CnlNo2='忘刷卡'\nView03 ~2 CnlNo2='公出'"),
        changes(u"A third code whose name is a code is replaced once",
                u"Update View03,Canc01 set CnlNo3 =Canc01.CnlName  Where Canc01.CnlNo = View03.CnlNo3 ",
                anyNumber, u"View03 ~2 CnlNo3='A1'"),
        changes(u"A fourth code without a reason stays a code",
                u"Update View03,Canc01 set CnlNo4 =Canc01.CnlName  Where Canc01.CnlNo = View03.CnlNo4 ",
                anyNumber, u"View03 ~1 CnlNo4='公出'"),
    };
}

} // namespace

StatementTable reportStatements() {
    StatementTable all = choiceStatements();
    for (const StatementTable& part : {figureStatements(), countStatements(), detailStatements()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
