#include "paper/ReportRows.h"

#include "store/EngineError.h"
#include "store/OpenStore.h"
#include "store/StoreText.h"

#include <sqlite3.h>

#include <cmath>
#include <cstring>
#include <memory>

namespace pontrel::paper {

namespace {

constexpr double MostWhole = 9.2e18;
constexpr double DayMilliseconds = 24.0 * 60 * 60 * 1000;

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementPtr = std::unique_ptr<sqlite3_stmt, Finalize>;

void check(sqlite3* engine, int result) {
    if (result != SQLITE_OK)
        throw SQLite::Exception(engine, result);
}

void bindText(sqlite3_stmt* statement, int parameter, const std::string& text) {
    check(sqlite3_db_handle(statement),
          sqlite3_bind_text64(statement, parameter, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void bind(sqlite3_stmt* statement, int parameter, const Value& value) {
    sqlite3* engine = sqlite3_db_handle(statement);
    switch (value.type()) {
    case ColumnType::Unknown:
        return check(engine, sqlite3_bind_null(statement, parameter));
    case ColumnType::Boolean:
        return check(engine, sqlite3_bind_int(statement, parameter, value.toBoolean() ? 1 : 0));
    case ColumnType::Integer:
        return check(engine, sqlite3_bind_int64(statement, parameter, value.toInteger()));
    case ColumnType::Real:
        return check(engine, sqlite3_bind_double(statement, parameter, value.toReal()));
    case ColumnType::Text:
        return bindText(statement, parameter, value.toText().toStdString());
    case ColumnType::Date:
        return bindText(statement, parameter, storeText(value.toDate()));
    case ColumnType::Time:
        return bindText(statement, parameter, storeText(value.toTime()));
    case ColumnType::DateTime:
        return bindText(statement, parameter, storeText(value.toDateTime()));
    }
}

/// A statement over the connection with these values in the places of its parameters.
StatementPtr prepared(SQLite::Database& engine, const QByteArray& text, const std::vector<Value>& values) {
    sqlite3_stmt* made = nullptr;
    check(engine.getHandle(), sqlite3_prepare_v2(engine.getHandle(), text.constData(),
                                                 static_cast<int>(text.size()), &made, nullptr));
    StatementPtr statement(made);
    for (std::size_t value = 0; value < values.size(); ++value)
        bind(made, static_cast<int>(value) + 1, values[value]);
    return statement;
}

/// The number that so many digits make; -1 where one is no digit.
int digits(const char* text, int count) {
    int number = 0;
    for (int at = 0; at < count; ++at) {
        if (text[at] < '0' || text[at] > '9')
            return -1;
        number = 10 * number + (text[at] - '0');
    }
    return number;
}

/// The Julian day of "YYYY-MM-DD"; 0 where the text is no date.
std::int32_t julianDay(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return 0;
    const QDate date(digits(text.data(), 4), digits(text.data() + 5, 2), digits(text.data() + 8, 2));
    return date.isValid() ? static_cast<std::int32_t>(date.toJulianDay()) : 0;
}

/// The second of the day of "HH:MM:SS"; -1 where the text is no time.
std::int32_t secondOfDay(std::string_view text) {
    if (text.size() != 8 || text[2] != ':' || text[5] != ':')
        return -1;
    const int hour = digits(text.data(), 2);
    const int minute = digits(text.data() + 3, 2);
    const int second = digits(text.data() + 6, 2);
    return QTime::isValid(hour, minute, second) ? (hour * 60 + minute) * 60 + second : -1;
}

/// A date-time without a zone as milliseconds since the first Julian day.
double dayMilliseconds(const QDateTime& both) {
    return static_cast<double>(both.date().toJulianDay()) * DayMilliseconds +
           both.time().msecsSinceStartOfDay();
}

std::string_view textOf(sqlite3_stmt* statement, int index) {
    const void* text = sqlite3_column_text(statement, index);
    return {static_cast<const char*>(text), static_cast<std::size_t>(sqlite3_column_bytes(statement, index))};
}

QByteArray quoted(const QString& name) {
    return '"' + name.toUtf8() + '"';
}

QByteArray quoted(const Field& field) {
    return quoted(field.table->name) + '.' + quoted(field.stored().name);
}

QByteArray joins(const Template& layout) {
    QByteArray text;
    for (const LookUp& lookUp : layout.lookUps) {
        text += " LEFT JOIN " + quoted(lookUp.table->name);
        for (std::size_t part = 0; part < lookUp.on.size(); ++part)
            text += (part == 0 ? " ON " : " AND ") + quoted(lookUp.table->name) + '.' +
                    quoted(lookUp.table->key[static_cast<qsizetype>(part)]) + " = " +
                    quoted(layout.field(lookUp.on[part]));
    }
    return text;
}

bool isJoined(const Template& layout, const Table* table) {
    if (table == layout.from)
        return true;
    for (const LookUp& lookUp : layout.lookUps)
        if (lookUp.table == table)
            return true;
    return false;
}

/// The condition, within an EXISTS over the tables that the template does not read itself, so that no row
/// comes more than once.
QByteArray where(const Template& layout, const Selection& selection) {
    if (selection.condition.isEmpty())
        return {};
    QByteArray others;
    QByteArray relations;
    for (const Table* table : selection.tables) {
        if (isJoined(layout, table))
            continue;
        others += (others.isEmpty() ? "" : ", ") + quoted(table->name);
        for (const Related& related : layout.related)
            if (related.table == table)
                relations += quoted(Field{table, related.column}) + " = " +
                             quoted(layout.field(related.field)) + " AND ";
    }
    if (others.isEmpty())
        return " WHERE " + selection.condition;
    return " WHERE EXISTS (SELECT 1 FROM " + others + " WHERE " + relations + '(' + selection.condition +
           "))";
}

QByteArray ordered(const Template& layout) {
    QByteArray text = " ORDER BY ";
    for (const Group& group : layout.groups)
        text += quoted(layout.field(group.by)) + ", ";
    for (const OrderKey& key : layout.order) {
        const QByteArray name = quoted(layout.field(key.field));
        text += key.part == OrderPart::Month ? "substr(" + name + ", 6, 2), "
                : key.part == OrderPart::Day ? "substr(" + name + ", 9, 2), "
                                             : name + ", ";
    }
    // Rows that are equal so far come in the same order every time.
    return text + quoted(layout.from->name) + ".rowid";
}

} // namespace

QDateTime fromDayMilliseconds(double milliseconds) {
    const double day = std::floor(milliseconds / DayMilliseconds);
    return {QDate::fromJulianDay(static_cast<qint64>(day)),
            QTime::fromMSecsSinceStartOfDay(static_cast<int>(milliseconds - day * DayMilliseconds))};
}

QByteArray ReportRows::statement(const Template& layout, const Selection& selection) {
    QByteArray columns;
    for (const Field& field : layout.fields)
        columns += (columns.isEmpty() ? "" : ", ") + quoted(field);
    // A report of nothing but fixed texts still has its rows.
    if (columns.isEmpty())
        columns = "1";
    return "SELECT " + columns + " FROM " + quoted(layout.from->name) + joins(layout) +
           where(layout, selection) + ordered(layout);
}

void ReportRows::Stored::addNull() {
    if (wide)
        real.push_back(std::numeric_limits<double>::quiet_NaN());
    else
        whole.push_back(Null);
}

void ReportRows::Stored::addWide(double number) {
    if (!wide) {
        wide = true;
        real.reserve(whole.capacity());
        for (const std::int32_t earlier : whole)
            real.push_back(earlier == Null ? std::numeric_limits<double>::quiet_NaN() : earlier);
        whole = {};
    }
    real.push_back(number);
}

void ReportRows::addText(Stored& column, std::string_view text) {
    const std::int32_t likely = column.whole.empty() ? 0 : column.whole.back();
    if (column.type == ColumnType::Text)
        return column.whole.push_back(pool_.place(text, qMax(0, likely)));
    const std::int32_t number = column.type == ColumnType::Date ? julianDay(text) : secondOfDay(text);
    if (number > 0 || (number == 0 && column.type == ColumnType::Time))
        return column.whole.push_back(number);
    column.whole.push_back(MostForeign - pool_.place(text, 0));
}

void ReportRows::add(Stored& column, sqlite3_stmt* statement, int index) {
    switch (sqlite3_column_type(statement, index)) {
    case SQLITE_NULL:
        return column.addNull();
    case SQLITE_INTEGER: {
        const sqlite3_int64 number = sqlite3_column_int64(statement, index);
        if (column.type == ColumnType::Boolean)
            return column.add(number != 0 ? 1 : 0);
        if (number > MostForeign && number <= std::numeric_limits<std::int32_t>::max())
            return column.add(static_cast<std::int32_t>(number));
        return column.addWide(static_cast<double>(number));
    }
    case SQLITE_FLOAT:
        return column.addWide(sqlite3_column_double(statement, index));
    default:
        break;
    }
    const std::string_view text = textOf(statement, index);
    if (column.type != ColumnType::DateTime)
        return addText(column, text);
    const Value value = readStoreText(text.data(), static_cast<int>(text.size()), column.type);
    if (value.type() == ColumnType::DateTime)
        column.addWide(dayMilliseconds(value.toDateTime()));
    else
        column.addNull();
}

ReportRows ReportRows::read(const QString& dataFile, const Template& layout, const Selection& selection) {
    ReportRows rows;
    for (const Field& field : layout.fields) {
        Stored column;
        column.type = field.type();
        column.wide = column.type == ColumnType::Real || column.type == ColumnType::DateTime;
        rows.columns_.push_back(std::move(column));
    }
    const QByteArray text = statement(layout, selection);
    try {
        const std::unique_ptr<SQLite::Database> engine = openStoreToRead(dataFile);
        const StatementPtr statement = prepared(*engine, text, selection.values);
        int result = SQLITE_ROW;
        while ((result = sqlite3_step(statement.get())) == SQLITE_ROW) {
            for (std::size_t column = 0; column < rows.columns_.size(); ++column)
                rows.add(rows.columns_[column], statement.get(), static_cast<int>(column));
            ++rows.count_;
        }
        if (result != SQLITE_DONE)
            throw SQLite::Exception(engine->getHandle(), result);
    } catch (const SQLite::Exception& failure) {
        throw engineError(failure, QString::fromUtf8(text));
    }
    for (Stored& column : rows.columns_) {
        column.whole.shrink_to_fit();
        column.real.shrink_to_fit();
    }
    rows.pool_.close();
    return rows;
}

bool ReportRows::isNull(std::size_t row, int field) const {
    const Stored& column = columns_[static_cast<std::size_t>(field)];
    return column.wide ? std::isnan(column.real[row]) : column.whole[row] == Null;
}

double ReportRows::number(std::size_t row, int field) const {
    const Stored& column = columns_[static_cast<std::size_t>(field)];
    return column.wide ? column.real[row] : column.whole[row];
}

QStringView ReportRows::text(std::size_t row, int field) const {
    const Stored& column = columns_[static_cast<std::size_t>(field)];
    if (column.wide || column.whole[row] == Null)
        return {};
    const std::int32_t held = column.whole[row];
    if (column.type == ColumnType::Text)
        return pool_.text(held);
    return held <= MostForeign ? pool_.text(MostForeign - held) : QStringView();
}

std::int64_t ReportRows::identity(std::size_t row, int field) const {
    const Stored& column = columns_[static_cast<std::size_t>(field)];
    if (column.wide) {
        const double number = column.real[row] == 0 ? 0 : column.real[row]; // one zero for both
        std::int64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        return bits;
    }
    const std::int32_t held = column.whole[row];
    return column.type == ColumnType::Text && held != Null ? pool_.alike(held) : held;
}

bool ReportRows::same(std::size_t one, std::size_t other, int field) const {
    return identity(one, field) == identity(other, field);
}

Value ReportRows::value(std::size_t row, int field) const {
    if (isNull(row, field))
        return {};
    const Stored& column = columns_[static_cast<std::size_t>(field)];
    const QStringView held = text(row, field);
    if (column.type == ColumnType::Text || !held.isNull())
        return held.toString();
    const double number = this->number(row, field);
    switch (column.type) {
    case ColumnType::Boolean:
        return number != 0;
    case ColumnType::Date:
        return QDate::fromJulianDay(static_cast<qint64>(number));
    case ColumnType::Time:
        return QTime::fromMSecsSinceStartOfDay(static_cast<int>(number) * 1000);
    case ColumnType::DateTime:
        return fromDayMilliseconds(number);
    case ColumnType::Real:
        return number;
    default:
        // Beyond these the nearest real stands for a whole number, and may be one too many.
        return std::abs(number) < MostWhole ? Value(static_cast<std::int64_t>(number)) : Value(number);
    }
}

} // namespace pontrel::paper
