#pragma once

#include "rules/reports/Catalogue.h"

namespace pontrel {

/// Joins a selection formula from its pattern, whose marks in brackets stand for values of the choice:
///
///     [date 0]             year, month and day of a date control, 0,0,0 for one that is empty
///     '[combo 0]'          the text of a box, between apostrophes
///     [month]              the whole number in the box of the month
///     [punch mark]         the condition of the punch mark that is on
///     [three leave types]  the condition on the first three types of the list, its parenthesis left open
///     [leave types]        the condition on all of them
///
/// Codes are those of the list by position. A text with an apostrophe goes in as it stands and breaks the
/// formula. Throws error 6 for a month beyond 16 bits.
[[nodiscard]] SelectionFormula joinFormula(const QString& pattern, const ReportChoice& choice,
                                           const QStringList& codes);

} // namespace pontrel
