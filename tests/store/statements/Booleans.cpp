#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

// The results of the fixture with a first punch, and those without.
constexpr QStringView Set = u"'00002'|2001-03-05";
constexpr QStringView NotSet = u"'00001'|2001-03-03\n'00001'|2001-03-04\n'00003'|2001-03-05";

/// As many alternatives as no parentheses in each other could hold.
QStringView manyAlternatives() {
    static const QString text = QStringLiteral("SELECT EmpNo From Base06 Where EmpNo = 'a0001'") +
                                QStringLiteral(" or EmpNo = 'x'").repeated(300) +
                                QStringLiteral(" or EmpNo = '00001' and EmpNo = '00001'");
    return text;
}

StatementTable compared() {
    return {
        selects(u"A chain of three hundred alternatives", manyAlternatives(), u"'00001'\n'a0001'"),
        selects(u"A boolean equals minus one where it is true",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 = -1", Set),
        selects(u"A boolean equals one where it is true", u"SELECT EmpNo,UseDate From Atte02 Where FT1 = 1",
                Set),
        selects(u"A boolean equals any number but nought where it is true",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 = 2", Set),
        selects(u"A boolean equals a fraction where it is true",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 = -0.5", Set),
        selects(u"A boolean equals nought where it is false",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 = 0", NotSet),
        selects(u"A boolean is unequal to minus one where it is false",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 <> -1", NotSet),
        selects(u"A boolean is unequal to nought where it is true",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 <> 0", Set),
        selects(u"Minus one on the left equals a boolean that is true",
                u"SELECT EmpNo,UseDate From Atte02 Where -1 = FT1", Set),
        selects(u"A number that is worked out is read as a boolean beside one",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 = 1 - 3", Set),
        selects(u"Minus one equals a comparison that is met",
                u"SELECT EmpNo,UseDate From Atte02 Where (EmpNo = '00001') = -1",
                u"'00001'|2001-03-03\n'00001'|2001-03-04"),
        selects(u"The test for null equals minus one where there is none",
                u"SELECT EmpNo From Base06 Where isnull(LeaveDate) = -1", u"'00001'\n'00002'\n'a0001'"),
        selects(u"A column of numbers is read as a boolean beside one",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 = DelayF",
                u"'00002'|2001-03-05\n'00003'|2001-03-05"),
        selects(u"Quoted text is read as a boolean beside one",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 = 'true'", Set),
        selects(u"A quoted word that is no boolean equals none",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 = 'x'", u""),
        selects(u"A quoted word that is no boolean is unequal to none",
                u"SELECT EmpNo,UseDate From Atte02 Where FT1 <> 'x'", u""),
    };
}

StatementTable written() {
    return {
        changes(u"Minus one is written as true", u"Update Over01 Set Rest = -1 Where OverHours = 3", 1,
                u"Over01 ~3 Rest=1"),
        changes(u"A quoted true is written as true", u"Update Over01 Set Rest = 'TRUE' Where OverHours = 3",
                1, u"Over01 ~3 Rest=1"),
        changes(u"A quoted number is written as a boolean",
                u"Update Over01 Set Rest = '-1' Where OverHours = 3", 1, u"Over01 ~3 Rest=1"),
        changes(u"A quoted word is written as false, and the row is kept",
                u"Update Over01 Set Rest = 'x',Memo = 'y' Where OverHours = 3", 1, u"Over01 ~3 Memo='y'"),
        changes(u"A quoted word takes a true away", u"Update Atte02 Set FT1 = 'x' Where EmpNo = '00002'", 1,
                u"Atte02 ~1 FT1=0"),
        changes(u"A null takes a true away", u"Update Atte02 Set FT1 = Null Where EmpNo = '00002'", 1,
                u"Atte02 ~1 FT1=0"),
        changes(u"A column of words takes a true away",
                u"Update Atte02 Set FT1 = TimeNo Where EmpNo = '00002'", 1, u"Atte02 ~1 FT1=0"),
        changes(u"A comparison with a null is written as false",
                u"Update Over01 Set Rest = (Memo = 'y'),OverHours = 9 Where OverHours = 3", 1,
                u"Over01 ~3 OverHours=9"),
        changes(u"A row is inserted with false in place of a word",
                u"insert into Over01(EmpNo,OverDate,OverHours,Rest,Draw) "
                u"values('00001',#2001/3/7#,1,'x',null)",
                1, u"Over01 +'00001'|'2001-03-07'|null|null|1|null|0|0|null|null"),
    };
}

} // namespace

StatementTable booleanStatements() {
    StatementTable all = compared();
    for (const StatementCase& row : written())
        all.push_back(row);
    return all;
}

} // namespace pontrel::test
