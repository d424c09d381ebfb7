#pragma once

#include <QDate>
#include <QString>

#include <functional>

namespace pontrel {

/// What a look through a copy of the store has found.
struct StoreFinding {
    enum class Kind {
        Sound,
        Damaged,
        NotLookedAt ///< The copy could not be made or read, or somebody had no more time for it.
    };
    Kind kind = Kind::NotLookedAt;
    QString technical; ///< What the engine says, where it is not sound.
};

/// Copies the store beside itself, page by page as it stands between two transactions, and looks through the
/// copy for damage. The live store is only read, a few pages at a time, by a connection of its own. To be
/// called from any thread; asks now and then whether to stop. Throws nothing; the copy is gone afterwards.
[[nodiscard]] StoreFinding checkCopyOf(const QString& store, const std::function<bool()>& mayGoOn);

/// The copy that checkCopyOf() makes of the store, readable by its owner alone. One that a killed program has
/// left is removed by the next call.
[[nodiscard]] QString checkedCopyOf(const QString& store);

/// Whether the store has not been looked through on that day, as a file beside it remembers.
[[nodiscard]] bool isCheckDue(const QString& store, QDate today);

/// Remembers the day. Nothing happens where the file cannot be written.
void rememberCheck(const QString& store, QDate today);

} // namespace pontrel
