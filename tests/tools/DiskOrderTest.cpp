#include "Restore.h"

#include "store/Clock.h"
#include "store/SafetyCopy.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

QString folder; ///< Of which calls are recorded; none while empty.
QStringList calls;

QString relative(const QString& path) {
    return QDir(folder).relativeFilePath(path);
}

void record(const QString& what, const QStringList& paths) {
    if (folder.isEmpty() || !(paths.constFirst() + u'/').startsWith(folder + u'/'))
        return;
    QStringList words{what};
    for (const QString& path : paths)
        words += relative(path);
    calls += words.join(u' ');
}

/// The system's own routine of that name.
template<typename Routine>
Routine* original(const char* name) {
    return reinterpret_cast<Routine*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// These stand in front of the system's: what the program calls is recorded, and done.

int fsync(int descriptor) {
    record(u"sync"_s, {QFile::symLinkTarget(u"/proc/self/fd/%1"_s.arg(descriptor))});
    return original<int(int)>("fsync")(descriptor);
}

int rename(const char* from, const char* to) noexcept {
    record(u"rename"_s, {QFile::decodeName(from), QFile::decodeName(to)});
    return original<int(const char*, const char*)>("rename")(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    record(u"rename"_s, {QFile::decodeName(from), QFile::decodeName(to)});
    return original<int(int, const char*, int, const char*, unsigned)>("renameat2")(fromFolder, from,
                                                                                    toFolder, to, flags);
}

int link(const char* from, const char* to) noexcept {
    record(u"link"_s, {QFile::decodeName(from), QFile::decodeName(to)});
    return original<int(const char*, const char*)>("link")(from, to);
}

int unlink(const char* path) noexcept {
    record(u"remove"_s, {QFile::decodeName(path)});
    return original<int(const char*)>("unlink")(path);
}

/// In which order files of copies and restores reach the disk and get their names. Nothing but this order
/// keeps them whole when the power fails.
class DiskOrderTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        clock::setSource([] { return QDateTime(QDate(2026, 11, 22), QTime(9, 30)); });
    }
    void cleanup() {
        folder.clear();
        calls.clear();
        clock::setSource({});
    }

    void aCopyIsOnTheDiskBeforeItGetsAName();
    void aRestoredStoreIsOnTheDiskBeforeItGetsItsName();
    void aStoreWithAJournalGoesAheadOfIt();

  private:
    static QString makeCopy(const QString& store) {
        const auto toTheEnd = [] { return true; };
        const CopyOutcome outcome = copyBytes(store, CopyReason::Hand, CopyPace::AtOnce, toTheEnd);
        if (!outcome.copy || finishCopy(store, *outcome.copy, toTheEnd).kind != StoreFinding::Kind::Sound)
            qFatal("no copy: %s", qUtf8Printable(outcome.finding.technical));
        return copyFolderOf(store) + u'/' + outcome.copy->name();
    }
};

void DiskOrderTest::aCopyIsOnTheDiskBeforeItGetsAName() {
    const TestStore store;
    folder = QFileInfo(store.path()).path();
    (void)makeCopy(store.path());
    const QString name = u"Pontrel-20261122-093000-hand.mdb"_s;
    calls.removeOne(u"remove .copy-failed"_s);
    QCOMPARE(calls,
             QStringList({u"sync backup/.copying-"_s + name,
                          u"rename backup/.copying-%1 backup/.unchecked-%1"_s.arg(name), u"sync backup"_s,
                          u"rename backup/.unchecked-%1 backup/%1"_s.arg(name), u"sync backup"_s}));
}

void DiskOrderTest::aRestoredStoreIsOnTheDiskBeforeItGetsItsName() {
    const TestStore store;
    const QString copy = makeCopy(store.path());
    folder = QFileInfo(store.path()).path();
    (void)tools::restoreStore(store.folder(), copy);
    calls.removeAll(u"remove .restoring"_s);
    calls.removeAll(u"remove .restoring-journal"_s);
    QCOMPARE(calls,
             QStringList({u"sync .restoring"_s, u"link Pontrel.mdb Pontrel-20261122-093000-replaced.mdb"_s,
                          u"rename .restoring Pontrel.mdb"_s, u"sync ."_s}));
}

/// The old store without its journal would be half written, the journal with the new store play into it.
void DiskOrderTest::aStoreWithAJournalGoesAheadOfIt() {
    const TestStore store;
    const QString copy = makeCopy(store.path());
    // Another program is at it and has written half of what it writes.
    SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
    engine.exec("BEGIN EXCLUSIVE; INSERT INTO Base01(TitleNo) VALUES('1')");
    QVERIFY(QFile::exists(store.path() + u"-journal"_s));
    folder = QFileInfo(store.path()).path();
    (void)tools::restoreStore(store.folder(), copy);
    folder.clear();
    calls.removeAll(u"remove .restoring"_s);
    calls.removeAll(u"remove .restoring-journal"_s);
    const QString kept = u"Pontrel-20261122-093000-replaced.mdb"_s;
    QCOMPARE(calls,
             QStringList({u"sync .restoring"_s, u"link Pontrel.mdb "_s + kept,
                          u"link Pontrel.mdb-journal %1-journal"_s.arg(kept), u"remove Pontrel.mdb"_s,
                          u"remove Pontrel.mdb-journal"_s, u"rename .restoring Pontrel.mdb"_s, u"sync ."_s}));
}

QTEST_GUILESS_MAIN(DiskOrderTest)
#include "DiskOrderTest.moc"
