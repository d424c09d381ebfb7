#include "paper/PageContent.h"

#include <algorithm>

namespace pontrel::paper {

namespace {

constexpr int LineThickness = 20;
constexpr int StrongThickness = 40;

TextItem itemAt(int x, int y, int width, int height, int font = BodyFont) {
    TextItem item;
    item.x = x;
    item.y = y;
    item.width = width;
    item.height = height;
    item.font = font;
    return item;
}

} // namespace

/// One page at work.
class PageContent::Page {
  public:
    Page(const PageContent& content, std::size_t number, PageSink& sink)
        : content_(content)
        , layout_(content.layout_)
        , measures_(content.pages_.measures())
        , range_(content.pages_.pages()[number])
        , sink_(sink)
        , left_(content.layout_.margin)
        , bottom_(measures_.bodyTop + measures_.room) {
        furniture_.page = static_cast<int>(number) + 1;
        furniture_.pages = static_cast<int>(content.pages_.pages().size());
        furniture_.totals = content.groups_.totals(0, 0);
        furniture_.count = content.groups_.level(0)[0].count;
        if (range_.count > 0)
            furniture_.row = content.pages_.rowOf(content.pages_.bands()[range_.first]);
    }

    void run() {
        heading();
        captions();
        y_ = measures_.bodyTop;
        repeatedHeaders();
        for (std::uint32_t band = range_.first; band < range_.first + range_.count; ++band) {
            const Band& present = content_.pages_.bands()[band];
            show(present);
            y_ += present.height;
        }
        if (layout_.hasFoot)
            cornerLine(layout_.foot, measures_.footTop);
    }

  private:
    void heading() {
        int y = measures_.headingTop;
        for (const TextLine& line : layout_.heading) {
            cornerLine(line, y);
            y += content_.measure_.lineHeight(line.font);
        }
    }

    /// A line of the heading or the foot: one text, or one at either side.
    void cornerLine(const TextLine& line, int y) {
        TextItem item =
            itemAt(left_, y, layout_.contentWidth(), content_.measure_.lineHeight(line.font), line.font);
        item.align = line.align;
        put(item, line.content, furniture_);
        // Where both are there, each has its half, so that they never run into each other.
        if (!line.left.empty() && !line.right.empty())
            item.width /= 2;
        item.align = Align::Left;
        put(item, line.left, furniture_);
        item.x = left_ + layout_.contentWidth() - item.width;
        item.align = Align::Right;
        put(item, line.right, furniture_);
    }

    void put(TextItem item, const Pieces& pieces, const TextContext& context) {
        if (pieces.empty())
            return;
        joined_.resize(0);
        content_.texts_.pieces(joined_, pieces, context);
        put(item, joined_, Fit::Shrink);
    }

    /// The text of a cell of a row, or of what stands in its column.
    void putCell(TextItem item, QStringView text, Fit fit) {
        if (!sink_.readsCells())
            return put(item, text, fit);
        item.text = text;
        sink_.text(item);
    }

    void putCell(const TextItem& item, const Pieces& pieces, const TextContext& context) {
        if (!sink_.readsCells())
            return put(item, pieces, context);
        joined_.resize(0);
        content_.texts_.pieces(joined_, pieces, context);
        putCell(item, joined_, Fit::Shrink);
    }

    /// Puts a text that is made to fit into the item's width.
    void put(TextItem item, QStringView text, Fit fit) {
        if (text.isEmpty())
            return;
        const FittedText made = fitted(content_.measure_, item.font, text, item.width, fit, cut_);
        item.text = made.text;
        item.scale = made.scale;
        sink_.text(item);
    }

    void captions() {
        if (measures_.captions == 0)
            return;
        const int top = measures_.captionsTop;
        const int width = layout_.contentWidth();
        sink_.fill({left_, top, width, measures_.captions, true});
        for (const Cell& cell : layout_.cells)
            putCell(place(cell, top + RowPadding), cell.caption, Fit::Shrink);
        sink_.line({left_, top, width, LineThickness});
        sink_.line({left_, top + measures_.captions, width, LineThickness});
    }

