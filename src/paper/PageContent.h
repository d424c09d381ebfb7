#pragma once

#include "paper/PageLayout.h"
#include "paper/PageSink.h"

namespace pontrel::paper {

/// Puts what stands on a page into a sink, in the order in which it is read: heading, captions, rows, foot.
class PageContent {
  public:
    PageContent(const Template& layout, const ReportRows& rows, const Groups& groups, const CellText& texts,
                const TextMeasure& measure, const PageLayout& pages)
        : layout_(layout), rows_(rows), groups_(groups), texts_(texts), measure_(measure), pages_(pages) {}

    /// The page of that number from 0.
    void emitPage(std::size_t page, PageSink& sink) const;

  private:
    class Page;

    const Template& layout_;
    const ReportRows& rows_;
    const Groups& groups_;
    const CellText& texts_;
    const TextMeasure& measure_;
    const PageLayout& pages_;
};

} // namespace pontrel::paper
