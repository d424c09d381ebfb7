#include "rules/reports/Selection.h"

#include "rules/reports/FormulaLexer.h"
#include "store/RunTimeError.h"
#include "store/statement/Writer.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace pontrel {

namespace {

using statement::Expression;
using statement::ExpressionPtr;
using statement::Operator;
using Kind = FormulaToken::Kind;

/// How deep parentheses may stand in each other.
constexpr int MostParentheses = 100;
/// How deep the condition may nest, chains of "and" and "or" included: the engine bears 1,000.
constexpr int MostDepth = 900;
/// How many signs and values may wait for the end of what they stand in while the engine reads the condition:
/// it bears 100, those of the selection around it included.
constexpr int MostWaiting = 70;
/// As many parameters as the engine takes, with some to spare for its own.
constexpr std::size_t MostValues = 32000;

/// A part of the formula that has a value.
struct Operand {
    ExpressionPtr expression;
    ColumnType type = ColumnType::Unknown;
    int depth = 1;
    int waiting = 1;
    const Column* column = nullptr; ///< Where the part is a column alone.
    std::optional<QDate> date;      ///< Where it is a date alone.
    bool unsettled = false;         ///< It is a condition that comes to null where a null is compared.
};

template<typename Node>
ExpressionPtr made(Node node) {
    return std::make_unique<Expression>(Expression{std::move(node)});
}

/// Numbers of both kinds are alike; other types are alike with themselves alone.
ColumnType comparedType(ColumnType type) {
    return type == ColumnType::Integer ? ColumnType::Real : type;
}

class Translator {
  public:
    explicit Translator(QStringView formula) : lexer_(formula) {}

    Selection run() {
        if (lexer_.peek().kind == Kind::End)
            return {};
        const Operand whole = condition(disjunction());
        if (lexer_.peek().kind != Kind::End)
            lexer_.fail(lexer_.peek(), "more than one condition");
        selection_.condition =
            statement::writeJoinCondition(*whole.expression, selection_.values.size(), selection_.tables).sql;
        return std::move(selection_);
    }

  private:
    Operand disjunction() {
        return chain(u"or", Operator::Or, [this] { return conjunction(); });
    }
    Operand conjunction() {
        return chain(u"and", Operator::And, [this] { return negation(); });
    }

    template<typename Part>
    Operand chain(QStringView word, Operator op, Part part) {
        Operand left = part();
        // What follows in the chain waits in the parenthesis of its first part.
        for (int opened = 1; isWord(word); opened = 0) {
            left = condition(std::move(left));
            left.waiting += opened;
            lexer_.take();
            const FormulaToken place = lexer_.peek();
            Operand right = condition(part());
            left = joined(place, op, std::move(left), std::move(right));
        }
        return left;
    }

    Operand negation() {
        if (!isWord(u"not"))
            return comparison();
        const FormulaToken place = lexer_.take();
        Operand operand = condition(comparison());
        return truth(place, std::move(operand), true);
    }

    Operand comparison() {
        start_ = lexer_.peek();
        Operand left = operand();
        const std::optional<Operator> op = comparisonSign(lexer_.peek());
        if (!op)
            return left;
        const FormulaToken place = lexer_.take();
        left = settled(place, std::move(left));
        Operand right = settled(place, operand());
        if (comparedType(left.type) != comparedType(right.type))
            lexer_.fail(place, "types that are not compared", error::TypeMismatch);
        notePeriod(left, *op, right);
        ++left.waiting;
        return joined(place, *op, std::move(left), std::move(right));
    }

    Operand joined(const FormulaToken& place, Operator op, Operand left, Operand right) const {
        Operand both =
            measured(place, std::max(left.depth, right.depth) + 1, std::max(left.waiting, right.waiting + 3));
        both.expression =
            made(statement::BinaryNode{op, std::move(left.expression), std::move(right.expression)});
        both.type = ColumnType::Boolean;
        both.unsettled = true;
        return both;
    }

    /// A condition that is itself compared is true or it is not, whatever null stands in it.
    Operand settled(const FormulaToken& place, Operand operand) const {
        return operand.unsettled ? truth(place, std::move(operand), false) : std::move(operand);
    }

