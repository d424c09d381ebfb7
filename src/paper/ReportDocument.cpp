#include "paper/ReportDocument.h"

#include "paper/TemplateRules.h"

#include <algorithm>

namespace pontrel::paper {

namespace {

/// Gathers the texts of a page line by line, those of a line with tabs between.
class TextSink : public PageSink {
  public:
    void text(const TextItem& item) override {
        if (y_ >= 0)
            text_ += item.y == y_ ? u'\t' : u'\n';
        y_ = item.y;
        for (const QChar character : item.text)
            text_ += character == u'\t' || character == u'\n' || character == u'\r' ? u' ' : character;
    }
    [[nodiscard]] bool readsCells() const override { return true; }
    void line(const LineItem&) override {}
    void fill(const FillItem&) override {}
    [[nodiscard]] QString take() { return std::move(text_); }

  private:
    QString text_;
    int y_ = -1; ///< Of the last text.
};

} // namespace

QString rocDate(QDate date) {
    QString text;
    if (date.isValid())
        appendNumber(text, static_cast<double>(date.toJulianDay()), Format::Roc, {});
    return text;
}

QString periodText(const NamedValues& names, const Selection& selection) {
    const QString first = names.value(QStringLiteral("Sdate"));
    const QString last = names.value(QStringLiteral("Edate"));
    const QString between = QStringLiteral(" ～ ");
    const QString lowest = rocDate(selection.first);
    const QString highest = rocDate(selection.last);
    const bool isOneDay = selection.first.isValid() && selection.first == selection.last;
    // Masks hold no day from 2011 on, and that of the end is left as it was for a report of one day.
    const QString from = first.isEmpty() ? lowest : first;
    const QString to = isOneDay ? from : last.isEmpty() ? highest : last;
    return from.isEmpty() && to.isEmpty() ? QString() : from == to ? from : from + between + to;
}

std::shared_ptr<const ReportDocument> ReportDocument::make(const QString& dataFile, const Template& layout,
                                                           const Selection& selection,
                                                           const NamedValues& names, QDate today,
                                                           std::shared_ptr<const TextMeasure> measure) {
    NamedValues all = names;
    all.insert(QString::fromUtf16(made::Caption), layout.caption);
    all.insert(QString::fromUtf16(made::Code), layout.code);
    all.insert(QString::fromUtf16(made::Period), periodText(names, selection));
    all.insert(QString::fromUtf16(made::Today), rocDate(today));
    return std::make_shared<const ReportDocument>(layout, ReportRows::read(dataFile, layout, selection),
                                                  std::move(all), std::move(measure));
}

ReportDocument::ReportDocument(Template layout, ReportRows rows, NamedValues names,
                               std::shared_ptr<const TextMeasure> measure)
    : layout_(std::move(layout))
    , rows_(std::move(rows))
    , names_(std::move(names))
    , measure_(std::move(measure))
    , groups_(layout_, rows_)
    , texts_(layout_, rows_, names_)
    , pages_(layout_, rows_, groups_, texts_, *measure_)
    , content_(layout_, rows_, groups_, texts_, *measure_, pages_) {}

const QList<GroupEntry>& ReportDocument::outline() const {
    if (outline_)
        return *outline_;
    outline_.emplace();
    struct Place {
        std::size_t row;
        GroupEntry entry;
    };
    std::vector<Place> places;
    int depth = 0;
    for (std::size_t level = 1; level <= layout_.groups.size(); ++level) {
        const Pieces& label = layout_.groups[level - 1].inTree;
        if (label.empty())
            continue;
        for (const GroupRange& group : groups_.level(level)) {
            TextContext context;
            context.row = group.first;
            GroupEntry entry{depth, {}, pageOf(group.first)};
            texts_.pieces(entry.text, label, context);
            places.push_back({group.first, std::move(entry)});
        }
        ++depth;
    }
    // The levels were added one after the other, so that a parent stays ahead of the child of the same row.
    std::stable_sort(places.begin(), places.end(),
                     [](const Place& one, const Place& other) { return one.row < other.row; });
    for (Place& place : places)
        outline_->push_back(std::move(place.entry));
    return *outline_;
}

QString ReportDocument::textOf(int page) const {
    TextSink sink;
    emitPage(page, sink);
    return sink.take();
}

} // namespace pontrel::paper
