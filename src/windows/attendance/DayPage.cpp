#include "windows/attendance/DayPage.h"

#include "paper/NewFile.h"
#include "rules/ActionHost.h"
#include "rules/attendance/DaySentences.h"
#include "windows/attendance/DayPicture.h"

#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QTextLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr double UnitsOfInch = 96;
constexpr double PageMargin = 54; ///< A little over half an inch.
constexpr int TextSize = 12;
constexpr int TitleSize = 18;
constexpr int PdfResolution = 1200;

/// What is printed is dark on white, whatever the screen shows.
QPalette paperPalette() {
    QPalette palette(Qt::black, Qt::white, Qt::white, Qt::darkGray, Qt::gray, Qt::black, Qt::white);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Mid, QColor(0xb0, 0xb0, 0xb0));
    return palette;
}

QFont sized(int pixels, bool bold = false) {
    QFont font;
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

/// Goes down the pages.
class PageFlow {
  public:
    PageFlow(QPainter& painter, const QSizeF& page, const std::function<bool()>& newPage)
        : painter_(painter)
        , area_(QRectF({}, page).adjusted(PageMargin, PageMargin, -PageMargin, -PageMargin))
        , newPage_(newPage)
        , top_(area_.top()) {}

    [[nodiscard]] int pages() const { return pages_; }
    [[nodiscard]] bool isOver() const { return over_; }

    /// Room of that height, on the next page where this one has none.
    [[nodiscard]] QRectF take(double height) {
        if (top_ + height > area_.bottom() && top_ > area_.top()) {
            over_ = !newPage_();
            top_ = area_.top();
            pages_ += over_ ? 0 : 1;
        }
        const QRectF room(area_.left(), top_, area_.width(), height);
        top_ += height;
        return room;
    }

    void text(const QString& text, const QFont& font) {
        painter_.setFont(font);
        const QFontMetricsF metrics(font);
        const QRectF needed =
            metrics.boundingRect(QRectF(0, 0, area_.width(), 10000), Qt::TextWordWrap | Qt::AlignLeft, text);
        const QRectF room = take(needed.height() + 2);
        if (!over_)
            painter_.drawText(room, Qt::TextWordWrap | Qt::AlignLeft, text);
    }

  private:
    QPainter& painter_;
    QRectF area_;
    const std::function<bool()>& newPage_;
    double top_;
    int pages_ = 1;
    bool over_ = false;
};

void paintPicture(QPainter& painter, PageFlow& flow, const DayAccount& account) {
    const QFont font = sized(TextSize);
    painter.setFont(font);
    const std::vector<DayMark> marks = marksOf(account);
    const QRectF room = flow.take(DayScale::heightFor(QFontMetricsF(font)));
    const DayScale scale(room, QFontMetricsF(font), spanOf(marks));
    const QPalette palette = paperPalette();
    paintDay(painter, scale, account, palette);
    for (const DayMark& mark : marks)
        paintMark(painter, scale.rectOf(mark), mark, palette);
}

[[noreturn]] void failPrinter(const QString& technical) {
    throw RunTimeError(error::Printer, u"無法列印：印表機沒有回應，或已停止工作。"_s, technical);
}

} // namespace

int paintDayPages(QPainter& painter, const QSizeF& page, const DayAccount& account,
                  const std::function<bool()>& newPage) {
    PageFlow flow(painter, page, newPage);
    painter.setPen(Qt::black);
    flow.text(u"當日判讀　"_s + titleOf(account), sized(TitleSize, true));
    (void)flow.take(TextSize / 2.0);
    paintPicture(painter, flow, account);
    painter.setPen(Qt::black);
    for (const DaySection& section : sectionsOf(account)) {
        (void)flow.take(TextSize / 2.0);
        flow.text(section.heading, sized(TextSize, true));
        for (const QString& line : section.lines) {
            if (flow.isOver())
                return flow.pages();
            flow.text(line, sized(TextSize));
        }
    }
    return flow.pages();
}

void saveDayPdf(const DayAccount& account, const QString& path) {
    paper::NewFile target(path);
    QFile file(target.path());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        target.fail(file.errorString());
    {
        QPdfWriter writer(&file);
        writer.setTitle(u"當日判讀　"_s + titleOf(account));
        writer.setCreator(ProgramTitle);
        writer.setResolution(PdfResolution);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter painter(&writer);
        if (!painter.isActive())
            target.fail(file.errorString());
        const double dots = PdfResolution / UnitsOfInch;
        painter.scale(dots, dots);
        paintDayPages(painter, QSizeF(writer.width(), writer.height()) / dots, account,
                      [&writer] { return writer.newPage(); });
    }
    if (!file.flush() || file.error() != QFileDevice::NoError)
        target.fail(file.errorString());
    file.close();
    target.put();
}

void printDay(const DayAccount& account, QPrinter& printer) {
    QPainter painter;
    if (!painter.begin(&printer))
        failPrinter(printer.printerName());
    const double dots = printer.resolution() / UnitsOfInch;
    painter.scale(dots, dots);
    const QRectF page = printer.pageLayout().fullRect(QPageLayout::Inch);
    paintDayPages(painter, page.size() * UnitsOfInch, account, [&printer] { return printer.newPage(); });
    if (!painter.end() || printer.printerState() == QPrinter::Error)
        failPrinter(printer.printerName());
}

} // namespace pontrel
