#pragma once

#include <QString>

namespace pontrel {

class GridRow;

/// What the stored row, of Atte02 or Atte03, says is wrong with a position, in the words of a clerk: no
/// punch, late or early and by how many minutes, a morning that is too short; empty where nothing is. Nothing
/// is calculated anew: a position late by minutes is told also where the result has its fault on another one.
[[nodiscard]] QString positionFault(const GridRow& row, int position);

/// The same of the position that "遲到.早退" names, where it names one.
[[nodiscard]] QString lateEarlyFault(const GridRow& row);

/// All that is wrong with the day, a line a position.
[[nodiscard]] QString dayFault(const GridRow& row);

} // namespace pontrel
