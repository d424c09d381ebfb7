#include "app/help/HelpText.h"

#include "app/help/Manual.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>
#include <QWheelEvent>

namespace pontrel {

namespace {

constexpr int PageMargin = 16;
constexpr int CellPadding = 4;
constexpr int AboveHeading = 16;
constexpr int BelowHeading = 8;
constexpr int BelowParagraph = 8;
constexpr int BelowEntry = 3;      ///< Of a list.
constexpr double LineHeight = 125; ///< Percent.
constexpr int MostPictureWidth =
    640; ///< Of a larger window's picture, so that the lines beside need no scroll bar.

} // namespace

HelpText::HelpText(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    setOpenExternalLinks(false);
    setUndoRedoEnabled(false);
}

void HelpText::showChapter(const QString& markdown) {
    setMarkdown(markdown);
    document()->setDocumentMargin(PageMargin);
    layOutBlocks();
    layOutTables();
    moveCursor(QTextCursor::Start);
}

void HelpText::layOutBlocks() {
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        QTextBlockFormat format = block.blockFormat();
        const bool isCell = cursor.currentTable();
        if (format.headingLevel() > 0) {
            format.setTopMargin(block.position() == 0 ? 0 : AboveHeading);
            format.setBottomMargin(BelowHeading);
        } else if (!isCell) {
            format.setBottomMargin(block.textList() ? BelowEntry : BelowParagraph);
            format.setLineHeight(LineHeight, QTextBlockFormat::ProportionalHeight);
        }
        cursor.setBlockFormat(format);
    }
}

void HelpText::layOutTables() {
    const auto frames = document()->rootFrame()->childFrames();
    for (QTextFrame* frame : frames) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.setBorderCollapse(true);
        format.setBorder(1);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(palette().color(QPalette::Mid));
        format.setCellPadding(CellPadding);
        format.setTopMargin(BelowHeading);
        format.setBottomMargin(BelowParagraph);
        table->setFormat(format);
    }
}

QVariant HelpText::loadResource(int type, const QUrl& name) {
    if (type != QTextDocument::ImageResource || !name.isRelative())
        return {};
    QImage picture(Manual::ProgramFolder + u'/' + name.path());
    if (picture.width() > MostPictureWidth)
        picture.setDevicePixelRatio(static_cast<double>(picture.width()) / MostPictureWidth);
    return picture;
}

void HelpText::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    if (event->angleDelta().y() != 0)
        Q_EMIT zoomStep(event->angleDelta().y() > 0);
    event->accept();
}

int HelpText::positionOf(const QString& heading) const {
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && block.text() == heading)
            return block.position();
    }
    return -1;
}

void HelpText::bringToTop(int position) {
    // The height of the whole text is known only once all of it is laid out.
    (void)document()->documentLayout()->documentSize();
    QTextCursor cursor = textCursor();
    cursor.setPosition(position);
    setTextCursor(cursor);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(cursor).top());
}

void HelpText::scrollBackTo(int scrolled) {
    bringToTop(0);
    verticalScrollBar()->setValue(scrolled);
    QTextCursor cursor = textCursor();
    cursor.setPosition(positionAtTop());
    setTextCursor(cursor);
}

int HelpText::positionAtTop() const {
    return cursorForPosition(viewport()->rect().topLeft() + QPoint(1, 1)).position();
}

QString HelpText::headingOfCursor() const {
    QTextBlock block = document()->findBlock(textCursor().selectionStart());
    while (block.isValid() && block.blockFormat().headingLevel() == 0)
        block = block.previous();
    return block.isValid() ? block.text() : QString();
}

} // namespace pontrel
