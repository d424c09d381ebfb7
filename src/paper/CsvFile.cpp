#include "paper/CsvFile.h"

#include "paper/DataTable.h"

#include <QFile>

#include <cmath>

namespace pontrel::paper {

namespace {

constexpr qsizetype BufferBytes = 64 * 1024;
constexpr std::size_t LinesBetweenProgress = 1000;

void appendUtf8(QByteArray& line, QStringView text) {
    for (const QChar character : text) {
        if (character.unicode() >= 0x80) {
            line += text.toUtf8();
            return;
        }
    }
    const qsizetype before = line.size();
    line.resize(before + text.size());
    for (qsizetype at = 0; at < text.size(); ++at)
        line[before + at] = static_cast<char>(text[at].unicode());
}

void appendField(QByteArray& line, QStringView text) {
    bool quoted = false;
    for (const QChar character : text)
        quoted = quoted || character == u',' || character == u'"' || character == u'\n' || character == u'\r';
    if (!quoted)
        return appendUtf8(line, text);
    line += '"';
    appendUtf8(line, text.toString().replace(u'"', QStringLiteral("\"\"")));
    line += '"';
}

void appendContent(QByteArray& line, const DataTable::Content& content, const Cell& column,
                   QString& scratch) {
    using Kind = DataTable::Kind;
    scratch.resize(0);
    switch (content.kind) {
    case Kind::Nothing:
        return;
    case Kind::Text:
        return appendField(line, content.text);
    case Kind::Number:
        // A count is a plain number, whatever the column holds.
        appendNumber(scratch, content.number,
                     column.format == Format::Whole || column.format == Format::OneDecimal ? column.format
                                                                                           : Format::Number,
                     {});
        break;
    case Kind::Date:
        appendNumber(scratch, content.number, Format::Date, {});
        break;
    case Kind::Time:
        appendNumber(scratch, content.number, Format::HourMinute, {});
        break;
    case Kind::DateTime: {
        const QDateTime both = fromDayMilliseconds(content.number);
        appendNumber(scratch, static_cast<double>(both.date().toJulianDay()), Format::Date, {});
        scratch += u' ';
        appendNumber(scratch, std::floor(both.time().msecsSinceStartOfDay() / 1000.0), Format::HourMinute,
                     {});
        break;
    }
    }
    appendUtf8(line, scratch);
}

} // namespace

bool saveCsv(const ReportDocument& document, const QString& path, const Progress& progress) {
    NewFile target(path);
    QFile file(target.path());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        target.fail(file.errorString());
    const DataTable table(document);
    QByteArray text = "\xEF\xBB\xBF";
    text.reserve(BufferBytes * 2);
    const auto write = [&] {
        if (file.write(text) != text.size())
            target.fail(file.errorString());
        text.resize(0);
    };
    for (const Cell& column : table.columns()) {
        appendField(text, column.caption);
        text += ',';
    }
    text.replace(text.size() - 1, 1, "\r\n");
    QString held;
    QString scratch;
    for (std::size_t line = 0; line < table.lineCount(); ++line) {
        for (const Cell& column : table.columns()) {
            appendContent(text, table.at(line, column, held), column, scratch);
            text += ',';
        }
        text.replace(text.size() - 1, 1, "\r\n");
        if (text.size() > BufferBytes)
            write();
        if (progress && line % LinesBetweenProgress == 0 && !progress(line, table.lineCount()))
            return false;
    }
    write();
    file.close();
    target.put();
    return true;
}

} // namespace pontrel::paper
