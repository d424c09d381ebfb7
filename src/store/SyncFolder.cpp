#include "store/SyncFolder.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

namespace pontrel {

void syncFolder(const QString& folder) {
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    (void)::fsync(descriptor);
    ::close(descriptor);
}

} // namespace pontrel
