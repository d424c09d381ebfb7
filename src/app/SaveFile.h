#pragma once

#include "app/ProgressBox.h"
#include "app/Prompts.h"

#include <functional>
#include <optional>

namespace pontrel {

// Files for other programs.
inline const SaveKind PdfKind{QStringLiteral("PDF (*.pdf)"), QStringLiteral("pdf")};
inline const SaveKind SheetKind{QStringLiteral("試算表 (*.xlsx)"), QStringLiteral("xlsx")};
inline const SaveKind CsvKind{QStringLiteral("CSV (*.csv)"), QStringLiteral("csv")};

/// Asks for a file of that kind, with the name proposed in the folder of the file saved before, at first the
/// user's documents, and runs what writes it as attempt() does. The path where it has been written.
[[nodiscard]] std::optional<QString>
saveUnderChosenName(const QString& name, const SaveKind& kind, const QString& caption,
                    const std::function<bool(const QString& path, const ProgressStep&)>& save);

} // namespace pontrel
