#pragma once

#include "app/RecordTab.h"

namespace pontrel {

struct LeaveNames;

/// The tab of the leave grants: the days of a leave type that a scheme gives in a band of seniority.
/// Deliberate: bands are not checked against each other, nor a band's end against its begin.
class GrantPage : public RecordTab {
    Q_OBJECT
  public:
    /// The names are to outlive it.
    GrantPage(int tab, const LeaveNames& names);

    [[nodiscard]] RecordRules rules() override;
    [[nodiscard]] RecordSteps steps() override;

  private:
    void makeFields();
    void showKnownGrants();
};

} // namespace pontrel
