#include "folder/StoreMaker.h"

#include "demo/Demo.h"
#include "folder/Refusal.h"
#include "store/Database.h"
#include "store/NewStore.h"
#include "store/Recordset.h"
#include "store/RunTimeError.h"
#include "store/StorePath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <unistd.h>

namespace pontrel {

namespace {

using Reason = Refusal::Reason;

void makeFolders(const QString& storeFolder, const QString& punches) {
    try {
        makeStoreFolder(storeFolder);
    } catch (const RunTimeError&) {
        throw Refusal{Reason::NoFolder, storeFolder, {}};
    }
    // One that was there may have been open to others.
    if (!QFile::setPermissions(storeFolder,
                               QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner))
        throw Refusal{Reason::NoFolder, storeFolder, {}};
    if (!QDir().mkpath(punches))
        throw Refusal{Reason::NoFolder, punches, {}};
}

/// Keeps the folder of the store to this run while the object lives: the system frees it when the run ends,
/// however it ends. So what another run has left there can be told from what it is making.
class Workplace {
  public:
    explicit Workplace(const QString& folder)
        : lock_(QFile::encodeName(folder + QStringLiteral("/.making")))
        , descriptor_(::open(lock_.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600)) {
        if (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            ::close(descriptor_);
            throw Refusal{Reason::BeingMade, folder, {}};
        }
        QDir rests(folder);
        const auto names =
            rests.entryList({QStringLiteral(".new-*")}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
        for (const QString& name : names)
            QDir(rests.filePath(name)).removeRecursively();
    }
    ~Workplace() {
        ::unlink(lock_.constData());
        ::close(descriptor_);
    }
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

  private:
    QByteArray lock_;
    int descriptor_;
};

/// A journal that an earlier store has left in its place would be played into the new one.
void refuseLeftJournal(const QString& store) {
    for (const QString& rest : {store + QStringLiteral("-journal"), store + QStringLiteral("-wal")})
        if (QFileInfo::exists(rest))
            throw Refusal{Reason::LeftJournal, rest, {}};
}

/// The name is a row's value like any other and may hold an apostrophe, so it is not joined into a statement.
void nameCompany(Database& database, const QString& company) {
    Recordset settings = database.openRecordset(QStringLiteral("Syst01"));
    settings.MoveFirst();
    settings.Edit();
    settings.setField(QStringLiteral("CmpName"), company);
    settings.Update();
}

void fill(const QString& store, const StoreWish& wish) {
    createStore(store, {PunchFolder, wish.account, wish.password});
    if (!wish.demo && wish.company.isEmpty())
        return;
    Database database(store);
    if (wish.demo)
        createDemo(database, wish.folder);
    if (!wish.company.isEmpty())
        nameCompany(database, wish.company);
}

} // namespace

void makeProgramStore(const StoreWish& wish, const std::function<void()>& beforePlacing) {
    const QString store = storePathIn(wish.folder);
    const QString folder = QFileInfo(store).path();
    std::optional<Workplace> workplace;
    if (QFileInfo(folder).isDir())
        workplace.emplace(folder);
    // A link that leads nowhere is refused as well: it may point to a disk that is not there at the moment.
    if (QFileInfo::exists(store) || QFileInfo(store).isSymLink())
        throw Refusal{Reason::StoreExists, store, {}};
    refuseLeftJournal(store);

    makeFolders(folder, wish.folder + u'/' + PunchFolder);
    if (!workplace)
        workplace.emplace(folder);

    const QTemporaryDir workshop(folder + QStringLiteral("/.new-XXXXXX"));
    if (!workshop.isValid())
        throw Refusal{Reason::NotWritten, folder, workshop.errorString()};
    const QString unfinished = workshop.filePath(StoreFile);
    fill(unfinished, wish);
    if (beforePlacing)
        beforePlacing();
    refuseLeftJournal(store);
    // Refuses to replace a file that has come up in the meantime.
    if (!QFile::rename(unfinished, store))
        throw Refusal{Reason::NotPlaced, store, {}};
}

} // namespace pontrel
