// measure_writeoffs [--employees N] [--entries N] [--runs N]: a batch of write-offs for all employees, with
// no entries of the day there and once more over them, held in the same run against the bulk insert of the
// same rows by a prepared statement in one transaction; and the counts of one employee over a table of
// entries, held against one pass over his rows in the key. Fails where the two ways do not agree.

#include "Measure.h"

#include "rules/writeoff/WriteOffBatch.h"
#include "rules/writeoff/WriteOffCounts.h"
#include "store/Database.h"
#include "store/RunTimeError.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <string>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

const QDate Day(2010, 3, 1);      ///< Of the batch.
const QDate FirstDay(1000, 1, 1); ///< Of the entries: early enough for a million days.
const std::array<const char*, 5> Reasons = {"01", "02", "03", "04", "05"};

QString codeOf(int number) {
    return QString::number(number).rightJustified(5, u'0');
}

// The batch
// -------------------------------------------------------------------------------------------------------------

void runBatch(Database& database, int employees) {
    WriteOffBatch batch{.entries = {},
                        .date = Day,
                        .reasons = {QStringLiteral("01"), {}, {}, QStringLiteral("02")},
                        .gAccount = QStringLiteral("bench"),
                        .TransDate = QDateTime(Day, QTime(17, 30))};
    for (int number = 1; number <= employees; ++number)
        batch.entries += codeOf(number) + QStringLiteral("  員工");
    QuietHost<> host;
    RunWriteOffBatch(database, host, batch);
}

void measureBatch(int employees, int runs) {
    std::vector<double> first;
    std::vector<double> again;
    std::vector<double> bulk;
    for (int run = 0; run < runs; ++run) {
        const ProgramFolder folder;
        {
            Database database(folder.store());
            first.push_back(timed([&] { runBatch(database, employees); }));
            again.push_back(timed([&] { runBatch(database, employees); }));
        }
        const std::vector<Content> entries = readContents(folder.store(), {"Canc02"});
        if (entries.front().rows.size() != static_cast<std::size_t>(employees))
            throw std::runtime_error("the batch has left another number of entries");
        const ProgramFolder byHand;
        bulk.push_back(bulkInsert(byHand.store(), entries));
        if (readContents(byHand.store(), {"Canc02"}).front().rows != entries.front().rows)
            throw std::runtime_error("the two ways have left different entries");
    }
    report("write-off batch, none there yet", median(first), "bulk insert of its rows", median(bulk), 3);
    report("the same batch once more", median(again), "bulk insert of its rows", median(bulk), 3);
}

// The counts
// -------------------------------------------------------------------------------------------------------------

/// As many entries of each employee, on days one behind the other from the first one on.
void createEntries(const QString& store, int employees, int days) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(engine);
    for (const char* CnlNo : Reasons)
        engine.exec(std::string("INSERT INTO Canc01 VALUES ('") + CnlNo + "', 'reason', NULL)");
    SQLite::Statement insert(engine, "INSERT INTO Canc02 VALUES (?, ?, ?, ?, ?, ?, 'bench', NULL)");
    // As they are entered: day by day.
    for (int day = 0; day < days; ++day) {
        const std::string date = FirstDay.addDays(day).toString(u"yyyy-MM-dd").toStdString();
        for (int number = 1; number <= employees; ++number) {
            insert.bind(1, codeOf(number).toStdString());
            insert.bind(2, date);
            for (int swipe = 0; swipe < 4; ++swipe) {
                const auto reason = static_cast<std::size_t>((day + number + swipe) % 9);
                reason < Reasons.size() ? insert.bind(3 + swipe, Reasons.at(reason)) : insert.bind(3 + swipe);
            }
            insert.exec();
            insert.reset();
        }
    }
    transaction.commit();
}

using Counts = std::map<std::string, int>;

/// His rows, read once in the order of the key.
Counts passByHand(SQLite::Database& engine, const std::string& EmpNo, const std::string& first,
                  const std::string& last) {
    SQLite::Statement rows(engine, "SELECT CnlNo1, CnlNo2, CnlNo3, CnlNo4 FROM Canc02 WHERE EmpNo = ? "
                                   "AND CnlDate BETWEEN ? AND ?");
    rows.bind(1, EmpNo);
    rows.bind(2, first);
    rows.bind(3, last);
    Counts counts;
    while (rows.executeStep()) {
        for (int swipe = 0; swipe < 4; ++swipe) {
            if (!rows.isColumnNull(swipe))
                ++counts[rows.getColumn(swipe).getText()];
        }
    }
    return counts;
}

void measureCounts(int entries, int employees, int runs) {
    const int days = std::max(1, entries / employees);
    const ProgramFolder folder;
    createEntries(folder.store(), employees, days);
    const QString EmpNo = codeOf((employees + 1) / 2);
    const QDate last = FirstDay.addDays(days - 1);
    std::vector<double> counted;
    std::vector<double> passed;
    for (int run = 0; run < runs; ++run) {
        {
            Database database(folder.store());
            counted.push_back(timed([&] { CountWriteOffs(database, EmpNo, FirstDay, last); }));
        }
        SQLite::Database engine(folder.store().toStdString(), SQLite::OPEN_READONLY);
        Counts byHand;
        passed.push_back(timed([&] {
            byHand = passByHand(engine, EmpNo.toStdString(), FirstDay.toString(u"yyyy-MM-dd").toStdString(),
                                last.toString(u"yyyy-MM-dd").toStdString());
        }));
        SQLite::Statement rows(engine, "SELECT CnlNo, CnlTimes FROM View01");
        Counts left;
        while (rows.executeStep())
            left[rows.getColumn(0).getText()] = rows.getColumn(1).getInt();
        if (left != byHand || left.empty())
            throw std::runtime_error("the two ways have counted differently");
    }
    const QByteArray what = QStringLiteral("counts, %1 entries of one").arg(days).toUtf8();
    report(what.constData(), median(counted), "one pass over his rows", median(passed), 3);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return runMeasure(argc, argv,
                      {{QStringLiteral("employees"), 10000},
                       {QStringLiteral("entries"), 1000000},
                       {QStringLiteral("runs"), 5}},
                      [](const std::vector<int>& values) {
                          measureBatch(values[0], values[2]);
                          for (const int people : {100, 10, 1})
                              measureCounts(values[1], people, values[2]);
                          return 0;
                      });
}
