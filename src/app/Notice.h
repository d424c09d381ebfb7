#pragma once

#include <QString>

class QWidget;

namespace pontrel {

/// Tells something in a line over the lower edge of a window, for some seconds; another one takes its place.
/// It takes neither the focus nor a click, and assistive technology speaks it.
void tellBriefly(QWidget& window, const QString& text);

} // namespace pontrel
