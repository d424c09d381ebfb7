#pragma once

#include "store/RunTimeError.h"

#include <SQLiteCpp/Exception.h>

namespace pontrel {

/// What the program tells of a failure of the engine at this statement.
[[nodiscard]] RunTimeError engineError(const SQLite::Exception& failure, const QString& statement);

/// The error of a stage that could not be committed, or that the engine has rolled back.
[[nodiscard]] RunTimeError stageLost(const QString& technical);

} // namespace pontrel
