#include "app/ProgressBox.h"
#include "paper/CsvFile.h"
#include "store/RunTimeError.h"
#include "support/Patience.h"
#include "support/PressWhenShown.h"
#include "support/SavedFiles.h"
#include "windows/reports/PreviewFixture.h"
#include "windows/reports/Printing.h"

#include <QAbstractPrintDialog>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QPageRanges>
#include <QPrintDialog>
#include <QPrinter>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The numbers that the pages of a PDF bear.
QList<int> pageNumbers(const QString& path, int pageCount) {
    const QRegularExpression number(u"(\\d+) ?/ ?%1\\b"_s.arg(pageCount));
    QList<int> numbers;
    for (const QString& text : pdfPages(path))
        numbers << number.match(text).captured(1).toInt();
    return numbers;
}

/// Sets the dialog to print into a file.
void choosePdf(QPrintDialog& dialog, const QString& path) {
    auto& printers = control<QComboBox>(dialog, u"printers"_s);
    printers.setCurrentIndex(printers.count() - 1); // the files stand behind the printers
    control<QLineEdit>(dialog, u"filename"_s).setText(path);
}

/// A machine without a printer says so ahead of the dialog.
void expectPrintDialog(PreviewFixture& fixture, const std::function<void(QPrintDialog&)>& action) {
    fixture.answers.expectMsgBox();
    fixture.answers.expect(u"PrintDialog"_s,
                           [action](QWidget& dialog) { action(static_cast<QPrintDialog&>(dialog)); });
}

} // namespace

/// What leaves a preview: files, and paper of a machine without a printer. One that has one is tried in
/// PrinterTest.
class PreviewOutputTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { setProgressDelay(-1); }

    void savesAsPdf();
    void savesTheData();
    void aFileIsReplacedAfterAQuestion();
    void whatIsCancelledLeavesNothing_data();
    void whatIsCancelledLeavesNothing();
    void whatFailsIsTold();
    void theProgressTells();
    void printsRangesIntoAFile();
    void printsTheCurrentPage();
    void aDeadPrinterIsTold();
    void printingCanBeCancelled();
    void pagesAreOrdered_data();
    void pagesAreOrdered();
    void pagesArePlaced_data();
    void pagesArePlaced();
};

void PreviewOutputTest::savesAsPdf() {
    PreviewFixture fixture;
    fixture.open();
    QString proposed;
    fixture.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        proposed = control<QLineEdit>(dialog, u"fileNameEdit"_s).text();
        auto& name = control<QLineEdit>(dialog, u"fileNameEdit"_s);
        name.setText(fixture.folder.filePath(u"名冊"_s)); // without an ending
        QTest::keyClick(&name, Qt::Key_Return);
    });
    fixture.key(Qt::Key_S, Qt::ControlModifier);
    const QString path = fixture.folder.filePath(u"名冊.pdf"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(proposed, u"X01 員工名冊.pdf"_s);
    QCOMPARE(fixture.files(), QStringList{u"名冊.pdf"_s});
    QCOMPARE(fixture.label(u"LblStatus"_s), u"已存成 %1"_s.arg(path));
    const QStringList pages = pdfPages(path);
    QCOMPARE(pages.size(), fixture.pageCount());
    for (const QString& page : pages)
        QVERIFY(page.contains(u"範例公司"_s) && page.contains(u"員工名冊"_s));
    QVERIFY(pages.constLast().contains(u"共 360 人"_s));
    // The next one is offered in the same folder.
    fixture.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        QCOMPARE(static_cast<QFileDialog&>(dialog).directory().path(), fixture.folder.path());
        static_cast<QFileDialog&>(dialog).reject();
    });
    fixture.key(Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.files().size(), 1);
}

