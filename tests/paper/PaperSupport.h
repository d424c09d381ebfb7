#pragma once

#include "paper/PageSink.h"
#include "paper/ReportDocument.h"
#include "paper/TemplateReader.h"
#include "support/TestStore.h"

#include <QStringList>

#include <memory>

namespace pontrel::test {

/// Widths and heights that are easily reckoned with: a character of ASCII takes 1 mm, any other 2 mm; lines
/// are 8, 6 and 5 mm high in the title's, head's and body's font.
class FixedMeasure : public paper::TextMeasure {
  public:
    [[nodiscard]] int width(int font, QStringView text) const override;
    [[nodiscard]] qsizetype fitting(int font, QStringView text, int width) const override;
    [[nodiscard]] int lineHeight(int font) const override;
};

/// The template of that text.
[[nodiscard]] paper::Template templateOf(const QByteArray& text);

/// A report over the store's records, measured as above, printed on 2026/01/31.
[[nodiscard]] std::shared_ptr<const paper::ReportDocument> documentOf(const TestStore& store,
                                                                      const paper::Template& layout,
                                                                      const Selection& selection = {},
                                                                      const paper::NamedValues& names = {});

/// A thing on a page, as it reached the sink.
struct Item {
    enum class Kind { Text, Line, Fill };
    Kind kind = Kind::Text;
    int x = 0, y = 0, width = 0, height = 0, font = 0, scale = 100;
    paper::Align align = paper::Align::Left;
    QString text;
};
[[nodiscard]] std::vector<Item> itemsOf(const paper::ReportDocument& document, int page);

/// Every text of the report, one a line: page x y width font align "text", with the scale where it is shrunk.
[[nodiscard]] QStringList goldenText(const paper::ReportDocument& document);

/// The texts of a page alone, one line of the page each, with "|" between.
[[nodiscard]] QStringList linesOf(const paper::ReportDocument& document, int page);

} // namespace pontrel::test
