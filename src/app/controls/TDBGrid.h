#pragma once

#include "store/Value.h"

#include <QHash>
#include <QTableView>

#include <functional>
#include <utility>
#include <vector>

namespace pontrel {

class ColumnWidths;
class DataSource;
class TDBGridModel;

/// Texts for the values of a code column. Codes are found without regard to the case of A to Z, as the store
/// compares them; a value without an entry shows as it is.
class TranslationList {
  public:
    void clear() { texts_.clear(); }
    void add(const QString& code, const QString& text);
    [[nodiscard]] QString text(const QString& code) const;

  private:
    QHash<QString, QString> texts_;
};

/// The values of a row of the source by the names of its columns.
class GridRow {
  public:
    /// Both must outlive the object.
    GridRow(const QStringList& columns, const std::vector<Value>& values)
        : columns_(columns), values_(values) {}

    /// Null where the row has no such column.
    [[nodiscard]] Value value(QStringView column) const;

  private:
    const QStringList& columns_;
    const std::vector<Value>& values_;
};

/// A column of a grid.
struct GridColumn {
    QString caption;
    QString column; ///< The bound column of the source; several grid columns may have the same.
    int width = 60; ///< In pixels.
    Qt::Alignment alignment = Qt::AlignLeft;
    std::function<QString(const Value&)> cellText{}; ///< In place of the usual text, where it is set.
    QString hint{};                                  ///< What the caption leaves unsaid, in a tooltip.
    /// What assistive technology says of a check mark that is set, and of one that is not.
    std::pair<QString, QString> spokenMarks{QStringLiteral("是"), QStringLiteral("否")};
    /// What is wrong with the cell of a row, told by its tooltip; an empty text where nothing is. A cell with
    /// a fault is tinted and has a mark in its corner.
    std::function<QString(const GridRow&)> fault{};
};

/// A read-only list of a source's rows. It holds the rows that it shows and reads them when they come into
/// view, so that a list of a million rows opens at once. Its current row follows the source's, and the
/// source's follows it, except while a row is being edited; while one is added, which the list does not have
/// yet, none is current. Dates show as short dates, times as short times, booleans as check marks. A typed
/// letter searches nothing: it would have to read every row. Its context menu, by the mouse or the keyboard,
/// has the widget's own actions() and then what copies and exports the list; a press of the right button
/// chooses no row.
class TDBGrid : public QTableView {
    Q_OBJECT
  public:
    explicit TDBGrid(QWidget* parent = nullptr);

    /// The source must outlive the grid or be taken away with null.
    void setSource(DataSource* source);
    void setColumns(std::vector<GridColumn> columns);

    /// Leaves a pixel less beside each text, for a grid with little room. Not at first.
    void setTightCells(bool tight) { tightCells_ = tight; }
    [[nodiscard]] bool hasTightCells() const { return tightCells_; }

    /// What to do first, shown in place of the rows while there are none, and told to assistive technology
    /// then, behind the description that the list has by now. Empty at first.
    void setEmptyText(const QString& text);

    /// A text as the grid shows values without a cell text of their own.
    [[nodiscard]] static QString shownText(const Value& value);

    [[nodiscard]] const TDBGridModel& rows() const { return *model_; }

    /// Shows the cells anew, after what a cell text leans on has changed.
    void refreshCells();

    void keyboardSearch(const QString& text) override;

  Q_SIGNALS:
    /// The user has chosen a row, by the mouse or the keyboard, also by a click on the row that was current
    /// already. The source stands on it. Never for a row that became current by a refresh or by code.
    void rowChosen();
    void rowTaken(); ///< By a double click on it, or by Enter where there is one. The source stands on it.

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void sourceRowsChanged();
    void followSource();
    void moveSource(int row);
    void holdVisibleRows();
    void tellWhetherEmpty();
    [[nodiscard]] QPoint menuPlace() const;

    DataSource* source_ = nullptr;
    TDBGridModel* model_;
    ColumnWidths* widths_;
    bool following_ = false;
    int rowBeforePress_ = -1; ///< The current row when the mouse was pressed last.
    bool tightCells_ = false;
    QString emptyText_;
    QString ownDescription_; ///< For assistive technology, rows or none.
};

} // namespace pontrel
