#pragma once

#include <QString>

namespace pontrel::tools {

/// A sentence on what stands against what the command asks for.
struct Refusal {
    QString text;
};

/// What a restore has done.
struct Restored {
    QString kept; ///< The store as it was before, under its new name; empty where there was none.
    bool sentinelRemoved =
        false; ///< The copy was made in the middle of an import, whose passing leaving dates are gone.
};

/// Puts the copy in the place of the folder's store, which is kept beside it under a dated name. Keeps the
/// program from starting meanwhile. Killed at any moment, the old store stands
/// there still, or beside the new one. Throws
/// Refusal, with nothing changed, where the program runs or the copy is not sound.
[[nodiscard]] Restored restoreStore(const QString& programFolder, const QString& copy);

} // namespace pontrel::tools
