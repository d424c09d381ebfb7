#include "windows/reports/PageView.h"

#include "app/controls/Colors.h"
#include "paper/PagePainter.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Gap = 12; ///< Between pages and around them, in pixels.
constexpr double UnitsOfInch = 2540;
constexpr double ScreenDots = 96;
constexpr double WholePercent = 100;
constexpr int MostFirstZoom = 150;
constexpr int LineStep = 40;
constexpr int MarkMargin = 30;  ///< Around a text, in 1/100 mm.
constexpr int Overhang = 300;   ///< In 1/100 mm.
constexpr int SightMargin = 60; ///< Between what is shown and the edge, in pixels.

// On paper, which is white on every desktop.
constexpr QColor Edge(0x5a, 0x5e, 0x62);
constexpr QColor Mark(0xff, 0xe9, 0x7a);
constexpr QColor CurrentMark(0xff, 0xa6, 0x3d);

/// Hands on what lies in sight of a page: of one that is cut by the edge nothing else is painted.
class SightSink : public paper::PageSink {
  public:
    SightSink(paper::PageSink& next, int top, int bottom) : next_(next), top_(top), bottom_(bottom) {}

    void text(const paper::TextItem& item) override {
        if (isInSight(item.y, item.height))
            next_.text(item);
    }
    void line(const paper::LineItem& item) override {
        if (isInSight(item.y, item.thickness))
            next_.line(item);
    }
    void fill(const paper::FillItem& item) override {
        if (isInSight(item.y, item.height))
            next_.fill(item);
    }

  private:
    [[nodiscard]] bool isInSight(int y, int height) const { return y + height >= top_ && y <= bottom_; }

    paper::PageSink& next_;
    int top_;
    int bottom_;
};

} // namespace

PageView::PageView(const paper::ReportDocument& document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(document), measure_(document.layout()) {
    setObjectName(u"PageView"_s);
    setAccessibleName(document.layout().caption);
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    // Always there, or a page as wide as the view would make it come and go.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    verticalScrollBar()->setSingleStep(LineStep);
    horizontalScrollBar()->setSingleStep(LineStep);
}

double PageView::scale() const {
    return zoom_ / WholePercent * ScreenDots / UnitsOfInch;
}

QSize PageView::pageSize() const {
    return {qMax(1, qRound(document_.layout().paperWidth * scale())),
            qMax(1, qRound(document_.layout().paperHeight * scale()))};
}

QRect PageView::placeOf(int page) const {
    const QSize size = pageSize();
    const int left = qMax(Gap, (viewport()->width() - size.width()) / 2);
    return {QPoint(left - horizontalScrollBar()->value(),
                   Gap + page * (size.height() + Gap) - verticalScrollBar()->value()),
            size};
}

int PageView::pageAt(int y) const {
    return std::clamp((verticalScrollBar()->value() + y) / (pageSize().height() + Gap), 0,
                      document_.pageCount() - 1);
}

/// The zoom with which a page fits into the view.
double PageView::fitting(Fit fit) const {
    const int bar = verticalScrollBar()->sizeHint().width();
    const double width =
        (this->width() - bar - 2 * Gap) / (document_.layout().paperWidth * ScreenDots / UnitsOfInch);
    const double height =
        (this->height() - 2 * Gap) / (document_.layout().paperHeight * ScreenDots / UnitsOfInch);
    const double percent = WholePercent * (fit == Fit::PageWidth ? width : qMin(width, height));
    return std::clamp<double>(percent, Levels.front(), Levels.back());
}

void PageView::setLengths() {
    const QSize size = pageSize();
    const QSize room = viewport()->size();
    const int height = Gap + document_.pageCount() * (size.height() + Gap);
    verticalScrollBar()->setPageStep(room.height());
    verticalScrollBar()->setRange(0, qMax(0, height - room.height()));
    horizontalScrollBar()->setPageStep(room.width());
    horizontalScrollBar()->setRange(0, qMax(0, size.width() + 2 * Gap - room.width()));
}

void PageView::setPage(int page) {
    if (page == page_)
        return;
    page_ = page;
    Q_EMIT pageChanged();
}

void PageView::goTo(int page) {
    const int there = std::clamp(page, 0, document_.pageCount() - 1);
    {
        const QScopedValueRollback going(isGoing_, true);
        verticalScrollBar()->setValue(there * (pageSize().height() + Gap));
    }
    setPage(there);
}

void PageView::zoomTo(double percent, QPoint kept) {
    const double wanted = std::clamp<double>(percent, Levels.front(), Levels.back());
    const int page = pageAt(kept.y());
    const QRect before = placeOf(page);
    const QPointF share(static_cast<double>(kept.x() - before.left()) / before.width(),
                        static_cast<double>(kept.y() - before.top()) / before.height());
    {
        const QScopedValueRollback going(isGoing_, true);
        zoom_ = wanted;
        setLengths();
        const QRect after = placeOf(page);
        const QPointF moved(after.left() + share.x() * after.width(),
                            after.top() + share.y() * after.height());
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(moved.x()) - kept.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(moved.y()) - kept.y());
    }
    viewport()->update();
    Q_EMIT zoomChanged();
}

void PageView::setZoom(double percent) {
    isFirstZoom_ = false;
    fit_ = Fit::None;
    zoomTo(percent, viewport()->rect().center());
}

void PageView::setFit(Fit fit) {
    isFirstZoom_ = false;
    fit_ = fit;
    zoomTo(fit == Fit::None ? zoom_ : fitting(fit), {viewport()->width() / 2, 0});
    // A page that is shown whole stands alone in the view.
    if (fit == Fit::WholePage)
        goTo(page_);
}

