#include "store/StoreCheck.h"

#include <QFile>
#include <QFileInfo>

namespace pontrel {

namespace {

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

QString memoryOf(const QString& store) {
    return QFileInfo(store).path() + QStringLiteral("/.checked");
}

} // namespace

StoreFinding checkCopyOf(const QString& store, const std::function<bool()>& mayGoOn,
                         const std::function<void(const QString& copy)>& further) {
    const QString path = checkedCopyOf(store);
    Copy copy(path);
    // The disk is not filled for this.
    if (!hasRoomForCopy(store, QFileInfo(store).path()))
        return {StoreFinding::Kind::NotLookedAt, QStringLiteral("too little room on the disk")};
    if (!copy.make())
        return {StoreFinding::Kind::NotLookedAt, QStringLiteral("the copy cannot be made")};
    StoreFinding finding = copyStore(store, path, CopyPace::InPieces, mayGoOn);
    if (finding.kind == StoreFinding::Kind::Sound)
        finding = lookThrough(path, mayGoOn);
    if (finding.kind == StoreFinding::Kind::Sound && further)
        further(path);
    return finding;
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
