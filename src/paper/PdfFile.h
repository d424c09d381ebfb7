#pragma once

#include "paper/NewFile.h"
#include "paper/ReportDocument.h"

namespace pontrel::paper {

/// Saves pages of a report as PDF, in that order, the same more than once where it is named so; what stands
/// there stays as it was where that fails or is stopped. False where it was stopped. Throws error 75 where
/// the file cannot be written.
[[nodiscard]] bool savePdf(const ReportDocument& document, const std::vector<int>& pages, const QString& path,
                           const Progress& progress = {});

/// The same for the whole report.
[[nodiscard]] bool savePdf(const ReportDocument& document, const QString& path,
                           const Progress& progress = {});

} // namespace pontrel::paper
