#pragma once

#include "support/Patience.h"

#include <QProcess>
#include <QString>
#include <QStringList>

namespace pontrel::test {

/// What has come of a run of pontrel-admin.
struct AdminEnd {
    int status = -1;
    QString output;
    QString errors;
};

/// Runs pontrel-admin over a program folder to its end.
inline AdminEnd admin(const QString& folder, const QStringList& words) {
    QProcess process;
    process.start(QStringLiteral(PONTREL_ADMIN), QStringList{folder} + words);
    process.closeWriteChannel();
    if (!process.waitForFinished(PatienceMs) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace pontrel::test
