#include "store/statement/ExpressionWriter.h"

#include "store/RunTimeError.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace pontrel::statement {

namespace {

/// How deep the written text may nest. The engine has a bound of its own behind this one.
constexpr int MostDepth = 1000;
/// How often the names of a list may stand for their expressions, all together: what is written stays within
/// as many times the text.
constexpr int MostAliasUses = 100;

template<typename... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template<typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

bool isNullConstant(const Expression& expression) {
    const auto* constant = std::get_if<Constant>(&expression.node);
    return constant != nullptr && *constant == Constant::Null;
}

bool isMoment(ColumnType type) {
    return type == ColumnType::Date || type == ColumnType::Time || type == ColumnType::DateTime;
}

const char* symbol(Operator op) {
    switch (op) {
    case Operator::Equal:
        return " = ";
    case Operator::NotEqual:
        return " <> ";
    case Operator::Less:
        return " < ";
    case Operator::LessOrEqual:
        return " <= ";
    case Operator::Greater:
        return " > ";
    case Operator::GreaterOrEqual:
        return " >= ";
    case Operator::Add:
        return " + ";
    case Operator::Subtract:
        return " - ";
    case Operator::Multiply:
        return " * ";
    case Operator::And:
        return " AND ";
    default:
        return " OR ";
    }
}

QByteArray call(const char* function, const QByteArray& arguments) {
    return QByteArray(function) + "(" + arguments + ")";
}

/// Whether the pattern is a literal or joined of literals, so that it is the same for all rows.
bool isLiteralText(const Expression& expression) {
    if (const auto* join = std::get_if<BinaryNode>(&expression.node))
        return join->op == Operator::Join && isLiteralText(*join->left) && isLiteralText(*join->right);
    return std::holds_alternative<LiteralNode>(expression.node);
}

QByteArray asType(const QByteArray& sql, ColumnType type) {
    return call(sqlname::Convert, sql + ", " + QByteArray::number(static_cast<int>(type)));
}

QByteArray orFalse(const QByteArray& sql) {
    return call("ifnull", sql + ", 0");
}

/// What is compared with a boolean is read as one: a number other than 0 is true.
Written asBoolean(Written written) {
    if (written.type == ColumnType::Boolean)
        return written;
    return {asType(written.sql, ColumnType::Boolean), ColumnType::Boolean};
}

} // namespace

QByteArray quotedName(const QString& name) {
    return '"' + name.toUtf8() + '"';
}

void ExpressionWriter::addAlias(const QString& alias, const Expression* expression) {
    aliases_.insert(alias.toLower(), expression);
}

ExpressionWriter::Found ExpressionWriter::find(const ColumnNode& name) const {
    Found found{nullptr, -1};
    bool tableKnown = name.table.isEmpty();
    for (const Source& source : sources_) {
        if (!name.table.isEmpty() && name.table.compare(source.table->name, Qt::CaseInsensitive) != 0)
            continue;
        tableKnown = true;
        const int column = source.table->indexOf(name.name);
        if (column < 0)
            continue;
        if (found.source != nullptr)
            throw runTimeError(error::UnknownName, QStringLiteral("%1 is in two tables").arg(name.name));
        found = {&source, column};
    }
    if (!tableKnown)
        throw runTimeError(error::UnknownName, name.table + u'.' + name.name);
    return found;
}

Written ExpressionWriter::write(const Expression& expression) {
    const QScopedValueRollback deeper(depth_, depth_ + 1);
    if (depth_ > MostDepth)
        throw runTimeError(error::Syntax, QStringLiteral("too deep an expression"));
    ++notes_.expressions;
    return writeNode(expression);
}

