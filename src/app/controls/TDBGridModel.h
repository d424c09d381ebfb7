#pragma once

#include "app/controls/TDBGrid.h"

#include <QAbstractTableModel>
#include <QCache>

#include <vector>

namespace pontrel {

/// The rows of a source as a grid shows them: holds the rows read last, at most a few screens of them.
class TDBGridModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    static constexpr int FaultRole = Qt::UserRole; ///< What is wrong with the cell.

    explicit TDBGridModel(QObject* parent);

    void setSource(DataSource* source);
    void setColumns(std::vector<GridColumn> columns);
    [[nodiscard]] const std::vector<GridColumn>& columns() const { return columns_; }

    /// Takes over the source's row count and forgets the rows held.
    void sourceChanged();

    /// Reads the rows from first to last that are not held yet. Throws RunTimeError.
    void hold(int first, int last);

    /// As many rows of the source as there are from the first one on, at most `count`, as they are now; what
    /// is held stays. None where the source is not open. Throws RunTimeError.
    [[nodiscard]] std::vector<std::vector<Value>> readRows(int first, int count) const;
    [[nodiscard]] bool isOpen() const; ///< Whether there is an open source.
    /// Where a column stands in a row of the source; -1 for none.
    [[nodiscard]] int placeOf(int column) const { return places_[static_cast<std::size_t>(column)]; }
    /// A value as its column shows it; of a check mark, the word for it.
    [[nodiscard]] QString textOf(const Value& value, int column) const;

    /// How many rows have been read so far, each time that one was.
    [[nodiscard]] qint64 rowsRead() const { return rowsRead_; }

    /// Forgets one row, or all of them, so that they are read as they are now.
    void forget(int row) { rows_.remove(row); }
    void forgetAll() { rows_.clear(); }

    /// While set, a row that is not held shows empty and is noted as missed instead of being read.
    void setPainting(bool painting) { painting_ = painting; }
    /// Whether a painted row was missed since the last call.
    [[nodiscard]] bool takeMissed();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    using Row = std::vector<Value>;

    [[nodiscard]] const Row* row(int row) const;
    void read(int row) const;
    void mapColumns();
    [[nodiscard]] QString fault(const Row& values, std::size_t column) const;
    [[nodiscard]] QString spoken(const Row& values, int column) const;

    DataSource* source_ = nullptr;
    std::vector<GridColumn> columns_;
    QStringList names_;       ///< Of the columns of a row of the source.
    std::vector<int> places_; ///< Where each column stands in a row of the source; -1 for none.
    int count_ = 0;
    bool painting_ = false;
    mutable bool missed_ = false;
    mutable qint64 rowsRead_ = 0;
    mutable QCache<int, Row> rows_;
};

} // namespace pontrel
