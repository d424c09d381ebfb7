#include "store/SqlFunctions.h"

#include "store/Format.h"
#include "store/RunTimeError.h"
#include "store/StoreText.h"
#include "store/statement/ExpressionWriter.h"

#include <sqlite3.h>

#include <algorithm>
#include <cmath>

namespace pontrel {

namespace {

using Arguments = sqlite3_value**;

QString textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return QString::fromUtf8(text, sqlite3_value_bytes(value));
}

bool isNull(sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_NULL;
}

void giveText(sqlite3_context* context, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    sqlite3_result_text(context, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
}

void giveError(sqlite3_context* context, int number) {
    const QByteArray message = SqlErrorPrefix + QByteArray::number(number);
    sqlite3_result_error(context, message.constData(), static_cast<int>(message.size()));
}

Value valueOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return Value(static_cast<std::int64_t>(sqlite3_value_int64(value)));
    case SQLITE_FLOAT:
        return Value(sqlite3_value_double(value));
    case SQLITE_NULL:
        return {};
    default:
        return Value(textOf(value));
    }
}

void give(sqlite3_context* context, const Value& value) {
    const auto text = [&](const std::string& stored) {
        sqlite3_result_text(context, stored.data(), static_cast<int>(stored.size()), SQLITE_TRANSIENT);
    };
    switch (value.type()) {
    case ColumnType::Unknown:
        sqlite3_result_null(context);
        break;
    case ColumnType::Boolean:
        sqlite3_result_int(context, value.toBoolean() ? 1 : 0);
        break;
    case ColumnType::Integer:
        sqlite3_result_int64(context, value.toInteger());
        break;
    case ColumnType::Real:
        sqlite3_result_double(context, value.toReal());
        break;
    case ColumnType::Text:
        giveText(context, value.toText());
        break;
    case ColumnType::Date:
        text(storeText(value.toDate()));
        break;
    case ColumnType::Time:
        text(storeText(value.toTime()));
        break;
    case ColumnType::DateTime:
        text(storeText(value.toDateTime()));
        break;
    }
}

// Pattern match
// ------------------------------------------------------------------------------------------------------

bool matchesOne(char32_t pattern, char32_t character) {
    if (pattern == U'?')
        return true;
    if (pattern == U'#')
        return character >= U'0' && character <= U'9';
    return QChar::toCaseFolded(pattern) == QChar::toCaseFolded(character);
}

/// "*" stands for any run, "?" for one character, "#" for a digit. Goes back to the last star only, so that
/// no pattern takes longer than the product of the lengths.
bool matches(const QList<uint>& pattern, const QList<uint>& text) {
    qsizetype at = 0;
    qsizetype star = -1;
    qsizetype resume = 0;
    for (qsizetype position = 0; position < text.size();) {
        if (at < pattern.size() && pattern[at] == U'*') {
            star = at++;
            resume = position;
        } else if (at < pattern.size() && matchesOne(pattern[at], text[position])) {
            ++at;
            ++position;
        } else if (star >= 0) {
            at = star + 1;
            position = ++resume;
        } else {
            return false;
        }
    }
    while (at < pattern.size() && pattern[at] == U'*')
        ++at;
    return at == pattern.size();
}

void like(sqlite3_context* context, int, Arguments arguments) {
    if (isNull(arguments[0]) || isNull(arguments[1]))
        return sqlite3_result_null(context);
    sqlite3_result_int(context,
                       matches(textOf(arguments[0]).toUcs4(), textOf(arguments[1]).toUcs4()) ? 1 : 0);
}

/// The characters with which every text begins that meets the pattern, as far as they mean themselves alone.
/// A letter ends them: a pattern knows more pairs of capital and small letters than the order of texts does.
QString startOf(const QString& pattern) {
    const auto plain = [](QChar character) {
        const char16_t code = character.unicode();
        const bool wildcard = code == u'*' || code == u'?' || code == u'#';
        return code >= u' ' && code <= u'~' && !wildcard && !character.isLetter();
    };
    const auto end = std::find_if_not(pattern.begin(), pattern.end(), plain);
    return pattern.left(end - pattern.begin());
}

void likeFrom(sqlite3_context* context, int, Arguments arguments) {
    giveText(context, startOf(textOf(arguments[0])));
}

void likeTo(sqlite3_context* context, int, Arguments arguments) {
    QString start = startOf(textOf(arguments[0]));
    // Every text sorts below every blob.
    if (start.isEmpty())
        return sqlite3_result_zeroblob(context, 0);
    start.back() = QChar(static_cast<char16_t>(start.back().unicode() + 1));
    giveText(context, start);
}

// Text and times
// -----------------------------------------------------------------------------------------------------

