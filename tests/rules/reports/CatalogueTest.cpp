#include "rules/reports/Catalogue.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <QFile>
#include <QTest>

#include <algorithm>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A line of the list of expected formulas, which names a value of its own for each box, date and leave type.
struct Expected {
    QString code, caption;
    std::optional<QString> formula;
};

std::vector<Expected> expectedReports() {
    QFile file(QStringLiteral(PONTREL_FORMULAS));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the list of formulas cannot be read");
    std::vector<Expected> all;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList parts = line.split(u'|');
        all.push_back(
            {parts.at(0), parts.at(1), parts.at(2) == u"-"_s ? std::nullopt : std::optional(parts.at(2))});
    }
    return all;
}

/// Leave types or reasons "00" and on, of which those are selected.
std::vector<ListEntry> entries(int count, const QList<int>& selected) {
    std::vector<ListEntry> list;
    for (int position = 0; position < count; ++position)
        list.push_back({u"%1 事由"_s.arg(position, 2, 10, QLatin1Char('0')), selected.contains(position)});
    return list;
}

std::vector<ListEntry> allEntries(int count) {
    std::vector<ListEntry> list = entries(count, {});
    for (ListEntry& entry : list)
        entry.selected = true;
    return list;
}

/// The choice that the list of expected formulas speaks of.
ReportChoice namedChoice(const Report& report) {
    ReportChoice choice;
    choice.tab = report.tab;
    choice.option = report.option;
    choice.clickedOption = report.option;
    choice.dates = {QDate(2026, 1, 5), QDate(2026, 1, 31), QDate(2025, 12, 1), QDate(2025, 12, 9)};
    choice.combos = {u"k0"_s, u"k1"_s, u"k2"_s, u"k3"_s, u"k4"_s, u"k5"_s, u"6"_s};
    choice.list = allEntries(report.tab == ReportTab::WriteOff ? 31 : 51);
    return choice;
}

QString formulaOf(const ReportChoice& choice) {
    return reportCall(choice).formula.value_or(SelectionFormula{u"left"_s}).text;
}

ReportChoice choiceOf(QStringView code) {
    return namedChoice(*findReport(code));
}

/// The formula is joined all the same, with the text as it stands, and read by nobody.
void expectBroken(const ReportChoice& choice, const QString& text) {
    const SelectionFormula formula = reportCall(choice).formula.value();
    QVERIFY(formula.isBroken);
    QVERIFY2(formula.text.contains(u'\'' + text + u'\''), qPrintable(formula.text));
    QCOMPARE(errorOf([&] { return translateSelection(formula); }), error::Syntax);
}

int errorNumber(const ReportChoice& choice) {
    return errorOf([&] { return reportCall(choice); });
}

} // namespace

Q_DECLARE_METATYPE(ReportFields)

class CatalogueTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theReports();
    void formulas_data();
    void formulas();
    void punchMarks_data();
    void punchMarks();
    void theStoredIndexNamesTheExceptionReports();
    void months_data();
    void months();
    void unselectedLeaveTypesAreEmptyTexts();
    void listsOfOtherLengths();
    void anEntryBehindTheTableIsAnError_data();
    void anEntryBehindTheTableIsAnError();
    void anApostropheInACodeBreaksTheFormula_data();
    void anApostropheInACodeBreaksTheFormula();
    void aComboGoesInWithItsName();
    void namedValues();
    void fields_data();
    void fields();
    void ranges();
    void choicesAreRead();
};

void CatalogueTest::theReports() {
    const std::vector<Expected> expected = expectedReports();
    QCOMPARE(reports().size(), 38U);
    QCOMPARE(expected.size(), 38U);
    for (std::size_t index = 0; index < expected.size(); ++index) {
        QCOMPARE(reports()[index].code, expected[index].code);
        QCOMPARE(reports()[index].caption, expected[index].caption);
        QCOMPARE(findReport(reports()[index].tab, reports()[index].option), &reports()[index]);
        QCOMPARE(findReport(reports()[index].code.toLower()), &reports()[index]);
    }
    QList<qsizetype> options(6);
    for (const Report& report : reports())
        QCOMPARE(qsizetype(report.option), options[static_cast<qsizetype>(report.tab)]++);
    QCOMPARE(options, QList<qsizetype>({11, 3, 10, 6, 4, 4}));
    QCOMPARE(findReport(ReportTab::Roster, 3), nullptr);
    QCOMPARE(findReport(u"A12"), nullptr);
}