void PreviewOutputTest::savesTheData() {
    PreviewFixture fixture;
    fixture.open();
    const QString csv = fixture.folder.filePath(u"a.csv"_s);
    const QString sheet = fixture.folder.filePath(u"a.xlsx"_s);
    fixture.answers.expectFile(csv);
    fixture.key(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    const QString expected = fixture.folder.filePath(u"b.csv"_s);
    QVERIFY(paper::saveCsv(fixture.preview().document(), expected));
    QCOMPARE(contentOf(csv), contentOf(expected));
    QCOMPARE(contentOf(csv).count("\r\n"), 361);
    fixture.answers.expectFile(sheet);
    fixture.key(Qt::Key_E, Qt::ControlModifier);
    QVERIFY(contentOf(sheet).startsWith("PK"));
    QCOMPARE(fixture.label(u"LblStatus"_s), u"已存成 %1"_s.arg(sheet));
    QCOMPARE(fixture.files(), (QStringList{u"a.csv"_s, u"a.xlsx"_s, u"b.csv"_s}));
    QCOMPARE(fixture.answers.trouble(), QString());
}

void PreviewOutputTest::aFileIsReplacedAfterAQuestion() {
    PreviewFixture fixture;
    fixture.open();
    const QString path = fixture.folder.filePath(u"a.pdf"_s);
    writeContent(path, "old");
    // No leads back to the dialog, which is left.
    fixture.answers.expectFile(path).expectMsgBox(MsgAnswer::No).expectFile({});
    fixture.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().at(1).text, u"檔案「a.pdf」已經存在，要取代它嗎？"_s);
    QCOMPARE(contentOf(path), QByteArray("old"));
    fixture.answers.expectFile(path).expectMsgBox(MsgAnswer::Yes);
    fixture.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(pdfPages(path).size(), fixture.pageCount());
    QCOMPARE(fixture.files(), QStringList{u"a.pdf"_s});
}

void PreviewOutputTest::whatIsCancelledLeavesNothing_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("PDF") << Qt::Key_S << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("spreadsheet") << Qt::Key_E << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("CSV") << Qt::Key_E << Qt::KeyboardModifiers(Qt::ControlModifier | Qt::ShiftModifier);
}

void PreviewOutputTest::whatIsCancelledLeavesNothing() {
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    PreviewFixture fixture({}, 2000); // data are told of in thousands of rows
    fixture.open();
    const QString path = fixture.folder.filePath(u"a"_s);
    writeContent(path, "old");
    setProgressDelay(0);
    PressWhenShown cancel;
    fixture.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        static_cast<QFileDialog&>(dialog).setDefaultSuffix({});
        auto& name = control<QLineEdit>(dialog, u"fileNameEdit"_s);
        name.setText(path);
        QTest::keyClick(&name, Qt::Key_Return);
    });
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.key(key, modifiers);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(cancel.pressed, 1);
    QCOMPARE(fixture.files(), QStringList{u"a"_s});
    QCOMPARE(contentOf(path), QByteArray("old"));
    QCOMPARE(fixture.label(u"LblStatus"_s), u"6,000 筆，%L1 頁"_s.arg(fixture.pageCount()));
    // The preview goes on, with its keys.
    QTRY_VERIFY_WITH_TIMEOUT(fixture.preview().isActiveWindow(), PatienceMs);
    fixture.key(Qt::Key_PageDown);
    QCOMPARE(fixture.pages().page(), 1);
}

void PreviewOutputTest::whatFailsIsTold() {
    PreviewFixture fixture;
    fixture.open();
    const QString taken = fixture.folder.filePath(u"taken.pdf"_s);
    QVERIFY(QDir(fixture.folder.path()).mkdir(u"taken.pdf"_s));
    const QString gone = fixture.folder.filePath(u"gone/a.pdf"_s);
    QVERIFY(QDir(fixture.folder.path()).mkdir(u"gone"_s));
    // The folder goes while the dialog stands.
    fixture.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        auto& files = static_cast<QFileDialog&>(dialog);
        files.selectFile(gone);
        control<QLineEdit>(dialog, u"fileNameEdit"_s).setText(gone);
        QTest::keyClick(&control<QLineEdit>(dialog, u"fileNameEdit"_s), Qt::Key_Return);
        QVERIFY(QDir(fixture.folder.path()).rmdir(u"gone"_s));
    });
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt told = fixture.answers.seen().constLast();
    QVERIFY2(told.text.startsWith(u"無法寫入檔案：%1（"_s.arg(gone)), qUtf8Printable(told.text));
    QCOMPARE(told.title, u"Pontrel"_s);
    QCOMPARE(fixture.files(), QStringList{u"taken.pdf"_s});
    QCOMPARE(fixture.label(u"LblStatus"_s), u"360 筆，%1 頁"_s.arg(fixture.pageCount()));
    QTRY_VERIFY_WITH_TIMEOUT(fixture.preview().isActiveWindow(), PatienceMs);
    fixture.key(Qt::Key_PageDown);
    QCOMPARE(fixture.pages().page(), 1);
}