Written ExpressionWriter::writeNode(const Expression& expression) {
    return std::visit(
        Overloaded{
            [&](const LiteralNode& node) { return literal(node, {}); },
            [&](Constant constant) {
                if (constant == Constant::Null)
                    return Written{"NULL", ColumnType::Unknown};
                return Written{constant == Constant::True ? "1" : "0", ColumnType::Boolean};
            },
            [&](const ColumnNode& node) { return column(node); },
            [&](const NotNode& node) {
                return Written{"(NOT " + writeCondition(*node.operand) + ")", ColumnType::Boolean};
            },
            [&](const NegateNode& node) {
                const Written operand = number(*node.operand);
                return Written{"(-" + operand.sql + ")", operand.type};
            },
            [&](const BinaryNode& node) { return binary(node); },
            [&](const BetweenNode& node) { return between(node); },
            [&](const LikeNode& node) { return like(node); },
            [&](const NullTestNode& node) {
                return Written{"(" + write(*node.operand).sql +
                                   (node.negated ? " IS NOT NULL)" : " IS NULL)"),
                               ColumnType::Boolean};
            },
            [&](const TruthNode& node) {
                return Written{"(" + write(*node.operand).sql +
                                   (node.negated ? " IS NOT TRUE)" : " IS TRUE)"),
                               ColumnType::Boolean};
            },
            [&](const MonthNode& node) {
                return Written{"CAST(substr(" + write(*node.operand).sql + ", 6, 2) AS INTEGER)",
                               ColumnType::Integer};
            },
            [&](const FunctionNode& node) { return function(node); },
        },
        expression.node);
}

QByteArray ExpressionWriter::writeFor(const Expression& expression, ColumnType type) {
    const auto* node = std::get_if<LiteralNode>(&expression.node);
    if (node == nullptr)
        return isNullConstant(expression) && type != ColumnType::Boolean ? QByteArray("NULL")
                                                                         : converted(write(expression), type);
    const QByteArray bound = literal(*node, {type, false}).sql;
    return type == ColumnType::Boolean ? orFalse(bound) : bound;
}

QByteArray ExpressionWriter::converted(const Written& written, ColumnType type) {
    const QByteArray sql = written.type == type ? written.sql : asType(written.sql, type);
    return type == ColumnType::Boolean && !(written.type == type && written.column) ? orFalse(sql) : sql;
}

QByteArray ExpressionWriter::writeCondition(const Expression& expression) {
    return "(" + write(expression).sql + ")";
}

Written ExpressionWriter::literal(const LiteralNode& node, LiteralForm form) {
    notes_.literals.at(static_cast<std::size_t>(node.index)) = form;
    const ColumnType type = form.type == ColumnType::Unknown ? node.type : form.type;
    return {"?" + QByteArray::number(node.index + 1), type};
}

Written ExpressionWriter::column(const ColumnNode& node) {
    const Found found = find(node);
    if (found.source != nullptr) {
        const Column& column = found.source->table->columns[static_cast<std::size_t>(found.column)];
        return {found.source->name + "." + quotedName(column.name), column.type, true};
    }
    return alias(node);
}

Written ExpressionWriter::alias(const ColumnNode& node) {
    const Expression* expression = node.table.isEmpty() ? aliases_.value(node.name.toLower()) : nullptr;
    // A name does not stand for itself, neither straight nor through another.
    if (expression == nullptr || aliasesAtWork_.contains(expression))
        throw runTimeError(error::UnknownName, node.name);
    if (++aliasUses_ > MostAliasUses)
        throw runTimeError(error::Syntax, QStringLiteral("names that stand for too much"));
    aliasesAtWork_.append(expression);
    Written written = write(*expression);
    aliasesAtWork_.removeLast();
    return written;
}

Written ExpressionWriter::binary(const BinaryNode& node) {
    switch (node.op) {
    case Operator::And:
    case Operator::Or:
        return chain(node);
    case Operator::Join:
        return {"(" + text(write(*node.left)) + " || " + text(write(*node.right)) + ")", ColumnType::Text};
    case Operator::Add:
    case Operator::Subtract:
    case Operator::Multiply:
    case Operator::Divide:
    case Operator::IntegerDivide:
    case Operator::Modulo:
        return arithmetic(node);
    default:
        return comparison(node);
    }
}