/// Each report with boxes that all differ, with those of the start, with empty and with reversed ones.
void CatalogueTest::formulas_data() {
    QTest::addColumn<ReportChoice>("choice");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("formula");
    for (const Expected& expected : expectedReports()) {
        const ReportChoice distinct = choiceOf(expected.code);
        const QString formula = expected.formula.value_or(u"left"_s);
        const QByteArray code = expected.code.toUtf8();
        QTest::addRow("%s, narrowed", code.constData()) << distinct << expected.code << formula;

        const auto replaced = [&](const QStringList& combos, const QStringList& dates) {
            QString text = formula;
            for (qsizetype index = 0; index < 6; ++index)
                text.replace(u"'k%1'"_s.arg(index), u"'@"_s + combos.value(index) + u'\'');
            const QStringList before{u"2026,1,5)"_s, u"2026,1,31)"_s, u"2025,12,1)"_s, u"2025,12,9)"_s};
            for (qsizetype index = 0; index < before.size(); ++index)
                text.replace(before[index], dates.value(index, u"0,0,0"_s) + u"@)"_s);
            return text.replace(u"@"_s, QString());
        };

        ReportChoice start = defaultChoice(distinct.tab, distinct.option);
        start.dates = distinct.dates;
        start.list = distinct.list;
        const QStringList dates{u"2026,1,5"_s, u"2026,1,31"_s, u"2025,12,1"_s, u"2025,12,9"_s};
        QTest::addRow("%s, as opened", code.constData())
            << start << expected.code << replaced(start.combos, dates).replace(u"}) = 6"_s, u"}) = 1"_s);

        ReportChoice empty = distinct;
        empty.combos.fill(QString());
        empty.dates = {};
        QTest::addRow("%s, empty", code.constData())
            << empty << expected.code << replaced({}, {}).replace(u"}) = 6"_s, u"}) = 0"_s);

        ReportChoice reversed = distinct;
        std::ranges::reverse(reversed.dates);
        for (qsizetype index = 0; index < 6; index += 2)
            reversed.combos.swapItemsAt(index, index + 1);
        QTest::addRow("%s, reversed", code.constData())
            << reversed << expected.code
            << replaced(reversed.combos, {dates[3], dates[2], dates[1], dates[0]});
    }
}

void CatalogueTest::formulas() {
    QFETCH(ReportChoice, choice);
    QFETCH(QString, code);
    QFETCH(QString, formula);
    QCOMPARE(reportCall(choice).code, code);
    QCOMPARE(formulaOf(choice), formula);
}

void CatalogueTest::punchMarks_data() {
    QTest::addColumn<int>("mark");
    QTest::addColumn<QString>("added");
    QTest::newRow("the whole day")
        << 0
        << u" and ({Atte02.F1} = True  or {Atte02.F2} = True or {Atte02.F3} = True or {Atte02.F4} = True )"_s;
    QTest::newRow("the morning's arrival") << 1 << u" and {Atte02.F1} = True"_s;
    QTest::newRow("the morning's departure") << 2 << u" and {Atte02.F2} = True"_s;
    QTest::newRow("the afternoon's arrival") << 3 << u" and {Atte02.F3} = True"_s;
    QTest::newRow("the afternoon's departure") << 4 << u" and {Atte02.F4} = True"_s;
}

void CatalogueTest::punchMarks() {
    QFETCH(int, mark);
    QFETCH(QString, added);
    const QString days = formulaOf(choiceOf(u"C01"));
    for (const auto* code : {u"C04", u"C05", u"C06"}) {
        ReportChoice choice = choiceOf(code);
        choice.punchMark = mark;
        QCOMPARE(formulaOf(choice), days + added);
    }
    // The other reports of the tab know no mark.
    ReportChoice other = choiceOf(u"C03");
    other.punchMark = mark;
    QCOMPARE(formulaOf(other), days);
}

void CatalogueTest::theStoredIndexNamesTheExceptionReports() {
    ReportChoice choice = choiceOf(u"C04");
    choice.clickedOption = 5;
    QCOMPARE(reportCall(choice).code, u"C06"_s);
    choice.option = 6;
    choice.clickedOption = 3;
    QCOMPARE(reportCall(choice).code, u"C07"_s);
}

