#pragma once

#include "store/StoreCopy.h"

#include <QDate>
#include <QString>

#include <functional>

namespace pontrel {

/// Copies the store beside itself, a few pages at a time, and looks through the copy for damage, so that the
/// store is not held up however long that takes. A copy that is sound is given to the further routine. Throws
/// nothing but what that routine throws; the copy is gone afterwards.
[[nodiscard]] StoreFinding checkCopyOf(const QString& store, const std::function<bool()>& mayGoOn,
                                       const std::function<void(const QString& copy)>& further = {});

/// The copy that checkCopyOf() makes of the store, readable by its owner alone. One that a killed program has
/// left is removed by the next call.
[[nodiscard]] QString checkedCopyOf(const QString& store);

/// Whether no look through the store has ended on that day, as a file beside it remembers.
[[nodiscard]] bool isCheckDue(const QString& store, QDate today);

/// Remembers the day. Nothing happens where the file cannot be written.
void rememberCheck(const QString& store, QDate today);

} // namespace pontrel
