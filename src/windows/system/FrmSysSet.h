#pragma once

#include "app/RecordChild.h"

#include <array>

class QGroupBox;
class QLineEdit;
class QPushButton;

namespace pontrel {

/// The settings, "系統設定": the one row of Syst01. Its readers ask for it at each use, so that a change
/// counts at once.
class FrmSysSet : public RecordChild {
    Q_OBJECT
  public:
    explicit FrmSysSet(QWidget* parent);

    /// Makes it known as a child window.
    static void registerWindow();

  private:
    void makeFrame();
    void makeBox(int index);
    void CmdBrow_Click();

    QGroupBox* Frame1 = nullptr;
    std::array<QLineEdit*, 10> Text1{};
    QPushButton* CmdBrow = nullptr;
};

} // namespace pontrel
