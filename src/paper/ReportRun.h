#pragma once

#include "paper/GlyphMeasure.h"
#include "paper/ReportDocument.h"

#include <QDate>
#include <QString>

#include <array>
#include <memory>

namespace pontrel::paper {

/// What a report is made of.
struct ReportRun {
    QString templatePath;
    QString dataFile;
    SelectionFormula formula; ///< Empty selects every record.
    NamedValues names;
    QDate today;                   ///< The date of printing.
    std::array<QDate, 2> period{}; ///< What was asked for, told where the formula names no dates.
};

/// Reads the template, then the records, and lays them out in the template's fonts. Throws RunTimeError: no
/// such template, a faulty one, a formula that cannot be read, a store that cannot be read.
[[nodiscard]] std::shared_ptr<const ReportDocument> runReport(const ReportRun& run);

/// Takes over a named value as the report control is given it: "Title='...'", the value from the first
/// apostrophe to the last one. A text without a name is no value.
void setNamedValue(NamedValues& names, const QString& text);

} // namespace pontrel::paper