void CatalogueTest::months_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("number");
    QTest::newRow("two digits") << u"12"_s << u"12"_s;
    QTest::newRow("a leading zero") << u"07"_s << u"7"_s;
    QTest::newRow("what follows the number") << u"3月"_s << u"3"_s;
    QTest::newRow("no number") << u"三月"_s << u"0"_s;
    QTest::newRow("a fraction") << u"2.6"_s << u"3"_s;
    QTest::newRow("a half goes to the even number") << u"2.5"_s << u"2"_s;
    QTest::newRow("below zero") << u"-1"_s << u"-1"_s;
    QTest::newRow("the greatest") << u"32767"_s << u"32767"_s;
    QTest::newRow("too great") << u"32768"_s << QString();
}

void CatalogueTest::months() {
    QFETCH(QString, text);
    QFETCH(QString, number);
    ReportChoice choice = choiceOf(u"a09");
    choice.combos[6] = text;
    if (number.isEmpty()) {
        QCOMPARE(errorNumber(choice), error::Overflow);
        return;
    }
    QCOMPARE(formulaOf(choice),
             u" month({Base06.Birth}) = "_s + number + u" and isnull({Base06.LeaveDate}) =true"_s);
}

void CatalogueTest::unselectedLeaveTypesAreEmptyTexts() {
    ReportChoice some = choiceOf(u"D01");
    some.list = entries(51, {1, 3, 50});
    QVERIFY(formulaOf(some).endsWith(
        u" and ({Holi04.HoliNo} = '' or {Holi04.HoliNo} = '01' or {Holi04.HoliNo} = '' and isnull({Base06.LeaveDate}) = true "_s));
    some.option = 3;
    const QString all = formulaOf(some);
    QVERIFY(all.contains(
        u" and isnull({Base06.LeaveDate}) = true  and ({Holi04.HoliNo} = '' or {Holi04.HoliNo} = '01' or {Holi04.HoliNo} = ''  or {Holi04.HoliNo} = '03' or "_s));
    QVERIFY(all.endsWith(u" or {Holi04.HoliNo} = '' or {Holi04.HoliNo} = '50')"_s));
    QCOMPARE(all.count(u"{Holi04.HoliNo}"_s), 51);
    QCOMPARE(all.count(u"= ''"_s), 48);
}

void CatalogueTest::listsOfOtherLengths() {
    QCOMPARE(selectedCodes({}, 3), QStringList({QString(), QString(), QString()}));
    // A one-character code brings the blank behind it, a code of three loses its last.
    QCOMPARE(selectedCodes({{u"1 事假"_s}, {u"123 病假"_s}, {u"9"_s}}, 4),
             QStringList({u"1 "_s, u"12"_s, u"9"_s, QString()}));
    ReportChoice three = choiceOf(u"D02");
    three.list = allEntries(3);
    QVERIFY(formulaOf(three).contains(u"'00' or {Holi04.HoliNo} = '01' or {Holi04.HoliNo} = '02'"_s));
    three.option = 3;
    QCOMPARE(formulaOf(three).count(u"= ''"_s), 48);
}

void CatalogueTest::anEntryBehindTheTableIsAnError_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("most");
    for (const auto* code : {"D01", "D02", "D03", "D04", "D05", "D06"})
        QTest::newRow(code) << QString::fromLatin1(code) << 51;
    for (const auto* code : {"E01", "E02", "E03", "E04"})
        QTest::newRow(code) << QString::fromLatin1(code) << 31;
}

void CatalogueTest::anEntryBehindTheTableIsAnError() {
    QFETCH(QString, code);
    QFETCH(int, most);
    ReportChoice choice = choiceOf(code);
    choice.list = entries(most + 1, {0, most - 1});
    QCOMPARE(errorNumber(choice), 0);
    choice.list.back().selected = true;
    QCOMPARE(errorNumber(choice), error::SubscriptOutOfRange);
    // A long list does no harm to the reports of other tabs.
    ReportChoice other = choiceOf(u"F01");
    other.list = choice.list;
    QCOMPARE(errorNumber(other), 0);
}

