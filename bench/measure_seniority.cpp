// measure_seniority [--employees N] [--runs N]: the seniority and the entitlement of all employees, each held
// in the same run against its limit: the update of one row an employee with the same final figures, by a
// prepared statement in one transaction. Fails where the two ways do not leave the same employees.

#include "Measure.h"

#include "rules/master/Entitlement.h"
#include "rules/master/Seniority.h"
#include "store/Database.h"
#include "store/Format.h"
#include "store/RunTimeError.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCoreApplication>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

constexpr int Schemes = 2;
const QDate Until(2009, 12, 31);

/// The window without a window: it gives the date, and an early end is a failure of the measurement.
class Host final : public QuietHost<SeniorityHost> {
  public:
    [[nodiscard]] QDate askDate() override { return Until; }
    void refreshRecordBar() override {}
    void openFailed(const RunTimeError& cause) override { throw cause; }
};

/// A store with employees who began on any day of forty years, two schemes, and a ladder of bands for each
/// leave.
class EmployeeStore {
  public:
    explicit EmployeeStore(int employees) {
        Database database(path());
        Stage stage(database);
        for (int number = 1; number <= employees; ++number)
            addEmployee(database, number);
        for (int scheme = 1; scheme <= Schemes; ++scheme)
            for (const char* HoliNo : {"01", "03", "04"})
                addGrants(database, scheme, QString::fromLatin1(HoliNo));
        stage.finish();
    }

    [[nodiscard]] QString path() const { return folder_.store(); }

  private:
    static void addEmployee(Database& database, int number) {
        const QDate IniArrDate = QDate(1969, 1, 1).addDays(number * 37 % 14'600);
        database.execute(
            QStringLiteral("insert into Base06(EmpNo,EmpName,SuitNo,IniArrDate,BreakY,SoldierY,HoliExper,"
                           "ThisYearUse) values('%1','員工%1','%2',#%3#,%4,%5,0,1.4)")
                .arg(QString::number(number).rightJustified(5, u'0'), QString::number(number % Schemes + 1),
                     shortDate(IniArrDate), QString::number(number % 7), QString::number(number % 25)));
    }
    static void addGrants(Database& database, int scheme, const QString& HoliNo) {
        constexpr int bounds[] = {0, 1, 3, 6, 9, 14, 99};
        for (std::size_t band = 0; band + 1 < std::size(bounds); ++band)
            database.execute(
                QStringLiteral("insert into Holi02(SuitNo,HoliNo,HoliYearBeg,HoliYearEnd,HoliDays) "
                               "values('%1','%2',%3,%4,%5)")
                    .arg(QString::number(scheme), HoliNo, QString::number(bounds[band]),
                         QString::number(bounds[band + 1]),
                         QString::number(static_cast<int>(band) * 7 + scheme)));
    }

    ProgramFolder folder_;
};

using Texts = std::vector<std::vector<std::string>>;

/// All columns of a selection in the engine's language, as text.
Texts read(const QString& store, const std::string& sql) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement all(engine, sql);
    Texts rows;
    while (all.executeStep()) {
        std::vector<std::string>& row = rows.emplace_back();
        for (int column = 0; column < all.getColumnCount(); ++column)
            row.push_back(all.getColumn(column).getString());
    }
    return rows;
}

/// Writes the columns into the employees by hand; each row's last text is the code.
double updateByHand(const QString& store, const std::string& sets, const Texts& rows) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE);
    engine.exec("PRAGMA synchronous = EXTRA; PRAGMA cache_spill = OFF; PRAGMA cache_size = -65536");
    return timed([&] {
        SQLite::Transaction transaction(engine);
        SQLite::Statement update(engine, "UPDATE Base06 SET " + sets + " WHERE EmpNo = ?");
        for (const auto& row : rows) {
            for (std::size_t column = 0; column < row.size(); ++column)
                update.bindNoCopy(static_cast<int>(column) + 1, row[column]);
            update.exec();
            update.reset();
        }
        transaction.commit();
    });
}

struct Seconds {
    std::vector<double> seniority;
    std::vector<double> seniorityByHand;
    std::vector<double> entitlement;
    std::vector<double> entitlementByHand;
};

void measureOnce(int employees, Seconds& seconds) {
    const EmployeeStore calculated(employees);
    const EmployeeStore byHand(employees);
    {
        Database database(calculated.path());
        Host host;
        seconds.seniority.push_back(timed([&] { ComputeSeniority(database, host); }));
        seconds.entitlement.push_back(timed([&] { ComputeEntitlement(database, host); }));
    }
    seconds.seniorityByHand.push_back(
        updateByHand(byHand.path(), "HoliExper = ?",
                     read(calculated.path(), "SELECT HoliExper, EmpNo FROM Base06 ORDER BY EmpNo")));
    seconds.entitlementByHand.push_back(
        updateByHand(byHand.path(),
                     "ThisYearHD = ?, ThisYearLeft = ?, LeaveHD = ?, LeaveLeft = ?, SickHD = ?, SickLeft = ?",
                     read(calculated.path(),
                          "SELECT ThisYearHD, ThisYearLeft, LeaveHD, LeaveLeft, SickHD, SickLeft, EmpNo "
                          "FROM Base06 ORDER BY EmpNo")));
    const std::string all = "SELECT * FROM Base06 ORDER BY EmpNo";
    if (read(calculated.path(), all) != read(byHand.path(), all))
        throw std::runtime_error("the two ways have left different employees");
    if (!read(calculated.path(), "SELECT EmpNo FROM Base06 WHERE SickLeft IS NULL").empty())
        throw std::runtime_error("an employee has been left without a grant");
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return runMeasure(argc, argv, {{QStringLiteral("employees"), 10000}, {QStringLiteral("runs"), 5}},
                      [](const std::vector<int>& values) {
                          Seconds seconds;
                          for (int run = 0; run < values[1]; ++run)
                              measureOnce(values[0], seconds);
                          report("seniority of all employees", median(seconds.seniority),
                                 "one update an employee", median(seconds.seniorityByHand), 3);
                          report("entitlement of all employees", median(seconds.entitlement),
                                 "one update an employee", median(seconds.entitlementByHand), 3);
                          return 0;
                      });
}
