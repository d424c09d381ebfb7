#pragma once

#include "paper/ReportRows.h"
#include "paper/Template.h"

#include <QHash>
#include <QString>

#include <optional>

namespace pontrel::paper {

/// The values that a report is given by name: Title, Sdate and so on.
using NamedValues = QHash<QString, QString>;

/// What a text with braces speaks of at its place. What is absent is written as nothing.
struct TextContext {
    std::optional<std::size_t> row;
    const double* totals = nullptr; ///< Of each aggregate; not a number where there were no values.
    std::size_t count = 0;          ///< Rows of the group.
    int page = 0;                   ///< From 1.
    int pages = 0;
    bool continued = false;
};

/// Writes the values of records as texts. Texts are appended, or returned as views that last until the next
/// call with the same scratch.
class CellText {
  public:
    CellText(const Template& layout, const ReportRows& rows, const NamedValues& names)
        : layout_(layout), rows_(rows), names_(names) {}

    /// What the cell says of a row.
    [[nodiscard]] QStringView cell(const Cell& cell, std::size_t row, QString& scratch) const;

    /// A total of the cell's.
    [[nodiscard]] QStringView total(const Cell& cell, double value, QString& scratch) const;

    void pieces(QString& text, const Pieces& pieces, const TextContext& context) const;

    /// The number that the cell shows of a row; nothing where it shows none.
    [[nodiscard]] std::optional<double> number(const Cell& cell, std::size_t row) const;

    /// Whether the cell shows anything of the row at all.
    [[nodiscard]] bool shows(const Cell& cell, std::size_t row) const;

  private:
    void field(QString& text, int field, std::size_t row, Format format, const QStringList& words) const;
    [[nodiscard]] ColumnType typeOf(const Cell& cell) const {
        return layout_.field(cell.fields.front()).type();
    }

    const Template& layout_;
    const ReportRows& rows_;
    const NamedValues& names_;
};

/// Appends a number in that format; dates and times as ReportRows has them as numbers.
void appendNumber(QString& text, double number, Format format, const QStringList& words);

} // namespace pontrel::paper
