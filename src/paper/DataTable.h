#pragma once

#include "paper/ReportDocument.h"

namespace pontrel::paper {

/// A report's data as a plain table, for files that other programs read: the fields of the groups, then what
/// the report shows of each row; in a summary a line for each of the innermost groups. Nothing is left out
/// that paper shows once or blank.
class DataTable {
  public:
    explicit DataTable(const ReportDocument& document);

    [[nodiscard]] std::size_t lineCount() const;
    [[nodiscard]] const std::vector<Cell>& columns() const { return columns_; }

    /// What a column holds on a line: null, a number, a date, a time, both, or a text; the format of the
    /// column tells how to show it.
    enum class Kind { Nothing, Number, Date, Time, DateTime, Text };
    struct Content {
        Kind kind = Kind::Nothing;
        double number = 0; ///< As ReportRows has it.
        QStringView text;  ///< Lasts until the next call with this scratch.
    };
    [[nodiscard]] Content at(std::size_t line, const Cell& column, QString& scratch) const;

  private:
    [[nodiscard]] Content total(std::size_t group, const Cell& column, QString& scratch) const;
    [[nodiscard]] Content fromNumber(const Cell& column, Format format, double number,
                                     QString& scratch) const;

    const ReportDocument& document_;
    std::vector<Cell> columns_;
};

} // namespace pontrel::paper
