#pragma once

namespace pontrel {

class TDBGrid;

// What a list gives to other programs: what it shows, names for codes and words for check marks included. A
// row that is being added is none of it yet. What goes wrong is told in a message.

/// Puts the texts of the selected row into the clipboard, with tabs between them; nothing where none is.
void copyRow(const TDBGrid& grid);

/// Puts all rows into the clipboard, a line each, below a line of the captions.
void copyAllRows(const TDBGrid& grid);

/// Asks for a file and writes the rows into it as comma-separated text, below a line of the captions. No text
/// can pass for a formula.
void exportCsv(const TDBGrid& grid);

/// The same as a spreadsheet, with dates, times and numbers as such.
void exportSheet(const TDBGrid& grid);

} // namespace pontrel
