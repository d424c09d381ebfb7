#include "windows/reports/PageView.h"

#include "paper/PagePainter.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Gap = 12; ///< Between pages and around them, in pixels.
constexpr double UnitsOfInch = 2540;
constexpr double ScreenDots = 96;

} // namespace

PageView::PageView(const paper::ReportDocument& document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(document), measure_(document.layout()) {
    setObjectName(u"PageView"_s);
    setAccessibleName(document.layout().caption);
}

QSize PageView::pageSize() const {
    const double scale = zoom_ * ScreenDots / UnitsOfInch;
    return {qRound(document_.layout().paperWidth * scale), qRound(document_.layout().paperHeight * scale)};
}

QRect PageView::placeOf(int page) const {
    const QSize size = pageSize();
    const int left = qMax(Gap, (viewport()->width() - size.width()) / 2);
    return {QPoint(left - horizontalScrollBar()->value(),
                   Gap + page * (size.height() + Gap) - verticalScrollBar()->value()),
            size};
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const QSize size = pageSize();
    const int height = Gap + document_.pageCount() * (size.height() + Gap);
    verticalScrollBar()->setRange(0, qMax(0, height - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    horizontalScrollBar()->setRange(0, qMax(0, size.width() + 2 * Gap - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const int step = pageSize().height() + Gap;
    const int first = qMax(0, (verticalScrollBar()->value() + event->rect().top()) / step - 1);
    for (int page = first; page < document_.pageCount(); ++page) {
        const QRect place = placeOf(page);
        if (place.top() > event->rect().bottom())
            break;
        if (!place.intersects(event->rect()))
            continue;
        painter.fillRect(place, Qt::white);
        paper::PagePainter sink(painter, measure_, zoom_ * ScreenDots / UnitsOfInch, place.topLeft());
        document_.emitPage(page, sink);
    }
}

} // namespace pontrel
