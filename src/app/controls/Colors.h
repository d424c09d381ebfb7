#pragma once

#include <QColor>
#include <QPalette>

namespace pontrel::colors {

/// How far two opaque colours stand apart: from 1, for the same, to 21, for black and white, by the
/// definition of relative luminance.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

/// The colour between two, of which the first has that share, from 0 to 1.
[[nodiscard]] QColor mixed(const QColor& one, const QColor& other, double share);

/// Whether light texts stand on dark grounds.
[[nodiscard]] bool isDark(const QPalette& palette);

/// Whether texts are black on white or white on black, or hardly less.
[[nodiscard]] bool isHighContrast(const QPalette& palette);

/// The colour of a line around a field where contrast is high: it stands out from the ground of the window.
[[nodiscard]] QColor line(const QPalette& palette);

/// The colours of a desktop's palette, but for those that are too pale to be read: every text, also that of
/// fields which are off, gets a contrast of at least 4.5 to its ground. Captions of buttons that are off stay
/// pale, for they are not there to be read. What is legible stays as the desktop has it.
[[nodiscard]] QPalette readable(QPalette palette);

/// For desktops that only say that they are dark, without colours of their own.
[[nodiscard]] QPalette darkPalette();
/// For those that only ask for high contrast: black and white, on a black ground or on a white one.
[[nodiscard]] QPalette highContrastPalette(bool dark);

/// The colours of a month calendar.
struct Calendar {
    QColor groupFill;
    QColor groupText; ///< On the fill.
    QColor disabledGroupFill;
    QColor today;
    QColor weekend; ///< On the ground of a field.
};
[[nodiscard]] Calendar calendar(const QPalette& palette);

/// What tells the parts of a day and the states of days apart, by their degrees.
enum class Hue { Red = 0, Orange = 30, Yellow = 55, Green = 130, Blue = 210, Violet = 280 };
/// As a ground for the palette's text.
[[nodiscard]] QColor ground(const QPalette& palette, Hue hue);
/// As ink on the palette's base.
[[nodiscard]] QColor ink(const QPalette& palette, Hue hue);

/// The ground of a cell with a fault, beneath which the palette's text stays legible whatever its theme.
[[nodiscard]] QColor faultGround(const QPalette& palette);
/// The mark on that ground.
[[nodiscard]] QColor faultMark(const QPalette& palette);

/// What lies around pages, which are white on every desktop.
[[nodiscard]] QColor aroundPages(const QPalette& palette);

} // namespace pontrel::colors
