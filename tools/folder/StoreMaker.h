#pragma once

#include <QString>

#include <functional>

namespace pontrel {

/// The store of a new program folder.
struct StoreWish {
    QString folder; ///< The program folder; an absolute path.
    QString account;
    QString password;
    QString company;   ///< Name of the organisation; an empty one leaves what the store begins with.
    bool demo = false; ///< With the example organisation, and its punch files below the folder.
};

/// Makes the store of a program folder, and its folders where they are missing. It is made in a folder of its
/// own first and moved to its place when it is whole, so that a failure leaves nothing that looks like a
/// store; what a killed run has left is cleared away. The routine is called right before the move. Throws
/// Refusal, without having changed anything where a store is there, or RunTimeError.
void makeProgramStore(const StoreWish& wish, const std::function<void()>& beforePlacing = {});

} // namespace pontrel
