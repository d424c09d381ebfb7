#include "store/Clock.h"
#include "store/SafetyCopy.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const auto ToTheEnd = [] { return true; };

mode_t modeOf(const QString& path) {
    struct stat state {};
    return ::stat(QFile::encodeName(path).constData(), &state) == 0 ? state.st_mode & 07777 : 0;
}

/// Makes a copy from its bytes to its name.
QString makeCopy(const TestStore& store, CopyReason reason) {
    const CopyOutcome outcome = copyBytes(store.path(), reason, CopyPace::AtOnce, ToTheEnd);
    if (!outcome.copy)
        return outcome.finding.technical;
    const StoreFinding finding = finishCopy(store.path(), *outcome.copy, ToTheEnd);
    return finding.kind == StoreFinding::Kind::Sound ? outcome.copy->name() : finding.technical;
}

} // namespace

/// What lies in the folder of copies: who may read it, what is not written over, what is taken for sound.
class CopyFolderTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        clock::setSource([] { return QDateTime(QDate(2026, 11, 22), QTime(9, 30)); });
    }
    void cleanup() { clock::setSource({}); }

    void aFolderThatWasOpenToOthersIsClosed();
    void aFileThatHasTheNameMeanwhileIsNotWrittenOver();
    void aNameThatIsTakenOtherwiseIsPassedOver();
    void theNoteOfAFailureIsItsOwnersAlone();
    void aCopyWhoseIndexHasLostItsRowsGetsNoName();
    void whatIsStillToBeLookedThroughComesTheOldestFirst();
};

/// A copy holds the passwords.
void CopyFolderTest::aFolderThatWasOpenToOthersIsClosed() {
    const TestStore store;
    const QString folder = copyFolderOf(store.path());
    QVERIFY(QDir().mkdir(folder) && ::chmod(QFile::encodeName(folder).constData(), 0775) == 0);
    QVERIFY(copyBytes(store.path(), CopyReason::Day, CopyPace::AtOnce, ToTheEnd).copy);
    QCOMPARE(modeOf(folder), mode_t{0700});
}

void CopyFolderTest::aFileThatHasTheNameMeanwhileIsNotWrittenOver() {
    const TestStore store;
    const CopyOutcome outcome = copyBytes(store.path(), CopyReason::Day, CopyPace::AtOnce, ToTheEnd);
    QVERIFY(outcome.copy);
    const QString path = copyFolderOf(store.path()) + u'/' + outcome.copy->name();
    writeContent(path, "brought back from elsewhere");
    const StoreFinding finding = finishCopy(store.path(), *outcome.copy, ToTheEnd);
    QVERIFY(finding.kind == StoreFinding::Kind::NotLookedAt);
    QVERIFY2(finding.technical.endsWith(u"cannot be given its name"_s), qPrintable(finding.technical));
    QCOMPARE(contentOf(path), QByteArray("brought back from elsewhere"));
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>{*outcome.copy});
}

void CopyFolderTest::theNoteOfAFailureIsItsOwnersAlone() {
    const TestStore store;
    const mode_t before = ::umask(0);
    noteFailedCopy(store.path(), u"no room"_s);
    ::umask(before);
    QCOMPARE(modeOf(QFileInfo(store.path()).path() + u"/.copy-failed"_s), mode_t{0600});
    QCOMPARE(failedCopyNote(store.path()), u"2026-11-22 09:30:00 no room"_s);
}

/// Every page of it is whole, and only a comparison of table and index finds it.
void CopyFolderTest::aCopyWhoseIndexHasLostItsRowsGetsNoName() {
    TestStore store;
    store.database().execute(u"insert into Base01(TitleNo) values('1')"_s);
    SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE)
        .exec("PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = (SELECT sum(rootpage) FROM "
              "sqlite_schema WHERE type = 'index' AND tbl_name IN ('Base01', 'Base02')) - rootpage "
              "WHERE type = 'index' AND tbl_name IN ('Base01', 'Base02')");
    const QString told = makeCopy(store, CopyReason::Day);
    QVERIFY2(told.contains(u"missing from index"_s), qPrintable(told));
    QCOMPARE(safetyCopiesOf(store.path()), QList<SafetyCopy>());
    QCOMPARE(uncheckedCopiesOf(store.path()), QList<SafetyCopy>());
}

void CopyFolderTest::whatIsStillToBeLookedThroughComesTheOldestFirst() {
    const TestStore store;
    QList<SafetyCopy> made;
    for (const CopyReason reason : {CopyReason::Replace, CopyReason::Hand, CopyReason::Day}) {
        const CopyOutcome outcome = copyBytes(store.path(), reason, CopyPace::AtOnce, ToTheEnd);
        QVERIFY(outcome.copy);
        made += *outcome.copy;
    }
    QCOMPARE(uncheckedCopiesOf(store.path()), made);
}

void CopyFolderTest::aNameThatIsTakenOtherwiseIsPassedOver() {
    const TestStore store;
    const QString folder = copyFolderOf(store.path());
    QVERIFY(QDir().mkpath(folder + u"/Pontrel-20261122-093000-day.mdb"_s));
    QVERIFY(QFile::link(folder + u"/nowhere"_s, folder + u"/Pontrel-20261122-093001-day.mdb"_s));
    QCOMPARE(makeCopy(store, CopyReason::Day), u"Pontrel-20261122-093002-day.mdb"_s);
}

QTEST_GUILESS_MAIN(CopyFolderTest)
#include "CopyFolderTest.moc"
