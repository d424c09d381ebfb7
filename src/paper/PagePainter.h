#pragma once

#include "paper/GlyphMeasure.h"
#include "paper/PageSink.h"

#include <QGlyphRun>
#include <QPainter>
#include <QPointF>

#include <map>

namespace pontrel::paper {

/// The order in which the glyphs of a face were first drawn, each with its character; 0 where it came out of
/// a text layout.
struct DrawnGlyphs {
    QRawFont font;
    std::vector<std::pair<quint32, char32_t>> order;
    std::map<quint32, std::size_t> places; ///< In the order.
};
using DrawnFaces = std::map<QString, DrawnGlyphs>;

/// Paints pages: texts as runs of glyphs at the places that the measure gives them, one run up to a change of
/// font.
class PagePainter : public PageSink {
  public:
    /// The paper's corner is at the origin, in the painter's units, of which there are `scale` to 1/100 mm.
    PagePainter(QPainter& painter, const GlyphMeasure& measure, double scale, QPointF origin = {},
                DrawnFaces* drawn = nullptr);
    /// Draws what is left.
    ~PagePainter() override;
    PagePainter(const PagePainter&) = delete;
    PagePainter& operator=(const PagePainter&) = delete;

    void text(const TextItem& item) override;
    void line(const LineItem& item) override;
    void fill(const FillItem& item) override;

    /// The rectangle of an item in the painter's units.
    [[nodiscard]] QRectF rectOf(const TextItem& item) const;

  private:
    void flush();
    void layOut(const TextItem& item, double size, QPointF baseline);
    void note(const QRawFont& font, quint32 glyph, char32_t character);

    QPainter& painter_;
    const GlyphMeasure& measure_;
    double scale_;
    QPointF origin_;
    DrawnFaces* drawn_;
    std::map<std::pair<int, int>, QRawFont> fonts_; ///< By font and percent of its size.
    std::pair<int, int> present_{-1, 0};
    QList<quint32> glyphs_;
    QList<QPointF> positions_;
    std::vector<char32_t> characters_;
};

} // namespace pontrel::paper
