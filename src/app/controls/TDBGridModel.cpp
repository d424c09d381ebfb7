#include "app/controls/TDBGridModel.h"

#include "store/DataSource.h"
#include "store/RunTimeError.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace pontrel {

namespace {

constexpr int RowsHeld = 2000;

bool isCheckMark(const GridColumn& column, const Value& value) {
    return value.type() == ColumnType::Boolean && !column.cellText;
}

/// Where the column stands; -1 for none.
int placeAmong(const QStringList& names, QStringView column) {
    const auto found = std::find_if(names.begin(), names.end(), [column](const QString& name) {
        return column.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

} // namespace

Value GridRow::value(QStringView column) const {
    const int place = placeAmong(columns_, column);
    return place < 0 ? Value() : values_.at(static_cast<std::size_t>(place));
}

TDBGridModel::TDBGridModel(QObject* parent) : QAbstractTableModel(parent), rows_(RowsHeld) {}

void TDBGridModel::setSource(DataSource* source) {
    source_ = source;
    sourceChanged();
}

void TDBGridModel::setColumns(std::vector<GridColumn> columns) {
    beginResetModel();
    columns_ = std::move(columns);
    mapColumns();
    endResetModel();
}

void TDBGridModel::mapColumns() {
    names_ = isOpen() ? source_->recordset().columns() : QStringList();
    places_.clear();
    for (const GridColumn& column : columns_)
        places_.push_back(placeAmong(names_, column.column));
}

void TDBGridModel::sourceChanged() {
    const qint64 most = std::numeric_limits<int>::max();
    const int count = isOpen() ? static_cast<int>(std::min(source_->recordset().RecordCount(), most)) : 0;
    rows_.clear();
    if (count == count_) {
        mapColumns();
        if (count > 0 && !columns_.empty())
            Q_EMIT dataChanged(index(0, 0), index(count - 1, columnCount() - 1));
        return;
    }
    beginResetModel();
    mapColumns();
    count_ = count;
    endResetModel();
}

void TDBGridModel::hold(int first, int last) {
    for (int row = std::max(first, 0); row <= std::min(last, count_ - 1); ++row) {
        if (!rows_.contains(row))
            read(row);
    }
}

void TDBGridModel::read(int row) const {
    ++rowsRead_;
    rows_.insert(row, std::make_unique<Row>(source_->recordset().rowAt(row)).release());
}

bool TDBGridModel::isOpen() const {
    return source_ != nullptr && source_->recordset().isOpen();
}

std::vector<std::vector<Value>> TDBGridModel::readRows(int first, int count) const {
    return isOpen() ? source_->recordset().rowsAt(first, count) : std::vector<Row>();
}

QString TDBGridModel::textOf(const Value& value, int column) const {
    const GridColumn& shown = columns_[static_cast<std::size_t>(column)];
    if (isCheckMark(shown, value))
        return value.toBoolean() ? shown.spokenMarks.first : shown.spokenMarks.second;
    return shown.cellText ? shown.cellText(value) : TDBGrid::shownText(value);
}

bool TDBGridModel::takeMissed() {
    return std::exchange(missed_, false);
}

const TDBGridModel::Row* TDBGridModel::row(int row) const {
    if (const Row* held = rows_.object(row))
        return held;
    if (painting_) {
        missed_ = true;
        return nullptr;
    }
    if (!isOpen())
        return nullptr;
    try {
        read(row);
    } catch (const RunTimeError&) {
        return nullptr; // asked for by Qt itself; a row that comes into view tells its error
    }
    return rows_.object(row);
}

int TDBGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

int TDBGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant TDBGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto column = static_cast<std::size_t>(index.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant(columns_[column].alignment | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::CheckStateRole && role != Qt::AccessibleTextRole &&
        role != Qt::ToolTipRole && role != FaultRole)
        return {};
    const Row* values = row(index.row());
    if (values == nullptr || places_[column] < 0)
        return {};
    if (role == Qt::AccessibleTextRole)
        return spoken(*values, index.column());
    if (role == Qt::ToolTipRole || role == FaultRole)
        return fault(*values, column);
    const Value& value = values->at(static_cast<std::size_t>(places_[column]));
    const bool checkMark = isCheckMark(columns_[column], value);
    if (role == Qt::CheckStateRole)
        return checkMark ? QVariant(value.toBoolean() ? Qt::Checked : Qt::Unchecked) : QVariant();
    return checkMark ? QVariant() : textOf(value, index.column());
}

QString TDBGridModel::fault(const Row& values, std::size_t column) const {
    return columns_[column].fault ? columns_[column].fault({names_, values}) : QString();
}

QString TDBGridModel::spoken(const Row& values, int column) const {
    const QString text = textOf(values.at(static_cast<std::size_t>(placeOf(column))), column);
    const QString wrong = fault(values, static_cast<std::size_t>(column));
    return wrong.isEmpty() ? text : text + u' ' + wrong;
}

QVariant TDBGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    const GridColumn& column = columns_.at(static_cast<std::size_t>(section));
    if (role == Qt::DisplayRole)
        return column.caption;
    if (role == Qt::TextAlignmentRole)
        return QVariant(column.alignment | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole)
        return column.hint.isEmpty() ? QVariant() : QVariant(column.hint);
    return {};
}

} // namespace pontrel
