#pragma once

#include "app/help/Manual.h"

#include <QObject>

class QWidget;

namespace pontrel {

/// The place in the manual that tells of a window as it stands: of the main window that of the window in
/// front in it, of a window with tabs that of the tab in front, of a message box that of its message.
[[nodiscard]] HelpPlace helpPlaceOf(const QWidget& window);

/// F1: opens the help at the place of the window that has the keyboard, dialogs included, ahead of every
/// control. What the window does otherwise with its keys, and what is being typed, stays as it is.
class HelpKey : public QObject {
    Q_OBJECT
  public:
    explicit HelpKey(QObject* application);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace pontrel
