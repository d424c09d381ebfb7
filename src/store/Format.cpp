#include "store/Format.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>

namespace pontrel {

namespace {

constexpr std::array<const char*, 12> Months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

QString padded(int number, int width) {
    return QString::number(number).rightJustified(width, u'0');
}

/// Reads a run of at least one and at most `most` digits from the front of the text and takes it off.
std::optional<int> takeNumber(QStringView& text, int most) {
    int digits = 0;
    int number = 0;
    while (digits < text.size() && digits < most && text[digits] >= u'0' && text[digits] <= u'9') {
        number = number * 10 + text[digits].digitValue();
        ++digits;
    }
    if (digits == 0)
        return std::nullopt;
    text = text.sliced(digits);
    return number;
}

bool take(QStringView& text, char16_t character) {
    if (text.isEmpty() || text.front() != character)
        return false;
    text = text.sliced(1);
    return true;
}

std::optional<int> takeMonth(QStringView& text) {
    if (const auto number = takeNumber(text, 2))
        return number;
    for (int month = 0; month < 12; ++month) {
        const QLatin1String name(Months[static_cast<std::size_t>(month)]);
        if (text.startsWith(name, Qt::CaseInsensitive)) {
            text = text.sliced(3);
            return month + 1;
        }
    }
    return std::nullopt;
}

std::optional<QDate> takeDate(QStringView& text) {
    QStringView rest = text;
    const qsizetype before = rest.size();
    const auto year = takeNumber(rest, 4);
    if (!year || before - rest.size() < 3 || rest.isEmpty())
        return std::nullopt;
    const char16_t separator = rest.front().unicode();
    if ((separator != u'/' && separator != u'-') || !take(rest, separator))
        return std::nullopt;
    const auto month = takeMonth(rest);
    if (!month || !take(rest, separator))
        return std::nullopt;
    const auto day = takeNumber(rest, 2);
    if (!day)
        return std::nullopt;
    const QDate date(*year, *month, *day);
    if (!date.isValid() || *year < 100)
        return std::nullopt;
    text = rest;
    return date;
}

std::optional<QTime> takeTime(QStringView& text) {
    const auto hour = takeNumber(text, 2);
    if (!hour || !take(text, u':'))
        return std::nullopt;
    const auto minute = takeNumber(text, 2);
    if (!minute)
        return std::nullopt;
    int second = 0;
    if (take(text, u':')) {
        const auto seconds = takeNumber(text, 2);
        if (!seconds)
            return std::nullopt;
        second = *seconds;
    }
    const QTime time(*hour, *minute, second);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

/// Length of the run of the letter at the position, in any case.
int runLength(const QString& pattern, int position) {
    int length = 1;
    while (position + length < pattern.size() &&
           pattern[position + length].toLower() == pattern[position].toLower())
        ++length;
    return length;
}

QString part(char16_t letter, int length, bool afterHour, const QDateTime& value) {
    const QDate date = value.date();
    const QTime time = value.time();
    switch (letter) {
    case u'y':
        return length >= 3 ? padded(date.year(), 4) : padded(date.year() % 100, 2);
    case u'm':
        if (afterHour)
            return padded(time.minute(), length);
        return length >= 3 ? QString::fromLatin1(Months[static_cast<std::size_t>(date.month() - 1)])
                           : padded(date.month(), length);
    case u'd':
        return padded(date.day(), length);
    case u'h':
        return padded(time.hour(), length);
    case u'n':
        return padded(time.minute(), length);
    default:
        return padded(time.second(), length);
    }
}

} // namespace

QString shortDate(QDate date) {
    return QStringLiteral("%1/%2/%3").arg(date.year()).arg(date.month()).arg(date.day());
}

QString shortTime(QTime time) {
    return padded(time.hour(), 2) + u':' + padded(time.minute(), 2);
}

QString formatDateTime(const QDateTime& value, const QString& pattern) {
    QString result;
    bool afterHour = false;
    for (int position = 0; position < pattern.size();) {
        const char16_t letter = pattern[position].toLower().unicode();
        if (QStringView(u"ymdhns").contains(QChar(letter))) {
            const int length = runLength(pattern, position);
            result += part(letter, length, afterHour, value);
            afterHour = letter == u'h';
            position += length;
        } else {
            result += pattern[position];
            ++position;
        }
    }
    return result;
}

QString formatTime(QTime time, const QString& pattern) {
    return formatDateTime(QDateTime(BaseDate, time, Qt::UTC), pattern);
}

QString formatDate(QDate date, const QString& pattern) {
    return formatDateTime(QDateTime(date, QTime(0, 0), Qt::UTC), pattern);
}

QString formatDayFraction(double days, const QString& pattern) {
    const double fraction = std::fabs(days) - std::floor(std::fabs(days));
    const int seconds = static_cast<int>(std::lround(fraction * 86400.0)) % 86400;
    return formatTime(QTime(0, 0).addSecs(seconds), pattern);
}

std::optional<DateTimeText> parseDateTime(QStringView text) {
    QStringView rest = text.trimmed();
    DateTimeText result;
    if (const auto date = takeDate(rest)) {
        result.date = *date;
        if (rest.isEmpty())
            return result;
        if (!rest.front().isSpace())
            return std::nullopt;
        rest = rest.trimmed();
    }
    const auto time = takeTime(rest);
    if (!time || !rest.isEmpty())
        return std::nullopt;
    result.time = *time;
    return result;
}

double leadingNumber(const QString& text) {
    // Digits alone, such as a note number, need no pattern.
    constexpr qsizetype MostDigits = 15;
    qint64 digits = 0;
    qsizetype place = 0;
    for (; place < std::min(text.size(), MostDigits) && text[place] >= u'0' && text[place] <= u'9'; ++place)
        digits = digits * 10 + (text[place].unicode() - u'0');
    if (place == text.size())
        return static_cast<double>(digits);
    static const QRegularExpression number(QStringLiteral(R"(^\s*([+-]?(\d+\.?\d*|\.\d+)))"));
    return number.match(text).captured(1).toDouble();
}

} // namespace pontrel