/// A chain of one word is written without parentheses in each other: the engine reads a hundred at most.
Written ExpressionWriter::chain(const BinaryNode& node) {
    std::vector<const Expression*> parts{node.right.get()};
    const Expression* left = node.left.get();
    for (const auto* link = std::get_if<BinaryNode>(&left->node); link != nullptr && link->op == node.op;
         link = std::get_if<BinaryNode>(&left->node)) {
        ++notes_.expressions;
        parts.push_back(link->right.get());
        left = link->left.get();
    }
    QByteArray sql = write(*left).sql;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        sql += symbol(node.op) + write(**part).sql;
    return {"(" + sql + ")", ColumnType::Boolean};
}

Written ExpressionWriter::comparison(const BinaryNode& node) {
    if (isNullConstant(*node.right))
        return nullComparison(node.op, *node.left);
    if (isNullConstant(*node.left))
        return nullComparison(node.op, *node.right);
    const auto [left, right] = comparedPair(*node.left, *node.right);
    const bool foldCase = left.type == ColumnType::Text && !left.column && !right.column;
    return {"(" + left.sql + (foldCase ? " COLLATE NOCASE" : "") + symbol(node.op) + right.sql + ")",
            ColumnType::Boolean};
}

Written ExpressionWriter::nullComparison(Operator op, const Expression& operand) {
    if (op != Operator::Equal && op != Operator::NotEqual)
        return {"NULL", ColumnType::Boolean};
    return {"(" + write(operand).sql + (op == Operator::Equal ? " IS NULL)" : " IS NOT NULL)"),
            ColumnType::Boolean};
}

Written ExpressionWriter::arithmetic(const BinaryNode& node) {
    const Written left = number(*node.left);
    const Written right = number(*node.right);
    const QByteArray both = left.sql + ", " + right.sql;
    if (node.op == Operator::Divide)
        return {call(sqlname::Divide, both), ColumnType::Real};
    if (node.op == Operator::IntegerDivide)
        return {call(sqlname::IntegerDivide, both), ColumnType::Integer};
    if (node.op == Operator::Modulo)
        return {call(sqlname::Modulo, both), ColumnType::Integer};
    const bool whole = left.type == ColumnType::Integer && right.type == ColumnType::Integer;
    return {"(" + left.sql + symbol(node.op) + right.sql + ")",
            whole ? ColumnType::Integer : ColumnType::Real};
}

Written ExpressionWriter::between(const BetweenNode& node) {
    const auto [operand, low] = comparedPair(*node.operand, *node.low);
    const bool foldCase = operand.type == ColumnType::Text && !operand.column;
    const QByteArray sql = "(" + operand.sql + (foldCase ? " COLLATE NOCASE" : "") +
                           (node.negated ? " NOT BETWEEN " : " BETWEEN ") + low.sql + " AND " +
                           compared(*node.high, operand.type).sql + ")";
    return {sql, ColumnType::Boolean};
}

/// A pattern that a table's key is to meet is also written as the range in which such keys lie, which the
/// engine searches instead of trying the pattern on every row.
Written ExpressionWriter::like(const LikeNode& node) {
    const QByteArray pattern = matched(write(*node.pattern));
    const QByteArray operand = matched(write(*node.operand));
    const QByteArray sql = call(sqlname::Like, pattern + ", " + operand);
    if (node.negated)
        return {"(NOT " + sql + ")", ColumnType::Boolean};
    if (!isLiteralText(*node.pattern) || !isWholeKey(*node.operand))
        return {sql, ColumnType::Boolean};
    return {"(" + operand + " >= " + call(sqlname::LikeFrom, pattern) + " AND " + operand + " < " +
                call(sqlname::LikeTo, pattern) + " AND " + sql + ")",
            ColumnType::Boolean};
}

