#include "paper/GlyphMeasure.h"
#include "paper/PagePainter.h"
#include "paper/PaperSupport.h"
#include "paper/PdfFile.h"
#include "support/Builders.h"
#include "support/SavedFiles.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;

namespace {

const QByteArray Attendance =
    "<report format=\"1\" code=\"C02\" caption=\"員工出勤\"><paper orientation=\"landscape\"/>"
    "<fonts title=\"16 bold\"/><rows from=\"Over01\"/>"
    "<heading><text font=\"title\" align=\"center\">日期 員工 加班明細</text>"
    "<text left=\"期間～工作\" right=\"第 {Page} 頁，共 {Pages} 頁\"/></heading>"
    "<columns><column caption=\"員工\" width=\"40\">{Over01.EmpNo}</column>"
    "<column caption=\"日期\" width=\"30\">{Over01.OverDate}</column>"
    "<column caption=\"備註\" width=\"60\">{Over01.Memo}</column></columns></report>";

/// The report in the program's own face.
std::shared_ptr<const ReportDocument> document(const TestStore& store, const QByteArray& text = Attendance) {
    const Template layout = templateOf(text);
    return ReportDocument::make(store.path(), layout, {}, {}, QDate(2026, 1, 31),
                                std::make_shared<GlyphMeasure>(layout));
}

void add(TestStore& store, const char16_t* code, const QString& memo) {
    insertRow(store.database(), QStringLiteral("Over01"),
              {{u"EmpNo", code}, {u"OverDate", QDate(2026, 1, 5)}, {u"Memo", memo}});
}

/// What a program prints that ends well; its errors otherwise.
QString outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        return QStringLiteral("FAILED ") + program + u' ' + QString::fromUtf8(process.readAllStandardError());
    const QByteArray errors = process.readAllStandardError();
    return QString::fromUtf8(errors + process.readAllStandardOutput());
}

QString textOf(const QString& pdf) {
    return outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-raw"), pdf, QStringLiteral("-")});
}

QStringList filesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

