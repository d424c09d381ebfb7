#include "rules/reports/Selection.h"
#include "rules/reports/Catalogue.h"
#include "rules/reports/SelectedRows.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"
#include "support/TestStore.h"

#include <QRegularExpression>
#include <QTest>

#include <random>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// Selection formulas over a few rows, and what is refused.
class SelectionTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void rows_data();
    void rows();
    void refused_data();
    void refused();
    void valuesAreParameters();
    void tablesAndPeriod_data();
    void tablesAndPeriod();
    void theCatalogueIsRead();
    void tooDeepAndTooLong_data();
    void tooDeepAndTooLong();
    void spoiledFormulas_data();
    void spoiledFormulas();

  private:
    TestStore store_;
};

void SelectionTest::initTestCase() {
    Database& database = store_.database();
    const auto employee = [&](const char16_t* EmpNo, const Fields& more) {
        addEmployee(database, QString::fromUtf16(EmpNo), more);
    };
    employee(u"00001", {{u"UnitNo", u"0100"},
                        {u"WorkNo", u"0001"},
                        {u"Birth", QDate(1970, 2, 28)},
                        {u"Sex", true},
                        {u"SickHD", 2.5}});
    employee(u"00002", {{u"UnitNo", u"a300"},
                        {u"WorkNo", u"0001"},
                        {u"Birth", QDate(1971, 12, 1)},
                        {u"Sex", false},
                        {u"LeaveDate", QDate(2001, 3, 6)},
                        {u"SickHD", 3.0}});
    employee(u"00003", {{u"UnitNo", u""},
                        {u"WorkNo", Value()},
                        {u"Birth", Value()},
                        {u"ArriveDate", QDate(2001, 3, 6)},
                        {u"Sex", true},
                        {u"BreakY", 7}});
    const auto day = [&](const char16_t* EmpNo, int dayOfMonth, const char16_t* TimeNo, int DelayF, bool F1) {
        insertRow(database, u"Atte02"_s,
                  {{u"EmpNo", QString::fromUtf16(EmpNo)},
                   {u"UseDate", QDate(2001, 3, dayOfMonth)},
                   {u"TimeNo", QString::fromUtf16(TimeNo)},
                   {u"DelayF", DelayF},
                   {u"F1", F1}});
    };
    day(u"00001", 5, u"A", 0, false);
    day(u"00001", 6, u"B", 1, true);
    day(u"00002", 5, u"C", 3, true);
    day(u"00003", 6, u"D", 0, false);
    day(u"99999", 6, u"E", 0, true); // of nobody
}

