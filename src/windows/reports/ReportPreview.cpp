#include "windows/reports/ReportPreview.h"

#include "app/Events.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Printers.h"
#include "app/SaveFile.h"
#include "app/Zoom.h"
#include "app/controls/NumberEntry.h"
#include "paper/CsvFile.h"
#include "paper/PdfFile.h"
#include "paper/SheetFile.h"
#include "windows/reports/PageView.h"
#include "windows/reports/Printing.h"
#include "windows/reports/ReportSearch.h"

#include <QPrintDialog>
#include <QPrinter>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize SmallSize(1000, 700);
constexpr int PageRole = Qt::UserRole; ///< Of an entry in the tree: its page.

} // namespace

ReportPreview* ReportPreview::open(std::shared_ptr<const paper::ReportDocument> document,
                                   PreviewOffers offers, bool maximised) {
    auto* preview = new ReportPreview(std::move(document), offers);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    if (gMDI)
        gMDI->takeAlong(*preview);
    preview->resize(SmallSize);
    zoom::keepOnScreen(*preview);
    if (maximised)
        preview->showMaximized();
    else
        preview->show();
    preview->activateWindow();
    return preview;
}

ReportPreview::ReportPreview(std::shared_ptr<const paper::ReportDocument> document, PreviewOffers offers)
    : document_(std::move(document))
    , pages_(new PageView(*document_, this))
    , search_(new ReportSearch(*document_, this)) {
    setObjectName(u"ReportPreview"_s);
    setWindowTitle(document_->title());
    setAccessibleName(document_->layout().caption);
    makeToolbar(offers);
    makeFindBar();
    makeTree();
    layOut();
    connectControls();
    showPage();
    showZoom();
    pages_->setFocus();
}

void ReportPreview::print() {
    QPrinter printer(QPrinter::HighResolution);
    setUpPrinter(printer, *document_);
    QPrintDialog dialog(&printer, this);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                      QAbstractPrintDialog::PrintCurrentPage | QAbstractPrintDialog::PrintCollateCopies |
                      QAbstractPrintDialog::PrintShowPageSize);
    dialog.setMinMax(1, document_->pageCount());
    dialog.setFromTo(1, document_->pageCount()); // without it the boxes take no number but 1
    if (!askForPrinter(dialog))
        return;
    const std::vector<int> pages = pagesToPrint(printer, document_->pageCount(), pages_->page());
    // A file is made as the program makes all of them: its text can be searched, and what is not finished
    // leaves nothing.
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty())
        printFile(pages, printer.outputFileName());
    else
        printPaper(pages, printer);
}

void ReportPreview::printFile(const std::vector<int>& pages, const QString& path) {
    if (attempt(u"列印"_s, [&](const ProgressStep& progress) {
            return paper::savePdf(*document_, pages, path, progress);
        }))
        status_->setText(u"已列印到 %1"_s.arg(path));
}

void ReportPreview::printPaper(const std::vector<int>& pages, QPrinter& printer) {
    std::size_t gone = 0;
    const bool isTried = attempt(u"列印"_s, [&](const ProgressStep& progress) {
        gone = printPages(*document_, pages, printer, progress);
        return true;
    });
    if (isTried)
        status_->setText(gone == pages.size() ? u"已送出 %L1 頁到印表機"_s.arg(gone)
                                              : u"列印已取消，可能已印出 %L1 頁"_s.arg(gone));
}

void ReportPreview::saveAs(const SaveKind& kind, const QString& caption, const Save& save) {
    const std::optional<QString> path = saveUnderChosenName(
        document_->title(), kind, caption,
        [&](const QString& file, const ProgressStep& progress) { return save(*document_, file, progress); });
    if (path)
        status_->setText(u"已存成 %1"_s.arg(*path));
}

void ReportPreview::savePdf() {
    saveAs(PdfKind, u"存成 PDF"_s,
           [](const auto& document, const QString& path, const ProgressStep& progress) {
               return paper::savePdf(document, path, progress);
           });
}

void ReportPreview::saveSheet() {
    saveAs(SheetKind, u"存成試算表"_s,
           [](const auto& document, const QString& path, const ProgressStep& progress) {
               return paper::saveSheet(document, path, progress);
           });
}

void ReportPreview::saveCsv() {
    saveAs(CsvKind, u"存成 CSV"_s,
           [](const auto& document, const QString& path, const ProgressStep& progress) {
               return paper::saveCsv(document, path, progress);
           });
}

void ReportPreview::copyPage() {
    QGuiApplication::clipboard()->setText(document_->textOf(pages_->page()));
    status_->setText(u"已複製第 %L1 頁的文字"_s.arg(pages_->page() + 1));
}

void ReportPreview::leave() {
    if (findBar_->isVisible() && findBar_->isAncestorOf(focusWidget()))
        closeFind();
    else
        close();
}

