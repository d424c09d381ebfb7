#include "store/StoreCopy.h"

#include "store/DiskRoom.h"
#include "store/Schema.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/SQLiteCpp.h>

#include <QFileInfo>

#include <sqlite3.h>

#include <chrono>
#include <memory>
#include <thread>

namespace pontrel {

namespace {

constexpr int AllPages = -1;
constexpr int PagesAtOnce = 256;
constexpr std::chrono::milliseconds Rest{2};
constexpr std::chrono::milliseconds RestWhileBusy{100};
/// What another program may hold the store locked for before a copy is given up.
constexpr int BusyMilliseconds = 2000;
/// A copy in pieces begins anew whenever somebody has written meanwhile; so many copies' pages are enough.
constexpr int MostRounds = 4;
constexpr int ProgressSteps = 10'000;

StoreFinding notLookedAt(const QString& why) {
    return {StoreFinding::Kind::NotLookedAt, why};
}

StoreFinding damaged(const QString& how) {
    return {StoreFinding::Kind::Damaged, how};
}

/// The routine's finding, or what its failure means.
template<typename Routine>
StoreFinding findingOf(Routine&& routine) {
    try {
        return routine();
    } catch (const SQLite::Exception& failure) {
        const QString why = QString::fromUtf8(failure.what());
        const bool isDamage =
            failure.getErrorCode() == SQLITE_CORRUPT || failure.getErrorCode() == SQLITE_NOTADB;
        return isDamage ? damaged(why) : notLookedAt(why);
    } catch (const std::exception& failure) {
        return notLookedAt(QString::fromUtf8(failure.what()));
    }
}

/// The store to read. Only where a write is left in it to be undone, it has to be opened for writing.
std::unique_ptr<SQLite::Database> openToCopy(const QString& store) {
    const auto open = [&store](int flags) {
        auto engine = std::make_unique<SQLite::Database>(store.toStdString(), flags, BusyMilliseconds);
        (void)engine->execAndGet("SELECT count(*) FROM sqlite_schema");
        return engine;
    };
    try {
        return open(SQLite::OPEN_READONLY);
    } catch (const SQLite::Exception& failure) {
        if (failure.getErrorCode() != SQLITE_READONLY && failure.getErrorCode() != SQLITE_CANTOPEN)
            throw;
    }
    return open(SQLite::OPEN_READWRITE);
}

/// Whether the whole store has been copied.
bool copyPages(SQLite::Database& from, SQLite::Database& to, CopyPace pace,
               const std::function<bool()>& mayGoOn) {
    const int piece = pace == CopyPace::AtOnce ? AllPages : PagesAtOnce;
    SQLite::Backup backup(to, from);
    for (std::int64_t pages = 0; mayGoOn(); pages += PagesAtOnce) {
        const int result = backup.executeStep(piece);
        if (result == SQLITE_DONE)
            return true;
        if (pages > std::int64_t{MostRounds} * backup.getTotalPageCount() + MostRounds * PagesAtOnce)
            return false;
        // The store belongs to those who work: between two pieces nothing is locked.
        std::this_thread::sleep_for(result == SQLITE_OK ? Rest : RestWhileBusy);
    }
    return false;
}

/// The copy's change counter is not the store's, and could come to a mark's number by other programs' writes.
void forgetCopyMarks(SQLite::Database& copy) {
    try {
        copy.exec("DELETE FROM CopyMark");
    } catch (const SQLite::Exception&) {
        // Not there in an early store; what else is wrong with the copy, the look through it finds.
    }
}

int goOn(void* mayGoOn) {
    return (*static_cast<const std::function<bool()>*>(mayGoOn))() ? 0 : 1;
}

} // namespace

StoreFinding copyStore(const QString& store, const QString& into, CopyPace pace,
                       const std::function<bool()>& mayGoOn) {
    return findingOf([&]() -> StoreFinding {
        const auto from = openToCopy(store);
        SQLite::Database to(into.toStdString(), SQLite::OPEN_READWRITE);
        to.exec("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
        if (!copyPages(*from, to, pace, mayGoOn))
            return notLookedAt(QStringLiteral("the copy could not be finished"));
        forgetCopyMarks(to);
        return {StoreFinding::Kind::Sound, {}};
    });
}

StoreFinding lookThrough(const QString& copy, const std::function<bool()>& mayGoOn) {
    return findingOf([&]() -> StoreFinding {
        SQLite::Database engine(copy.toStdString(), SQLite::OPEN_READONLY);
        const auto mark = [&engine](const char* pragma) {
            return engine.execAndGet(std::string("PRAGMA ") + pragma).getInt();
        };
        const int version = mark("user_version");
        if (mark("application_id") != ApplicationId || version < 1 || version > StoreVersion)
            return damaged(QStringLiteral("not a store of this program"));
        sqlite3_progress_handler(engine.getHandle(), ProgressSteps, goOn,
                                 const_cast<std::function<bool()>*>(&mayGoOn));
        const QString result =
            QString::fromStdString(engine.execAndGet("PRAGMA integrity_check(1)").getString());
        return result == QLatin1String("ok") ? StoreFinding{StoreFinding::Kind::Sound, {}} : damaged(result);
    });
}

bool hasRoomForCopy(const QString& store, const QString& folder) {
    const std::optional<qint64> left = roomLeftIn(folder);
    return !left || *left >= 2 * QFileInfo(store).size();
}

} // namespace pontrel
