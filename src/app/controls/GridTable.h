#pragma once

#include "app/controls/TDBGridModel.h"
#include "paper/PlainTable.h"

namespace pontrel {

/// What a grid shows, as a table for other programs: its columns in sight, names for codes, the words for its
/// check marks. Rows are read as they are now, a batch at a time, so that a list of a million takes no more
/// memory than a short one. The grid must outlive it and keep its rows meanwhile.
class GridTable : public paper::PlainTable {
  public:
    explicit GridTable(const TDBGrid& grid);

    [[nodiscard]] const std::vector<Column>& columns() const override { return columns_; }
    [[nodiscard]] std::size_t lineCount() const override;

    /// Dates, times and numbers are such where the grid shows nothing else in their place. Throws
    /// RunTimeError.
    [[nodiscard]] Content at(std::size_t line, std::size_t column, QString& scratch) const override;

    /// The text of a cell. Throws RunTimeError.
    [[nodiscard]] QString text(std::size_t line, std::size_t column) const;

  private:
    [[nodiscard]] const Value& value(std::size_t line, std::size_t column) const;

    const TDBGridModel& model_;
    std::vector<int> sections_; ///< Of the grid, for each column.
    std::vector<Column> columns_;
    mutable std::vector<std::vector<Value>> batch_;
    mutable std::size_t batchBegin_ = 0;
};

} // namespace pontrel