void format(sqlite3_context* context, int, Arguments arguments) {
    const QString pattern = textOf(arguments[1]);
    const int type = sqlite3_value_type(arguments[0]);
    if (type == SQLITE_NULL)
        return giveText(context, QString());
    if (type != SQLITE_TEXT)
        return giveText(context, formatDayFraction(sqlite3_value_double(arguments[0]), pattern));
    const QString text = textOf(arguments[0]);
    const auto parsed = parseDateTime(text);
    if (!parsed)
        return giveText(context, text);
    const QDate date = parsed->date.isValid() ? parsed->date : BaseDate;
    const QTime time = parsed->time.isValid() ? parsed->time : QTime(0, 0);
    giveText(context, formatDateTime(QDateTime(date, time, Qt::UTC), pattern));
}

void joinedText(sqlite3_context* context, int, Arguments arguments) {
    const auto type = static_cast<ColumnType>(sqlite3_value_int(arguments[1]));
    giveText(context, convertFor(valueOf(arguments[0]), type).joined());
}

/// Days since the 30th of December 1899, the time of day as a fraction.
void days(sqlite3_context* context, int, Arguments arguments) {
    if (isNull(arguments[0]))
        return sqlite3_result_null(context);
    const auto parsed = parseDateTime(textOf(arguments[0]));
    if (!parsed)
        return giveError(context, error::TypeMismatch);
    double result = parsed->date.isValid() ? static_cast<double>(BaseDate.daysTo(parsed->date)) : 0.0;
    if (parsed->time.isValid())
        result += parsed->time.msecsSinceStartOfDay() / 86400000.0;
    sqlite3_result_double(context, result);
}

// Numbers
// ------------------------------------------------------------------------------------------------------------

void number(sqlite3_context* context, int, Arguments arguments) {
    try {
        const Value value = valueOf(arguments[0]);
        value.isNull() ? sqlite3_result_null(context) : sqlite3_result_double(context, value.toReal());
    } catch (const RunTimeError& failure) {
        giveError(context, failure.number());
    }
}

/// Runs the calculation on two numbers unless one is null; a divisor of zero is an error.
template<typename Calculation>
void divided(sqlite3_context* context, Arguments arguments, bool roundFirst, Calculation calculation) {
    if (isNull(arguments[0]) || isNull(arguments[1]))
        return sqlite3_result_null(context);
    double dividend = sqlite3_value_double(arguments[0]);
    double divisor = sqlite3_value_double(arguments[1]);
    if (roundFirst) {
        dividend = std::nearbyint(dividend);
        divisor = std::nearbyint(divisor);
    }
    if (divisor == 0.0)
        return giveError(context, error::DivisionByZero);
    calculation(dividend, divisor);
}

void divide(sqlite3_context* context, int, Arguments arguments) {
    divided(context, arguments, false,
            [&](double dividend, double divisor) { sqlite3_result_double(context, dividend / divisor); });
}

void giveWhole(sqlite3_context* context, double whole) {
    if (!(std::fabs(whole) <= 9007199254740992.0))
        return giveError(context, error::Overflow);
    sqlite3_result_int64(context, static_cast<sqlite3_int64>(whole));
}

void integerDivide(sqlite3_context* context, int, Arguments arguments) {
    divided(context, arguments, true,
            [&](double dividend, double divisor) { giveWhole(context, std::trunc(dividend / divisor)); });
}

void modulo(sqlite3_context* context, int, Arguments arguments) {
    divided(context, arguments, true,
            [&](double dividend, double divisor) { giveWhole(context, std::fmod(dividend, divisor)); });
}

void convert(sqlite3_context* context, int, Arguments arguments) {
    give(context,
         convertFor(valueOf(arguments[0]), static_cast<ColumnType>(sqlite3_value_int(arguments[1]))));
}

} // namespace

void registerSqlFunctions(sqlite3* handle) {
    using Function = void (*)(sqlite3_context*, int, Arguments);
    struct Entry {
        const char* name;
        int arguments;
        Function function;
    };
    namespace sqlname = statement::sqlname;
    static constexpr Entry entries[] = {{sqlname::Like, 2, like},
                                        {sqlname::LikeFrom, 1, likeFrom},
                                        {sqlname::LikeTo, 1, likeTo},
                                        {sqlname::Format, 2, format},
                                        {sqlname::Text, 2, joinedText},
                                        {sqlname::Days, 1, days},
                                        {sqlname::Number, 1, number},
                                        {sqlname::Divide, 2, divide},
                                        {sqlname::IntegerDivide, 2, integerDivide},
                                        {sqlname::Modulo, 2, modulo},
                                        {sqlname::Convert, 2, convert}};
    for (const Entry& entry : entries)
        if (sqlite3_create_function(handle, entry.name, entry.arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                    nullptr, entry.function, nullptr, nullptr) != SQLITE_OK)
            throw runTimeError(error::StoreUnreadable, QString::fromUtf8(sqlite3_errmsg(handle)));
}

} // namespace pontrel
