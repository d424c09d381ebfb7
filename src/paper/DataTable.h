#pragma once

#include "paper/PlainTable.h"
#include "paper/ReportDocument.h"

namespace pontrel::paper {

/// A report's data as a plain table, for files that other programs read: the fields of the groups, then what
/// the report shows of each row; in a summary a line for each of the innermost groups. Nothing is left out
/// that paper shows once or blank.
class DataTable : public PlainTable {
  public:
    explicit DataTable(const ReportDocument& document);

    [[nodiscard]] std::size_t lineCount() const override;
    [[nodiscard]] const std::vector<Column>& columns() const override { return columns_; }
    [[nodiscard]] Content at(std::size_t line, std::size_t column, QString& scratch) const override;

  private:
    [[nodiscard]] Content total(std::size_t group, const Cell& column, QString& scratch) const;
    [[nodiscard]] Content fromNumber(const Cell& column, Format format, double number,
                                     QString& scratch) const;

    const ReportDocument& document_;
    std::vector<Cell> cells_;
    std::vector<Column> columns_; ///< What is told of the cells.
};

} // namespace pontrel::paper
