#pragma once

#include "store/statement/Lexer.h"
#include "store/statement/Tree.h"

namespace pontrel::statement {

/// Reads one statement. Throws a syntax error (3075) for any form that is not known and for a second
/// statement.
[[nodiscard]] Statement parseStatement(const Lexed& lexed);

/// Reads a condition alone, as FindFirst takes it.
[[nodiscard]] ExpressionPtr parseCondition(const Lexed& lexed);

} // namespace pontrel::statement
