#pragma once

#include <functional>

class QKeyEvent;
class QObject;
class QWidget;

namespace pontrel {

/// Runs a routine for every key that goes down in a box, typed or sent by the program, ahead of the box
/// itself and of all event filters on it, whatever the order in which those were installed. Where the routine
/// returns true nobody else sees the key. Several routines of a box run in the order in which they were
/// given, until one has taken the key. It lasts as long as the box.
void onKeyDown(QWidget& box, std::function<bool(const QKeyEvent& key)> routine);

/// The window to which an event goes that an event filter of the application sees: that of the widget, or the
/// one that the desktop's window shows. Null where there is none of widgets.
[[nodiscard]] QWidget* windowOf(QObject& receiver);

} // namespace pontrel