void SelectionTest::rows_data() {
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QString>("selected"); // the slots of the Atte02 rows
    const auto row = [](const char* title, const char16_t* formula, const char16_t* selected) {
        QTest::newRow(title) << QString::fromUtf16(formula) << QString::fromUtf16(selected);
    };
    row("an empty formula selects everything", u"", u"ABCDE");
    row("blanks are an empty formula", u" \t\n ", u"ABCDE");
    row("a day", u"{Atte02.UseDate} = date(2001,3,5)", u"AC");
    row("a period", u"{Atte02.UseDate} >= date(2001,3,6) and {Atte02.UseDate} <= date(2001,3,31)", u"BDE");
    row("a period that is reversed",
        u"{Atte02.UseDate} >= date(2001,3,31) and {Atte02.UseDate} <= date(2001,3,1)", u"");
    row("a date of no real day is met by nothing", u"{Atte02.UseDate} >= date(0,0,0)", u"");
    row("a date with nothing in it is none", u"{Atte02.UseDate} >= date(,,)", u"");
    row("the 30th of February is none", u"{Atte02.UseDate} <> date(2001,2,30)", u"");
    row("a year too great is none", u"{Atte02.UseDate} <= date(99999999999,1,1)", u"");
    row("a year below zero is none", u"{Atte02.UseDate} >= date(-1,1,1)", u"");
    row("the last day of all is one", u"{Atte02.UseDate} <= date(9999,12,31)", u"ABCDE");
    row("numbers of a date may have leading zeros and blanks", u"{Atte02.UseDate} = date( 2001 , 03 , 05 )",
        u"AC");
    row("words and names in any case", u"{ATTE02.usedate} = DATE(2001,3,5) AND {atte02.TIMENO} = 'a'", u"A");
    row("blanks within the braces", u"{ Atte02 . TimeNo } = 'A'", u"A");
    row("without blanks", u"{Atte02.F1}=true and{Atte02.TimeNo}>'B'and{Atte02.TimeNo}<'E'", u"C");
    row("text ignores the case of A to Z", u"{Base06.UnitNo} >= 'A300' and {Base06.UnitNo} <= 'A300'", u"C");
    row("two texts ignore it too", u"'a' = 'A'", u"ABCDE");
    row("a prefix comes first", u"{Atte02.EmpNo} >= '000010'", u"CDE");
    row("a Han code is outside the widest range", u"'課' >= '0000' and '課' <= 'ZZZZ'", u"");
    row("so is an empty code", u"{Base06.UnitNo} >= '0000' and {Base06.UnitNo} <= 'ZZZZ'", u"ABC");
    row("blanks at the end count", u"{Atte02.TimeNo} = 'A '", u"");
    row("an empty text", u"{Base06.UnitNo} = ''", u"D");
    row("a null meets no range", u"{Base06.WorkNo} >= '' and {Base06.WorkNo} <= 'ZZZZ'", u"ABC");
    row("a null is not unlike a text", u"{Base06.WorkNo} <> '0002'", u"ABC");
    row("under not a comparison with a null is met", u"not {Base06.WorkNo} = '0001'", u"DE");
    row("not of a parenthesis", u"not ({Base06.WorkNo} = '0001' and {Atte02.TimeNo} = 'A')", u"BCDE");
    row("a test for null", u"isnull({Base06.LeaveDate}) = true", u"ABDE");
    row("a test for null compared with false", u"isnull({Base06.LeaveDate}) = False", u"C");
    row("a test for null alone", u"isnull({Base06.EmpNo})", u"E");
    row("a condition is never null", u"isnull(({Base06.WorkNo} = '0001'))", u"");
    row("a condition compared with false", u"({Base06.WorkNo} = '0001') = false", u"DE");
    row("two conditions compared", u"({Base06.WorkNo} = '0001') = ({Atte02.F1} = true)", u"BCD");
    row("a boolean column alone", u"{Atte02.F1}", u"BCE");
    row("a boolean column of nobody's row", u"{Base06.Sex} = false", u"C");
    row("not of a boolean column", u"not {Atte02.F1}", u"AD");
    row("columns compared with each other",
        u"{Atte02.UseDate} < {Base06.ArriveDate} or {Atte02.UseDate} = {Base06.LeaveDate}", u"");
    row("a whole number", u"{Atte02.DelayF} > 0", u"BC");
    row("a number with a fraction", u"{Base06.SickHD} >= 2.5 and {Base06.SickHD} < 3", u"AB");
    row("a whole number beside a real column", u"{Base06.SickHD} = 3", u"C");
    row("a fraction beside a whole column", u"{Base06.BreakY} > 6.5", u"D");
    row("a number below zero", u"{Atte02.DelayF} > -1", u"ABCDE");
    row("the month of a date", u"month({Base06.Birth}) = 2", u"AB");
    row("a month with two digits", u"month({Base06.Birth}) = 12", u"C");
    row("month 0 is no month", u"month({Base06.Birth}) = 0", u"");
    row("the month of a literal", u"month(date(2001,7,1)) = 7", u"ABCDE");
    row("or comes behind and", u"{Atte02.TimeNo} = 'A' or {Atte02.TimeNo} = 'B' and {Atte02.F1} = false",
        u"A");
    row("a parenthesis binds", u"({Atte02.TimeNo} = 'A' or {Atte02.TimeNo} = 'B') and {Atte02.F1} = true",
        u"B");
    row("an open parenthesis closes at the end",
        u"{Atte02.F1} = true and ({Atte02.TimeNo} = 'A' or {Atte02.TimeNo} = 'B'", u"B");
    row("several close at the end", u"((({Atte02.TimeNo} = 'A' or (isnull({Base06.EmpNo}", u"AE");
    row("within the open one and binds before or",
        u"isnull({Base06.EmpNo}) = false and ({Atte02.TimeNo} = 'A' or {Atte02.TimeNo} = 'C' or "
        u"{Atte02.TimeNo} = 'D' and {Atte02.F1} = true ",
        u"AC");
    row("true", u"true", u"ABCDE");
    row("false", u"FALSE or 1 = 2", u"");
    row("a long chain",
        u"{Atte02.TimeNo} = 'A' or {Atte02.TimeNo} = '1' or {Atte02.TimeNo} = '2' or {Atte02.TimeNo} = '3' "
        u"or {Atte02.TimeNo} = 'E'",
        u"AE");
    row("what looks like the engine's own language is text", u"{Atte02.TimeNo} = 'A\" OR 1=1 --'", u"");
    row("a text beyond the first plane", u"{Atte02.TimeNo} <> '\U00020bb7'", u"ABCDE");
}

