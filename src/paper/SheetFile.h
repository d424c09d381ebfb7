#pragma once

#include "paper/NewFile.h"
#include "paper/PlainTable.h"
#include "paper/ReportDocument.h"

namespace pontrel::paper {

/// Most lines of data on one sheet; what is left goes to further sheets.
inline constexpr std::size_t MostSheetLines = 1'048'575;

/// Saves a report's data as a spreadsheet: texts stay texts, so that codes keep their zeros, dates and times
/// are such; the captions stand frozen with a filter. What stands there stays as it was where that fails or
/// is stopped. False where it was stopped. Throws error 75 where the file cannot be written. `sheetLines` is
/// how many lines go on a sheet, at most MostSheetLines.
[[nodiscard]] bool saveSheet(const ReportDocument& document, const QString& path,
                             const Progress& progress = {}, std::size_t sheetLines = MostSheetLines);

/// The same for a table, whose reading may throw as well.
[[nodiscard]] bool saveSheet(const PlainTable& table, const QString& path, const Progress& progress,
                             std::size_t sheetLines = MostSheetLines);

} // namespace pontrel::paper
