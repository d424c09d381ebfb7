#include "paper/PdfMaps.h"

#include <QRegularExpression>

#include <optional>

namespace pontrel::paper {

namespace {

constexpr qint64 TrailerBytes = 1024; ///< The end of the file, in which its trailer stands.

/// A map as Qt has written it: characters by the number of the glyph in the file, 0 where it knows none.
using Characters = std::vector<char32_t>;

std::optional<Characters> readMap(const QByteArray& text) {
    static const QRegularExpression range(
        QStringLiteral("<([0-9A-F]{4})> <([0-9A-F]{4})> (<[0-9A-F]{4}>|\\[[^\\]]*\\])"));
    static const QRegularExpression code(QStringLiteral("<([0-9A-F]{4})>"));
    Characters made;
    auto ranges = range.globalMatch(QString::fromLatin1(text));
    while (ranges.hasNext()) {
        const QRegularExpressionMatch match = ranges.next();
        std::size_t glyph = match.captured(1).toUInt(nullptr, 16);
        auto codes = code.globalMatch(match.captured(3));
        while (codes.hasNext()) {
            if (made.size() <= glyph)
                made.resize(glyph + 1, 0);
            made[glyph++] = codes.next().captured(1).toUInt(nullptr, 16);
        }
        // One code for a range of glyphs counts upwards.
        const std::size_t last = match.captured(2).toUInt(nullptr, 16);
        while (glyph <= last && !made.empty()) {
            made.push_back(made.back() + 1);
            ++glyph;
        }
    }
    return made.empty() ? std::nullopt : std::optional(made);
}

/// Whether the file's glyphs 1 and on can be these, in their order. Glyph 0 stands for what is missing.
bool agrees(const Characters& map, const DrawnGlyphs& drawn) {
    if (map.size() > drawn.order.size() + 1 || map.size() < 2)
        return false;
    for (std::size_t glyph = 1; glyph < map.size(); ++glyph) {
        if (map[glyph] == 0)
            continue;
        const char32_t character = map[glyph];
        const QList<quint32> found = drawn.font.glyphIndexesForString(QString::fromUcs4(&character, 1));
        if (found.size() != 1 || found.first() != drawn.order[glyph - 1].first)
            return false;
    }
    return true;
}

QByteArray inUtf16(char32_t character) {
    const QString text = QString::fromUcs4(&character, 1);
    QByteArray code;
    for (const QChar unit : text)
        code += QByteArray::number(unit.unicode(), 16).rightJustified(4, '0').toUpper();
    return code;
}

QByteArray rightMap(const Characters& map, const DrawnGlyphs& drawn) {
    QByteArrayList lines;
    for (std::size_t glyph = 1; glyph <= drawn.order.size(); ++glyph) {
        char32_t character = drawn.order[glyph - 1].second;
        if (character == 0 && glyph < map.size())
            character = map[glyph];
        if (character >= 0x20)
            lines += '<' +
                     QByteArray::number(static_cast<qulonglong>(glyph), 16).rightJustified(4, '0').toUpper() +
                     "> <" + inUtf16(character) + '>';
    }
    QByteArray text = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
                      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
                      "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    constexpr qsizetype MostInBlock = 100;
    for (qsizetype first = 0; first < lines.size(); first += MostInBlock) {
        const QByteArrayList block = lines.mid(first, MostInBlock);
        text += QByteArray::number(block.size()) + " beginbfchar\n" + block.join('\n') + "\nendbfchar\n";
    }
    return text + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

/// What the end of the file tells: where its table of objects is, and the trailer's entries.
struct Trailer {
    qint64 table = 0;
    QByteArray entries;
};

std::optional<Trailer> readTrailer(const QByteArray& content) {
    static const QRegularExpression form(
        QStringLiteral("trailer\\n<<\\n(.*)>>\\nstartxref\\n(\\d+) ?\\n%%EOF\\n?$"),
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(content.right(TrailerBytes)));
    if (!match.hasMatch())
        return std::nullopt;
    return Trailer{match.captured(2).toLongLong(), match.captured(1).toLatin1()};
}

/// The place of an object after the table, which begins with object 0; -1 where it is not there.
qint64 placeOf(const QByteArray& content, qint64 table, int object) {
    static const QRegularExpression head(QStringLiteral("^xref\\n0 (\\d+)\\n"));
    const QRegularExpressionMatch match = head.match(QString::fromLatin1(content.mid(table, 40)));
    constexpr int EntryBytes = 20;
    if (!match.hasMatch() || object < 0 || object >= match.captured(1).toInt())
        return -1;
    bool isNumber = false;
    const qint64 place =
        content.mid(table + match.capturedLength() + qint64{object} * EntryBytes, 10).toLongLong(&isNumber);
    const QByteArray name = QByteArray::number(object) + " 0 obj\n";
    return isNumber && content.mid(place, name.size()) == name ? place : -1;
}

/// The text of a stream that is not compressed.
QByteArray streamAt(const QByteArray& content, qint64 place) {
    const qint64 begin = content.indexOf("stream\n", place);
    const qint64 end = content.indexOf("endstream", begin);
    return begin < 0 || end < 0 ? QByteArray() : content.mid(begin + 7, end - begin - 7);
}

/// The numbers of the objects that the fonts name as their maps.
QList<int> mapObjects(const QByteArray& content) {
    const QByteArray name = "/ToUnicode ";
    QList<int> objects;
    for (qint64 at = content.indexOf(name); at >= 0; at = content.indexOf(name, at + 1)) {
        const QByteArray reference = content.mid(at + name.size(), 20);
        const qsizetype end = reference.indexOf(" 0 R");
        if (end > 0)
            objects += reference.left(end).toInt();
    }
    return objects;
}

} // namespace

bool putMapsRight(QFile& file, const DrawnFaces& drawn) {
    const qint64 size = file.size();
    uchar* mapped = file.map(0, size);
    if (!mapped)
        return false;
    const QByteArray content = QByteArray::fromRawData(reinterpret_cast<const char*>(mapped), size);
    const std::optional<Trailer> trailer = readTrailer(content);
    QByteArray update;
    QByteArray table;
    if (trailer)
        for (const int object : mapObjects(content)) {
            const qint64 place = placeOf(content, trailer->table, object);
            const std::optional<Characters> map =
                place < 0 ? std::nullopt : readMap(streamAt(content, place));
            if (!map)
                continue;
            for (const auto& [name, face] : drawn) {
                if (!agrees(*map, face))
                    continue;
                const QByteArray text = rightMap(*map, face);
                table += QByteArray::number(object) + " 1\n" +
                         QByteArray::number(size + update.size()).rightJustified(10, '0') + " 00000 n \n";
                update += QByteArray::number(object) + " 0 obj\n<< /Length " +
                          QByteArray::number(text.size()) + " >>\nstream\n" + text + "\nendstream\nendobj\n";
                break;
            }
        }
    file.unmap(mapped);
    if (!trailer)
        return false;
    if (update.isEmpty())
        return true;
    const qint64 start = size + update.size();
    update += "xref\n" + table + "trailer\n<<\n" + trailer->entries + "/Prev " +
              QByteArray::number(trailer->table) + "\n>>\nstartxref\n" + QByteArray::number(start) +
              "\n%%EOF\n";
    return file.seek(size) && file.write(update) == update.size() && file.flush();
}

} // namespace pontrel::paper
