#pragma once

#include "app/PeriodTab.h"

namespace pontrel {

/// The tab that sums up the leave of one employee in a period, by leave type.
class LeaveHoursPage : public PeriodTab {
    Q_OBJECT
  public:
    explicit LeaveHoursPage(int tab);

  private:
    void ask() override;
};

} // namespace pontrel
