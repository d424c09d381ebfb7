#include "paper/PdfMaps.h"

#include <QRegularExpression>

#include <algorithm>
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

/// A file as Qt writes it. It is read in pieces, for it may be large.
class WrittenFile {
  public:
    explicit WrittenFile(QFile& file) : file_(file), size_(file.size()) {}

    [[nodiscard]] qint64 size() const { return size_; }

    [[nodiscard]] QByteArray bytes(qint64 place, qint64 count) const {
        return file_.seek(place) ? file_.read(count) : QByteArray();
    }

    [[nodiscard]] std::optional<Trailer> trailer() const {
        static const QRegularExpression form(
            QStringLiteral("trailer\\n<<\\n(.*)>>\\nstartxref\\n(\\d+) ?\\n%%EOF\\n?$"),
            QRegularExpression::DotMatchesEverythingOption);
        const QByteArray end = bytes(qMax<qint64>(0, size_ - TrailerBytes), TrailerBytes);
        const QRegularExpressionMatch match = form.match(QString::fromLatin1(end));
        if (!match.hasMatch())
            return std::nullopt;
        return Trailer{match.captured(2).toLongLong(), match.captured(1).toLatin1()};
    }

    /// The numbers of the objects that the fonts name as their maps.
    [[nodiscard]] QList<int> mapObjects() const {
        const QByteArray name = "/ToUnicode ";
        QList<int> objects;
        QByteArray held;
        for (qint64 place = 0; place < size_; place += PieceBytes) {
            // What may be the start of a reference at the end of a piece is looked at again with the next.
            held = held.right(ReferenceBytes) + bytes(place, PieceBytes);
            const bool last = place + PieceBytes >= size_;
            for (qsizetype at = held.indexOf(name); at >= 0; at = held.indexOf(name, at + 1)) {
                if (!last && at >= held.size() - ReferenceBytes)
                    break;
                const QByteArray reference = held.mid(at + name.size(), ReferenceBytes - name.size());
                const qsizetype end = reference.indexOf(" 0 R");
                if (end > 0)
                    objects += reference.left(end).toInt();
            }
        }
        return objects;
    }

    /// The text of an object's stream, which is not compressed, by the table that begins with object 0; empty
    /// where it is not there.
    [[nodiscard]] QByteArray stream(qint64 table, int object) const {
        static const QRegularExpression head(QStringLiteral("^xref\\n0 (\\d+)\\n"));
        static const QRegularExpression begin(
            QStringLiteral("^(\\d+) 0 obj\\n<< /Length (\\d+) >>\\nstream\\n"));
        constexpr int EntryBytes = 20;
        constexpr int HeadBytes = 80;
        const QRegularExpressionMatch found = head.match(QString::fromLatin1(bytes(table, HeadBytes)));
        if (!found.hasMatch() || object < 0 || object >= found.captured(1).toInt())
            return {};
        const qint64 place =
            bytes(table + found.capturedLength() + qint64{object} * EntryBytes, 10).toLongLong();
        const QRegularExpressionMatch opened = begin.match(QString::fromLatin1(bytes(place, HeadBytes)));
        if (!opened.hasMatch() || opened.captured(1).toInt() != object)
            return {};
        return bytes(place + opened.capturedLength(), opened.captured(2).toInt());
    }

  private:
    static constexpr qint64 PieceBytes = 1024 * 1024;
    static constexpr qsizetype ReferenceBytes = 32; ///< Longer than a reference with its name.

    QFile& file_;
    qint64 size_;
};

} // namespace

bool putMapsRight(QFile& file, const DrawnFaces& drawn) {
    const WrittenFile written(file);
    const std::optional<Trailer> trailer = written.trailer();
    if (!trailer)
        return false;
    QByteArray update;
    QByteArray table;
    const QList<int> objects = written.mapObjects();
    for (const int object : objects) {
        const std::optional<Characters> map = readMap(written.stream(trailer->table, object));
        const auto face = std::find_if(drawn.begin(), drawn.end(),
                                       [&](const auto& entry) { return map && agrees(*map, entry.second); });
        if (face == drawn.end())
            continue;
        const QByteArray text = rightMap(*map, face->second);
        table += QByteArray::number(object) + " 1\n" +
                 QByteArray::number(written.size() + update.size()).rightJustified(10, '0') + " 00000 n \n";
        update += QByteArray::number(object) + " 0 obj\n<< /Length " + QByteArray::number(text.size()) +
                  " >>\nstream\n" + text + "\nendstream\nendobj\n";
    }
    if (update.isEmpty())
        return true;
    const qint64 start = written.size() + update.size();
    update += "xref\n" + table + "trailer\n<<\n" + trailer->entries + "/Prev " +
              QByteArray::number(trailer->table) + "\n>>\nstartxref\n" + QByteArray::number(start) +
              "\n%%EOF\n";
    return file.seek(written.size()) && file.write(update) == update.size() && file.flush();
}

} // namespace pontrel::paper
