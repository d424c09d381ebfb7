#include "paper/DataTable.h"

#include "paper/TemplateNames.h"

#include <algorithm>
#include <cmath>

namespace pontrel::paper {

namespace {

constexpr double LengthOfCharacter = 200; ///< In a sheet, of a digit.

/// Formats that are no numbers to other programs.
bool isWritten(Format format) {
    switch (format) {
    case Format::Weekday:
    case Format::DayHour:
    case Format::Months:
    case Format::Words:
        return true;
    default:
        return false;
    }
}

constexpr int FieldWidth = 2000; ///< Of a field that is in no column.

Cell fieldColumn(const Template& layout, int field, const QString& caption) {
    Cell column;
    column.caption = caption;
    column.fields = {field};
    column.format = formatFor(layout.field(field).type());
    column.width = FieldWidth;
    return column;
}

} // namespace

DataTable::DataTable(const ReportDocument& document) : document_(document) {
    const Template& layout = document.layout();
    const auto add = [&](int field, const QString& caption) {
        const bool shown = std::any_of(layout.cells.begin(), layout.cells.end(), [&](const Cell& cell) {
            return cell.fields == std::vector<int>{field} && cell.total == Total::None && cell.when < 0;
        });
        if (field >= 0 && !shown)
            cells_.push_back(fieldColumn(layout, field, caption));
    };
    for (const Group& group : layout.groups) {
        add(group.by, group.caption);
        add(group.name, group.nameCaption);
    }
    cells_.insert(cells_.end(), layout.cells.begin(), layout.cells.end());
    for (const Cell& cell : cells_)
        columns_.push_back({cell.savedAs.isEmpty() ? cell.caption : cell.savedAs,
                            cell.width / LengthOfCharacter, cell.format});
}

std::size_t DataTable::lineCount() const {
    const Groups& groups = document_.groups();
    if (document_.layout().rows == RowKind::Summary)
        return groups.level(groups.depth()).size();
    return document_.rowCount();
}

DataTable::Content DataTable::fromNumber(const Cell& column, Format format, double number,
                                         QString& scratch) const {
    if (isWritten(format)) {
        scratch.resize(0);
        appendNumber(scratch, number, format, column.words);
        return {scratch.isEmpty() ? Kind::Nothing : Kind::Text, 0, scratch};
    }
    switch (column.fields.size() == 1 ? document_.layout().field(column.fields.front()).type()
                                      : ColumnType::Real) {
    case ColumnType::Date:
        return {Kind::Date, number, {}};
    case ColumnType::Time:
        return {Kind::Time, number, {}};
    case ColumnType::DateTime:
        return {Kind::DateTime, number, {}};
    default:
        return {Kind::Number, number, {}};
    }
}

DataTable::Content DataTable::total(std::size_t group, const Cell& column, QString& scratch) const {
    const Groups& groups = document_.groups();
    const double value = groups.totals(groups.depth(), group)[column.aggregate];
    if (column.total == Total::Count || column.total == Total::Distinct)
        return {Kind::Number, std::isnan(value) ? 0 : value, {}};
    if (std::isnan(value) && column.total != Total::Sum)
        return {};
    return fromNumber(column, column.format, std::isnan(value) ? 0 : value, scratch);
}

DataTable::Content DataTable::at(std::size_t line, std::size_t place, QString& scratch) const {
    const Cell& column = cells_[place];
    const ReportRows& rows = document_.rows();
    std::size_t row = line;
    if (document_.layout().rows == RowKind::Summary) {
        if (column.total != Total::None)
            return total(line, column, scratch);
        row = document_.groups().level(document_.groups().depth())[line].first;
    }
    if (!document_.texts().shows(column, row))
        return {};
    const bool one = column.fields.size() == 1;
    const int field = one ? column.fields.front() : -1;
    const ColumnType type = one ? document_.layout().field(field).type() : ColumnType::Real;
    const bool isText =
        column.fields.empty() || (one && (type == ColumnType::Text || !rows.text(row, field).isNull()));
    if (isText || (type == ColumnType::DateTime && isWritten(column.format))) {
        const QStringView text = document_.texts().cell(column, row, scratch);
        return {text.isEmpty() ? Kind::Nothing : Kind::Text, 0, text};
    }
    const std::optional<double> number = document_.texts().number(column, row);
    if (!number)
        return {column.empty.isEmpty() ? Kind::Nothing : Kind::Text, 0, column.empty};
    return fromNumber(column, column.format, *number, scratch);
}

} // namespace pontrel::paper
