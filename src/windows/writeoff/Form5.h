#pragma once

#include "app/RecordWindow.h"

namespace pontrel {

/// The write-off window "註銷管理": reasons, the batch, the entries and the counts, a tab each.
class Form5 : public RecordWindow {
    Q_OBJECT
  public:
    explicit Form5(QWidget* parent);

    /// Makes it known as module window 5.
    static void registerWindow();
};

} // namespace pontrel
