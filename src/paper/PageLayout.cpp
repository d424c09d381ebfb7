#include "paper/PageLayout.h"

#include <algorithm>

namespace pontrel::paper {

namespace {

constexpr int HeadingGap = 200;
constexpr int FootGap = 150;
constexpr int CardGap = 200; ///< Below a card.

bool wraps(const Template& layout) {
    return std::any_of(layout.cells.begin(), layout.cells.end(),
                       [](const Cell& cell) { return wraps(cell.fit); });
}

bool hasHeaderBand(const Group& group) {
    return group.hasHeader || group.newPage;
}

/// Rows of a group that stand in one band, from the row on.
std::uint32_t rowsOfBand(const Template& layout, const GroupRange& group, std::size_t row) {
    const auto left = static_cast<std::uint32_t>(group.first + group.count - row);
    if (layout.rows == RowKind::Summary)
        return left;
    return layout.rows == RowKind::Flow ? std::min(left, static_cast<std::uint32_t>(layout.across)) : 1;
}

} // namespace

int textWidth(const Template& layout, const Cell& cell) {
    const int captions = layout.rows == RowKind::Card ? layout.captionWidth : 0;
    return std::max(1, cell.width - captions - 2 * CellPadding);
}

int linesOf(const TextMeasure& measure, const Cell& cell, QStringView text, int width) {
    if (!wraps(cell.fit))
        return 1;
    if (!text.contains(u'\n') &&
        (measure.fitting(BodyFont, text, width) == text.size() ||
         (cell.fit == Fit::ShrinkWrap && measure.width(BodyFont, text) * LeastScale <= width * 100)))
        return 1;
    return static_cast<int>(wrapped(measure, BodyFont, text, width).size());
}

PageMeasures::PageMeasures(const Template& layout, const TextMeasure& measure) {
    bodyLine = measure.lineHeight(BodyFont);
    row = bodyLine + 2 * RowPadding;
    footer = row;
    header = measure.lineHeight(HeadFont) + 2 * RowPadding;
    headingTop = layout.margin;
    int y = headingTop;
    for (const TextLine& line : layout.heading)
        y += measure.lineHeight(line.font);
    captionsTop = layout.heading.empty() ? y : y + HeadingGap;
    const bool captioned = layout.rows == RowKind::Columns || layout.rows == RowKind::Summary;
    captions = captioned ? row : 0;
    bodyTop = captionsTop + captions;
    const int bottom = layout.paperHeight - layout.margin;
    footTop = layout.hasFoot ? bottom - bodyLine : bottom;
    // The reader has refused headings of more than half a page, so that there is room.
    room = std::max(1, (layout.hasFoot ? footTop - FootGap : footTop) - bodyTop);
    if (layout.rows == RowKind::Card || layout.rows == RowKind::Flow)
        row = layout.lines * bodyLine + 2 * RowPadding;
    if (layout.rows == RowKind::Card)
        row = layout.lines * (bodyLine + 2 * RowPadding) + CardGap;
}

PageLayout::PageLayout(const Template& layout, const ReportRows& rows, const Groups& groups,
                       const CellText& texts, const TextMeasure& measure)
    : layout_(layout)
    , rows_(rows)
    , groups_(groups)
    , texts_(texts)
    , measure_(measure)
    , measures_(layout, measure) {
    addBands();
    breakPages();
}

std::uint16_t PageLayout::bounded(int height) const {
    return static_cast<std::uint16_t>(std::min({height, measures_.room, 0xffff}));
}

int PageLayout::heightOfRow(std::size_t row, bool beginsGroup) const {
    std::vector<int> lines(static_cast<std::size_t>(layout_.lines), 1);
    QString scratch;
    for (const Cell& cell : layout_.cells)
        // What stands once has its room on the group's first row; at the top of a page it shrinks.
        if (wraps(cell.fit) && (beginsGroup || !cell.once)) {
            int& most = lines[static_cast<std::size_t>(layout_.rows == RowKind::Card ? cell.line : 0)];
            most = std::max(
                most, linesOf(measure_, cell, texts_.cell(cell, row, scratch), textWidth(layout_, cell)));
        }
    int more = 0;
    for (const int most : lines)
        more += (most - 1) * measures_.bodyLine;
    return measures_.row + more;
}

void PageLayout::addBands() {
    const std::size_t depth = layout_.groups.size();
    const bool grows = wraps(layout_) && layout_.rows != RowKind::Summary;
    const std::uint16_t height = bounded(measures_.row);
    std::vector<std::size_t> at(depth + 1, 0); // the present group of each level
    if (layout_.rows == RowKind::Columns && rows_.count() > 0)
        bands_.reserve(rows_.count() + rows_.count() / 8);
    std::size_t row = 0;
    while (row < rows_.count()) {
        for (std::size_t level = 1; level <= depth; ++level)
            if (groups_.level(level)[at[level]].first == row && hasHeaderBand(layout_.groups[level - 1]))
                bands_.push_back({static_cast<std::uint32_t>(at[level]),
                                  bounded(layout_.groups[level - 1].hasHeader ? measures_.header : 0),
                                  Band::Kind::Header, static_cast<std::uint8_t>(level)});
        const std::uint32_t taken = rowsOfBand(layout_, groups_.level(depth)[at[depth]], row);
        const bool beginsGroup = groups_.level(depth)[at[depth]].first == row;
        bands_.push_back({static_cast<std::uint32_t>(row),
                          grows ? bounded(heightOfRow(row, beginsGroup)) : height, Band::Kind::Row,
                          static_cast<std::uint8_t>(layout_.rows == RowKind::Flow ? taken : 0)});
        row += taken;
        for (std::size_t level = depth; level > 0; --level) {
            const GroupRange& group = groups_.level(level)[at[level]];
            if (group.first + group.count != row)
                break;
            if (layout_.groups[level - 1].hasFooter)
                bands_.push_back({static_cast<std::uint32_t>(at[level]), bounded(measures_.footer),
                                  Band::Kind::Footer, static_cast<std::uint8_t>(level)});
            ++at[level];
        }
    }
    addEnd();
    bands_.shrink_to_fit();
}

void PageLayout::addEnd() {
    if (!layout_.hasEnd)
        return;
    for (std::size_t line = 0; line < groups_.endLines().size(); ++line)
        bands_.push_back(
            {static_cast<std::uint32_t>(line), bounded(measures_.footer), Band::Kind::EndLine, 0});
    bands_.push_back({0, bounded(measures_.footer), Band::Kind::End, 0});
}

/// The height of what must stand on the same page from this band on: headers with the row after them, a row
/// with the footers of the groups that it ends.
int PageLayout::needed(std::size_t band) const {
    int height = 0;
    while (band < bands_.size() && bands_[band].kind == Band::Kind::Header)
        height += bands_[band++].height;
    if (band == bands_.size())
        return height;
    height += bands_[band++].height;
    while (band < bands_.size() &&
           (bands_[band].kind == Band::Kind::Footer || bands_[band].kind == Band::Kind::End))
        height += bands_[band++].height;
    return height;
}

/// Whether one of the headers that stand together from this one on begins a page.
bool PageLayout::beginsPage(std::size_t band) const {
    for (; bands_[band].kind == Band::Kind::Header; ++band)
        if (layout_.groups[bands_[band].level - std::size_t{1}].newPage)
            return true;
    return false;
}

/// The levels whose headers a page repeats that begins with this band.
std::uint8_t PageLayout::openLevels(const Band& band) const {
    std::size_t open = 0;
    if (band.kind == Band::Kind::Row)
        open = layout_.groups.size();
    else if (band.kind == Band::Kind::Header)
        open = band.level - std::size_t{1};
    else if (band.kind == Band::Kind::Footer)
        open = band.level;
    // A group whose first row this is has its header still before it, or ended with the page before.
    unsigned levels = 0;
    for (std::size_t level = 1; level <= open; ++level)
        if (layout_.groups[level - 1].repeat && layout_.groups[level - 1].hasHeader)
            levels |= 1U << (level - 1);
    return static_cast<std::uint8_t>(levels);
}

void PageLayout::breakPages() {
    PageRange page;
    int used = 0;
    const auto finish = [&](std::size_t next) {
        page.count = static_cast<std::uint32_t>(next) - page.first;
        pages_.push_back(page);
        page = {static_cast<std::uint32_t>(next), 0, 0};
        used = 0;
    };
    bool afterHeader = false;
    for (std::size_t band = 0; band < bands_.size(); ++band) {
        const Band& next = bands_[band];
        const bool header = next.kind == Band::Kind::Header;
        const bool begun = band > page.first;
        const bool breaks = begun && header && !afterHeader && beginsPage(band);
        // What has come so far of a chain that is higher than a page stays together as far as it can.
        const int height = afterHeader && used + needed(band) > measures_.room ? next.height : needed(band);
        if (begun && (breaks || used + height > measures_.room)) {
            finish(band);
            page.continued = openLevels(next);
            int repeated = 0;
            for (unsigned levels = page.continued; levels != 0; levels &= levels - 1)
                repeated += measures_.header;
            if (repeated + needed(band) > measures_.room) {
                page.continued = 0;
                repeated = 0;
            }
            used = repeated;
        }
        used += next.height;
        afterHeader = header;
    }
    finish(bands_.size());
}

std::optional<std::size_t> PageLayout::rowOf(const Band& band) const {
    if (rows_.count() == 0)
        return std::nullopt;
    switch (band.kind) {
    case Band::Kind::Row:
        return band.index;
    case Band::Kind::Header:
        return groups_.level(band.level)[band.index].first;
    case Band::Kind::Footer: {
        const GroupRange& group = groups_.level(band.level)[band.index];
        return group.first + group.count - 1;
    }
    default:
        return rows_.count() - 1;
    }
}

std::size_t PageLayout::pageOf(std::size_t row) const {
    if (row >= rows_.count())
        return pages_.size() - 1;
    auto band =
        std::upper_bound(bands_.begin(), bands_.end(), row,
                         [this](std::size_t wanted, const Band& other) { return wanted < *rowOf(other); });
    while (band != bands_.begin() && (--band)->kind != Band::Kind::Row) {
    }
    const auto place = static_cast<std::uint32_t>(band - bands_.begin());
    const auto after =
        std::upper_bound(pages_.begin(), pages_.end(), place,
                         [](std::uint32_t wanted, const PageRange& page) { return wanted < page.first; });
    return static_cast<std::size_t>(after - pages_.begin()) - 1;
}

} // namespace pontrel::paper