void ReportPreview::typedPage() {
    bool isNumber = false;
    const int page = plainDigits(page_->text()).toInt(&isNumber);
    if (isNumber)
        pages_->goTo(page - 1);
    else
        beep();
    showPage();
    pages_->setFocus();
}

void ReportPreview::showPage() {
    const int page = pages_->page();
    const int last = document_->pageCount() - 1;
    page_->setText(QString::number(page + 1));
    first_->setEnabled(page > 0);
    previous_->setEnabled(page > 0);
    next_->setEnabled(page < last);
    last_->setEnabled(page < last);
    if (groups_->isVisible())
        chooseGroup();
    pages_->setAccessibleDescription(u"第 %1 頁，共 %2 頁\n"_s.arg(page + 1).arg(last + 1) +
                                     document_->textOf(page));
}

void ReportPreview::openFind() {
    findBar_->show();
    wanted_->setFocus(Qt::ShortcutFocusReason);
    wanted_->selectAll();
    if (search_->wanted() != wanted_->text())
        typedFind();
}

void ReportPreview::closeFind() {
    findBar_->hide();
    hit_ = -1;
    isHitOpen_ = false;
    search_->start({});
    pages_->setFocus();
}

void ReportPreview::typedFind() {
    hit_ = -1;
    foundFrom_ = pages_->page();
    isHitOpen_ = true;
    search_->start(wanted_->text());
}

/// Goes to the first place from the page on which the search began, as soon as it has been found.
void ReportPreview::showFound() {
    const std::vector<paper::PageHit>& hits = search_->hits();
    if (isHitOpen_ && !hits.empty() && (hits.back().page >= foundFrom_ || search_->isDone())) {
        isHitOpen_ = false;
        const auto first = std::find_if(hits.begin(), hits.end(),
                                        [this](const auto& hit) { return hit.page >= foundFrom_; });
        hit_ = first == hits.end() ? 0 : static_cast<int>(first - hits.begin());
        pages_->bringIntoSight(hits[static_cast<std::size_t>(hit_)]);
    }
    pages_->setMarks(hits, hit_);
    if (search_->wanted().isEmpty())
        found_->clear();
    else if (!search_->isDone())
        found_->setText(u"尋找中，%L1 處"_s.arg(hits.size()));
    else if (hits.empty())
        found_->setText(u"找不到"_s);
    else
        found_->setText(u"第 %L1 處，共 %L2 處"_s.arg(hit_ + 1).arg(hits.size()));
}

void ReportPreview::findNext(bool forward) {
    if (!findBar_->isVisible() || search_->wanted().isEmpty()) {
        openFind();
        return;
    }
    const int count = static_cast<int>(search_->hits().size());
    if (count == 0 || hit_ < 0) {
        if (search_->isDone())
            beep();
        return;
    }
    // Around: behind the last one the first, once all have been found.
    const int wanted = hit_ + (forward ? 1 : -1);
    if ((wanted >= count || wanted < 0) && !search_->isDone())
        return;
    hit_ = (wanted + count) % count;
    pages_->bringIntoSight(search_->hits()[static_cast<std::size_t>(hit_)]);
    showFound();
}

void ReportPreview::fillTree() {
    QList<QTreeWidgetItem*> above; // the open entry of each level
    QList<QTreeWidgetItem*> outermost;
    for (const paper::GroupEntry& entry : document_->outline()) {
        above.resize(entry.level);
        auto* item = new QTreeWidgetItem({entry.text});
        item->setData(0, PageRole, entry.page);
        item->setToolTip(0, entry.text);
        if (entry.level == 0)
            outermost << item;
        else
            above.constLast()->addChild(item);
        above << item;
    }
    groups_->addTopLevelItems(outermost);
    groups_->resizeColumnToContents(0);
}

void ReportPreview::chooseGroup() {
    const auto pageOf = [](const QTreeWidgetItem* item) { return item->data(0, PageRole).toInt(); };
    const int page = pages_->page();
    if (groups_->currentItem() && pageOf(groups_->currentItem()) == page)
        return;
    QTreeWidgetItem* chosen = nullptr;
    for (QTreeWidgetItemIterator item(groups_); *item && pageOf(*item) <= page; ++item) {
        if (!chosen || pageOf(chosen) < page)
            chosen = *item;
    }
    const QSignalBlocker blocker(groups_); // nothing is gone to
    groups_->setCurrentItem(chosen);
}

void ReportPreview::goToGroup() {
    if (const QTreeWidgetItem* item = groups_->currentItem())
        pages_->goTo(item->data(0, PageRole).toInt());
}

void ReportPreview::showTree(bool shown) {
    if (shown && groups_->topLevelItemCount() == 0)
        fillTree();
    groups_->setVisible(shown);
    if (shown) {
        chooseGroup();
        groups_->setFocus();
    } else {
        pages_->setFocus();
    }
}

} // namespace pontrel
