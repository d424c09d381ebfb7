#include "app/controls/LongTexts.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QToolTip>

#include <algorithm>

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

/// Shows the text, and below it what the tooltip says otherwise.
bool showWhole(QWidget& widget, const QEvent& event, const QString& text, const QString& toolTip) {
    QString shown = text;
    if (!toolTip.isEmpty() && toolTip != text)
        shown += u'\n' + toolTip;
    // Made a rich text, it is taken as it stands, and breaks where it is wider than the screen.
    QToolTip::showText(static_cast<const QHelpEvent&>(event).globalPos(),
                       Qt::convertFromPlainText(shown, Qt::WhiteSpaceNormal), &widget);
    return true;
}

bool serveBox(QLineEdit& box, const QEvent& event) {
    const bool isPaint = event.type() == QEvent::Paint;
    if (!isCut(box) || (isPaint && box.hasFocus()))
        return false;
    if (!isPaint)
        return showWhole(box, event, box.displayText(), box.toolTip());
    paintBeginning(box);
    return true;
}

/// One that can be typed into has a box for it.
bool isCut(const QComboBox& list) {
    if (list.isEditable())
        return false;
    QStyleOptionComboBox option;
    option.initFrom(&list);
    option.editable = false;
    const QRect place =
        list.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &list);
    return list.fontMetrics().horizontalAdvance(list.currentText()) > place.width();
}

bool serveEntry(const QAbstractItemView& view, const QEvent& event) {
    const QModelIndex entry = view.indexAt(static_cast<const QHelpEvent&>(event).pos());
    const QString text = entry.data().toString();
    if (text.isEmpty())
        return false;
    const QRect place = view.visualRect(entry) & view.viewport()->rect();
    const QString own = entry.data(Qt::ToolTipRole).toString();
    // The hint of an entry in a list that drops down is that of the list.
    const int needed =
        std::max(view.sizeHintForIndex(entry).width(), view.fontMetrics().horizontalAdvance(text));
    return needed > place.width() &&
           showWhole(*view.viewport(), event, text, own.isEmpty() ? view.toolTip() : own);
}

} // namespace

void LongTexts::watch(QLineEdit& box) {
    box.installEventFilter(this);
}

void LongTexts::watch(QComboBox& list) {
    list.installEventFilter(this);
}

void LongTexts::watch(QAbstractItemView& view) {
    view.viewport()->installEventFilter(this);
}

bool LongTexts::eventFilter(QObject* watched, QEvent* event) {
    const bool isPaint = event->type() == QEvent::Paint;
    if (!isPaint && event->type() != QEvent::ToolTip)
        return false;
    if (auto* box = qobject_cast<QLineEdit*>(watched))
        return serveBox(*box, *event);
    if (isPaint)
        return false;
    if (auto* list = qobject_cast<QComboBox*>(watched))
        return isCut(*list) && showWhole(*list, *event, list->currentText(), list->toolTip());
    auto* viewport = static_cast<QWidget*>(watched);
    const auto* view = qobject_cast<const QAbstractItemView*>(viewport->parentWidget());
    return view && serveEntry(*view, *event);
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
    return showWhole(*this, *event, text(), toolTip());
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
