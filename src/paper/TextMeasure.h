#pragma once

#include "paper/Template.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace pontrel::paper {

/// How much room texts take, in 1/100 mm, in the fonts of a template. The same on every device.
class TextMeasure {
  public:
    virtual ~TextMeasure();

    [[nodiscard]] virtual int width(int font, QStringView text) const = 0;
    /// How many code units from the start of the text fit into the width; never half a character.
    [[nodiscard]] virtual qsizetype fitting(int font, QStringView text, int width) const = 0;
    [[nodiscard]] virtual int lineHeight(int font) const = 0;
};

inline constexpr int MostLines = 5;   ///< Of a text that is wrapped.
inline constexpr int LeastScale = 70; ///< Percent to which a text shrinks at most.

/// A text that fits into its width: as it is, cut with an ellipsis, or shrunk.
struct FittedText {
    QStringView text; ///< Of the original or of the scratch.
    int scale = 100;  ///< Percent of the font's size.
};
[[nodiscard]] FittedText fitted(const TextMeasure& measure, int font, QStringView text, int width, Fit fit,
                                QString& scratch);

/// Where the lines of a wrapped text end: at blanks, between Han characters but before closing marks and
/// after opening ones, anywhere in what is too long for a line. At most MostLines; the last then holds the
/// rest.
[[nodiscard]] std::vector<QStringView> wrapped(const TextMeasure& measure, int font, QStringView text,
                                               int width);

} // namespace pontrel::paper
