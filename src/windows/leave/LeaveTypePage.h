#pragma once

#include "app/RecordTab.h"

namespace pontrel {

/// The tab of the leave types. Deliberate: a type goes also where notes have it, which then show its bare
/// code.
class LeaveTypePage : public RecordTab {
    Q_OBJECT
  public:
    explicit LeaveTypePage(int tab);

    [[nodiscard]] RecordRules rules() override;
};

} // namespace pontrel
