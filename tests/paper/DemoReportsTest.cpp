#include "paper/DataTable.h"
#include "paper/DemoPrints.h"
#include "paper/GlyphMeasure.h"
#include "paper/PaperSupport.h"
#include "paper/PdfFile.h"
#include "rules/reports/Catalogue.h"
#include "rules/reports/Selection.h"
#include "store/RunTimeError.h"
#include "support/SavedFiles.h"

#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A report over the example organisation, with the number of records that a plain statement counts.
struct Print : DemoPrint {
    QString counted; ///< Tables and condition.
    /// What stands in the last line behind its label: a sum of the records, one of those that meet a further
    /// condition, or the number of different texts in a column.
    struct Total {
        QString sum, condition, distinct;
    };
    QList<Total> totals{};
};

const QDate Monday(2010, 3, 1);
const QDate Sunday(2010, 3, 14);
const QDate NewYear(2010, 1, 1);
const QDate EndOfMarch(2010, 3, 31);

std::vector<Print> prints() {
    const QString roster =
        u"Rule03,Base06 where Rule03.EmpNo = Base06.EmpNo and YMD between #2010/3/1# and #2010/3/14# and "
        "ArriveDate <= #2010/3/1#"_s;
    const QString days =
        u"Atte02,Base06 where Atte02.EmpNo = Base06.EmpNo and UseDate between #2010/3/1# and #2010/3/14# and "
        "ArriveDate <= #2010/3/1#"_s;
    const QString exceptions = days + u" and (F1 = true or F2 = true or F3 = true or F4 = true)"_s;
    const QString punches =
        u"View02,Base06 where View02.EmpNo = Base06.EmpNo and UseDate between #2010/3/1# and #2010/3/14# and "
        "ArriveDate <= #2010/3/1#"_s;
    const QString leave =
        u"Holi04,Base06 where Holi04.EmpNo = Base06.EmpNo and HoliDate between #2010/3/1# and #2010/3/14#"_s;
    const QString some = leave + u" and (HoliNo = '01' or HoliNo = '02' or HoliNo = '03')"_s;
    const QString overtime = u"Over01,Base06 where Over01.EmpNo = Base06.EmpNo and OverDate between "
                             u"#2010/1/1# and #2010/3/31# and "
                             "isnull(LeaveDate) = true"_s;
    const QList<Print::Total> minutes{{u"Sum(Cushion1+Cushion3)"_s, {}, {}},
                                      {u"Sum(Delay1+Delay3)"_s, {}, {}},
                                      {u"Sum(Earlier2+Earlier4)"_s, {}, {}},
                                      {u"count(*)"_s, u" and Expt = true"_s, {}}};
    const QList<Print::Total> lateEarly{minutes[1], minutes[2]};
    const QList<Print::Total> hours{{u"Sum(HoliHours)"_s, {}, {}}};
    const Print::Total heads{{}, {}, u"EmpNo"_s};
    const Print::Total times{u"count(*)"_s, {}, {}};
    const QList<Print::Total> writeOffs{{u"Sum(CnlTimes)"_s, {}, {}}};
    const Print::Total overHours{u"Sum(OverHours)"_s, {}, {}};
    const Print::Total restHours{u"Sum(OverHours)"_s, u" and Rest = true"_s, {}};
    const Print::Total drawHours{u"Sum(OverHours)"_s, u" and Draw = true"_s, {}};
    return {
        {u"a01"_s, {}, {}, {}, u"Base01"_s},
        {u"a02"_s, {}, {}, {}, u"Base02"_s},
        {u"a03"_s, {}, {}, {}, u"Base03"_s},
        {u"a04"_s, {}, {}, {}, u"Holi01"_s},
        {u"a05"_s, {}, {}, {}, u"Canc01"_s},
        {u"a06"_s,
         QDate(2008, 1, 1),
         QDate(2010, 12, 31),
         {},
         u"Base06 where ArriveDate between #2008/1/1# and #2010/12/31#"_s},
        {u"a07"_s, NewYear, EndOfMarch, {}, u"Base06 where LeaveDate between #2010/1/1# and #2010/3/31#"_s},
        {u"a08"_s, {}, {}, {}, u"Base06 where isnull(LeaveDate) = true"_s},
        {u"a09"_s,
         {},
         {},
         {{6, u"5"_s}},
         u"Base06 where isnull(LeaveDate) = true and format(Birth,'mm') = '05'"_s},
        {u"a10"_s,
         {},
         {},
         {{2, u"6000"_s}, {3, u"6100"_s}},
         u"Base06 where isnull(LeaveDate) = true and UnitNo between '6000' and '6100'"_s},
        {u"a11"_s, {}, {}, {}, u"Base06 where isnull(LeaveDate) = true"_s},
        {u"B01"_s, Monday, Sunday, {}, roster},
        {u"B02"_s, Monday, Sunday, {}, roster},
        {u"B03"_s, Monday, Sunday, {}, u"Rule04"_s},
        {u"C01"_s, Monday, Sunday, {}, days, minutes},
        {u"C02"_s, Monday, Sunday, {}, days, minutes},
        {u"C03"_s,
         Monday,
         Sunday,
         {{0, u"10019"_s}, {1, u"10031"_s}},
         days + u" and Base06.EmpNo between '10019' and '10031'"_s,
         minutes},
        {u"C04"_s, Monday, Sunday, {}, exceptions, minutes},
        {u"C05"_s, Monday, Sunday, {}, exceptions, minutes},
        {u"C06"_s, Monday, Sunday, {}, exceptions, minutes},
        {u"C07"_s, Monday, Sunday, {}, punches},
        {u"C08"_s, Monday, Sunday, {}, punches},
        {u"C09"_s, Monday, Sunday, {}, days + u" and F1 = true and Expt = true"_s},
        {u"C10"_s, Monday, Sunday, {}, days + u" and DelayF > 0"_s, lateEarly},
        {u"D01"_s, Monday, Sunday, {}, some, {times, hours[0]}},
        {u"D02"_s, Monday, Sunday, {}, some, {heads, times, hours[0]}},
        {u"D03"_s, Monday, Sunday, {}, some, hours},
        {u"D04"_s, Monday, Sunday, {}, leave, hours},
        // Two of one unit are away.
        {u"D05"_s, QDate(2010, 3, 10), {}, {}, leave + u" and HoliDate = #2010/3/10#"_s, hours},
        {u"D06"_s, Monday, Sunday, {{0, u"10022"_s}}, leave + u" and Holi04.EmpNo = '10022'"_s, hours},
        {u"E01"_s, NewYear, EndOfMarch, {}, u"View01 where CnlTimes > 0"_s, writeOffs},
        {u"E02"_s,
         NewYear,
         EndOfMarch,
         {},
         u"Canc02,Base06 where Canc02.EmpNo = Base06.EmpNo and isnull(LeaveDate) = true"_s},
        {u"E03"_s, NewYear, EndOfMarch, {{4, u"2"_s}}, u"View01 where CnlTimes >= 2"_s, writeOffs},
        {u"E04"_s,
         Monday,
         EndOfMarch,
         {},
         u"View01 where CnlTimes > 0 or AddUpTimes > 0"_s,
         {writeOffs[0], {u"Sum(AddUpTimes)"_s, {}, {}}}},
        {u"F01"_s, NewYear, EndOfMarch, {}, overtime, {overHours}},
        {u"F02"_s, NewYear, EndOfMarch, {}, overtime, {times, overHours, restHours, drawHours}},
        {u"F03"_s, NewYear, EndOfMarch, {}, overtime, {overHours, restHours, drawHours}},
        {u"F04"_s, NewYear, EndOfMarch, {}, overtime, {heads, times, overHours}},
    };
}

