#include "app/ProgramStyle.h"

#include "app/controls/Colors.h"
#include "app/controls/TDBGrid.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOptionComboBox>

#include <cmath>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr double CornerRadius = 2;

/// The style draws lines a little darker than the window, which on black is black. What has the focus has a
/// line of its own.
void drawLineAround(const QStyleOption& option, QPainter& painter, bool isRound = false) {
    if (!colors::isHighContrast(option.palette) || option.state.testFlag(QStyle::State_HasFocus))
        return;
    const QRectF place = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(colors::line(option.palette));
    if (isRound)
        painter.drawEllipse(place);
    else
        painter.drawRoundedRect(place, CornerRadius, CornerRadius);
    painter.restore();
}

/// Between two pixels the style draws the lines at the left and at the top a pixel too far out, where nothing
/// of them is seen.
bool isBetweenPixels(const QPainter& painter) {
    const double ratio = painter.deviceTransform().m11();
    return ratio != std::floor(ratio);
}

/// The colour of the style's own frames.
QColor frameColor(const QStyleOption& option) {
    return colors::isHighContrast(option.palette) ? colors::line(option.palette)
                                                  : option.palette.window().color().darker(140).lighter(108);
}

void fillLeft(const QStyleOption& option, QPainter& painter) {
    const QRect& place = option.rect;
    painter.fillRect(place.left(), place.top(), 1, place.height(), frameColor(option));
}

void fillFrame(const QStyleOption& option, QPainter& painter) {
    const QRect& place = option.rect;
    fillLeft(option, painter);
    painter.fillRect(place.right(), place.top(), 1, place.height(), frameColor(option));
    painter.fillRect(place.left(), place.top(), place.width(), 1, frameColor(option));
    painter.fillRect(place.left(), place.bottom(), place.width(), 1, frameColor(option));
}

/// What surrounds a list that has dropped down has a frame of another kind.
bool isPlainFrame(const QWidget* widget) {
    return !widget || !widget->inherits("QComboBoxPrivateContainer");
}

} // namespace

ProgramStyle::ProgramStyle() : QProxyStyle(u"Fusion"_s) {}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* result) const {
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_DialogButtonLayout:
        return QDialogButtonBox::WinLayout;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    const int pixels = QProxyStyle::pixelMetric(metric, option, widget);
    if (metric != PM_FocusFrameHMargin)
        return pixels;
    const auto* grid = qobject_cast<const TDBGrid*>(widget);
    return grid && grid->hasTightCells() ? pixels - 1 : pixels;
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    if (element == PE_Frame && isBetweenPixels(*painter) && isPlainFrame(widget)) {
        fillFrame(*option, *painter);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_FrameTabWidget:
        if (isBetweenPixels(*painter))
            fillLeft(*option, *painter);
        break;
    case PE_Frame:
    case PE_FrameLineEdit:
    case PE_PanelButtonCommand:
    case PE_IndicatorCheckBox:
        drawLineAround(*option, *painter);
        break;
    case PE_IndicatorRadioButton:
        drawLineAround(*option, *painter, true);
        break;
    default:
        break;
    }
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (element != CE_ComboBoxLabel || !list) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    // A list that drops down is a field as well, though the style paints its text as that of a button.
    QStyleOptionComboBox field(*list);
    field.palette.setColor(QPalette::Disabled, QPalette::ButtonText,
                           field.palette.color(QPalette::Disabled, QPalette::Text));
    QProxyStyle::drawControl(element, &field, painter, widget);
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox)
        drawLineAround(*option, *painter);
}

void ProgramStyle::polish(QPalette& palette) {
    palette = colors::readable(palette);
}

void ProgramStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (auto* box = qobject_cast<QLineEdit*>(widget))
        longTexts_.watch(*box);
    else if (auto* list = qobject_cast<QComboBox*>(widget))
        longTexts_.watch(*list);
    else if (auto* view = qobject_cast<QAbstractItemView*>(widget))
        longTexts_.watch(*view);
}

} // namespace pontrel
