#pragma once

#include "store/RunTimeError.h"

#include <utility>

namespace pontrel::test {

/// The number of the run-time error that the routine ends in; 0 where it ends in none.
template<typename Routine>
int errorOf(Routine&& routine) {
    try {
        (void)std::forward<Routine>(routine)();
    } catch (const RunTimeError& failure) {
        return failure.number();
    }
    return 0;
}

} // namespace pontrel::test
