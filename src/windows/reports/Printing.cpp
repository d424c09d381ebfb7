#include "windows/reports/Printing.h"

#include "app/Printers.h"
#include "paper/PagePainter.h"
#include "rules/ActionHost.h"
#include "store/RunTimeError.h"

#include <QPageRanges>
#include <QPainter>
#include <QPrinter>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr double UnitsOfMillimetre = 100;
constexpr double UnitsOfInch = 2540;

/// From 0.
std::vector<int> chosenPages(const QPrinter& printer, int pageCount, int currentPage) {
    const QPageRanges ranges = printer.pageRanges();
    std::vector<int> pages;
    for (int page = 0; page < pageCount; ++page) {
        const bool isChosen = printer.printRange() == QPrinter::CurrentPage ? page == currentPage
                              : printer.printRange() == QPrinter::PageRange
                                  ? ranges.isEmpty() || ranges.contains(page + 1)
                                  : true;
        if (isChosen)
            pages.push_back(page);
    }
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::reverse(pages.begin(), pages.end());
    return pages;
}

} // namespace

void setUpPrinter(QPrinter& printer, const paper::ReportDocument& document) {
    const paper::Template& layout = document.layout();
    const auto [shorter, longer] = std::minmax(layout.paperWidth, layout.paperHeight);
    printer.setDocName(document.title());
    printer.setCreator(ProgramTitle);
    printer.setFullPage(true);
    printer.setPageSize(QPageSize(QSizeF(shorter, longer) / UnitsOfMillimetre, QPageSize::Millimeter));
    printer.setPageOrientation(layout.paperWidth > layout.paperHeight ? QPageLayout::Landscape
                                                                      : QPageLayout::Portrait);
}

std::vector<int> pagesToPrint(const QPrinter& printer, int pageCount, int currentPage) {
    const std::vector<int> once = chosenPages(printer, pageCount, currentPage);
    const int copies = printer.supportsMultipleCopies() ? 1 : qMax(1, printer.copyCount());
    std::vector<int> pages;
    pages.reserve(once.size() * static_cast<std::size_t>(copies));
    if (printer.collateCopies()) {
        for (int copy = 0; copy < copies; ++copy)
            pages.insert(pages.end(), once.begin(), once.end());
    } else {
        for (const int page : once)
            pages.insert(pages.end(), static_cast<std::size_t>(copies), page);
    }
    return pages;
}

Placement placementOf(const QRectF& content, const QRectF& printable) {
    if (printable.contains(content))
        return {};
    const double scale =
        std::min({1.0, printable.width() / content.width(), printable.height() / content.height()});
    // In the middle of the width, at the top.
    const QPointF corner(printable.left() + (printable.width() - scale * content.width()) / 2,
                         printable.top());
    return {scale, corner - scale * content.topLeft()};
}

namespace {

/// In 1/100 mm.
Placement placementOn(const QPrinter& printer, const paper::Template& layout) {
    const QRectF content = QRectF(0, 0, layout.paperWidth, layout.paperHeight)
                               .adjusted(layout.margin, layout.margin, -layout.margin, -layout.margin);
    QPageLayout paper = printer.pageLayout();
    paper.setMode(QPageLayout::StandardMode);
    paper.setMargins(paper.minimumMargins());
    const QRectF printable = paper.paintRect(QPageLayout::Millimeter);
    return placementOf(content,
                       {printable.topLeft() * UnitsOfMillimetre, printable.size() * UnitsOfMillimetre});
}

} // namespace

std::size_t printPages(const paper::ReportDocument& document, const std::vector<int>& pages,
                       QPrinter& printer, const ProgressStep& progress) {
    const paper::Template& layout = document.layout();
    const Placement placement = placementOn(printer, layout);
    const double dots = printer.resolution() / UnitsOfInch;
    requireQueue(printer);
    QPainter painter;
    if (!painter.begin(&printer))
        failPrinter(printer);
    const paper::GlyphMeasure measure(layout);
    for (std::size_t done = 0; done < pages.size(); ++done) {
        if (done > 0 && !printer.newPage())
            failPrinter(printer);
        {
            paper::PagePainter sink(painter, measure, dots * placement.scale, placement.origin * dots);
            document.emitPage(pages[done], sink);
        }
        if (progress && !progress(done + 1, pages.size()))
            return printer.abort() ? 0 : done + 1;
    }
    endPrinting(painter, printer);
    return pages.size();
}

} // namespace pontrel
