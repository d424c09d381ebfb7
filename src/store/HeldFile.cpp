#include "store/HeldFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pontrel {

HeldFile::HeldFile(const QString& path, Open open)
    : descriptor_(::open(QFile::encodeName(path).constData(),
                         O_RDWR | O_NOFOLLOW | O_CLOEXEC | (open == Open::New ? O_CREAT | O_EXCL : 0),
                         0600)) {
    // Another process may have removed the file before it could be held.
    struct stat state {};
    held_ = descriptor_ >= 0 && (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) &&
            ::fstat(descriptor_, &state) == 0 && state.st_nlink > 0;
}

HeldFile::~HeldFile() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

bool HeldFile::sync() const {
    return ::fsync(descriptor_) == 0;
}

} // namespace pontrel
