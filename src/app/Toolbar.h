#pragma once

#include <QWidget>

#include <array>

class QAbstractButton;

namespace pontrel {

/// The main window's toolbar: eight buttons, numbered from 1, one above the other. It is disabled as a whole
/// while a module window is open, with that window's button alone lit.
class Toolbar : public QWidget {
    Q_OBJECT
  public:
    static constexpr int ButtonCount = 8;
    static constexpr int Width = 65; ///< In pixels.

    explicit Toolbar(QWidget* parent);

    /// The button of that number, 1 to 8.
    [[nodiscard]] QAbstractButton* button(int number) const;
    [[nodiscard]] QString caption(int number) const;

    /// Whether the button itself is enabled, be the toolbar as it may.
    [[nodiscard]] bool isButtonEnabled(int number) const;
    void setButtonEnabled(int number, bool enabled);

  Q_SIGNALS:
    void ButtonClick(int number);

  private:
    std::array<QAbstractButton*, ButtonCount> buttons_{};
};

} // namespace pontrel
