#include "bench/DayCloseProcess.h"
#include "faults/Workload.h"
#include "support/Builders.h"
#include "support/FirstVersion.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int Employees = 500;
constexpr quint32 Seed = 20100301;
constexpr qint64 LongestAction = 60'000;

/// Of the punches of 500 people over and over: none of one second occurs twice.
QString writeLargeFile(const QString& folder, qsizetype megabytes) {
    const QString path = folder + u"/20100301.txt"_s;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    for (qsizetype line = 0; file.pos() < megabytes * 1'000'000; ++line)
        file.write(punchLine(QByteArray::number(line % Employees + 1), QDate(2010, 3, 1),
                             QTime(0, 0).addSecs(static_cast<int>(line / Employees))));
    return path;
}

#if !defined(__SANITIZE_ADDRESS__)
/// The most memory that a process has had so far, in MB.
qint64 largestMemory(qint64 process) {
    QFile status(u"/proc/%1/status"_s.arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = status.readAll();
    const qsizetype place = text.indexOf("VmHWM:");
    return place < 0 ? -1 : text.mid(place + 6, 20).trimmed().split(' ').constFirst().toLongLong() / 1024;
}
#endif

/// The tables in which the user sees the day.
QStringList resultsOf(const QStringList& rows) {
    QStringList results;
    for (const QString& row : rows)
        if (!row.startsWith(u"AtteTemp"))
            results += row;
    return results;
}

} // namespace

