#include "faults/Workload.h"
#include "rules/leave/LeaveBatch.h"
#include "rules/overtime/OvertimeBatch.h"
#include "rules/writeoff/WriteOffBatch.h"
#include "store/NewStore.h"
#include "support/Builders.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <csignal>
#include <functional>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int Employees = 6000; ///< Three stages of them.
constexpr quint32 Seed = 20010305;
const QDate Day(2001, 3, 5);

class Host final : public QuietHost<LeaveBatchHost> {
  public:
    void showHours(const QString& /*HoliHours*/) override {}
};

QString codeOf(int number) {
    return QString::number(100'000 + number);
}

QStringList allCodes() {
    QStringList codes;
    for (int number = 0; number < Employees; ++number)
        codes += codeOf(number);
    return codes;
}

// The batches
// -------------------------------------------------------------------------------------------------------------

/// A batch over all employees.
struct Kind {
    void (*prepare)(Database& database); ///< Writes what is there before it.
    void (*run)(Database& database);
    /// How much of each employee it has written, in the order of the codes: 0 nothing, 1 all, anything else a
    /// part.
    QList<double> (*written)(Database& database);
};

void prepareLeave(Database& database) {
    addSlot(database, u"A"_s);
    insertRow(database, u"Holi01"_s, {{u"HoliNo", u"01"}, {u"HoliDeduct", true}});
    for (const QString& EmpNo : allCodes()) {
        addEmployee(database, EmpNo, {{u"ThisYearHD", 7.0}, {u"ThisYearUse", 0.0}, {u"ThisYearLeft", 7.0}});
        addRoster(database, EmpNo, Day, u"A"_s);
    }
}

void runLeave(Database& database) {
    Host host;
    LeaveValues values;
    RunLeaveBatch(database, host, values,
                  {.entries = allCodes(),
                   .LenEmpNo = 6,
                   .HoliNo = u"01"_s,
                   .codes = readBalanceCodes(database),
                   .date = Day,
                   .HoliBegTime = QTime(8, 0),
                   .HoliEndTime = QTime(17, 0),
                   .gAccount = u"clerk"_s,
                   .TransDate = QDateTime(Day, QTime(9, 0))});
}

/// Note, day row and both figures of the balance.
QList<double> writtenLeave(Database& database) {
    QHash<QString, int> rows;
    for (const QString& table : {u"Holi03"_s, u"Holi04"_s}) {
        for (const auto& row : database.select(u"select EmpNo from "_s + table))
            ++rows[row.at(0).toText()];
    }
    QList<double> written;
    for (const auto& row :
         database.select(u"select EmpNo,ThisYearUse,ThisYearLeft from Base06 order by EmpNo"_s))
        written += (rows[row.at(0).toText()] + row.at(1).toReal() + (7.0 - row.at(2).toReal())) / 4;
    return written;
}

void prepareWriteOffs(Database& database) {
    database.execute(u"Update Syst01 Set LenEmpNo = 6"_s);
    for (const QString& EmpNo : allCodes())
        addWriteOff(database, EmpNo, Day, u"02"_s, u"02"_s, {}, {});
}

void runWriteOffs(Database& database) {
    QuietHost<> host;
    RunWriteOffBatch(database, host,
                     {.entries = allCodes(),
                      .date = Day,
                      .reasons = {u"01"_s, {}, {}, u"01"_s},
                      .gAccount = u"clerk"_s,
                      .TransDate = QDateTime(Day, QTime(9, 0))});
}

/// The old entry or the new one; without any an employee has lost the old one and not got the new.
QList<double> writtenWriteOffs(Database& database) {
    QHash<QString, double> written;
    for (const auto& row : database.select(u"select EmpNo,CnlNo1,CnlNo2,CnlNo4 from Canc02"_s)) {
        const QString reasons = row.at(1).joined() + u'|' + row.at(2).joined() + u'|' + row.at(3).joined();
        written[row.at(0).toText()] = reasons == u"01||01"_s ? 1 : reasons == u"02|02|"_s ? 0 : 0.5;
    }
    QList<double> all;
    for (const QString& EmpNo : allCodes())
        all += written.value(EmpNo, 0.5);
    return all;
}

void prepareOvertime(Database& database) {
    database.execute(u"Update Syst01 Set LenEmpNo = 6"_s);
}

void runOvertime(Database& database) {
    QuietHost<> host;
    RunOvertimeBatch(database, host,
                     {.entries = allCodes(),
                      .date = Day,
                      .BegTime = QTime(22, 0),
                      .EndTime = QTime(1, 30),
                      .OverHours = u"3"_s,
                      .gAccount = u"clerk"_s,
                      .TransDate = QDateTime(Day, QTime(9, 0))});
}

/// A single row, with all that belongs in it.
QList<double> writtenOvertime(Database& database) {
    QHash<QString, double> written;
    for (const auto& row : database.select(
             u"select EmpNo,OverHours from Over01 where OverDate = #2001/3/5# and BegTime = #22:00:00# "
             "and EndTime = #01:30:00# and Account = 'clerk' and isnull(TransDate) = False"_s))
        written[row.at(0).toText()] += row.at(1).toReal() / 3;
    QList<double> all;
    for (const QString& EmpNo : allCodes())
        all += written.value(EmpNo);
    return all;
}

const QMap<QString, Kind> Kinds = {{u"leave"_s, {prepareLeave, runLeave, writtenLeave}},
                                   {u"overtime"_s, {prepareOvertime, runOvertime, writtenOvertime}},
                                   {u"write-offs"_s, {prepareWriteOffs, runWriteOffs, writtenWriteOffs}}};

/// A child process over the batch.
class BatchProcess {
  public:
    BatchProcess(const Kind& kind, const QString& programFolder) : process_(::fork()) {
        if (process_ != 0)
            return;
        try {
            Database database(storePath(programFolder));
            kind.run(database);
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

/// A batch killed in the middle: of each employee the store has all that it writes, or what was there before.
class BatchKillTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder_;
    QString kept_; ///< The store before the batch.
    Kind kind_;

    [[nodiscard]] QString folder() const { return folder_->path(); }

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
        const QList<double> written = kind_.written(database);
        QCOMPARE(written.size(), Employees);
        reached = 0;
        for (qsizetype employee = 0; employee < written.size(); ++employee) {
            QVERIFY2(written.at(employee) == 0 || written.at(employee) == 1,
                     qPrintable(codeOf(int(employee))));
            if (written.at(employee) == 1)
                QCOMPARE(reached++, int(employee));
        }
    }

    /// Kills a batch when the routine returns, and looks into the store.
    void killWhen(const std::function<void()>& wait, int& reached) {
        layOut();
        BatchProcess process(kind_, folder());
        wait();
        process.kill();
        const int status = process.end();
        QVERIFY(WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) == 0));
        countWhole(reached);
        if (!QTest::currentTestFailed())
            QCOMPARE(integrityOf(folder()), u"ok"_s);
    }

    static void addKinds() {
        QTest::addColumn<QString>("kind");
        for (const auto& [name, kind] : Kinds.asKeyValueRange())
            QTest::newRow(qPrintable(name)) << name;
    }

  private Q_SLOTS:
    void init() {
        QFETCH(const QString, kind);
        kind_ = Kinds.value(kind);
        folder_ = std::make_unique<QTemporaryDir>();
        kept_ = folder() + u"/kept.mdb"_s;
        createStore(storePath(folder()), {folder(), u"clerk"_s, u"clerk"_s});
        {
            Database database(storePath(folder()));
            Stage stage(database);
            kind_.prepare(database);
            stage.finish();
        }
        QVERIFY(QFile::copy(storePath(folder()), kept_));
    }

    void aBatchLeftAloneReachesAll_data() { addKinds(); }
    void aBatchLeftAloneReachesAll() {
        layOut();
        QCOMPARE(BatchProcess(kind_, folder()).end(), 0);
        int reached = 0;
        countWhole(reached);
        QCOMPARE(reached, Employees);
    }

    void aKillAtAnyMomentLeavesWholeEmployees_data() { addKinds(); }
    void aKillAtAnyMomentLeavesWholeEmployees() {
        layOut();
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(BatchProcess(kind_, folder()).end(), 0);
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

    void aKillAtEachCommitLeavesWholeEmployees_data() { addKinds(); }
    void aKillAtEachCommitLeavesWholeEmployees() {
        layOut();
        const quint32 before = changesOf(folder());
        // The counter rises before its commit is done, so that the kill may still take that one back.
        for (quint32 change = 2; change <= 3; ++change) {
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
