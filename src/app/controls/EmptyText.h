#pragma once

#include <QString>

class QAbstractScrollArea;

namespace pontrel {

/// Paints into a list without entries what to do first, at its head and broken into lines, in the colour of
/// hints. To be called within its paint event.
void paintEmptyText(QAbstractScrollArea& list, const QString& text);

} // namespace pontrel