void CatalogueTest::anApostropheInACodeBreaksTheFormula_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("combo");
    for (const Report& report : reports())
        for (int combo = 0; combo < 6; ++combo)
            if (report.formula && report.formula->contains(u"[combo %1]"_s.arg(combo)))
                QTest::addRow("%s, box %d", qPrintable(report.code), combo) << report.code << combo;
}

void CatalogueTest::anApostropheInACodeBreaksTheFormula() {
    QFETCH(QString, code);
    QFETCH(int, combo);
    for (const QString& text : {u"00'1"_s, u"' or '1' = '1"_s}) {
        ReportChoice choice = choiceOf(code);
        choice.combos[combo] = text;
        expectBroken(choice, text);
    }
    if (const ReportChoice choice = choiceOf(code); choice.tab == ReportTab::Leave && choice.option < 4) {
        ReportChoice listed = choice;
        listed.list[0].text = u"' 事假"_s;
        expectBroken(listed, u"' "_s);
    }
}

void CatalogueTest::aComboGoesInWithItsName() {
    ReportChoice choice = choiceOf(u"a11");
    choice.combos[2] = u"0001-總務部"_s;
    QCOMPARE(
        formulaOf(choice),
        u"{Base06.UnitNo} >= '0001-總務部' and {Base06.UnitNo} <= 'k3' and isnull({Base06.LeaveDate}) = true"_s);
}

void CatalogueTest::namedValues() {
    ReportChoice choice = choiceOf(u"C01");
    choice.masks = {u"95/01/05"_s, QString()};
    for (const auto* code : {u"B01", u"C01", u"D06", u"E02", u"F04"}) {
        choice.tab = findReport(code)->tab;
        const std::vector<NamedValue> values = periodValues(choice);
        QCOMPARE(values.size(), 2U);
        QCOMPARE(values[0], NamedValue({1, u"Sdate='95/01/05'"_s}));
        QCOMPARE(values[1], NamedValue({2, u"Edate=''"_s}));
    }
    choice.tab = ReportTab::Basic;
    QVERIFY(periodValues(choice).empty());

    QCOMPARE(namedValue(named::Title, u"O'Neil's"_s), NamedValue({0, u"Title='O'Neil's'"_s}));
    QCOMPARE(namedValue(named::Att, u"42"_s), NamedValue({3, u"Att='42'"_s}));
    QCOMPARE(namedValue(named::Cushion, QString()), NamedValue({4, u"Cushion=''"_s}));
    QCOMPARE(namedValue(named::Delay, u"1"_s), NamedValue({5, u"Delay='1'"_s}));
    QCOMPARE(namedValue(named::Earlier, u"2"_s), NamedValue({6, u"Earlier='2'"_s}));
    QCOMPARE(namedValue(named::Absent, u"3"_s), NamedValue({7, u"Absent='3'"_s}));
}

/// What is enabled, told as a text: the masks, the boxes, the list, its caption, the frame of the punch
/// marks.
void CatalogueTest::fields_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("state");
    const auto rows = [](const QStringList& codes, const char16_t* state) {
        for (const QString& code : codes)
            QTest::newRow(qPrintable(code)) << code << QString::fromUtf16(state);
    };
    rows({u"a01"_s, u"a02"_s, u"a03"_s, u"a04"_s, u"a05"_s}, u"M..ss C....... L caption");
    rows({u"a06"_s}, u"M01.. C....... L caption");
    rows({u"a07"_s}, u"M..23 C....... L caption");
    rows({u"a08"_s}, u"M.... C01..... L caption");
    rows({u"a09"_s}, u"M.... C......6 L caption");
    rows({u"a10"_s}, u"M.... C..2345. L caption");
    rows({u"a11"_s}, u"M.... C..23... L caption");
    rows({u"B01"_s, u"B02"_s, u"B03"_s, u"C01"_s, u"C02"_s, u"C03"_s, u"C07"_s, u"C08"_s, u"C09"_s, u"C10"_s,
          u"D01"_s, u"D02"_s, u"D03"_s, u"D04"_s, u"E03"_s, u"F01"_s, u"F02"_s, u"F03"_s, u"F04"_s},
         u"M0123 C0123456 L caption");
    rows({u"C04"_s, u"C05"_s, u"C06"_s}, u"M0123 C0123456 L caption marks");
    rows({u"D05"_s}, u"M0... C0123456");
    rows({u"D06"_s}, u"M0123 C0......");
    rows({u"E01"_s, u"E02"_s, u"E04"_s}, u"M0123 C0123... L caption");
}

