#include "app/controls/Colors.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace pontrel::colors {

namespace {

constexpr double LeastContrast = 4.5;
constexpr double ReadOnlyShare = 0.75; ///< Of the text's colour in a text that is off, the rest its ground's.
constexpr double HintShare = 0.65;
constexpr double LineShare = 0.6;
constexpr double MostFaultTint = 0.3;
constexpr double FaultTintStep = 0.05;
constexpr double HighContrast = 19.5; ///< The usual light desktops have 18 and less.

constexpr QColor ReadOnlyText(0x58, 0x58, 0x58); // 6 : 1 on the ground of a disabled field
constexpr QColor Hint(0x6a, 0x6a, 0x6a);         // 5.4 : 1 on white
constexpr QColor Selection(0x2a, 0x73, 0xb0);    // 5 : 1 beneath white
constexpr QColor SelectionOff(0x6e, 0x6e, 0x6e); // 5 : 1 as well
constexpr QColor LightLink(0x8a, 0xb8, 0xf5);

double luminance(const QColor& color) {
    const auto part = [](double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

/// As a transparent colour comes out on its ground.
QColor on(const QColor& ground, const QColor& color) {
    return mixed(color, ground, color.alphaF());
}

bool isLegible(const QColor& text, std::initializer_list<QColor> grounds) {
    return std::all_of(grounds.begin(), grounds.end(), [&text](const QColor& ground) {
        return contrast(on(ground, text), ground) >= LeastContrast;
    });
}

/// The first of the colours that can be read on all the grounds; black or white where none can.
QColor legible(std::initializer_list<QColor> texts, std::initializer_list<QColor> grounds) {
    const auto* found = std::find_if(texts.begin(), texts.end(),
                                     [&](const QColor& text) { return isLegible(text, grounds); });
    if (found != texts.end())
        return *found;
    const QColor& ground = *grounds.begin();
    return contrast(Qt::black, ground) > contrast(Qt::white, ground) ? QColor(Qt::black) : QColor(Qt::white);
}

/// The ground of tabs and the lightest one of buttons, as the style makes it of their colour.
QColor paneOf(const QColor& button) {
    const int lighter = std::max(1, (180 - qGray(button.rgb())) / 6);
    return button.lighter(100 + lighter).lighter(104);
}

void mendTexts(QPalette& palette, QPalette::ColorGroup group) {
    const auto color = [&](QPalette::ColorRole role) { return palette.color(group, role); };
    const auto mend = [&](QPalette::ColorRole text, std::initializer_list<QColor> grounds) {
        palette.setColor(group, text, legible({color(text)}, grounds));
    };
    const QColor pane = paneOf(color(QPalette::Button));
    mend(QPalette::WindowText, {color(QPalette::Window), pane});
    mend(QPalette::Text, {color(QPalette::Base)});
    mend(QPalette::ButtonText, {color(QPalette::Button), pane});
    mend(QPalette::ToolTipText, {color(QPalette::ToolTipBase)});
    const QColor text = color(QPalette::Text);
    const QColor base = color(QPalette::Base);
    if (!isLegible(text, {color(QPalette::AlternateBase)}))
        palette.setColor(group, QPalette::AlternateBase, base);
    palette.setColor(group, QPalette::PlaceholderText,
                     legible({color(QPalette::PlaceholderText), Hint, mixed(text, base, HintShare)}, {base}));
    for (const auto link : {QPalette::Link, QPalette::LinkVisited})
        palette.setColor(group, link, legible({color(link), LightLink}, {base, color(QPalette::Window)}));
}

void mendSelection(QPalette& palette, QPalette::ColorGroup group, const QColor& ground) {
    if (isLegible(palette.color(group, QPalette::HighlightedText),
                  {palette.color(group, QPalette::Highlight)}))
        return;
    palette.setColor(group, QPalette::Highlight, ground);
    palette.setColor(group, QPalette::HighlightedText, Qt::white);
}

/// Fields are disabled wherever rows are only browsed, and some have no other way to be read.
void mendDisabledText(QPalette& palette, QPalette::ColorRole role, QPalette::ColorRole groundRole) {
    const QColor ground = palette.color(QPalette::Disabled, groundRole);
    const QColor button = palette.color(QPalette::Disabled, QPalette::Button);
    const QColor text = palette.color(QPalette::Active, role);
    palette.setColor(
        QPalette::Disabled, role,
        legible(
            {palette.color(QPalette::Disabled, role), ReadOnlyText, mixed(text, ground, ReadOnlyShare), text},
            {ground, button, paneOf(button), palette.color(QPalette::Active, QPalette::Window)}));
}

/// A palette of few colours, as desktops describe one.
QPalette paletteOf(const QColor& text, const QColor& window, const QColor& base, const QColor& button,
                   const QColor& textOff) {
    QPalette palette(text, button, mixed(text, button, 0.3), mixed(text, window, 0.05),
                     mixed(text, window, 0.4), text, text, base, window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, textOff);
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    palette.setColor(QPalette::AlternateBase, mixed(text, base, 0.06));
    palette.setColor(QPalette::ToolTipBase, button);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, Selection);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, SelectionOff);
    return palette;
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QColor mixed(const QColor& one, const QColor& other, double share) {
    const auto part = [share](int first, int second) { return qRound(share * first + (1 - share) * second); };
    return {part(one.red(), other.red()), part(one.green(), other.green()), part(one.blue(), other.blue())};
}

bool isDark(const QPalette& palette) {
    return luminance(palette.color(QPalette::Active, QPalette::Base)) <
           luminance(palette.color(QPalette::Active, QPalette::Text));
}

bool isHighContrast(const QPalette& palette) {
    return contrast(palette.color(QPalette::Active, QPalette::WindowText),
                    palette.color(QPalette::Active, QPalette::Window)) > HighContrast;
}

QColor line(const QPalette& palette) {
    return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), LineShare);
}

