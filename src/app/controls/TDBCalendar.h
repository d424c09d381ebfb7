#pragma once

#include "app/controls/TypedDay.h"
#include "rules/Calendar.h"

#include <QDate>
#include <QWidget>

#include <map>
#include <set>

class QLabel;
class QTableView;
class QToolButton;

namespace pontrel {

class TDBCalendarModel;

/// A month calendar from 1911 to 2100, with named groups of days of which it shows one, in a style of its own
/// beside today and the day selected. Its date is the day selected.
///
/// A day is picked by a click on it, by Enter or by Space; everything else only moves: the arrow keys by days
/// and weeks, Home and End within the month, Page Up and Page Down by a month, with Ctrl by a year, and the
/// buttons at its head, a day typed in digits and T for today (TypedDay). A second click of a double click is
/// a click like any other.
class TDBCalendar : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QDate date READ date WRITE setDate NOTIFY dateChanged USER true)
  public:
    static constexpr int FirstYear = RepublicZero;
    static constexpr int LastYear = 2100;

    /// Opens on today.
    explicit TDBCalendar(QWidget* parent = nullptr);

    [[nodiscard]] QDate date() const { return date_; }
    /// Selects the day and shows its month. A day out of range is moved into it; an invalid one does nothing.
    void setDate(QDate date);

    /// A group of days, empty, with the words that tell the user what its days are. One that is there under
    /// the name begins anew.
    void createGroup(const QString& name, const QString& description);
    // A group that was not created has no days and takes none.
    void addDay(const QString& name, QDate day); ///< An invalid day does nothing.
    void removeDay(const QString& name, QDate day);
    void clearDays(const QString& name);
    [[nodiscard]] bool hasDay(const QString& name, QDate day) const;
    [[nodiscard]] std::set<QDate> days(const QString& name) const;

    /// Makes it the group whose days are marked; a name without a group marks none.
    void showGroup(const QString& name);

  Q_SIGNALS:
    void picked(QDate day);
    void dateChanged(QDate day); ///< Another day is selected, by the user or by code.
    void monthChanged(int year, int month);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Group {
        QString description;
        std::set<QDate> days;
    };

    [[nodiscard]] QWidget* makeHead();
    void makeDays();
    [[nodiscard]] QWidget* makeLegend();
    [[nodiscard]] QToolButton* makeButton(const QString& name, const QString& caption, const QString& spoken,
                                          int months);
    [[nodiscard]] Group* groupNamed(const QString& name);
    bool goByTyping(const QKeyEvent& key);
    void showHint();
    void showMonth();
    void showSelected();
    void markDays();

    QDate date_;
    TypedDay typed_;
    QString shownGroup_;
    std::map<QString, Group> groups_;
    TDBCalendarModel* model_;
    QTableView* days_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* legend_ = nullptr;
    QLabel* hint_ = nullptr; ///< What is being typed.
    QWidget* legendSample_ = nullptr;
};

} // namespace pontrel