void PreviewOutputTest::theProgressTells() {
    const TestStore store;
    const Shell shell(store);
    PromptAnswers answers;
    setProgressDelay(0);
    bool answered = false;
    answers.expect(u"ProgressBox"_s, [&](QWidget& dialog) {
        QCOMPARE(controlFaults(dialog), QStringList());
        QVERIFY(control<QAbstractButton>(dialog, u"Cancel"_s).hasFocus());
        answered = true;
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    });
    std::size_t steps = 0;
    const bool finished = runWithProgress(u"存成 PDF"_s, [&steps](const ProgressStep& step) {
        while (step(steps, 1'000'000))
            ++steps;
        return false;
    });
    QVERIFY(!finished && answered);
    QCOMPARE(answers.seen().constFirst().title, u"存成 PDF"_s);
    QCOMPARE(answers.seen().constFirst().buttons, QStringList{u"取消"_s});
    QVERIFY(!QApplication::activeModalWidget());
    // Work that is done within the moment shows nothing.
    setProgressDelay(-1);
    QVERIFY(runWithProgress(u"存成 PDF"_s, [](const ProgressStep& step) { return step(1, 1); }));
    QCOMPARE(answers.seen().size(), 1);
    // What the work throws comes through.
    QVERIFY_EXCEPTION_THROWN(
        (void)runWithProgress(
            u"x"_s, [](const ProgressStep&) -> bool { throw RunTimeError(error::FileAccess, u"x"_s); }),
        RunTimeError);
}

void PreviewOutputTest::printsRangesIntoAFile() {
    PreviewFixture fixture;
    fixture.open();
    const QString path = fixture.folder.filePath(u"印.pdf"_s);
    expectPrintDialog(fixture, [&](QPrintDialog& dialog) {
        choosePdf(dialog, path);
        control<QRadioButton>(dialog, u"printRange"_s).setChecked(true);
        QCOMPARE(control<QSpinBox>(dialog, u"to"_s).value(), fixture.pageCount());
        control<QSpinBox>(dialog, u"from"_s).setValue(2);
        control<QSpinBox>(dialog, u"to"_s).setValue(4);
        dialog.accept();
    });
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().text, u"這部電腦沒有可用的印表機，只能列印成 PDF 檔。"_s);
    QCOMPARE(fixture.files(), QStringList{u"印.pdf"_s});
    QCOMPARE(pageNumbers(path, fixture.pageCount()), (QList<int>{2, 3, 4}));
    QCOMPARE(fixture.label(u"LblStatus"_s), u"已列印到 %1"_s.arg(path));
}

void PreviewOutputTest::printsTheCurrentPage() {
    PreviewFixture fixture;
    fixture.open();
    fixture.pages().goTo(3);
    const QString path = fixture.folder.filePath(u"a.pdf"_s);
    expectPrintDialog(fixture, [&](QPrintDialog& dialog) {
        choosePdf(dialog, path);
        control<QRadioButton>(dialog, u"printCurrentPage"_s).setChecked(true);
        dialog.accept();
    });
    fixture.press(u"CmdPrint"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(pageNumbers(path, fixture.pageCount()), QList<int>{4});
    // The dialog can be left.
    expectPrintDialog(fixture, [](QPrintDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.files(), QStringList{u"a.pdf"_s});
}

/// A printer that is gone when the dialog has closed.
void PreviewOutputTest::aDeadPrinterIsTold() {
    PreviewFixture fixture;
    fixture.open();
    expectPrintDialog(fixture, [&](QPrintDialog& dialog) {
        choosePdf(dialog, fixture.folder.filePath(u"a.pdf"_s));
        dialog.accept();
        dialog.printer()->setOutputFileName({});
    });
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"無法列印：印表機沒有回應，或已停止工作。"_s);
    QCOMPARE(fixture.files(), QStringList());
    QTRY_VERIFY_WITH_TIMEOUT(fixture.preview().isActiveWindow(), PatienceMs);
    fixture.key(Qt::Key_PageDown);
    QCOMPARE(fixture.pages().page(), 1);
}

void PreviewOutputTest::printingCanBeCancelled() {
    PreviewFixture fixture;
    fixture.open();
    setProgressDelay(0);
    PressWhenShown cancel;
    expectPrintDialog(fixture, [&](QPrintDialog& dialog) {
        choosePdf(dialog, fixture.folder.filePath(u"a.pdf"_s));
        dialog.accept();
    });
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(cancel.pressed, 1);
    QCOMPARE(fixture.files(), QStringList());
    // On a printer what has been painted is out of hand.
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fixture.folder.filePath(u"b.pdf"_s));
    setUpPrinter(printer, fixture.preview().document());
    const std::size_t gone = printPages(fixture.preview().document(), {0, 1, 2}, printer,
                                        [](std::size_t done, std::size_t) { return done < 2; });
    QCOMPARE(gone, std::size_t{2}); // no printer of Qt's takes back what it has
    // And to its end: as many pages, in their own size.
    QPrinter whole;
    whole.setOutputFormat(QPrinter::PdfFormat);
    whole.setOutputFileName(fixture.folder.filePath(u"c.pdf"_s));
    setUpPrinter(whole, fixture.preview().document());
    QCOMPARE(printPages(fixture.preview().document(), {4, 0}, whole, {}), std::size_t{2});
    QCOMPARE(pdfPages(fixture.folder.filePath(u"c.pdf"_s)).size(), 2);
}