/// Reports as PDF: their text as other programs read it, and what is left behind where saving fails.
class PdfTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theTextIsTheOneThatWasPrinted() {
        TestStore store;
        const QTemporaryDir folder;
        // Characters that share a glyph with others, and one beyond U+FFFF.
        add(store, u"A01", QStringLiteral("王日月工頁面～ \U00020BB7野家"));
        add(store, u"B02", QStringLiteral("12:30 - 13:00 (ABC) 員工日期"));
        const QString path = folder.filePath(QStringLiteral("report.pdf"));
        QVERIFY(savePdf(*document(store), path));
        QCOMPARE(textOf(path),
                 QStringLiteral("日期 員工 加班明細\n期間～工作 第 1 頁，共 1 頁\n員工 日期 備註\n"
                                "A01 115/01/05 王日月工頁面～ \U00020BB7野家\n"
                                "B02 115/01/05 12:30 - 13:00 (ABC) 員工日期\n\f"));
        const QString told = outputOf(QStringLiteral("pdfinfo"), {path});
        QVERIFY2(told.contains(QStringLiteral("C02 員工出勤")), qUtf8Printable(told));
        QVERIFY2(told.contains(QStringLiteral("Pages:           1\n")), qUtf8Printable(told));
        QVERIFY2(told.contains(QStringLiteral("Page size:       842 x 595 pts (A4)")), qUtf8Printable(told));
        QCOMPARE(filesIn(folder.path()), QStringList{QStringLiteral("report.pdf")});
    }

    void textsThatNeedALayoutArePrintedToo() {
        TestStore store;
        const QTemporaryDir folder;
        add(store, u"A01", QStringLiteral("Jose\u0301 日期"));
        add(store, u"B02", QStringLiteral("日期 員工"));
        const QString path = folder.filePath(QStringLiteral("report.pdf"));
        QVERIFY(savePdf(*document(store), path));
        const QString text = textOf(path).normalized(QString::NormalizationForm_C);
        QVERIFY2(text.contains(QStringLiteral("José 日期\n")), qUtf8Printable(text));
        QVERIFY2(text.contains(QStringLiteral("B02 115/01/05 日期 員工\n")), qUtf8Printable(text));
    }

    void everyPageIsThere() {
        TestStore store;
        store.holdOpen();
        for (int row = 0; row < 200; ++row)
            add(store, u"A01", QStringLiteral("列%1止").arg(row));
        store.commit();
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("report.pdf"));
        const auto report = document(store);
        std::vector<std::size_t> told;
        QVERIFY(savePdf(*report, path, [&](std::size_t done, std::size_t all) {
            told.push_back(done);
            return all == static_cast<std::size_t>(report->pageCount());
        }));
        const QStringList pages = textOf(path).split(u'\f');
        QCOMPARE(pages.size(), report->pageCount() + 1);
        QVERIFY(report->pageCount() > 5);
        QCOMPARE(told.size(), static_cast<std::size_t>(report->pageCount()));
        for (int page = 0; page < report->pageCount(); ++page)
            QCOMPARE(pages[page].trimmed().replace(u'\n', u' '),
                     report->textOf(page).replace(u'\t', u' ').replace(u'\n', u' '));
    }

    void anEmptyReportIsAPage() {
        TestStore store;
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("report.pdf"));
        QVERIFY(savePdf(*document(store), path));
        QCOMPARE(textOf(path),
                 QStringLiteral("日期 員工 加班明細\n期間～工作 第 1 頁，共 1 頁\n員工 日期 備註\n\f"));
    }

    void whatIsStoppedOrFailsLeavesThereWhatStood() {
        TestStore store;
        store.holdOpen();
        for (int row = 0; row < 100; ++row)
            add(store, u"A01", QStringLiteral("列"));
        store.commit();
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("report.pdf"));
        writeContent(path, "earlier");
        QVERIFY(!savePdf(*document(store), path, [](std::size_t done, std::size_t) { return done < 2; }));
        QCOMPARE(contentOf(path), QByteArray("earlier"));
        QCOMPARE(filesIn(folder.path()), QStringList{QStringLiteral("report.pdf")});

        const QString nowhere = folder.filePath(QStringLiteral("none/report.pdf"));
        try {
            (void)savePdf(*document(store), nowhere);
            QFAIL("nothing was thrown");
        } catch (const RunTimeError& failure) {
            QCOMPARE(failure.number(), error::FileAccess);
            QVERIFY(failure.text().startsWith(QStringLiteral("無法寫入檔案：") + nowhere));
        }
    }

    void aShrunkOrCutTextStaysWithinItsCell() {
        // Ink of a column that is too narrow for its text, on a picture of 300 dots an inch.
        TestStore store;
        add(store, u"A01", QString(40, u'鷹'));
        for (const char* fit : {"cut", "shrink", "wrap"}) {
            const auto report = document(
                store,
                QByteArray("<report format=\"1\" code=\"T\" caption=\"\"><rows from=\"Over01\"/><columns>"
                           "<column caption=\"\" width=\"40\" fit=\"") +
                    fit + "\">{Over01.Memo}</column></columns></report>");
            QImage image(2480, 3508, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            const auto& measure = dynamic_cast<const GlyphMeasure&>(report->measure());
            {
                PagePainter sink(painter, measure, 300 / 2540.0);
                report->emitPage(0, sink);
            }
            painter.end();
            int first = image.width();
            int last = 0;
            // Below the captions and their lines.
            for (int y = 200; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (qGray(image.pixel(x, y)) < 128) {
                        first = qMin(first, x);
                        last = qMax(last, x);
                    }
            QVERIFY(first >= 118); // the margin of 10 mm
            QVERIFY(last <= 590);  // and the 40 of the column
            QVERIFY(last > 480);   // of which the text takes most
        }
    }
};

QTEST_MAIN(PdfTest)
#include "PdfTest.moc"
