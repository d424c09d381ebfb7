#pragma once

#include "app/Window.h"

namespace pontrel {

/// The empty window that fills the client area while no module window is open.
class Form0 : public Window {
    Q_OBJECT
  public:
    explicit Form0(QWidget* parent);

  protected:
    void onLoad() override;
    void onUnload() override {}
};

} // namespace pontrel
