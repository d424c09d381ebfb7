#include "paper/PageSearch.h"

#include "paper/PageSink.h"

#include <cmath>

namespace pontrel::paper {

namespace {

class SearchSink : public PageSink {
  public:
    SearchSink(const TextMeasure& measure, int page, const QString& wanted, std::vector<PageHit>& hits)
        : measure_(measure), page_(page), wanted_(wanted), hits_(hits) {
        // Comparing without regard to case takes several times as long, and Han has none.
        if (wanted.toLower() == wanted.toUpper())
            letters_ = Qt::CaseSensitive;
    }

    void text(const TextItem& item) override {
        for (qsizetype at = item.text.indexOf(wanted_, 0, letters_); at >= 0;
             at = item.text.indexOf(wanted_, at + wanted_.size(), letters_))
            hits_.push_back({page_, placeOf(item, at)});
    }
    void line(const LineItem&) override {}
    void fill(const FillItem&) override {}

  private:
    [[nodiscard]] QRect placeOf(const TextItem& item, qsizetype at) const {
        const auto width = [&](qsizetype from, qsizetype count) {
            return measure_.width(item.font, item.text.mid(from, count)) * item.scale / 100;
        };
        const int left = static_cast<int>(std::lround(startOf(item, measure_))) + width(0, at);
        return {left, item.y, width(at, wanted_.size()), item.height};
    }

    const TextMeasure& measure_;
    int page_;
    const QString& wanted_;
    std::vector<PageHit>& hits_;
    Qt::CaseSensitivity letters_ = Qt::CaseInsensitive;
};

} // namespace

void findOnPage(const ReportDocument& document, int page, const QString& wanted, std::vector<PageHit>& hits) {
    if (wanted.isEmpty())
        return;
    SearchSink sink(document.measure(), page, wanted, hits);
    document.emitPage(page, sink);
}

} // namespace pontrel::paper