/// Actions of the attendance window killed in the middle, and the store that the next process finds.
class KillTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Workload> workload_;
    QTemporaryDir folder_;
    QMap<qsizetype, int> seen_; ///< How many kills left the store at which border.
    int journals_ = 0;          ///< How many kills left a write to be rolled back.

    [[nodiscard]] QString folder() const { return folder_.path(); }

    /// Seconds of an undisturbed run of the action over the store as it stands, without the start of the
    /// process.
    double secondsOf(const QString& action) {
        DayCloseProcess process(folder());
        QElapsedTimer timer;
        bool finished = process.ask(u"reopen"_s).value(u"finished"_s).toBool();
        timer.start();
        finished = process.ask(action).value(u"finished"_s).toBool() && finished;
        return finished ? static_cast<double>(timer.nsecsElapsed()) / 1e9 : 0;
    }

    /// Starts the action and kills the process after so many seconds.
    void killAfter(double seconds, const QString& action) {
        DayCloseProcess process(folder());
        QVERIFY(process.ask(u"reopen"_s).value(u"finished"_s).toBool());
        process.send(action);
        QThread::usleep(static_cast<unsigned long>(seconds * 1e6));
        process.kill();
    }

    /// Starts the action and kills the process as soon as so many of its transactions have reached the file.
    void killAtChange(quint32 number, const QString& action) {
        const quint32 before = changesOf(folder());
        DayCloseProcess process(folder());
        process.send(action);
        QElapsedTimer timer;
        timer.start();
        while (changesOf(folder()) - before < number && timer.elapsed() < LongestAction)
            QThread::usleep(20);
        process.kill();
        QVERIFY(changesOf(folder()) - before >= number);
    }

    /// The store after a kill is whole and stands at the end of a stage.
    void verifyWhole(const QList<Border>& borders) {
        journals_ += hasJournal(folder()) ? 1 : 0;
        // Opening comes first: it is what rolls a write back.
        const QStringList rows = storeRows(folder());
        QVERIFY(!hasJournal(folder()));
        QCOMPARE(integrityOf(folder()), u"ok"_s);
        const qsizetype place = placeAmong(borders, rows);
        QVERIFY2(place >= 0,
                 qPrintable(u"the store stands in the middle of a stage:\n"_s + rows.join(u'\n')));
        ++seen_[place];
    }

    void verifyRepeated(const QString& action, const QStringList& expected) {
        const DayCloseEnd end = runDayClose(folder(), {action});
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers.size(), 1);
        QVERIFY2(end.answers[0].value(u"finished"_s).toBool(), qPrintable(shown(end.answers[0])));
        QCOMPARE(resultsOf(storeRows(folder())), resultsOf(expected));
        QCOMPARE(integrityOf(folder()), u"ok"_s);
    }

    using Routine = std::function<void()>;

    /// Kills the action at random moments and as each of its transactions reaches the file, and repeats it
    /// each time. The routine lays out the store.
    void killAndRepeat(const Routine& layOut, const QString& action, const QList<Border>& borders,
                       const QStringList& expected, int moments, quint32 changes) {
        // The shorter of two runs: a machine that is busy for a moment must not push the kills behind the
        // end.
        double whole = 0;
        for (int run = 0; run < 2; ++run) {
            layOut();
            const double seconds = secondsOf(action);
            QVERIFY(seconds > 0);
            whole = run == 0 ? seconds : std::min(whole, seconds);
        }
        QList<Routine> kills;
        for (const double moment : momentsOf(moments, Seed))
            kills += [this, moment, whole, action] { killAfter(moment * whole, action); };
        for (quint32 change = 1; change <= changes; ++change)
            kills += [this, change, action] { killAtChange(change, action); };
        for (const Routine& kill : kills) {
            layOut();
            kill();
            if (!QTest::currentTestFailed())
                verifyWhole(borders);
            if (!QTest::currentTestFailed())
                verifyRepeated(action, expected);
            if (QTest::currentTestFailed())
                return;
        }
        tellSeen(borders);
    }

    void tellSeen(const QList<Border>& borders) {
        QStringList told;
        for (const auto& [place, count] : seen_.asKeyValueRange())
            told += u"%1 at \"%2\""_s.arg(count).arg(borders[place].name);
        qInfo("Kills left the store %s; %d of them in the middle of a write.", qPrintable(told.join(u", "_s)),
              journals_);
    }

  private Q_SLOTS:
    void initTestCase() {
        QVERIFY(folder_.isValid());
        workload_ = std::make_unique<Workload>(Employees);
    }

    void init() {
        seen_.clear();
        journals_ = 0;
    }

    void anImportKilledAtAnyMomentIsMadeGoodByReadingTheFileAgain() {
        // Its transactions: the sentinel, the file, the overtime, five slots, the sentinel back.
        killAndRepeat([this] { workload_->layOut(folder()); }, workload_->action(),
                      workload_->importBorders(), workload_->importedRows(), 50, 9);
        // The kills are spread over the stages; which of them they hit is a matter of time.
        if (!QTest::currentTestFailed())
            QVERIFY(seen_.size() >= workload_->importBorders().size() / 2);
    }

    void anImportThatReplacesTheDayKilledAtAnyMomentIsMadeGoodByReadingTheFileAgain() {
        // One more: the day cleared.
        killAndRepeat([this] { workload_->layOutImported(folder()); }, workload_->action(),
                      workload_->importBorders(), workload_->importedRows(), 5, 3);
    }

    void aRecalculationKilledAtAnyMomentIsMadeGoodByTheNext() {
        const auto layOut = [this] {
            workload_->layOutImported(folder());
            Workload::excuse(folder());
        };
        layOut();
        const QList<Border> borders = workload_->recalculationBorders(folder());
        const QStringList expected = storeRows(folder());
        // Its transactions: the reset with the copy, five slots.
        killAndRepeat(layOut, u"recalc=2010/3/1"_s, borders, expected, 10, 6);
        if (!QTest::currentTestFailed())
            QVERIFY(seen_.size() >= borders.size() / 2);
    }

    void anImportOfALargeFileKilledWithHalfOfItInTheStoreIsRolledBack() {
        const QTemporaryDir files;
        const QString file = writeLargeFile(files.path(), 20);
        workload_->layOut(folder());
        const qint64 before = QFileInfo(storePath(folder())).size();
        DayCloseProcess process(folder());
        process.send(u"import="_s + file);
        // What has outgrown the memory reaches the store ahead of the stage's end.
        while (QFileInfo(storePath(folder())).size() < before + 20'000'000)
            QVERIFY(!process.answerWithin(1));
        process.kill();
        QVERIFY(hasJournal(folder()));
        verifyWhole(workload_->importBorders());
        QCOMPARE(seen_.size(), 1);
        QCOMPARE(workload_->importBorders()[seen_.firstKey()].name, u"sentinel"_s);
        QVERIFY(QFileInfo(storePath(folder())).size() < before + 1'000'000);
        verifyRepeated(workload_->action(), workload_->importedRows());
    }

    void anImportOfALargeFileTakesNoMoreMemoryThanItMay() {
#if defined(__SANITIZE_ADDRESS__)
        QSKIP("The sanitizer's own memory is many times the program's.");
#else
        const QTemporaryDir files;
        const QString file = writeLargeFile(files.path(), 20);
        workload_->layOut(folder());
        DayCloseProcess process(folder());
        process.send(u"import="_s + file);
        std::optional<QJsonObject> answer;
        while (!answer)
            answer = process.answerWithin(1000);
        QVERIFY2(answer->value(u"finished"_s).toBool(), qPrintable(shown(*answer)));
        const qint64 taken = largestMemory(process.identifier());
        QVERIFY2(taken > 0 && taken < 170, qPrintable(QString::number(taken)));
#endif
    }

    void aWriteCutOffWithHalfOfItInTheFileIsRolledBackByWhoeverOpensTheStoreNext() {
        const QTemporaryDir other;
        workload_->layOut(other.path());
        workload_->layOut(folder());
        {
            // A cache too small for the change makes the engine write pages before the end.
            SQLite::Database engine(storePath(other.path()).toStdString(), SQLite::OPEN_READWRITE);
            engine.exec("PRAGMA cache_size = 2; BEGIN; UPDATE Base06 SET EmpName = 'half of it'");
            QVERIFY(QFile::remove(storePath(folder())));
            for (const QString& ending : {QString(), u"-journal"_s})
                QVERIFY(QFile::copy(storePath(other.path()) + ending, storePath(folder()) + ending));
        }
        QVERIFY(hasJournal(folder()));
        QFile store(storePath(folder()));
        QVERIFY(store.open(QIODevice::ReadOnly) && store.readAll().contains("half of it"));
        store.close();
        const DayCloseEnd end = runDayClose(folder(), {u"reopen"_s});
        QCOMPARE(end.status, 0);
        QCOMPARE(end.errors, QString());
        QVERIFY(!hasJournal(folder()));
        QVERIFY(store.open(QIODevice::ReadOnly) && !store.readAll().contains("half of it"));
        verifyWhole(workload_->importBorders());
        QCOMPARE(seen_.firstKey(), 0);
    }

    /// A store of version 1 whose upgrade is killed is of version 1 still, or of version 2, with every row.
    void anUpgradeKilledAnywhereLosesNothing() {
        workload_->layOutImported(folder());
        const QStringList rows = storeRows(folder());
        {
            // Enough punches that the upgrade takes a while.
            SQLite::Database engine(storePath(folder()).toStdString(), SQLite::OPEN_READWRITE);
            engine.exec(
                "INSERT INTO Atte01 WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 120000) "
                "SELECT i / 200, '2009-01-01', printf('%02d:%02d:%02d', i % 86400 / 3600, i / 60 % 60, i % "
                "60), "
                "'255', "
                "'001' FROM n");
        }
        layOutAsFirstVersion(storePath(folder()));
        const QString kept = folder() + u"/first.mdb"_s;
        QVERIFY(QFile::copy(storePath(folder()), kept));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(runDayClose(folder(), {u"reopen"_s}).status, 0);
        const double whole = static_cast<double>(timer.nsecsElapsed()) / 1e9;
        QMap<int, int> versions;
        for (const double moment : momentsOf(12, Seed)) {
            QVERIFY(QFile::remove(storePath(folder())) && QFile::copy(kept, storePath(folder())));
            {
                DayCloseProcess process(folder());
                QThread::usleep(static_cast<unsigned long>(moment * whole * 1e6));
                process.kill();
            }
            journals_ += hasJournal(folder()) ? 1 : 0;
            {
                SQLite::Database engine(storePath(folder()).toStdString(), SQLite::OPEN_READWRITE);
                ++versions[engine.execAndGet("PRAGMA user_version").getInt()];
                QCOMPARE(engine.execAndGet("PRAGMA integrity_check").getString(), std::string("ok"));
                QCOMPARE(
                    engine.execAndGet("SELECT count(*) FROM Atte01 WHERE UseDate = '2009-01-01'").getInt(),
                    120000);
            }
            QCOMPARE(runDayClose(folder(), {u"reopen"_s}).status, 0);
            SQLite::Database(storePath(folder()).toStdString(), SQLite::OPEN_READWRITE)
                .exec("DELETE FROM Atte01 WHERE UseDate = '2009-01-01'");
            QCOMPARE(storeRows(folder()), rows);
        }
        qInfo("Kills left version 1 %d times and version 2 %d times; %d of them in the middle of a write.",
              versions[1], versions[2], journals_);
    }
};

QTEST_GUILESS_MAIN(KillTest)
#include "KillTest.moc"
