// measure_day_close [--employees N] [--days N] [--runs N]: the import and daily calculation of one day, on an
// empty store and after days of imports, each held against its limit in the same run: the first day against
// the bulk insert of the same final rows by prepared statements in one transaction, the later day against the
// first.

#include "DayClose.h"
#include "Organisation.h"

#include "store/NewStore.h"
#include "store/RunTimeError.h"
#include "store/Schema.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <sys/resource.h>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

double median(std::vector<double> seconds) {
    std::sort(seconds.begin(), seconds.end());
    return seconds[seconds.size() / 2];
}

/// A program folder with a new store, in a temporary folder.
class ProgramFolder {
  public:
    ProgramFolder() { createStore(store(), {punches(), QStringLiteral("bench"), QStringLiteral("bench")}); }
    [[nodiscard]] QString path() const { return folder_.path(); }
    [[nodiscard]] QString store() const { return folder_.filePath(QStringLiteral("DB/Pontrel.mdb")); }
    [[nodiscard]] QString punches() const { return folder_.path(); }

  private:
    QTemporaryDir folder_;
};

/// Imports the file and returns the seconds that it took. Throws where the import ends early.
double import(const QString& programFolder, const QString& file) {
    DayClose day(programFolder);
    const QJsonObject answer = day.run(QStringLiteral("import=") + file);
    if (!answer[QStringLiteral("finished")].toBool())
        throw runTimeError(error::DiskOrStore, answer[QStringLiteral("why")].toString());
    return answer[QStringLiteral("seconds")].toDouble();
}

std::string columnMarks(int count) {
    std::string marks = "?";
    for (int column = 1; column < count; ++column)
        marks += ", ?";
    return marks;
}

/// A table's rows as the engine holds them.
struct Content {
    std::string table;
    std::vector<std::vector<std::string>> rows; ///< Nulls are told by the mark.
    int columns = 0;
};

const std::string Null = "\x01";

std::vector<Content> readContents(const QString& store) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY);
    std::vector<Content> contents;
    for (const char* table : {"AtteTemp", "Atte01", "AtteTemp1", "View02", "Atte02", "Atte03", "Over01"}) {
        SQLite::Statement all(engine, std::string("SELECT * FROM ") + table);
        Content content{table, {}, all.getColumnCount()};
        while (all.executeStep()) {
            std::vector<std::string>& row = content.rows.emplace_back();
            for (int column = 0; column < content.columns; ++column)
                row.push_back(all.isColumnNull(column) ? Null : all.getColumn(column).getString());
        }
        contents.push_back(std::move(content));
    }
    return contents;
}

/// Inserts the rows into a new store by hand, in one transaction, and returns the seconds.
double bulkInsert(const std::vector<Content>& contents) {
    const ProgramFolder folder;
    SQLite::Database engine(folder.store().toStdString(), SQLite::OPEN_READWRITE);
    engine.exec("PRAGMA synchronous = EXTRA; PRAGMA cache_spill = OFF; PRAGMA cache_size = -65536");
    QElapsedTimer timer;
    timer.start();
    SQLite::Transaction transaction(engine);
    for (const Content& content : contents) {
        SQLite::Statement insert(engine, "INSERT INTO " + content.table + " VALUES (" +
                                             columnMarks(content.columns) + ")");
        for (const auto& row : content.rows) {
            for (std::size_t column = 0; column < row.size(); ++column) {
                const int parameter = static_cast<int>(column) + 1;
                row[column] == Null ? insert.bind(parameter) : insert.bindNoCopy(parameter, row[column]);
            }
            insert.exec();
            insert.reset();
        }
    }
    transaction.commit();
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

void report(const char* what, double figure, const char* limitName, double limit) {
    std::printf("%-34s %8.3f s   %-30s %8.3f s   ratio %5.2f   goal 3.00   %s\n", what, figure, limitName,
                limit, figure / limit, figure <= 3 * limit ? "reached" : "MISSED");
}

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
        bulk.push_back(bulkInsert(readContents(folder.store())));
    }
    report("one day, empty store", median(first), "bulk insert of its rows", median(bulk));
    std::fflush(stdout);

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
    report("the same day after the others", median(later), "the same day, empty store", median(first));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("largest memory of the process: %ld MB\n", usage.ru_maxrss / 1024);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption employees(QStringLiteral("employees"), QString(), QStringLiteral("N"),
                                       QStringLiteral("10000"));
    const QCommandLineOption days(QStringLiteral("days"), QString(), QStringLiteral("N"),
                                  QStringLiteral("26"));
    const QCommandLineOption runs(QStringLiteral("runs"), QString(), QStringLiteral("N"),
                                  QStringLiteral("3"));
    parser.addOptions({employees, days, runs});
    parser.addHelpOption();
    parser.process(application);
    Organisation organisation;
    organisation.employees = std::max(1, parser.value(employees).toInt());
    organisation.days = std::max(2, parser.value(days).toInt());
    try {
        return measure(organisation, std::max(1, parser.value(runs).toInt()));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "measure_day_close: %s\n", failure.what());
        return 1;
    }
}
