#include "faults/Workload.h"
#include "store/SafetyCopy.h"
#include "support/Dump.h"
#include "support/Patience.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Seed = 20261122;
constexpr int Punches = 15'000;
const auto ToTheEnd = [] { return true; };
const QString CopyAtOnce = u"--copy-at-once"_s;

/// What the program does at its first start of the day, in a process of its own.
int copyAtOnce(const QString& store) {
    const CopyOutcome outcome = copyBytes(store, CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    if (!outcome.copy)
        return 1;
    return finishCopy(store, *outcome.copy, ToTheEnd).kind == StoreFinding::Kind::Sound ? 0 : 1;
}

QByteArray hashOf(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray("(unreadable)");
}

QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

QString punchesIn(const QString& store) {
    SQLite::Database engine(store.toStdString(), SQLite::OPEN_READONLY);
    return QString::fromStdString(
        engine.execAndGet("SELECT count(*) || ' ' || sum(EmpNo) FROM AtteTemp").getString());
}

QStringList titlesIn(const QString& store) {
    Database database(store);
    return rowsOf(database, u"Base01"_s);
}

} // namespace

/// Processes that copy or restore a store, killed in the middle.
class CopyKillTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStore> store_;
    QByteArray hash_; ///< Of the store.
    QString name_;    ///< Of the copy that is restored.
    QString punches_;

    [[nodiscard]] QString path() const { return store_->path(); }
    [[nodiscard]] QString copies() const { return copyFolderOf(path()); }

    [[nodiscard]] std::unique_ptr<QProcess> begin(const QString& program, const QStringList& words) const {
        auto process = std::make_unique<QProcess>();
        process->start(program, words);
        if (!process->waitForStarted(PatienceMs))
            qFatal("%s does not start", qUtf8Printable(program));
        return process;
    }

    /// Seconds of an undisturbed run: of two the shorter.
    double secondsOf(const QString& program, const QStringList& words) {
        double whole = 0;
        for (int run = 0; run < 2; ++run) {
            QElapsedTimer timer;
            timer.start();
            const auto process = begin(program, words);
            if (!process->waitForFinished(PatienceMs) || process->exitCode() != 0)
                qFatal("%s: %s", qUtf8Printable(program), process->readAllStandardError().constData());
            const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
            whole = run == 0 ? seconds : std::min(whole, seconds);
        }
        return whole;
    }

    void killAfter(double seconds, const QString& program, const QStringList& words) const {
        const auto process = begin(program, words);
        QThread::usleep(static_cast<unsigned long>(seconds * 1e6));
        process->kill();
        QVERIFY(process->waitForFinished(PatienceMs));
    }

    /// Whatever bears a copy's name is sound and holds all; the store has not changed.
    void verifyCopies() const {
        QCOMPARE(hashOf(path()), hash_);
        QVERIFY(!QFile::exists(path() + u"-journal"_s));
        for (const SafetyCopy& copy : safetyCopiesOf(path())) {
            const QString file = copies() + u'/' + copy.name();
            const StoreFinding finding = lookThrough(file, ToTheEnd);
            QVERIFY2(finding.kind == StoreFinding::Kind::Sound, qPrintable(finding.technical));
            QCOMPARE(punchesIn(file), punches_);
        }
    }

    /// The next who comes makes a copy, and finishes or clears away what the killed one has left.
    void verifyNextCopy() const {
        QCOMPARE(copyAtOnce(path()), 0);
        for (const SafetyCopy& copy : uncheckedCopiesOf(path()))
            QVERIFY(finishCopy(path(), copy, ToTheEnd).kind == StoreFinding::Kind::Sound);
        for (const QString& name : namesIn(copies()))
            QVERIFY2(SafetyCopy::ofName(name), qPrintable(name));
        verifyCopies();
    }

    [[nodiscard]] QString folder() const { return store_->folder() + u"/DB/"_s; }
    [[nodiscard]] QStringList restoring() const { return {store_->folder(), u"restore"_s, name_}; }
    [[nodiscard]] QStringList keptNames() const {
        return QDir(folder()).entryList({u"*-replaced.mdb"_s}, QDir::Files);
    }

    /// The store that is to be restored over: the copy's, with a row more.
    void layOutOldStore() const {
        for (const QString& each : QDir(folder()).entryList(QDir::Files | QDir::Hidden))
            QFile::remove(folder() + each);
        QVERIFY(QFile::copy(copies() + u'/' + name_, path()));
        Database(path()).execute(u"insert into Base01(TitleNo,Title) values('1','of the old store')"_s);
    }

    /// The old rows are where they were, or kept beside the restored ones; and a restore ends well.
    void verifyRestored() const {
        const QStringList old{u"1|of the old store"_s};
        const QStringList now = titlesIn(path());
        QVERIFY(now == old || (now.isEmpty() && keptNames().size() == 1));
        QCOMPARE(punchesIn(path()), punches_);
        for (const QString& kept : keptNames())
            QCOMPARE(titlesIn(folder() + kept), old);
        const auto again = begin(QStringLiteral(PONTREL_ADMIN), restoring());
        QVERIFY(again->waitForFinished(PatienceMs));
        QCOMPARE(again->exitCode(), 0);
        QCOMPARE(titlesIn(path()), QStringList());
        QVERIFY(!QFile::exists(folder() + u".restoring"_s));
    }

  private Q_SLOTS:
    void init() {
        store_ = std::make_unique<TestStore>();
        SQLite::Database engine(path().toStdString(), SQLite::OPEN_READWRITE);
        engine.exec("WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                    std::to_string(Punches) +
                    ") INSERT INTO AtteTemp SELECT i, '2009-01-01', '08:00:00', '255', '001' FROM n;"
                    "INSERT INTO Atte01 SELECT * FROM AtteTemp");
        hash_ = hashOf(path());
        punches_ = punchesIn(path());
    }
    void cleanup() { store_.reset(); }

    void aCopyKilledAtAnyMomentLeavesNoneThatIsNotSound_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("words");
        QTest::newRow("at once, as the program does")
            << QCoreApplication::applicationFilePath() << QStringList{CopyAtOnce, u"STORE"_s};
        QTest::newRow("in pieces, as pontrel-admin does")
            << QStringLiteral(PONTREL_ADMIN) << QStringList{u"FOLDER"_s, u"copy"_s};
    }

    void aCopyKilledAtAnyMomentLeavesNoneThatIsNotSound() {
        QFETCH(const QString, program);
        QFETCH(QStringList, words);
        words.replaceInStrings(u"STORE"_s, path()).replaceInStrings(u"FOLDER"_s, store_->folder());
        const double whole = secondsOf(program, words);
        QMap<QString, int> seen;
        for (const double moment : momentsOf(30, Seed)) {
            QVERIFY(QDir(copies()).removeRecursively());
            killAfter(moment * whole, program, words);
            const QStringList left = namesIn(copies());
            QVERIFY2(left.size() <= 1, qPrintable(left.join(u' ')));
            ++seen[left.isEmpty() ? u"nothing"_s : left[0].section(u'-', 0, 0)];
            if (!QTest::currentTestFailed())
                verifyCopies();
            if (!QTest::currentTestFailed())
                verifyNextCopy();
            if (QTest::currentTestFailed())
                return;
        }
        QStringList told;
        for (const auto& [what, count] : seen.asKeyValueRange())
            told += u"%1 times %2"_s.arg(count).arg(what);
        qInfo("The kills left %s.", qPrintable(told.join(u", "_s)));
        // Most of the time goes by in the copying and the look through the copy.
        QVERIFY(seen.value(u".copying"_s) + seen.value(u".unchecked"_s) > 0);
    }

    void aRestoreKilledAtAnyMomentLeavesTheOldStoreOrBoth() {
        QCOMPARE(copyAtOnce(path()), 0);
        name_ = safetyCopiesOf(path()).constFirst().name();
        layOutOldStore();
        const double whole = secondsOf(QStringLiteral(PONTREL_ADMIN), restoring());
        int oldStores = 0;
        for (const double moment : momentsOf(30, Seed)) {
            layOutOldStore();
            killAfter(moment * whole, QStringLiteral(PONTREL_ADMIN), restoring());
            oldStores += titlesIn(path()).isEmpty() ? 0 : 1;
            verifyRestored();
            if (QTest::currentTestFailed())
                return;
        }
        qInfo("The kills left the old store %d times.", oldStores);
        QVERIFY(oldStores > 0);
    }

    void aRestoreKilledAsItPutsTheCopyInItsPlaceLeavesBothStores() {
        QCOMPARE(copyAtOnce(path()), 0);
        name_ = safetyCopiesOf(path()).constFirst().name();
        for (int kill = 0; kill < 10; ++kill) {
            layOutOldStore();
            const auto process = begin(QStringLiteral(PONTREL_ADMIN), restoring());
            while (keptNames().isEmpty() && process->state() == QProcess::Running)
                QVERIFY(!process->waitForFinished(0) || !keptNames().isEmpty());
            process->kill();
            QVERIFY(process->waitForFinished(PatienceMs) || process->state() == QProcess::NotRunning);
            QCOMPARE(keptNames().size(), 1);
            verifyRestored();
            if (QTest::currentTestFailed())
                return;
        }
    }
};

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.value(1) == CopyAtOnce)
        return copyAtOnce(words.value(2));
    CopyKillTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CopyKillTest.moc"
