#include "windows/reports/ReportPreview.h"

#include "app/MDI.h"
#include "app/Module1.h"
#include "windows/reports/PageView.h"

#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize SmallSize(1000, 700);

} // namespace

ReportPreview* ReportPreview::open(std::shared_ptr<const paper::ReportDocument> document,
                                   PreviewOffers offers, bool maximised) {
    auto* preview = new ReportPreview(std::move(document), offers);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    if (gMDI)
        gMDI->takeAlong(*preview);
    preview->resize(SmallSize);
    if (maximised)
        preview->showMaximized();
    else
        preview->show();
    preview->activateWindow();
    return preview;
}

ReportPreview::ReportPreview(std::shared_ptr<const paper::ReportDocument> document, PreviewOffers)
    : document_(std::move(document)), pages_(new PageView(*document_, this)) {
    setObjectName(u"ReportPreview"_s);
    setWindowTitle(document_->title());
    setAccessibleName(document_->layout().caption);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(pages_);
}

} // namespace pontrel
