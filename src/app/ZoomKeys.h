#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace pontrel {

/// Ctrl with plus, minus and 0 in the main window, and in the dialogs over it or before it: chooses the zoom
/// that the program has from its next start on, and tells it in a line. Windows beside the main window keep
/// these keys for themselves.
class ZoomKeys : public QObject {
    Q_OBJECT
  public:
    /// While one exists, these keys mean nothing: for dialogs in which the zoom itself is chosen.
    class Rest {
      public:
        Rest();
        ~Rest();
        Rest(const Rest&) = delete;
        Rest& operator=(const Rest&) = delete;
    };

    explicit ZoomKeys(QObject* parent);

    /// For the application: sees all events ahead of whom they are for.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class Wish { None, Larger, Smaller, FullSize };

    [[nodiscard]] static Wish wishOf(const QKeyEvent& key);
    static void fulfil(Wish wish, QWidget& window);
};

} // namespace pontrel
