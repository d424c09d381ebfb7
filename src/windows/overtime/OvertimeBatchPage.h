#pragma once

#include "app/BatchPage.h"
#include "app/RecordTab.h"

class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

namespace pontrel {

class TDBTime;

/// The tab that gives the same overtime of a day to many employees. Its buttons are those of a batch: see
/// BatchPage, which its window makes.
class OvertimeBatchPage : public RecordTab {
    Q_OBJECT
  public:
    OvertimeBatchPage();

    // What the window makes the batch of.
    [[nodiscard]] BatchParts batchParts();
    [[nodiscard]] BatchSteps batchSteps();

    void connectControls(FormState& form) override;

  Q_SIGNALS:
    void leave(); ///< By "離開".

  private:
    [[nodiscard]] QLayout* makeFields();
    [[nodiscard]] QLayout* makeButtons();
    void fillHours();
    void run(const QStringList& chosen, const QDateTime& now);

    TwoLists* lists_ = nullptr;
    DateFields date_;
    TDBTime* begin_ = nullptr;   ///< overTime(2)
    TDBTime* end_ = nullptr;     ///< overTime(3)
    QLineEdit* hours_ = nullptr; ///< Text8(1)
    QLabel* account_ = nullptr;  ///< Label4(23)
    QLabel* moment_ = nullptr;   ///< Label16
    QList<QPushButton*> CmdBat;
};

} // namespace pontrel
