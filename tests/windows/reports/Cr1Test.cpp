#include "windows/reports/Cr1.h"

#include "paper/TemplateText.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Patience.h"
#include "support/SavedFiles.h"
#include "windows/reports/Previews.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A control for a report of the program over the store, as the report window sets it up.
class Control : public Cr1 {
  public:
    explicit Control(const TestStore& store) {
        setDataFile(store.path());
        showPrint = showExport = true;
        windowState = 2;
    }
    void run(const QString& code) {
        reportFileName = QStringLiteral(PONTREL_REPORTS "/") + code + u".rpt"_s;
        setAction(1);
    }
};

/// A file of that content.
QString written(const QTemporaryDir& folder, const QByteArray& content) {
    const QString path = folder.filePath(u"T01.rpt"_s);
    writeContent(path, content);
    return path;
}

} // namespace

/// What the report control does with its properties, and what it throws.
class Cr1Test : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { qDeleteAll(previews()); }
    void onlyActionOneRuns();
    void theWindowStateMaximises();
    void valuesAndFormulaStayFromRunToRun();
    void aValueRunsFromTheFirstToTheLastApostrophe();
    void whatHasBeenCommittedIsRead();
    void aPreviewGoesWithTheMainWindow();
    void faultsAreThrown_data();
    void faultsAreThrown();
    void formulasThatCannotBeRead_data();
    void formulasThatCannotBeRead();
    void aStoreThatIsNotThere();
    void aTemplateThatIsNotThere();
};

void Cr1Test::onlyActionOneRuns() {
    const TestStore store;
    Control control(store);
    control.reportFileName = u"nowhere.rpt"_s;
    for (const int action : {0, 2, -1})
        control.setAction(action);
    QVERIFY(previews().isEmpty());
    control.run(u"a01"_s);
    QCOMPARE(previews().size(), 1);
    qDeleteAll(previews());
}

void Cr1Test::theWindowStateMaximises() {
    const TestStore store;
    Control control(store);
    control.run(u"a01"_s);
    QVERIFY(previews().constFirst()->isMaximized());
    QCOMPARE(previews().constFirst()->windowTitle(), u"A01 職稱代碼一覽表"_s);
    QCOMPARE(previews().constFirst()->windowModality(), Qt::NonModal);
    qDeleteAll(previews());
    control.windowState = 0;
    control.run(u"a01"_s);
    QVERIFY(!previews().constFirst()->isMaximized());
    qDeleteAll(previews());
}

void Cr1Test::valuesAndFormulaStayFromRunToRun() {
    TestStore store;
    insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"0001"_s}, {u"Title", u"經理"_s}});
    addEmployee(store.database(), u"A01"_s, {{u"TitleNo", u"0001"_s}});
    Control control(store);
    control.setFormula(0, u"Title='範例公司'"_s);
    control.setFormula(3, u"Att='12'"_s);
    control.setFormula(9, u"Nobody='knows this'"_s);
    control.selectionFormula = {u"{Base06.EmpNo} = 'A01'"_s};
    control.run(u"a06"_s);
    control.run(u"a01"_s); // which knows no Att
    QCOMPARE(previews().size(), 2);
    const paper::ReportDocument& titles = previews().constFirst()->document();
    QVERIFY2(titles.textOf(0).contains(u"範例公司"_s), qUtf8Printable(titles.textOf(0)));
    QCOMPARE(titles.rowCount(), std::size_t{1});
    QCOMPARE(previews().constLast()->document().rowCount(), std::size_t{1});
    QCOMPARE(previews().constLast()->document().names().value(u"Att"_s), u"12"_s);
    qDeleteAll(previews());

    // Another one in the same place takes it.
    control.setFormula(0, u"Title='另一家'"_s);
    control.selectionFormula = {u"{Base06.EmpNo} = 'A02'"_s};
    control.run(u"a01"_s);
    const paper::ReportDocument& none = previews().constFirst()->document();
    QVERIFY(none.textOf(0).contains(u"另一家"_s));
    QVERIFY(!none.textOf(0).contains(u"範例公司"_s));
    QCOMPARE(none.rowCount(), std::size_t{0});
    qDeleteAll(previews());
}

void Cr1Test::aValueRunsFromTheFirstToTheLastApostrophe() {
    const TestStore store;
    Control control(store);
    const auto titled = [&](const QString& text) {
        control.setFormula(0, text);
        control.run(u"a01"_s);
        const QString title = previews().constFirst()->document().names().value(u"Title"_s);
        qDeleteAll(previews());
        return title;
    };
    QCOMPARE(titled(u"Title='O'Brien's'"_s), u"O'Brien's"_s);
    QCOMPARE(titled(u"Title='a=b'"_s), u"a=b"_s);
    QCOMPARE(titled(u"Title=''"_s), QString());
    QCOMPARE(titled(u"Title='"_s), QString());
    QCOMPARE(titled(u"Title"_s), QString());
    QCOMPARE(titled(u"='甲'"_s), QString());
}

/// The control reads over a connection of its own: what another one has committed, and nothing else.
void Cr1Test::whatHasBeenCommittedIsRead() {
    TestStore store;
    Control control(store);
    {
        const Stage stage(store.database());
        insertRow(store.database(), u"Base01"_s, {{u"TitleNo", u"0001"_s}});
        control.run(u"a01"_s);
        QCOMPARE(previews().constFirst()->document().rowCount(), std::size_t{0});
        qDeleteAll(previews());
    }
    control.run(u"a01"_s);
    QCOMPARE(previews().constFirst()->document().rowCount(), std::size_t{1});
    qDeleteAll(previews());
}

