#pragma once

#include "app/BatchPage.h"
#include "app/RecordTab.h"
#include "app/WindowHost.h"
#include "rules/leave/LeaveBatch.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace pontrel {

class TDBTime;
class TwoLists;

/// The tab of the leave batch: one leave of one day for many employees, and the one place where balances are
/// charged. Deliberate: a day that has leave already brings no question here.
class LeaveBatchTab : public RecordTab, private WindowHost<LeaveBatchHost> {
    Q_OBJECT
  public:
    explicit LeaveBatchTab(int tab);

    /// What the window makes the batch of.
    [[nodiscard]] BatchParts batchParts() const;
    [[nodiscard]] BatchSteps batchSteps();

    /// Balance codes and the length of employees' codes, which hold until the window opens again. Throws
    /// RunTimeError.
    void readSettings(Database& database);

    void connectControls(FormState& form) override;

  private:
    [[nodiscard]] QWidget* makePeriod();
    [[nodiscard]] QLayout* makeType();
    [[nodiscard]] QLayout* makeButtons();
    void clear();
    void run(const QStringList& chosen, const QDateTime& now);
    void fillTimes();
    void showHours(const QString& HoliHours) override;

    BalanceCodes codes_;
    int LenEmpNo = 0;
    TwoLists* lists_ = nullptr;
    DateFields date_;
    TDBTime* begin_ = nullptr; ///< TDBTime1(2)
    TDBTime* end_ = nullptr;   ///< TDBTime1(3)
    CodeBox* type_ = nullptr;
    QLineEdit* hours_ = nullptr; ///< Text8(1)
    QLabel* account_ = nullptr;  ///< Label4(23)
    QLabel* moment_ = nullptr;   ///< Label16
    QList<QPushButton*> CmdBat;
};

} // namespace pontrel
