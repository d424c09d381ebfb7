#include "app/ProgressBox.h"
#include "store/RunTimeError.h"
#include "support/PressWhenShown.h"
#include "support/SavedFiles.h"
#include "windows/attendance/DayPage.h"
#include "windows/reports/PreviewFixture.h"
#include "windows/reports/PrintServer.h"

#include <QComboBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRadioButton>
#include <QSpinBox>
#include <QTemporaryFile>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

PrintServer* server = nullptr;

/// The print dialog comes next: the queue is the first of its printers.
void expectQueue(PreviewFixture& fixture, const std::function<void(QPrintDialog&)>& action) {
    fixture.answers.expect(u"PrintDialog"_s, [action](QWidget& widget) {
        auto& dialog = static_cast<QPrintDialog&>(widget);
        auto& printers = control<QComboBox>(dialog, u"printers"_s);
        QCOMPARE(printers.itemText(0), u"Office"_s);
        printers.setCurrentIndex(0);
        action(dialog);
        dialog.accept();
    });
}

/// The pages of what has been sent; none where another program cannot read it.
qsizetype pagesOf(const PrintServer::Job& job) {
    QTemporaryFile file;
    if (!file.open() || file.write(job.document) != job.document.size() || !file.flush())
        return 0;
    return pdfPages(file.fileName()).size();
}

} // namespace

/// A report on its way to a printer's queue, on a machine that has one.
class PrinterTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        server->setQueue(true);
        server->setRefuses(PrintServer::Refuses::Nothing);
    }
    void cleanup() { setProgressDelay(-1); }
    void theQueueGetsThePages();
    void printingCanBeCancelled();
    void aQueueThatHasGoneIsTold();
    void aQueueThatRefusesIsTold_data();
    void aQueueThatRefusesIsTold();
    void theAccountOfADayGoesToTheQueueOrIsTold();
    void aServerThatHasGoneIsTold();

  private:
    static void checkFailure(const PreviewFixture& fixture);
};

void PrinterTest::checkFailure(const PreviewFixture& fixture) {
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"無法列印：印表機沒有回應，或已停止工作。"_s);
    QCOMPARE(fixture.label(u"LblStatus"_s), u"360 筆，%1 頁"_s.arg(fixture.pageCount()));
}

void PrinterTest::theQueueGetsThePages() {
    PreviewFixture fixture;
    fixture.open();
    expectQueue(fixture, [](QPrintDialog& dialog) {
        control<QRadioButton>(dialog, u"printRange"_s).setChecked(true);
        control<QSpinBox>(dialog, u"from"_s).setValue(2);
        control<QSpinBox>(dialog, u"to"_s).setValue(4);
        control<QSpinBox>(dialog, u"copies"_s).setValue(2);
    });
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.label(u"LblStatus"_s), u"已送出 3 頁到印表機"_s);
    const QList<PrintServer::Job> jobs = server->jobs();
    QCOMPARE(jobs.size(), 1);
    // The queue makes the copies.
    QCOMPARE(jobs.constFirst().copies, 2);
    QCOMPARE(pagesOf(jobs.constFirst()), 3);
}

/// What has been painted goes out all the same, and is told.
void PrinterTest::printingCanBeCancelled() {
    PreviewFixture fixture;
    fixture.open();
    const qsizetype before = server->jobs().size();
    expectQueue(fixture, [](QPrintDialog&) {});
    setProgressDelay(0);
    PressWhenShown cancel;
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(cancel.pressed, 1);
    const QList<PrintServer::Job> jobs = server->jobs();
    QCOMPARE(jobs.size(), before + 1);
    const qsizetype printed = pagesOf(jobs.constLast());
    QVERIFY(printed > 0 && printed < fixture.pageCount());
    QCOMPARE(fixture.label(u"LblStatus"_s), u"列印已取消，可能已印出 %1 頁"_s.arg(printed));
}

void PrinterTest::aQueueThatHasGoneIsTold() {
    PreviewFixture fixture;
    fixture.open();
    const qsizetype before = server->jobs().size();
    expectQueue(fixture, [](QPrintDialog&) { server->setQueue(false); });
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    checkFailure(fixture);
    QCOMPARE(server->jobs().size(), before);
}

void PrinterTest::aQueueThatRefusesIsTold_data() {
    QTest::addColumn<PrintServer::Refuses>("refuses");
    QTest::newRow("a queue that takes no jobs") << PrintServer::Refuses::Jobs;
    QTest::newRow("a queue that turns the document away") << PrintServer::Refuses::Documents;
}

/// It is there and idle all the while; the next job is taken again.
void PrinterTest::aQueueThatRefusesIsTold() {
    QFETCH(const PrintServer::Refuses, refuses);
    PreviewFixture fixture;
    fixture.open();
    const qsizetype before = server->jobs().size();
    expectQueue(fixture, [refuses](QPrintDialog&) { server->setRefuses(refuses); });
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    checkFailure(fixture);
    QCOMPARE(server->jobs().size(), before);

    expectQueue(fixture, [](QPrintDialog&) { server->setRefuses(PrintServer::Refuses::Nothing); });
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.label(u"LblStatus"_s), u"已送出 %1 頁到印表機"_s.arg(fixture.pageCount()));
    QCOMPARE(server->jobs().size(), before + 1);
    QCOMPARE(pagesOf(server->jobs().constLast()), fixture.pageCount());
}

void PrinterTest::theAccountOfADayGoesToTheQueueOrIsTold() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPrinterName(u"Office"_s);
    QVERIFY(printer.isValid());
    const qsizetype before = server->jobs().size();
    printDay({}, printer);
    QCOMPARE(server->jobs().size(), before + 1);
    QCOMPARE(pagesOf(server->jobs().constLast()), 1);

    const auto technicalOf = [&printer] {
        try {
            printDay({}, printer);
        } catch (const RunTimeError& failure) {
            return QString::number(failure.number()) + u' ' + failure.technical();
        }
        return QString();
    };
    server->setRefuses(PrintServer::Refuses::Jobs);
    QCOMPARE(technicalOf(), u"482 Office: server-error-not-accepting-jobs"_s);
    server->setRefuses(PrintServer::Refuses::Documents);
    QCOMPARE(technicalOf(), u"482 Office: client-error-document-format-not-supported"_s);
    server->setQueue(false);
    QCOMPARE(technicalOf(), u"482 Office"_s);
    QCOMPARE(server->jobs().size(), before + 1);
    server->setQueue(true);
    server->setRefuses(PrintServer::Refuses::Nothing);
    QCOMPARE(technicalOf(), QString());
    QCOMPARE(server->jobs().size(), before + 2);
}

void PrinterTest::aServerThatHasGoneIsTold() {
    PreviewFixture fixture;
    fixture.open();
    expectQueue(fixture, [](QPrintDialog&) { server->stop(); });
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_P, Qt::ControlModifier);
    checkFailure(fixture);
}

int main(int argc, char** argv) {
    PrintServer own;
    server = &own;
    qputenv("CUPS_SERVER", own.address());
    return runTests<PrinterTest>(argc, argv);
}

#include "PrinterTest.moc"
