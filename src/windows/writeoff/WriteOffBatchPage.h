#pragma once

#include "app/BatchPage.h"
#include "app/RecordTab.h"

#include <array>

class QGridLayout;
class QLabel;
class QLayout;
class QPushButton;

namespace pontrel {

/// The tab that writes off the same swipes of a day for many employees. Its buttons are those of a batch: see
/// BatchPage, which its window makes.
class WriteOffBatchPage : public RecordTab {
    Q_OBJECT
  public:
    WriteOffBatchPage();

    // What the window makes the batch of.
    [[nodiscard]] BatchParts batchParts();
    [[nodiscard]] BatchSteps batchSteps();

    void connectControls(FormState& form) override;

  Q_SIGNALS:
    void leave();            ///< By "離開".
    void backToExceptions(); ///< By "回異常處理".

  private:
    [[nodiscard]] QLayout* makeFields();
    void addReasons(QGridLayout& grid);
    [[nodiscard]] QLayout* makeButtons();
    void clear();
    void run(const QStringList& chosen, const QDateTime& now);

    TwoLists* lists_ = nullptr;
    DateFields date_;
    std::array<CodeBox*, 4> reasons_{}; ///< Text8
    QLabel* account_ = nullptr;         ///< Label4(23)
    QLabel* moment_ = nullptr;          ///< Label16
    QList<QPushButton*> CmdBat;
};

} // namespace pontrel
