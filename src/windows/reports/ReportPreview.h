#pragma once

#include "paper/ReportDocument.h"

#include <QWidget>

namespace pontrel {

class PageView;

/// What a preview offers besides looking.
struct PreviewOffers {
    bool print = false;
    bool save = false; ///< As PDF, spreadsheet or comma-separated text.
};

/// A report on screen, in a window of its own that stays open beside the others and ends with the main
/// window.
class ReportPreview : public QWidget {
    Q_OBJECT
  public:
    ReportPreview(std::shared_ptr<const paper::ReportDocument> document, PreviewOffers offers);

    /// Shows a report; the window goes when it is closed.
    static ReportPreview* open(std::shared_ptr<const paper::ReportDocument> document, PreviewOffers offers,
                               bool maximised);

    [[nodiscard]] const paper::ReportDocument& document() const { return *document_; }

  private:
    std::shared_ptr<const paper::ReportDocument> document_;
    PageView* pages_;
};

} // namespace pontrel
