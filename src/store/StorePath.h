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

} // namespace pontrel
