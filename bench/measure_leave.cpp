// measure_leave [--employees N] [--notes N] [--runs N]: a leave batch over all employees, held in the same
// run against the bulk insert of its notes and day rows with the update of its balances, by prepared
// statements in one transaction; and a note entered beside many others, held against the same note in an
// empty store. Fails where the batch leaves other rows than it should.

#include "Measure.h"

#include "rules/leave/LeaveBatch.h"
#include "rules/leave/LeaveNotes.h"
#include "store/Database.h"
#include "store/Format.h"
#include "store/Recordset.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCoreApplication>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

const QDate Day(2010, 3, 1);
constexpr int FirstCode = 100'001;

class Host final : public QuietHost<LeaveBatchHost> {
  public:
    void showHours(const QString& /*HoliHours*/) override {}
};

/// A store with employees who are rostered on the day and have seven days of leave.
class EmployeeStore {
  public:
    explicit EmployeeStore(int employees) {
        SQLite::Database engine(path().toStdString(), SQLite::OPEN_READWRITE);
        SQLite::Transaction transaction(engine);
        engine.exec(
            "INSERT INTO Base04 (TimeNo, CardType, StdT1, StdT2, StdT3, StdT4) VALUES ('A', 4, '08:00:00', "
            "'12:00:00', '13:00:00', '17:00:00')");
        engine.exec("INSERT INTO Holi01 (HoliNo, HoliDeduct) VALUES ('01', 1)");
        const std::string codes = "WITH n(i) AS (SELECT " + std::to_string(FirstCode) +
                                  " UNION ALL SELECT i + 1 FROM n WHERE i < " +
                                  std::to_string(FirstCode + employees - 1) + ") ";
        engine.exec("INSERT INTO Base06 (EmpNo, EmpName, ThisYearHD, ThisYearUse, ThisYearLeft) " + codes +
                    "SELECT i, '員工' || i, 7, 0, 7 FROM n");
        engine.exec("INSERT INTO Rule03 (EmpNo, YMD, TimeNo) " + codes +
                    "SELECT i, '2010-03-01', 'A' FROM n");
        transaction.commit();
    }

    /// Adds so many notes of other days and employees with a day row each, a tenth of them entered on the
    /// same day.
    void addNotes(int count) const {
        if (count == 0)
            return;
        SQLite::Database engine(path().toStdString(), SQLite::OPEN_READWRITE);
        SQLite::Transaction transaction(engine);
        const std::string numbers = "WITH n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                                    std::to_string(count - 1) + ") ";
        const std::string number =
            "(CASE i % 10 WHEN 0 THEN '20100301' ELSE printf('%04d0101', 2000 + i % 10) END "
            "|| printf('%06d', i / 10))";
        engine.exec("INSERT INTO Holi03 (BusNo, EmpNo, HoliNo, HoliHours, TransType) " + numbers + "SELECT " +
                    number + ", 500000 + i % 1000, '01', 1, 1 FROM n");
        engine.exec("INSERT INTO Holi04 (BusNo, EmpNo, HoliNo, HoliDate, HoliHours) " + numbers + "SELECT " +
                    number +
                    ", 500000 + i % 1000, '01', date('2000-01-01', (i / 1000) || ' days'), 8 FROM n");
        transaction.commit();
    }

    [[nodiscard]] QString path() const { return folder_.store(); }

  private:
    ProgramFolder folder_;
};

/// Runs a batch over them all and returns its seconds.
double runBatchOver(const QString& store, int employees) {
    Database database(store);
    Host host;
    LeaveValues values;
    LeaveBatch batch{.entries = {},
                     .LenEmpNo = 6,
                     .HoliNo = QStringLiteral("01"),
                     .codes = readBalanceCodes(database),
                     .date = Day,
                     .HoliBegTime = QTime(8, 0),
                     .HoliEndTime = QTime(17, 0),
                     .gAccount = QStringLiteral("bench"),
                     .TransDate = QDateTime(Day, QTime(9, 0))};
    for (int number = 0; number < employees; ++number)
        batch.entries += QString::number(FirstCode + number) + QStringLiteral("  員工");
    return timed([&] { RunLeaveBatch(database, host, values, batch); });
}

