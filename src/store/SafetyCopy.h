#pragma once

#include "store/StoreCopy.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace pontrel {

// Safety copies of the store lie in the folder "backup" beside it, both open to their owner alone. A copy
// gets its name only when it has been looked through:
//   .copying-NAME    its bytes are being copied; what a killed program has left of one is removed
//   .unchecked-NAME  all bytes are there; whoever comes next looks through it
//   NAME             sound
// where NAME is Pontrel-20261122-093000-day.mdb. Nothing else in that folder is touched.

/// Why a copy was made.
enum class CopyReason {
    Day,     ///< "day": the first start of the day.
    Purge,   ///< "purge": old punches are about to be deleted.
    Replace, ///< "replace": a day's punches are about to be replaced.
    Hand     ///< "hand": somebody asked for it.
};

/// A safety copy, as its name tells it.
struct SafetyCopy {
    QDate day;
    QTime time; ///< Of the copying, to the second, in local time.
    CopyReason reason = CopyReason::Hand;

    [[nodiscard]] QString name() const;
    /// The copy of that name; nothing where the name is not one to the character.
    [[nodiscard]] static std::optional<SafetyCopy> ofName(const QString& name);
    [[nodiscard]] bool operator==(const SafetyCopy&) const = default;
};

/// The folder of a store's safety copies.
[[nodiscard]] QString copyFolderOf(const QString& store);

/// The sound copies of the store, the newest first.
[[nodiscard]] QList<SafetyCopy> safetyCopiesOf(const QString& store);

/// Whether the day's own copy is there, sound or still to be looked through. The names in the folder tell it,
/// and nothing else is remembered.
[[nodiscard]] bool hasCopyOfDay(const QString& store, QDate day);

/// Those of the copies that need not be kept. Kept are those of the last 7 days on which copies were made,
/// but of those made before a purge or a replaced day the newest three a day; the newest of each of the last
/// 5 weeks (from Monday) and of each of the last 24 months with copies. Days without copies do not count, so
/// that a wrong clock or a long rest takes none away; the newest is never among them.
[[nodiscard]] QList<SafetyCopy> superfluousAmong(const QList<SafetyCopy>& copies);

/// What has come of making a copy.
struct CopyOutcome {
    std::optional<SafetyCopy> copy; ///< Where its bytes are all there.
    StoreFinding finding;           ///< Why not, else.
};

/// Copies the store's bytes and leaves them to be looked through. Reads the clock. Throws nothing.
[[nodiscard]] CopyOutcome copyBytes(const QString& store, CopyReason reason, CopyPace pace,
                                    const std::function<bool()>& mayGoOn);

/// Looks through a copy of which the bytes are there. A sound one gets its name, and those that need not be
/// kept any more go; a damaged one is removed; one that could not be read, or for which there was no more
/// time, stays for the next one who comes. Throws nothing.
[[nodiscard]] StoreFinding finishCopy(const QString& store, const SafetyCopy& copy,
                                      const std::function<bool()>& mayGoOn);

/// The copies that are still to be looked through, the oldest first.
[[nodiscard]] QList<SafetyCopy> uncheckedCopiesOf(const QString& store);

/// Keeps beside the store when and why the program could not make a copy, until one gets its name: the error
/// output of a program that a desktop has started is read by nobody. Reads the clock. Nothing happens where
/// the file cannot be written.
void noteFailedCopy(const QString& store, const QString& why);
/// That note, in one line; empty where there is none.
[[nodiscard]] QString failedCopyNote(const QString& store);

} // namespace pontrel
