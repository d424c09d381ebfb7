#include "Restore.h"

#include "store/Clock.h"
#include "store/StoreCheck.h"
#include "store/StorePath.h"
#include "store/SyncFolder.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

namespace pontrel::tools {

using namespace Qt::StringLiterals;

namespace {

const QString Journal = u"-journal"_s;

/// A program's place, held so that it does not run and cannot start.
class Place {
  public:
    explicit Place(const QString& path)
        : descriptor_(::open(QFile::encodeName(path).constData(),
                             O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600)) {
        if (descriptor_ < 0)
            throw Refusal{u"%1 cannot be locked: %2. Remove it if that user's program does not run."_s.arg(
                path, qt_error_string(errno))};
        if (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            ::close(descriptor_);
            throw Refusal{u"The program runs in that folder. Close it first."_s};
        }
    }
    ~Place() { ::close(descriptor_); }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

  private:
    int descriptor_;
};

/// The places of this user's program and of every other user's that has ever run in the folder.
std::vector<std::unique_ptr<Place>> holdAllPlaces(const QString& programFolder) {
    const QString own = runningLockIn(programFolder, ::getuid());
    const QDir folder(QFileInfo(own).path());
    QStringList paths{own};
    const QStringList names = folder.entryList({u".running-*"_s}, QDir::Files | QDir::Hidden);
    for (const QString& name : names)
        paths += folder.filePath(name);
    paths.removeDuplicates();
    std::vector<std::unique_ptr<Place>> places;
    for (const QString& path : paths)
        places.push_back(std::make_unique<Place>(path));
    return places;
}

/// The new store while it is made; what is left of one goes.
class NewStore {
  public:
    explicit NewStore(const QString& store) : path_(QFileInfo(store).path() + u"/.restoring"_s) { clear(); }
    ~NewStore() { clear(); }
    NewStore(const NewStore&) = delete;
    NewStore& operator=(const NewStore&) = delete;

    [[nodiscard]] const QString& path() const { return path_; }

    void fillFrom(const QString& copy) {
        QFile file(path_);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                       QFileDevice::ReadOwner | QFileDevice::WriteOwner))
            throw Refusal{u"%1 cannot be written: %2"_s.arg(path_, file.errorString())};
        file.close();
        const auto toTheEnd = [] { return true; };
        StoreFinding finding = copyStore(copy, path_, CopyPace::AtOnce, toTheEnd);
        if (finding.kind == StoreFinding::Kind::Sound)
            finding = lookThrough(path_, toTheEnd);
        if (finding.kind != StoreFinding::Kind::Sound)
            throw Refusal{u"%1 cannot be restored: %2"_s.arg(copy, finding.technical)};
    }

    /// An import sets them for its time, and a copy before a replaced day is made in the middle of one.
    [[nodiscard]] bool removeSentinel() {
        try {
            SQLite::Database engine(path_.toStdString(), SQLite::OPEN_READWRITE);
            return engine.exec("UPDATE Base06 SET LeaveDate = NULL WHERE LeaveDate = '2038-01-01'") > 0;
        } catch (const SQLite::Exception& failure) {
            throw Refusal{u"%1 cannot be written: %2"_s.arg(path_, QString::fromUtf8(failure.what()))};
        }
    }

    void sync() const {
        const int descriptor = ::open(QFile::encodeName(path_).constData(), O_RDONLY | O_CLOEXEC);
        const bool done = descriptor >= 0 && ::fsync(descriptor) == 0;
        const int reason = errno;
        if (descriptor >= 0)
            ::close(descriptor);
        if (!done)
            throw Refusal{u"%1 cannot be written: %2"_s.arg(path_, qt_error_string(reason))};
    }

  private:
    void clear() {
        QFile::remove(path_);
        QFile::remove(path_ + Journal);
    }

    QString path_;
};

/// The opening undoes what a killed program has left half written, and takes its journal away. A store that
/// is beyond that keeps it.
void undoHalfWrite(const QString& store) {
    try {
        SQLite::Database engine(store.toStdString(), SQLite::OPEN_READWRITE);
        (void)engine.execAndGet("SELECT count(*) FROM sqlite_schema");
    } catch (const SQLite::Exception&) {
    }
}

/// Gives a file a second name, or another one where the disk knows no second names.
void link(const QString& from, const QString& to) {
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (::link(source.constData(), target.constData()) == 0)
        return;
    const bool knowsNone = errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS;
    if (!knowsNone || ::rename(source.constData(), target.constData()) != 0)
        throw Refusal{u"%1 cannot be kept as %2: %3"_s.arg(from, to, qt_error_string(errno))};
}

void takeAway(const QString& path) {
    if (QFile::exists(path) && !QFile::remove(path))
        throw Refusal{u"%1 cannot be taken away: %2"_s.arg(path, qt_error_string(errno))};
}

/// Gives the store a second name, its journal too where it still needs one. Returns the name; empty where
/// there is no store.
QString keep(const QString& store) {
    const bool hasJournal = QFile::exists(store + Journal);
    if (!QFile::exists(store) && !hasJournal)
        return {};
    QString kept;
    QDateTime moment = clock::now();
    do {
        kept = QFileInfo(store).path() +
               u"/Pontrel-%1-replaced.mdb"_s.arg(moment.toString(u"yyyyMMdd-HHmmss"_s));
        moment = moment.addSecs(1);
    } while (QFile::exists(kept) || QFile::exists(kept + Journal));
    if (QFile::exists(store))
        link(store, kept);
    if (hasJournal) {
        link(store + Journal, kept + Journal);
        // The store goes first: without its journal it is half written. The journal would be played into the
        // new store.
        takeAway(store);
        takeAway(store + Journal);
    }
    return kept;
}

} // namespace

Restored restoreStore(const QString& programFolder, const QString& copy) {
    const QString store = storePathIn(programFolder);
    if (!QFileInfo(copy).isFile())
        throw Refusal{u"There is no copy %1."_s.arg(copy)};
    if (QFileInfo(copy).canonicalFilePath() == QFileInfo(store).canonicalFilePath())
        throw Refusal{u"%1 is the store itself."_s.arg(copy)};
    const auto places = holdAllPlaces(programFolder);
    NewStore made(store);
    made.fillFrom(copy);
    Restored restored;
    // Any copy may come from the middle of an import, or from behind one that ended early.
    restored.sentinelRemoved = made.removeSentinel();
    made.sync();
    undoHalfWrite(store);
    restored.kept = keep(store);
    if (::rename(QFile::encodeName(made.path()).constData(), QFile::encodeName(store).constData()) != 0)
        throw Refusal{u"%1 cannot be put in its place: %2"_s.arg(made.path(), qt_error_string(errno))};
    syncFolder(QFileInfo(store).path());
    return restored;
}

} // namespace pontrel::tools
