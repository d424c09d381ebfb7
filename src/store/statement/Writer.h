#pragma once

#include "store/Schema.h"
#include "store/statement/Tree.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace pontrel::statement {

/// How a literal is bound: as a value for a column of the type, where what cannot be read becomes null, or
/// for a comparison with one, which keeps a date's time of day.
struct LiteralForm {
    ColumnType type = ColumnType::Unknown;
    bool compared = false;
};

/// What is noted while a statement is written.
struct Notes {
    std::vector<LiteralForm> literals;
    std::size_t expressions = 0; ///< Expressions written, which is what the writing costs.
};

/// A selection in the engine's language. Parameters ?1 to ?n are the statement's literals in their order.
struct SelectPlan {
    QByteArray sql;
    QStringList columns;
    std::vector<ColumnType> types;

    /// Of a keyset: the table that row operations act on, and for each column of the set its place in that
    /// table, -1 for one that cannot be edited. Null for a snapshot.
    const Table* table = nullptr;
    std::vector<int> tableColumns;
    QByteArray identitySql;         ///< Identities in order, each followed by the riding columns.
    std::vector<int> ridingColumns; ///< Columns of the set that are read with the identities.
    QByteArray rowSql; ///< All columns of one row, nulls in place of riding ones; the identity is ?(n+1).
};

/// A table of which rows are deleted, where no columns are named, or these columns set.
struct Touched {
    const Table* table;
    QStringList columns;
};

/// An update, insert or delete. With twoTables, sql gathers the rows to change of two joined tables: the
/// identities of both and then the new values; first and second, each empty where its table has nothing to
/// take, write them with the identity as the last parameter.
struct ChangePlan {
    QByteArray sql;
    int firstValues = 0; ///< Number of new values for the first table; those of the second follow.
    QByteArray first;
    QByteArray second;
    bool twoTables = false;
    std::vector<Touched> touched; ///< Empty of an insert.
};

/// A statement ready for the engine.
struct Plan : Notes {
    std::optional<SelectPlan> select;
    std::optional<ChangePlan> change;
};

/// Resolves names against the store's tables and writes the statement down, in work and length that grow as
/// the text does. Throws 3078 for an unknown table, 3061 for an unknown or ambiguous column or function, 3075
/// for a form that means nothing and for one that is too deep.
[[nodiscard]] Plan write(const Statement& statement, std::size_t literals);

/// A condition made ready: parameters ?1 to ?n are its literals.
struct ConditionPlan : Notes {
    QByteArray sql;
};

/// Writes a condition over the rows of a table; sql selects the identities that meet it. Throws as write()
/// does.
[[nodiscard]] ConditionPlan writeTableCondition(const Expression& condition, std::size_t literals,
                                                const Table& table);

/// Writes a condition over several tables, which the selection around it calls by their own names; sql is the
/// condition alone. Throws as write() does.
[[nodiscard]] ConditionPlan writeJoinCondition(const Expression& condition, std::size_t literals,
                                               const std::vector<const Table*>& tables);

/// Writes a condition over one row with those columns, whose values are the parameters ?(n+1) and on; sql
/// selects 1 where the row meets it. Throws as write() does.
[[nodiscard]] ConditionPlan writeRowCondition(const Expression& condition, std::size_t literals,
                                              const QStringList& columns,
                                              const std::vector<ColumnType>& types);

} // namespace pontrel::statement
