#pragma once

#include <QString>

#include <functional>

namespace pontrel {

/// How the bytes of a store are copied.
enum class CopyPace {
    AtOnce,  ///< Under one shared lock, for whoever is about to change the store.
    InPieces ///< A few pages at a time with a rest in between, for whoever must not hold others up.
};

/// What has come of a copy, or of a look through one.
struct StoreFinding {
    enum class Kind {
        Sound,
        Damaged,
        NotLookedAt, ///< The copy could not be made or read, or somebody had no more time for it.
        AtWork       ///< Another process is looking through it.
    };
    Kind kind = Kind::NotLookedAt;
    QString technical; ///< What the engine says, where it is not sound.
};

/// Copies the store as it stands between two transactions into a file that is there and empty, by the
/// engine's own backup. The store is only read; what a killed program has left half written in it is undone
/// first, as with every opening. Asks before each piece whether to go on. Sound means that all bytes are
/// there, not that they have been looked at. To be called from any thread; throws nothing, and leaves the
/// file behind in any case.
[[nodiscard]] StoreFinding copyStore(const QString& store, const QString& into, CopyPace pace,
                                     const std::function<bool()>& mayGoOn);

/// Looks through a file that nobody writes: whether it is a store of the program, and whole. Asks now and
/// then whether to go on. To be called from any thread; throws nothing.
[[nodiscard]] StoreFinding lookThrough(const QString& copy, const std::function<bool()>& mayGoOn);

/// Whether the folder's disk has room for a copy of the store, and for the store once more besides, which an
/// action's journal may need. A disk that does not tell has it.
[[nodiscard]] bool hasRoomForCopy(const QString& store, const QString& folder);

} // namespace pontrel
