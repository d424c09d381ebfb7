#include "paper/TemplateReader.h"
#include "rules/reports/Catalogue.h"
#include "rules/reports/Selection.h"
#include "store/RunTimeError.h"

#include <QDir>
#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;
using namespace Qt::StringLiterals;

/// The templates of the reports, beside the catalogue.
class ReportFilesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void oneForEachReport();
    void templates_data();
    void templates();
    void formulasSpeakOfTheirTables_data() { templates_data(); }
    void formulasSpeakOfTheirTables();
};

namespace {

QString pathOf(const Report& report) {
    return QStringLiteral(PONTREL_REPORTS "/") + report.code + u".rpt"_s;
}

/// Whether a value of that name stands in the pieces.
bool names(const Pieces& pieces, QStringView name) {
    return std::any_of(pieces.begin(), pieces.end(), [&](const Piece& piece) {
        return piece.text == name && piece.kind != Piece::Kind::Literal;
    });
}

bool headingNames(const Template& made, QStringView name) {
    return std::any_of(made.heading.begin(), made.heading.end(), [&](const TextLine& line) {
        return names(line.content, name) || names(line.left, name) || names(line.right, name);
    });
}

bool headingHas(const Template& made, Piece::Kind kind) {
    const auto has = [&](const Pieces& pieces) {
        return std::any_of(pieces.begin(), pieces.end(),
                           [&](const Piece& piece) { return piece.kind == kind; });
    };
    return std::any_of(made.heading.begin(), made.heading.end(), [&](const TextLine& line) {
        return has(line.content) || has(line.left) || has(line.right);
    });
}

} // namespace

void ReportFilesTest::oneForEachReport() {
    QStringList files;
    for (const Report& report : reports())
        files += report.code + u".rpt"_s;
    files.sort();
    // In the case of their codes.
    QStringList found = QDir(QStringLiteral(PONTREL_REPORTS)).entryList(QDir::Files);
    found.sort();
    QCOMPARE(found, files);
}

void ReportFilesTest::templates_data() {
    QTest::addColumn<const Report*>("report");
    for (const Report& report : reports())
        QTest::newRow(qPrintable(report.code)) << &report;
}

/// Each is read without fault and has what every report has: title, caption, page of pages, date of printing,
/// its code in the foot, and the period where its tab has one.
void ReportFilesTest::templates() {
    QFETCH(const Report*, report);
    try {
        const Template made = readTemplate(pathOf(*report));
        QCOMPARE(made.code, report->code);
        QCOMPARE(made.caption, report->caption);
        QVERIFY(headingNames(made, u"Title"));
        QVERIFY(headingNames(made, u"Caption"));
        QVERIFY(headingNames(made, u"Today"));
        QVERIFY(headingHas(made, Piece::Kind::Page) && headingHas(made, Piece::Kind::Pages));
        QCOMPARE(headingNames(made, u"Period"), report->tab != ReportTab::Basic);
        QVERIFY(made.hasFoot && !made.foot.left.empty());
        const Piece& code = made.foot.left.front();
        if (report->tab == ReportTab::Basic)
            QCOMPARE(code.text, report->code.toUpper());
        else
            QVERIFY(code.kind == Piece::Kind::Named && code.text == u"Code");
        QCOMPARE(headingNames(made, u"Att"), report->preparation == Preparation::Headcount);
        for (const QString& sum : {u"Cushion"_s, u"Delay"_s, u"Earlier"_s, u"Absent"_s})
            QCOMPARE(headingNames(made, sum), report->preparation == Preparation::EmployeeSums);
        QVERIFY(made.hasEnd);
    } catch (const RunTimeError& fault) {
        QFAIL(qPrintable(fault.text()));
    }
}

/// A report's formula names the table of its rows, and no other but one that the template looks up.
void ReportFilesTest::formulasSpeakOfTheirTables() {
    QFETCH(const Report*, report);
    const Template made = readTemplate(pathOf(*report));
    ReportChoice choice = defaultChoice(report->tab, report->option);
    choice.dates.fill(QDate(2001, 3, 5));
    const std::optional<SelectionFormula> formula = reportCall(choice).formula;
    for (const Table* table : translateSelection(formula.value_or(SelectionFormula())).tables) {
        const bool lookedUp = std::any_of(made.lookUps.begin(), made.lookUps.end(),
                                          [&](const LookUp& each) { return each.table == table; });
        QVERIFY2(table == made.from || lookedUp, qPrintable(table->name));
    }
    // Whoever has rows of an employee tells his name.
    if (made.from->indexOf(u"EmpNo") >= 0 && made.from->name != u"Base06"_s)
        QCOMPARE(made.lookUps.front().table, findTable(u"Base06"));
    // What the plain lists may be left with speaks of Base06, which three of them have a relation to.
    if (!formula)
        QCOMPARE(made.related.size(), report->option < 3 ? 1U : 0U);
}

QTEST_GUILESS_MAIN(ReportFilesTest)
#include "ReportFilesTest.moc"
