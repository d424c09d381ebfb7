#pragma once

#include "app/RecordTab.h"
#include "app/controls/TDBGrid.h"

#include <array>

class QLabel;
class QLayout;

namespace pontrel {

/// The tab of the write-off entries: an employee, a day and a reason for each of its four swipes. Deliberate:
/// nothing is asked of an entry but what its key and the codes ask.
class WriteOffEntryPage : public RecordTab {
    Q_OBJECT
  public:
    WriteOffEntryPage();

    [[nodiscard]] RecordRules rules() override;
    [[nodiscard]] RecordSteps steps() override;

  private:
    [[nodiscard]] TDBGrid* makeList();
    void makeCodes();
    [[nodiscard]] QLayout* makeLines();
    void startRow();
    void focusFirst();
    void showNamesOfRow();

    CodeBox* employee_ = nullptr;       ///< Text5(0)
    std::array<CodeBox*, 4> reasons_{}; ///< Text5(1) to (4)
    DateFields date_;
    QLabel* account_ = nullptr; ///< Label4(0)
    QLabel* entered_ = nullptr; ///< Label5
    TranslationList employeeNames_;
};

} // namespace pontrel
