#include "store/StoreCheck.h"

#include "store/HeldFile.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

namespace pontrel {

namespace {

void removeCopy(const QString& path) {
    QFile::remove(path);
    QFile::remove(path + QStringLiteral("-journal"));
}

/// Takes away what a killed look has left; false while another process is at its own.
bool makeRoomFor(const QString& path) {
    if (!QFileInfo(path).isSymLink() && !QFileInfo::exists(path))
        return true;
    const HeldFile left(path, HeldFile::Open::Existing);
    if (!left.held() && !QFileInfo(path).isSymLink())
        return false;
    removeCopy(path);
    return true;
}

QString memoryOf(const QString& store) {
    return QFileInfo(store).path() + QStringLiteral("/.checked");
}

} // namespace

StoreFinding checkCopyOf(const QString& store, const std::function<bool()>& mayGoOn,
                         const std::function<void(const QString& copy)>& further) {
    const QString path = checkedCopyOf(store);
    if (!makeRoomFor(path))
        return {StoreFinding::Kind::NotLookedAt, QStringLiteral("another look through it is going on")};
    // The disk is not filled for this.
    if (!hasRoomForCopy(store, QFileInfo(store).path()))
        return {StoreFinding::Kind::NotLookedAt, QStringLiteral("too little room on the disk")};
    const HeldFile copy(path, HeldFile::Open::New);
    if (!copy.held())
        return {StoreFinding::Kind::NotLookedAt, QStringLiteral("the copy cannot be made")};
    const auto remove = qScopeGuard([&path] { removeCopy(path); });
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
