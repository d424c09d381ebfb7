#pragma once

#include "paper/PageSink.h"
#include "paper/ReportDocument.h"

#include <QImage>
#include <QString>

#include <functional>

namespace pontrel::test {

/// A page in greys at 60 dots an inch. It is painted four times as large and then reduced, so that it hardly
/// depends on how a machine fits its letters to dots. `emit` puts the page's items into the painter; without
/// it they come as they are. The document must be laid out by a GlyphMeasure.
[[nodiscard]] QImage pictureOf(const paper::ReportDocument& document, int page,
                               const std::function<void(paper::PageSink& painter)>& emit = {});

/// A picture of a page at 240 dots an inch, reduced as above.
[[nodiscard]] QImage reduced(const QImage& large);

/// Compares the means of greys in frames that glide over the pictures. Empty where none differs by more than
/// letters do that are drawn in another way; else where on the paper the pictures differ most and how much.
[[nodiscard]] QString differenceOf(const QImage& expected, const QImage& actual);

} // namespace pontrel::test
