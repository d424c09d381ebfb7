#pragma once

#include "app/HeldKeys.h"

#include <QPointer>
#include <QTimer>

#include <optional>
#include <vector>

class QDialog;
class QEvent;

namespace pontrel {

/// What the user does passes here before any control sees it, and two things do not pass: what a held key
/// repeats (see HeldKeys; of a shortcut where it does not repeat), and what is done between a modal dialog's
/// end and the return of its caller to the event loop. Events that the program itself sends are no input, and
/// always pass.
///
/// The second is needed because a dialog's event loop hands out all that waits behind the dialog's last
/// click before it returns: with the dialog gone, that reaches the windows beneath ahead of its answer.
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

    [[nodiscard]] bool takes(QEvent& event, bool isNew, QObject& receiver);
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
