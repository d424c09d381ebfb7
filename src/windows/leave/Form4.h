#pragma once

#include "app/RecordWindow.h"
#include "windows/leave/LeaveNames.h"

namespace pontrel {

class LeaveBatchTab;

/// The leave window "差假管理": leave types, grants and notes, the batch, and two ways of asking what leave
/// there was, a tab each.
class Form4 : public RecordWindow {
    Q_OBJECT
  public:
    explicit Form4(QWidget* parent);

    /// Makes it known as module window 4.
    static void registerWindow();

  protected:
    void readAtLoad() override;

  private:
    LeaveNames names_;
    LeaveBatchTab* batch_;
};

} // namespace pontrel
