#pragma once

#include "windows/attendance/AttendancePage.h"

class QProgressBar;

namespace pontrel {

/// The tab "讀取記錄": reads punch files, shows the punches of a day and purges old ones.
class ReadPage : public AttendancePage {
    Q_OBJECT
  public:
    ReadPage(int tab, AttendanceNames& names);

    [[nodiscard]] QProgressBar& ProgressBar1() const { return *ProgressBar1_; }

  Q_SIGNALS:
    void readPunchFile(); ///< The read button was clicked.

  private:
    /// The indexes of CtrlCmd0.
    enum Button { Read, Query, First, Previous, Next, Last, Refresh, Print, Leave, Purge, ButtonCount };

    void makeControls();
    void CtrlCmd0_Click(int index);
    void move(int index);
    void query();
    void purge();

    QProgressBar* ProgressBar1_ = nullptr;
};

} // namespace pontrel
