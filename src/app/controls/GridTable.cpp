#include "app/controls/GridTable.h"

#include "store/Format.h"

namespace pontrel {

namespace {

using paper::PlainTable;

constexpr int RowsOfBatch = 500; ///< Read in some milliseconds, during which nobody can write.
constexpr double PixelsOfCharacter = 6;
constexpr double FilterCharacters = 2; ///< What the mark of a filter takes of a caption.
constexpr double DayMilliseconds = 24.0 * 60 * 60 * 1000;

double dayNumber(QDate day) {
    return static_cast<double>(day.toJulianDay());
}

/// A value that a grid shows by that text, its own or another.
PlainTable::Content contentOf(const Value& value, const QString& text, bool isOwn) {
    using Kind = PlainTable::Kind;
    const PlainTable::Content shown{text.isEmpty() ? Kind::Nothing : Kind::Text, 0, text};
    const ColumnType type = value.type();
    if (type == ColumnType::Unknown || type == ColumnType::Text || type == ColumnType::Boolean)
        return shown;
    if (!isOwn && text != TDBGrid::shownText(value)) {
        const bool dayAlone = type == ColumnType::DateTime && text == shortDate(value.toDateTime().date());
        return dayAlone ? PlainTable::Content{Kind::Date, dayNumber(value.toDateTime().date()), text} : shown;
    }
    switch (type) {
    case ColumnType::Date:
        return {Kind::Date, dayNumber(value.toDate()), text};
    case ColumnType::Time:
        return {Kind::Time, value.toTime().msecsSinceStartOfDay() / 1000.0, text};
    case ColumnType::DateTime: {
        const QDateTime both = value.toDateTime();
        return {Kind::DateTime, dayNumber(both.date()) * DayMilliseconds + both.time().msecsSinceStartOfDay(),
                text};
    }
    default:
        return {Kind::Number, value.toReal(), text};
    }
}

} // namespace

GridTable::GridTable(const TDBGrid& grid) : model_(grid.rows()) {
    const std::vector<GridColumn>& made = model_.columns();
    for (int section = 0; section < model_.columnCount(); ++section) {
        if (grid.isColumnHidden(section))
            continue;
        const GridColumn& column = made[static_cast<std::size_t>(section)];
        sections_.push_back(section);
        columns_.push_back({column.caption, column.width / PixelsOfCharacter + FilterCharacters});
    }
}

std::size_t GridTable::lineCount() const {
    return static_cast<std::size_t>(model_.rowCount());
}

const Value& GridTable::value(std::size_t line, std::size_t column) const {
    static const Value nothing;
    if (line < batchBegin_ || line >= batchBegin_ + batch_.size()) {
        batch_ = model_.readRows(static_cast<int>(line), RowsOfBatch);
        batchBegin_ = line;
    }
    const int place = model_.placeOf(sections_[column]);
    if (batch_.empty() || place < 0)
        return nothing;
    return batch_[line - batchBegin_][static_cast<std::size_t>(place)];
}

QString GridTable::text(std::size_t line, std::size_t column) const {
    return model_.textOf(value(line, column), sections_[column]);
}

PlainTable::Content GridTable::at(std::size_t line, std::size_t column, QString& scratch) const {
    const Value& held = value(line, column);
    scratch = model_.textOf(held, sections_[column]);
    const bool isOwn = !model_.columns()[static_cast<std::size_t>(sections_[column])].cellText;
    return contentOf(held, scratch, isOwn);
}

} // namespace pontrel
