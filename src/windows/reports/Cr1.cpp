#include "windows/reports/Cr1.h"

#include "paper/ReportRun.h"
#include "store/Clock.h"
#include "windows/reports/ReportPreview.h"

namespace pontrel {

namespace {

constexpr int RunAction = 1;
constexpr int Maximised = 2;

} // namespace

Cr1::Cr1(QObject* parent) : QObject(parent) {}

void Cr1::setAction(int action) {
    if (action != RunAction)
        return;
    paper::ReportRun run{reportFileName, dataFile_, selectionFormula, {}, clock::today(), period};
    for (const QString& text : std::as_const(formulas_))
        paper::setNamedValue(run.names, text);
    ReportPreview::open(paper::runReport(run), {showPrint, showExport}, windowState == Maximised);
}

} // namespace pontrel
