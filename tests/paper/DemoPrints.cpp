#include "paper/DemoPrints.h"

#include "demo/Demo.h"
#include "paper/GlyphMeasure.h"
#include "paper/TemplateReader.h"
#include "rules/attendance/DailyCalculation.h"
#include "rules/reports/Lists.h"
#include "rules/reports/Selection.h"
#include "rules/reports/Staging.h"
#include "support/FakeHost.h"

namespace pontrel::test {

using namespace paper;
using namespace Qt::StringLiterals;

DemoPrints::DemoPrints() {
    createDemo(store_.database(), store_.folder());
    FakeHost host;
    DailyCalculation calculation(store_.database(), host);
    for (const DemoPunchFile& file : demoPunchFiles()) {
        host.punchFile = store_.punchFolder() + u'/' + file.name;
        calculation.ReadPunchFile();
        if (!calculation.finished())
            qFatal("a day of the example organisation is not read");
    }
}

std::shared_ptr<const ReportDocument> DemoPrints::print(const DemoPrint& print) {
    const Report& report = *findReport(print.code);
    ReportChoice choice = defaultChoice(report.tab, report.option);
    choice.dates = {print.first, print.last, print.first, print.last};
    for (const auto& [combo, text] : print.combos)
        choice.combos[combo] = text;
    choice.list = readList(store_.database(), report.tab);
    if (print.first.isValid() && report.tab != ReportTab::Basic)
        choice.masks = {u"99"_s + print.first.toString(u"/MM/dd"),
                        u"99"_s + choice.dates[1].toString(u"/MM/dd")};
    const ReportCall call = reportCall(choice);
    NamedValues names{{u"Title"_s, u"範例實業股份有限公司"_s}};
    std::vector<NamedValue> values = periodValues(choice);
    for (const NamedValue& value : prepareReport(store_.database(), choice, QDate(2010, 4, 1)))
        values.push_back(value);
    for (const NamedValue& value : values)
        names.insert(value.text.section(u'=', 0, 0), value.text.section(u'\'', 1, 1));
    const Template layout = readTemplate(QStringLiteral(PONTREL_REPORTS "/") + call.code + u".rpt"_s);
    return ReportDocument::make(store_.path(), layout,
                                translateSelection(call.formula.value_or(SelectionFormula())), names,
                                QDate(2010, 4, 1), std::make_shared<GlyphMeasure>(layout));
}

} // namespace pontrel::test
