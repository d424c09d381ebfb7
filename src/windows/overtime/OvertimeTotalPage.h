#pragma once

#include "app/RecordTab.h"
#include "app/controls/TDBGrid.h"

namespace pontrel {

/// The tab that adds up the overtime of one employee in a period.
class OvertimeTotalPage : public RecordTab {
    Q_OBJECT
  public:
    OvertimeTotalPage();

    void connectControls(FormState& form) override;

  private:
    void total();

    CodeBox* employee_; ///< Text4
    DateFields first_;
    DateFields last_;
    TDBGrid* grid_; ///< TDBG1(1)
    TranslationList names_;
};

} // namespace pontrel
