#include "windows/attendance/DayPicture.h"

#include "app/ControlNames.h"
#include "app/controls/Colors.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MinutesOfHour = 60;
constexpr double Gap = 6;         ///< Between names, lanes and outcomes, in pixels.
constexpr double LanePadding = 4; ///< What a lane is higher than its text.
constexpr double LeastSpan = 4;   ///< Of minutes, which are higher than the punch beside them.
constexpr double PunchSize = 11;

using colors::Hue;

/// One mark on the screen.
class MarkView : public QWidget {
  public:
    MarkView(QWidget* parent, const DayMark& mark, int index) : QWidget(parent), mark_(mark) {
        setObjectName(indexed(u"DayMark"_s, index));
        setAccessibleName(mark.text);
        setToolTip(mark.text);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        paintMark(painter, rect(), mark_, palette());
    }

  private:
    DayMark mark_;
};

void paintBar(QPainter& painter, const QRectF& place, const QPalette& palette, Hue hue,
              Qt::BrushStyle hatching) {
    painter.fillRect(place, colors::ground(palette, hue));
    if (hatching != Qt::NoBrush)
        painter.fillRect(place, QBrush(colors::ink(palette, hue), hatching));
    painter.setPen(QPen(colors::ink(palette, hue), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place.adjusted(0.5, 0.5, -0.5, -0.5));
}

void paintLabel(QPainter& painter, const QRectF& place, const QString& label, const QPalette& palette,
                const QColor& ground) {
    const QFontMetricsF font = painter.fontMetrics();
    const double width = font.horizontalAdvance(label) + 4;
    if (label.isEmpty() || width > place.width())
        return;
    // A clear ground beneath the letters, over the hatching.
    QRectF room(0, 0, width, std::min(place.height() - 2, font.height()));
    room.moveCenter(place.center());
    painter.fillRect(room, ground);
    painter.setPen(palette.color(QPalette::Text));
    painter.drawText(room, Qt::AlignCenter, label);
}

/// At least that of a usual late day, so that the picture stays as it is from day to day.
double widestOutcome(const DayAccount& account, const QFontMetricsF& font) {
    double width = font.horizontalAdvance(u"00:00，遲到 00 分，異常"_s);
    for (int lane = 0; lane < DayLanes; ++lane)
        width = std::max(width, font.horizontalAdvance(laneOutcome(account, lane)));
    return std::ceil(width);
}

void paintPunch(QPainter& painter, const QRectF& place, bool taken, const QPalette& palette) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette.color(QPalette::Text), 1.5));
    painter.setBrush(taken ? palette.brush(QPalette::Text) : palette.brush(QPalette::Base));
    painter.drawEllipse(place.adjusted(1.5, 1.5, -1.5, -1.5));
}

} // namespace

DayScale::DayScale(const QRectF& area, const QFontMetricsF& font, const DaySpan& span,
                   const DayAccount& account)
    : area_(area)
    , span_(span)
    , lineHeight_(font.height())
    , laneHeight_(font.height() + LanePadding)
    , hourWidth_(font.horizontalAdvance(u"00"_s) + Gap)
    , nameWidth_(font.horizontalAdvance(positionName(1)) + Gap)
    , outcomeWidth_(widestOutcome(account, font) + Gap) {}

double DayScale::heightFor(const QFontMetricsF& font) {
    return font.height() + DayLanes * (font.height() + LanePadding) + 2;
}

double DayScale::x(int minute) const {
    const double left = area_.left() + nameWidth_ + hourWidth_ / 2;
    const double right = area_.right() - outcomeWidth_ - hourWidth_ / 2;
    return left + (right - left) * (minute - span_.from) / (span_.to - span_.from);
}

QRectF DayScale::lane(int lane) const {
    return {x(span_.from), area_.top() + lineHeight_ + lane * laneHeight_, x(span_.to) - x(span_.from),
            laneHeight_};
}

QRectF DayScale::laneName(int lane) const {
    const QRectF row = DayScale::lane(lane);
    return {area_.left(), row.top(), nameWidth_, row.height()};
}

QRectF DayScale::outcome(int lane) const {
    const QRectF row = DayScale::lane(lane);
    return {area_.right() - outcomeWidth_ + Gap, row.top(), outcomeWidth_ - Gap, row.height()};
}

QRectF DayScale::hour(int minute) const {
    return {x(minute) - hourWidth_ / 2, area_.top(), hourWidth_, lineHeight_};
}

int DayScale::hourStep() const {
    const double hour = x(span_.from + MinutesOfHour) - x(span_.from);
    for (const int step : {1, 2, 3, 4, 6})
        if (hour * step >= hourWidth_)
            return step;
    return 12;
}

