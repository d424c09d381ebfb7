#pragma once

#include "app/HeldKeys.h"

#include <QPoint>
#include <QPointer>
#include <QTimer>

#include <optional>
#include <vector>

class QDialog;
class QEvent;
class QMouseEvent;

namespace pontrel {

/// What the user does passes here before any control sees it, and three things do not pass: what a held key
/// repeats (see HeldKeys; of a shortcut where it does not repeat), what is done between a modal dialog's end
/// and the return of its caller to the event loop, and the second half of a double click whose first half
/// went to another window. Events that the program itself sends are no input, and always pass.
///
/// The second is needed because a dialog's event loop hands out all that waits behind the dialog's last
/// click before it returns: with the dialog gone, that reaches the windows beneath ahead of its answer.
///
/// The third is needed because the first half may close the window that it goes to, be it a dialog, a
/// calendar or a list that has dropped down, or open another one: the hand has meant one place, and the
/// second half would press what has come to lie there. A click elsewhere, or there once the time of a double
/// click is over, counts. Qt itself makes double clicks across windows.
class InputGate : public QObject {
    Q_OBJECT
  public:
    class Delivery;
    class Dialog;

    explicit InputGate(QObject* parent);
    ~InputGate() override;

  private:
    struct Shown {
        QPointer<QDialog> dialog;
        int level; ///< Of the event loop that its caller runs in.
    };

    /// A press of a mouse button that a window was given.
    struct Press {
        QPointer<QObject> window;
        Qt::MouseButton button = Qt::NoButton;
        QPoint place;     ///< On the screen.
        quint32 time = 0; ///< In milliseconds, by the display's clock, which goes round.
    };

    [[nodiscard]] bool takes(QEvent& event, bool isNew, QObject& receiver);
    [[nodiscard]] bool takesMouse(QMouseEvent& event, bool taken, QObject& receiver);
    [[nodiscard]] bool beganElsewhere(const QMouseEvent& press, QObject& window);
    [[nodiscard]] bool isShut() const;
    void dialogClosed();
    void callerReturned(const Delivery& delivery);
    void openWhenIdle();
    void open();

    static InputGate* current_;

    HeldKeys heldKeys_;
    bool shortcutRepeats_ = false; ///< The key looked up last among the shortcuts is a repeat.
    std::vector<Shown> shown_;     ///< The modal dialogs, the one in front last.
    std::optional<int> shutAt_;    ///< The level of a caller that has its answer and has not returned yet.
    const Delivery* delivery_ = nullptr; ///< The innermost delivery that an event loop has begun.
    const Delivery* awaited_ = nullptr;  ///< The one whose end is the caller's return.
    const QEvent* passing_ = nullptr;    ///< Input on its way from the window to the control.
    Press lastPress_;                    ///< That was not dropped.
    Qt::MouseButtons droppedPresses_;    ///< Their releases are dropped as well.
    QTimer idle_;
    int roundsToGo_ = 0;
};

/// The delivery of an event by the application, from before any control sees it.
class InputGate::Delivery {
  public:
    Delivery(InputGate& gate, QObject& receiver, QEvent& event);
    ~Delivery();
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;

    /// Whether the event is to be dropped.
    [[nodiscard]] bool isDropped() const { return isDropped_; }

  private:
    friend class InputGate;

    InputGate& gate_;
    const Delivery* around_; ///< The delivery by an event loop within which this one happens.
    const QEvent* passing_;
    int level_; ///< Of the event loop.
    bool isToWindow_;
    bool isOutermost_; ///< Begun by an event loop, or by one round of it.
    bool isDropped_ = false;
};

/// A modal dialog, from before it is shown until its result is handed to the caller. Does nothing in an
/// application without a gate.
class InputGate::Dialog {
  public:
    explicit Dialog(QDialog& dialog);
    ~Dialog();
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

  private:
    QPointer<InputGate> gate_;
};

} // namespace pontrel
