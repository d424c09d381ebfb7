#pragma once

#include <QString>

namespace pontrel {

class GridRow;

/// The positions of a day in a row of Atte02 or Atte03, by the numbers of their columns.
enum class Position { MorningIn = 1, MorningOut, AfternoonIn, AfternoonOut };

/// What the stored row says is wrong with a position, in the words of a clerk: no punch, late or early and by
/// how many minutes, a morning that is too short; empty where nothing is. Nothing is calculated anew: a
/// position late by minutes is told also where the result has its fault on another one.
[[nodiscard]] QString positionFault(const GridRow& row, Position position);

/// The same of the position that "遲到.早退" names, where it names one.
[[nodiscard]] QString lateEarlyFault(const GridRow& row);

/// All that is wrong with the day, a line a position.
[[nodiscard]] QString dayFault(const GridRow& row);

} // namespace pontrel
