#include "store/StoreText.h"

#include "store/Format.h"
#include "store/RunTimeError.h"

#include <array>

namespace pontrel {

namespace {

/// Writes a number of at least that many digits and returns its end.
char* appendNumber(char* text, int number, int width) {
    std::array<char, 12> digits{};
    int count = 0;
    for (; number > 0 || count < width; number /= 10)
        digits[static_cast<std::size_t>(count++)] = static_cast<char>('0' + number % 10);
    while (count > 0)
        *text++ = digits[static_cast<std::size_t>(--count)];
    return text;
}

/// The number of `length` digits at the position, -1 where there is another character.
int digits(const char* text, int position, int length) {
    int number = 0;
    for (int index = position; index < position + length; ++index) {
        if (text[index] < '0' || text[index] > '9')
            return -1;
        number = number * 10 + (text[index] - '0');
    }
    return number;
}

QDate readDate(const char* text) {
    return text[4] == '-' && text[7] == '-'
               ? QDate(digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2))
               : QDate();
}

QTime readTime(const char* text) {
    return text[2] == ':' && text[5] == ':'
               ? QTime(digits(text, 0, 2), digits(text, 3, 2), digits(text, 6, 2))
               : QTime();
}

bool isNumeric(ColumnType type) {
    return type == ColumnType::Integer || type == ColumnType::Real || type == ColumnType::Boolean;
}

Value toMoment(const Value& value, ColumnType type) {
    switch (type) {
    case ColumnType::Date:
        return value.toDate();
    case ColumnType::Time:
        return value.toTime();
    default:
        return value.toDateTime();
    }
}

Value toColumn(const Value& value, ColumnType type) {
    switch (type) {
    case ColumnType::Text:
        return value.toText();
    case ColumnType::Integer:
        return value.toInteger();
    case ColumnType::Real:
        return value.toReal();
    case ColumnType::Boolean:
        return value.toBoolean();
    case ColumnType::Unknown:
        return value;
    default:
        return isNumeric(value.type()) ? Value() : toMoment(value, type);
    }
}

} // namespace

char* appendStoreText(char* text, QDate date) {
    text = appendNumber(text, date.year(), 4);
    *text++ = '-';
    text = appendNumber(text, date.month(), 2);
    *text++ = '-';
    return appendNumber(text, date.day(), 2);
}

char* appendStoreText(char* text, QTime time) {
    text = appendNumber(text, time.hour(), 2);
    *text++ = ':';
    text = appendNumber(text, time.minute(), 2);
    *text++ = ':';
    return appendNumber(text, time.second(), 2);
}

std::string storeText(QDate date) {
    std::array<char, MostStoreText> text{};
    return {text.data(), appendStoreText(text.data(), date)};
}

std::string storeText(QTime time) {
    std::array<char, MostStoreText> text{};
    return {text.data(), appendStoreText(text.data(), time)};
}

std::string storeText(const QDateTime& both) {
    return storeText(both.date()) + ' ' + storeText(both.time());
}

Value readStoreText(const char* text, int length, ColumnType type) {
    if (type == ColumnType::Date && length == 10) {
        if (const QDate date = readDate(text); date.isValid())
            return date;
    } else if (type == ColumnType::Time && length == 8) {
        if (const QTime time = readTime(text); time.isValid())
            return time;
    } else if (type == ColumnType::DateTime && length == 19 && text[10] == ' ') {
        const QDate date = readDate(text);
        const QTime time = readTime(text + 11);
        if (date.isValid() && time.isValid())
            return QDateTime(date, time, Qt::UTC);
    }
    return QString::fromUtf8(text, length);
}

Value convertFor(const Value& value, ColumnType type) {
    if (value.isNull() || value.type() == type)
        return value;
    try {
        return toColumn(value, type);
    } catch (const RunTimeError&) {
        return {};
    }
}

Value convertCompared(const Value& value, ColumnType type) {
    if (type != ColumnType::Date && type != ColumnType::Time)
        return convertFor(value, type);
    if (value.type() == ColumnType::Text) {
        const auto parsed = parseDateTime(value.toText());
        if (parsed && parsed->date.isValid())
            return convertCompared(parsed->time.isValid()
                                       ? Value(QDateTime(parsed->date, parsed->time, Qt::UTC))
                                       : Value(parsed->date),
                                   type);
        return convertFor(value, type);
    }
    const bool dated = value.type() == ColumnType::Date || value.type() == ColumnType::DateTime;
    if (!dated)
        return convertFor(value, type);
    // Where only one half can be told apart from none, that half is left as it is and compares as unequal.
    if (type == ColumnType::Time)
        return value.toDate() == BaseDate ? Value(value.toTime()) : value;
    return value.toTime() == QTime(0, 0) ? Value(value.toDate()) : value;
}

QString foldedCode(QString code) {
    for (QChar& character : code) {
        if (character >= u'a' && character <= u'z')
            character = QChar(character.unicode() - u'a' + u'A');
    }
    return code;
}

} // namespace pontrel
