#pragma once

#include "rules/reports/Catalogue.h"
#include "store/Database.h"

#include <QDate>

#include <vector>

namespace pontrel {

/// Prepares the report that is chosen: D05 and D06 get their named values, E01 to E04 their rows in View01 or
/// View03, which are committed as one stage, also where an error ends it. Any other report needs nothing.
/// `today` tells the year that E04 adds up. Throws RunTimeError: 9 for a list with too many entries, 3075 for
/// an apostrophe in a code and for an empty date where it is joined, what a statement throws, and the loss
/// of the stage where it cannot be committed.
[[nodiscard]] std::vector<NamedValue> prepareReport(Database& database, const ReportChoice& choice,
                                                    QDate today);

} // namespace pontrel
