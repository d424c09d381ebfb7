#pragma once

#include "paper/ReportRows.h"
#include "paper/Template.h"

#include <cstdint>
#include <vector>

namespace pontrel::paper {

/// Rows that stand together, and where their totals are.
struct GroupRange {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
};

/// The groups of a report's rows and their totals: level 0 is the whole report, level 1 the outermost group.
/// Reckoned once over all rows, so that any page can be shown by itself.
class Groups {
  public:
    Groups(const Template& layout, const ReportRows& rows);

    [[nodiscard]] const std::vector<GroupRange>& level(std::size_t level) const { return levels_[level]; }
    [[nodiscard]] std::size_t depth() const { return levels_.size() - 1; }

    /// A number for each aggregate of the template; not a number where there were no values.
    [[nodiscard]] const double* totals(std::size_t level, std::size_t group) const {
        return totals_[level].data() + group * aggregates_;
    }

    /// The group of that level in which the row is.
    [[nodiscard]] std::size_t groupOf(std::size_t level, std::size_t row) const;

    /// A line of totals at the end: of one value of a field.
    struct EndLine {
        std::size_t totals = 0; ///< Of Template::endTotals.
        std::size_t row = 0;    ///< The first with this value.
        std::size_t count = 0;
        std::vector<double> values;
    };
    [[nodiscard]] const std::vector<EndLine>& endLines() const { return endLines_; }

  private:
    void begin(std::size_t level, std::size_t row);
    void end(const Template& layout, std::size_t level, std::size_t row);
    /// The totals of the last group of a level, which is the present one while the rows are walked.
    [[nodiscard]] double* present(std::size_t level) {
        return totals_[level].data() + totals_[level].size() - aggregates_;
    }
    void addEndLines(const Template& layout, const ReportRows& rows);

    std::size_t aggregates_;
    std::vector<std::vector<GroupRange>> levels_;
    std::vector<std::vector<double>> totals_;
    std::vector<EndLine> endLines_;
};

} // namespace pontrel::paper
