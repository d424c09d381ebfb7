#include "faults/SmallDisk.h"
#include "store/NewStore.h"
#include "store/SafetyCopy.h"
#include "support/Dump.h"
#include "support/SavedFiles.h"
#include "tools/AdminProgram.h"

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

constexpr qint64 DiskSize = 32 * 1024 * 1024;
const auto ToTheEnd = [] { return true; };

QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

/// A store with some megabytes of punches.
QString makeStore(const QString& folder) {
    const QString path = folder + u"/DB/Pontrel.mdb"_s;
    createStore(path, {u"punch"_s, u"tester"_s, u"secret"_s});
    SQLite::Database engine(path.toStdString(), SQLite::OPEN_READWRITE);
    engine.exec("WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60000) "
                "INSERT INTO AtteTemp SELECT i, '2009-01-01', '08:00:00', '255', '001' FROM n");
    return path;
}

/// The store can be worked with.
void verifyUsable(const QString& store) {
    Database database(store);
    database.execute(u"insert into Base01(TitleNo) values('1')"_s);
    QCOMPARE(rowsOf(database, u"Base01"_s), QStringList{u"1|null"_s});
    database.execute(u"delete * from Base01"_s);
}

} // namespace

/// Safety copies on a disk without room, and on one that may not be written to.
class CopyDiskTest : public QObject {
    Q_OBJECT

  public:
    explicit CopyDiskTest(QString trouble) : trouble_(std::move(trouble)) {}

  private:
    QString trouble_; ///< Why there can be no small disk.
    std::unique_ptr<SmallDisk> disk_;
    QString store_;

    [[nodiscard]] QString copies() const { return copyFolderOf(store_); }

    void verifyNoCopy(const CopyOutcome& outcome, const QString& why) const {
        QVERIFY(!outcome.copy);
        QVERIFY(outcome.finding.kind == StoreFinding::Kind::NotLookedAt);
        QVERIFY2(outcome.finding.technical.contains(why), qPrintable(outcome.finding.technical));
        QCOMPARE(namesIn(copies()), QStringList());
    }

    void verifyCopyWorks() const {
        const AdminEnd end = admin(disk_->folder(), {u"copy"_s});
        QVERIFY2(end.status == 0, qPrintable(end.errors));
        QCOMPARE(safetyCopiesOf(store_).size(), 1);
    }

  private Q_SLOTS:
    void init() {
        QVERIFY2(trouble_.isEmpty(), qPrintable(trouble_));
        disk_ = std::make_unique<SmallDisk>(DiskSize);
        store_ = makeStore(disk_->folder());
    }
    void cleanup() { disk_.reset(); }

    void aDiskIsNotFilledWithACopy() {
        const QByteArray before = contentOf(store_);
        disk_->fillUpTo(2 * QFileInfo(store_).size() - 4096);
        for (const CopyPace pace : {CopyPace::AtOnce, CopyPace::InPieces})
            verifyNoCopy(copyBytes(store_, CopyReason::Day, pace, ToTheEnd),
                         u"too little room on the disk"_s);
        const AdminEnd end = admin(disk_->folder(), {u"copy"_s});
        QCOMPARE(end.status, 1);
        QCOMPARE(end.errors, u"The copy could not be made: no safety copy: too little room on the disk\n"_s);
        QVERIFY(contentOf(store_) == before);
        verifyUsable(store_);
        disk_->freeSpace();
        disk_->fillUpTo(2 * QFileInfo(store_).size() + 65536);
        verifyCopyWorks();
    }

    void aDiskThatFillsUpMeanwhileLeavesNothingOfTheCopy() {
        const QByteArray before = contentOf(store_);
        int pieces = 0;
        const CopyOutcome outcome = copyBytes(store_, CopyReason::Day, CopyPace::InPieces, [&] {
            if (++pieces == 3)
                disk_->fillUpTo(0);
            return true;
        });
        QVERIFY(pieces >= 3);
        verifyNoCopy(outcome, u"full"_s);
        QVERIFY(contentOf(store_) == before);
        disk_->freeSpace();
        verifyUsable(store_);
        verifyCopyWorks();
    }

    void aDiskThatIsReadOnlyIsToldAndNotTouched() {
        const QByteArray before = contentOf(store_);
        disk_->setReadOnly(true);
        QVERIFY(!QFile(disk_->folder() + u"/probe"_s).open(QIODevice::WriteOnly));
        verifyNoCopy(copyBytes(store_, CopyReason::Day, CopyPace::AtOnce, ToTheEnd), u"cannot be made"_s);
        const AdminEnd end = admin(disk_->folder(), {u"copy"_s});
        QCOMPARE(end.status, 1);
        QCOMPARE(
            end.errors,
            u"The copy could not be made: no safety copy: the folder %1 cannot be made\n"_s.arg(copies()));
        QCOMPARE(admin(disk_->folder(), {u"size"_s}).status, 0);
        disk_->setReadOnly(false);
        QVERIFY(contentOf(store_) == before);
        QCOMPARE(namesIn(disk_->folder() + u"/DB"_s), QStringList{u"Pontrel.mdb"_s});
        verifyCopyWorks();
    }

    /// The copies may lie on another disk, by a link.
    void aFolderOfCopiesThatIsReadOnlyStopsNobody() {
        SmallDisk other(DiskSize);
        QVERIFY(QFile::link(other.folder(), copies()));
        other.setReadOnly(true);
        const CopyOutcome outcome = copyBytes(store_, CopyReason::Purge, CopyPace::AtOnce, ToTheEnd);
        verifyNoCopy(outcome, u"cannot be made"_s);
        verifyUsable(store_);
        other.setReadOnly(false);
        verifyCopyWorks();
        QCOMPARE(namesIn(other.folder()).size(), 1);
    }

    void aCopyIsGivenItsNameOnlyWhereItCanBe() {
        const CopyOutcome outcome = copyBytes(store_, CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
        QVERIFY(outcome.copy);
        const QStringList before = namesIn(copies());
        disk_->setReadOnly(true);
        QVERIFY(finishCopy(store_, *outcome.copy, ToTheEnd).kind != StoreFinding::Kind::Sound);
        disk_->setReadOnly(false);
        QCOMPARE(namesIn(copies()), before);
        QVERIFY(finishCopy(store_, *outcome.copy, ToTheEnd).kind == StoreFinding::Kind::Sound);
        QCOMPARE(namesIn(copies()), QStringList{outcome.copy->name()});
    }
};

int main(int argc, char** argv) {
    const QString trouble = enterOwnMounts();
    const QCoreApplication application(argc, argv);
    CopyDiskTest test(trouble);
    return QTest::qExec(&test, argc, argv);
}

#include "CopyDiskTest.moc"
