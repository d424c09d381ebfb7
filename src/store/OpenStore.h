#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <QString>

#include <memory>

namespace pontrel {

/// Opens a store of the program for reading and writing, brought to the present version and set up for the
/// program's statements. Throws RunTimeError for a file that is missing, unreadable or none of the program's,
/// and what the engine throws.
[[nodiscard]] std::unique_ptr<SQLite::Database> openStore(const QString& path);

/// The same for a connection over which nothing is changed once it is open.
[[nodiscard]] std::unique_ptr<SQLite::Database> openStoreToRead(const QString& path);

} // namespace pontrel
