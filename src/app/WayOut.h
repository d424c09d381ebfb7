#pragma once

class QWidget;

namespace pontrel {

/// Marks for a moment the controls by which the user can leave the window as it stands: "離開" wherever it
/// answers or, while a row is edited, what ends the edit. The focus stays where it is.
void pointOutTheWayOut(const QWidget& window);

} // namespace pontrel
