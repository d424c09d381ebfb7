#pragma once

#include "app/controls/LongTexts.h"

#include <QProxyStyle>

namespace pontrel {

/// Qt's own style, without what it takes over from the desktop: pictures on buttons, and their
/// order. The desktop's colours stay, as far as they can be read; where they are of high contrast, fields,
/// buttons and marks get lines around them that can be seen. Boxes show the beginning of a text that is too
/// long, those of Qt's own dialogs as well. Grids with little room have smaller margins in their cells.
class ProgramStyle : public QProxyStyle {
    Q_OBJECT
  public:
    ProgramStyle();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;

    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    void polish(QWidget* widget) override;

  private:
    LongTexts longTexts_;
};

} // namespace pontrel
