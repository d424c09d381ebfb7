#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

constexpr QStringView units = u"Insert into Base02(UnitNo,Unit) Values('ZZZZ','x')\n"
                              u"Insert into Base02(UnitNo,Unit) Values('ZZZZ0','x')\n"
                              u"Insert into Base02(UnitNo,Unit) Values('','x')\n"
                              u"Insert into Base02(UnitNo,Unit) Values('0000','x')\n"
                              u"Insert into Base02(UnitNo,Unit) Values('000','x')\n"
                              u"Insert into Base02(UnitNo,Unit) Values('人事','x')";

constexpr QStringView classes = u"insert into AtteTemp(EmpNo,class) values('x','b')\n"
                                u"insert into AtteTemp(EmpNo,class) values('x','a ')\n"
                                u"insert into AtteTemp(EmpNo,class) values('x','C')\n"
                                u"insert into AtteTemp(EmpNo,class) values('x','A')\n"
                                u"insert into AtteTemp(EmpNo,class) values('x','é')\n"
                                u"insert into AtteTemp(EmpNo,class) values('x','Ｄ')";

StatementTable comparisons() {
    return {
        selects(u"Equal texts are told without regard to case",
                u"select EmpNo from Over01 where EmpNo = 'a0001'", u"'A0001'"),
        selects(u"Unequal texts are told without regard to case",
                u"select EmpNo from Base06 where EmpNo <> 'A0001'", u"'00001'\n'00002'\n'00003'\n'00004'"),
        selects(u"Columns of two tables are equal without regard to case",
                u"select Base06.EmpNo,Over01.EmpNo as o from Base06,Over01 "
                u"where Base06.EmpNo = Over01.EmpNo and Base06.UnitNo = 'A300'",
                u"'a0001'|'A0001'"),
        selects(u"Letters beyond A to Z keep their case", u"Select class From AtteTemp Where class = 'É'",
                u"")
            .after(classes),
        selects(u"Wide letters keep their case", u"Select class From AtteTemp Where class = 'ｄ'", u"")
            .after(classes),
        selects(u"A blank at the end makes another text", u"Select class From AtteTemp Where class = 'a'",
                u"'A'")
            .after(classes),
        selects(u"A text with its blank at the end is found",
                u"Select class From AtteTemp Where class = 'A '", u"'a '")
            .after(classes),
        selects(u"A blank in front makes another text", u"SELECT EmpName FROM Base06 WHERE EmpNo =' 00001'",
                u""),
        selects(u"Texts rise without regard to case, a shorter before its continuation",
                u"Select class From AtteTemp Where EmpNo = 'x' Order by class",
                u"'A'\n'a '\n'b'\n'C'\n'é'\n'Ｄ'")
            .after(classes),
        selects(u"Texts fall without regard to case",
                u"Select class From AtteTemp Where EmpNo = 'x' Order by class desc",
                u"'Ｄ'\n'é'\n'C'\n'b'\n'a '\n'A'")
            .after(classes),
        selects(u"A lesser text is told without regard to case",
                u"Select class From AtteTemp Where EmpNo = 'x' and class < 'B'", u"'a '\n'A'")
            .after(classes),
        selects(u"Digits are text in a code", u"SELECT EmpName FROM Base06 WHERE EmpNo ='1'", u""),
    };
}

StatementTable ranges() {
    return {
        selects(u"The range of all holds codes of digits and letters and both its ends",
                u"select UnitNo from Base02 where UnitNo between '0000' and 'ZZZZ'",
                u"'0000'\n'0100'\n'0200'\n'a300'\n'ZZZZ'")
            .after(units),
        selects(u"The range of all holds no continuation of its end",
                u"select UnitNo from Base02 where UnitNo between '0000' and 'ZZZZ' and UnitNo like 'ZZZZ?'",
                u"")
            .after(units),
        selects(u"A range is told without regard to case",
                u"select UnitNo from Base02 where UnitNo between 'A000' and 'zzzz'", u"'a300'\n'ZZZZ'")
            .after(units),
        selects(u"A range from the empty text holds it",
                u"select UnitNo from Base02 where UnitNo between '' and '0000'", u"''\n'000'\n'0000'")
            .after(units),
        selects(u"A range that ends before it begins holds nothing",
                u"select UnitNo from Base02 where UnitNo between 'ZZZZ' and '0000'", u"")
            .after(units),
        selects(u"The range of all employees holds codes shorter than its start",
                u"select EmpNo from Base06 where EmpNo Between '000000' and 'ZZZZZZ'",
                u"'00001'\n'00002'\n'00003'\n'00004'\n'a0001'"),
        selects(u"Han text lies beyond the range of all", u"select UnitNo from Base02 where UnitNo > 'ZZZZ'",
                u"'ZZZZ0'\n'人事'")
            .after(units),
    };
}

StatementTable names() {
    return {
        selects(u"Names stand in brackets everywhere",
                u"SELECT [Over01].[EmpNo],[OverHours] AS [hours] FROM [Over01] WHERE [Over01].[OverDate] = "
                u"#2001/3/5# ORDER BY [EmpNo]",
                u"'00001'|0\n'00002'|2")
            .named(u"EmpNo|hours"),
        selects(u"Names and words are read in any case",
                u"sElEcT eMpNo FrOm bAsE06 wHeRe eMpNaMe = 'ANN LEE' aNd SEX = fAlSe oRdEr By EMPNO",
                u"'a0001'"),
        selects(u"A table's star stands beside single columns",
                u"Select Canc01.CnlNo,Canc01.* From Canc01 Where CnlNo = 'A1'", u"'A1'|'A1'|'忘刷卡'|'常見'"),
        selects(u"Marks of the language mean nothing inside a text",
                u"SELECT EmpName FROM Base06 WHERE EmpNo ='#1;--?*[x]&\\,()%1:a@b$c\"d'", u""),
        changes(u"Marks of the language are stored as they stand",
                u"Insert into Base01(TitleNo,Title) Values('03','#1#;--?*[x]&\\,()%1:a@b$c\"d/*')", 1,
                u"Base01 +'03'|'#1#;--?*[x]&\\,()%1:a@b$c\"d/*'"),
        changes(u"Words of the language are stored as they stand",
                u"Insert into Base01(TitleNo,Title) Values('null','True')", 1, u"Base01 +'null'|'True'"),
        changes(u"Rare Han characters are stored as they stand",
                u"Insert into Base01(TitleNo,Title) Values('04','𠮷野')", 1, u"Base01 +'04'|'𠮷野'"),
        selects(u"A rare Han character is one character of a pattern",
                u"Select TitleNo From Base01 Where Title like '?野'", u"'04'")
            .after(u"Insert into Base01(TitleNo,Title) Values('04','𠮷野')"),
    };
}

} // namespace

StatementTable textStatements() {
    StatementTable all = comparisons();
    for (const StatementTable& part : {ranges(), names()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
