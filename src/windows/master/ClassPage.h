#pragma once

#include "windows/master/MasterTab.h"

class QGridLayout;

namespace pontrel {

/// The tab of the shift classes: six steps of a slot, its days and the rest days after them. Deliberate:
/// nothing typed here is checked, and Enter moves nowhere.
class ClassPage : public RecordTab {
    Q_OBJECT
  public:
    explicit ClassPage(int tab);

    [[nodiscard]] bool entersAsTab() const override { return false; }

  private:
    void addStep(QGridLayout& grid, int step);
};

} // namespace pontrel