/// Line ends stay.
QString withoutBlanks(QString text) {
    text.removeIf([](QChar character) { return character.isSpace() && character != u'\n'; });
    return text;
}

} // namespace

/// Each report printed over the example organisation after its ten days have been read.
class DemoReportsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void eachIsListed();
    void reports_data();
    void reports();
    void withoutRecords_data() { reports_data(); }
    void withoutRecords();
    void plainListsRunWithAFormulaLeftOver_data();
    void plainListsRunWithAFormulaLeftOver();

  private:
    [[nodiscard]] QStringList totalsOf(const Print& print);
    [[nodiscard]] QStringList employeesOf(const Print& print);
    static void checkPages(const ReportDocument& document);
    void checkTotals(const Print& print, const ReportDocument& document);
    void checkPdf(const Print& print, const ReportDocument& document);
    void checkTable(const ReportDocument& document);

    DemoPrints demo_;
    TestStore& store_ = demo_.store();
};

/// The totals as plain statements tell them; those that are nought are not printed in blank columns.
QStringList DemoReportsTest::totalsOf(const Print& print) {
    QStringList totals;
    for (const Print::Total& total : print.totals) {
        const QString& tables = print.counted;
        if (total.distinct.isEmpty())
            totals += store_.database()
                          .select(u"select "_s + total.sum + u" as cnt from "_s + tables + total.condition)
                          .at(0, 0)
                          .joined();
        else
            totals += QString::number(store_.database()
                                          .select(u"select distinct "_s + tables.section(u',', 0, 0) + u'.' +
                                                  total.distinct + u" from "_s + tables)
                                          .count());
    }
    return totals;
}

