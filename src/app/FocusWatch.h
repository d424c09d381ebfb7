#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

namespace pontrel {

/// Tells a window's controls that they have lost the focus: when another control of the same window took it,
/// and not when a dialog, a popup or another program did. Where the routine puts the focus back, the mouse
/// click that took it away is not carried out; nor is one whose mouse button was released in a message box
/// that the routine has shown.
class FocusWatch : public QObject {
    Q_OBJECT
  public:
    using Routine = std::function<void()>;

    explicit FocusWatch(QWidget* window);

    /// Puts the focus back on a control, where it is in sight: one on a page that has been left would be in
    /// the keyboard's way unseen, and lose the focus again at every click.
    static void putBack(QWidget& control);

    /// Runs the routine each time the control, or a widget that it is made of, has lost the focus. Several
    /// routines of a control run in the order in which they were given, until one has put the focus back on
    /// it.
    void onLostFocus(QWidget* control, Routine routine);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Watched {
        QPointer<QWidget> control;
        std::vector<Routine> routines;
    };

    void focusChanged(const QWidget* now);
    void runRoutines(const Watched& lost);
    [[nodiscard]] const QWidget* focusOfWindow() const;
    [[nodiscard]] const Watched* watchedAround(const QWidget* widget) const;
    [[nodiscard]] bool isInWindow(const QWidget* widget) const;

    QWidget* window_;
    std::vector<Watched> watched_;
    QPointer<QWidget> holder_; ///< The watched control that has the window's focus.
    bool running_ = false;     ///< A routine runs: what it does to the focus counts as no loss.
    bool blocked_ = false;     ///< A modal dialog has opened while it ran.
    bool byMouse_ = false;     ///< The focus last came to a control by a press of the mouse.
    bool byWheel_ = false;     ///< The wheel has been turned and has not reached its control yet.
    bool dropPress_ = false;
    bool dropRelease_ = false;
};

} // namespace pontrel
