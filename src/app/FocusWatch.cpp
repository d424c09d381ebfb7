#include "app/FocusWatch.h"

#include "app/Events.h"

#include <QApplication>
#include <QFocusEvent>
#include <QScopedValueRollback>

#include <algorithm>

namespace pontrel {

namespace {

bool holds(const QWidget* control, const QWidget* widget) {
    return control && widget && (control == widget || control->isAncestorOf(widget));
}

} // namespace

FocusWatch::FocusWatch(QWidget* window) : QObject(window), window_(window) {
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { focusChanged(now); });
    qApp->installEventFilter(this);
}

void FocusWatch::onLostFocus(QWidget* control, Routine routine) {
    const auto known = std::find_if(watched_.begin(), watched_.end(),
                                    [control](const Watched& each) { return each.control == control; });
    if (known != watched_.end())
        known->routines.push_back(std::move(routine));
    else
        watched_.push_back({control, {std::move(routine)}});
}

void FocusWatch::putBack(QWidget& control) {
    if (control.isVisible())
        control.setFocus();
}

void FocusWatch::focusChanged(const QWidget* now) {
    // A window that has just closed may yet be made active, and then its focus wanders off a hidden control.
    if (!isInWindow(now) || !window_->isVisible())
        return;
    const Watched* next = watchedAround(now);
    const QPointer<QWidget> before = holder_;
    holder_ = next ? next->control : nullptr;
    if (running_ || !before || before == holder_)
        return;
    if (const Watched* lost = watchedAround(before))
        runRoutines(Watched(*lost));
}

// The window may be inactive yet when a message box has just closed: its own notion of the focus counts.
const QWidget* FocusWatch::focusOfWindow() const {
    return window_->window()->focusWidget();
}

void FocusWatch::runRoutines(const Watched& lost) {
    const QPointer<FocusWatch> self(this);
    const bool byMouse = byMouse_;
    blocked_ = false;
    running_ = true;
    for (const Routine& routine : lost.routines) {
        guarded(routine);
        if (!self)
            return;
        if (!window_->isVisible() || holds(lost.control, focusOfWindow()))
            break;
    }
    running_ = false;
    const QWidget* focus = focusOfWindow();
    const Watched* current = isInWindow(focus) ? watchedAround(focus) : nullptr;
    holder_ = current ? current->control : nullptr;
    const bool putBack = holds(lost.control, focus);
    dropPress_ = byMouse && (putBack || blocked_);
}

bool FocusWatch::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::FocusIn:
        byMouse_ = static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason && !byWheel_;
        break;
    case QEvent::Wheel:
        // It comes to the window first, moves the focus for the same reason as a press, and then comes to the
        // control; but no press follows that could be dropped.
        byWheel_ = !watched->isWidgetType();
        break;
    case QEvent::WindowBlocked:
        blocked_ = true;
        break;
    case QEvent::MouseButtonPress:
        // The press is delivered right after the change of focus that it caused.
        if (watched->isWidgetType() && dropPress_) {
            dropPress_ = false;
            dropRelease_ = true;
            return true;
        }
        dropRelease_ = dropRelease_ && !watched->isWidgetType();
        break;
    case QEvent::MouseButtonRelease:
        if (watched->isWidgetType() && dropRelease_) {
            dropRelease_ = false;
            return true;
        }
        break;
    default:
        break;
    }
    return false;
}

const FocusWatch::Watched* FocusWatch::watchedAround(const QWidget* widget) const {
    for (const Watched& each : watched_) {
        if (holds(each.control, widget))
            return &each;
    }
    return nullptr;
}

bool FocusWatch::isInWindow(const QWidget* widget) const {
    return holds(window_, widget) && widget->window() == window_->window();
}

} // namespace pontrel