/// Whose records a report tells one by one or in sums of his.
QStringList DemoReportsTest::employeesOf(const Print& print) {
    const QString table = print.counted.section(u',', 0, 0).section(u' ', 0, 0);
    QStringList codes;
    if (findTable(table)->indexOf(u"EmpNo") < 0 || print.code == u"D02"_s || print.code == u"F04"_s)
        return codes;
    for (const auto& row :
         store_.database().select(u"select distinct "_s + table + u".EmpNo from "_s + print.counted))
        codes += row.at(0).joined();
    return codes;
}

void DemoReportsTest::eachIsListed() {
    QStringList listed;
    for (const Print& print : prints())
        listed += print.code;
    QStringList all;
    for (const Report& report : pontrel::reports())
        all += report.code;
    QCOMPARE(listed, all);
}

void DemoReportsTest::reports_data() {
    QTest::addColumn<int>("index");
    int index = 0;
    for (const Print& print : prints())
        QTest::newRow(qPrintable(print.code)) << index++;
}

void DemoReportsTest::reports() {
    QFETCH(int, index);
    const Print print = prints().at(static_cast<std::size_t>(index));
    const std::shared_ptr<const ReportDocument> document = demo_.print(print);
    const std::int64_t expected =
        store_.database().select(u"select count(*) as cnt from "_s + print.counted).at(0, 0).toInteger();
    QCOMPARE(static_cast<std::int64_t>(document->rowCount()), expected);
    // Nothing fills the table of B03; every other report has something to say.
    QCOMPARE(expected > 0, print.code != u"B03"_s);

    checkPages(*document);
    if (!QTest::currentTestFailed())
        checkTotals(print, *document);
    if (!QTest::currentTestFailed())
        checkPdf(print, *document);
    if (!QTest::currentTestFailed())
        checkTable(*document);
}

/// Saved as a table, each column is told from the others, and whoever has a code has a name.
void DemoReportsTest::checkTable(const ReportDocument& document) {
    const DataTable table(document);
    QStringList captions;
    for (const PlainTable::Column& column : table.columns())
        captions << column.caption;
    QVERIFY2(!captions.contains(QString()), qPrintable(captions.join(u'|')));
    QVERIFY2(QSet<QString>(captions.begin(), captions.end()).size() == captions.size(),
             qPrintable(captions.join(u'|')));
    QCOMPARE(captions.contains(u"員工碼"_s) || captions.contains(u"員工代碼"_s),
             captions.contains(u"姓名"_s));
}

