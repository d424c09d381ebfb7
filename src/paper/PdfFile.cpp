#include "paper/PdfFile.h"

#include "paper/PagePainter.h"
#include "paper/PdfMaps.h"

#include <QPageSize>
#include <QPdfWriter>

#include <numeric>

namespace pontrel::paper {

namespace {

constexpr int Resolution = 1200;
constexpr double UnitsOfInch = 2540;

void describe(QPdfWriter& writer, const ReportDocument& document) {
    const Template& layout = document.layout();
    writer.setTitle(document.title());
    writer.setCreator(QStringLiteral("Pontrel"));
    writer.setResolution(Resolution);
    // Exactly the size that is given: none of the standard ones in its place.
    writer.setPageSize(QPageSize(QSizeF(layout.paperWidth / 100.0, layout.paperHeight / 100.0),
                                 QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
}

/// False where the progress stops it.
bool paintPages(const ReportDocument& document, const std::vector<int>& pages, QFile& file,
                const NewFile& target, DrawnFaces& drawn, const Progress& progress) {
    QPdfWriter writer(&file);
    describe(writer, document);
    const GlyphMeasure measure(document.layout());
    QPainter painter(&writer);
    if (!painter.isActive())
        target.fail(file);
    for (std::size_t done = 0; done < pages.size(); ++done) {
        if (done > 0)
            writer.newPage();
        PagePainter sink(painter, measure, Resolution / UnitsOfInch, {}, &drawn);
        document.emitPage(pages[done], sink);
        if (file.error() != QFileDevice::NoError)
            target.fail(file);
        if (progress && !progress(done + 1, pages.size()))
            return false;
    }
    return true;
}

} // namespace

bool savePdf(const ReportDocument& document, const std::vector<int>& pages, const QString& path,
             const Progress& progress) {
    NewFile target(path);
    QFile file(target.path());
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate))
        target.fail(file);
    DrawnFaces drawn;
    if (!paintPages(document, pages, file, target, drawn, progress))
        return false;
    // A disk that is full can show only here, or by an end that is missing.
    if (!file.flush() || file.error() != QFileDevice::NoError || !putMapsRight(file, drawn))
        target.fail(file);
    file.close();
    target.put();
    return true;
}

bool savePdf(const ReportDocument& document, const QString& path, const Progress& progress) {
    std::vector<int> pages(static_cast<std::size_t>(document.pageCount()));
    std::iota(pages.begin(), pages.end(), 0);
    return savePdf(document, pages, path, progress);
}

} // namespace pontrel::paper
