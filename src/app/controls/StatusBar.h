#pragma once

#include <QLabel>
#include <QWidget>

#include <array>

class QTimer;

namespace pontrel {

/// One panel of the status bar.
class StatusPanel : public QLabel {
    Q_OBJECT
  public:
    explicit StatusPanel(QWidget* parent) : QLabel(parent) {}

    /// Lets assistive technology meet the panel as a button that can be pressed while it is raised.
    void tellAsButton() { toldAsButton_ = true; }
    [[nodiscard]] bool isToldAsButton() const { return toldAsButton_; }
    [[nodiscard]] bool isRaised() const { return frameShadow() == QFrame::Raised; }

  Q_SIGNALS:
    void clicked();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool toldAsButton_ = false;
    bool pressed_ = false; ///< By the mouse, which has not been released yet.
};

/// The status bar of the record windows, object name "StbTool", with the panels "StbTool(1)" to "StbTool(8)":
/// row counter, word of the edit state, lock keys, clock, date, and "離開", which acts as a button while it
/// is raised.
class StatusBar : public QWidget {
    Q_OBJECT
  public:
    static constexpr int PanelCount = 8;
    static constexpr int LeavePanel = 8;

    explicit StatusBar(QWidget* parent = nullptr);

    /// Panels count from 1.
    [[nodiscard]] QString text(int panel) const;
    void setText(int panel, const QString& text);

    /// Panel 1: "資料錄:3/17" for position 2, counted from 0, of 17.
    void showCounter(qint64 position, qint64 count);

    /// Raises or sinks panel 8; raised at first.
    void setLeaveRaised(bool raised);
    [[nodiscard]] bool isLeaveRaised() const { return leaveRaised_; }

  Q_SIGNALS:
    void leaveClicked(); ///< Panel 8 was clicked while raised.

  private:
    [[nodiscard]] StatusPanel* panel(int index) const;
    void showClock();
    void showLockKeys();

    std::array<StatusPanel*, PanelCount> panels_{};
    bool leaveRaised_ = true;
    QTimer* timer_;
};

} // namespace pontrel
