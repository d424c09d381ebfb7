#pragma once

#include "paper/NewFile.h"
#include "paper/PlainTable.h"
#include "paper/ReportDocument.h"

namespace pontrel::paper {

/// Saves a report's data as comma-separated text: UTF-8 with its mark, lines that end with CR LF, one for the
/// captions and one for each row; dates as 2026/01/05. Texts that a
/// spreadsheet would take for formulas when it opens the file get an apostrophe before the sign, those that
/// are plain numbers none. What stands there stays as it was where that fails or is stopped. False where it
/// was stopped. Throws error 75 where the file cannot be written.
[[nodiscard]] bool saveCsv(const ReportDocument& document, const QString& path,
                           const Progress& progress = {});

/// The same for a table, whose reading may throw as well.
[[nodiscard]] bool saveCsv(const PlainTable& table, const QString& path, const Progress& progress = {});

} // namespace pontrel::paper
