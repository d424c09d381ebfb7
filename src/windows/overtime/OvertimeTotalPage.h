#pragma once

#include "app/PeriodTab.h"

namespace pontrel {

/// The tab that adds up the overtime of one employee in a period.
class OvertimeTotalPage : public PeriodTab {
    Q_OBJECT
  public:
    OvertimeTotalPage();

  private:
    void ask() override;
    void endTouched() override;

    TranslationList names_;
};

} // namespace pontrel