/// Furniture on each page, nothing beyond its margins, nothing cut.
void DemoReportsTest::checkPages(const ReportDocument& document) {
    const Template& layout = document.layout();
    for (int page = 0; page < document.pageCount(); ++page) {
        const QString text = document.textOf(page);
        QVERIFY(text.contains(u"範例實業股份有限公司"_s));
        QVERIFY(text.contains(layout.caption));
        QVERIFY(text.contains(u"第 %1 頁，共 %2 頁"_s.arg(page + 1).arg(document.pageCount())));
        QVERIFY(text.contains(u"列印日期：099/04/01"_s));
        QVERIFY(text.endsWith(layout.code.toUpper()));
        for (const Item& item : itemsOf(document, page)) {
            QVERIFY(item.x >= layout.margin && item.x + item.width <= layout.paperWidth - layout.margin);
            QVERIFY(item.y >= layout.margin && item.y + item.height <= layout.paperHeight - layout.margin);
            // Nothing shrinks but the longest texts.
            QVERIFY2(!item.text.contains(u'…'), qPrintable(item.text));
            QVERIFY2(item.scale >= 80, qPrintable(item.text));
        }
    }
}

/// The last line tells the totals of all records.
void DemoReportsTest::checkTotals(const Print& print, const ReportDocument& document) {
    const QStringList last = linesOf(document, document.pageCount() - 1);
    const QStringList end = last.at(last.size() - 2).split(u'|');
    QVERIFY2(end.front().contains(u"計"_s) || end.front().contains(u"共"_s) ||
                 end.front().contains(u"請假人數"_s),
             qPrintable(end.front()));
    QStringList totals = totalsOf(print);
    // Days of eight hours and the hours left stand behind the hours.
    if (print.code == u"D01"_s || print.code == u"D02"_s)
        totals += u"%1.%2"_s.arg(totals.last().toInt() / 8).arg(totals.last().toInt() % 8);
    if (print.code != u"B03"_s)
        QCOMPARE(end.mid(1), totals);
}

/// Another program reads the same from the file, line by line, and the records' texts among it.
void DemoReportsTest::checkPdf(const Print& print, const ReportDocument& document) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"report.pdf"_s);
    QVERIFY(savePdf(document, path));
    const QStringList pages = pdfPages(path);
    QCOMPARE(pages.size(), document.pageCount());
    for (int page = 0; page < pages.size(); ++page) {
        QStringList expected;
        for (const QString& line : linesOf(document, page))
            expected += withoutBlanks(line).remove(u'|');
        expected.removeAll(QString());
        const QString packed = withoutBlanks(pages.at(page));
        // Days side by side come one by one and are read line by line.
        if (document.layout().rows == RowKind::Flow)
            QVERIFY(
                std::ranges::all_of(expected, [&](const QString& each) { return packed.contains(each); }));
        else
            QCOMPARE(packed.split(u'\n', Qt::SkipEmptyParts), expected);
    }
    const QString read = pages.join(u'\n');
    const QStringList words = read.split(QRegularExpression(u"\\s+"_s));
    for (const QString& EmpNo : employeesOf(print))
        QVERIFY2(words.contains(EmpNo) || read.contains(u'：' + EmpNo), qPrintable(EmpNo));
    const Template& layout = document.layout();
    const QString packed = withoutBlanks(read);
    for (const Cell& cell : layout.cells) {
        if (layout.rows == RowKind::Summary || cell.fit == Fit::Wrap || cell.fields.size() != 1 ||
            layout.field(cell.fields.front()).type() != ColumnType::Text)
            continue;
        for (std::size_t row = 0; row < document.rowCount(); ++row) {
            const QString value = document.rows().value(row, cell.fields.front()).joined();
            QVERIFY2(packed.contains(withoutBlanks(value)), qPrintable(value));
        }
    }
}

