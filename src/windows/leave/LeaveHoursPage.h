#pragma once

#include "app/RecordTab.h"

namespace pontrel {

/// The tab that sums up the leave of one employee in a period, by leave type.
class LeaveHoursPage : public RecordTab {
    Q_OBJECT
  public:
    explicit LeaveHoursPage(int tab);

    void connectControls(FormState& form) override;

  private:
    void showHours();

    CodeBox* employee_ = nullptr;
    DateFields from_; ///< TDBMask1(3) and TDBDate1(3)
    DateFields to_;   ///< TDBMask1(4) and TDBDate1(4)
};

} // namespace pontrel
