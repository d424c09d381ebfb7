#pragma once

#include "app/RecordChild.h"

#include <array>

class QCheckBox;
class QGroupBox;
class QLineEdit;

namespace pontrel {

/// The accounts, "權限管理": name, password and the eight rights of each user. What is changed here counts
/// from the next login on.
class FrmPsw : public RecordChild {
    Q_OBJECT
  public:
    explicit FrmPsw(QWidget* parent);

    /// Makes it known as a child window.
    static void registerWindow();

  private:
    void makeBox(int index, const QString& caption, const QString& column);
    void makeRights();

    std::array<QLineEdit*, 2> text1{};
    QGroupBox* Frame1 = nullptr;
    std::array<QCheckBox*, 8> Check1{};
};

} // namespace pontrel
