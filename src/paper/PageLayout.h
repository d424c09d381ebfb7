#pragma once

#include "paper/CellText.h"
#include "paper/Groups.h"
#include "paper/Template.h"
#include "paper/TextMeasure.h"

#include <cstdint>
#include <vector>

namespace pontrel::paper {

/// What stands across the page at one height.
struct Band {
    enum class Kind : std::uint8_t { Header, Row, Footer, EndLine, End };

    std::uint32_t index = 0;  ///< The row, or the first one of a flow; the group of its level; the end line.
    std::uint16_t height = 0; ///< In 1/100 mm; never more than a page has room.
    Kind kind = Kind::Row;
    std::uint8_t level = 0; ///< Of the group; the rows of a flow.
};
static_assert(sizeof(Band) == 8);

/// The bands of a page.
struct PageRange {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::uint8_t continued =
        0; ///< A bit for each level whose header is repeated at the top; level 1 is bit 0.
};

/// Heights and places that are the same on all pages, in 1/100 mm.
struct PageMeasures {
    PageMeasures(const Template& layout, const TextMeasure& measure);

    int headingTop = 0;
    int captionsTop = 0;
    int captions = 0; ///< 0 where there is no line of captions.
    int bodyTop = 0;
    int room = 0; ///< For bands.
    int footTop = 0;
    int header = 0;
    int row = 0; ///< Where nothing is wrapped.
    int footer = 0;
    int bodyLine = 0;
};

inline constexpr int CellPadding = 80; ///< Left and right of a text.
inline constexpr int RowPadding = 40;  ///< Above and below it.

/// How a report's rows stand on pages: bands in their order, cut into pages, all counted before any is
/// painted.
class PageLayout {
  public:
    PageLayout(const Template& layout, const ReportRows& rows, const Groups& groups, const CellText& texts,
               const TextMeasure& measure);

    [[nodiscard]] const PageMeasures& measures() const { return measures_; }
    [[nodiscard]] const std::vector<Band>& bands() const { return bands_; }
    [[nodiscard]] const std::vector<PageRange>& pages() const { return pages_; }

    /// The page, from 0, on which a row stands; the last one for a row that is not there.
    [[nodiscard]] std::size_t pageOf(std::size_t row) const;
    /// The row that a band begins with, or ends for a footer; nothing where there are no rows.
    [[nodiscard]] std::optional<std::size_t> rowOf(const Band& band) const;

  private:
    void addBands();
    void addEnd();
    void breakPages();
    [[nodiscard]] int heightOfRow(std::size_t row, bool beginsGroup) const;
    [[nodiscard]] int needed(std::size_t band) const;
    [[nodiscard]] bool beginsPage(std::size_t band) const;
    [[nodiscard]] std::uint8_t openLevels(const Band& band) const;
    [[nodiscard]] std::uint16_t bounded(int height) const;

    const Template& layout_;
    const ReportRows& rows_;
    const Groups& groups_;
    const CellText& texts_;
    const TextMeasure& measure_;
    PageMeasures measures_;
    std::vector<Band> bands_;
    std::vector<PageRange> pages_;
};

/// How many lines the text of a cell takes of that width in all; 1 but for texts that wrap.
[[nodiscard]] int linesOf(const TextMeasure& measure, const Cell& cell, QStringView text, int width);
/// The width that a cell has for its text.
[[nodiscard]] int textWidth(const Template& layout, const Cell& cell);

} // namespace pontrel::paper
