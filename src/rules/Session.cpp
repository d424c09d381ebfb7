#include "rules/Session.h"

#include "store/StorePath.h"

#include <QDir>

namespace pontrel {

QString databaseFolder(const QString& programFolder) {
    const QLatin1Char separator('/');
    return (programFolder.endsWith(separator) ? programFolder : programFolder + separator) +
           QStringLiteral("DB/");
}

QString programFolder() {
    return QDir::cleanPath(gDbPath + QStringLiteral(".."));
}

QString storePath() {
    return gDbPath + StoreFile;
}

void OpenDB() {
    if (gDbOpen)
        return;
    gDatabase = std::make_unique<Database>(storePath());
    gDbOpen = true;
}

void CloseDB() {
    if (!gDbOpen)
        return;
    gRecordset.Close();
    gRecordset2.Close();
    gDatabase.reset();
    gDbOpen = false;
}

Database& sharedDatabase() {
    if (!gDatabase)
        throw runTimeError(error::ObjectNotSet);
    return *gDatabase;
}

} // namespace pontrel
