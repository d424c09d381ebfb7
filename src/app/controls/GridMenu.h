#pragma once

class QPoint;

namespace pontrel {

class TDBGrid;

/// Opens a grid's context menu (object name "GridMenu") at a place of the display, where no menu is open:
/// the grid's own actions, then what copies and exports its rows.
void openGridMenu(TDBGrid& grid, QPoint place);

} // namespace pontrel
