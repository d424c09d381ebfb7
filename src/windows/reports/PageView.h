#pragma once

#include "paper/GlyphMeasure.h"
#include "paper/ReportDocument.h"

#include <QAbstractScrollArea>

namespace pontrel {

/// The pages of a report below each other. Only those in sight are painted, and no pictures are kept.
class PageView : public QAbstractScrollArea {
    Q_OBJECT
  public:
    /// The document must outlive the view.
    PageView(const paper::ReportDocument& document, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    [[nodiscard]] QSize pageSize() const;        ///< In pixels.
    [[nodiscard]] QRect placeOf(int page) const; ///< In the viewport.

    const paper::ReportDocument& document_;
    paper::GlyphMeasure measure_;
    double zoom_ = 1;
};

} // namespace pontrel
