// measure_report [--records N] [--runs N]: the report C02 over attendance records in two groups, from the
// reading to the first picture, a jump, a zoom, a search, and the files that are saved; each held in the same
// run against the engine returning the records, or the bare library writing them.

#include "BareSheet.h"
#include "Measure.h"

#include "paper/CsvFile.h"
#include "paper/GlyphMeasure.h"
#include "paper/PagePainter.h"
#include "paper/PageSearch.h"
#include "paper/PdfFile.h"
#include "paper/ReportDocument.h"
#include "paper/SheetFile.h"
#include "paper/TemplateReader.h"
#include "windows/reports/PageView.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdio>
#include <stdexcept>

namespace {

using namespace pontrel;
using namespace pontrel::bench;
using namespace pontrel::paper;

constexpr int DaysOfEmployee = 50;
constexpr int Units = 20;
constexpr int ScreenWidth = 1920;
constexpr int ScreenHeight = 1040;
constexpr double UnitsOfInch = 2540;
constexpr int ScreenDots = 96;

void bindText(SQLite::Statement& statement, int parameter, const QString& text) {
    statement.bind(parameter, text.toStdString());
}

/// Employees of twenty units with fifty days each.
void createRecords(const QString& store, int records) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(engine);
    engine.exec("INSERT INTO Base04 (TimeNo, TimeName) VALUES ('1', '日班')");
    for (int unit = 0; unit < Units; ++unit)
        engine.exec("INSERT INTO Base02 VALUES ('" + std::to_string(1000 + unit) + "', '第" +
                    std::to_string(unit) + "工務課')");
    SQLite::Statement employee(engine,
                               "INSERT INTO Base06 (EmpNo, EmpName, UnitNo, ArriveDate) VALUES (?, ?, ?, "
                               "'2000-01-01')");
    SQLite::Statement record(
        engine, "INSERT INTO Atte02 (EmpNo, UseDate, TimeNo, Time1, Time2, Time3, Time4, Expt, Delay1, "
                "Earlier4) VALUES (?, ?, '1', '08:01:00', '12:00:00', '13:00:00', ?, ?, ?, ?)");
    const QString family = QStringLiteral("陳林黃張李王吳劉蔡楊");
    const QString given = QStringLiteral("志明家豪俊傑淑芬怡君雅婷");
    for (int head = 0; head * DaysOfEmployee < records; ++head) {
        const QString code = QString::number(head + 1).rightJustified(6, u'0');
        bindText(employee, 1, code);
        bindText(employee, 2, QString(family[head % 10]) + given[head % 12] + given[head / 12 % 12]);
        bindText(employee, 3, QString::number(1000 + head % Units));
        employee.exec();
        employee.reset();
        for (int day = 0; day < DaysOfEmployee && head * DaysOfEmployee + day < records; ++day) {
            bindText(record, 1, code);
            bindText(record, 2, QDate(2026, 1, 1).addDays(day).toString(QStringLiteral("yyyy-MM-dd")));
            bindText(record, 3, day % 7 == 0 ? QStringLiteral("16:40:00") : QStringLiteral("17:05:00"));
            record.bind(4, day % 7 == 0 ? 1 : 0);
            record.bind(5, day % 5 == 0 ? head % 30 : 0);
            record.bind(6, day % 7 == 0 ? 20 : 0);
            record.exec();
            record.reset();
        }
    }
    transaction.commit();
}

/// The engine alone: the statement stepped, and every column read.
double readByHand(const QString& store, const Template& layout, int records) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY | SQLite::OPEN_NOMUTEX);
    engine.exec("PRAGMA cache_size = -32768");
    const QByteArray text = ReportRows::statement(layout, {});
    int rows = 0;
    std::size_t bytes = 0;
    const double seconds = timed([&] {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(engine.getHandle(), text.constData(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(engine.getHandle()));
        const int columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column < columns; ++column) {
                (void)sqlite3_column_text(statement, column);
                bytes += static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
            }
            ++rows;
        }
        sqlite3_finalize(statement);
    });
    if (rows != records || bytes == 0)
        throw std::runtime_error("the statement has another number of records");
    return seconds;
}

/// The bare library writing as many rows of fourteen cells.
double sheetByHand(const QString& folder, int records) {
    return timeBareSheet(folder, records, [](lxw_worksheet* sheet, lxw_row_t row) {
        for (lxw_col_t column = 0; column < 5; ++column)
            worksheet_write_string(sheet, row, column, "單位課", nullptr);
        for (lxw_col_t column = 5; column < 14; ++column)
            worksheet_write_number(sheet, row, column, 0.333, nullptr);
    });
}

