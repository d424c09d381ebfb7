#pragma once

#include "paper/PagePainter.h"

#include <QFile>

namespace pontrel::paper {

/// Appends to a PDF that Qt has written the maps from glyphs to the characters that were drawn, for search
/// and copying: its own name the lowest of several characters that share a glyph, and none beyond U+FFFF. The
/// map of a font is replaced only where it agrees with the order in which glyphs were drawn; otherwise it
/// stays. The file is open for reading and writing. False where it is not of the expected form, or where
/// nothing could be written.
[[nodiscard]] bool putMapsRight(QFile& file, const DrawnFaces& drawn);

} // namespace pontrel::paper
