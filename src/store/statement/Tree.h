#pragma once

#include "store/Schema.h"

#include <QString>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace pontrel::statement {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

enum class Constant { Null, True, False };

enum class Operator {
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Add,
    Subtract,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Join,
    And,
    Or
};

struct LiteralNode {
    int index = 0;
    ColumnType type = ColumnType::Unknown;
};
struct ColumnNode {
    QString table; ///< Empty where the name stands alone.
    QString name;
};
struct NotNode {
    ExpressionPtr operand;
};
struct NegateNode {
    ExpressionPtr operand;
};
struct BinaryNode {
    Operator op;
    ExpressionPtr left;
    ExpressionPtr right;
};
struct BetweenNode {
    ExpressionPtr operand;
    ExpressionPtr low;
    ExpressionPtr high;
    bool negated = false;
};
struct LikeNode {
    ExpressionPtr operand;
    ExpressionPtr pattern;
    bool negated = false;
};
struct NullTestNode {
    ExpressionPtr operand;
    bool negated = false;
};
/// Whether a condition is true, a null being none that is; of selection formulas alone.
struct TruthNode {
    ExpressionPtr operand;
    bool negated = false;
};
/// The month of a date, from 1 to 12; of selection formulas alone.
struct MonthNode {
    ExpressionPtr operand;
};
struct FunctionNode {
    QString name; ///< In lower case.
    std::vector<ExpressionPtr> arguments;
    bool star = false;
};

struct Expression {
    std::variant<LiteralNode, Constant, ColumnNode, NotNode, NegateNode, BinaryNode, BetweenNode, LikeNode,
                 NullTestNode, TruthNode, MonthNode, FunctionNode>
        node;
};

struct SelectItem {
    ExpressionPtr expression; ///< Null for a star.
    QString starTable;        ///< "T" of "T.*"; empty for a bare star.
    QString alias;
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

/// Tables joined by commas or inner joins; what stands behind ON is part of the conditions.
struct From {
    std::vector<QString> tables;
    std::vector<ExpressionPtr> conditions;
};

struct Select {
    bool distinct = false;
    std::optional<int> top; ///< Place of the literal that counts the rows.
    std::vector<SelectItem> items;
    From from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    std::vector<OrderItem> orderBy;
};

struct Insert {
    QString table;
    std::vector<QString> columns;      ///< Empty: all, by position.
    std::vector<ExpressionPtr> values; ///< Of a row of values; empty where a selection gives the rows.
    std::unique_ptr<Select> select;
};

struct Assignment {
    ColumnNode column;
    ExpressionPtr value;
};

struct Update {
    std::vector<QString> tables; ///< One or two.
    std::vector<Assignment> assignments;
    ExpressionPtr where;
};

struct Delete {
    QString table;
    ExpressionPtr where;
};

using Statement = std::variant<Select, Insert, Update, Delete>;

} // namespace pontrel::statement
