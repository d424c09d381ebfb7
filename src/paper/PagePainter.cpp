#include "paper/PagePainter.h"

#include <QTextLayout>

namespace pontrel::paper {

namespace {

constexpr QColor Ink(0, 0, 0);
constexpr QColor StrongShade(0xe4, 0xe4, 0xe4);
constexpr QColor Stripe(0xf4, 0xf4, 0xf4);

} // namespace

PagePainter::PagePainter(QPainter& painter, const GlyphMeasure& measure, double scale, QPointF origin,
                         DrawnFaces* drawn)
    : painter_(painter), measure_(measure), scale_(scale), origin_(origin), drawn_(drawn) {
    painter_.setPen(Ink);
}

PagePainter::~PagePainter() {
    flush();
}

QRectF PagePainter::rectOf(const TextItem& item) const {
    return {origin_ + QPointF(item.x, item.y) * scale_, QSizeF(item.width, item.height) * scale_};
}

void PagePainter::text(const TextItem& item) {
    const std::pair<int, int> wanted{item.font, item.scale};
    if (wanted != present_) {
        flush();
        present_ = wanted;
    }
    const double size = measure_.size(item.font) * scale_ * item.scale / 100;
    // A shrunk text keeps the baseline of its line.
    QPointF at = origin_ + QPointF(startOf(item, measure_), item.y + measure_.ascent(item.font)) * scale_;
    const GlyphFace& face = measure_.face(item.font);
    if (!measure_.isPlain(item.font, item.text))
        return layOut(item, size, at);
    for (qsizetype place = 0; place < item.text.size();) {
        const char32_t character = nextCharacter(item.text, place);
        const Glyph& glyph = face.glyph(character);
        glyphs_.push_back(glyph.index);
        positions_.push_back(at);
        characters_.push_back(character);
        at.rx() += glyph.advance * size / 1000;
    }
}

void PagePainter::layOut(const TextItem& item, double size, QPointF baseline) {
    flush();
    QFont font = measure_.face(item.font).font();
    font.setPixelSize(qMax(1, qRound(size)));
    QTextLayout layout(item.text.toString(), font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid())
        return;
    const QPointF corner = baseline - QPointF(0, line.ascent());
    const QList<QGlyphRun> runs = layout.glyphRuns();
    for (const QGlyphRun& run : runs) {
        const QList<quint32> indexes = run.glyphIndexes();
        for (const quint32 glyph : indexes)
            note(run.rawFont(), glyph, 0);
        painter_.drawGlyphRun(corner, run);
    }
}

void PagePainter::note(const QRawFont& font, quint32 glyph, char32_t character) {
    if (!drawn_)
        return;
    const QString name = font.familyName() + u'/' + font.styleName();
    DrawnGlyphs& drawn = (*drawn_)[name];
    if (drawn.order.empty())
        drawn.font = font;
    const auto [place, added] = drawn.places.try_emplace(glyph, drawn.order.size());
    if (added)
        drawn.order.emplace_back(glyph, character);
    else if (drawn.order[place->second].second == 0)
        drawn.order[place->second].second = character;
}

void PagePainter::flush() {
    if (glyphs_.isEmpty())
        return;
    QRawFont& font = fonts_[present_];
    if (!font.isValid()) {
        font = measure_.face(present_.first).rawFont();
        font.setPixelSize(measure_.size(present_.first) * scale_ * present_.second / 100);
    }
    if (drawn_)
        for (qsizetype at = 0; at < glyphs_.size(); ++at)
            note(font, glyphs_[at], characters_[static_cast<std::size_t>(at)]);
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes(glyphs_);
    run.setPositions(positions_);
    painter_.drawGlyphRun({}, run);
    glyphs_.clear();
    positions_.clear();
    characters_.clear();
}

void PagePainter::line(const LineItem& item) {
    const double thickness = qMax(1.0, item.thickness * scale_);
    painter_.fillRect(
        QRectF(origin_ + QPointF(item.x, item.y) * scale_, QSizeF(item.length * scale_, thickness)), Ink);
}

void PagePainter::fill(const FillItem& item) {
    painter_.fillRect(
        QRectF(origin_ + QPointF(item.x, item.y) * scale_, QSizeF(item.width, item.height) * scale_),
        item.strong ? StrongShade : Stripe);
}

} // namespace pontrel::paper
