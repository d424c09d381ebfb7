#pragma once

#include "paper/Template.h"

#include <QStringView>

namespace pontrel::paper {

/// A text on a page. Places are in 1/100 mm from the paper's upper left corner; the text stands on one line.
struct TextItem {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    int font = BodyFont;
    Align align = Align::Left;
    int scale = 100;  ///< Percent of the font's size.
    QStringView text; ///< Lasts as long as the call.
};

class TextMeasure;
/// Where the text itself begins within its item: its x on the page, in 1/100 mm.
[[nodiscard]] double startOf(const TextItem& item, const TextMeasure& measure);

struct LineItem {
    int x = 0;
    int y = 0;
    int length = 0; ///< To the right.
    int thickness = 20;
};

struct FillItem {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool strong = false; ///< Of a header; else of a stripe.
};

/// Takes what stands on a page, in the order in which it is read.
class PageSink {
  public:
    virtual ~PageSink() = default;
    virtual void text(const TextItem& item) = 0;
    virtual void line(const LineItem& item) = 0;
    virtual void fill(const FillItem& item) = 0;
    /// Whether each cell of a row comes as one item with its whole text, an empty one too.
    [[nodiscard]] virtual bool readsCells() const { return false; }
};

} // namespace pontrel::paper
