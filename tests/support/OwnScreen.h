#pragma once

#include <QFile>
#include <QProcessEnvironment>
#include <QSize>

namespace pontrel::test {

/// The environment for a program of Qt on a screen of its own, of that size, which nobody sees; with a
/// factor, a desktop that scales by it. The screen is described in a file of the folder.
[[nodiscard]] inline QProcessEnvironment environmentOfScreen(const QString& folder, QSize size,
                                                             const QString& factor = {}) {
    QFile screens(folder + QStringLiteral("/screens.json"));
    const QByteArray described =
        QStringLiteral("{\"screens\": [{\"name\": \"one\", \"x\": 0, \"y\": 0, \"width\": %1, \"height\": %2,"
                       "\"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1}]}")
            .arg(size.width())
            .arg(size.height())
            .toUtf8();
    if (!screens.open(QIODevice::WriteOnly | QIODevice::Truncate) || screens.write(described) < 0)
        qFatal("no file for the screen");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"),
                       QStringLiteral("offscreen:configfile=") + screens.fileName());
    environment.remove(QStringLiteral("QT_SCALE_FACTOR"));
    if (!factor.isEmpty())
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), factor);
    return environment;
}

} // namespace pontrel::test
