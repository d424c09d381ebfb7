#include "paper/PaperSupport.h"

#include <algorithm>

namespace pontrel::test {

using namespace paper;

namespace {

int widthOf(QChar character) {
    return character.unicode() < 0x80 ? 100 : character.isLowSurrogate() ? 0 : 200;
}

class Recorder : public PageSink {
  public:
    void text(const TextItem& item) override {
        items.push_back({Item::Kind::Text, item.x, item.y, item.width, item.height, item.font, item.scale,
                         item.align, item.text.toString()});
    }
    void line(const LineItem& item) override {
        items.push_back(
            {Item::Kind::Line, item.x, item.y, item.length, item.thickness, 0, 100, Align::Left, {}});
    }
    void fill(const FillItem& item) override {
        items.push_back({Item::Kind::Fill, item.x, item.y, item.width, item.height, 0, 100, Align::Left, {}});
    }

    std::vector<Item> items;
};

} // namespace

int FixedMeasure::width(int, QStringView text) const {
    int sum = 0;
    for (const QChar character : text)
        sum += widthOf(character);
    return sum;
}

qsizetype FixedMeasure::fitting(int, QStringView text, int width) const {
    int sum = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        sum += widthOf(text[at]);
        if (sum > width)
            return at;
    }
    return text.size();
}

int FixedMeasure::lineHeight(int font) const {
    return font == TitleFont ? 800 : font == HeadFont ? 600 : 500;
}

Template templateOf(const QByteArray& text) {
    return readTemplate(TemplateText(QStringLiteral("T.rpt"), text));
}

std::shared_ptr<const ReportDocument> documentOf(const TestStore& store, const Template& layout,
                                                 const Selection& selection, const NamedValues& names) {
    return ReportDocument::make(store.path(), layout, selection, names, QDate(2026, 1, 31),
                                std::make_shared<FixedMeasure>());
}

std::vector<Item> itemsOf(const ReportDocument& document, int page) {
    Recorder recorder;
    document.emitPage(page, recorder);
    return std::move(recorder.items);
}

QStringList goldenText(const ReportDocument& document) {
    const QStringList aligns{QStringLiteral("left"), QStringLiteral("center"), QStringLiteral("right")};
    QStringList lines;
    for (int page = 0; page < document.pageCount(); ++page)
        for (const Item& item : itemsOf(document, page)) {
            if (item.kind != Item::Kind::Text)
                continue;
            QString line = QStringLiteral("%1 %2 %3 %4 %5 %6 \"%7\"")
                               .arg(page + 1)
                               .arg(item.x)
                               .arg(item.y)
                               .arg(item.width)
                               .arg(item.font)
                               .arg(aligns[static_cast<int>(item.align)], item.text);
            if (item.scale != 100)
                line += QStringLiteral(" %1%").arg(item.scale);
            lines += line;
        }
    return lines;
}

QStringList linesOf(const ReportDocument& document, int page) {
    QStringList lines;
    int y = -1;
    for (const Item& item : itemsOf(document, page)) {
        if (item.text.isEmpty())
            continue; // a rule or a fill
        if (item.y == y)
            lines.last() += u'|' + item.text;
        else
            lines += item.text;
        y = item.y;
    }
    return lines.isEmpty() ? QStringList(QString()) : lines;
}

} // namespace pontrel::test
