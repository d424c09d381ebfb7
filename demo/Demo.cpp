#include "demo/Demo.h"

#include "demo/Plan.h"
#include "store/NewStore.h"
#include "store/RunTimeError.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace pontrel {

namespace {

/// Under another name first, and no punch file's, so that a punch file is whole as soon as it stands there.
void writePunchFile(const QString& folder, const QString& name, const QByteArray& content) {
    const QString path = folder + name;
    QFile file(folder + u'.' + name + QStringLiteral(".new"));
    file.remove(); // of a run that was killed
    if (QFile::exists(path))
        return;
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
                         file.write(content) == content.size() && file.flush() && ::fsync(file.handle()) == 0;
    file.close();
    if (!written || !file.rename(path)) {
        const QString reason = file.errorString();
        file.remove();
        throw runTimeError(error::FileAccess, path + QStringLiteral(": ") + reason);
    }
}

} // namespace

void createDemo(Database& database, const QString& folder) {
    runStage(database, [&] {
        database.execute(QStringLiteral("Update Syst01 Set CmpName = '範例實業股份有限公司'"));
        demo::writeShifts(database);
        demo::writeEmployees(database);
        demo::generateRoster(database);
        demo::writeDepartures(database);
        demo::writeLeave(database);
        demo::writeWriteOffs(database);
        demo::writeEarlierEntries(database);
        demo::writeOvertime(database);
    });
    writeDemoPunchFiles(folder);
}

void writeDemoPunchFiles(const QString& folder) {
    for (const DemoPunchFile& file : demoPunchFiles())
        writePunchFile(QDir(folder).filePath(PunchFolder + u'/'), file.name, file.content);
}

} // namespace pontrel
