// measure_export [--punches N] [--runs N]: the list of the attendance window over a table of punches, written
// as comma-separated text and as spreadsheet; held in the same run against the rows read and written by hand,
// and against the bare library writing as many rows. And the memory that either takes.

#include "BareSheet.h"
#include "Measure.h"

#include "app/Application.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Start.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "app/controls/GridTable.h"
#include "paper/CsvFile.h"
#include "paper/SheetFile.h"
#include "rules/Session.h"
#include "windows/RegisterWindows.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QTemporaryDir>

#include <array>
#include <fstream>
#include <stdexcept>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

constexpr int Employees = 10'000;
constexpr int ColumnsOfList = 6;
constexpr long MostKilobytes = 16 * 1024; ///< That an export may hold beside the list.

void insertEmployees(const QString& store) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(engine);
    SQLite::Statement insert(engine, "INSERT INTO Base06 (EmpNo, EmpName) VALUES (?, ?)");
    for (int employee = 1; employee <= Employees; ++employee) {
        insert.bind(1, QString::number(employee).rightJustified(5, u'0').toStdString());
        insert.bind(2, QStringLiteral("王%1").arg(employee).toStdString());
        insert.exec();
        insert.reset();
    }
    transaction.commit();
}

/// The engine's rows in the order of the list, their columns joined by commas.
double writeByHand(const QString& store, const QString& folder, int punches) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY);
    int rows = 0;
    const double seconds = timed([&] {
        std::ofstream file((folder + QStringLiteral("/bare.csv")).toStdString(), std::ios::binary);
        SQLite::Statement all(engine,
                              "SELECT Atte01.EmpNo, EmpName, UseDate, UseTime, class, ReaderId FROM Atte01 "
                              "LEFT JOIN Base06 ON Base06.EmpNo = Atte01.EmpNo "
                              "ORDER BY Atte01.EmpNo, UseDate, UseTime, class, ReaderId");
        while (all.executeStep()) {
            for (int column = 0; column < ColumnsOfList; ++column)
                file << all.getColumn(column).getText() << (column + 1 < ColumnsOfList ? "," : "\r\n");
            ++rows;
        }
        file.close();
    });
    if (rows != punches)
        throw std::runtime_error("the table has another number of rows");
    return seconds;
}

double sheetByHand(const QString& folder, int rows) {
    return timeBareSheet(folder, rows, [](lxw_worksheet* sheet, lxw_row_t row) {
        for (const lxw_col_t column : std::array<lxw_col_t, 4>{0, 1, 4, 5})
            worksheet_write_string(sheet, row, column, "00001", nullptr);
        for (const lxw_col_t column : std::array<lxw_col_t, 2>{2, 3})
            worksheet_write_number(sheet, row, column, 40000.333, nullptr);
    });
}

struct Seconds {
    std::vector<double> csv, byHand, sheet, bareSheet;
    long csvKilobytes = 0;
    long sheetKilobytes = 0;
};

/// The seconds that an export takes; `kilobytes` becomes the most that it has held beside what was there.
double exported(const std::function<bool()>& save, long& kilobytes) {
    resetPeak();
    const long before = memoryOfProcess("VmRSS:");
    const double seconds = timed([&] {
        if (!save())
            throw std::runtime_error("a file was not saved");
    });
    kilobytes = std::max(kilobytes, memoryOfProcess("VmHWM:") - before);
    return seconds;
}

void measureOnce(const TDBGrid& grid, const QString& store, int punches, Seconds& seconds) {
    const QTemporaryDir folder;
    const auto goOn = [](std::size_t, std::size_t) { return true; };
    const GridTable table(grid);
    if (table.lineCount() != static_cast<std::size_t>(punches))
        throw std::runtime_error("the list has another number of rows");
    seconds.csv.push_back(
        exported([&] { return paper::saveCsv(table, folder.filePath(QStringLiteral("a.csv")), goOn); },
                 seconds.csvKilobytes));
    seconds.sheet.push_back(
        exported([&] { return paper::saveSheet(table, folder.filePath(QStringLiteral("a.xlsx")), goOn); },
                 seconds.sheetKilobytes));
    seconds.byHand.push_back(writeByHand(store, folder.path(), punches));
    seconds.bareSheet.push_back(sheetByHand(folder.path(), punches));
}

void measure(int punches, int runs) {
    const ProgramFolder folder;
    insertEmployees(folder.store());
    insertPunches(folder.store(), punches);
    gDbPath = databaseFolder(folder.path());
    MDI shell;
    placeMainWindow(shell);
    gF3 = true;
    UnlockToolbar();
    shell.show();
    trimSystemMenu();
    OpenToolWindow(3);
    Window* form = moduleWindow(3);
    const auto* grid = form ? form->findChild<TDBGrid*>(QStringLiteral("TDBG1")) : nullptr;
    if (!grid)
        throw std::runtime_error("the window has no list");
    Seconds seconds;
    for (int run = 0; run < runs; ++run)
        measureOnce(*grid, folder.store(), punches, seconds);
    report("list as comma-separated text", median(seconds.csv), "read and written", median(seconds.byHand),
           3);
    report("list as spreadsheet", median(seconds.sheet), "the bare library", median(seconds.bareSheet), 2);
    reportMemory("comma-separated text, held beside", seconds.csvKilobytes, MostKilobytes);
    reportMemory("spreadsheet, held beside", seconds.sheetKilobytes, MostKilobytes);
    form->unload();
    QCoreApplication::processEvents();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const PontrelApplication application(argv);
    registerWindows();
    return runMeasure(argc, argv, {{QStringLiteral("punches"), 1'000'000}, {QStringLiteral("runs"), 3}},
                      [](const std::vector<int>& values) {
                          measure(values[0], values[1]);
                          return 0;
                      });
}
