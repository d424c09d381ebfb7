#include "paper/ReportRun.h"

#include "paper/TemplateReader.h"

namespace pontrel::paper {

namespace {

constexpr QChar Apostrophe = u'\''; // no statement

} // namespace

std::shared_ptr<const ReportDocument> runReport(const ReportRun& run) {
    const Template layout = readTemplate(run.templatePath);
    Selection selection = translateSelection(run.formula);
    if (!selection.first.isValid() && !selection.last.isValid()) {
        selection.first = run.period[0];
        selection.last = run.period[1];
    }
    return ReportDocument::make(run.dataFile, layout, selection, run.names, run.today,
                                std::make_shared<GlyphMeasure>(layout));
}

void setNamedValue(NamedValues& names, const QString& text) {
    const QString name = text.section(u'=', 0, 0).trimmed();
    if (name.isEmpty())
        return;
    const qsizetype first = text.indexOf(Apostrophe);
    const qsizetype last = text.lastIndexOf(Apostrophe);
    names.insert(name, first < last ? text.mid(first + 1, last - first - 1) : QString());
}

} // namespace pontrel::paper
