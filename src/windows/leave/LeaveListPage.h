#pragma once

#include "app/RecordTab.h"

namespace pontrel {

struct LeaveNames;

/// The tab that lists the leave notes of one employee, the latest first.
class LeaveListPage : public RecordTab {
    Q_OBJECT
  public:
    /// The names are to outlive it.
    LeaveListPage(int tab, const LeaveNames& names);

  private:
    void showNotesOf(const QString& EmpNo);
};

} // namespace pontrel
