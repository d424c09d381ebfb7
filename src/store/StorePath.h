#pragma once

#include <QDir>
#include <QString>

namespace pontrel {

/// The name of the store in its folder.
inline const QString StoreFile = QStringLiteral("Pontrel.mdb");

/// Where the store of a program folder lies.
[[nodiscard]] inline QString storePathIn(const QString& programFolder) {
    return QDir(programFolder).filePath(QStringLiteral("DB/") + StoreFile);
}

/// The file that the program of a user, told by his number, holds locked while it runs in that folder.
[[nodiscard]] inline QString runningLockIn(const QString& programFolder, unsigned user) {
    return QDir(programFolder).filePath(QStringLiteral("DB/.running-%1").arg(user));
}

} // namespace pontrel
