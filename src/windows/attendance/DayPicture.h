#pragma once

#include "windows/attendance/DayMarks.h"

#include <QFontMetricsF>
#include <QRectF>
#include <QWidget>

#include <vector>

class QPainter;

namespace pontrel {

/// Where the parts of a picture of a day lie in an area, by the font in which it is labelled. The hours leave
/// the outcomes of that day the room that they take.
class DayScale {
  public:
    DayScale(const QRectF& area, const QFontMetricsF& font, const DaySpan& span, const DayAccount& account);

    /// What a picture takes of the height.
    [[nodiscard]] static double heightFor(const QFontMetricsF& font);

    [[nodiscard]] double x(int minute) const;
    [[nodiscard]] QRectF lane(int lane) const;     ///< From the left end of the day to its right end.
    [[nodiscard]] QRectF laneName(int lane) const; ///< Beside it at the left ...
    [[nodiscard]] QRectF outcome(int lane) const;  ///< ... and at the right.
    [[nodiscard]] QRectF hour(int minute) const;   ///< Of the number above the lanes.
    [[nodiscard]] QRectF rectOf(const DayMark& mark) const;
    [[nodiscard]] const DaySpan& span() const { return span_; }
    /// Hours between two numbers that have room beside each other.
    [[nodiscard]] int hourStep() const;

  private:
    QRectF area_;
    DaySpan span_;
    double lineHeight_;
    double laneHeight_;
    double hourWidth_;
    double nameWidth_;
    double outcomeWidth_;
};

/// Paints the picture of a day without its marks, and a mark at its place.
void paintDay(QPainter& painter, const DayScale& scale, const DayAccount& account, const QPalette& palette);
void paintMark(QPainter& painter, const QRectF& place, const DayMark& mark, const QPalette& palette);

/// The picture of an employee's day: when punches counted, when they came, and what was made of them. Each
/// mark is a widget of its own, with its text as tooltip and for assistive technology.
class DayPicture : public QWidget {
    Q_OBJECT
  public:
    explicit DayPicture(QWidget* parent);

    void setAccount(const DayAccount& account);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    [[nodiscard]] DayScale scale() const;
    void place();

    DayAccount account_;
    std::vector<DayMark> marks_;
    std::vector<QWidget*> views_; ///< Of the marks, in their order.
};

} // namespace pontrel
