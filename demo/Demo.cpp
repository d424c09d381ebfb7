#include "demo/Demo.h"

#include "demo/Plan.h"
#include "store/RunTimeError.h"

#include <QDir>
#include <QFile>

namespace pontrel {

namespace {

void writePunchFile(const QString& path, const QByteArray& content) {
    if (QFile::exists(path))
        return;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || file.write(content) != content.size() ||
        !file.flush())
        throw runTimeError(error::FileAccess, path + QStringLiteral(": ") + file.errorString());
}

} // namespace

void createDemo(Database& database, const QString& folder) {
    Stage stage(database);
    database.execute(QStringLiteral("Update Syst01 Set CmpName = '範例實業股份有限公司'"));
    demo::writeShifts(database);
    demo::writeEmployees(database);
    demo::generateRoster(database);
    demo::writeDepartures(database);
    demo::writeLeave(database);
    stage.finish();

    for (const DemoPunchFile& file : demoPunchFiles())
        writePunchFile(QDir(folder).filePath(QStringLiteral("punch/") + file.name), file.content);
}

} // namespace pontrel
