#pragma once

#include "windows/attendance/AttendancePage.h"

class QLabel;
class QLineEdit;

namespace pontrel {

/// The tab "記錄查詢": the punches of an employee.
class PunchQueryPage : public AttendancePage {
    Q_OBJECT
  public:
    PunchQueryPage(int tab, AttendanceNames& names);

  private:
    void makeControls();
    void Text1_Change();
    void Text1_Enter();
    void showPunchesOfEmployee();

    bool EmpNotFound = false; ///< Text1 holds a code that no employee has.
    TDBGrid* TDBG2 = nullptr;
    QLineEdit* Text1 = nullptr;
    QLabel* Label3 = nullptr;
};

} // namespace pontrel
