#include "app/SingleInstance.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace pontrel {

using namespace Qt::StringLiterals;

SingleInstance::SingleInstance(const QString& programFolder)
    : descriptor_(::open(QFile::encodeName(lockFile(programFolder)).constData(),
                         O_RDONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600))
    , first_(::flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) {}

SingleInstance::~SingleInstance() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

QString SingleInstance::lockFile(const QString& programFolder) {
    return QDir(programFolder).filePath(u"DB/.running-%1"_s.arg(::getuid()));
}

} // namespace pontrel