QRectF DayScale::rectOf(const DayMark& mark) const {
    const QRectF row = lane(mark.lane);
    QRectF place(x(mark.from), row.top(), x(mark.to) - x(mark.from), row.height());
    using Kind = DayMark::Kind;
    switch (mark.kind) {
    case Kind::Break:
        place.setBottom(lane(Positions - 1).bottom());
        return place;
    case Kind::Standard:
        return {place.left() - 3, row.top() + 1, 6, row.height() - 2};
    case Kind::Taken:
    case Kind::NotTaken:
        place.setSize({PunchSize, PunchSize});
        place.moveCenter({x(mark.from), row.center().y()});
        return place;
    case Kind::Late:
        place.setLeft(std::min(place.left(), place.right() - LeastSpan));
        return place.adjusted(0, 1, 0, -1);
    case Kind::Early:
        place.setRight(std::max(place.right(), place.left() + LeastSpan));
        return place.adjusted(0, 1, 0, -1);
    default:
        place.setWidth(std::max(place.width(), 3.0));
        return place.adjusted(0, 3, 0, -3);
    }
}

void paintDay(QPainter& painter, const DayScale& scale, const DayAccount& account, const QPalette& palette) {
    const QColor text = palette.color(QPalette::Text);
    const QColor line = palette.color(QPalette::Mid);
    const int step = scale.hourStep() * MinutesOfHour;
    for (int minute = scale.span().from; minute <= scale.span().to; minute += step) {
        painter.setPen(line);
        painter.drawLine(QPointF(scale.x(minute), scale.lane(0).top()),
                         QPointF(scale.x(minute), scale.lane(DayLanes - 1).bottom()));
        painter.setPen(text);
        const int hour = (minute + 24 * MinutesOfHour) / MinutesOfHour % 24;
        const bool isEnd = minute == 24 * MinutesOfHour;
        painter.drawText(scale.hour(minute), Qt::AlignCenter, isEnd ? u"24"_s : QString::number(hour));
    }
    for (int lane = 0; lane < DayLanes; ++lane) {
        painter.setPen(line);
        painter.drawLine(scale.laneName(lane).topLeft(),
                         QPointF(scale.outcome(lane).right(), scale.lane(lane).top()));
        painter.setPen(text);
        painter.drawText(scale.laneName(lane), Qt::AlignVCenter | Qt::AlignLeft, laneName(lane));
        painter.drawText(scale.outcome(lane), Qt::AlignVCenter | Qt::AlignLeft, laneOutcome(account, lane));
    }
}

void paintMark(QPainter& painter, const QRectF& place, const DayMark& mark, const QPalette& palette) {
    painter.save();
    using Kind = DayMark::Kind;
    switch (mark.kind) {
    case Kind::Break:
        // A tone beneath the lines, which are those of the hours otherwise.
        painter.setOpacity(0.35);
        painter.fillRect(place, palette.color(QPalette::Mid));
        painter.setOpacity(1);
        painter.fillRect(place, QBrush(palette.color(QPalette::Mid), Qt::VerPattern));
        // In the first row, where no window of another position covers it.
        paintLabel(painter, QRectF(place.topLeft(), QSizeF(place.width(), place.height() / Positions)),
                   mark.label, palette, palette.color(QPalette::Base));
        break;
    case Kind::Window:
        paintBar(painter, place, palette, Hue::Green, Qt::NoBrush);
        break;
    case Kind::Leave:
        paintBar(painter, place, palette, Hue::Blue, Qt::Dense6Pattern);
        paintLabel(painter, place, mark.label, palette, colors::ground(palette, Hue::Blue));
        break;
    case Kind::Late:
        paintBar(painter, place, palette, Hue::Red, Qt::BDiagPattern);
        break;
    case Kind::Early:
        paintBar(painter, place, palette, Hue::Orange, Qt::DiagCrossPattern);
        break;
    case Kind::Standard:
        painter.fillRect(QRectF(place.center().x() - 1, place.top(), 2, place.height()),
                         palette.color(QPalette::Text));
        break;
    default:
        paintPunch(painter, place, mark.kind == Kind::Taken, palette);
        break;
    }
    painter.restore();
}

DayPicture::DayPicture(QWidget* parent) : QWidget(parent) {
    setObjectName(u"DayPicture"_s);
    setAccessibleName(u"當日圖示"_s);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void DayPicture::setAccount(const DayAccount& account) {
    account_ = account;
    marks_ = marksOf(account_);
    for (QWidget* view : views_)
        delete view;
    views_.clear();
    QStringList told;
    for (const DayMark& mark : marks_) {
        views_.push_back(new MarkView(this, mark, static_cast<int>(views_.size())));
        views_.back()->show();
        told += mark.text;
    }
    setAccessibleDescription(told.join(u'；'));
    place();
    update();
}

QSize DayPicture::minimumSizeHint() const {
    return {560, sizeHint().height()};
}

QSize DayPicture::sizeHint() const {
    return {640, static_cast<int>(std::ceil(DayScale::heightFor(QFontMetricsF(font()))))};
}

DayScale DayPicture::scale() const {
    return {QRectF(rect()).adjusted(Gap, 0, -Gap, 0), QFontMetricsF(font()), spanOf(marks_), account_};
}

void DayPicture::place() {
    const DayScale where = scale();
    for (std::size_t mark = 0; mark < marks_.size(); ++mark)
        views_[mark]->setGeometry(where.rectOf(marks_[mark]).toAlignedRect());
}

void DayPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintDay(painter, scale(), account_, palette());
}

void DayPicture::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void DayPicture::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        place();
    }
}

} // namespace pontrel