/// A report of nothing is one page with its heading, its captions and an end that counts nought.
void DemoReportsTest::withoutRecords() {
    QFETCH(int, index);
    const QString code = prints().at(static_cast<std::size_t>(index)).code;
    const Template layout = readTemplate(QStringLiteral(PONTREL_REPORTS "/") + code + u".rpt"_s);
    const auto document =
        ReportDocument::make(store_.path(), layout, translateSelection(u"false"), {{u"Title"_s, u"範例"_s}},
                             QDate(2010, 4, 1), std::make_shared<GlyphMeasure>(layout));
    QCOMPARE(document->rowCount(), std::size_t{0});
    QCOMPARE(document->pageCount(), 1);
    const QStringList lines = linesOf(*document, 0);
    QCOMPARE(lines.first(), u"範例"_s);
    QCOMPARE(lines.at(1), layout.caption);
    QVERIFY(lines.at(2).endsWith(u"第 1 頁，共 1 頁"_s));
    QCOMPARE(lines.last(), code.toUpper());
    QStringList captions;
    for (const Cell& cell : layout.cells)
        captions += cell.caption;
    if (layout.rows == RowKind::Columns || layout.rows == RowKind::Summary)
        QVERIFY(lines.contains(captions.join(u'|')));
    static const QRegularExpression nought(u"^[^1-9]*$"_s);
    QVERIFY2(nought.match(lines.at(lines.size() - 2)).hasMatch(), qPrintable(lines.at(lines.size() - 2)));
}

void DemoReportsTest::plainListsRunWithAFormulaLeftOver_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("arrived"); // rows where somebody arrived from 2009 on
    QTest::newRow("titles") << u"a01"_s
                            << u"select distinct TitleNo from Base06 where ArriveDate >= #2009/1/1#"_s;
    QTest::newRow("units") << u"a02"_s
                           << u"select distinct UnitNo from Base06 where ArriveDate >= #2009/1/1#"_s;
    QTest::newRow("employment types")
        << u"a03"_s << u"select distinct WorkNo from Base06 where ArriveDate >= #2009/1/1#"_s;
    // Without a relation all of them, for somebody arrived.
    QTest::newRow("leave types") << u"a04"_s << u"select HoliNo from Holi01"_s;
    QTest::newRow("reasons") << u"a05"_s << u"select CnlNo from Canc01"_s;
}

void DemoReportsTest::plainListsRunWithAFormulaLeftOver() {
    QFETCH(QString, code);
    QFETCH(QString, arrived);
    const Template layout = readTemplate(QStringLiteral(PONTREL_REPORTS "/") + code + u".rpt"_s);
    const auto codesOf = [&](const QString& formula) {
        const auto document = ReportDocument::make(store_.path(), layout, translateSelection(formula), {},
                                                   QDate(2010, 4, 1), std::make_shared<GlyphMeasure>(layout));
        QStringList codes;
        for (std::size_t row = 0; row < document->rowCount(); ++row)
            codes += document->rows().value(row, layout.cells.front().fields.front()).joined();
        return codes;
    };
    QStringList expected;
    for (const auto& row : store_.database().select(arrived))
        expected += row.at(0).joined();
    QCOMPARE(codesOf(u"{Base06.ArriveDate} >= date(2009,1,1) and {Base06.ArriveDate} <= date(2010,12,31)"_s),
             expected);
    QVERIFY(!expected.isEmpty());
    QCOMPARE(codesOf(u"{Base06.ArriveDate} >= date(0,0,0)"_s), QStringList());
}

QTEST_MAIN(DemoReportsTest)
#include "DemoReportsTest.moc"
