#pragma once

struct sqlite3;

namespace pontrel {

/// Gives a connection the functions that written statements call. Throws RunTimeError.
void registerSqlFunctions(sqlite3* handle);

/// A function that fails reports this text followed by the number of the run-time error.
inline constexpr const char* SqlErrorPrefix = "pontrel:";

} // namespace pontrel
