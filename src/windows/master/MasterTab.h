#pragma once

#include "app/RecordTab.h"

namespace pontrel {

/// A tab of the master data. Its table is "Base0" followed by its index + 1: the order of the tabs is part of
/// the data model.
[[nodiscard]] inline RecordTabPlan masterTab(int index, const QString& caption,
                                             const QString& frameCaption = {}) {
    return {.index = index,
            .caption = caption,
            .table = QStringLiteral("Base0%1").arg(index + 1),
            .frameCaption = frameCaption};
}

} // namespace pontrel
