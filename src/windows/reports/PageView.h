#pragma once

#include "paper/GlyphMeasure.h"
#include "paper/PageSearch.h"

#include <QAbstractScrollArea>

#include <array>
#include <span>

namespace pontrel {

/// The pages of a report below each other. Only those in sight are painted, and no pictures are kept.
class PageView : public QAbstractScrollArea {
    Q_OBJECT
  public:
    enum class Fit { None, PageWidth, WholePage };

    static constexpr std::array Levels{25,  50,  75,  100, 125,
                                       150, 200, 300, 400}; ///< Percent to zoom by steps.

    /// The document must outlive the view.
    PageView(const paper::ReportDocument& document, QWidget* parent);

    /// The page that is spoken of, from 0: the one gone to, or after scrolling the one at the upper third of
    /// the view.
    [[nodiscard]] int page() const { return page_; }
    /// Shows the page from its top; one that is not there is the first or the last.
    void goTo(int page);

    [[nodiscard]] double zoom() const { return zoom_; } ///< In percent; the paper's own size is 100.
    [[nodiscard]] Fit fit() const { return fit_; }
    /// From 25 to 400; what lies in the middle stays there.
    void setZoom(double percent);
    /// Follows the size of the view.
    void setFit(Fit fit);
    /// To the next of the levels.
    void zoomByStep(bool in);

    /// Marks the places, which are in the order of the pages and must outlive their marking, one of them more
    /// than the others; -1 for none.
    void setMarks(const std::vector<paper::PageHit>& hits, int current);
    /// Scrolls no further than is needed to see the place.
    void bringIntoSight(const paper::PageHit& hit);

    /// How often a page has been painted.
    [[nodiscard]] int painted() const { return painted_; }

  Q_SIGNALS:
    void pageChanged();
    void zoomChanged(); ///< Zoom or fit.

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    [[nodiscard]] double scale() const; ///< Pixels of 1/100 mm.
    [[nodiscard]] QSize pageSize() const;
    [[nodiscard]] QRect placeOf(int page) const; ///< In the viewport.
    [[nodiscard]] int pageAt(int y) const;       ///< Of the viewport.
    [[nodiscard]] double fitting(Fit fit) const;
    [[nodiscard]] int levelBeside(bool larger) const;
    void setLengths();
    void zoomTo(double percent, QPoint kept);
    void setPage(int page);
    void chooseFirstZoom();
    void paintPage(QPainter& painter, int page, const QRect& place, const QRect& sight);
    [[nodiscard]] std::span<const paper::PageHit> marksOf(int page) const;
    [[nodiscard]] std::size_t marksInSight() const;
    void paintMarks(QPainter& painter, int page, QPoint corner) const;

    const paper::ReportDocument& document_;
    paper::GlyphMeasure measure_;
    double zoom_ = 100;
    Fit fit_ = Fit::None;
    int page_ = 0;
    bool isGoing_ = false;    ///< The page is set by what moves the bars.
    bool isFirstZoom_ = true; ///< Nobody has zoomed yet.
    const std::vector<paper::PageHit>* marks_ = nullptr;
    int mark_ = -1;
    std::size_t paintedMarks_ = 0; ///< In sight when the view was last painted.
    int painted_ = 0;
};

} // namespace pontrel
