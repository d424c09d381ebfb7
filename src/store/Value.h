#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <variant>

namespace pontrel {

/// What a column holds. The store keeps dates and times as text; a Value has them typed.
enum class ColumnType { Unknown, Text, Integer, Real, Boolean, Date, Time, DateTime };

/// One value of a row or of an expression: null, or one of the store's types.
/// The to...() readers move it into a typed variable: null throws error 94, a value of another kind 13, one
/// that does not fit 6.
class Value {
  public:
    Value() = default;
    Value(bool boolean) : data_(boolean) {}
    Value(int integer) : data_(std::int64_t{integer}) {}
    Value(std::int64_t integer) : data_(integer) {}
    Value(long long integer) : data_(static_cast<std::int64_t>(integer)) {}
    Value(double real) : data_(real) {}
    Value(QString text) : data_(std::move(text)) {}
    Value(const char16_t* text) : data_(QString::fromUtf16(text)) {}
    template<typename Pointed>
    Value(Pointed*) = delete; ///< Would be taken for a boolean.
    // An invalid date or time is a null.
    Value(QDate date) {
        if (date.isValid())
            data_ = date;
    }
    Value(QTime time) {
        if (time.isValid())
            data_ = time;
    }
    Value(const QDateTime& dateTime) {
        if (dateTime.isValid())
            data_ = dateTime;
    }

    [[nodiscard]] bool isNull() const { return std::holds_alternative<std::monostate>(data_); }
    [[nodiscard]] ColumnType type() const; ///< Unknown for null.

    [[nodiscard]] bool toBoolean() const;
    [[nodiscard]] std::uint8_t
    toByte() const; ///< 0 to 255; fractions are rounded, halves to the even number.
    [[nodiscard]] std::int16_t toInt16() const; ///< -32768 to 32767, rounded likewise.
    [[nodiscard]] std::int64_t toInteger() const;
    [[nodiscard]] double toReal() const;
    [[nodiscard]] QString toText() const;
    [[nodiscard]] QDate toDate() const;
    [[nodiscard]] QTime toTime() const;
    [[nodiscard]] QDateTime toDateTime() const;

    /// The value as joining puts it into text: null is empty, a date its short date, a time "hh:mm:ss".
    [[nodiscard]] QString joined() const;

    /// Same kind and same value; two nulls are equal. Case of text counts. For tests and for finding changes.
    friend bool operator==(const Value&, const Value&) = default;

  private:
    std::variant<std::monostate, bool, std::int64_t, double, QString, QDate, QTime, QDateTime> data_;
};

/// Prints a value in test failures and technical texts: type and content, null as "null".
[[nodiscard]] QString describe(const Value& value);

} // namespace pontrel
