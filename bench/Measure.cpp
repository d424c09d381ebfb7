#include "Measure.h"

#include "store/NewStore.h"
#include "store/StorePath.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDate>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>

namespace pontrel::bench {

namespace {

const std::string Null = "\x01";
constexpr int PunchesOfDay = 40'000;

std::string columnMarks(int count) {
    std::string marks = "?";
    for (int column = 1; column < count; ++column)
        marks += ", ?";
    return marks;
}

} // namespace

ProgramFolder::ProgramFolder() {
    createStore(store(), {punches(), QStringLiteral("bench"), QStringLiteral("bench")});
}

QString ProgramFolder::store() const {
    return storePathIn(folder_.path());
}

double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

double timed(const std::function<void()>& routine) {
    const double before = processorSeconds();
    routine();
    return processorSeconds() - before;
}

double median(std::vector<double> seconds) {
    std::sort(seconds.begin(), seconds.end());
    return seconds[seconds.size() / 2];
}

void report(const char* what, double figure, const char* limitName, double limit, double goal) {
    std::printf("%-34s %8.3f s   %-30s %8.3f s   ratio %5.2f   goal %4.2f   %s\n", what, figure, limitName,
                limit, figure / limit, goal, figure <= goal * limit ? "reached" : "MISSED");
    std::fflush(stdout);
}

int runMeasure(int argc, char** argv, const std::vector<Number>& numbers,
               const std::function<int(const std::vector<int>& values)>& routine) {
    QStringList arguments;
    for (int argument = 0; argument < argc; ++argument)
        arguments += QString::fromLocal8Bit(argv[argument]);
    QCommandLineParser parser;
    for (const Number& number : numbers)
        parser.addOption({number.name, QString(), QStringLiteral("N"),
                          QString::number(std::max(number.usual, number.least))});
    parser.addHelpOption();
    parser.process(arguments);
    std::vector<int> values;
    for (const Number& number : numbers)
        values.push_back(std::max(number.least, parser.value(number.name).toInt()));
    try {
        return routine(values);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(QFileInfo(arguments.constFirst()).fileName()),
                     failure.what());
        return 1;
    }
}

long memoryOfProcess(const char* name) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word)
        if (word == name) {
            long kilobytes = 0;
            status >> kilobytes;
            return kilobytes;
        }
    return 0;
}

void resetPeak() {
    std::ofstream("/proc/self/clear_refs") << 5;
}

void reportMemory(const char* what, long kilobytes, long goal) {
    std::printf("%-34s %8ld kB   goal %ld kB   %s\n", what, kilobytes, goal,
                kilobytes <= goal ? "reached" : "MISSED");
    std::fflush(stdout);
}

void insertPunches(const QString& store, int punches) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(engine);
    SQLite::Statement insert(engine, "INSERT INTO Atte01 VALUES (?, ?, ?, '255', '001')");
    for (int punch = 0; punch < punches; ++punch) {
        const int inDay = punch % PunchesOfDay;
        const QDate day = QDate(2010, 1, 1).addDays(punch / PunchesOfDay);
        insert.bind(1, QString::number(inDay / 4 + 1).rightJustified(5, u'0').toStdString());
        insert.bind(2, day.toString(u"yyyy-MM-dd").toStdString());
        insert.bind(3, QTime(8 + 3 * (inDay % 4), inDay % 60).toString(u"HH:mm:ss").toStdString());
        insert.exec();
        insert.reset();
    }
    transaction.commit();
}

std::vector<Content> readContents(const QString& store, const std::vector<std::string>& tables) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY);
    std::vector<Content> contents;
    for (const std::string& table : tables) {
        SQLite::Statement all(engine, "SELECT * FROM " + table);
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

double bulkInsert(const QString& store, const std::vector<Content>& contents) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX);
    engine.exec("PRAGMA synchronous = EXTRA; PRAGMA cache_spill = OFF; PRAGMA cache_size = -65536");
    return timed([&] {
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
    });
}

} // namespace pontrel::bench
