#include "faults/SmallDisk.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace pontrel::test {

namespace {

[[noreturn]] void refuse(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

bool writeAll(const char* path, const QByteArray& text) {
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
}

/// The user becomes root of a user namespace, and nothing more than himself outside it.
bool enterUserNamespace() {
    const QByteArray user = QByteArray::number(geteuid());
    const QByteArray group = QByteArray::number(getegid());
    return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeAll("/proc/self/setgroups", "deny") &&
           writeAll("/proc/self/uid_map", "0 " + user + " 1") &&
           writeAll("/proc/self/gid_map", "0 " + group + " 1");
}

} // namespace

QString enterOwnMounts() {
    const auto refusal = [](const char* call) {
        return QStringLiteral(
                   "This test mounts a small disk, and the machine refuses it (%1: %2). It has to run "
                   "as root, or where a user may make namespaces of his own.")
            .arg(QString::fromLatin1(call), QString::fromLocal8Bit(std::strerror(errno)));
    };
    if (unshare(CLONE_NEWNS) != 0 && !enterUserNamespace())
        return refusal("unshare");
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return refusal("mount");
    return {};
}

SmallDisk::SmallDisk(qint64 bytes) {
    const std::string options = "mode=0700,size=" + std::to_string(bytes);
    if (!folder_.isValid() ||
        mount("tmpfs", QFile::encodeName(folder_.path()).constData(), "tmpfs", 0, options.c_str()) != 0)
        refuse("A small disk cannot be mounted");
}

SmallDisk::~SmallDisk() {
    umount2(QFile::encodeName(folder_.path()).constData(), MNT_DETACH);
}

qint64 SmallDisk::freeBytes() const {
    struct statvfs state {};
    if (statvfs(QFile::encodeName(folder_.path()).constData(), &state) != 0)
        refuse("The small disk's state cannot be read");
    return static_cast<qint64>(state.f_bavail * state.f_bsize);
}

void SmallDisk::fillUpTo(qint64 left) {
    freeSpace();
    const qint64 bytes = freeBytes() - left;
    QFile file(ballast());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(QByteArray(bytes, '\0')) != bytes)
        refuse("The small disk cannot be filled");
}

void SmallDisk::freeSpace() {
    if (QFile::exists(ballast()) && !QFile::remove(ballast()))
        refuse("The small disk cannot be freed");
}

void SmallDisk::setReadOnly(bool readOnly) {
    unsigned long flags = MS_REMOUNT;
    if (readOnly)
        flags |= MS_RDONLY;
    if (mount(nullptr, QFile::encodeName(folder_.path()).constData(), nullptr, flags, nullptr) != 0)
        refuse("The small disk cannot be mounted otherwise");
}

} // namespace pontrel::test
