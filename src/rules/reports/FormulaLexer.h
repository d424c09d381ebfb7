#pragma once

#include "store/RunTimeError.h"

#include <QStringView>

namespace pontrel {

/// A piece of a selection formula. Of a field and of a quoted text it holds what stands between the braces or
/// the apostrophes.
struct FormulaToken {
    enum class Kind { Field, Text, Number, Word, Sign, End };
    Kind kind = Kind::End;
    QStringView text;
    qsizetype place = 0; ///< Where it begins.
};

/// Cuts a selection formula, which must outlive it, one piece ahead of its reader.
class FormulaLexer {
  public:
    /// Throws 3075 where the text begins with no piece of a formula, as take() does.
    explicit FormulaLexer(QStringView formula);

    [[nodiscard]] const FormulaToken& peek() const { return next_; }
    FormulaToken take(); ///< The next piece; the end comes again and again.

    /// Throws that error with the place of the piece.
    [[noreturn]] void fail(const FormulaToken& token, const char* reason, int number = error::Syntax) const;

  private:
    [[nodiscard]] FormulaToken cut();
    [[nodiscard]] FormulaToken enclosed(FormulaToken::Kind kind, QChar end);
    [[nodiscard]] FormulaToken upTo(FormulaToken::Kind kind, qsizetype end);
    [[nodiscard]] QChar at(qsizetype place) const;

    QStringView formula_;
    qsizetype place_ = 0;
    FormulaToken next_;
};

} // namespace pontrel
