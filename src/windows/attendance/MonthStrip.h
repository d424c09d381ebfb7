#pragma once

#include "rules/attendance/MonthStates.h"

#include <QDate>
#include <QWidget>

#include <vector>

class QKeyEvent;
class QLabel;
class QPushButton;

namespace pontrel {

class DayCell;

/// The days of a month, each with the colour and the sign of its state. A click or the arrow keys lead to
/// another day, Page Up and Page Down to another month, Home and End to the ends of the month.
class MonthStrip : public QWidget {
    Q_OBJECT
  public:
    explicit MonthStrip(QWidget* parent);

    /// Shows the days of a month, which must not be empty, with that one of them chosen.
    void setMonth(const std::vector<MonthDay>& days, QDate chosen);
    /// Gives the keyboard to the day that is chosen.
    void focusDay();

  Q_SIGNALS:
    void dayChosen(const QDate& day); ///< By the user; it may be of another month.

  private:
    void makeCells();
    [[nodiscard]] bool moveByKey(const QKeyEvent& key);
    void choose(QDate day);

    QLabel* caption_;
    std::vector<DayCell*> cells_;
    QDate chosen_;
};

} // namespace pontrel
