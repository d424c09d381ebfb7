#pragma once

#include "rules/reports/Catalogue.h"
#include "store/Database.h"

#include <vector>

namespace pontrel {

/// The entries of the tab's list, code, a blank and name, all selected: the leave types or write-off reasons
/// of the store, in its order; none on the other tabs.
[[nodiscard]] std::vector<ListEntry> readList(Database& database, ReportTab tab);

} // namespace pontrel
