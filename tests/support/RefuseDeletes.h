#pragma once

#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <string>

namespace pontrel::test {

/// Makes the store refuse that a row of the table be deleted.
inline void refuseDeletes(const TestStore& store, const std::string& table) {
    SQLite::Database(store.path().toStdString(), SQLite::OPEN_READWRITE)
        .exec("CREATE TRIGGER Keep BEFORE DELETE ON " + table + " BEGIN SELECT RAISE(ABORT, 'kept'); END");
}

} // namespace pontrel::test
