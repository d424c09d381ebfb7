#pragma once

#include "store/RunTimeError.h"
#include "store/statements/Rendering.h"
#include "support/Builders.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <functional>
#include <vector>

namespace pontrel::test {

using namespace Qt::StringLiterals;

inline const QDate Day(2001, 3, 5);

// Values with apostrophes that would leave a statement whole: a condition that every row meets, and another
// value than the one that stands there.
inline const QString AnyRow = u"z' or '1"_s;
inline const QString OtherValue = u"0' & '1"_s;

/// What a routine of the logic did to a store: the number of its error, 0 for none, and the rows.
struct Outcome {
    int number = 0;
    QStringList differences;
};

template<typename Routine>
Outcome outcomeOf(const TestStore& store, Routine&& routine) {
    const Snapshot before(store.path());
    Outcome outcome;
    outcome.number = errorOf(routine);
    outcome.differences = Snapshot(store.path()).differencesFrom(before);
    return outcome;
}

/// A place where a stored or typed text enters a statement.
struct Place {
    const char* title;
    std::function<Outcome()> run;
    int number;
    QStringList differences; ///< What was done before the statement, and nothing else.
};

} // namespace pontrel::test
