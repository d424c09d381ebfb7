#pragma once

#include "rules/attendance/DayAccount.h"

#include <QDialog>

class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace pontrel {

class DayPicture;
class MonthStrip;

/// The modal dialog "當日判讀": how the result of an employee's day came about. A picture of the day, the
/// sentences of the calculation, what the row holds and what a recalculation would change; beside them the
/// days of the month, which lead to one another.
class DayJudgement : public QDialog {
    Q_OBJECT
  public:
    /// Explains the result of that slot in the list, or with an empty code the first one of the day, and
    /// shows it. Where the store cannot be read, the message of a failed open takes its place.
    static void ask(QWidget* parent, const QString& EmpNo, QDate date, const QString& TimeNo = {},
                    DayList list = DayList::Exceptions);

    [[nodiscard]] const DayAccount& account() const { return account_; }

  private:
    /// The indexes of CmdDay.
    enum Button { Copy, Print, Pdf, Leave };

    DayJudgement(QWidget* parent, DayAccount account);

    void makeControls();
    void makeOtherRowButton();
    [[nodiscard]] QHBoxLayout* makeButtons();
    void showAccount();
    void goTo(QDate day);
    void showRow(QDate day, const QString& TimeNo);
    /// The slot of the next further row of the day, by its code; empty where there is none.
    [[nodiscard]] QString otherTimeNo() const;
    void CmdDay_Click(int index);
    void copy();
    void print();
    void savePdf();

    DayAccount account_;
    /// The row that was chosen last by more than its day, to which the day leads back.
    QDate chosenDay_;
    QString chosenTimeNo_;
    QLabel* title_ = nullptr;
    QPushButton* other_ = nullptr; ///< Leads to the day's further row.
    DayPicture* picture_ = nullptr;
    QPlainTextEdit* sentences_ = nullptr;
    MonthStrip* month_ = nullptr;
    QLabel* status_ = nullptr;
};

} // namespace pontrel