void CatalogueTest::fields() {
    QFETCH(QString, code);
    QFETCH(QString, state);
    const ReportFields& fields = findReport(code)->fields;
    QString told = u"M"_s;
    for (int index = 0; index < 4; ++index)
        told += fields.leavesMask(index) ? u"s"_s : fields.mask(index) ? QString::number(index) : u"."_s;
    told += u" C"_s;
    for (int index = 0; index < 7; ++index)
        told += fields.combo(index) ? QString::number(index) : u"."_s;
    told += fields.list ? u" L"_s : QString();
    told += fields.listCaption ? u" caption"_s : QString();
    told += fields.punchMarks ? u" marks"_s : QString();
    // The boxes that a tab does not have play no part.
    if (code == u"E01"_s || code == u"E02"_s || code == u"E04"_s)
        QVERIFY(!fields.combo(4));
    QCOMPARE(told, state);
}

void CatalogueTest::ranges() {
    const auto told = [](ReportTab tab) {
        QStringList lines;
        for (const ReportRange& range : reportRanges(tab))
            lines += u"%1 %2 %3"_s.arg(range.combo).arg(range.caption, range.defaults.join(u'-'));
        return lines;
    };
    const QString employee = u"0 員工代號： 000000-ZZZZZZ"_s;
    const QString unit = u"2 單    位： 0000-ZZZZ"_s;
    const QString workType = u"4 聘僱類別： 0000-ZZZZ"_s;
    QCOMPARE(told(ReportTab::Basic), QStringList({u"0 班    別： 0000-ZZZZ"_s, unit,
                                                  u"4 員工代號： 000000-ZZZZZZ"_s, u"6 月    份： 1"_s}));
    QCOMPARE(told(ReportTab::Roster), QStringList({employee, unit}));
    QCOMPARE(told(ReportTab::Attendance), QStringList({employee, unit, workType}));
    QCOMPARE(told(ReportTab::Leave), QStringList({employee, unit, workType}));
    QCOMPARE(told(ReportTab::WriteOff), QStringList({employee, unit, u"4 註銷次數： 1"_s}));
    QCOMPARE(told(ReportTab::Overtime), QStringList({employee, unit, workType}));
}

void CatalogueTest::choicesAreRead() {
    TestStore store;
    Database& database = store.database();
    addEmployee(database, u"00002"_s, {{u"EmpName", u"乙"}});
    addEmployee(database, u"00001"_s, {{u"EmpName", u"甲"}});
    addEmployee(database, u"00003"_s, {{u"LeaveDate", QDate(2001, 1, 1)}});
    insertRow(database, u"Base02"_s, {{u"UnitNo", u"0100"}, {u"Unit", u"人事課"}});
    insertRow(database, u"Base03"_s, {{u"WorkNo", u"0001"}, {u"WorkType", u"正職"}});
    insertRow(database, u"Base05"_s, {{u"ClsNo", u"D01"}, {u"ClassName", u"日班"}});
    const auto rows = [&](RangeKind kind) { return rowsOfSelection(database, choicesStatement(kind)); };
    // Those who have left are not offered.
    QCOMPARE(rows(RangeKind::Employee), QStringList({u"00001|甲"_s, u"00002|乙"_s}));
    QCOMPARE(rows(RangeKind::Unit), QStringList(u"0100|人事課"_s));
    QCOMPARE(rows(RangeKind::WorkType), QStringList(u"0001|正職"_s));
    QCOMPARE(rows(RangeKind::ShiftClass), QStringList(u"D01|日班"_s));
    // Numbers are offered where the store has nothing to offer.
    for (const RangeKind kind : {RangeKind::Month, RangeKind::WriteOffCount}) {
        QVERIFY(choicesStatement(kind).isEmpty());
        QCOMPARE(numberChoices(kind).constFirst(), u"1"_s);
    }
    QCOMPARE(numberChoices(RangeKind::Month).size(), 12);
    QVERIFY(numberChoices(RangeKind::Unit).isEmpty());
}

QTEST_GUILESS_MAIN(CatalogueTest)
#include "CatalogueTest.moc"
