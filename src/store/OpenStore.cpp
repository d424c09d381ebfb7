#include "store/OpenStore.h"

#include "store/MemoryStore.h"
#include "store/RunTimeError.h"
#include "store/Schema.h"
#include "store/SqlFunctions.h"
#include "store/Upgrade.h"

#include <QFile>

#include <cerrno>
#include <sys/stat.h>

namespace pontrel {

namespace {

constexpr int BusyMilliseconds = 5000;

void requireFile(const QString& path) {
    struct stat state {};
    if (::stat(QFile::encodeName(path).constData(), &state) != 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR;
        throw runTimeError(missing ? error::StoreNotFound : error::StoreUnreadable, qt_error_string(errno));
    }
    if (!S_ISREG(state.st_mode))
        throw runTimeError(error::UnrecognizedStore, QStringLiteral("not a regular file"));
    if (state.st_size == 0)
        throw runTimeError(error::UnrecognizedStore, QStringLiteral("empty"));
}

std::unique_ptr<SQLite::Database> newStoreInMemory() {
    auto engine = std::make_unique<SQLite::Database>(
        MemoryPath.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE | SQLite::OPEN_NOMUTEX);
    engine->exec("PRAGMA trusted_schema = OFF; PRAGMA recursive_triggers = OFF");
    for (const QString& statement : creationStatements())
        engine->exec(statement.toStdString());
    registerSqlFunctions(engine->getHandle());
    return engine;
}

} // namespace

std::unique_ptr<SQLite::Database> openStore(const QString& path) {
    if (path == MemoryPath)
        return newStoreInMemory();
    requireFile(path);
    auto engine =
        std::make_unique<SQLite::Database>(path.toStdString(),
                                           // A connection belongs to one thread.
                                           SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, BusyMilliseconds);
    const auto mark = [&](const char* pragma) {
        return engine->execAndGet(std::string("PRAGMA ") + pragma).getInt();
    };
    const int version = mark("user_version");
    if (mark("application_id") != ApplicationId || version < 1 || version > StoreVersion)
        throw runTimeError(
            error::UnrecognizedStore,
            QStringLiteral("%1: application_id %2, user_version %3; expected are %4 and 1 to %5")
                .arg(path)
                .arg(mark("application_id"))
                .arg(version)
                .arg(ApplicationId)
                .arg(StoreVersion));
    // The change of the journal's mode and back makes the engine delete a journal that undoes nothing, which
    // a killed program may have left, and leave one in use alone.
    engine->exec("PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON;"
                 "PRAGMA journal_mode = PERSIST; PRAGMA journal_mode = DELETE;"
                 "PRAGMA synchronous = EXTRA; PRAGMA cache_size = -32768; PRAGMA recursive_triggers = OFF;"
                 // Pages, 64 MB: what a stage changes beyond them goes to the file ahead of its end, the
                 // journal first. The engine takes a number that is a multiple of 256 for "off".
                 "PRAGMA cache_spill = 16000;"
                 // What is deleted is overwritten, but in pages that are set free.
                 "PRAGMA secure_delete = FAST");
    if (version < StoreVersion)
        upgradeStore(*engine);
    registerSqlFunctions(engine->getHandle());
    return engine;
}

std::unique_ptr<SQLite::Database> openStoreToRead(const QString& path) {
    // Not opened as read-only: then it could not put a store right that a killed program has left.
    auto engine = openStore(path);
    engine->exec("PRAGMA query_only = ON");
    return engine;
}

} // namespace pontrel
