// measure_form3 [--punches N] [--runs N]: the attendance window over a table of punches, from the click that
// opens it to its first picture, the step to the last row, and a scroll through the middle of the list; each
// held in the same run against the reading of the rows' identities in the order of their key, by hand.

#include "Measure.h"

#include "app/Application.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Start.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "rules/Session.h"
#include "store/Database.h"
#include "windows/RegisterWindows.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <stdexcept>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

constexpr int Pages = 200; ///< Scrolled through, spread over the whole list.

double readIdentities(const QString& store, int punches) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY);
    std::vector<std::int64_t> identities;
    const double seconds = timed([&] {
        SQLite::Statement all(engine,
                              "SELECT rowid FROM Atte01 ORDER BY EmpNo, UseDate, UseTime, class, ReaderID");
        while (all.executeStep())
            identities.push_back(all.getColumn(0).getInt64());
    });
    if (static_cast<int>(identities.size()) != punches)
        throw std::runtime_error("the table has another number of rows");
    return seconds;
}

template<typename Control>
Control& at(const Window& window, const QString& name) {
    auto* found = window.findChild<Control*>(name);
    if (!found)
        throw std::runtime_error("the window has no " + name.toStdString());
    return *found;
}

/// The window's picture is made, as on a screen.
void paint(QWidget& window) {
    QCoreApplication::processEvents();
    if (window.grab().isNull())
        throw std::runtime_error("the window has no picture");
}

struct Seconds {
    std::vector<double> identities;
    std::vector<double> opening;
    std::vector<double> lastRow;
    std::vector<double> slowestPage;
};

void measureOnce(MDI& shell, const QString& store, int punches, Seconds& seconds) {
    seconds.identities.push_back(readIdentities(store, punches));
    seconds.opening.push_back(timed([&] {
        OpenToolWindow(3);
        paint(shell);
    }));
    Window& form = *moduleWindow(3);
    auto& grid = at<QTableView>(form, QStringLiteral("TDBG1"));
    if (grid.model()->rowCount() != punches)
        throw std::runtime_error("the window shows another number of rows");
    seconds.lastRow.push_back(timed([&] {
        at<QPushButton>(form, QStringLiteral("CtrlCmd0(5)")).click();
        paint(shell);
    }));
    if (grid.currentIndex().row() != punches - 1)
        throw std::runtime_error("the window is not on its last row");
    double slowest = 0;
    for (int page = 0; page < Pages; ++page)
        slowest = std::max(slowest, timed([&] {
                               grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->maximum() /
                                                                  Pages * page);
                               paint(grid);
                           }));
    seconds.slowestPage.push_back(slowest);
    form.unload();
    QCoreApplication::processEvents();
}

void measure(int punches, int runs) {
    const ProgramFolder folder;
    insertPunches(folder.store(), punches);
    gDbPath = databaseFolder(folder.path());
    MDI shell;
    placeMainWindow(shell);
    gF3 = true;
    UnlockToolbar();
    shell.show();
    trimSystemMenu();
    Seconds seconds;
    for (int run = 0; run < runs; ++run)
        measureOnce(shell, folder.store(), punches, seconds);
    const double limit = median(seconds.identities);
    report("attendance window opened", median(seconds.opening), "reading the identities", limit, 3);
    report("its last row", median(seconds.lastRow), "reading the identities", limit, 3);
    report("slowest page of a scroll", median(seconds.slowestPage), "reading the identities", limit, 3);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const PontrelApplication application(argv);
    registerWindows();
    return runMeasure(argc, argv, {{QStringLiteral("punches"), 1000000}, {QStringLiteral("runs"), 3}},
                      [](const std::vector<int>& values) {
                          measure(values[0], values[1]);
                          return 0;
                      });
}
