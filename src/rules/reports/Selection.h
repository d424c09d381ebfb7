#pragma once

#include "store/Schema.h"
#include "store/Value.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringView>

#include <vector>

namespace pontrel {

/// A selection formula as it is joined and stored.
struct SelectionFormula {
    QString text;
    /// A code with an apostrophe was joined into it. It is read no more, whether or not it would be whole by
    /// chance, so that a code never becomes a condition.
    bool isBroken = false;
};

/// A selection formula made ready.
struct Selection {
    /// A condition in the engine's language over tables that are called by their own names; empty where every
    /// record is selected. Parameters ?1 to ?n are the values, of which it holds none itself.
    QByteArray condition;
    std::vector<Value> values;
    std::vector<const Table*> tables; ///< That the formula names, in the order in which it does.

    /// The bounds that the first date column of the formula is compared with; not valid where there are none.
    QDate first, last;
};

/// Reads a selection formula and writes it as a condition. Words and names stand in any case of letters:
///
///     formula    := "" | or
///     or         := and { "or" and }
///     and        := not { "and" not }
///     not        := ["not"] comparison
///     comparison := operand [("=" | "<>" | "<" | "<=" | ">" | ">=") operand]
///     operand    := "{" table "." column "}" | "'" text "'" | number | "true" | "false" | "(" or ")"
///                 | "date(" [number] "," [number] "," [number] ")"
///                 | "month(" operand ")" | "isnull(" operand ")"
///
/// The end of the text closes open parentheses. A date of no real day is null. A comparison with null is not
/// true, and its opposite is. Text is compared without regard to the case of A to Z.
///
/// Throws 3075 for what does not follow the grammar, 3061 for an unknown column or function, 13 for unlike
/// types; the technical text tells the place, counted in characters from 1.
[[nodiscard]] Selection translateSelection(QStringView formula);

/// The same of a formula as it is stored. Throws 3075 for a broken one too.
[[nodiscard]] Selection translateSelection(const SelectionFormula& formula);

} // namespace pontrel
