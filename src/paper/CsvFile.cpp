#include "paper/CsvFile.h"

#include "paper/DataTable.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace pontrel::paper {

namespace {

constexpr qsizetype BufferBytes = 64 * 1024;
constexpr std::size_t LinesBetweenProgress = 1000;
constexpr QChar Apostrophe(0x27);

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

/// Whether a text is a number as people write it, as -5 or 1.50.
bool isPlainNumber(QStringView text) {
    if (text.startsWith(u'-') || text.startsWith(u'+'))
        text = text.mid(1);
    const qsizetype point = text.indexOf(u'.');
    const auto areDigits = [](QStringView part) {
        return !part.isEmpty() &&
               std::all_of(part.begin(), part.end(), [](QChar each) { return each >= u'0' && each <= u'9'; });
    };
    return point < 0 ? areDigits(text) : areDigits(text.left(point)) && areDigits(text.mid(point + 1));
}

/// Whether a spreadsheet may take a text for a formula. The wide signs count in the settings of the far east.
bool isFormula(QStringView text) {
    constexpr QStringView Signs = u"=+-@\t\r\n＝＋－＠";
    return !text.isEmpty() && Signs.contains(text.front()) && !isPlainNumber(text);
}

void appendText(QByteArray& line, QStringView text) {
    if (isFormula(text))
        appendField(line, Apostrophe + text.toString());
    else
        appendField(line, text);
}

void appendContent(QByteArray& line, const PlainTable::Content& content, const PlainTable::Column& column,
                   QString& scratch) {
    using Kind = PlainTable::Kind;
    scratch.resize(0);
    if (content.kind == Kind::Text)
        return appendText(line, content.text);
    if (!content.text.isNull())
        return appendField(line, content.text);
    switch (content.kind) {
    case Kind::Nothing:
    case Kind::Text:
        return;
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
    return saveCsv(DataTable(document), path, progress);
}

bool saveCsv(const PlainTable& table, const QString& path, const Progress& progress) {
    NewFile target(path);
    QFile file(target.path());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        target.fail(file);
    QByteArray text = "\xEF\xBB\xBF";
    text.reserve(BufferBytes * 2);
    const auto write = [&] {
        // A disk that has just become full takes a part, and says why only when it is asked for the rest.
        for (qsizetype done = 0; done < text.size();) {
            const qint64 written = file.write(text.constData() + done, text.size() - done);
            if (written <= 0)
                target.fail(file);
            done += written;
        }
        text.resize(0);
    };
    const std::vector<PlainTable::Column>& columns = table.columns();
    for (const PlainTable::Column& column : columns) {
        appendText(text, column.caption);
        text += ',';
    }
    text.replace(text.size() - 1, 1, "\r\n");
    QString held;
    QString scratch;
    for (std::size_t line = 0; line < table.lineCount(); ++line) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            appendContent(text, table.at(line, column, held), columns[column], scratch);
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
