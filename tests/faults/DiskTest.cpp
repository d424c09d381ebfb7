#include "bench/DayCloseProcess.h"
#include "faults/SmallDisk.h"
#include "faults/Workload.h"
#include "store/NewStore.h"
#include "store/RunTimeError.h"
#include "store/StagedCopy.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int Employees = 200;
constexpr qint64 DiskSize = 16 * 1024 * 1024;

const QString DiskFull = u"3049: 磁碟已滿,進行中的資料沒有存入"_s;
const QString ReadOnlyStore = u"3027: 無法更新,資料庫或資料集是唯讀的"_s;

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

} // namespace

/// A disk without space, and one that may not be written to.
class DiskTest : public QObject {
    Q_OBJECT

  public:
    explicit DiskTest(QString trouble) : trouble_(std::move(trouble)) {}

  private:
    QString trouble_; ///< Why there can be no small disk.
    std::unique_ptr<Workload> workload_;
    std::unique_ptr<SmallDisk> disk_;

    [[nodiscard]] QString folder() const { return disk_->folder(); }

    /// The action ends early by an error that says these words, and the program goes on.
    void verifyEndsBy(const QString& action, int number, const QString& words) {
        verifyEndedBy(runDayClose(folder(), {action, u"reopen"_s}), action, number, words);
    }
    void verifyEndedBy(const DayCloseEnd& end, const QString& action, int number, const QString& words) {
        QCOMPARE(end.errors, QString());
        QVERIFY(!end.crashed);
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers.size(), 2);
        const QJsonObject answer = end.answers[0];
        QCOMPARE(answer[u"action"_s].toString(), action);
        QCOMPARE(answer[u"finished"_s], QJsonValue(false));
        QCOMPARE(answer[u"error"_s].toInt(), number);
        QVERIFY2(answer[u"why"_s].toString().startsWith(words), qPrintable(shown(answer)));
        QVERIFY(end.answers[1][u"finished"_s].toBool());
        // What the answer counts is what has been kept.
        QCOMPARE(end.answers[1][u"rows"_s], answer[u"rows"_s]);
    }

    void verifyFinishes(const QString& action) {
        const DayCloseEnd end = runDayClose(folder(), {action});
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers.size(), 1);
        QVERIFY2(end.answers[0][u"finished"_s].toBool(), qPrintable(shown(end.answers[0])));
    }

    /// The store is whole and stands at the end of a stage: which one.
    void findBorder(const QList<Border>& borders, QString& name) {
        const QStringList rows = storeRows(folder());
        QCOMPARE(integrityOf(folder()), u"ok"_s);
        const qsizetype place = placeAmong(borders, rows);
        QVERIFY2(place >= 0,
                 qPrintable(u"the store stands in the middle of a stage:\n"_s + rows.join(u'\n')));
        name = borders[place].name;
    }

    /// Reads the file on a disk with too little space and again with enough; where the space was enough the
    /// first time, says so.
    void importOnFullDisk(bool& finished, QStringList& borders) {
        const DayCloseEnd end = runDayClose(folder(), {workload_->action(), u"reopen"_s});
        finished = !end.answers.isEmpty() && end.answers[0][u"finished"_s].toBool();
        if (!finished) {
            verifyEndedBy(end, workload_->action(), error::DiskOrStore, DiskFull);
            QString border;
            if (!QTest::currentTestFailed())
                findBorder(workload_->importBorders(), border);
            borders += border;
            disk_->freeSpace();
            if (!QTest::currentTestFailed())
                verifyFinishes(workload_->action());
        }
        if (QTest::currentTestFailed())
            return;
        QCOMPARE(storeRows(folder()), workload_->importedRows());
        QCOMPARE(integrityOf(folder()), u"ok"_s);
    }

  private Q_SLOTS:
    void initTestCase() {
        QVERIFY2(trouble_.isEmpty(), qPrintable(trouble_));
        workload_ = std::make_unique<Workload>(Employees);
    }

    void init() { disk_ = std::make_unique<SmallDisk>(DiskSize); }
    void cleanup() { disk_.reset(); }

    void aDiskThatFillsUpDuringAnImportLosesTheStageAndNoMore() {
        workload_->layOutImported(folder());
        const qint64 imported = QFileInfo(storePath(folder())).size();
        workload_->layOut(folder());
        const qint64 growth = imported - QFileInfo(storePath(folder())).size();
        QStringList borders;
        bool finished = false;
        // In percent of what the import adds to the store; the journal needs space besides.
        for (int left = 0; !finished; left += 5) {
            QVERIFY(left < 300);
            disk_->freeSpace();
            workload_->layOut(folder());
            disk_->fillUpTo(growth * left / 100);
            importOnFullDisk(finished, borders);
            if (QTest::currentTestFailed()) {
                qInfo("That was with %d percent left.", left);
                return;
            }
        }
        qInfo("With rising space the store was left at: %s.", qPrintable(borders.join(u", "_s)));
        borders.removeDuplicates();
        QVERIFY(borders.size() >= 5);
    }

    void aFullDiskLosesARecalculationAndNoResult() {
        workload_->layOutImported(folder());
        Workload::excuse(folder());
        const QStringList before = storeRows(folder());
        disk_->fillUpTo(0);
        const QString action = u"recalc=2010/3/1"_s;
        verifyEndsBy(action, error::DiskOrStore, DiskFull);
        QCOMPARE(storeRows(folder()), before);
        QCOMPARE(integrityOf(folder()), u"ok"_s);
        disk_->freeSpace();
        verifyFinishes(action);
        const QStringList after = storeRows(folder());
        workload_->layOutImported(folder());
        Workload::excuse(folder());
        QCOMPARE(placeAmong(workload_->recalculationBorders(folder()), after), 6);
    }

    /// Page by page of room left: somewhere on the way it is the note of how far the copy has come that finds
    /// none.
    void aCopyThatFindsNoRoomIsMadeGoodByTheNext() {
        constexpr qint64 Page = 4096;
        constexpr int Punches = 50;
        int failures = 0;
        for (qint64 left = 0;; left += Page) {
            QVERIFY(left < DiskSize);
            disk_ = std::make_unique<SmallDisk>(DiskSize);
            const QString path = storePath(folder());
            QVERIFY(QDir().mkpath(QFileInfo(path).path()));
            createStore(path, {folder(), u"tester"_s, u"secret"_s});
            Database database(path);
            for (int minute = 0; minute < Punches; ++minute)
                addPunch(database, u"00001"_s, QDate(2001, 3, 5), QTime(8, minute));
            disk_->fillUpTo(left);
            const auto committedPunches = [&path] {
                Database other(path);
                return rowsOf(other, u"Atte01"_s);
            };
            const int error = errorOf([&] { copyStaged(database, CopyTarget::Atte01); });
            if (error != 0) {
                ++failures;
                QCOMPARE(error, error::DiskOrStore);
                QCOMPARE(committedPunches(), QStringList());
            }
            disk_->freeSpace();
            copyStaged(database, CopyTarget::Atte01);
            QCOMPARE(committedPunches().size(), Punches);
            Database(path).execute(u"delete * from Atte01"_s);
            copyStaged(database, CopyTarget::Atte01);
            QCOMPARE(committedPunches().size(), Punches);
            if (error == 0)
                break;
        }
        QVERIFY2(failures >= 3, qPrintable(QString::number(failures)));
    }

    void aDiskThatMayNotBeWrittenToIsToldAndNotTouched_data() {
        QTest::addColumn<QString>("action");
        QTest::newRow("an import") << workload_->action();
        QTest::newRow("a recalculation") << u"recalc=2010/3/1"_s;
    }
    void aDiskThatMayNotBeWrittenToIsToldAndNotTouched() {
        QFETCH(QString, action);
        workload_->layOutImported(folder());
        const QByteArray before = contentOf(storePath(folder()));
        disk_->setReadOnly(true);
        QVERIFY(!QFile(folder() + u"/probe"_s).open(QIODevice::WriteOnly));
        verifyEndsBy(action, error::CannotWrite, ReadOnlyStore);
        disk_->setReadOnly(false);
        QVERIFY(contentOf(storePath(folder())) == before);
        QCOMPARE(QDir(folder() + u"/DB"_s).entryList(QDir::Files | QDir::Hidden),
                 QStringList{u"Pontrel.mdb"_s});
        verifyFinishes(action);
    }

    void aWriteCutOffOnADiskThatMayNotBeWrittenToIsTold() {
        const QTemporaryDir other;
        workload_->layOut(other.path());
        workload_->layOut(folder());
        {
            SQLite::Database engine(storePath(other.path()).toStdString(), SQLite::OPEN_READWRITE);
            engine.exec("PRAGMA cache_size = 2; BEGIN; UPDATE Base06 SET EmpName = 'half of it'");
            QVERIFY(QFile::remove(storePath(folder())));
            for (const QString& ending : {QString(), u"-journal"_s})
                QVERIFY(QFile::copy(storePath(other.path()) + ending, storePath(folder()) + ending));
        }
        disk_->setReadOnly(true);
        const DayCloseEnd end = runDayClose(folder(), {workload_->action()});
        QVERIFY(!end.crashed);
        QCOMPARE(end.status, 2);
        QCOMPARE(end.answers, QList<QJsonObject>());
        QVERIFY2(end.errors.startsWith(u"day_close: "_s + ReadOnlyStore), qPrintable(end.errors));
        // Where it may be written to again, the write is rolled back, and nothing has been lost.
        disk_->setReadOnly(false);
        verifyFinishes(workload_->action());
        QCOMPARE(storeRows(folder()), workload_->importedRows());
    }
};

int main(int argc, char** argv) {
    const QString trouble = enterOwnMounts();
    const QCoreApplication application(argc, argv);
    DiskTest test(trouble);
    return QTest::qExec(&test, argc, argv);
}

#include "DiskTest.moc"
