#pragma once

#include "paper/Template.h"
#include "paper/TemplateText.h"

namespace pontrel::paper {

/// Where a text with braces stands, which decides on what may be in them.
enum class TextPlace { Furniture, Header, Label, Cell, Tree };

/// Finds the fields and values that a template's texts name, and enters the fields and aggregates into it.
/// Throws TemplateFault for a name that is not known, which lists those that are.
class TemplateNames {
  public:
    TemplateNames(const TemplateText& source, Template& made) : source_(source), made_(made) {}

    /// A table of the store, but for that of the accounts.
    [[nodiscard]] const Table* table(const QString& name, qsizetype offset) const;

    /// Lets fields of that table be named.
    void add(const Table* table) { tables_.push_back(table); }
    [[nodiscard]] bool knows(const Table* table) const;

    /// "Table.Column", or "Column" of the table that the rows come from; its place among the template's
    /// fields.
    [[nodiscard]] int field(const QString& name, qsizetype offset);
    [[nodiscard]] int column(const Table& table, const QString& name, qsizetype offset) const;

    /// A text with braces, cut into its pieces.
    [[nodiscard]] Pieces pieces(const QString& text, qsizetype offset, TextPlace place);

    [[nodiscard]] int aggregate(const Aggregate& wanted);

  private:
    [[nodiscard]] Piece piece(const QString& name, const QString& format, qsizetype offset, TextPlace place);
    [[nodiscard]] Piece fieldPiece(const QString& name, const QString& format, qsizetype offset);
    [[nodiscard]] Piece totalPiece(Total kind, const QString& name, qsizetype offset);
    [[nodiscard]] int entered(const Field& field);

    const TemplateText& source_;
    Template& made_;
    std::vector<const Table*> tables_;
};

/// The format of that name; Automatic where there is none.
[[nodiscard]] Format formatNamed(const QString& name);
/// What the format is where none is given.
[[nodiscard]] Format formatFor(ColumnType type);
/// Whether values of that type can be written so.
[[nodiscard]] bool accepts(Format format, ColumnType type);
[[nodiscard]] inline bool isNumber(ColumnType type) {
    return type == ColumnType::Integer || type == ColumnType::Real;
}

} // namespace pontrel::paper