void SelectionTest::rows() {
    QFETCH(QString, formula);
    QFETCH(QString, selected);
    QCOMPARE(selectedRows(store_.path(), u"Atte02"_s, u"TimeNo"_s, formula).join(QString()), selected);
}

void SelectionTest::refused_data() {
    QTest::addColumn<QString>("formula");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("place");
    const auto row = [](const char* title, const char16_t* formula, int number, int place) {
        QTest::newRow(title) << QString::fromUtf16(formula) << number << place;
    };
    row("an unknown column", u"{Atte02.Nothing} = '1'", error::UnknownName, 1);
    row("an unknown table", u"true and {Nothing.EmpNo} = '1'", error::UnknownName, 10);
    row("a column without its table", u"{EmpNo} = '1'", error::UnknownName, 1);
    row("nothing in the braces", u"{} = '1'", error::UnknownName, 1);
    row("the accounts", u"{syst02.Account} = 'a'", error::UnknownName, 1);
    row("the accounts in capitals", u"{SYST02.PASSWORD} = 'a'", error::UnknownName, 1);
    row("the engine's own tables", u"{sqlite_schema.name} = 'a'", error::UnknownName, 1);
    row("an unknown function", u"year({Base06.Birth}) = 2", error::UnknownName, 1);
    row("braces that do not end", u"{Atte02.EmpNo = '1'", error::Syntax, 1);
    row("a text that does not end", u"{Atte02.EmpNo} = '1", error::Syntax, 18);
    row("an apostrophe in a text", u"{Atte02.EmpNo} = '1'2'", error::Syntax, 21);
    row("a value behind a comparison", u"{Atte02.EmpNo} = '1' '2'", error::Syntax, 22);
    row("two comparisons without a word", u"{Atte02.F1} = true {Atte02.F2} = true", error::Syntax, 20);
    row("a comparison of three", u"1 = 1 = 1", error::Syntax, 7);
    row("nothing behind a sign", u"{Atte02.EmpNo} =", error::Syntax, 17);
    row("nothing behind and", u"true and ", error::Syntax, 10);
    row("nothing in parentheses", u"true and ()", error::Syntax, 11);
    row("a parenthesis too many", u"(true))", error::Syntax, 7);
    row("not of not", u"not not true", error::Syntax, 5);
    row("a word that means nothing", u"perhaps", error::Syntax, 1);
    row("a character that means nothing", u"true; false", error::Syntax, 5);
    row("a date of the statements", u"{Atte02.UseDate} = #2001/3/5#", error::Syntax, 20);
    row("a date of two numbers", u"{Atte02.UseDate} = date(2001,3)", error::Syntax, 31);
    row("a date of four numbers", u"{Atte02.UseDate} = date(2001,3,5,1)", error::Syntax, 33);
    row("a date with a fraction", u"{Atte02.UseDate} = date(2001,3.5,5)", error::Syntax, 30);
    row("a date of texts", u"{Atte02.UseDate} = date('2001',3,5)", error::Syntax, 25);
    row("a number out of range", u"1 = 1e9", error::Syntax, 6);
    row("a text beside a number", u"{Atte02.EmpNo} = 1", error::TypeMismatch, 16);
    row("a date beside a text", u"{Atte02.UseDate} = '2001/3/5'", error::TypeMismatch, 18);
    row("a time beside a text", u"{Atte02.Time1} = '08:00'", error::TypeMismatch, 16);
    row("a boolean beside a number", u"{Atte02.F1} = 1", error::TypeMismatch, 13);
    row("a text that is no condition", u"'a'", error::TypeMismatch, 1);
    row("a column that is no condition", u"{Atte02.EmpNo} and true", error::TypeMismatch, 1);
    row("a number under not", u"not 1", error::TypeMismatch, 5);
    row("a date in parentheses that is no condition", u"true or (date(2001,1,1))", error::TypeMismatch, 10);
    row("the month of a text", u"month({Base06.EmpName}) = 1", error::TypeMismatch, 1);
}