/// The rows of a batch written by hand.
double batchByHand(const QString& store, const std::vector<Content>& rows, const Content& employees) {
    double seconds = bulkInsert(store, rows);
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX);
    engine.exec("PRAGMA synchronous = EXTRA; PRAGMA cache_spill = OFF; PRAGMA cache_size = -65536");
    seconds += timed([&] {
        SQLite::Transaction transaction(engine);
        SQLite::Statement update(engine,
                                 "UPDATE Base06 SET ThisYearUse = 1.0, ThisYearLeft = 6.0 WHERE EmpNo = ?");
        for (const auto& employee : employees.rows) {
            update.bindNoCopy(1, employee.front());
            update.exec();
            update.reset();
        }
        transaction.commit();
    });
    return seconds;
}

void measureBatch(int employees, std::vector<double>& batch, std::vector<double>& byHand) {
    const EmployeeStore written(employees);
    const EmployeeStore inserted(employees);
    batch.push_back(runBatchOver(written.path(), employees));
    const std::vector<std::string> tables{"Base06", "Holi03", "Holi04"};
    const std::vector<Content> contents = readContents(written.path(), tables);
    byHand.push_back(batchByHand(inserted.path(), {contents[1], contents[2]}, contents[0]));
    const std::vector<Content> same = readContents(inserted.path(), tables);
    for (std::size_t table = 0; table < tables.size(); ++table)
        if (contents[table].rows != same[table].rows ||
            contents[table].rows.size() != static_cast<std::size_t>(employees))
            throw std::runtime_error("the two ways have left different rows in " + tables[table]);
}

/// Enters some notes one after the other, as the window does from "new" to "save".
double enterNotes(const EmployeeStore& store) {
    constexpr int Notes = 50;
    Database database(store.path());
    Host host;
    LeaveValues values;
    LeaveNotes notes(database, host, values);
    Recordset set = database.openRecordset(QStringLiteral("Holi03"));
    const auto enter = [&](int number) {
        const Leave leave{
            QString::number(FirstCode + number), QStringLiteral("01"), Day, Day, QTime(8, 0), QTime(17, 0)};
        set.AddNew();
        values.setBusNo(notes.NewBusNo(Day));
        const std::int16_t hours = notes.CountLeaveHours(leave);
        if (hours != 8 || notes.IsLeaveDuplicate(leave.EmpNo, Day, Day, EditMode::Add))
            throw std::runtime_error("a note is not what it should be");
        notes.InsertLeaveDays(leave);
        set.setField(QStringLiteral("BusNo"), values.BusNo());
        set.setField(QStringLiteral("EmpNo"), leave.EmpNo);
        set.setField(QStringLiteral("HoliNo"), leave.HoliNo);
        set.setField(QStringLiteral("HoliHours"), numberOfHours(hours));
        set.Update();
    };
    enter(0); // makes the statements ready
    return timed([&] {
        for (int number = 1; number <= Notes; ++number)
            enter(number);
    });
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return runMeasure(argc, argv,
                      {{QStringLiteral("employees"), 10000, 100},
                       {QStringLiteral("notes"), 1000000},
                       {QStringLiteral("runs"), 5}},
                      [](const std::vector<int>& values) {
                          std::vector<double> batch, byHand, beside, alone;
                          for (int run = 0; run < values[2]; ++run) {
                              measureBatch(values[0], batch, byHand);
                              const EmployeeStore empty(100);
                              const EmployeeStore full(100);
                              full.addNotes(values[1]);
                              beside.push_back(enterNotes(full));
                              alone.push_back(enterNotes(empty));
                          }
                          report("leave batch", median(batch), "bulk insert and update", median(byHand), 3);
                          report("a note beside many others", median(beside), "a note alone", median(alone),
                                 3);
                          return 0;
                      });
}
