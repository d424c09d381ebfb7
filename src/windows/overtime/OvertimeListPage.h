#pragma once

#include "app/RecordTab.h"
#include "app/controls/TDBGrid.h"

namespace pontrel {

/// The tab that lists the overtime of one employee.
class OvertimeListPage : public RecordTab {
    Q_OBJECT
  public:
    OvertimeListPage();

  private:
    void list();

    CodeBox* employee_; ///< Text5
    TDBGrid* grid_;     ///< TDBG1(0)
    TranslationList names_;
};

} // namespace pontrel
