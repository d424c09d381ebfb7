#include "app/SingleInstance.h"

#include "store/StorePath.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pontrel {

namespace {

/// A folder of another machine locks only what is open for writing; on a disk that is read-only a file that
/// is there can be locked all the same.
int openLock(const QByteArray& path) {
    constexpr int Flags = O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const int descriptor = ::open(path.constData(), O_RDWR | Flags, 0600);
    return descriptor >= 0 ? descriptor : ::open(path.constData(), O_RDONLY | Flags, 0600);
}

} // namespace

SingleInstance::SingleInstance(const QString& programFolder)
    : descriptor_(openLock(QFile::encodeName(lockFile(programFolder))))
    , first_(::flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) {}

SingleInstance::~SingleInstance() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

void SingleInstance::callFirst() const {
    // The first one watches for it; where it cannot be done nobody comes, and nothing else is lost.
    (void)::futimens(descriptor_, nullptr);
}

QString SingleInstance::lockFile(const QString& programFolder) {
    return runningLockIn(programFolder, ::getuid());
}

} // namespace pontrel