void SelectionTest::refused() {
    QFETCH(QString, formula);
    QFETCH(int, number);
    QFETCH(int, place);
    try {
        (void)translateSelection(formula);
        QFAIL("the formula was read");
    } catch (const RunTimeError& failure) {
        QCOMPARE(failure.number(), number);
        QVERIFY2(failure.technical().endsWith(u"at character %1"_s.arg(place)),
                 qPrintable(failure.technical()));
        QCOMPARE(failure.statement(), formula);
    }
}

void SelectionTest::valuesAreParameters() {
    const Selection selection = translateSelection(
        u"{Atte02.EmpNo} = 'secret' and {Atte02.UseDate} <= date(2001,3,5) and {Atte02.DelayF} > 47 and {Base06.SickHD} < 1.5 and {Base06.Birth} = date(0,0,0)"_s);
    QCOMPARE(
        selection.condition,
        QByteArray(
            "(((\"Atte02\".\"EmpNo\" = ?1) AND (\"Atte02\".\"UseDate\" <= ?2) AND (\"Atte02\".\"DelayF\" "
            "> ?3) AND (\"Base06\".\"SickHD\" < ?4) AND (\"Base06\".\"Birth\" = ?5)))"));
    QCOMPARE(selection.values, std::vector<Value>({Value(u"secret"), Value(QDate(2001, 3, 5)), Value(47),
                                                   Value(1.5), Value()}));
}

void SelectionTest::tablesAndPeriod_data() {
    QTest::addColumn<QString>("formula");
    QTest::addColumn<QStringList>("tables");
    QTest::addColumn<QDate>("first");
    QTest::addColumn<QDate>("last");
    const QDate fifth(2001, 3, 5);
    const QDate ninth(2001, 3, 9);
    QTest::newRow("none") << QString() << QStringList() << QDate() << QDate();
    QTest::newRow("a period and an arrival")
        << u"{rule03.ymd} >= date(2001,3,5) and {Rule03.Ymd} <= date(2001,3,9) and {Base06.ArriveDate} <= date(2001,3,5)"_s
        << QStringList({u"Rule03"_s, u"Base06"_s}) << fifth << ninth;
    QTest::newRow("a day") << u"{Holi04.HoliDate} = date(2001,3,5) and isnull({Base06.LeaveDate}) = true"_s
                           << QStringList({u"Holi04"_s, u"Base06"_s}) << fifth << fifth;
    QTest::newRow("one bound") << u"{Over01.OverDate} <= date(2001,3,9)"_s << QStringList(u"Over01"_s)
                               << QDate() << ninth;
    QTest::newRow("dates of no real day")
        << u"{Over01.OverDate} >= date(0,0,0) and {Over01.OverDate} <= date(0,0,0)"_s
        << QStringList(u"Over01"_s) << QDate() << QDate();
    QTest::newRow("no date") << u"{Base06.UnitNo} = '1' or {Canc01.CnlNo} = '1'"_s
                             << QStringList({u"Base06"_s, u"Canc01"_s}) << QDate() << QDate();
}

