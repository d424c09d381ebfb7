#include "faults/Workload.h"
#include "rules/leave/LeaveBatch.h"
#include "store/NewStore.h"
#include "support/Builders.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int Employees = 3000;
constexpr quint32 Seed = 20010305;
const QDate Day(2001, 3, 5);

class Host final : public QuietHost<LeaveBatchHost> {
  public:
    void showHours(const QString& /*HoliHours*/) override {}
};

QString codeOf(int number) {
    return QString::number(100'000 + number);
}

/// The batch over all employees, in the process that calls.
void runBatchOver(const QString& programFolder) {
    Database database(storePath(programFolder));
    Host host;
    LeaveValues values;
    LeaveBatch batch{.entries = {},
                     .LenEmpNo = 6,
                     .HoliNo = u"01"_s,
                     .codes = readBalanceCodes(database),
                     .date = Day,
                     .HoliBegTime = QTime(8, 0),
                     .HoliEndTime = QTime(17, 0),
                     .gAccount = u"clerk"_s,
                     .TransDate = QDateTime(Day, QTime(9, 0))};
    for (int number = 0; number < Employees; ++number)
        batch.entries += codeOf(number);
    RunLeaveBatch(database, host, values, batch);
}

/// A child process over the batch.
class BatchProcess {
  public:
    explicit BatchProcess(const QString& programFolder) : process_(::fork()) {
        if (process_ != 0)
            return;
        try {
            runBatchOver(programFolder);
            ::_exit(0);
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "%s\n", failure.what());
            ::_exit(1);
        }
    }
    void kill() { ::kill(process_, SIGKILL); }
    /// The status that waiting for its end gives.
    [[nodiscard]] int end() {
        int status = -1;
        ::waitpid(process_, &status, 0);
        return status;
    }

  private:
    pid_t process_;
};

} // namespace

/// A leave batch killed in the middle: of each employee the store has note, day row and charge, or nothing.
class BatchKillTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString kept_; ///< The store before the batch.

    [[nodiscard]] QString folder() const { return folder_.path(); }

    void layOut() {
        const QString store = storePath(folder());
        QFile::remove(store + u"-journal"_s);
        if (QFile::exists(store))
            QVERIFY(QFile::remove(store));
        QVERIFY(QFile::copy(kept_, store));
    }

    /// Employees whom the batch has reached. Fails where one has a part of it, or one is left out before
    /// another.
    void countWhole(int& reached) {
        Database database(storePath(folder()));
        QHash<QString, int> notes;
        QHash<QString, int> days;
        for (const auto& row : database.select(u"select EmpNo from Holi03"_s))
            ++notes[row.at(0).toText()];
        for (const auto& row : database.select(u"select EmpNo from Holi04"_s))
            ++days[row.at(0).toText()];
        reached = 0;
        const Rows employees =
            database.select(u"select EmpNo,ThisYearUse,ThisYearLeft from Base06 order by EmpNo"_s);
        QCOMPARE(employees.count(), std::size_t{Employees});
        for (std::size_t row = 0; row < employees.count(); ++row) {
            const QString EmpNo = employees.at(row, u"EmpNo").toText();
            const int parts = notes[EmpNo] + days[EmpNo] + int(employees.at(row, u"ThisYearUse").toReal());
            QVERIFY2(parts == 0 || parts == 3, qPrintable(EmpNo));
            QCOMPARE(notes[EmpNo], days[EmpNo]);
            QCOMPARE(employees.at(row, u"ThisYearLeft"), Value(parts == 0 ? 7.0 : 6.0));
            if (parts == 3)
                QCOMPARE(reached++, int(row));
        }
    }

    /// Kills a batch when the routine returns, and looks into the store.
    void killWhen(const std::function<void()>& wait, int& reached) {
        layOut();
        BatchProcess process(folder());
        wait();
        process.kill();
        const int status = process.end();
        QVERIFY(WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) == 0));
        countWhole(reached);
        if (!QTest::currentTestFailed())
            QCOMPARE(integrityOf(folder()), u"ok"_s);
    }

  private Q_SLOTS:
    void initTestCase() {
        kept_ = folder() + u"/kept.mdb"_s;
        createStore(storePath(folder()), {folder(), u"clerk"_s, u"clerk"_s});
        {
            Database database(storePath(folder()));
            Stage stage(database);
            addSlot(database, u"A"_s);
            insertRow(database, u"Holi01"_s, {{u"HoliNo", u"01"}, {u"HoliDeduct", true}});
            for (int number = 0; number < Employees; ++number) {
                addEmployee(database, codeOf(number),
                            {{u"ThisYearHD", 7.0}, {u"ThisYearUse", 0.0}, {u"ThisYearLeft", 7.0}});
                addRoster(database, codeOf(number), Day, u"A"_s);
            }
            stage.finish();
        }
        QVERIFY(QFile::copy(storePath(folder()), kept_));
    }

    void aBatchLeftAloneReachesAll() {
        layOut();
        QCOMPARE(BatchProcess(folder()).end(), 0);
        int reached = 0;
        countWhole(reached);
        QCOMPARE(reached, Employees);
    }

    void aKillAtAnyMomentLeavesWholeEmployees() {
        layOut();
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(BatchProcess(folder()).end(), 0);
        const double whole = static_cast<double>(timer.nsecsElapsed()) / 1000;
        QMap<int, int> seen;
        for (const double moment : momentsOf(30, Seed)) {
            int reached = 0;
            killWhen([&] { QThread::usleep(static_cast<unsigned long>(moment * whole)); }, reached);
            if (QTest::currentTestFailed())
                return;
            ++seen[reached];
        }
        QStringList told;
        for (const auto& [reached, count] : seen.asKeyValueRange())
            told += u"%1 with %2"_s.arg(count).arg(reached);
        qInfo("Kills left the store: %s.", qPrintable(told.join(u", "_s)));
    }

    void aKillAtEachCommitLeavesWholeEmployees() {
        layOut();
        const quint32 before = changesOf(folder());
        // The counter rises before its commit is done, so that the kill may still take that one back.
        for (quint32 change = 2; change <= 4; ++change) {
            int reached = 0;
            killWhen(
                [&] {
                    QElapsedTimer timer;
                    timer.start();
                    while (changesOf(folder()) - before < change && timer.elapsed() < 60'000)
                        QThread::usleep(20);
                },
                reached);
            if (QTest::currentTestFailed())
                return;
            QVERIFY(reached > 0);
        }
    }
};

QTEST_GUILESS_MAIN(BatchKillTest)
#include "BatchKillTest.moc"
