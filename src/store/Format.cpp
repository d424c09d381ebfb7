#include "store/Format.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace pontrel {

namespace {

constexpr std::array<const char*, 12> Months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// Appends a number with leading zeros up to the width.
void appendPadded(QString& text, int number, int width) {
    std::array<char16_t, 12> digits{};
    std::size_t first = digits.size();
    for (unsigned rest = static_cast<unsigned>(std::abs(number)); rest > 0 || first == digits.size();
         rest /= 10)
        digits[--first] = static_cast<char16_t>(u'0' + rest % 10);
    if (number < 0)
        digits[--first] = u'-';
    const auto length = static_cast<int>(digits.size() - first);
    for (int filled = length; filled < width; ++filled)
        text += u'0';
    text += QStringView(digits.data() + first, length);
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

/// A date and a time in the numbers of which they are written.
struct Parts {
    int year = 0;
    int month = 0;
    int day = 0;
    QTime time;

    Parts(QDate date, QTime timeOfDay) : time(timeOfDay) { date.getDate(&year, &month, &day); }
};

void appendPart(QString& text, char16_t letter, int length, bool afterHour, const Parts& value) {
    switch (letter) {
    case u'y':
        return length >= 3 ? appendPadded(text, value.year, 4) : appendPadded(text, value.year % 100, 2);
    case u'm':
        if (afterHour)
            return appendPadded(text, value.time.minute(), length);
        if (length >= 3)
            text += QLatin1String(Months[static_cast<std::size_t>(value.month - 1)]);
        else
            appendPadded(text, value.month, length);
        return;
    case u'd':
        return appendPadded(text, value.day, length);
    case u'h':
        return appendPadded(text, value.time.hour(), length);
    case u'n':
        return appendPadded(text, value.time.minute(), length);
    default:
        return appendPadded(text, value.time.second(), length);
    }
}

QString format(const Parts& value, const QString& pattern) {
    QString result;
    result.reserve(pattern.size() + 4);
    bool afterHour = false;
    for (int position = 0; position < pattern.size();) {
        const char16_t letter = pattern[position].toLower().unicode();
        if (QStringView(u"ymdhns").contains(QChar(letter))) {
            const int length = runLength(pattern, position);
            appendPart(result, letter, length, afterHour, value);
            afterHour = letter == u'h';
            position += length;
        } else {
            result += pattern[position];
            ++position;
        }
    }
    return result;
}

} // namespace

QString shortDate(QDate date) {
    return format(Parts(date, {}), QStringLiteral("yyyy/m/d"));
}

QString shortTime(QTime time) {
    return formatTime(time, QStringLiteral("hh:nn"));
}

QString formatDateTime(const QDateTime& value, const QString& pattern) {
    return format(Parts(value.date(), value.time()), pattern);
}

QString formatTime(QTime time, const QString& pattern) {
    return format(Parts(BaseDate, time), pattern);
}

QString formatDate(QDate date, const QString& pattern) {
    return format(Parts(date, QTime(0, 0)), pattern);
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