void SelectionTest::tablesAndPeriod() {
    QFETCH(QString, formula);
    QFETCH(QStringList, tables);
    QFETCH(QDate, first);
    QFETCH(QDate, last);
    const Selection selection = translateSelection(formula);
    QStringList named;
    for (const Table* table : selection.tables)
        named += table->name;
    QCOMPARE(named, tables);
    QCOMPARE(selection.first, first);
    QCOMPARE(selection.last, last);
}

/// Each formula of the catalogue is read, and names the table of its report and no other but Base06.
void SelectionTest::theCatalogueIsRead() {
    int read = 0;
    for (const Report& report : reports()) {
        ReportChoice choice = defaultChoice(report.tab, report.option);
        choice.dates.fill(QDate(2001, 3, 5));
        choice.list.assign(30, {u"01 事由"_s});
        const std::optional<SelectionFormula> formula = reportCall(choice).formula;
        if (!formula || formula->text.isEmpty())
            continue;
        const Selection selection = translateSelection(*formula);
        QVERIFY(!selection.condition.isEmpty());
        for (const Table* table : selection.tables)
            QVERIFY2(table->name == selection.tables.front()->name || table->name == u"Base06"_s,
                     qPrintable(report.code));
        // Nothing in it is for the program's own functions, which the engine's connection does not have.
        QVERIFY(!selection.condition.contains("pontrel"));
        ++read;
    }
    QCOMPARE(read, 38 - 5 - 4);
}

void SelectionTest::tooDeepAndTooLong_data() {
    QTest::addColumn<QString>("formula");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("100 parentheses") << u"("_s.repeated(100) + u"true"_s << true;
    QTest::newRow("101 parentheses") << u"("_s.repeated(101) + u"true"_s << false;
    const QString isNull = u"isnull("_s;
    QTest::newRow("66 tests for null") << u"true or "_s + isNull.repeated(66) + u"{Atte02.F1}"_s << true;
    QTest::newRow("67 tests for null") << u"true or "_s + isNull.repeated(67) + u"{Atte02.F1}"_s << false;
    QTest::newRow("conditions in each other") << u"true and (false or "_s.repeated(11) + u"true"_s << true;
    QTest::newRow("too many conditions in each other")
        << u"true and (false or "_s.repeated(12) + u"true"_s << false;
    QTest::newRow("comparisons in each other") << u"true = ("_s.repeated(16) + u"true"_s << true;
    QTest::newRow("opposites in each other") << u"not ("_s.repeated(60) + u"true"_s << true;
    QTest::newRow("a million parentheses") << u"("_s.repeated(1000000) << false;
    QTest::newRow("a chain of 800") << u"true or "_s.repeated(799) + u"true"_s << true;
    QTest::newRow("a chain of 1000") << u"true or "_s.repeated(999) + u"true"_s << false;
    QTest::newRow("a million of a chain") << u"1=1 and "_s.repeated(1000000) << false;
    const QString chain = u"1=1 or "_s.repeated(600) + u"1=1"_s;
    QTest::newRow("many short chains") << (u"("_s + chain + u") and "_s).repeated(20) + u"true"_s << true;
    QTest::newRow("more values than parameters")
        << (u"("_s + chain + u") and "_s).repeated(30) + u"true"_s << false;
    QTest::newRow("deep and long") << (chain.left(7 * 12) + u"not ("_s).repeated(99) + u"true"_s << false;
    QTest::newRow("a long text") << u"{Atte02.TimeNo} <> '"_s + u"長"_s.repeated(1000000) + u'\'' << true;
}

void SelectionTest::tooDeepAndTooLong() {
    QFETCH(QString, formula);
    QFETCH(bool, accepted);
    if (accepted) {
        // What is accepted the engine bears.
        QCOMPARE(selectedRows(store_.path(), u"Atte02"_s, u"TimeNo"_s, formula).size(), 5);
        return;
    }
    try {
        (void)translateSelection(formula);
        QFAIL("the formula was read");
    } catch (const RunTimeError& failure) {
        QCOMPARE(failure.number(), error::Syntax);
    }
}

