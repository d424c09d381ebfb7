#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace pontrel::test {

/// The ways in which the program runs a text.
enum class Way { Execute, Select, Open, Find };

/// A form that a text may repeat as often as it likes.
struct Chain {
    const char* title;
    std::function<QString(int)> text; ///< With the form so many times.
    Way way = Way::Select;
    bool allowed = true;  ///< A few times over.
    bool deepens = false; ///< Each time makes the statement deeper, so that a long chain is refused.
};

/// Chains of every kind of form that the language has.
[[nodiscard]] std::vector<Chain> allChains();

/// What it costs to make a statement ready or, for Way::Find, a condition on employees: the expressions
/// written and the characters that the engine is given. Nothing where the text is refused.
[[nodiscard]] std::optional<std::size_t> costOf(const QString& text, Way way);

/// The most that a text may cost, which grows with it and no faster. The constant part is a table's columns.
[[nodiscard]] inline std::size_t mostCost(const QString& text) {
    return static_cast<std::size_t>(text.size()) * 100 + 10'000;
}

} // namespace pontrel::test