QPalette readable(QPalette palette) {
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        mendTexts(palette, group);
        mendSelection(palette, group, Selection);
    }
    mendDisabledText(palette, QPalette::Text, QPalette::Base);
    mendDisabledText(palette, QPalette::WindowText, QPalette::Window);
    palette.setColor(QPalette::Disabled, QPalette::PlaceholderText,
                     palette.color(QPalette::Active, QPalette::PlaceholderText));
    mendSelection(palette, QPalette::Disabled, SelectionOff);
    return palette;
}

QPalette darkPalette() {
    return paletteOf(QColor(0xf0, 0xf0, 0xf0), QColor(0x2d, 0x2f, 0x31), QColor(0x1e, 0x20, 0x22),
                     QColor(0x34, 0x37, 0x3a), QColor(0x7c, 0x80, 0x84));
}

QPalette highContrastPalette(bool dark) {
    const QColor text(dark ? Qt::white : Qt::black);
    const QColor ground(dark ? Qt::black : Qt::white);
    return paletteOf(text, ground, ground, ground, mixed(text, ground, 0.5));
}

Calendar calendar(const QPalette& palette) {
    if (isDark(palette))
        return {QColor(0x6e, 0x26, 0x20), QColor(0xff, 0xdc, 0xd8), QColor(0x45, 0x30, 0x2e),
                QColor(0x6a, 0xb0, 0xf0), QColor(0xff, 0x8f, 0x85)};
    return {QColor(0xf6, 0xc1, 0xbc), QColor(0x9a, 0x1c, 0x12), QColor(0xf3, 0xe2, 0xe0),
            QColor(0x1f, 0x6f, 0xc4), QColor(0xd4, 0x00, 0x00)};
}

QColor ground(const QPalette& palette, Hue hue) {
    const auto degrees = static_cast<int>(hue);
    return isDark(palette) ? QColor::fromHsl(degrees, 110, 60) : QColor::fromHsl(degrees, 170, 220);
}

QColor ink(const QPalette& palette, Hue hue) {
    const auto degrees = static_cast<int>(hue);
    return isDark(palette) ? QColor::fromHsl(degrees, 150, 170) : QColor::fromHsl(degrees, 170, 90);
}

QColor faultGround(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    for (double share = MostFaultTint; share > 0; share -= FaultTintStep) {
        const QColor tinted = mixed(faultMark(palette), base, share);
        if (isLegible(palette.color(QPalette::Text), {tinted}))
            return tinted;
    }
    return base;
}

QColor faultMark(const QPalette& palette) {
    return isDark(palette) ? QColor(0xff, 0x7a, 0x70) : QColor(0xc0, 0x20, 0x18);
}

QColor aroundPages(const QPalette& palette) {
    return isDark(palette) ? QColor(0x34, 0x37, 0x3a) : QColor(0x8c, 0x92, 0x98);
}

} // namespace pontrel::colors
