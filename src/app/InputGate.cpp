#include "app/InputGate.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QShortcut>
#include <QStyleHints>
#include <QThread>
#include <QWindow>

#include <cstdlib>
#include <utility>

namespace pontrel {

namespace {

/// Rounds of the event loop after which all has come that the display had sent before.
constexpr int RoundsUntilIdle = 2;

int loopLevel() {
    return QThread::currentThread()->loopLevel();
}

bool isKey(const QEvent& event) {
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
}

/// Whether the event is something that the user does to the program.
bool isInput(const QEvent& event, const QObject& receiver) {
    switch (event.type()) {
    case QEvent::Shortcut: // Qt makes these of keys, and sends them as if they were its own.
    case QEvent::InputMethod:
        return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::Drop:
        return event.spontaneous();
    case QEvent::Close:
        // A dialog's own end comes with the same mark as the frame's close button.
        return event.spontaneous() && receiver.isWindowType() &&
               static_cast<const QWindow&>(receiver).modality() == Qt::NonModal;
    default:
        return false;
    }
}

/// Makes of a dropped event what Qt takes for dealt with.
void settle(QEvent& event) {
    if (event.type() == QEvent::Close)
        event.ignore(); // the window stays
    else
        event.accept(); // or its key would be looked up among the shortcuts
}

/// Whether a held key presses the receiver of a shortcut again and again.
bool mayRepeat(const QObject& receiver) {
    if (const auto* action = qobject_cast<const QAction*>(&receiver))
        return action->autoRepeat();
    const auto* shortcut = qobject_cast<const QShortcut*>(&receiver);
    return !shortcut || shortcut->autoRepeat();
}

QWidget* focusFor(QObject& receiver) {
    return receiver.isWidgetType() ? static_cast<QWidget*>(&receiver) : QApplication::focusWidget();
}

} // namespace

InputGate* InputGate::current_ = nullptr;

InputGate::InputGate(QObject* parent) : QObject(parent), idle_(this) {
    current_ = this;
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this] { heldKeys_.noteOtherWindow(); });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive)
            heldKeys_.forget();
    });
    connect(&idle_, &QTimer::timeout, this, [this] {
        if (--roundsToGo_ == 0)
            open();
    });
}

InputGate::~InputGate() {
    current_ = nullptr;
}

/// Whether the gate keeps the event.
bool InputGate::takes(QEvent& event, bool isNew, QObject& receiver) {
    const bool shut = isShut();
    bool taken = shut && isInput(event, receiver);
    // A repeat by its own mark was no doing of the program's, whoever has sent it.
    if (isKey(event) && isNew && (event.spontaneous() || static_cast<QKeyEvent&>(event).isAutoRepeat()))
        taken |= heldKeys_.note(static_cast<QKeyEvent&>(event), focusFor(receiver));
    if (event.type() == QEvent::ShortcutOverride && isNew && event.spontaneous())
        shortcutRepeats_ = heldKeys_.noteShortcut(static_cast<QKeyEvent&>(event));
    if (event.type() == QEvent::Shortcut)
        taken |= shortcutRepeats_ && !mayRepeat(receiver);
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        return event.spontaneous() ? takesMouse(static_cast<QMouseEvent&>(event), taken, receiver) : taken;
    default:
        return taken;
    }
}

/// The same for a mouse button, where what holds for all input has been decided.
bool InputGate::takesMouse(QMouseEvent& event, bool taken, QObject& receiver) {
    const Qt::MouseButton button = event.button();
    const bool pressWasDropped = droppedPresses_.testFlag(button);
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        if (!taken && receiver.isWindowType())
            taken = beganElsewhere(event, receiver);
        droppedPresses_.setFlag(button, taken);
        return taken;
    case QEvent::MouseButtonDblClick: // comes right behind the second press
        droppedPresses_.setFlag(button, taken || pressWasDropped);
        return taken || pressWasDropped;
    default:
        droppedPresses_.setFlag(button, false);
        return taken || pressWasDropped;
    }
}

