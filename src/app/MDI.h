#pragma once

#include "app/SystemMenu.h"

#include <QWidget>

namespace pontrel {

class Form0;
class Toolbar;
class Window;

/// Size of the main window's content and of a module window in its client area, in pixels.
inline constexpr QSize MainWindowSize(640, 450);
inline constexpr QSize ModuleWindowSize(574, 418);

/// The main window: the client area with the one open module window, the toolbar at its right side. Its size
/// is fixed, it cannot be maximised, and it can be closed only while its system menu has the entry Close.
class MDI : public QWidget {
    Q_OBJECT
  public:
    MDI();

    [[nodiscard]] Toolbar& Tb() { return *Tb_; }
    [[nodiscard]] SystemMenu& systemMenu() { return systemMenu_; }
    /// The parent of the windows within the main window.
    [[nodiscard]] QWidget* clientArea() const { return clientArea_; }

    /// The window in front in the client area, module window or child window; null where there is none.
    [[nodiscard]] const Window* frontWindow() const;

    /// Shows the empty window, and with it the main window.
    void showForm0();

    /// Closes a window of its own, which is deleted when it closes, with the main window.
    void takeAlong(QWidget& window);

  Q_SIGNALS:
    void closed(); ///< The user has closed the main window: the program's end.

  protected:
    bool focusNextPrevChild(bool next) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    SystemMenu systemMenu_;
    QWidget* clientArea_;
    Toolbar* Tb_;
    Form0* Form0_;
};

} // namespace pontrel
