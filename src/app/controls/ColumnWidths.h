#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <vector>

class QAction;
class QHeaderView;
class QTableView;

namespace pontrel {

/// Keeps the widths that the user gives to columns of a grid among his habits, as "<window>.<grid>", and
/// gives them back when the grid is shown again. A column that is there no more, or whose entry is no width,
/// has the program's.
class ColumnWidths : public QObject {
    Q_OBJECT
  public:
    /// The program's width of a column, in pixels, and what the column is known by.
    struct Stated {
        QString name;
        int width;
    };

    explicit ColumnWidths(QTableView& grid);

    /// The grid has these columns from now on, in their order, with these widths.
    void columnsMade(std::vector<Stated> columns);

    /// Goes back to the program's widths; the last entry of the grid's context menu.
    [[nodiscard]] QAction* restoreAction() const { return restore_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] QString key() const; ///< Empty for a grid that cannot be told from others.
    [[nodiscard]] QList<int> widthsNow() const;
    [[nodiscard]] int keptCount() const; ///< Of the columns, but for a last one that fills what is left.
    void giveBack();
    void keepChanged();
    void restoreStated();

    QTableView& grid_;
    QAction* restore_;
    std::vector<Stated> columns_;
    QList<int> before_; ///< The widths when the mouse was pressed in the head.
};

} // namespace pontrel
