// measure_overtime [--employees N] [--runs N]: the overtime batch over all employees, held in the same run
// against the bulk insert of the same rows by a prepared statement in one transaction. Fails where the two
// ways do not leave the same rows.

#include "Measure.h"

#include "rules/overtime/OvertimeBatch.h"
#include "store/Database.h"
#include "store/RunTimeError.h"

#include <QCoreApplication>

#include <stdexcept>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

const QDate Day(2010, 3, 1);
constexpr int FirstCode = 100'001;

/// Runs a batch over so many employees and returns its seconds.
double runBatchOver(const QString& store, int employees) {
    Database database(store);
    database.execute(QStringLiteral("Update Syst01 Set LenEmpNo = 6"));
    QuietHost<> host;
    OvertimeBatch batch{.entries = {},
                        .date = Day,
                        .BegTime = QTime(22, 0),
                        .EndTime = QTime(1, 30),
                        .OverHours = QStringLiteral("3"),
                        .gAccount = QStringLiteral("bench"),
                        .TransDate = QDateTime(Day, QTime(9, 0))};
    for (int number = 0; number < employees; ++number)
        batch.entries += QString::number(FirstCode + number) + QStringLiteral("  員工");
    return timed([&] { RunOvertimeBatch(database, host, batch); });
}

void measure(int employees, int runs) {
    std::vector<double> batch;
    std::vector<double> bulk;
    for (int run = 0; run < runs; ++run) {
        const ProgramFolder folder;
        batch.push_back(runBatchOver(folder.store(), employees));
        const std::vector<Content> rows = readContents(folder.store(), {"Over01"});
        if (rows.front().rows.size() != static_cast<std::size_t>(employees))
            throw std::runtime_error("the batch has written another number of rows");
        const ProgramFolder byHand;
        bulk.push_back(bulkInsert(byHand.store(), rows));
        if (readContents(byHand.store(), {"Over01"}).front().rows != rows.front().rows)
            throw std::runtime_error("the two ways have left different rows");
    }
    report("overtime batch", median(batch), "bulk insert of its rows", median(bulk), 3);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return runMeasure(argc, argv, {{QStringLiteral("employees"), 10000}, {QStringLiteral("runs"), 15}},
                      [](const std::vector<int>& values) {
                          measure(values[0], values[1]);
                          return 0;
                      });
}