    void repeatedHeaders() {
        if (!furniture_.row)
            return;
        for (std::size_t level = 1; level <= layout_.groups.size(); ++level) {
            if ((range_.continued >> (level - 1) & 1U) == 0)
                continue;
            header(level, content_.groups_.groupOf(level, *furniture_.row), true);
            y_ += measures_.header;
        }
    }

    void show(const Band& band) {
        switch (band.kind) {
        case Band::Kind::Header:
            if (band.height > 0)
                header(band.level, band.index, false);
            break;
        case Band::Kind::Row:
            row(band);
            break;
        case Band::Kind::Footer:
            footer(layout_.groups[band.level - std::size_t{1}].footer, band.level, band.index);
            break;
        case Band::Kind::EndLine:
            endLine(content_.groups_.endLines()[band.index]);
            break;
        case Band::Kind::End:
            sink_.line({left_, y_, layout_.contentWidth(), StrongThickness});
            totals(layout_.end, furniture_);
            break;
        }
    }

    TextContext contextOf(std::size_t level, std::size_t group) const {
        TextContext context;
        const GroupRange& range = content_.groups_.level(level)[group];
        context.row = range.first;
        context.count = range.count;
        context.totals = content_.groups_.totals(level, group);
        return context;
    }

    void header(std::size_t level, std::size_t group, bool continued) {
        TextContext context = contextOf(level, group);
        context.continued = continued;
        TextItem item = itemAt(left_ + CellPadding, y_ + RowPadding, layout_.contentWidth() - 2 * CellPadding,
                               measures_.header - 2 * RowPadding, HeadFont);
        put(item, layout_.groups[level - 1].header, context);
    }

    void footer(const Pieces& label, std::size_t level, std::size_t group) {
        sink_.line({left_, y_, layout_.contentWidth(), LineThickness});
        totals(label, contextOf(level, group));
    }

    void endLine(const Groups::EndLine& line) {
        TextContext context;
        context.row = line.row;
        context.count = line.count;
        context.totals = line.values.data();
        totals(layout_.endTotals[line.totals].label, context);
    }

    /// A label, and the totals under their columns.
    void totals(const Pieces& label, const TextContext& context) {
        int room = layout_.contentWidth();
        if (measures_.captions > 0)
            for (const Cell& cell : layout_.cells)
                if (cell.total != Total::None)
                    room = std::min(room, cell.left);
        const TextItem item =
            itemAt(left_ + CellPadding, y_ + RowPadding, room - 2 * CellPadding, measures_.bodyLine);
        if (item.width > 0)
            putCell(item, label, context);
        if (measures_.captions == 0)
            return;
        for (const Cell& cell : layout_.cells) {
            if (cell.total != Total::None)
                putCell(place(cell, y_ + RowPadding),
                        content_.texts_.total(cell, context.totals[cell.aggregate], scratch_), Fit::Shrink);
            else if (&cell != &layout_.cells.front()) // which the label stands for
                putCell(place(cell, y_ + RowPadding), {}, Fit::Shrink);
        }
    }

    void row(const Band& band) {
        switch (layout_.rows) {
        case RowKind::Columns:
        case RowKind::Summary:
            columns(band);
            break;
        case RowKind::Card:
            card(band);
            break;
        case RowKind::Flow:
            flow(band);
            break;
        }
        ++rowsShown_;
        lastRow_ = band.index;
    }

    void columns(const Band& band) {
        if (layout_.stripes && rowsShown_ % 2 == 1)
            sink_.fill({left_, y_, layout_.contentWidth(), band.height, false});
        const bool again = rowsShown_ > 0 && lastRow_ + 1 == band.index && goesOn(band.index);
        const double* sums = layout_.rows == RowKind::Summary ? summarySums(band.index) : nullptr;
        for (const Cell& cell : layout_.cells) {
            if (cell.once && again)
                putCell(place(cell, y_ + RowPadding), {}, Fit::Cut);
            else if (sums && cell.total != Total::None)
                putCell(place(cell, y_ + RowPadding),
                        content_.texts_.total(cell, sums[cell.aggregate], scratch_), cell.fit);
            else
                text(cell, band.index, place(cell, y_ + RowPadding), y_ + band.height);
        }
    }

