#include "store/Value.h"

#include "store/Format.h"
#include "store/RunTimeError.h"

#include <cmath>
#include <limits>

namespace pontrel {

namespace {

double number(const QString& text) {
    bool good = false;
    const double value = text.trimmed().toDouble(&good);
    if (!good || !std::isfinite(value))
        throw runTimeError(error::TypeMismatch, text);
    return value;
}

/// Rounds halves to the even number, which is the default rounding of the machine.
std::int64_t whole(double value, double least, double most) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= least && rounded <= most))
        throw runTimeError(error::Overflow, QString::number(value));
    return static_cast<std::int64_t>(rounded);
}

DateTimeText dateTime(const QString& text) {
    const auto parsed = parseDateTime(text);
    if (!parsed)
        throw runTimeError(error::TypeMismatch, text);
    return *parsed;
}

[[noreturn]] void mismatch(const Value& value) {
    throw runTimeError(value.isNull() ? error::InvalidNull : error::TypeMismatch, describe(value));
}

} // namespace

ColumnType Value::type() const {
    static constexpr ColumnType types[] = {ColumnType::Unknown, ColumnType::Boolean, ColumnType::Integer,
                                           ColumnType::Real,    ColumnType::Text,    ColumnType::Date,
                                           ColumnType::Time,    ColumnType::DateTime};
    return types[data_.index()];
}

double Value::toReal() const {
    if (const auto* real = std::get_if<double>(&data_))
        return *real;
    if (const auto* integer = std::get_if<std::int64_t>(&data_))
        return static_cast<double>(*integer);
    if (const auto* boolean = std::get_if<bool>(&data_))
        return *boolean ? -1.0 : 0.0;
    if (const auto* text = std::get_if<QString>(&data_))
        return number(*text);
    mismatch(*this);
}

std::int64_t Value::toInteger() const {
    if (const auto* integer = std::get_if<std::int64_t>(&data_))
        return *integer;
    // The largest whole numbers on either side that a real holds exactly.
    return whole(toReal(), -9007199254740992.0, 9007199254740992.0);
}

std::int16_t Value::toInt16() const {
    return static_cast<std::int16_t>(
        whole(toReal(), std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()));
}

std::uint8_t Value::toByte() const {
    return static_cast<std::uint8_t>(whole(toReal(), 0, std::numeric_limits<std::uint8_t>::max()));
}

bool Value::toBoolean() const {
    if (const auto* boolean = std::get_if<bool>(&data_))
        return *boolean;
    if (const auto* text = std::get_if<QString>(&data_)) {
        if (text->compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
            return true;
        if (text->compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
            return false;
    }
    return toReal() != 0.0;
}

QString Value::toText() const {
    if (isNull())
        mismatch(*this);
    return joined();
}

QDate Value::toDate() const {
    if (const auto* date = std::get_if<QDate>(&data_))
        return *date;
    if (const auto* both = std::get_if<QDateTime>(&data_))
        return both->date();
    if (const auto* text = std::get_if<QString>(&data_)) {
        const auto parsed = dateTime(*text);
        if (parsed.date.isValid())
            return parsed.date;
    }
    mismatch(*this);
}

QTime Value::toTime() const {
    if (const auto* time = std::get_if<QTime>(&data_))
        return *time;
    if (const auto* both = std::get_if<QDateTime>(&data_))
        return both->time();
    if (std::holds_alternative<QDate>(data_))
        return QTime(0, 0);
    if (const auto* text = std::get_if<QString>(&data_)) {
        const auto parsed = dateTime(*text);
        return parsed.time.isValid() ? parsed.time : QTime(0, 0);
    }
    mismatch(*this);
}

QDateTime Value::toDateTime() const {
    if (const auto* both = std::get_if<QDateTime>(&data_))
        return *both;
    return QDateTime(toDate(), toTime(), Qt::UTC);
}

QString Value::joined() const {
    struct Joiner {
        QString operator()(std::monostate) const { return {}; }
        QString operator()(bool boolean) const {
            return boolean ? QStringLiteral("True") : QStringLiteral("False");
        }
        QString operator()(std::int64_t integer) const { return QString::number(integer); }
        QString operator()(double real) const {
            // The same text for less, as a note number is joined often.
            constexpr double MostDigits = 1e15;
            if (real == std::trunc(real) && std::fabs(real) < MostDigits)
                return QString::number(static_cast<std::int64_t>(real));
            return QString::number(real, 'g', 15);
        }
        QString operator()(const QString& text) const { return text; }
        QString operator()(QDate date) const { return shortDate(date); }
        QString operator()(QTime time) const { return formatTime(time, QStringLiteral("hh:nn:ss")); }
        QString operator()(const QDateTime& both) const {
            const QString date = shortDate(both.date());
            return both.time() == QTime(0, 0) ? date : date + u' ' + (*this)(both.time());
        }
    };
    return std::visit(Joiner{}, data_);
}

QString describe(const Value& value) {
    switch (value.type()) {
    case ColumnType::Unknown:
        return QStringLiteral("null");
    case ColumnType::Text:
        return u'"' + value.joined() + u'"';
    default:
        return value.joined();
    }
}

} // namespace pontrel
