#pragma once

#include <functional>

class QKeyEvent;
class QWidget;

namespace pontrel {

/// Runs a routine for every key that goes down in a box, typed or sent by the program, ahead of the box
/// itself and of all event filters on it, whatever the order in which those were installed. Where the routine
/// returns true nobody else sees the key. Several routines of a box run in the order in which they were
/// given, until one has taken the key. It lasts as long as the box.
void onKeyDown(QWidget& box, std::function<bool(const QKeyEvent& key)> routine);

} // namespace pontrel
