#pragma once

#include "app/controls/TDBGrid.h"

namespace pontrel {

class Database;

// Selections of codes and their names.
inline const QString EmployeeNames = QStringLiteral("SELECT EmpNo, EmpName   From Base06 ");
inline const QString LeaveTypeNames = QStringLiteral("SELECT HoliNo, HoliType   From Holi01 ");
inline const QString WriteOffReasonNames = QStringLiteral("SELECT CnlNo, CnlName   From Canc01 ");

/// Fills the list with the codes and names that a selection of both gives, in place of what it holds. Throws
/// RunTimeError.
void readNames(TranslationList& names, Database& database, const QString& selection);

/// The column as one that shows names in place of its codes, as the list has them when a cell is painted. The
/// list must outlive the grid.
[[nodiscard]] GridColumn named(const TranslationList& names, GridColumn column);

} // namespace pontrel
