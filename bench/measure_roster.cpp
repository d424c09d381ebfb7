// measure_roster [--employees N] [--days N] [--runs N]: the roster of one class over a range of days,
// generated on an empty roster and again over it, held in the same run against the bulk insert of the same
// rows by a prepared statement in one transaction. Fails where the two ways do not leave the same roster.

#include "Measure.h"

#include "rules/schedule/RosterGeneration.h"
#include "store/Database.h"
#include "store/RunTimeError.h"

#include <QCoreApplication>

#include <stdexcept>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

const QDate Start(2010, 3, 1);

/// The window without a window.
class Host final : public QuietHost<RosterHost> {
  public:
    void showDay(QDate) override {}
    void refreshRoster() override {}
};

void createEmployees(Database& database, int employees, int days) {
    Stage stage(database);
    database.execute(QStringLiteral("insert into Base05(ClsNo,ClassName,TimeNo1,TimeDay1,TimeRest1) "
                                    "values('001','日班','A',%1,0)")
                         .arg(days));
    for (int number = 1; number <= employees; ++number)
        database.execute(QStringLiteral("insert into Base06(EmpNo,EmpName,ClsNo) values('%1','員工%1','001')")
                             .arg(QString::number(number).rightJustified(5, u'0')));
    stage.finish();
}

void generate(Database& database, int days) {
    Host host;
    QString gPickClsNo;
    QString gPickEmpNo;
    RosterGeneration generation(database, host, {gPickClsNo, gPickEmpNo, Start, Start});
    generation.GenerateRoster({QStringLiteral("000000"), QStringLiteral("ZZZZZZ"), Start,
                               Start.addDays(days - 1), QStringLiteral("0000"), QStringLiteral("ZZZZ")});
}

void measure(int employees, int days, int runs) {
    std::vector<double> first;
    std::vector<double> again;
    std::vector<double> bulk;
    for (int run = 0; run < runs; ++run) {
        const ProgramFolder folder;
        {
            Database database(folder.store());
            createEmployees(database, employees, days);
            first.push_back(timed([&] { generate(database, days); }));
            again.push_back(timed([&] { generate(database, days); }));
        }
        const std::vector<Content> roster = readContents(folder.store(), {"Rule03"});
        if (roster.front().rows.size() !=
            static_cast<std::size_t>(employees) * static_cast<std::size_t>(days))
            throw std::runtime_error("the roster has another number of rows");
        const ProgramFolder byHand;
        bulk.push_back(bulkInsert(byHand.store(), roster));
        if (readContents(byHand.store(), {"Rule03"}).front().rows != roster.front().rows)
            throw std::runtime_error("the two ways have left different rosters");
    }
    report("roster, none there yet", median(first), "bulk insert of its rows", median(bulk), 1);
    report("the same roster once more", median(again), "bulk insert of its rows", median(bulk), 1.5);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return runMeasure(
        argc, argv,
        {{QStringLiteral("employees"), 10000}, {QStringLiteral("days"), 31}, {QStringLiteral("runs"), 3}},
        [](const std::vector<int>& values) {
            measure(values[0], values[1], values[2]);
            return 0;
        });
}
