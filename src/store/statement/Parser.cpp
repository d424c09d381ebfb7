#include "store/statement/Parser.h"

#include "store/RunTimeError.h"

#include <algorithm>
#include <array>

namespace pontrel::statement {

namespace {

/// A statement's operators, tests and calls, all together. Each makes the tree deeper by one at most, so that
/// this bounds its depth as well, which the engine beneath bounds likewise.
constexpr int MostOperators = 900;
/// Brackets within brackets, which use up the stack whatever stands in them.
constexpr int MostBrackets = 200;

template<typename Node>
ExpressionPtr make(Node node) {
    return std::make_unique<Expression>(Expression{std::move(node)});
}

/// Words that end an expression or begin a clause and so are never a column's name without brackets.
bool isReserved(QStringView name) {
    static constexpr std::array words{u"select",   u"from",   u"where",   u"group",  u"order",  u"by",
                                      u"and",      u"or",     u"not",     u"mod",    u"like",   u"as",
                                      u"set",      u"values", u"into",    u"inner",  u"join",   u"on",
                                      u"desc",     u"asc",    u"between", u"insert", u"update", u"delete",
                                      u"distinct", u"is",     u"having",  u"union"};
    for (const char16_t* word : words)
        if (name.compare(QStringView(word), Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

/// A descent over the tokens, one routine a rule; conditions bind as usual: comparison, not, and, or.
class Parser {
  public:
    explicit Parser(const Lexed& lexed) : lexed_(lexed) {}

    Statement statement() {
        Statement result = body();
        takeSymbol(u";");
        expectEnd();
        return result;
    }

    ExpressionPtr condition() {
        ExpressionPtr result = expression();
        expectEnd();
        return result;
    }

  private:
    // Tokens
    // -----------------------------------------------------------------------------------------------------
    [[nodiscard]] const Token& peek(std::size_t ahead = 0) const {
        return lexed_.tokens[std::min(position_ + ahead, lexed_.tokens.size() - 1)];
    }
    const Token& next() {
        const Token& token = peek();
        ++position_;
        return token;
    }
    [[nodiscard]] bool isWord(QStringView word, std::size_t ahead = 0) const {
        return peek(ahead).kind == TokenKind::Name &&
               peek(ahead).text.compare(word, Qt::CaseInsensitive) == 0;
    }
    [[nodiscard]] bool isSymbol(QStringView symbol, std::size_t ahead = 0) const {
        return peek(ahead).kind == TokenKind::Symbol && peek(ahead).text == symbol;
    }
    bool takeWord(QStringView word) { return isWord(word) && (++position_, true); }
    bool takeSymbol(QStringView symbol) { return isSymbol(symbol) && (++position_, true); }
    void expectWord(QStringView word) {
        if (!takeWord(word))
            fail(word);
    }
    void expectSymbol(QStringView symbol) {
        if (!takeSymbol(symbol))
            fail(symbol);
    }
    void expectEnd() {
        if (peek().kind != TokenKind::End)
            fail(u"the end");
    }
    [[noreturn]] void fail(QStringView expected) const {
        throw runTimeError(error::Syntax,
                           QStringLiteral("%1 expected, not \"%2\"").arg(expected, peek().text));
    }
    QString name() {
        const Token& token = peek();
        const bool plain = token.kind == TokenKind::Name && !isReserved(token.text);
        if (!plain && token.kind != TokenKind::Bracketed)
            fail(u"a name");
        ++position_;
        return token.text.toString();
    }

    // Statements
    // -------------------------------------------------------------------------------------------------
    Statement body() {
        if (takeWord(u"select"))
            return select();
        if (takeWord(u"insert"))
            return insert();
        if (takeWord(u"update"))
            return update();
        if (takeWord(u"delete"))
            return deletion();
        fail(u"a statement");
    }

    Select select() {
        Select result;
        result.distinct = takeWord(u"distinct");
        if (isWord(u"top") && peek(1).kind == TokenKind::Literal) {
            ++position_;
            const Token& count = next();
            if (lexed_.literals[static_cast<std::size_t>(count.literal)].type() != ColumnType::Integer)
                fail(u"a number of rows");
            result.top = count.literal;
        }
        do
            result.items.push_back(selectItem());
        while (takeSymbol(u","));
        expectWord(u"from");
        from(result.from);
        if (takeWord(u"where"))
            result.where = expression();
        if (takeWord(u"group")) {
            expectWord(u"by");
            do
                result.groupBy.push_back(expression());
            while (takeSymbol(u","));
        }
        if (takeWord(u"order"))
            orderBy(result);
        return result;
    }

    void orderBy(Select& select) {
        expectWord(u"by");
        do {
            OrderItem item{expression(), false};
            item.descending = takeWord(u"desc");
            if (!item.descending)
                takeWord(u"asc");
            select.orderBy.push_back(std::move(item));
        } while (takeSymbol(u","));
    }

    SelectItem selectItem() {
        SelectItem item;
        if (takeSymbol(u"*"))
            return item;
        if (isSymbol(u".", 1) && isSymbol(u"*", 2)) {
            item.starTable = name();
            position_ += 2;
            return item;
        }
        item.expression = expression();
        if (takeWord(u"as"))
            item.alias = name();
        return item;
    }

    void from(From& result) {
        do
            joined(result);
        while (takeSymbol(u","));
    }

    void joined(From& result) {
        const Depth depth(*this);
        if (takeSymbol(u"(")) {
            joined(result);
            expectSymbol(u")");
        } else {
            result.tables.push_back(name());
        }
        while (takeWord(u"inner")) {
            expectWord(u"join");
            if (takeSymbol(u"(")) {
                joined(result);
                expectSymbol(u")");
            } else {
                result.tables.push_back(name());
            }
            expectWord(u"on");
            result.conditions.push_back(expression());
        }
    }

    Insert insert() {
        expectWord(u"into");
        Insert result;
        result.table = name();
        if (takeSymbol(u"(")) {
            do
                result.columns.push_back(name());
            while (takeSymbol(u","));
            expectSymbol(u")");
        }
        if (takeWord(u"values")) {
            expectSymbol(u"(");
            do
                result.values.push_back(expression());
            while (takeSymbol(u","));
            expectSymbol(u")");
        } else {
            expectWord(u"select");
            result.select = std::make_unique<Select>(select());
        }
        return result;
    }

    Update update() {
        Update result;
        do
            result.tables.push_back(name());
        while (takeSymbol(u","));
        if (result.tables.size() > 2)
            fail(u"one table or two");
        expectWord(u"set");
        do {
            Assignment assignment{columnName(), nullptr};
            expectSymbol(u"=");
            assignment.value = additive();
            result.assignments.push_back(std::move(assignment));
        } while (takeSymbol(u","));
        if (takeWord(u"where"))
            result.where = expression();
        return result;
    }

    Delete deletion() {
        Delete result;
        if (!takeSymbol(u"*") && isSymbol(u".", 1) && isSymbol(u"*", 2)) {
            result.table = name();
            position_ += 2;
        }
        expectWord(u"from");
        const QString table = name();
        if (!result.table.isEmpty() && table.compare(result.table, Qt::CaseInsensitive) != 0)
            fail(u"the same table");
        result.table = table;
        if (takeWord(u"where"))
            result.where = expression();
        return result;
    }

    /// A node over others. Throws beyond MostOperators: a chain becomes a tree as deep as the chain is long.
    template<typename Node>
    ExpressionPtr over(Node node) {
        if (++operators_ > MostOperators)
            throw runTimeError(error::Syntax, QStringLiteral("too many operators"));
        return make(std::move(node));
    }

    ExpressionPtr binary(Operator op, ExpressionPtr left, ExpressionPtr right) {
        return over(BinaryNode{op, std::move(left), std::move(right)});
    }

    // Expressions
    // ------------------------------------------------------------------------------------------------
    ExpressionPtr expression() {
        const Depth depth(*this);
        ExpressionPtr left = conjunction();
        while (takeWord(u"or"))
            left = binary(Operator::Or, std::move(left), conjunction());
        return left;
    }

    ExpressionPtr conjunction() {
        ExpressionPtr left = negation();
        while (takeWord(u"and"))
            left = binary(Operator::And, std::move(left), negation());
        return left;
    }

    ExpressionPtr negation() {
        bool negated = false;
        while (takeWord(u"not"))
            negated = !negated;
        ExpressionPtr operand = comparison();
        return negated ? over(NotNode{std::move(operand)}) : std::move(operand);
    }

    ExpressionPtr comparison() {
        ExpressionPtr left = additive();
        for (;;) {
            if (const auto op = comparisonOperator())
                left = binary(*op, std::move(left), additive());
            else if (isWord(u"is") || isWord(u"between") || isWord(u"like") ||
                     (isWord(u"not") && (isWord(u"between", 1) || isWord(u"like", 1))))
                left = wordComparison(std::move(left));
            else
                return left;
        }
    }

    ExpressionPtr wordComparison(ExpressionPtr left) {
        if (takeWord(u"is")) {
            const bool negated = takeWord(u"not");
            expectWord(u"null");
            return over(NullTestNode{std::move(left), negated});
        }
        const bool negated = takeWord(u"not");
        if (takeWord(u"like"))
            return over(LikeNode{std::move(left), additive(), negated});
        expectWord(u"between");
        ExpressionPtr low = additive();
        expectWord(u"and");
        return over(BetweenNode{std::move(left), std::move(low), additive(), negated});
    }

    std::optional<Operator> comparisonOperator() {
        static constexpr std::array<std::pair<QStringView, Operator>, 6> operators{
            {{u"=", Operator::Equal},
             {u"<>", Operator::NotEqual},
             {u"<=", Operator::LessOrEqual},
             {u">=", Operator::GreaterOrEqual},
             {u"<", Operator::Less},
             {u">", Operator::Greater}}};
        for (const auto& [symbol, op] : operators)
            if (takeSymbol(symbol))
                return op;
        return std::nullopt;
    }

    /// Joining binds weaker than sums, sums weaker than remainders, these weaker than whole division, then
    /// products.
    ExpressionPtr additive() {
        ExpressionPtr left = sum();
        while (takeSymbol(u"&"))
            left = binary(Operator::Join, std::move(left), sum());
        return left;
    }

    ExpressionPtr sum() {
        ExpressionPtr left = remainder();
        for (;;) {
            if (takeSymbol(u"+"))
                left = binary(Operator::Add, std::move(left), remainder());
            else if (takeSymbol(u"-"))
                left = binary(Operator::Subtract, std::move(left), remainder());
            else
                return left;
        }
    }

    ExpressionPtr remainder() {
        ExpressionPtr left = wholeDivision();
        while (takeWord(u"mod"))
            left = binary(Operator::Modulo, std::move(left), wholeDivision());
        return left;
    }

    ExpressionPtr wholeDivision() {
        ExpressionPtr left = product();
        while (takeSymbol(u"\\"))
            left = binary(Operator::IntegerDivide, std::move(left), product());
        return left;
    }

    ExpressionPtr product() {
        ExpressionPtr left = unary();
        for (;;) {
            if (takeSymbol(u"*"))
                left = binary(Operator::Multiply, std::move(left), unary());
            else if (takeSymbol(u"/"))
                left = binary(Operator::Divide, std::move(left), unary());
            else
                return left;
        }
    }

    ExpressionPtr unary() {
        bool negated = false;
        while (isSymbol(u"-") || isSymbol(u"+"))
            negated = (next().text == u"-") != negated;
        ExpressionPtr operand = primary();
        return negated ? over(NegateNode{std::move(operand)}) : std::move(operand);
    }

    ExpressionPtr primary() {
        const Token& token = peek();
        if (token.kind == TokenKind::Literal) {
            ++position_;
            return make(
                LiteralNode{token.literal, lexed_.literals[static_cast<std::size_t>(token.literal)].type()});
        }
        if (takeSymbol(u"(")) {
            ExpressionPtr inner = expression();
            expectSymbol(u")");
            return inner;
        }
        if (token.kind == TokenKind::Name) {
            if (isSymbol(u"(", 1))
                return function();
            if (takeWord(u"null"))
                return make(Constant::Null);
            if (takeWord(u"true"))
                return make(Constant::True);
            if (takeWord(u"false"))
                return make(Constant::False);
        }
        return make(columnName());
    }

    ColumnNode columnName() {
        ColumnNode column{{}, name()};
        if (takeSymbol(u".")) {
            column.table = column.name;
            column.name = name();
        }
        return column;
    }

    ExpressionPtr function() {
        FunctionNode node{name().toLower(), {}, false};
        expectSymbol(u"(");
        node.star = takeSymbol(u"*");
        if (!node.star && !isSymbol(u")")) {
            do
                node.arguments.push_back(expression());
            while (takeSymbol(u","));
        }
        expectSymbol(u")");
        return over(std::move(node));
    }

    /// Bounds the nesting of parentheses, so that no text can exhaust the stack.
    class Depth {
      public:
        explicit Depth(Parser& parser) : parser_(parser) {
            if (++parser_.depth_ > MostBrackets)
                throw runTimeError(error::Syntax, QStringLiteral("too many parentheses"));
        }
        ~Depth() { --parser_.depth_; }
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;

      private:
        Parser& parser_;
    };

    const Lexed& lexed_;
    std::size_t position_ = 0;
    int depth_ = 0;
    int operators_ = 0;
};

} // namespace

Statement parseStatement(const Lexed& lexed) {
    return Parser(lexed).statement();
}

ExpressionPtr parseCondition(const Lexed& lexed) {
    return Parser(lexed).condition();
}

} // namespace pontrel::statement
