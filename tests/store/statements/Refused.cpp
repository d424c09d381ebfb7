#include "store/RunTimeError.h"
#include "store/statements/Chains.h"
#include "store/statements/StatementCase.h"

#include <deque>

using namespace Qt::StringLiterals;

namespace pontrel::test {

namespace {

StatementTable apostrophes() {
    return {
        fails(u"An apostrophe breaks an update that would touch no row",
              u"Update Rule03 Set TimeNo = 'A' Where EmpNo = 'O'B'      and Ymd = #2001/3/5#", error::Syntax),
        fails(u"An apostrophe at the end of a value breaks a deletion",
              u"delete * from Canc02  where EmpNo ='0001''     and CnlDate =  #2001/3/5#", error::Syntax),
        fails(u"An apostrophe at the start of a value breaks a selection",
              u"SELECT CnlName FROM Canc01 WHERE CnlNo =''A1'", error::Syntax),
        fails(u"An apostrophe breaks a copy from an empty table",
              u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select EmpNo,Ymd,'A'B' From Rule04",
              error::Syntax),
        fails(u"An apostrophe in a range breaks the selection",
              u"select Distinct ClsNo From Base06 Where ClsNo Between '0'00' and 'ZZZZ'", error::Syntax),
        fails(u"An apostrophe in a pattern breaks the count",
              u"SELECT COUNT(BusNo) as cnt FROM Holi03 WHERE BusNo LIKE '2001'' & '*'", error::Syntax),
        fails(u"An apostrophe that begins a statement of its own breaks the one at hand",
              u"SELECT EmpName FROM Base06 WHERE EmpNo ='x'; delete * from View01 where EmpNo <> ''",
              error::Syntax),
    };
}

StatementTable secondStatements() {
    return {
        fails(u"A second deletion in the text is refused and the first is not run",
              u"delete * from View01; delete * from View03", error::Syntax),
        fails(u"A second deletion without a mark between is refused",
              u"delete * from View01 delete * from View03", error::Syntax),
        fails(u"A second selection is refused", u"Select * from Base01; Select * from Base02", error::Syntax),
        fails(u"A deletion behind a selection is refused",
              u"Select * from Base01 Where TitleNo = '01' delete * from Base01", error::Syntax),
        fails(u"An update behind an insert is refused",
              u"insert into Rule01(hymd)  values(#2001/3/5#); Update Base01 Set Title = 'x'", error::Syntax),
    };
}

StatementTable unknownNames() {
    return {
        fails(u"A table that there is not is told in a selection", u"Select * from Base07",
              error::UnknownTable),
        fails(u"A table that there is not is told in a deletion", u"delete * from Nothing",
              error::UnknownTable),
        fails(u"A table that there is not is told in an update", u"Update Nothing Set EmpNo = '1'",
              error::UnknownTable),
        fails(u"A table that there is not is told in an insert", u"Insert into Nothing(EmpNo) Values('1')",
              error::UnknownTable),
        fails(u"A table that there is not is told in a copy", u"Insert into Atte01 Select * from Nothing",
              error::UnknownTable),
        fails(u"A table that there is not is told in a join",
              u"Select Base06.EmpNo From Base06,Nothing Where Base06.EmpNo = Nothing.EmpNo",
              error::UnknownTable),
        fails(u"The catalogue of the file is no table", u"Select * from sqlite_master", error::UnknownTable),
        fails(u"The catalogue of the file is not changed", u"delete * from sqlite_schema",
              error::UnknownTable),
        fails(u"A column that there is not is told in a list", u"Select Nothing From Base06",
              error::UnknownName),
        fails(u"A column that there is not is told in a condition",
              u"Select EmpNo From Base06 Where Nothing = '1'", error::UnknownName),
        fails(u"A column of another table is told in a condition",
              u"Select EmpNo From Base06 Where TimeName = '1'", error::UnknownName),
        fails(u"A column that there is not is told in an order", u"Select EmpNo From Base06 Order by Nothing",
              error::UnknownName),
        fails(u"A column that there is not is told in a change", u"Update Base06 Set Nothing = '1'",
              error::UnknownName),
        fails(u"A column that there is not is told in an insert",
              u"Insert into Base01(TitleNo,Nothing) Values('03','x')", error::UnknownName),
        fails(u"A column that its table has not is told with its table",
              u"Select Base06.TimeNo From Base06,Rule03 Where Base06.EmpNo = Rule03.EmpNo",
              error::UnknownName),
        fails(u"The engine's own row number is no column", u"Select rowid From Base06", error::UnknownName),
        fails(u"A word without quotes is no text", u"SELECT EmpName FROM Base06 WHERE EmpNo = abc",
              error::UnknownName),
    };
}

StatementTable unknownForms() {
    return {
        fails(u"An empty text is no statement", u"", error::Syntax),
        fails(u"Blanks are no statement", u"   ", error::Syntax),
        fails(u"A word is no statement", u"Hello", error::Syntax),
        fails(u"A table is not dropped", u"Drop table Base01", error::Syntax),
        fails(u"A table is not created", u"Create table Base09(EmpNo text)", error::Syntax),
        fails(u"A table is not altered", u"Alter table Base01 add column x text", error::Syntax),
        fails(u"A setting of the engine is not read", u"PRAGMA table_info(Base01)", error::Syntax),
        fails(u"Another file is not attached", u"Attach database 'x' as y", error::Syntax),
        fails(u"The file is not rebuilt", u"Vacuum", error::Syntax),
        fails(u"A transaction is not begun by statement", u"Begin transaction", error::Syntax),
        fails(u"Rows are not replaced", u"Replace into Base01(TitleNo,Title) Values('01','x')",
              error::Syntax),
        fails(u"Selections are not united", u"Select EmpNo from Base06 union Select EmpNo from Rule03",
              error::Syntax),
        fails(u"A selection does not stand in a condition",
              u"Select EmpNo from Base06 Where EmpNo = (Select EmpNo from Rule03)", error::Syntax),
        fails(u"A remark is not read over", u"Select EmpNo from Base06 -- all of them", error::Syntax),
        fails(u"A remark in the middle is not read over", u"Select EmpNo /* code */ from Base06",
              error::Syntax),
        fails(u"A placeholder is not a value", u"SELECT EmpName FROM Base06 WHERE EmpNo = ?", error::Syntax),
        fails(u"A function of the engine is not called", u"Select load_extension('x') as x From Syst01",
              anyNumber),
        fails(u"A selection of nothing is refused", u"Select", error::Syntax),
        fails(u"A list without a table is refused", u"Select EmpNo", error::Syntax),
        fails(u"A list that ends in a comma is refused", u"Select EmpNo, from Base06", error::Syntax),
        fails(u"A condition that ends early is refused", u"Select EmpNo from Base06 Where", error::Syntax),
        fails(u"A comparison that ends early is refused", u"Select EmpNo from Base06 Where EmpNo =",
              error::Syntax),
        fails(u"A range without its second end is refused",
              u"Select EmpNo from Base06 Where EmpNo between '1'", error::Syntax),
        fails(u"A bracket that is not closed is refused",
              u"Select EmpNo from Base06 Where (EmpNo = '1' or EmpNo = '2'", error::Syntax),
        fails(u"A bracket that was not opened is refused", u"Select EmpNo from Base06 Where EmpNo = '1')",
              error::Syntax),
        fails(u"A bracketed name that is not closed is refused", u"Select [EmpNo from Base06", error::Syntax),
        fails(u"A text that is not closed is refused", u"Select EmpNo from Base06 Where EmpNo = '1",
              error::Syntax),
        fails(u"An order without a column is refused", u"Select EmpNo from Base06 Order by", error::Syntax),
        fails(u"An update without a change is refused", u"Update Base06 Where EmpNo = '1'", error::Syntax),
        fails(u"An update that ends in a comma is refused", u"Update Base06 Set EmpName = 'x',",
              error::Syntax),
        fails(u"An insert without values is refused", u"Insert into Base01(TitleNo,Title)", error::Syntax),
        fails(u"An insert of too few values is refused", u"Insert into Base01(TitleNo,Title) Values('03')",
              anyNumber),
        fails(u"An insert of too many values is refused",
              u"Insert into Base01(TitleNo,Title) Values('03','x','y')", anyNumber),
        fails(u"A copy between tables of different width is refused",
              u"Insert into Atte01 Select * from AtteTemp1", anyNumber),
    };
}

/// Keeps a text that the tables have views of.
QStringView kept(const QString& text) {
    static std::deque<QString> texts;
    return texts.emplace_back(text);
}

/// Every form that makes a statement deeper, a thousand times.
StatementTable chains() {
    static const std::vector<Chain> all = allChains();
    StatementTable table;
    for (const Chain& chain : all) {
        if (chain.deepens && chain.way != Way::Find)
            table.push_back(fails(kept(u"A chain of a thousand is refused, of %1 in %2"_s.arg(
                                      QLatin1String(chain.title), chain.text(0))),
                                  kept(chain.text(1000)), error::Syntax));
    }
    return table;
}

} // namespace

StatementTable refusedStatements() {
    StatementTable all = apostrophes();
    for (const StatementTable& part : {secondStatements(), unknownNames(), unknownForms(), chains()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace pontrel::test