void PreviewOutputTest::pagesAreOrdered_data() {
    QTest::addColumn<QPrinter::PrintRange>("range");
    QTest::addColumn<QString>("ranges");
    QTest::addColumn<int>("copies");
    QTest::addColumn<bool>("collated");
    QTest::addColumn<QPrinter::PageOrder>("order");
    QTest::addColumn<QList<int>>("expected");
    const auto up = QPrinter::FirstPageFirst;
    const auto down = QPrinter::LastPageFirst;
    QTest::newRow("all") << QPrinter::AllPages << QString() << 1 << true << up << QList<int>{0, 1, 2, 3, 4};
    QTest::newRow("last first") << QPrinter::AllPages << QString() << 1 << true << down
                                << QList<int>{4, 3, 2, 1, 0};
    QTest::newRow("current") << QPrinter::CurrentPage << QString() << 1 << true << up << QList<int>{2};
    QTest::newRow("ranges") << QPrinter::PageRange << u"1,4-5"_s << 1 << true << up << QList<int>{0, 3, 4};
    QTest::newRow("beyond the end") << QPrinter::PageRange << u"5-9"_s << 1 << true << up << QList<int>{4};
    QTest::newRow("collated") << QPrinter::PageRange << u"1-2"_s << 3 << true << up
                              << QList<int>{0, 1, 0, 1, 0, 1};
    QTest::newRow("each by itself") << QPrinter::PageRange << u"1-2"_s << 3 << false << down
                                    << QList<int>{1, 1, 1, 0, 0, 0};
}

void PreviewOutputTest::pagesAreOrdered() {
    QFETCH(const QPrinter::PrintRange, range);
    QFETCH(const QString, ranges);
    QFETCH(const int, copies);
    QFETCH(const bool, collated);
    QFETCH(const QPrinter::PageOrder, order);
    QFETCH(const QList<int>, expected);
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageOrder(order);
    printer.setCopyCount(copies);
    printer.setCollateCopies(collated);
    printer.setPageRanges(QPageRanges::fromString(ranges));
    printer.setPrintRange(range);
    const std::vector<int> pages = pagesToPrint(printer, 5, 2);
    QCOMPARE(QList<int>(pages.begin(), pages.end()), expected);
}

void PreviewOutputTest::pagesArePlaced_data() {
    QTest::addColumn<QRectF>("content");
    QTest::addColumn<QRectF>("printable");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QPointF>("origin");
    const QRectF content(10, 10, 190, 277); // of an A4 page
    QTest::newRow("the same paper") << content << QRectF(4, 4, 202, 289) << 1.0 << QPointF(0, 0);
    QTest::newRow("exactly") << content << content << 1.0 << QPointF(0, 0);
    QTest::newRow("larger paper") << content << QRectF(5, 5, 287, 410) << 1.0 << QPointF(0, 0);
    // Half the width: half the size, at the printable corner.
    QTest::newRow("smaller paper") << content << QRectF(5, 5, 95, 200) << 0.5 << QPointF(0, 0);
    // Margins that reach into the page: moved, not shrunk, where it fits.
    QTest::newRow("a wide upper margin") << content << QRectF(0, 20, 210, 277) << 1.0 << QPointF(0, 10);
    QTest::newRow("too short") << content << QRectF(0, 0, 210, 138.5) << 0.5 << QPointF(52.5, -5);
}

void PreviewOutputTest::pagesArePlaced() {
    QFETCH(const QRectF, content);
    QFETCH(const QRectF, printable);
    QFETCH(const double, scale);
    QFETCH(const QPointF, origin);
    const Placement placement = placementOf(content, printable);
    QCOMPARE(placement.scale, scale);
    QCOMPARE(placement.origin, origin);
    // All of it comes out.
    const QRectF there(placement.origin + placement.scale * content.topLeft(),
                       placement.scale * content.size());
    QVERIFY(printable.adjusted(-1e-9, -1e-9, 1e-9, 1e-9).contains(there));
}

int main(int argc, char** argv) {
    qputenv("CUPS_SERVER", "127.0.0.1:1"); // where nobody answers, for nothing may come out of a real printer
    return runTests<PreviewOutputTest>(argc, argv);
}
#include "PreviewOutputTest.moc"