    Operand truth(const FormulaToken& place, Operand operand, bool negated) const {
        Operand result = measured(place, operand.depth + 1, operand.waiting + 1);
        result.expression = made(statement::TruthNode{std::move(operand.expression), negated});
        result.type = ColumnType::Boolean;
        return result;
    }

    Operand operand() {
        const FormulaToken token = lexer_.take();
        switch (token.kind) {
        case Kind::Field:
            return field(token);
        case Kind::Text:
            return literal(token, Value(token.text.toString()));
        case Kind::Number:
            return literal(token, number(token));
        case Kind::Word:
            return word(token);
        default:
            break;
        }
        if (token.text != u"(")
            lexer_.fail(token, "a value is missing");
        return inParentheses(token, [this] { return disjunction(); });
    }

    template<typename Part>
    Operand inParentheses(const FormulaToken& open, Part part) {
        if (++parentheses_ > MostParentheses)
            lexer_.fail(open, "too many parentheses in each other");
        Operand inner = part();
        --parentheses_;
        close();
        return inner;
    }

    Operand field(const FormulaToken& token) {
        const qsizetype dot = token.text.indexOf(u'.');
        const Table* table = dot < 0 ? nullptr : findTable(token.text.left(dot).trimmed());
        // Nobody prints accounts and their passwords.
        const bool closed = table != nullptr && table->name == QLatin1String("syst02");
        const int column =
            table == nullptr || closed ? -1 : table->indexOf(token.text.mid(dot + 1).trimmed());
        if (column < 0)
            lexer_.fail(token, "unknown column", error::UnknownName);
        if (std::ranges::find(selection_.tables, table) == selection_.tables.end())
            selection_.tables.push_back(table);
        const Column& found = table->columns[static_cast<std::size_t>(column)];
        Operand result = leaf(made(statement::ColumnNode{table->name, found.name}), found.type);
        result.column = &found;
        return result;
    }

    Operand literal(const FormulaToken& token, const Value& value,
                    ColumnType nullType = ColumnType::Unknown) {
        if (selection_.values.size() >= MostValues)
            lexer_.fail(token, "too many values");
        const ColumnType type = value.isNull() ? nullType : value.type();
        selection_.values.push_back(value);
        const int place = static_cast<int>(selection_.values.size()) - 1;
        return leaf(made(statement::LiteralNode{place, type}), type);
    }

    static Operand leaf(ExpressionPtr expression, ColumnType type) {
        Operand result;
        result.expression = std::move(expression);
        result.type = type;
        return result;
    }

    Value number(const FormulaToken& token) const {
        bool whole = false;
        const qlonglong integer = token.text.toLongLong(&whole);
        if (whole)
            return Value(integer);
        bool good = false;
        const double real = token.text.toDouble(&good);
        if (!good)
            lexer_.fail(token, "a number out of range");
        return Value(real);
    }

    Operand word(const FormulaToken& token) {
        if (is(token, u"true") || is(token, u"false"))
            return leaf(made(is(token, u"true") ? statement::Constant::True : statement::Constant::False),
                        ColumnType::Boolean);
        if (lexer_.peek().text != u"(" || lexer_.peek().kind != Kind::Sign)
            lexer_.fail(token, "a value is missing");
        if (!is(token, u"date") && !is(token, u"month") && !is(token, u"isnull"))
            lexer_.fail(token, "unknown function", error::UnknownName);
        const FormulaToken open = lexer_.take();
        if (is(token, u"date"))
            return date(token);
        Operand inner = settled(token, inParentheses(open, [this] { return operand(); }));
        if (is(token, u"isnull")) {
            Operand result = measured(token, inner.depth + 1, inner.waiting + 1);
            result.expression = made(statement::NullTestNode{std::move(inner.expression), false});
            result.type = ColumnType::Boolean;
            return result;
        }
        if (inner.type != ColumnType::Date && inner.type != ColumnType::DateTime)
            lexer_.fail(token, "the month of what is no date", error::TypeMismatch);
        Operand result = measured(token, inner.depth + 2, inner.waiting + 4);
        result.expression = made(statement::MonthNode{std::move(inner.expression)});
        result.type = ColumnType::Integer;
        return result;
    }

