#pragma once

#include "store/Database.h"
#include "store/Value.h"

#include <QString>

#include <initializer_list>
#include <utility>

namespace pontrel::demo {

/// Inserts one row by a statement of the program's own language. Null values are left out. Texts must not
/// hold an apostrophe. Throws RunTimeError; also where the store drops the row, since the rows of the example
/// are all meant.
void insertRow(Database& database, const QString& table,
               std::initializer_list<std::pair<const char16_t*, Value>> columns);

/// Adds one row as the record pages do, by a recordset. Null values are left out. Throws RunTimeError.
void saveRow(Database& database, const QString& table,
             std::initializer_list<std::pair<const char16_t*, Value>> columns);

} // namespace pontrel::demo
