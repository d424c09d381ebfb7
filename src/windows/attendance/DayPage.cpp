#include "windows/attendance/DayPage.h"

#include "app/Printers.h"
#include "paper/NewFile.h"
#include "paper/PdfMaps.h"
#include "rules/ActionHost.h"
#include "rules/attendance/DaySentences.h"
#include "windows/attendance/DayPicture.h"

#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QRawFont>

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
    const DayScale scale(room, QFontMetricsF(font), spanOf(marks), account);
    const QPalette palette = paperPalette();
    paintDay(painter, scale, account, palette);
    for (const DayMark& mark : marks)
        paintMark(painter, scale.rectOf(mark), mark, palette);
}

/// Takes in which glyphs a painter draws, in their order, and draws nothing.
class TextListener : public QPaintEngine {
  public:
    explicit TextListener(paper::DrawnFaces& faces) : QPaintEngine(AllFeatures), faces_(faces) {}

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    void drawPixmap(const QRectF& /*at*/, const QPixmap& /*picture*/, const QRectF& /*of*/) override {}
    void drawPath(const QPainterPath& /*path*/) override {}
    void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
    [[nodiscard]] Type type() const override { return User; }

    void drawTextItem(const QPointF& /*at*/, const QTextItem& item) override {
        const QRawFont font = QRawFont::fromFont(item.font());
        paper::DrawnGlyphs& drawn = faces_[font.familyName() + u'/' + font.styleName()];
        drawn.font = font;
        const QList<uint> characters = item.text().toUcs4();
        for (const uint character : characters) {
            const char32_t code = character;
            const QList<quint32> glyphs = font.glyphIndexesForString(QString::fromUcs4(&code, 1));
            if (glyphs.size() == 1 && drawn.places.try_emplace(glyphs.first(), drawn.order.size()).second)
                drawn.order.emplace_back(glyphs.first(), code);
        }
    }

  private:
    paper::DrawnFaces& faces_;
};

/// A sheet of A4 for it.
class ListeningDevice : public QPaintDevice {
  public:
    explicit ListeningDevice(paper::DrawnFaces& faces) : engine_(faces) {}

    [[nodiscard]] QPaintEngine* paintEngine() const override { return &engine_; }

  protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
        case PdmWidth:
            return 794;
        case PdmHeight:
            return 1123;
        case PdmWidthMM:
            return 210;
        case PdmHeightMM:
            return 297;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return static_cast<int>(UnitsOfInch);
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmDevicePixelRatio:
            return 1;
        default:
            return 32; // bits of a pixel
        }
    }

  private:
    mutable TextListener engine_;
};

paper::DrawnFaces drawnFaces(const DayAccount& account, const QSizeF& page) {
    paper::DrawnFaces faces;
    ListeningDevice device(faces);
    QPainter painter(&device);
    paintDayPages(painter, page, account, [] { return true; });
    return faces;
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
    flow.text(marksLegend(), sized(TextSize));
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

void saveDayPdf(const DayAccount& account, const QString& path, const QPageSize& paper,
                QPageLayout::Orientation orientation) {
    paper::NewFile target(path);
    QFile file(target.path());
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate))
        target.fail(file.errorString());
    paper::DrawnFaces drawn;
    {
        QPdfWriter writer(&file);
        writer.setTitle(u"當日判讀　"_s + titleOf(account));
        writer.setCreator(ProgramTitle);
        writer.setResolution(PdfResolution);
        writer.setPageLayout(QPageLayout(paper, orientation, {}));
        QPainter painter(&writer);
        if (!painter.isActive())
            target.fail(file.errorString());
        const double dots = PdfResolution / UnitsOfInch;
        painter.scale(dots, dots);
        const QSizeF page = QSizeF(writer.width(), writer.height()) / dots;
        bool isWhole = true;
        paintDayPages(painter, page, account, [&] { return isWhole = writer.newPage(); });
        if (!isWhole)
            target.fail(file.errorString());
        drawn = drawnFaces(account, page);
    }
    // So that the text can be searched and copied as it was written.
    if (!file.flush() || file.error() != QFileDevice::NoError || !paper::putMapsRight(file, drawn))
        target.fail(file.errorString());
    file.close();
    target.put();
}

void printDay(const DayAccount& account, QPrinter& printer) {
    requireQueue(printer);
    QPainter painter;
    if (!painter.begin(&printer))
        failPrinter(printer);
    const double dots = printer.resolution() / UnitsOfInch;
    painter.scale(dots, dots);
    const QRectF page = printer.pageLayout().fullRect(QPageLayout::Inch);
    bool isWhole = true;
    paintDayPages(painter, page.size() * UnitsOfInch, account, [&] { return isWhole = printer.newPage(); });
    if (!isWhole)
        failPrinter(printer);
    endPrinting(painter, printer);
}

} // namespace pontrel
