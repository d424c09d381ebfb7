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

QString spokenMark(const GridColumn& column, const Value& value) {
    return value.toBoolean() ? column.spokenMarks.first : column.spokenMarks.second;
}

} // namespace

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
    const QStringList names =
        source_ != nullptr && source_->recordset().isOpen() ? source_->recordset().columns() : QStringList();
    places_.clear();
    for (const GridColumn& column : columns_) {
        const auto found = std::find_if(names.begin(), names.end(), [&column](const QString& name) {
            return name.compare(column.column, Qt::CaseInsensitive) == 0;
        });
        places_.push_back(found == names.end() ? -1 : static_cast<int>(found - names.begin()));
    }
}

void TDBGridModel::sourceChanged() {
    const bool open = source_ != nullptr && source_->recordset().isOpen();
    const qint64 most = std::numeric_limits<int>::max();
    const int count = open ? static_cast<int>(std::min(source_->recordset().RecordCount(), most)) : 0;
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
    if (source_ == nullptr || !source_->recordset().isOpen())
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
    if (role != Qt::DisplayRole && role != Qt::CheckStateRole && role != Qt::AccessibleTextRole)
        return {};
    const Row* values = row(index.row());
    if (values == nullptr || places_[column] < 0)
        return {};
    const Value& value = values->at(static_cast<std::size_t>(places_[column]));
    const bool checkMark = value.type() == ColumnType::Boolean && !columns_[column].cellText;
    if (role == Qt::CheckStateRole)
        return checkMark ? QVariant(value.toBoolean() ? Qt::Checked : Qt::Unchecked) : QVariant();
    if (checkMark)
        return role == Qt::AccessibleTextRole ? QVariant(spokenMark(columns_[column], value)) : QVariant();
    return columns_[column].cellText ? columns_[column].cellText(value) : TDBGrid::shownText(value);
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
