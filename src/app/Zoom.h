#pragma once

#include "app/Habits.h"

#include <QSize>

#include <array>
#include <memory>

class QWidget;

namespace pontrel {

class PontrelApplication;

/// How large the program's windows are shown. Sizes within the program are device-independent and know
/// nothing of it; the preview has a zoom of its own besides.
namespace zoom {

/// In percent, rising; the user goes from one to the next.
inline constexpr std::array Steps{Habits::FullSize, 125, 150, 175, 200, 250, 300};

/// The step itself; the full size for what is none, such as a damaged habit.
[[nodiscard]] int stepOf(int percent);

/// The largest step at which the whole main window, its frame included, has room on a screen of that size
/// without zoom; at least the full size.
[[nodiscard]] int largestFitting(QSize screen);

/// The one to offer for such a screen: the largest at which the main window fits and takes at most 60 percent
/// of the screen's area.
[[nodiscard]] int proposed(QSize screen);

/// The size of the primary screen without what the desktop keeps of it, as it would be without zoom.
[[nodiscard]] QSize screenRoom();

/// How large the content of a window can be on its screen, or on its parent's: what the desktop and a usual
/// frame leave of that, in the window's own pixels.
[[nodiscard]] QSize roomFor(const QWidget& window);

/// Makes a window that is not shown yet smaller where its screen has no room for its whole size.
void keepOnScreen(QWidget& window);

/// The zoom that the windows of this process are shown with.
[[nodiscard]] int inForce();

/// Makes the application object with the zoom among the user's habits, or the largest that fits where that
/// does not. A factor that the desktop has set in QT_SCALE_FACTOR comes on top, and programs that this one
/// starts find that one alone. The arguments must outlive the object.
[[nodiscard]] std::unique_ptr<PontrelApplication> startApplication(char** arguments);

} // namespace zoom

} // namespace pontrel