    /// Whether a row is of the same groups as the one before it; a line of a summary is the innermost itself.
    bool goesOn(std::size_t row) const {
        const auto end = layout_.groups.end() - (layout_.rows == RowKind::Summary ? 1 : 0);
        return std::all_of(layout_.groups.begin(), end,
                           [&](const Group& group) { return content_.rows_.same(row - 1, row, group.by); });
    }

    const double* summarySums(std::size_t row) const {
        const std::size_t level = layout_.groups.size();
        return content_.groups_.totals(level, content_.groups_.groupOf(level, row));
    }

    /// The text of a cell, on as many lines as it takes and there is room for above the bottom.
    void text(const Cell& cell, std::size_t row, TextItem item, int bottom) {
        const QStringView held = content_.texts_.cell(cell, row, scratch_);
        const bool oneLine = item.y + item.height + measures_.bodyLine > bottom; // as in a summary
        if (sink_.readsCells() || linesOf(content_.measure_, cell, held, item.width) == 1)
            return putCell(item, held, cell.fit);
        if (oneLine)
            return put(item, held, Fit::Shrink);
        const std::vector<QStringView> lines = wrapped(content_.measure_, item.font, held, item.width);
        for (const QStringView line : lines) {
            if (item.y + item.height > bottom)
                break;
            put(item, line, Fit::Cut);
            item.y += measures_.bodyLine;
        }
    }

    void card(const Band& band) {
        int y = y_;
        int line = 0;
        int height = 0;
        const int bottom = std::min(y_ + band.height, bottom_);
        sink_.line({left_, y_, layout_.contentWidth(), LineThickness});
        for (const Cell& cell : layout_.cells) {
            if (cell.line != line) {
                y += height;
                line = cell.line;
                height = 0;
            }
            const int top = y + RowPadding;
            if (top + measures_.bodyLine > bottom)
                break;
            TextItem caption = itemAt(left_ + cell.left + CellPadding, top,
                                      layout_.captionWidth - 2 * CellPadding, measures_.bodyLine);
            put(caption, cell.caption, Fit::Shrink);
            TextItem item = place(cell, top);
            text(cell, band.index, item, bottom);
            const int lines = linesOf(content_.measure_, cell,
                                      content_.texts_.cell(cell, band.index, scratch_), item.width);
            height = std::max(height, lines * measures_.bodyLine + 2 * RowPadding);
        }
    }

    void flow(const Band& band) {
        for (std::size_t place = 0; place < band.level; ++place)
            for (const Cell& cell : layout_.cells) {
                TextItem item = this->place(cell, y_ + RowPadding + cell.line * measures_.bodyLine);
                item.x += static_cast<int>(place) * cell.width;
                if (item.y + item.height <= bottom_)
                    text(cell, band.index + place, item, bottom_);
            }
    }

    /// Where the text of a cell stands.
    TextItem place(const Cell& cell, int y) const {
        TextItem item;
        item.x = left_ + cell.left + cell.width - CellPadding - textWidth(layout_, cell);
        item.y = y;
        item.width = textWidth(layout_, cell);
        item.height = measures_.bodyLine;
        item.align = cell.align;
        return item;
    }

    const PageContent& content_;
    const Template& layout_;
    const PageMeasures& measures_;
    const PageRange& range_;
    PageSink& sink_;
    TextContext furniture_;
    int left_;
    int bottom_; ///< Of the bands.
    int y_ = 0;
    std::size_t rowsShown_ = 0;
    std::size_t lastRow_ = 0;
    QString joined_, scratch_, cut_;
};

void PageContent::emitPage(std::size_t page, PageSink& sink) const {
    Page(*this, page, sink).run();
}

} // namespace pontrel::paper
