#include "paper/CellText.h"

#include "rules/Calendar.h"

#include <QDate>

#include <array>
#include <cmath>

namespace pontrel::paper {

namespace {

constexpr int HoursOfDay = 8;
constexpr double MostExact = 9e15; ///< Beyond, not every whole number has a place among the reals.

/// Gathers a short text and appends it at once.
class ShortText {
  public:
    void put(char16_t character) { text_[size_++] = character; }
    void put(int number, int least) {
        std::array<char16_t, 12> digits{};
        std::size_t count = 0;
        for (auto rest = static_cast<unsigned>(std::abs(number)); rest > 0 || count == 0; rest /= 10)
            digits[count++] = static_cast<char16_t>(u'0' + rest % 10);
        while (static_cast<int>(count) < least)
            digits[count++] = u'0';
        while (count > 0)
            put(digits[--count]);
    }
    void appendTo(QString& text) const {
        text.append(QStringView(text_.data(), static_cast<qsizetype>(size_)));
    }

  private:
    std::array<char16_t, 48> text_{};
    std::size_t size_ = 0;
};

void putRocDate(ShortText& text, const QDate& date) {
    const int year = date.year();
    year <= RepublicZero ? text.put(year, 4) : text.put(year - RepublicZero, 3);
    text.put(u'/');
    text.put(date.month(), 2);
    text.put(u'/');
    text.put(date.day(), 2);
}

void putTime(ShortText& text, int seconds) {
    text.put(seconds / 3600, 2);
    text.put(u':');
    text.put(seconds / 60 % 60, 2);
}

void appendDate(QString& text, std::int64_t julianDay, Format format) {
    ShortText made;
    const QDate date = QDate::fromJulianDay(julianDay);
    switch (format) {
    case Format::Date:
        made.put(date.year(), 4);
        made.put(u'/');
        [[fallthrough]];
    case Format::MonthDay:
        made.put(date.month(), 2);
        made.put(u'/');
        made.put(date.day(), 2);
        break;
    case Format::Day:
        made.put(date.day(), 1);
        break;
    case Format::Weekday:
        made.put(weekday(date).unicode());
        break;
    default:
        putRocDate(made, date);
        break;
    }
    made.appendTo(text);
}

void appendTime(QString& text, int seconds) {
    ShortText made;
    putTime(made, seconds);
    made.appendTo(text);
}

void appendStamp(QString& text, double milliseconds, Format format) {
    const QDateTime both = fromDayMilliseconds(milliseconds);
    const int seconds = both.time().msecsSinceStartOfDay() / 1000;
    if (format == Format::HourMinute)
        return appendTime(text, seconds);
    appendDate(text, both.date().toJulianDay(), format == Format::Stamp ? Format::Roc : format);
    if (format != Format::Stamp)
        return;
    text += u' ';
    appendTime(text, seconds);
}

/// Days of eight hours and the hours left, or years and months.
void appendParts(QString& text, double number, int base, QStringView between, int least, QStringView end) {
    const std::int64_t whole = std::llround(std::abs(number));
    if (number < 0 && whole != 0)
        text += u'-';
    text += QString::number(whole / base);
    text += between;
    text += QString::number(whole % base).rightJustified(least, u'0');
    text += end;
}

void appendPlain(QString& text, double number) {
    if (std::abs(number) < 1e9 && number == std::floor(number)) {
        ShortText made;
        if (number < 0)
            made.put(u'-');
        made.put(static_cast<int>(number), 1);
        return made.appendTo(text);
    }
    if (std::abs(number) < MostExact && number == std::floor(number))
        text += QString::number(static_cast<qint64>(number));
    else
        text += QString::number(number, 'g', 12); // sums of tenths come out as they were typed
}

} // namespace

void appendNumber(QString& text, double number, Format format, const QStringList& words) {
    switch (format) {
    case Format::Whole:
        text += QString::number(number, 'f', 0);
        break;
    case Format::OneDecimal:
        text += QString::number(number, 'f', 1);
        break;
    case Format::DayHour:
        appendParts(text, number, HoursOfDay, u".", 1, u"");
        break;
    case Format::Months:
        appendParts(text, number, 12, u"年", 2, u"月");
        break;
    case Format::Words:
        if (number >= 0 && number < static_cast<double>(words.size()))
            text += words[static_cast<qsizetype>(number)];
        else if (!words.isEmpty())
            appendPlain(text, number);
        else
            text += number != 0 ? QStringLiteral("是") : QString();
        break;
    case Format::HourMinute:
        appendTime(text, static_cast<int>(number));
        break;
    case Format::Roc:
    case Format::Date:
    case Format::MonthDay:
    case Format::Day:
    case Format::Weekday:
        appendDate(text, static_cast<std::int64_t>(number), format);
        break;
    default:
        appendPlain(text, number);
        break;
    }
}

void CellText::field(QString& text, int field, std::size_t row, Format format,
                     const QStringList& words) const {
    if (rows_.isNull(row, field))
        return;
    // Also of a date or time: the store can hold an invalid text there.
    const QStringView held = rows_.text(row, field);
    if (!held.isNull())
        text += held;
    else if (layout_.field(field).type() == ColumnType::DateTime)
        appendStamp(text, rows_.number(row, field), format);
    else
        appendNumber(text, rows_.number(row, field), format, words);
}

bool CellText::shows(const Cell& cell, std::size_t row) const {
    return cell.when < 0 || (!rows_.isNull(row, cell.when) && rows_.number(row, cell.when) != 0);
}

std::optional<double> CellText::number(const Cell& cell, std::size_t row) const {
    std::optional<double> sum;
    if (!shows(cell, row))
        return sum;
    for (const int field : cell.fields)
        if (!rows_.isNull(row, field))
            sum = sum.value_or(0) + rows_.number(row, field);
    return sum;
}

QStringView CellText::cell(const Cell& cell, std::size_t row, QString& scratch) const {
    if (!shows(cell, row))
        return {};
    if (cell.fields.size() == 1) {
        const int field = cell.fields.front();
        if (typeOf(cell) == ColumnType::Text) {
            const QStringView held = rows_.text(row, field);
            return held.isEmpty() ? QStringView(cell.empty) : held;
        }
        if (rows_.isNull(row, field) || (cell.zeroBlank && rows_.number(row, field) == 0))
            return cell.empty;
    }
    scratch.resize(0);
    if (cell.fields.empty()) {
        TextContext context;
        context.row = row;
        pieces(scratch, cell.pieces, context);
    } else if (cell.fields.size() == 1) {
        field(scratch, cell.fields.front(), row, cell.format, cell.words);
    } else if (const std::optional<double> sum = number(cell, row); sum && !(cell.zeroBlank && *sum == 0)) {
        appendNumber(scratch, *sum, cell.format, cell.words);
    }
    return scratch.isEmpty() ? QStringView(cell.empty) : QStringView(scratch);
}

QStringView CellText::total(const Cell& cell, double value, QString& scratch) const {
    const bool counted = cell.total == Total::Count || cell.total == Total::Distinct;
    if (std::isnan(value) && (cell.total == Total::Min || cell.total == Total::Max))
        return cell.empty;
    const double shown = std::isnan(value) ? 0 : value;
    if (cell.zeroBlank && shown == 0)
        return cell.empty;
    scratch.resize(0);
    if (counted)
        appendNumber(scratch, shown, Format::Number, {});
    else if (typeOf(cell) == ColumnType::DateTime)
        appendStamp(scratch, shown, cell.format);
    else
        appendNumber(scratch, shown, cell.format, cell.words);
    return scratch;
}

void CellText::pieces(QString& text, const Pieces& pieces, const TextContext& context) const {
    for (const Piece& piece : pieces) {
        switch (piece.kind) {
        case Piece::Kind::Literal:
            text += piece.text;
            break;
        case Piece::Kind::Field:
            if (context.row)
                field(text, piece.index, *context.row, piece.format, piece.words);
            break;
        case Piece::Kind::Named:
            text += names_.value(piece.text);
            break;
        case Piece::Kind::Page:
            appendPlain(text, context.page);
            break;
        case Piece::Kind::Pages:
            appendPlain(text, context.pages);
            break;
        case Piece::Kind::Continued:
            if (context.continued)
                text += QStringLiteral("（續）");
            break;
        case Piece::Kind::Count:
            appendPlain(text, static_cast<double>(context.count));
            break;
        case Piece::Kind::Aggregate: {
            const double value = context.totals ? context.totals[piece.index] : std::nan("");
            const Aggregate& of = layout_.aggregates[static_cast<std::size_t>(piece.index)];
            if (!std::isnan(value)) {
                if (layout_.field(of.fields.front()).type() == ColumnType::DateTime &&
                    of.kind != Total::Distinct)
                    appendStamp(text, value, piece.format);
                else
                    appendNumber(text, value, piece.format, piece.words);
            } else if (of.kind != Total::Min && of.kind != Total::Max) {
                text += u'0';
            }
            break;
        }
        }
    }
}

} // namespace pontrel::paper