/// Also where that goes without being closed by the user.
void Cr1Test::aPreviewGoesWithTheMainWindow() {
    const TestStore store;
    auto shell = std::make_unique<Shell>(store);
    Control control(store);
    control.run(u"a01"_s);
    control.run(u"a02"_s);
    const QPointer<ReportPreview> first = previews().constFirst();
    const QPointer<ReportPreview> closed = previews().constLast();
    closed->close();
    QTRY_VERIFY_WITH_TIMEOUT(!closed, PatienceMs);
    QVERIFY(first && first->isVisible());
    shell.reset();
    QVERIFY(!first);
}

void Cr1Test::faultsAreThrown_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text"); // behind the file's name
    QTest::newRow("empty") << QByteArray() << u"T01.rpt 第 1 行第 1 字："_s;
    QTest::newRow("broken") << QByteArray("<report format=\"1\" code=\"T\" caption=\"\">\n <rows")
                            << u"T01.rpt 第 2 行"_s;
    QTest::newRow("unknown element")
        << QByteArray("<report format=\"1\" code=\"T\" caption=\"\">\n  <colum/>\n</report>")
        << u"T01.rpt 第 2 行第 3 字：<colum> 不認得"_s;
    QTest::newRow("unknown field")
        << QByteArray(
               "<report format=\"1\" code=\"T\" caption=\"\"><rows from=\"Base01\"/>\n<columns>\n<column "
               "caption=\"\" width=\"9\">{Base01.Nothing}</column></columns></report>")
        << u"T01.rpt 第 3 行第 "_s;
    QTest::newRow("too wide")
        << QByteArray(
               "<report format=\"1\" code=\"T\" caption=\"\"><rows from=\"Base01\"/>\n<columns>\n<column "
               "caption=\"\" width=\"900\">{Base01.Title}</column></columns></report>")
        << u"T01.rpt 第 "_s;
    QTest::newRow("entities that grow") << QByteArray("<!DOCTYPE report [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY "
                                                      "b \"&a;&a;&a;&a;\">]>\n<report>&b;</report>")
                                        << u"T01.rpt 第 1 行第 "_s;
}

void Cr1Test::faultsAreThrown() {
    QFETCH(const QByteArray, content);
    QFETCH(const QString, text);
    const TestStore store;
    const QTemporaryDir folder;
    Control control(store);
    control.reportFileName = written(folder, content);
    try {
        control.setAction(1);
        QFAIL("nothing was thrown");
    } catch (const paper::TemplateFault& fault) {
        QVERIFY2(fault.text().startsWith(text), qUtf8Printable(fault.text()));
        QVERIFY(fault.line() >= 1 && fault.column() >= 1);
    }
    QVERIFY(previews().isEmpty());
}

void Cr1Test::formulasThatCannotBeRead_data() {
    QTest::addColumn<QString>("formula");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("place");
    QTest::newRow("an apostrophe too many") << u"{Base01.TitleNo} = 'a'b'"_s << error::Syntax << u"23"_s;
    QTest::newRow("an unknown column") << u"{Base01.Nothing} = 'a'"_s << error::UnknownName << u"1"_s;
    QTest::newRow("unlike types") << u"{Base01.TitleNo} = 5"_s << error::TypeMismatch << QString();
}

void Cr1Test::formulasThatCannotBeRead() {
    QFETCH(const QString, formula);
    QFETCH(const int, number);
    QFETCH(const QString, place);
    const TestStore store;
    Control control(store);
    control.selectionFormula = {formula};
    try {
        control.run(u"a01"_s);
        QFAIL("nothing was thrown");
    } catch (const RunTimeError& failure) {
        QCOMPARE(failure.number(), number);
        QVERIFY2(failure.technical().contains(place), qUtf8Printable(failure.technical()));
    }
    QVERIFY(previews().isEmpty());
}

void Cr1Test::aStoreThatIsNotThere() {
    const TestStore store;
    Control control(store);
    control.setDataFile(store.folder() + u"/DB/None.mdb"_s);
    try {
        control.run(u"a01"_s);
        QFAIL("nothing was thrown");
    } catch (const RunTimeError& failure) {
        QCOMPARE(failure.number(), error::StoreNotFound);
    }
    QVERIFY(previews().isEmpty());
}

void Cr1Test::aTemplateThatIsNotThere() {
    const TestStore store;
    Control control(store);
    for (const QString& code : {QString(), u"Z99"_s}) {
        try {
            control.run(code);
            QFAIL("nothing was thrown");
        } catch (const RunTimeError& failure) {
            QCOMPARE(failure.number(), error::FileNotFound);
            QVERIFY2(failure.text().contains(u"/"_s + code + u".rpt"_s), qUtf8Printable(failure.text()));
        }
    }
    // A folder in its place is no template either, nor a file that never ends.
    const QTemporaryDir folder;
    control.reportFileName = folder.path();
    const auto numberOfRun = [&] {
        try {
            control.setAction(1);
        } catch (const RunTimeError& failure) {
            return failure.number();
        }
        return 0;
    };
    QCOMPARE(numberOfRun(), error::FileAccess);
    QFile large(folder.filePath(u"large.rpt"_s));
    QVERIFY(large.open(QIODevice::WriteOnly));
    QVERIFY(large.resize(qint64{1} << 30));
    control.reportFileName = large.fileName();
    QCOMPARE(numberOfRun(), error::FaultyFile);
    QVERIFY(previews().isEmpty());
}

int main(int argc, char** argv) {
    return runTests<Cr1Test>(argc, argv);
}
#include "Cr1Test.moc"
