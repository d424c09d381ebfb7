#include "app/ZoomKeys.h"

#include "app/KeyHook.h"
#include "app/MDI.h"
#include "app/Notice.h"
#include "app/Zoom.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

int rests = 0; ///< How many exist.

/// The window that a key goes to; for a list that has dropped down the one below it.
QWidget* windowBelow(QObject& receiver) {
    QWidget* window = windowOf(receiver);
    while (window && window->windowType() == Qt::Popup && window->parentWidget())
        window = window->parentWidget()->window();
    return window;
}

/// Whether it is the main window, lies over it, or stands alone before it, as the login does.
bool isOfMainWindow(const QWidget& window) {
    const QWidget* lowest = &window;
    while (lowest->parentWidget())
        lowest = lowest->parentWidget()->window();
    return qobject_cast<const MDI*>(lowest) || qobject_cast<const QDialog*>(lowest);
}

int stepBeside(int step, bool larger, int most) {
    const auto* here = std::find(zoom::Steps.begin(), zoom::Steps.end(), step);
    if (larger)
        return step >= most ? step : *(here + 1);
    return here == zoom::Steps.begin() ? step : *(here - 1);
}

} // namespace

ZoomKeys::Rest::Rest() {
    ++rests;
}

ZoomKeys::Rest::~Rest() {
    --rests;
}

ZoomKeys::ZoomKeys(QObject* parent) : QObject(parent) {}

ZoomKeys::Wish ZoomKeys::wishOf(const QKeyEvent& key) {
    const auto held = key.modifiers() & ~Qt::KeypadModifier;
    if (key.key() == Qt::Key_Plus && held == (Qt::ControlModifier | Qt::ShiftModifier))
        return Wish::Larger; // where it lies above another sign
    if (held != Qt::ControlModifier)
        return Wish::None;
    switch (key.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without Shift
        return Wish::Larger;
    case Qt::Key_Minus:
        return Wish::Smaller;
    case Qt::Key_0:
        return Wish::FullSize;
    default:
        return Wish::None;
    }
}

void ZoomKeys::fulfil(Wish wish, QWidget& window) {
    const int most = std::max(zoom::largestFitting(zoom::screenRoom()), zoom::inForce());
    const int before = std::min(zoom::stepOf(Habits::ofUser().zoom()), most);
    const int step =
        wish == Wish::FullSize ? Habits::FullSize : stepBeside(before, wish == Wish::Larger, most);
    Habits::ofUser().setZoom(step);
    QString text = u"顯示比例 %1%"_s.arg(step);
    if (step == before && wish != Wish::FullSize)
        text += wish == Wish::Larger ? u"（最大）"_s : u"（最小）"_s;
    if (step != zoom::inForce())
        text += u"，下次啟動時生效"_s;
    tellBriefly(window, text);
}

bool ZoomKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || rests > 0)
        return false;
    const Wish wish = wishOf(static_cast<const QKeyEvent&>(*event));
    QWidget* window = wish == Wish::None ? nullptr : windowBelow(*watched);
    if (!window || !isOfMainWindow(*window))
        return false;
    fulfil(wish, *window);
    return true;
}

} // namespace pontrel
