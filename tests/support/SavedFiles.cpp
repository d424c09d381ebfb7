#include "support/SavedFiles.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

namespace pontrel::test {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

QStringList pdfPages(const QString& path) {
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        return {};
    return QString::fromUtf8(process.readAllStandardOutput()).chopped(1).split(u'\f');
}

QStringList sheetOf(const QString& path, int sheet) {
    const QTemporaryDir folder;
    QProcess unpack;
    unpack.setWorkingDirectory(folder.path());
    unpack.start(QStringLiteral("cmake"),
                 {QStringLiteral("-E"), QStringLiteral("tar"), QStringLiteral("xf"), path});
    if (!unpack.waitForFinished(-1) || unpack.exitCode() != 0)
        return {QStringLiteral("not unpacked: ") + QString::fromUtf8(unpack.readAllStandardError())};
    QXmlStreamReader xml(contentOf(folder.filePath(QStringLiteral("xl/worksheets/sheet%1.xml").arg(sheet))));
    QStringList rows;
    bool text = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"row")
            rows += QString();
        else if (xml.name() == u"c")
            rows.last() += xml.attributes().value(QStringLiteral("r")).toString() + u'=';
        else if (xml.name() == u"v")
            rows.last() += xml.readElementText() + u' ';
        else if (xml.name() == u"t") {
            rows.last() += u'"' + xml.readElementText() + QStringLiteral("\" ");
            text = true;
        } else if (xml.name() == u"pane")
            rows += QStringLiteral("frozen at ") +
                    xml.attributes().value(QStringLiteral("topLeftCell")).toString();
        else if (xml.name() == u"autoFilter")
            rows += QStringLiteral("filter ") + xml.attributes().value(QStringLiteral("ref")).toString();
        else if (xml.name() == u"mergeCells")
            rows += QStringLiteral("merged");
    }
    return text ? rows : QStringList{QStringLiteral("no text: ") + xml.errorString()};
}

} // namespace pontrel::test
