// measure_day_close [--employees N] [--days N] [--runs N]: the import and daily calculation of one day, on an
// empty store and after days of imports, each held against its limit in the same run: the first day against
// the bulk insert of the same final rows by prepared statements in one transaction, the later day against the
// first.

#include "DayClose.h"
#include "Measure.h"
#include "Organisation.h"

#include "store/RunTimeError.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <sys/resource.h>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

/// Imports the file and returns the processor seconds that it took. Throws where the import ends early.
double import(const QString& programFolder, const QString& file) {
    DayClose day(programFolder);
    const QJsonObject answer = day.run(QStringLiteral("import=") + file);
    if (!answer[QStringLiteral("finished")].toBool())
        throw runTimeError(error::DiskOrStore, answer[QStringLiteral("why")].toString());
    return day.cpu();
}

/// The tables that a day is written into.
const std::vector<std::string> DailyTables = {"AtteTemp", "Atte01", "AtteTemp1", "View02",
                                              "Atte02",   "Atte03", "Over01"};

int measure(const Organisation& organisation, int runs) {
    std::vector<double> first;
    std::vector<double> bulk;
    const QDate lastDay = organisation.firstDay.addDays(organisation.days - 1);
    for (int run = 0; run < runs; ++run) {
        const ProgramFolder folder;
        {
            Database database(folder.store());
            organisation.create(database);
        }
        first.push_back(import(folder.path(), organisation.writePunchFile(folder.punches(), lastDay)));
        const ProgramFolder byHand;
        bulk.push_back(bulkInsert(byHand.store(), readContents(folder.store(), DailyTables)));
    }
    report("one day, empty store", median(first), "bulk insert of its rows", median(bulk), 1.5);

    const ProgramFolder folder;
    {
        Database database(folder.store());
        organisation.create(database);
    }
    for (int day = 0; day < organisation.days - 1; ++day)
        (void)import(folder.path(),
                     organisation.writePunchFile(folder.punches(), organisation.firstDay.addDays(day)));
    const QString file = organisation.writePunchFile(folder.punches(), lastDay);
    const QString kept = folder.path() + QStringLiteral("/kept.mdb");
    QFile::copy(folder.store(), kept);
    std::vector<double> later;
    for (int run = 0; run < runs; ++run) {
        QFile::remove(folder.store());
        QFile::copy(kept, folder.store());
        later.push_back(import(folder.path(), file));
    }
    report("the same day after the others", median(later), "the same day, empty store", median(first), 1.3);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("largest memory of the process: %ld MB\n", usage.ru_maxrss / 1024);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return runMeasure(
        argc, argv,
        {{QStringLiteral("employees"), 10000}, {QStringLiteral("days"), 26, 2}, {QStringLiteral("runs"), 3}},
        [](const std::vector<int>& values) {
            Organisation organisation;
            organisation.employees = values[0];
            organisation.days = values[1];
            return measure(organisation, values[2]);
        });
}
