#include "store/DiskRoom.h"

#include <QFile>

#include <sys/statvfs.h>

namespace pontrel {

// Qt's own way knows only file systems that stand in the table of mounts.
std::optional<qint64> roomLeftIn(const QString& folder) {
    struct statvfs state {};
    if (::statvfs(QFile::encodeName(folder).constData(), &state) != 0)
        return std::nullopt;
    return static_cast<qint64>(state.f_bavail) * static_cast<qint64>(state.f_frsize);
}

} // namespace pontrel
