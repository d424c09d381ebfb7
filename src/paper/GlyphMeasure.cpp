#include "paper/GlyphMeasure.h"

#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace pontrel::paper {

namespace {

constexpr int UnitsPerEm = 1000;
constexpr double PointLength = 2540.0 / 72; ///< Of a point in 1/100 mm.

/// What stands for itself wherever it is: no mark, no joiner, nothing from right to left.
bool standsAlone(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
        return false;
    default:
        break;
    }
    switch (QChar::direction(character)) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
        return false;
    default:
        return true;
    }
}

} // namespace

char32_t nextCharacter(QStringView text, qsizetype& at) {
    const QChar first = text[at++];
    if (first.isHighSurrogate() && at < text.size() && text[at].isLowSurrogate())
        return QChar::surrogateToUcs4(first, text[at++]);
    return first.unicode();
}

GlyphFace::GlyphFace(const QString& family, bool bold) : font_(family) {
    font_.setPixelSize(UnitsPerEm);
    font_.setBold(bold);
    font_.setHintingPreference(QFont::PreferNoHinting);
    raw_ = QRawFont::fromFont(font_, QFontDatabase::TraditionalChinese);
}

void GlyphFace::look(Glyph& glyph, char32_t character) const {
    // A tab or an end of line within a line is a blank.
    const char32_t shown = character < 0x20 ? U' ' : character;
    glyph.index = Glyph::None;
    if (!standsAlone(shown))
        return;
    const QString text = QString::fromUcs4(&shown, 1);
    const QList<quint32> indexes = raw_.glyphIndexesForString(text);
    if (indexes.size() != 1 || indexes.first() == 0)
        return;
    glyph.index = indexes.first();
    glyph.advance = static_cast<int>(std::lround(raw_.advancesForGlyphIndexes(indexes).value(0).x()));
}

const Glyph& GlyphFace::glyph(char32_t character) const {
    std::unique_ptr<Block>& block = blocks_[character >> 8U];
    if (!block)
        block = std::make_unique<Block>();
    Glyph& glyph = (*block)[character & 0xffU];
    if (glyph.index == Glyph::Unknown)
        look(glyph, character);
    return glyph;
}

GlyphMeasure::GlyphMeasure(const Template& layout) {
    const QString family = layout.family.isEmpty() ? programFamily() : layout.family;
    std::array<std::shared_ptr<const GlyphFace>, 2> made;
    for (std::size_t font = 0; font < faces_.size(); ++font) {
        std::shared_ptr<const GlyphFace>& face = made[layout.fonts[font].bold ? 1 : 0];
        if (!face)
            face = std::make_shared<GlyphFace>(family, layout.fonts[font].bold);
        faces_[font] = face;
        sizes_[font] = layout.fonts[font].points * PointLength;
    }
}

int GlyphMeasure::inLength(int font, std::int64_t units) const {
    return static_cast<int>(std::ceil(static_cast<double>(units) * size(font) / UnitsPerEm - 1e-6));
}

bool GlyphMeasure::isPlain(int font, QStringView text) const {
    const GlyphFace& face = this->face(font);
    for (qsizetype at = 0; at < text.size();)
        if (face.glyph(nextCharacter(text, at)).index == Glyph::None)
            return false;
    return true;
}

std::int64_t GlyphMeasure::laidOut(int font, QStringView text) const {
    QTextLayout layout(text.toString(), face(font).font());
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return line.isValid() ? std::llround(line.naturalTextWidth()) : 0;
}

int GlyphMeasure::width(int font, QStringView text) const {
    const GlyphFace& face = this->face(font);
    std::int64_t units = 0;
    for (qsizetype at = 0; at < text.size();) {
        const Glyph& glyph = face.glyph(nextCharacter(text, at));
        if (glyph.index == Glyph::None)
            return inLength(font, laidOut(font, text));
        units += glyph.advance;
    }
    return inLength(font, units);
}

qsizetype GlyphMeasure::fitting(int font, QStringView text, int width) const {
    const GlyphFace& face = this->face(font);
    const auto most = static_cast<std::int64_t>(width * UnitsPerEm / size(font));
    std::int64_t units = 0;
    qsizetype fits = -1;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype before = at;
        const Glyph& glyph = face.glyph(nextCharacter(text, at));
        if (glyph.index == Glyph::None) {
            fits = -2;
            break;
        }
        units += glyph.advance;
        // Behind it there may still be one that needs a layout; where there is none, this is the end.
        if (units > most && fits == -1) {
            fits = before;
            if (isPlain(font, text.mid(at)))
                return fits;
        }
    }
    if (fits == -1 || (fits == -2 && laidOut(font, text) <= most))
        return text.size();
    // Whole characters as a reader sees them, marks included; the longest start that fits.
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    std::vector<qsizetype> ends;
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary())
        ends.push_back(end);
    const auto tooLong = std::partition_point(
        ends.begin(), ends.end(), [&](qsizetype end) { return laidOut(font, text.left(end)) <= most; });
    return tooLong == ends.begin() ? 0 : *(tooLong - 1);
}

int GlyphMeasure::lineHeight(int font) const {
    const QRawFont& raw = face(font).rawFont();
    return inLength(font, std::llround(raw.ascent() + raw.descent()));
}

int GlyphMeasure::ascent(int font) const {
    return inLength(font, std::llround(face(font).rawFont().ascent()));
}

} // namespace pontrel::paper
