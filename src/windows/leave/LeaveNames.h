#pragma once

#include "app/controls/TDBGrid.h"

namespace pontrel {

class Database;

/// What the lists of the leave window show in place of the stored values. They are read once, when the window
/// opens: what is added later shows as it is stored.
struct LeaveNames {
    TranslationList schemes;
    TranslationList types;
    TranslationList weekdays; ///< One character for each date that has leave.

    /// Throws RunTimeError.
    void read(Database& database);
};

} // namespace pontrel
