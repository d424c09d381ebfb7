#include "app/controls/LongTexts.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolTip>

namespace pontrel {

namespace {

constexpr int BoxMargin = 2;    ///< What a box leaves free at either side of its text.
constexpr int CursorWidth = 1;  ///< And behind it.
constexpr int LeastLetters = 2; ///< Of a label, and the mark behind them.

QStyleOptionFrame frameOf(const QLineEdit& box) {
    QStyleOptionFrame option;
    option.initFrom(&box);
    option.rect = box.contentsRect();
    option.lineWidth =
        box.hasFrame() ? box.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &box) : 0;
    option.state |= QStyle::State_Sunken;
    if (box.isReadOnly())
        option.state |= QStyle::State_ReadOnly;
    return option;
}

QRect textPlaceIn(const QLineEdit& box, const QStyleOptionFrame& frame) {
    return box.style()
        ->subElementRect(QStyle::SE_LineEditContents, &frame, &box)
        .marginsRemoved(box.textMargins())
        .adjusted(BoxMargin, 0, -BoxMargin, 0);
}

bool isCut(const QLineEdit& box) {
    const int needed = box.fontMetrics().horizontalAdvance(box.displayText()) + CursorWidth;
    return box.echoMode() == QLineEdit::Normal && needed > textPlaceIn(box, frameOf(box)).width();
}

void paintBeginning(QPainter& painter, const QWidget& widget, const QRect& place, Qt::Alignment alignment,
                    const QString& text) {
    const QString beginning = widget.fontMetrics().elidedText(text, Qt::ElideRight, place.width());
    painter.drawText(place, static_cast<int>(alignment) | Qt::TextSingleLine, beginning);
}

void paintBeginning(QLineEdit& box) {
    const QStyleOptionFrame frame = frameOf(box);
    QPainter painter(&box);
    box.style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, &box);
    painter.setPen(box.palette().color(QPalette::Text));
    paintBeginning(painter, box, textPlaceIn(box, frame), Qt::AlignLeft | Qt::AlignVCenter,
                   box.displayText());
}

void showWhole(QWidget& widget, const QEvent& event, const QString& text) {
    QString shown = text;
    if (!widget.toolTip().isEmpty())
        shown += u'\n' + widget.toolTip();
    // Made a rich text, it is taken as it stands, and breaks where it is wider than the screen.
    QToolTip::showText(static_cast<const QHelpEvent&>(event).globalPos(),
                       Qt::convertFromPlainText(shown, Qt::WhiteSpaceNormal), &widget);
}

} // namespace

void LongTexts::watch(QLineEdit& box) {
    box.installEventFilter(this);
}

bool LongTexts::eventFilter(QObject* watched, QEvent* event) {
    const bool isPaint = event->type() == QEvent::Paint;
    if (!isPaint && event->type() != QEvent::ToolTip)
        return false;
    auto& box = static_cast<QLineEdit&>(*watched);
    if (!isCut(box) || (isPaint && box.hasFocus()))
        return false;
    if (isPaint)
        paintBeginning(box);
    else
        showWhole(box, *event, box.displayText());
    return true;
}

LongLabel::LongLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QSize LongLabel::minimumSizeHint() const {
    const QSize whole = QLabel::minimumSizeHint();
    const int frame = width() - contentsRect().width();
    const int least = fontMetrics().horizontalAdvance(QString(LeastLetters, QChar(0x570b)) + QChar(0x2026));
    return {qMin(whole.width(), least + frame), whole.height()};
}

bool LongLabel::isCut() const {
    return fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

bool LongLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !isCut())
        return QLabel::event(event);
    showWhole(*this, *event, text());
    return true;
}

void LongLabel::paintEvent(QPaintEvent* event) {
    if (!isCut()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    painter.setPen(palette().color(foregroundRole()));
    paintBeginning(painter, *this, contentsRect(), alignment(), text());
}

} // namespace pontrel
