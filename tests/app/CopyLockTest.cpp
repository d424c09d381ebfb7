#include "app/SafetyCopies.h"
#include "support/AppSupport.h"
#include "support/Patience.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QFile>

#include <atomic>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

QString watched; ///< The store whose read locks are counted; none while empty.
std::atomic<int> readLocks = 0;

/// Whether that is the engine's request for a lock to read the store.
bool isReadLock(int descriptor, int command, const void* argument) {
    constexpr off_t SharedBytes = 510; // of which a reader locks all
    if (command != F_SETLK || watched.isEmpty())
        return false;
    const auto* lock = static_cast<const struct flock*>(argument);
    return lock->l_type == F_RDLCK && lock->l_len == SharedBytes &&
           QFile::symLinkTarget(u"/proc/self/fd/%1"_s.arg(descriptor)) == watched;
}

} // namespace

// Stands in front of the system's: the engine's locks are counted, and taken.
int fcntl64(int descriptor, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (isReadLock(descriptor, command, argument))
        ++readLocks;
    static const auto original = reinterpret_cast<int (*)(int, int, ...)>(::dlsym(RTLD_NEXT, "fcntl64"));
    return original(descriptor, command, argument);
}

/// How often the program locks the store while it copies: what is about to be changed is copied under one
/// lock, with nobody's change in between.
class CopyLockTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { watched.clear(); }
    void theProgramCopiesAStoreOfManyPagesUnderOneLock();
};

void CopyLockTest::theProgramCopiesAStoreOfManyPagesUnderOneLock() {
    const TestStore small;
    const TestStore large;
    SQLite::Database(large.path().toStdString(), SQLite::OPEN_READWRITE)
        .exec("WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
              "INSERT INTO Holi02(SuitNo) SELECT hex(zeroblob(1500)) || i FROM n");
    const auto locksOf = [](const TestStore& store, const auto& copy) {
        watched = store.path();
        readLocks = 0;
        copy(store);
        watched.clear();
        return readLocks.load();
    };
    const auto asTheProgram = [](const TestStore& store) {
        const SafetyCopies copies(store.path());
        SafetyCopies::before(CopyReason::Purge);
    };
    const auto inPieces = [](const TestStore& store) {
        QVERIFY(copyBytes(store.path(), CopyReason::Hand, CopyPace::InPieces, [] { return true; }).copy);
    };
    const int locks = locksOf(small, asTheProgram);
    QVERIFY(locks > 0);
    QCOMPARE(locksOf(large, asTheProgram), locks);
    QVERIFY(locksOf(large, inPieces) > locks);
}

int main(int argc, char** argv) {
    return runTests<CopyLockTest>(argc, argv);
}

#include "CopyLockTest.moc"
