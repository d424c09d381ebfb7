#pragma once

#include "app/controls/TDBGrid.h"

namespace pontrel {

class Database;

/// Fills the list with the codes and names that a selection of both gives, in place of what it holds. Throws
/// RunTimeError.
void readNames(TranslationList& names, Database& database, const QString& selection);

/// The column as one that shows names in place of its codes, as the list has them when a cell is painted. The
/// list must outlive the grid.
[[nodiscard]] GridColumn named(const TranslationList& names, GridColumn column);

} // namespace pontrel
