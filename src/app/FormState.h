#pragma once

namespace pontrel {

class FocusWatch;

/// What the controls of a window share, whatever tab they stand on.
struct FormState {
    FocusWatch& watch;
    bool updating = false; ///< A date pair is writing from its one control into the other.
    int mark = 0; ///< What has just been typed wrong: the number of a code box or date pair, 0 for none.
};

} // namespace pontrel