void SelectionTest::spoiledFormulas_data() {
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 10; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

/// Formulas spoiled at random end in rows or in a run-time error, and what is handed to the engine holds
/// names, signs and numbers of parameters alone.
void SelectionTest::spoiledFormulas() {
    QFETCH(unsigned, seed);
    std::mt19937 random(seed);
    const auto below = [&](qsizetype end) { return end < 2 ? 0 : static_cast<qsizetype>(random()) % end; };
    QStringList corpus;
    for (const Report& report : reports()) {
        ReportChoice choice = defaultChoice(report.tab, report.option);
        choice.dates.fill(QDate(2001, 3, 5));
        choice.list.assign(30, {u"01 事由"_s});
        if (const auto formula = reportCall(choice).formula; formula && !formula->text.isEmpty())
            corpus += formula->text;
    }
    corpus += {u"not ({Atte02.F1} = true) or not isnull({Base06.Birth})"_s,
               u"month(date(2001,7,1)) = 7 and 1.5 <> -2"_s};
    const QStringList odd{u"'"_s,
                          u"{"_s,
                          u"}"_s,
                          u"("_s,
                          u")"_s,
                          u","_s,
                          u"."_s,
                          u"-"_s,
                          u"="_s,
                          u"<>"_s,
                          u"\""_s,
                          u"--"_s,
                          u";"_s,
                          u"/*"_s,
                          u"?1"_s,
                          u":a"_s,
                          u" or "_s,
                          u" and "_s,
                          u"not "_s,
                          u"true"_s,
                          u"date("_s,
                          u"month("_s,
                          u"isnull("_s,
                          u"{Atte02.F1}"_s,
                          u"'x'"_s,
                          u"員工"_s,
                          u"9999999999999999999999"_s,
                          QString(QChar(u'\0')),
                          QString(QChar(0xd800)),
                          QString(QChar(0xfeff))};
    static const QRegularExpression clean(
        uR"(^(\(|\)|"[A-Za-z0-9]+"\."[A-Za-z0-9]+"|\?[0-9]+|[01]|[=<>]+|AND|OR|IS|NOT|NULL|TRUE|COLLATE NOCASE|CAST|substr|, 6, 2|AS INTEGER| )*$)"_s);
    int accepted = 0;
    int refused = 0;
    for (int round = 0; round < 2000; ++round) {
        QString formula = corpus[below(corpus.size())];
        for (qsizetype faults = below(3) == 0 ? below(4) + 1 : 1; faults > 0; --faults) {
            const qsizetype from = below(formula.size() + 1);
            switch (below(6)) {
            case 0:
                formula.remove(from, below(12));
                break;
            case 1:
                formula.insert(from, odd[below(odd.size())]);
                break;
            case 2:
                formula.truncate(from);
                break;
            case 3:
                formula.insert(from, odd[below(odd.size())].repeated(below(300)));
                break;
            case 4: {
                QStringList words = formula.split(u' ');
                words[below(words.size())] = odd[below(odd.size())];
                formula = words.join(u' ');
                break;
            }
            default:
                formula = formula.left(from) + corpus[below(corpus.size())].right(below(60));
                break;
            }
        }
        try {
            const Selection selection = translateSelection(formula);
            QVERIFY2(clean.match(QString::fromUtf8(selection.condition)).hasMatch(),
                     selection.condition.constData());
            const auto known = [&](const Table* table) {
                return table->name == u"Atte02"_s || table->name == u"Base06"_s;
            };
            if (std::all_of(selection.tables.begin(), selection.tables.end(), known))
                QVERIFY(selectedRows(store_.path(), u"Atte02"_s, u"TimeNo"_s, formula).size() <= 5);
            ++accepted;
        } catch (const RunTimeError&) {
            ++refused;
        } catch (const std::exception& failure) {
            QFAIL(qPrintable(formula + u": "_s + QString::fromUtf8(failure.what())));
        }
    }
    // Both must occur, or the faults are too few or too many to try anything.
    QVERIFY2(accepted > 80, qPrintable(QString::number(accepted)));
    QVERIFY2(refused > 200, qPrintable(QString::number(refused)));
}

QTEST_GUILESS_MAIN(SelectionTest)
#include "SelectionTest.moc"
