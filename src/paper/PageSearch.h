#pragma once

#include "paper/ReportDocument.h"

#include <QRect>
#include <QString>

#include <vector>

namespace pontrel::paper {

/// A place on a page where a text stands, in 1/100 mm from the paper's upper left corner.
struct PageHit {
    int page = 0; ///< From 0.
    QRect place;
    friend bool operator==(const PageHit&, const PageHit&) = default;
};

/// Appends where the text stands on a page, in the order in which the page is read, whatever the case of its
/// letters. Texts that stand beside each other are searched one by one; an empty text stands nowhere.
void findOnPage(const ReportDocument& document, int page, const QString& wanted, std::vector<PageHit>& hits);

} // namespace pontrel::paper
