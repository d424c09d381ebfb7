#include "store/statements/StatementCase.h"

namespace pontrel::test {

namespace {

constexpr QStringView titles = u"Insert into Base01(TitleNo,Title) Values('p1','A%b_c')\n"
                               u"Insert into Base01(TitleNo,Title) Values('p2','axbyc')\n"
                               u"Insert into Base01(TitleNo,Title) Values('p3','7號')\n"
                               u"Insert into Base01(TitleNo,Title) Values('p4','科長室')\n"
                               u"Insert into Base01(TitleNo,Title) Values('p5','')\n"
                               u"Insert into Base01(TitleNo) Values('p6')\n"
                               u"Insert into Base01(TitleNo,Title) Values('p7','C:\\資料\\x')";

StatementCase pattern(QStringView title, QStringView text, QStringView rows) {
    return selects(title, text, rows).after(titles);
}

} // namespace

StatementTable patternStatements() {
    return {
        pattern(u"The star stands for any run of characters",
                u"Select TitleNo From Base01 Where Title like 'a*c'", u"'p1'\n'p2'"),
        pattern(u"The star stands for no character as well",
                u"Select TitleNo From Base01 Where Title like '科長*'", u"'01'\n'p4'"),
        pattern(u"The star stands at both ends", u"Select TitleNo From Base01 Where Title like '*長*'",
                u"'01'\n'p4'"),
        pattern(u"The question mark stands for one character",
                u"Select TitleNo From Base01 Where Title like 'a?b?c'", u"'p1'\n'p2'"),
        pattern(u"The question mark stands for one Han character",
                u"Select TitleNo From Base01 Where Title like '科?'", u"'01'"),
        pattern(u"The number sign stands for one digit", u"Select TitleNo From Base01 Where Title like '#號'",
                u"'p3'"),
        pattern(u"The number sign stands for no letter",
                u"Select TitleNo From Base01 Where TitleNo like 'p#' and Title like '#*'", u"'p3'"),
        pattern(u"Two number signs stand for two digits",
                u"Select TitleNo From Base01 Where TitleNo like '##'", u"'01'\n'02'"),
        pattern(u"A percent sign stands for itself", u"Select TitleNo From Base01 Where Title like 'a%*'",
                u"'p1'"),
        pattern(u"An underscore stands for itself", u"Select TitleNo From Base01 Where Title like '*_c'",
                u"'p1'"),
        pattern(u"A backslash stands for itself", u"Select TitleNo From Base01 Where Title like 'c:\\*'",
                u"'p7'"),
        pattern(u"A pattern ignores the case of letters",
                u"Select TitleNo From Base01 Where Title like 'AXBYC'", u"'p2'"),
        pattern(u"A pattern must be met by the whole text",
                u"Select TitleNo From Base01 Where Title like 'axby'", u""),
        pattern(u"A star alone is met by the empty text and not by a null",
                u"Select TitleNo From Base01 Where Title like '*'",
                u"'01'\n'02'\n'p1'\n'p2'\n'p3'\n'p4'\n'p5'\n'p7'"),
        pattern(u"An empty pattern is met by the empty text alone",
                u"Select TitleNo From Base01 Where Title like ''", u"'p5'"),
        pattern(u"A question mark is not met by the empty text",
                u"Select TitleNo From Base01 Where TitleNo like 'p5' and Title like '?*'", u""),
        pattern(u"A pattern is joined from two pieces",
                u"Select TitleNo From Base01 WHERE Title LIKE '科' & '*'", u"'01'\n'p4'"),
        pattern(u"A pattern is joined from three pieces",
                u"Select TitleNo From Base01 WHERE Title LIKE '*' & '資料' & '*'", u"'p7'"),
        pattern(u"The contrary of a pattern is not met by a null",
                u"Select TitleNo From Base01 Where Not(Title like '?*')", u"'p5'"),
        pattern(u"Keys are found by a start of digits", u"Select TitleNo From Base01 Where TitleNo like '0*'",
                u"'01'\n'02'"),
        pattern(u"Keys are found by a start of letters in any case",
                u"Select TitleNo From Base01 Where TitleNo like 'P' & '*'",
                u"'p1'\n'p2'\n'p3'\n'p4'\n'p5'\n'p6'\n'p7'"),
        pattern(u"A key is found by its whole text", u"Select TitleNo From Base01 Where TitleNo like '02'",
                u"'02'"),
        pattern(u"Keys are found by a start before a wildcard in the middle",
                u"Select TitleNo From Base01 Where TitleNo like '0?'", u"'01'\n'02'"),
        pattern(u"Keys are found by a pattern without a start",
                u"Select TitleNo From Base01 Where TitleNo like '*1'", u"'01'\n'p1'"),
        pattern(u"A start of nothing is met by every key",
                u"Select TitleNo From Base01 Where TitleNo like '*'",
                u"'01'\n'02'\n'p1'\n'p2'\n'p3'\n'p4'\n'p5'\n'p6'\n'p7'"),
        pattern(u"An empty pattern is met by no key", u"Select TitleNo From Base01 Where TitleNo like ''",
                u""),
        pattern(u"Keys that do not meet a pattern are the others",
                u"Select TitleNo From Base01 Where Not(TitleNo like 'p*')", u"'01'\n'02'"),
        pattern(u"A joined text meets a key that stands for the pattern",
                u"Select TitleNo From Base01 Where '0' & '1' like TitleNo", u"'01'"),
        selects(
            u"Keys with signs next to each other in the order are told apart",
            u"Select TitleNo From Base01 Where TitleNo like '9~*' or TitleNo like '@*' or TitleNo like '/*'",
            u"'/'\n'9~'\n'9~~'\n'@a'")
            .after(u"Insert into Base01(TitleNo) Values('9~')\nInsert into Base01(TitleNo) Values('9~~')\n"
                   u"Insert into Base01(TitleNo) Values('9}')\nInsert into Base01(TitleNo) Values('@a')\n"
                   u"Insert into Base01(TitleNo) Values('A')\nInsert into Base01(TitleNo) Values('/')\n"
                   u"Insert into Base01(TitleNo) Values('.9')"),
        selects(u"A letter that a pattern takes for another is found behind a start of it",
                u"Select TitleNo From Base01 Where TitleNo like '0k*'", u"'0K1'\n'0\u212a1'")
            .after(u"Insert into Base01(TitleNo) Values('0\u212a1')\n"
                   u"Insert into Base01(TitleNo) Values('0K1')\nInsert into Base01(TitleNo) Values('0L1')"),
        changes(u"Rows that meet a pattern are deleted",
                u"delete * from Holi03 WHERE BusNo LIKE '20010305' & '*'", 2, u"Holi03 -1 2"),
    };
}

} // namespace pontrel::test
