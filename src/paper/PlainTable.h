#pragma once

#include "paper/Template.h"

#include <QString>

#include <cstddef>
#include <vector>

namespace pontrel::paper {

/// A plain table for files that other programs read: columns with captions, and lines of typed contents.
class PlainTable {
  public:
    struct Column {
        QString caption;
        double characters = 0;          ///< How wide the column is, in digits.
        Format format = Format::Number; ///< Of its numbers; Whole and OneDecimal tell decimals.
    };

    /// What a column holds on a line: null, a number, a date, a time, both, or a text.
    enum class Kind { Nothing, Number, Date, Time, DateTime, Text };
    struct Content {
        Kind kind = Kind::Nothing;
        double number = 0; ///< As ReportRows has it.
        /// Of what is no text, how it is written where the usual way is not wanted. Lasts until the next call
        /// with this scratch.
        QStringView text;
    };

    virtual ~PlainTable() = default;

    [[nodiscard]] virtual const std::vector<Column>& columns() const = 0;
    [[nodiscard]] virtual std::size_t lineCount() const = 0;

    /// Files ask for the lines in their order, and within each for the columns. May throw RunTimeError.
    [[nodiscard]] virtual Content at(std::size_t line, std::size_t column, QString& scratch) const = 0;

  protected:
    PlainTable() = default;
    PlainTable(const PlainTable&) = default;
    PlainTable& operator=(const PlainTable&) = default;
};

} // namespace pontrel::paper
