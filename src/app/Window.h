#pragma once

#include <QWidget>

#include <functional>

namespace pontrel {

/// A window of the program that is created on first use and unloaded: a module window in the main window's
/// client area, or a child window over another. Its load routine runs once before it is shown.
class Window : public QWidget {
    Q_OBJECT
  public:
    explicit Window(QWidget* parent);

    /// Runs the load routine where it has not run yet, then shows the window in front, at the place and size
    /// that it has given itself, and gives it the focus.
    void open();

    /// Runs the unload routine, closes the bound sources at once and hides the window; the object goes by
    /// deleteLater, since a routine may unload its own window and go on. A second call does nothing.
    void unload();

    /// Unloads the window, opens module window 1 to 8 and brings that tab of its SSTab1 to the front; a tab
    /// below 0 leaves the one on which it opens.
    void jumpTo(int module, int tab);

    [[nodiscard]] bool isUnloaded() const { return unloaded_; }

  protected:
    virtual void onLoad() = 0;
    virtual void onUnload() = 0;

    /// The load trap of all windows with data: see trapOpen().
    bool openTrapped(const std::function<void()>& routine,
                     const QString& message = QStringLiteral("資料庫開啟異常,請洽程式設計師"));

    /// Keeps the Tab key within the window, also where there is no other control to go to.
    bool focusNextPrevChild(bool next) override;

  private:
    void takeFocus();
    void giveFocusBack(); ///< To the window that now lies in front.

    bool loaded_ = false;
    bool unloaded_ = false;
};

/// Runs a routine that reads data and, where it throws a RunTimeError, shows the message of a failed open
/// under its title. Whether it did not throw.
bool trapRead(const std::function<void()>& routine,
              const QString& message = QStringLiteral("資料庫開啟異常,請洽程式設計師"));

/// The same for a load routine: a failure sets gOpenFailed as well.
bool trapOpen(const std::function<void()>& routine,
              const QString& message = QStringLiteral("資料庫開啟異常,請洽程式設計師"));

} // namespace pontrel
