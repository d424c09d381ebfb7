#include "paper/Groups.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace pontrel::paper {

namespace {

const double None = std::nan("");

bool takesPart(const Aggregate& aggregate, const ReportRows& rows, std::size_t row) {
    return aggregate.when < 0 || (!rows.isNull(row, aggregate.when) && rows.number(row, aggregate.when) != 0);
}

/// Adds what a row, or a group below, comes to.
void merge(double& total, double value, Total kind) {
    if (std::isnan(value))
        return;
    if (std::isnan(total))
        total = value;
    else if (kind == Total::Min)
        total = std::min(total, value);
    else if (kind == Total::Max)
        total = std::max(total, value);
    else
        total += value;
}

/// What a row brings to a total, distinct values aside.
double contribution(const Template& layout, const Aggregate& aggregate, const ReportRows& rows,
                    std::size_t row) {
    if (!takesPart(aggregate, rows, row))
        return None;
    const int first = aggregate.fields.front();
    if (aggregate.kind == Total::Count) {
        const bool truth = layout.field(first).type() == ColumnType::Boolean;
        return !rows.isNull(row, first) && (!truth || rows.number(row, first) != 0) ? 1 : None;
    }
    double sum = None;
    for (const int field : aggregate.fields)
        if (!rows.isNull(row, field) && rows.text(row, field).isNull())
            merge(sum, rows.number(row, field), Total::Sum);
    return sum;
}

/// In how many levels, from the outermost, a row is of the same group as the one before it.
std::size_t sameLevels(const Template& layout, const ReportRows& rows, std::size_t row) {
    std::size_t level = 0;
    while (level < layout.groups.size() && rows.same(row - 1, row, layout.groups[level].by))
        ++level;
    return level;
}

/// Counts the different values of a field in the present group of each level: for each value, the group in
/// which it came last.
class DistinctCounter {
  public:
    DistinctCounter(const Aggregate& aggregate, std::size_t levels) : aggregate_(aggregate), seen_(levels) {}

    /// Whether the row's value is new in that group.
    [[nodiscard]] bool isNew(const ReportRows& rows, std::size_t row, std::size_t level, std::size_t group) {
        const int field = aggregate_.fields.front();
        if (!takesPart(aggregate_, rows, row) || rows.isNull(row, field))
            return false;
        const auto [place, added] = seen_[level].try_emplace(rows.identity(row, field), group);
        if (!added && place->second == group)
            return false;
        place->second = group;
        return true;
    }

  private:
    const Aggregate& aggregate_;
    std::vector<std::unordered_map<std::int64_t, std::size_t>> seen_;
};

} // namespace

Groups::Groups(const Template& layout, const ReportRows& rows)
    : aggregates_(layout.aggregates.size())
    , levels_(layout.groups.size() + 1)
    , totals_(layout.groups.size() + 1) {
    const std::size_t depth = layout.groups.size();
    std::vector<std::pair<std::size_t, DistinctCounter>> distinct;
    for (std::size_t index = 0; index < aggregates_; ++index)
        if (layout.aggregates[index].kind == Total::Distinct)
            distinct.emplace_back(index, DistinctCounter(layout.aggregates[index], depth + 1));
    begin(0, 0);
    for (std::size_t row = 0; row < rows.count(); ++row) {
        const std::size_t same = row == 0 ? 0 : sameLevels(layout, rows, row);
        for (std::size_t level = depth; level > same && row > 0; --level)
            end(layout, level, row);
        for (std::size_t level = same + 1; level <= depth; ++level)
            begin(level, row);
        for (std::size_t index = 0; index < aggregates_; ++index)
            if (layout.aggregates[index].kind != Total::Distinct)
                merge(present(depth)[index], contribution(layout, layout.aggregates[index], rows, row),
                      layout.aggregates[index].kind);
        for (auto& [index, counter] : distinct)
            for (std::size_t level = 0; level <= depth; ++level)
                if (counter.isNew(rows, row, level, levels_[level].size() - 1))
                    merge(present(level)[index], 1, Total::Distinct);
    }
    for (std::size_t level = depth; level > 0 && rows.count() > 0; --level)
        end(layout, level, rows.count());
    end(layout, 0, rows.count());
    addEndLines(layout, rows);
}

void Groups::begin(std::size_t level, std::size_t row) {
    levels_[level].push_back({static_cast<std::uint32_t>(row), 0});
    totals_[level].resize(totals_[level].size() + aggregates_, None);
}

/// Ends the present group of a level; its totals are added to the one around it.
void Groups::end(const Template& layout, std::size_t level, std::size_t row) {
    GroupRange& ended = levels_[level].back();
    ended.count = static_cast<std::uint32_t>(row) - ended.first;
    if (level == 0)
        return;
    for (std::size_t index = 0; index < aggregates_; ++index)
        if (layout.aggregates[index].kind != Total::Distinct)
            merge(present(level - 1)[index], present(level)[index], layout.aggregates[index].kind);
}

void Groups::addEndLines(const Template& layout, const ReportRows& rows) {
    for (std::size_t totals = 0; totals < layout.endTotals.size(); ++totals) {
        const int by = layout.endTotals[totals].by;
        std::unordered_map<std::int64_t, std::size_t> places;
        std::vector<std::vector<std::unordered_set<std::int64_t>>> seen;
        const std::size_t firstLine = endLines_.size();
        for (std::size_t row = 0; row < rows.count(); ++row) {
            // A null has an identity of its own.
            const auto [place, added] = places.try_emplace(rows.identity(row, by), endLines_.size());
            if (added) {
                endLines_.push_back({totals, row, 0, std::vector<double>(aggregates_, None)});
                seen.emplace_back(aggregates_);
            }
            EndLine& line = endLines_[place->second];
            ++line.count;
            for (std::size_t index = 0; index < aggregates_; ++index) {
                const Aggregate& aggregate = layout.aggregates[index];
                const int field = aggregate.fields.front();
                if (aggregate.kind != Total::Distinct)
                    merge(line.values[index], contribution(layout, aggregate, rows, row), aggregate.kind);
                else if (takesPart(aggregate, rows, row) && !rows.isNull(row, field) &&
                         seen[place->second - firstLine][index].insert(rows.identity(row, field)).second)
                    merge(line.values[index], 1, Total::Distinct);
            }
        }
        std::sort(endLines_.begin() + static_cast<std::ptrdiff_t>(firstLine), endLines_.end(),
                  [&](const EndLine& one, const EndLine& other) {
                      const QStringView text = rows.text(one.row, by);
                      const QStringView than = rows.text(other.row, by);
                      if (rows.isNull(one.row, by) != rows.isNull(other.row, by))
                          return rows.isNull(one.row, by);
                      if (!text.isNull() || !than.isNull())
                          return text.compare(than, Qt::CaseInsensitive) < 0;
                      return rows.number(one.row, by) < rows.number(other.row, by);
                  });
    }
}

std::size_t Groups::groupOf(std::size_t level, std::size_t row) const {
    const auto after =
        std::upper_bound(levels_[level].begin(), levels_[level].end(), row,
                         [](std::size_t wanted, const GroupRange& group) { return wanted < group.first; });
    return static_cast<std::size_t>(after - levels_[level].begin()) - 1;
}

} // namespace pontrel::paper
