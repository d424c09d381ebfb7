// measure_years [--employees N] [--days N]: days imported one after the other into one store, in one opening
// of the window: a late day held against an early one, a replaced day against a new one, the first day after
// the window was opened anew against one without that, and the size of the store.

#include "DayClose.h"
#include "Measure.h"
#include "Organisation.h"

#include "store/RunTimeError.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

namespace {

using namespace pontrel;
using namespace pontrel::bench;

constexpr int Window = 5; ///< Days that a figure is the median of.

class Years {
  public:
    explicit Years(const Organisation& organisation) : organisation_(organisation) {
        {
            Database database(folder_.store());
            organisation_.create(database);
        }
        day_ = std::make_unique<DayClose>(folder_.path());
    }

    /// Processor seconds of the import of a day, counted from 1.
    double import(int day) {
        const QString file =
            organisation_.writePunchFile(folder_.punches(), organisation_.firstDay.addDays(day - 1));
        const QJsonObject answer = day_->run(QStringLiteral("import=") + file);
        QFile::remove(file);
        if (!answer[QStringLiteral("finished")].toBool())
            throw runTimeError(error::DiskOrStore, answer[QStringLiteral("why")].toString());
        return day_->cpu();
    }

    void reopen() { (void)day_->run(QStringLiteral("reopen")); }

    /// The median of the last days up to that one.
    double importTo(int from, int to) {
        std::vector<double> last;
        for (int day = from; day <= to; ++day) {
            const double seconds = import(day);
            if (day > to - Window)
                last.push_back(seconds);
        }
        return median(last);
    }

    [[nodiscard]] double megabytes() const {
        return static_cast<double>(QFileInfo(folder_.store()).size()) / 1e6;
    }

  private:
    Organisation organisation_;
    ProgramFolder folder_;
    std::unique_ptr<DayClose> day_;
};

int measure(const Organisation& organisation) {
    const int early = std::min(50, organisation.days / 2);
    const int late = organisation.days - 2 * Window;
    Years years(organisation);
    const double earlyDay = years.importTo(1, early);
    const double lateDay = years.importTo(early + 1, late);
    report("a late day", lateDay, "an early day", earlyDay, 1.5);
    std::printf("the store after %d days of %d employees: %.1f MB\n", late, organisation.employees,
                years.megabytes());
    std::vector<double> reopened;
    for (int day = late + 1; day <= late + Window; ++day) {
        years.reopen();
        reopened.push_back(years.import(day));
    }
    report("a day after a new opening", median(reopened), "a late day", lateDay, 1.5);
    // The first one empties what all days before it have left in the staging tables.
    report("the first replaced day", years.import(late + Window), "a late day", lateDay, 2);
    std::vector<double> replaced;
    for (int time = 0; time < Window; ++time) {
        (void)years.import(late + Window + 1 + time);
        replaced.push_back(years.import(late + Window + 1 + time));
    }
    report("a further replaced day", median(replaced), "a late day", lateDay, 2);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return runMeasure(argc, argv,
                      {{QStringLiteral("employees"), 500}, {QStringLiteral("days"), 1010, 4 * Window}},
                      [](const std::vector<int>& values) {
                          Organisation organisation;
                          organisation.employees = values[0];
                          organisation.days = values[1];
                          return measure(organisation);
                      });
}
