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

/// Days and hours as leave lengths are kept: whole days of 8 hours in front, hours in the tenths place.
[[nodiscard]] double daysAndHours(int hours);

} // namespace pontrel::demo
