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

void writeContent(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(path));
}

QStringList pdfPages(const QString& path) {
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        return {};
    return QString::fromUtf8(process.readAllStandardOutput()).chopped(1).split(u'\f');
}

namespace {

/// The parts of a saved spreadsheet, unpacked by another program.
class SheetParts {
  public:
    explicit SheetParts(const QString& path) {
        QProcess unpack;
        unpack.setWorkingDirectory(folder_.path());
        unpack.start(QStringLiteral("cmake"),
                     {QStringLiteral("-E"), QStringLiteral("tar"), QStringLiteral("xf"), path});
        if (!unpack.waitForFinished(-1) || unpack.exitCode() != 0)
            trouble_ = QStringLiteral("not unpacked: ") + QString::fromUtf8(unpack.readAllStandardError());
    }

    [[nodiscard]] const QString& trouble() const { return trouble_; }
    [[nodiscard]] QByteArray part(const QString& name) const { return contentOf(folder_.filePath(name)); }

  private:
    QTemporaryDir folder_;
    QString trouble_;
};

/// How numbers are shown, by the number of the style.
QStringList formatsOfStyles(const QByteArray& part) {
    QHash<QString, QString> codes;
    QStringList formats;
    QXmlStreamReader styles(part);
    bool inCellStyles = false;
    while (!styles.atEnd()) {
        styles.readNext();
        if (styles.name() == u"cellXfs")
            inCellStyles = styles.isStartElement();
        if (!styles.isStartElement())
            continue;
        const auto value = [&styles](const char* name) {
            return styles.attributes().value(QLatin1String(name)).toString();
        };
        if (styles.name() == u"numFmt")
            codes.insert(value("numFmtId"), value("formatCode"));
        else if (styles.name() == u"xf" && inCellStyles)
            formats += codes.value(value("numFmtId"));
    }
    return formats;
}

} // namespace

QStringList sheetOf(const QString& path, int sheet) {
    const SheetParts parts(path);
    if (!parts.trouble().isEmpty())
        return {parts.trouble()};
    QXmlStreamReader xml(parts.part(QStringLiteral("xl/worksheets/sheet%1.xml").arg(sheet)));
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
        else if (xml.name() == u"f")
            rows.last() += QStringLiteral("formula ") + xml.readElementText() + u' ';
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

QByteArray sheetPart(const QString& path, const QString& name) {
    return SheetParts(path).part(name);
}

QHash<QString, SheetCell> cellsOf(const QString& path) {
    const SheetParts parts(path);
    const QStringList formats = formatsOfStyles(parts.part(QStringLiteral("xl/styles.xml")));
    QHash<QString, SheetCell> cells;
    QXmlStreamReader xml(parts.part(QStringLiteral("xl/worksheets/sheet1.xml")));
    QString name;
    QString format;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"c") {
            name = xml.attributes().value(QStringLiteral("r")).toString();
            format = formats.value(xml.attributes().value(QStringLiteral("s")).toInt());
        } else if (xml.name() == u"v" || xml.name() == u"t") {
            const bool isText = xml.name() == u"t";
            cells.insert(name, {isText, xml.readElementText(), format});
        }
    }
    return cells;
}

QHash<QString, QString> formatsOf(const QString& path) {
    const QHash<QString, SheetCell> cells = cellsOf(path);
    QHash<QString, QString> formats;
    for (auto each = cells.cbegin(); each != cells.cend(); ++each) {
        if (!each->format.isEmpty())
            formats.insert(each.key(), each->format);
    }
    return formats;
}

} // namespace pontrel::test
