#pragma once

#include "app/ProgressBox.h"
#include "paper/ReportDocument.h"

#include <QPointF>
#include <QRectF>

#include <vector>

class QPrinter;

namespace pontrel {

/// Makes the printer one for the report: its paper, its name.
void setUpPrinter(QPrinter& printer, const paper::ReportDocument& document);

/// The pages that are to be printed, from 0, in their order: those chosen, as often as there are copies where
/// the printer makes none itself, collated or each by itself.
[[nodiscard]] std::vector<int> pagesToPrint(const QPrinter& printer, int pageCount, int currentPage);

/// Where pages go on paper: `scale` is 1 where they are printed in their own size; the origin is that of the
/// page's upper left corner. In the unit of the rectangles.
struct Placement {
    double scale = 1;
    QPointF origin;
    friend bool operator==(const Placement&, const Placement&) = default;
};

/// A page in its own size where all that lies within its margins can be printed, else shrunk so far. The
/// rectangles are what the page fills within its margins, and what the printer reaches of its paper.
[[nodiscard]] Placement placementOf(const QRectF& content, const QRectF& printable);

/// Prints these pages and returns how many have gone to the printer: all, or where it was stopped those that
/// it cannot take back. Throws error 482 where the printer does not answer or stops.
[[nodiscard]] std::size_t printPages(const paper::ReportDocument& document, const std::vector<int>& pages,
                                     QPrinter& printer, const ProgressStep& progress);

} // namespace pontrel
