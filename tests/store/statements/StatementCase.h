#pragma once

#include <QStringView>

#include <vector>

namespace pontrel::test {

/// What a statement is expected to do.
enum class Outcome { Rows, Change, Error };

inline constexpr int anyNumber = -1; ///< The number of changed rows, or of the error, is not looked at.

/// One statement with what it must do to the fixture store. Texts are views of literals.
struct StatementCase {
    QStringView title; ///< Reads as a sentence; unique among all tables.
    QStringView text;  ///< The statement as the logic joins it.
    Outcome outcome = Outcome::Rows;
    int number = anyNumber; ///< Rows changed, or the number of the run-time error.
    QStringView lines; ///< Expected rows, or differences of the whole store, one a line (see Rendering.h).
    QStringView names; ///< Expected columns, separated by "|"; empty where they are not looked at.
    QStringView setup; ///< Statements, one a line, that change the fixture beforehand.

    /// The same case with the names that its columns must have, in any case of letters.
    [[nodiscard]] constexpr StatementCase named(QStringView columns) const {
        StatementCase copy = *this;
        copy.names = columns;
        return copy;
    }

    /// The same case on a store that these statements, one a line, have changed beforehand.
    [[nodiscard]] constexpr StatementCase after(QStringView statements) const {
        StatementCase copy = *this;
        copy.setup = statements;
        return copy;
    }
};

/// A selection that returns these rows in this order.
[[nodiscard]] constexpr StatementCase selects(QStringView title, QStringView text, QStringView rows) {
    return {title, text, Outcome::Rows, anyNumber, rows, {}, {}};
}

/// A statement that changes so many rows and leaves these differences in the whole store.
[[nodiscard]] constexpr StatementCase changes(QStringView title, QStringView text, int rowsChanged,
                                              QStringView differences) {
    return {title, text, Outcome::Change, rowsChanged, differences, {}, {}};
}

/// A statement that ends in this run-time error and leaves the store as it was.
[[nodiscard]] constexpr StatementCase fails(QStringView title, QStringView text, int errorNumber) {
    return {title, text, Outcome::Error, errorNumber, {}, {}, {}};
}

using StatementTable = std::vector<StatementCase>;

// The statements of the program by subject.
[[nodiscard]] StatementTable importStatements();
[[nodiscard]] StatementTable slotLoopStatements();
[[nodiscard]] StatementTable coverStatements();
[[nodiscard]] StatementTable exceptionStatements();
[[nodiscard]] StatementTable attendanceScreenStatements();
[[nodiscard]] StatementTable rosterStatements();
[[nodiscard]] StatementTable leaveStatements();
[[nodiscard]] StatementTable leaveQueryStatements();
[[nodiscard]] StatementTable writeOffStatements();
[[nodiscard]] StatementTable overtimeStatements();
[[nodiscard]] StatementTable reportStatements();
[[nodiscard]] StatementTable masterStatements();
[[nodiscard]] StatementTable lookupStatements();

// The turns of the statement language by form.
[[nodiscard]] StatementTable twoTableStatements();
[[nodiscard]] StatementTable nullStatements();
[[nodiscard]] StatementTable booleanStatements();
[[nodiscard]] StatementTable patternStatements();
[[nodiscard]] StatementTable dateLiteralStatements();
[[nodiscard]] StatementTable conversionStatements();
[[nodiscard]] StatementTable arithmeticStatements();
[[nodiscard]] StatementTable formatStatements();
[[nodiscard]] StatementTable orderStatements();
[[nodiscard]] StatementTable textStatements();
[[nodiscard]] StatementTable keyStatements();
[[nodiscard]] StatementTable refusedStatements();

/// A search for the first row that meets a condition.
struct FindCase {
    QStringView title;
    QStringView source; ///< Table or selection that the set is opened on.
    QStringView condition;
    QStringView found; ///< Two columns of the row found, as rendered; empty for no match.
    int number = 0;    ///< Number of the run-time error; 0 where there is none.
};

[[nodiscard]] std::vector<FindCase> findCases();

/// All tables with the name of each.
struct NamedTable {
    const char* subject;
    StatementTable table;
};

[[nodiscard]] const std::vector<NamedTable>& statementTables();

} // namespace pontrel::test
