#include "store/StoreCheck.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/SQLiteCpp.h>

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <sqlite3.h>

#include <chrono>
#include <thread>

namespace pontrel {

namespace {

constexpr int PagesAtOnce = 256;
constexpr std::chrono::milliseconds Rest{2};
constexpr std::chrono::milliseconds RestWhileBusy{100};
/// A copy begins anew whenever somebody has written meanwhile; so many copies' pages are enough.
constexpr int MostRounds = 4;
constexpr int ProgressSteps = 10'000;

StoreFinding notLookedAt(const QString& why) {
    return {StoreFinding::Kind::NotLookedAt, why};
}

/// The copy while it is there: made anew, and removed in the end.
class Copy {
  public:
    explicit Copy(const QString& path) : file_(path) { removeAll(); }
    ~Copy() { removeAll(); }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    [[nodiscard]] bool make() {
        const bool made = file_.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                                     QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        file_.close();
        return made;
    }

  private:
    void removeAll() {
        file_.remove();
        QFile::remove(file_.fileName() + QStringLiteral("-journal"));
    }

    QFile file_;
};

/// Whether the whole store has been copied.
bool copyPages(SQLite::Database& from, SQLite::Database& to, const std::function<bool()>& mayGoOn) {
    SQLite::Backup backup(to, from);
    for (std::int64_t pages = 0; mayGoOn(); pages += PagesAtOnce) {
        const int result = backup.executeStep(PagesAtOnce);
        if (result == SQLITE_DONE)
            return true;
        if (pages > std::int64_t{MostRounds} * backup.getTotalPageCount() + MostRounds * PagesAtOnce)
            return false;
        // The store belongs to those who work: between two pieces nothing is locked.
        std::this_thread::sleep_for(result == SQLITE_OK ? Rest : RestWhileBusy);
    }
    return false;
}

int goOn(void* mayGoOn) {
    return (*static_cast<const std::function<bool()>*>(mayGoOn))() ? 0 : 1;
}

StoreFinding check(const QString& store, const std::function<bool()>& mayGoOn) {
    const QString path = checkedCopyOf(store);
    Copy copy(path);
    // The disk is not filled for this.
    if (QStorageInfo(QFileInfo(store).path()).bytesAvailable() < 3 * QFileInfo(store).size())
        return notLookedAt(QStringLiteral("too little room on the disk"));
    if (!copy.make())
        return notLookedAt(QStringLiteral("the copy cannot be made"));
    SQLite::Database to(path.toStdString(), SQLite::OPEN_READWRITE);
    to.exec("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
    {
        SQLite::Database from(store.toStdString(), SQLite::OPEN_READONLY);
        if (!copyPages(from, to, mayGoOn))
            return notLookedAt(QStringLiteral("the copy could not be finished"));
    }
    sqlite3_progress_handler(to.getHandle(), ProgressSteps, goOn,
                             const_cast<std::function<bool()>*>(&mayGoOn));
    const QString result = QString::fromStdString(to.execAndGet("PRAGMA quick_check(1)").getString());
    if (result == QLatin1String("ok"))
        return {StoreFinding::Kind::Sound, {}};
    return {StoreFinding::Kind::Damaged, result};
}

QString memoryOf(const QString& store) {
    return QFileInfo(store).path() + QStringLiteral("/.checked");
}

} // namespace

StoreFinding checkCopyOf(const QString& store, const std::function<bool()>& mayGoOn) {
    try {
        return check(store, mayGoOn);
    } catch (const SQLite::Exception& failure) {
        const bool damaged =
            failure.getErrorCode() == SQLITE_CORRUPT || failure.getErrorCode() == SQLITE_NOTADB;
        return {damaged ? StoreFinding::Kind::Damaged : StoreFinding::Kind::NotLookedAt,
                QString::fromUtf8(failure.what())};
    } catch (const std::exception& failure) {
        return notLookedAt(QString::fromUtf8(failure.what()));
    }
}

QString checkedCopyOf(const QString& store) {
    return QFileInfo(store).path() + QStringLiteral("/.checking");
}

bool isCheckDue(const QString& store, QDate today) {
    QFile memory(memoryOf(store));
    return !memory.open(QIODevice::ReadOnly) ||
           memory.readAll().trimmed() != today.toString(Qt::ISODate).toLatin1();
}

void rememberCheck(const QString& store, QDate today) {
    QFile memory(memoryOf(store));
    if (memory.open(QIODevice::WriteOnly | QIODevice::Truncate,
                    QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        memory.write(today.toString(Qt::ISODate).toLatin1() + '\n');
}

} // namespace pontrel