int PageView::levelBeside(bool larger) const {
    if (larger) {
        const auto next = std::upper_bound(Levels.begin(), Levels.end(), zoom_);
        return next == Levels.end() ? Levels.back() : *next;
    }
    const auto here = std::lower_bound(Levels.begin(), Levels.end(), zoom_);
    return here == Levels.begin() ? Levels.front() : *(here - 1);
}

void PageView::zoomByStep(bool in) {
    setZoom(levelBeside(in));
}

void PageView::setMarks(const std::vector<paper::PageHit>& hits, int current) {
    marks_ = &hits;
    // A search that goes on elsewhere paints nothing here.
    const std::size_t inSight = marksInSight();
    if (inSight != paintedMarks_ || (mark_ != current && inSight > 0))
        viewport()->update();
    mark_ = current;
}

std::size_t PageView::marksInSight() const {
    std::size_t count = 0;
    for (int page = pageAt(0); page <= pageAt(viewport()->height()); ++page)
        count += marksOf(page).size();
    return count;
}

std::span<const paper::PageHit> PageView::marksOf(int page) const {
    if (!marks_)
        return {};
    const auto [first, last] =
        std::equal_range(marks_->begin(), marks_->end(), paper::PageHit{page, {}},
                         [](const auto& one, const auto& other) { return one.page < other.page; });
    return {first, last};
}

void PageView::bringIntoSight(const paper::PageHit& hit) {
    const QRect page = placeOf(hit.page);
    const QRect place(page.topLeft() + (QPointF(hit.place.topLeft()) * scale()).toPoint(),
                      (QSizeF(hit.place.size()) * scale()).toSize());
    const QRect sight = viewport()->rect().adjusted(SightMargin, SightMargin, -SightMargin, -SightMargin);
    {
        const QScopedValueRollback going(isGoing_, true);
        if (place.top() < sight.top() || place.bottom() > sight.bottom())
            verticalScrollBar()->setValue(verticalScrollBar()->value() + place.center().y() -
                                          sight.center().y());
        if (place.left() < sight.left() || place.right() > sight.right())
            horizontalScrollBar()->setValue(horizontalScrollBar()->value() + place.center().x() -
                                            sight.center().x());
    }
    setPage(hit.page);
}

/// Until the user zooms: the largest level at which the width of a page is seen, but not larger than is good
/// to read.
void PageView::chooseFirstZoom() {
    const double most = qMin<double>(fitting(Fit::PageWidth), MostFirstZoom);
    const auto level = std::upper_bound(Levels.begin(), Levels.end(), most);
    const bool isReadable = level != Levels.begin() && *(level - 1) >= WholePercent;
    fit_ = isReadable ? Fit::None : Fit::PageWidth;
    if (isReadable)
        zoom_ = *(level - 1);
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const int page = page_;
    const bool isAtTop = placeOf(page).top() == Gap;
    const std::pair before(zoom_, fit_);
    {
        const QScopedValueRollback going(isGoing_, true);
        if (isFirstZoom_)
            chooseFirstZoom();
        if (fit_ != Fit::None)
            zoom_ = fitting(fit_);
        setLengths();
    }
    if (std::pair(zoom_, fit_) == before)
        return;
    if (isAtTop)
        goTo(page);
    viewport()->update();
    Q_EMIT zoomChanged();
}

void PageView::scrollContentsBy(int dx, int dy) {
    // What stays in sight is moved, so that only what comes into it is painted.
    viewport()->scroll(dx, dy);
    if (!isGoing_)
        setPage(pageAt(viewport()->height() / 3));
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    event->accept();
    const int turned = event->angleDelta().y();
    if (turned == 0)
        return;
    isFirstZoom_ = false;
    fit_ = Fit::None;
    zoomTo(levelBeside(turned > 0), event->position().toPoint());
}

void PageView::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    verticalScrollBar()->triggerAction(event->modifiers() & Qt::ShiftModifier
                                           ? QAbstractSlider::SliderPageStepSub
                                           : QAbstractSlider::SliderPageStepAdd);
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), colors::aroundPages(palette()));
    for (int page = qMax(0, pageAt(event->rect().top()) - 1); page < document_.pageCount(); ++page) {
        const QRect place = placeOf(page);
        if (place.top() > event->rect().bottom())
            break;
        if (event->region().intersects(place))
            paintPage(painter, page, place, event->rect());
    }
    paintedMarks_ = marksInSight();
}

void PageView::paintPage(QPainter& painter, int page, const QRect& place, const QRect& sight) {
    painter.fillRect(place.adjusted(-1, -1, 1, 1), Edge);
    painter.fillRect(place, Qt::white);
    // In the screen's own pixels: glyphs of a small font that are made larger afterwards come out fat.
    const double ratio = painter.deviceTransform().m11();
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    {
        // What is left it paints at its end.
        paper::PagePainter paint(painter, measure_, scale() * ratio, QPointF(place.topLeft()) * ratio);
        // A text reaches a little beyond its line.
        const auto toPage = [&](int y) { return static_cast<int>((y - place.top()) / scale()); };
        SightSink sink(paint, toPage(sight.top()) - Overhang, toPage(sight.bottom()) + Overhang);
        document_.emitPage(page, sink);
    }
    painter.restore();
    ++painted_;
    paintMarks(painter, page, place.topLeft());
}

void PageView::paintMarks(QPainter& painter, int page, QPoint corner) const {
    // The mark darkens the paper beneath the ink and leaves the ink as it is.
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    for (const paper::PageHit& hit : marksOf(page)) {
        const QRectF place = hit.place.adjusted(-MarkMargin, 0, MarkMargin, 0);
        painter.fillRect(QRectF(corner + place.topLeft() * scale(), place.size() * scale()),
                         &hit - marks_->data() == mark_ ? CurrentMark : Mark);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

} // namespace pontrel
