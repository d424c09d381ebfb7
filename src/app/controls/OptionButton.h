#pragma once

#include <QRadioButton>

namespace pontrel {

/// One of several options of which one is chosen. An arrow key chooses the option that it moves to, as a
/// click does: also where none was chosen before, and where the one it comes to is only shown as chosen.
class OptionButton : public QRadioButton {
    Q_OBJECT
  public:
    using QRadioButton::QRadioButton;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace pontrel
