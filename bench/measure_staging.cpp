// measure_staging [--employees N] [--runs N]: what the count of write-offs prepares for report E01 with 12
// reasons, held in the same run against its limit: the same statements prepared by hand, in one transaction.
// Fails where the two ways do not leave the same counts.

#include "Measure.h"

#include "rules/reports/Staging.h"
#include "store/Database.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCoreApplication>

#include <array>
#include <initializer_list>
#include <stdexcept>
#include <string>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

constexpr int Reasons = 12;
constexpr int Days = 12;
const QDate First(2010, 3, 1);

QString code(int number, int digits) {
    return QString::number(number).rightJustified(digits, u'0');
}

/// Employees with a write-off on each of some days, so that each has every reason.
void fill(const QString& store, int employees) {
    Database database(store);
    Stage stage(database);
    for (int reason = 1; reason <= Reasons; ++reason)
        database.execute(
            QStringLiteral("insert into Canc01(CnlNo,CnlName) values('%1','事由')").arg(code(reason, 2)));
    for (int number = 1; number <= employees; ++number) {
        database.execute(
            QStringLiteral("insert into Base06(EmpNo,UnitNo) values('%1','0100')").arg(code(number, 5)));
        for (int day = 0; day < Days; ++day)
            database.execute(
                QStringLiteral("insert into Canc02(EmpNo,CnlDate,CnlNo%1) values('%2',#2010/3/%3#,'%4')")
                    .arg(QString::number(day % 4 + 1), code(number, 5), QString::number(day + 1),
                         code((number + day) % Reasons + 1, 2)));
    }
    stage.finish();
}

double prepare(const QString& store) {
    const Report& report = *findReport(u"E01");
    ReportChoice choice = defaultChoice(report.tab, report.option);
    choice.dates = {First, First.addDays(Days / 2)};
    for (int reason = 1; reason <= Reasons; ++reason)
        choice.list.push_back({code(reason, 2) + QStringLiteral(" 事由"), true});
    Database database(store);
    return timed([&] { std::ignore = prepareReport(database, choice, First); });
}

/// Binds texts from that parameter on, which must outlive the run.
void bind(SQLite::Statement& statement, int parameter, std::initializer_list<const std::string*> texts) {
    for (const std::string* text : texts)
        statement.bindNoCopy(parameter++, *text);
}

/// The statements of the preparation for every employee and reason.
double prepareByHand(const QString& store, int employees) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE);
    engine.exec("PRAGMA synchronous = EXTRA; PRAGMA cache_spill = OFF; PRAGMA cache_size = -65536");
    const std::string first = First.toString(Qt::ISODate).toStdString();
    const std::string last = First.addDays(Days / 2).toString(Qt::ISODate).toStdString();
    return timed([&] {
        SQLite::Transaction transaction(engine);
        engine.exec("DELETE FROM View01");
        SQLite::Statement insert(engine, "INSERT INTO View01(EmpNo,BegDate,EndDate,CnlNo) VALUES(?,?,?,?)");
        SQLite::Statement add(engine,
                              "UPDATE View01 SET CnlTimes = CnlTimes + ? WHERE EmpNo = ? AND CnlNo = ?");
        const auto counting = [&](int place) {
            return SQLite::Statement(engine, "SELECT count(*) FROM Canc02 WHERE CnlDate BETWEEN ? AND ? AND "
                                             "EmpNo = ? AND CnlNo" +
                                                 std::to_string(place) + " = ?");
        };
        std::array counts{counting(1), counting(2), counting(3), counting(4)};
        for (int reason = 1; reason <= Reasons; ++reason)
            for (int number = 1; number <= employees; ++number) {
                const std::string EmpNo = code(number, 5).toStdString();
                const std::string CnlNo = code(reason, 2).toStdString();
                bind(insert, 1, {&EmpNo, &first, &last, &CnlNo});
                insert.exec();
                insert.reset();
                for (SQLite::Statement& count : counts) {
                    bind(count, 1, {&first, &last, &EmpNo, &CnlNo});
                    count.executeStep();
                    add.bind(1, count.getColumn(0).getInt());
                    count.reset();
                    bind(add, 2, {&EmpNo, &CnlNo});
                    add.exec();
                    add.reset();
                }
            }
        engine.exec("DELETE FROM View01 WHERE CnlTimes = 0");
        transaction.commit();
    });
}

void measureOnce(int employees, std::vector<double>& seconds, std::vector<double>& byHand) {
    const ProgramFolder prepared;
    const ProgramFolder limit;
    for (const ProgramFolder* folder : {&prepared, &limit})
        fill(folder->store(), employees);
    seconds.push_back(prepare(prepared.store()));
    byHand.push_back(prepareByHand(limit.store(), employees));
    const std::vector<Content> counts = readContents(prepared.store(), {"View01"});
    if (counts.front().rows != readContents(limit.store(), {"View01"}).front().rows)
        throw std::runtime_error("the two ways have left different counts");
    if (counts.front().rows.empty())
        throw std::runtime_error("nothing has been counted");
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return runMeasure(argc, argv, {{QStringLiteral("employees"), 2000}, {QStringLiteral("runs"), 5}},
                      [](const std::vector<int>& values) {
                          std::vector<double> seconds;
                          std::vector<double> byHand;
                          for (int run = 0; run < values[1]; ++run)
                              measureOnce(values[0], seconds, byHand);
                          report("write-offs counted for a report", median(seconds), "its statements by hand",
                                 median(byHand), 2);
                          return 0;
                      });
}