/// Whether the press that a window is to get is the second half of a double click in another one.
bool InputGate::beganElsewhere(const QMouseEvent& press, QObject& window) {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const QPoint place = press.globalPosition().toPoint();
    const QPoint moved = place - lastPress_.place;
    const auto time = static_cast<quint32>(press.timestamp());
    const quint32 since = time - lastPress_.time; // none where Qt repeats the press that has closed a popup
    if (press.button() == lastPress_.button && lastPress_.window != &window && since > 0 &&
        since < static_cast<quint32>(hints.mouseDoubleClickInterval()) &&
        std::abs(moved.x()) <= hints.mouseDoubleClickDistance() &&
        std::abs(moved.y()) <= hints.mouseDoubleClickDistance())
        return true;
    lastPress_ = {&window, press.button(), place, time};
    return false;
}

bool InputGate::isShut() const {
    if (!shown_.empty()) {
        const QDialog* front = shown_.back().dialog;
        if (!front || !front->isVisible())
            return true; // it has ended, and its event loop has not
        // Below a progress dialog its caller turns the loop that it runs in itself, so that the level tells
        // nothing; what stands beneath is blocked, as beneath any modal dialog.
        if (shown_.back().level == loopLevel())
            return false;
    }
    return shutAt_ == loopLevel();
}

void InputGate::dialogClosed() {
    const int level = shown_.back().level;
    shown_.pop_back();
    idle_.stop();
    shutAt_ = level;
    awaited_ = delivery_ && delivery_->level_ == level ? delivery_ : nullptr;
    if (!awaited_)
        openWhenIdle();
}

void InputGate::callerReturned(const Delivery& delivery) {
    awaited_ = nullptr;
    const bool isNested = delivery.around_ && delivery.around_->level_ == delivery.level_;
    // A window hands a click on to its control as another event, and is not back in the event loop yet.
    if (isNested && delivery.around_->isToWindow_) {
        awaited_ = delivery.around_;
        return;
    }
    // Where the routine was called amid another one of the same loop, the loop does not come round before
    // that one goes on.
    if (isNested)
        open();
    else
        openWhenIdle();
}

/// What the user has done meanwhile is still to come, in the next round of the event loop.
void InputGate::openWhenIdle() {
    if (shutAt_ == 0) { // no event loop runs
        open();
        return;
    }
    roundsToGo_ = RoundsUntilIdle;
    idle_.start(0);
}

void InputGate::open() {
    idle_.stop();
    shutAt_.reset();
}

InputGate::Delivery::Delivery(InputGate& gate, QObject& receiver, QEvent& event)
    : gate_(gate)
    , around_(gate.delivery_)
    , passing_(gate.passing_)
    , level_(loopLevel())
    , isToWindow_(receiver.isWindowType()) {
    const bool isNew = &event != passing_;
    const bool beginsInput = isNew && event.spontaneous() && isInput(event, receiver);
    isOutermost_ = beginsInput || !around_ || around_->level_ != level_;
    isDropped_ = gate.takes(event, isNew, receiver);
    if (isDropped_)
        settle(event);
    if (beginsInput)
        gate.passing_ = &event;
    if (isOutermost_)
        gate.delivery_ = this;
}

InputGate::Delivery::~Delivery() {
    gate_.passing_ = passing_;
    if (!isOutermost_)
        return;
    gate_.delivery_ = around_;
    if (gate_.awaited_ == this)
        gate_.callerReturned(*this);
}

InputGate::Dialog::Dialog(QDialog& dialog) : gate_(current_) {
    if (gate_)
        gate_->shown_.push_back({&dialog, loopLevel()});
}

InputGate::Dialog::~Dialog() {
    if (gate_)
        gate_->dialogClosed();
}

} // namespace pontrel
