#pragma once

#include <QImage>
#include <QList>
#include <QRect>
#include <QString>

class QWidget;

namespace pontrel::test {

/// A text that a window shows: what bears it, and where in the window it stands, without frames and marks.
struct ShownText {
    QString control;
    QString text;
    QRect place;
    bool enabled;
};

/// The texts of labels, boxes, lists that drop down, check boxes and options, and the captions of frames and
/// tabs, those on screen. Buttons and grids are left out, and so are panels whose paleness tells something.
[[nodiscard]] QList<ShownText> shownTexts(QWidget& window);

/// The captions of buttons that are on, and the rows of grids in sight that show a text.
[[nodiscard]] QList<ShownText> buttonsAndRows(QWidget& window);

/// How far the writing in a place of a picture stands out from its ground: 1 where there is none, 21 for
/// black on white, by the definition of relative luminance.
[[nodiscard]] double contrastIn(const QImage& picture, const QRect& place);

} // namespace pontrel::test
