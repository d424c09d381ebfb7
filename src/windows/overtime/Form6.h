#pragma once

#include "app/RecordWindow.h"

namespace pontrel {

/// The overtime window "加班管理": the entries, the batch, the list of one employee and his totals, a tab
/// each.
class Form6 : public RecordWindow {
    Q_OBJECT
  public:
    explicit Form6(QWidget* parent);

    /// Makes it known as module window 6.
    static void registerWindow();
};

} // namespace pontrel