    /// Behind "date(": the numbers of a day, of which any may be missing.
    Operand date(const FormulaToken& token) {
        std::array<int, 3> numbers{};
        for (std::size_t index = 0; index < numbers.size(); ++index) {
            if (lexer_.peek().kind == Kind::Number)
                numbers.at(index) = dayNumber(lexer_.take());
            if (index + 1 < numbers.size())
                expect(u",");
        }
        close();
        const auto [year, month, day] = numbers;
        const QDate real = year >= 1 && year <= 9999 ? QDate(year, month, day) : QDate();
        Operand result = literal(token, Value(real), ColumnType::Date);
        result.date = real;
        return result;
    }

    /// A number of a date; one that no day has where it does not fit.
    [[nodiscard]] int dayNumber(const FormulaToken& token) const {
        bool whole = false;
        const int value = token.text.toInt(&whole);
        if (!whole && token.text.contains(u'.'))
            lexer_.fail(token, "a part of a date that is no whole number");
        return whole ? value : std::numeric_limits<int>::max();
    }

    /// The end of the text stands for every parenthesis that is still open. Deliberate: formulas leave some
    /// so.
    void close() {
        if (lexer_.peek().kind != Kind::End)
            expect(u")");
    }

    void expect(QStringView sign) {
        const FormulaToken token = lexer_.take();
        if (token.kind != Kind::Sign || token.text != sign)
            lexer_.fail(token, "a parenthesis or comma is missing");
    }

    Operand condition(Operand operand) const {
        if (operand.type != ColumnType::Boolean)
            lexer_.fail(start_, "a value that is no condition", error::TypeMismatch);
        return operand;
    }

    /// An operand still without its expression, which the engine bears at that cost.
    Operand measured(const FormulaToken& place, int depth, int waiting) const {
        if (depth > MostDepth || waiting > MostWaiting)
            lexer_.fail(place, "too long a chain of conditions or too many in each other");
        Operand result;
        result.depth = depth;
        result.waiting = waiting;
        return result;
    }

    void notePeriod(const Operand& left, Operator op, const Operand& right) {
        if (left.column == nullptr || left.type != ColumnType::Date || !right.date)
            return;
        if (period_ == nullptr)
            period_ = left.column;
        if (period_ != left.column)
            return;
        if ((op == Operator::GreaterOrEqual || op == Operator::Equal) && !selection_.first.isValid())
            selection_.first = *right.date;
        if ((op == Operator::LessOrEqual || op == Operator::Equal) && !selection_.last.isValid())
            selection_.last = *right.date;
    }

    [[nodiscard]] static bool is(const FormulaToken& token, QStringView word) {
        return token.kind == Kind::Word && token.text.compare(word, Qt::CaseInsensitive) == 0;
    }
    [[nodiscard]] bool isWord(QStringView word) const { return is(lexer_.peek(), word); }

    [[nodiscard]] static std::optional<Operator> comparisonSign(const FormulaToken& token) {
        static const std::array<std::pair<QStringView, Operator>, 6> signs{
            {{u"=", Operator::Equal},
             {u"<>", Operator::NotEqual},
             {u"<", Operator::Less},
             {u"<=", Operator::LessOrEqual},
             {u">", Operator::Greater},
             {u">=", Operator::GreaterOrEqual}}};
        if (token.kind == Kind::Sign)
            for (const auto& [text, op] : signs)
                if (token.text == text)
                    return op;
        return std::nullopt;
    }

    FormulaLexer lexer_;
    Selection selection_;
    FormulaToken start_;             ///< Where the last comparison began.
    const Column* period_ = nullptr; ///< The first column that is compared with a date.
    int parentheses_ = 0;
};

} // namespace

Selection translateSelection(QStringView formula) {
    return Translator(formula).run();
}

Selection translateSelection(const SelectionFormula& formula) {
    if (formula.isBroken)
        throw runTimeError(error::Syntax, formula.text);
    return translateSelection(QStringView(formula.text));
}

} // namespace pontrel
