#pragma once

#include "store/statement/Writer.h"

#include <QHash>

namespace pontrel::statement {

/// Operators and functions of the statement language that the engine does not have; Connection registers
/// them.
namespace sqlname {
inline constexpr const char* Like = "pontrel_like";
inline constexpr const char* LikeFrom = "pontrel_like_from"; ///< No text that meets the pattern is below it,
inline constexpr const char* LikeTo = "pontrel_like_to";     ///< and all are below this.
inline constexpr const char* Format = "pontrel_format";
inline constexpr const char* Text = "pontrel_text";
inline constexpr const char* Days = "pontrel_days";
inline constexpr const char* Number = "pontrel_number";
inline constexpr const char* Divide = "pontrel_divide";
inline constexpr const char* IntegerDivide = "pontrel_integer_divide";
inline constexpr const char* Modulo = "pontrel_modulo";
inline constexpr const char* Convert = "pontrel_convert";
} // namespace sqlname

/// A table that a statement names, as columns are looked up in it.
struct Source {
    const Table* table;
    QByteArray name; ///< As the written statement calls it.
};

/// An expression written down, with the type of its value.
struct Written {
    QByteArray sql;
    ColumnType type = ColumnType::Unknown;
    bool column = false; ///< A bare column, which brings its own way of comparing text.
};

[[nodiscard]] QByteArray quotedName(const QString& name);

/// Writes expressions over some sources, and notes how each literal is to be bound. Each operand is written
/// once, however often its type is asked for.
class ExpressionWriter {
  public:
    ExpressionWriter(std::vector<Source> sources, Notes& notes)
        : sources_(std::move(sources)), notes_(notes) {}

    /// Lets a name that is no column stand for an expression written before.
    void addAlias(const QString& alias, const Expression* expression);

    [[nodiscard]] Written write(const Expression& expression);

    /// Writes the expression as a value for a column of that type. A boolean column has no null and takes
    /// false in its place.
    [[nodiscard]] QByteArray writeFor(const Expression& expression, ColumnType type);
    [[nodiscard]] static QByteArray converted(const Written& written, ColumnType type);

    /// Writes the expression as a condition.
    [[nodiscard]] QByteArray writeCondition(const Expression& expression);

    struct Found {
        const Source* source;
        int column;
    };
    /// The column of that name; source is null where there is none. Throws 3061 where two tables have it.
    [[nodiscard]] Found find(const ColumnNode& name) const;
    [[nodiscard]] const std::vector<Source>& sources() const { return sources_; }

  private:
    [[nodiscard]] Written literal(const LiteralNode& node, LiteralForm form);
    [[nodiscard]] Written column(const ColumnNode& node);
    [[nodiscard]] Written binary(const BinaryNode& node);
    [[nodiscard]] Written chain(const BinaryNode& node);
    [[nodiscard]] Written comparison(const BinaryNode& node);
    [[nodiscard]] Written nullComparison(Operator op, const Expression& operand);
    [[nodiscard]] Written arithmetic(const BinaryNode& node);
    [[nodiscard]] Written between(const BetweenNode& node);
    [[nodiscard]] Written function(const FunctionNode& node);
    [[nodiscard]] Written aggregate(const FunctionNode& node);
    [[nodiscard]] Written like(const LikeNode& node);
    [[nodiscard]] bool isWholeKey(const Expression& expression) const;
    /// Writes the operand of a comparison, a literal in the form that its counterpart's type asks for.
    [[nodiscard]] Written compared(const Expression& expression, ColumnType counterpart);
    [[nodiscard]] std::pair<Written, Written> comparedPair(const Expression& left, const Expression& right);
    [[nodiscard]] Written number(const Expression& expression);
    [[nodiscard]] static QByteArray text(const Written& written);
    [[nodiscard]] static QByteArray matched(const Written& written); ///< A side of a pattern match.
    [[nodiscard]] Written alias(const ColumnNode& node);
    [[nodiscard]] Written writeNode(const Expression& expression);

    std::vector<Source> sources_;
    Notes& notes_;
    QHash<QString, const Expression*> aliases_;
    QList<const Expression*> aliasesAtWork_; ///< Those that the present place stands in.
    int aliasUses_ = 0;
    int depth_ = 0;
};

} // namespace pontrel::statement