bool ExpressionWriter::isWholeKey(const Expression& expression) const {
    const auto* name = std::get_if<ColumnNode>(&expression.node);
    const Found found = name == nullptr ? Found{nullptr, -1} : find(*name);
    if (found.source == nullptr)
        return false;
    const Column& column = found.source->table->columns[static_cast<std::size_t>(found.column)];
    return column.type == ColumnType::Text && found.source->table->key == QStringList{column.name};
}

Written ExpressionWriter::function(const FunctionNode& node) {
    if (node.name == QLatin1String("isnull") && node.arguments.size() == 1)
        return {"(" + write(*node.arguments[0]).sql + " IS NULL)", ColumnType::Boolean};
    if (node.name == QLatin1String("format") && node.arguments.size() == 2)
        return {call(sqlname::Format, write(*node.arguments[0]).sql + ", " + text(write(*node.arguments[1]))),
                ColumnType::Text};
    return aggregate(node);
}

Written ExpressionWriter::aggregate(const FunctionNode& node) {
    if (node.name == QLatin1String("count") && node.star)
        return {"count(*)", ColumnType::Integer};
    if (node.star || node.arguments.size() != 1)
        throw runTimeError(error::UnknownName, node.name);
    const Expression& argument = *node.arguments[0];
    if (node.name == QLatin1String("count"))
        return {"count(" + write(argument).sql + ")", ColumnType::Integer};
    if (node.name == QLatin1String("max") || node.name == QLatin1String("min")) {
        const Written written = write(argument);
        return {node.name.toLatin1() + "(" + written.sql + ")", written.type};
    }
    if (node.name == QLatin1String("sum")) {
        const Written written = number(argument);
        return {"sum(" + written.sql + ")", written.type};
    }
    throw runTimeError(error::UnknownName, node.name);
}

std::pair<Written, Written> ExpressionWriter::comparedPair(const Expression& left, const Expression& right) {
    // A literal takes the form that its counterpart asks for, so the counterpart is written first.
    if (std::holds_alternative<LiteralNode>(left.node)) {
        Written second = compared(right, ColumnType::Unknown);
        Written first = compared(left, second.type);
        return {std::move(first), std::move(second)};
    }
    Written first = write(left);
    Written second = compared(right, first.type);
    if (second.type == ColumnType::Boolean)
        first = asBoolean(std::move(first));
    return {std::move(first), std::move(second)};
}

Written ExpressionWriter::compared(const Expression& expression, ColumnType counterpart) {
    if (const auto* node = std::get_if<LiteralNode>(&expression.node)) {
        // Two literals, or one beside something untyped, meet as they are.
        const ColumnType type = counterpart == ColumnType::Unknown ? node->type : counterpart;
        return literal(*node, {type, true});
    }
    Written written = write(expression);
    return counterpart == ColumnType::Boolean ? asBoolean(std::move(written)) : written;
}

Written ExpressionWriter::number(const Expression& expression) {
    Written written = write(expression);
    if (isMoment(written.type))
        return {call(sqlname::Days, written.sql), ColumnType::Real};
    const bool numeric = written.type == ColumnType::Integer || written.type == ColumnType::Real;
    if (numeric || isNullConstant(expression))
        return written;
    return {call(sqlname::Number, written.sql), ColumnType::Real};
}

QByteArray ExpressionWriter::matched(const Written& written) {
    // A null takes part in no pattern, so only what is no text is turned into one.
    return written.type == ColumnType::Text || written.type == ColumnType::Unknown ? written.sql
                                                                                   : text(written);
}

QByteArray ExpressionWriter::text(const Written& written) {
    if (written.type == ColumnType::Text)
        return call("ifnull", written.sql + ", ''");
    return call(sqlname::Text, written.sql + ", " + QByteArray::number(static_cast<int>(written.type)));
}

} // namespace pontrel::statement