void paintScreen(const ReportDocument& document, const GlyphMeasure& measure, int page, double zoom = 100) {
    QImage image(ScreenWidth, ScreenHeight, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PagePainter sink(painter, measure, zoom / 100 * ScreenDots / UnitsOfInch);
    document.emitPage(page, sink);
}

struct Seconds {
    std::vector<double> reading, first, jump, page, zoom, zoomedPage, pdf, csv, find, sheet, bareSheet;
};

/// A jump and a zoom in a view as large as a screen, each against the painting of the page that it shows.
void measureView(const ReportDocument& document, const GlyphMeasure& measure, Seconds& seconds) {
    PageView view(document, nullptr);
    view.resize(ScreenWidth, ScreenHeight);
    view.show();
    QCoreApplication::processEvents();
    const auto shown = [&view](const std::function<void()>& action) {
        return timed([&] {
            action();
            view.viewport()->repaint();
        });
    };
    view.setFit(PageView::Fit::WholePage);
    (void)shown([] {});
    const int page = document.pageOf(document.rowCount() / 3);
    paintScreen(document, measure, page, view.zoom());
    seconds.page.push_back(timed([&] { paintScreen(document, measure, page, view.zoom()); }));
    seconds.jump.push_back(shown([&] { view.goTo(page); }));
    constexpr double Larger = 150;
    paintScreen(document, measure, page, Larger);
    seconds.zoomedPage.push_back(timed([&] { paintScreen(document, measure, page, Larger); }));
    seconds.zoom.push_back(shown([&] { view.setZoom(Larger); }));
}

void must(bool saved) {
    if (!saved)
        throw std::runtime_error("a file was not saved");
}

void measureOnce(const QString& store, const Template& layout, int records, Seconds& seconds) {
    const bool firstRun = seconds.first.empty(); // Later ones are given back what it has held.
    const QTemporaryDir folder;
    seconds.reading.push_back(readByHand(store, layout, records));
    std::shared_ptr<const GlyphMeasure> measure;
    std::shared_ptr<const ReportDocument> document;
    const long before = memoryOfProcess("VmRSS:");
    seconds.first.push_back(timed([&] {
        measure = std::make_shared<GlyphMeasure>(layout);
        document = ReportDocument::make(store, layout, {}, {}, QDate(2026, 3, 1), measure);
        paintScreen(*document, *measure, 0);
    }));
    const long held = memoryOfProcess("VmRSS:") - before;
    if (firstRun)
        std::printf("%d records, %d pages; held %ld kB, %ld bytes a record (most 200 and 64 MB): %s\n",
                    records, document->pageCount(), held, held * 1024 / records,
                    held * 1024 <= 200L * records + (64L << 20) ? "reached" : "MISSED");
    measureView(*document, *measure, seconds);
    std::vector<PageHit> hits;
    seconds.find.push_back(timed([&] {
        for (int page = 0; page < document->pageCount(); ++page)
            findOnPage(*document, page, QStringLiteral("志豪"), hits);
    }));
    must(!hits.empty());
    seconds.csv.push_back(timed([&] { must(saveCsv(*document, folder.filePath(QStringLiteral("a.csv")))); }));
    resetPeak();
    const long beforePdf = memoryOfProcess("VmRSS:");
    const QString pdf = folder.filePath(QStringLiteral("a.pdf"));
    seconds.pdf.push_back(timed([&] { must(savePdf(*document, pdf)); }));
    const long peak = memoryOfProcess("VmHWM:") - beforePdf;
    if (firstRun)
        std::printf("PDF of %lld kB, at most %ld kB above the records (most 32 MB): %s\n",
                    static_cast<long long>(QFileInfo(pdf).size() / 1024), peak,
                    peak <= 32 * 1024 ? "reached" : "MISSED");
    seconds.sheet.push_back(
        timed([&] { must(saveSheet(*document, folder.filePath(QStringLiteral("a.xlsx")))); }));
    seconds.bareSheet.push_back(sheetByHand(folder.path(), records));
}

void measureAll(const QString& templates, int records, int runs) {
    const ProgramFolder folder;
    createRecords(folder.store(), records);
    const Template layout = readTemplate(templates + QStringLiteral("/C02.rpt"));
    Seconds seconds;
    for (int run = 0; run < runs; ++run)
        measureOnce(folder.store(), layout, records, seconds);
    const double limit = median(seconds.reading);
    const char* name = "the engine returning the records";
    report("report shown, first page", median(seconds.first), name, limit, 1.5);
    report("search over all pages", median(seconds.find), name, limit, 1);
    report("comma-separated text", median(seconds.csv), name, limit, 1);
    report("whole PDF", median(seconds.pdf), name, limit, 15);
    report("spreadsheet", median(seconds.sheet), "the bare library", median(seconds.bareSheet), 2);
    report("jump to a page", median(seconds.jump), "painting its page", median(seconds.page), 2);
    report("zoom", median(seconds.zoom), "painting its page", median(seconds.zoomedPage), 2);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return runMeasure(argc, argv, {{QStringLiteral("records"), 100000}, {QStringLiteral("runs"), 3}},
                      [](const std::vector<int>& values) {
                          measureAll(QStringLiteral(PONTREL_REPORTS), values[0], values[1]);
                          return 0;
                      });
}
