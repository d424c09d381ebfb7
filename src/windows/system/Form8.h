#pragma once

#include "app/Window.h"

#include <array>

class QPushButton;

namespace pontrel {

/// System management: four buttons that lead to the settings and the accounts.
class Form8 : public Window {
    Q_OBJECT
  public:
    explicit Form8(QWidget* parent);

    /// Makes it the module window of toolbar button 8.
    static void registerWindow();

  protected:
    void onLoad() override;
    void onUnload() override;

  private:
    void CmdSet_Click(int index);

    std::array<QPushButton*, 4> CmdSet_{};
};

} // namespace pontrel
