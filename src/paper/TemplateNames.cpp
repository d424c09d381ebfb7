#include "paper/TemplateNames.h"

#include "paper/TemplateRules.h"

#include <algorithm>

namespace pontrel::paper {

namespace {

struct NamedFormat {
    const char16_t* name;
    Format format;
};

constexpr NamedFormat Formats[] = {
    {u"text", Format::Text},        {u"roc", Format::Roc},        {u"date", Format::Date},
    {u"mm/dd", Format::MonthDay},   {u"dd", Format::Day},         {u"weekday", Format::Weekday},
    {u"hh:mm", Format::HourMinute}, {u"stamp", Format::Stamp},    {u"number", Format::Number},
    {u"0", Format::Whole},          {u"0.0", Format::OneDecimal}, {u"day.hour", Format::DayHour},
    {u"months", Format::Months}};

QString columnNames(const Table& table) {
    QStringList names;
    for (const Column& column : table.columns)
        names += column.name;
    return listed(names);
}

Total totalNamed(const QString& word) {
    const QList<Total> totals{Total::Sum, Total::Min, Total::Max, Total::Distinct};
    return totals[totalWords().indexOf(word)];
}

bool takesTotals(TextPlace place) {
    return place == TextPlace::Furniture || place == TextPlace::Header || place == TextPlace::Label;
}

/// The names that may stand in braces at that place beside fields.
QStringList namesAt(TextPlace place) {
    if (place == TextPlace::Tree)
        return {};
    QStringList names = namedValues();
    for (const char16_t* name : {made::Caption, made::Code, made::Period, made::Today})
        names += QString::fromUtf16(name);
    if (place == TextPlace::Furniture)
        names += {QString::fromUtf16(made::Page), QString::fromUtf16(made::Pages)};
    if (place == TextPlace::Header)
        names += QString::fromUtf16(made::Continued);
    if (takesTotals(place))
        names += QString::fromUtf16(made::Count);
    return names;
}

Piece named(const QString& name) {
    Piece piece;
    piece.text = name;
    piece.kind = name == QStringView(made::Page)        ? Piece::Kind::Page
                 : name == QStringView(made::Pages)     ? Piece::Kind::Pages
                 : name == QStringView(made::Continued) ? Piece::Kind::Continued
                 : name == QStringView(made::Count)     ? Piece::Kind::Count
                                                        : Piece::Kind::Named;
    return piece;
}

} // namespace

Format formatNamed(const QString& name) {
    for (const NamedFormat& candidate : Formats)
        if (name == QStringView(candidate.name))
            return candidate.format;
    return Format::Automatic;
}

Format formatFor(ColumnType type) {
    switch (type) {
    case ColumnType::Date:
        return Format::Roc;
    case ColumnType::Time:
        return Format::HourMinute;
    case ColumnType::DateTime:
        return Format::Stamp;
    case ColumnType::Integer:
    case ColumnType::Real:
        return Format::Number;
    case ColumnType::Boolean:
        return Format::Words;
    default:
        return Format::Text;
    }
}

bool accepts(Format format, ColumnType type) {
    switch (format) {
    case Format::Roc:
    case Format::Date:
    case Format::MonthDay:
    case Format::Day:
    case Format::Weekday:
        return type == ColumnType::Date || type == ColumnType::DateTime;
    case Format::HourMinute:
        return type == ColumnType::Time || type == ColumnType::DateTime;
    case Format::Stamp:
        return type == ColumnType::DateTime;
    case Format::Number:
    case Format::Whole:
    case Format::OneDecimal:
    case Format::DayHour:
    case Format::Months:
        return isNumber(type);
    case Format::Words:
        return type == ColumnType::Integer || type == ColumnType::Boolean;
    case Format::Text:
        return type == ColumnType::Text;
    case Format::Automatic:
        break;
    }
    return true;
}

const Table* TemplateNames::table(const QString& name, qsizetype offset) const {
    const Table* found = findTable(name);
    // Accounts and their passwords are on no paper.
    const auto secret = [](const Table& table) { return table.name == QStringLiteral("syst02"); };
    if (found && !secret(*found))
        return found;
    QStringList known;
    for (const Table& table : tables())
        if (!secret(table))
            known += table.name;
    source_.fail(offset, QStringLiteral("資料表 %1 不認得，可用 %2").arg(name, listed(known)));
}

bool TemplateNames::knows(const Table* table) const {
    return std::find(tables_.begin(), tables_.end(), table) != tables_.end();
}

int TemplateNames::column(const Table& table, const QString& name, qsizetype offset) const {
    const int found = table.indexOf(name);
    if (found < 0)
        source_.fail(offset, QStringLiteral("%1 沒有欄位 %2，可用 %3")
                                 .arg(table.name, name.isEmpty() ? QStringLiteral("（空白）") : name,
                                      columnNames(table)));
    return found;
}

int TemplateNames::entered(const Field& field) {
    const auto found = std::find(made_.fields.begin(), made_.fields.end(), field);
    if (found == made_.fields.end()) {
        made_.fields.push_back(field);
        return static_cast<int>(made_.fields.size()) - 1;
    }
    return static_cast<int>(found - made_.fields.begin());
}

int TemplateNames::field(const QString& name, qsizetype offset) {
    const qsizetype dot = name.indexOf(u'.');
    if (dot < 0)
        return entered({made_.from, column(*made_.from, name.trimmed(), offset)});
    const QString tableName = name.left(dot).trimmed();
    const Table* found = findTable(tableName);
    if (!found || !knows(found)) {
        QStringList known;
        for (const Table* table : tables_)
            known += table->name;
        source_.fail(offset, QStringLiteral("<rows> 裡沒有資料表 %1，可用 %2").arg(tableName, listed(known)));
    }
    return entered({found, column(*found, name.mid(dot + 1).trimmed(), offset)});
}

int TemplateNames::aggregate(const Aggregate& wanted) {
    const auto found = std::find(made_.aggregates.begin(), made_.aggregates.end(), wanted);
    if (found == made_.aggregates.end()) {
        made_.aggregates.push_back(wanted);
        return static_cast<int>(made_.aggregates.size()) - 1;
    }
    return static_cast<int>(found - made_.aggregates.begin());
}

Piece TemplateNames::fieldPiece(const QString& name, const QString& format, qsizetype offset) {
    Piece piece;
    piece.kind = Piece::Kind::Field;
    piece.index = field(name, offset);
    const ColumnType type = made_.field(piece.index).type();
    piece.format = formatFor(type);
    if (format.contains(u'|')) {
        piece.format = Format::Words;
        piece.words = format.split(u'|');
    } else if (!format.isEmpty()) {
        piece.format = formatNamed(format);
        if (piece.format == Format::Automatic)
            source_.fail(offset, QStringLiteral("格式 %1 不認得").arg(format));
    }
    if (!accepts(piece.format, type))
        source_.fail(offset, QStringLiteral("格式 %1 不合欄位 %2 的型態").arg(format, name));
    return piece;
}

Piece TemplateNames::totalPiece(Total kind, const QString& name, qsizetype offset) {
    Piece piece;
    piece.kind = Piece::Kind::Aggregate;
    const int of = field(name, offset);
    const ColumnType type = made_.field(of).type();
    if (kind == Total::Sum && !isNumber(type))
        source_.fail(offset, QStringLiteral("欄位 %1 不是數字，不能合計").arg(name));
    if ((kind == Total::Min || kind == Total::Max) && type == ColumnType::Text)
        source_.fail(offset, QStringLiteral("欄位 %1 是文字，沒有最大與最小").arg(name));
    piece.index = aggregate({kind, {of}});
    piece.format = kind == Total::Distinct ? Format::Number : formatFor(type);
    return piece;
}

Piece TemplateNames::piece(const QString& name, const QString& format, qsizetype offset, TextPlace place) {
    const QStringList names = namesAt(place);
    if (names.contains(name) && format.isEmpty())
        return named(name);
    const QString word = name.section(u' ', 0, 0);
    if (takesTotals(place) && totalWords().contains(word) && name.contains(u' ') && format.isEmpty())
        return totalPiece(totalNamed(word), name.section(u' ', 1).trimmed(), offset);
    if (name.contains(u'.'))
        return fieldPiece(name, format, offset);
    QStringList known = names;
    if (takesTotals(place))
        for (const QString& total : totalWords())
            known += total + QStringLiteral(" 表.欄位");
    known += QStringLiteral("表.欄位");
    source_.fail(offset, QStringLiteral("{%1} 不認得，可用 %2").arg(name, listed(known)));
}

Pieces TemplateNames::pieces(const QString& text, qsizetype offset, TextPlace place) {
    Pieces all;
    qsizetype at = 0;
    const auto literal = [&](const QString& part) {
        if (part.contains(u'}'))
            source_.fail(offset + at, QStringLiteral("} 之前沒有 {"));
        if (part.isEmpty())
            return;
        Piece piece;
        piece.text = part;
        all.push_back(piece);
    };
    while (at < text.size()) {
        const qsizetype open = text.indexOf(u'{', at);
        literal(text.mid(at, open < 0 ? -1 : open - at));
        if (open < 0)
            break;
        const qsizetype close = text.indexOf(u'}', open);
        if (close < 0)
            source_.fail(offset + open, QStringLiteral("{ 沒有用 } 關閉"));
        const QString inside = text.mid(open + 1, close - open - 1);
        const qsizetype colon = inside.indexOf(u':');
        all.push_back(piece(inside.left(colon < 0 ? inside.size() : colon).trimmed(),
                            colon < 0 ? QString() : inside.mid(colon + 1), offset + open, place));
        at = close + 1;
    }
    return all;
}

} // namespace pontrel::paper
