#pragma once

#include "app/PeriodTab.h"

namespace pontrel {

/// The tab that counts how often each reason has written off a swipe of an employee in a period. What it
/// shows is the last count of any user.
class WriteOffCountPage : public PeriodTab {
    Q_OBJECT
  public:
    WriteOffCountPage();

  private:
    void ask() override;

    TranslationList employeeNames_;
    TranslationList reasonNames_;
};

} // namespace pontrel
