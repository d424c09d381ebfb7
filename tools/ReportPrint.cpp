#include "ReportPrint.h"

#include "paper/CsvFile.h"
#include "paper/PdfFile.h"
#include "paper/ReportRun.h"
#include "paper/SheetFile.h"
#include "rules/reports/Lists.h"
#include "rules/reports/Staging.h"
#include "store/Clock.h"
#include "store/StorePath.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <array>

namespace pontrel::tools {

using namespace Qt::StringLiterals;

namespace {

/// An option for what the boxes of a range ask for.
struct RangeOption {
    RangeKind kind;
    QString name;
    QString help;
    QString value;
};

const std::array<RangeOption, 6>& rangeOptions() {
    static const std::array<RangeOption, 6> all{{
        {RangeKind::Employee, u"employee"_s, u"Employees, by their codes."_s, u"CODE[..CODE]"_s},
        {RangeKind::Unit, u"unit"_s, u"Units."_s, u"CODE[..CODE]"_s},
        {RangeKind::WorkType, u"work-type"_s, u"Employment types."_s, u"CODE[..CODE]"_s},
        {RangeKind::ShiftClass, u"class"_s, u"Shift classes (A08)."_s, u"CODE[..CODE]"_s},
        {RangeKind::Month, u"month"_s, u"Month of birth (A09); January where it is not given."_s, u"N"_s},
        {RangeKind::WriteOffCount, u"count"_s,
         u"Least number of write-offs (E03); 1 where it is not given."_s, u"N"_s},
    }};
    return all;
}

const QStringList PunchMarks{u"day"_s, u"morning-in"_s, u"morning-out"_s, u"afternoon-in"_s,
                             u"afternoon-out"_s};

[[noreturn]] void refuse(const Report& report, const QString& what) {
    throw UsageFault{report.code.toUpper() + u' ' + what};
}

/// Where the report's dates stand among those of its tab, and how many it asks for.
struct AskedDates {
    std::size_t first = 0;
    int count = 0;
};

AskedDates askedDates(const Report& report) {
    const ReportFields& fields = report.fields;
    const int first = report.tab == ReportTab::Basic && fields.mask(2) && !fields.mask(0) ? 2 : 0;
    return {static_cast<std::size_t>(first), (fields.mask(first) ? 1 : 0) + (fields.mask(first + 1) ? 1 : 0)};
}

QDate dateOf(const QCommandLineParser& parser, const QString& name) {
    const QString text = parser.value(name);
    for (const QString& format : {u"yyyy-M-d"_s, u"yyyy/M/d"_s}) {
        if (const QDate date = QDate::fromString(text, format); date.isValid())
            return date;
    }
    throw UsageFault{u"--%1 %2 is no date; write it as 2026-01-31."_s.arg(name, text)};
}

void setDates(ReportChoice& choice, const Report& report, const QCommandLineParser& parser) {
    const AskedDates asked = askedDates(report);
    const std::array names{u"from"_s, u"to"_s};
    for (int index = 0; index < 2; ++index) {
        const QString& name = names.at(static_cast<std::size_t>(index));
        if (parser.isSet(name) != (index < asked.count))
            refuse(report, parser.isSet(name) ? u"does not ask for --%1."_s.arg(name)
                                              : u"asks for --%1 DATE."_s.arg(name));
        if (index < asked.count)
            choice.dates.at(asked.first + static_cast<std::size_t>(index)) = dateOf(parser, name);
    }
    if (asked.count == 0 || report.tab == ReportTab::Basic)
        return;
    if (asked.count == 1) // a period of one day
        choice.dates[1] = choice.dates[0];
    // What the report tells as its period: the masks of the window, which have no room for years from 100 on.
    choice.masks = {paper::rocDate(choice.dates[0]), paper::rocDate(choice.dates[1])};
}

/// The range of the tab that asks for it, with at least its first box on; null where there is none.
const ReportRange* askedRange(const Report& report, RangeKind kind) {
    for (const ReportRange& range : reportRanges(report.tab)) {
        if (range.kind == kind && report.fields.combo(range.combo))
            return &range;
    }
    return nullptr;
}

void setRange(ReportChoice& choice, const Report& report, const RangeOption& option,
              const QCommandLineParser& parser) {
    const ReportRange* range = askedRange(report, option.kind);
    const bool isGiven = parser.isSet(option.name);
    if (!range) {
        if (isGiven)
            refuse(report, u"does not ask for --%1."_s.arg(option.name));
        return;
    }
    // One box of a pair is for one code, and there is no sense in its default.
    const bool isPair = range->defaults.size() == 2;
    const bool isWhole = isPair && report.fields.combo(range->combo + 1);
    if (!isGiven) {
        if (isPair && !isWhole)
            refuse(report, u"asks for --%1 CODE."_s.arg(option.name));
        return;
    }
    const QStringList ends = parser.value(option.name).split(u".."_s);
    if (ends.size() > (isWhole ? 2 : 1))
        refuse(report, u"takes one value for --%1."_s.arg(option.name));
    choice.combos[range->combo] = ends.first();
    if (isWhole)
        choice.combos[range->combo + 1] = ends.last();
}

void setPunchMark(ReportChoice& choice, const Report& report, const QCommandLineParser& parser) {
    if (!parser.isSet(u"punch-mark"_s))
        return;
    if (!report.fields.punchMarks)
        refuse(report, u"does not ask for --punch-mark."_s);
    choice.punchMark = static_cast<int>(PunchMarks.indexOf(parser.value(u"punch-mark"_s)));
    if (choice.punchMark < 0)
        throw UsageFault{u"--punch-mark is one of %1."_s.arg(PunchMarks.join(u", "_s))};
}

/// All entries of the tab's list are selected where the option does not name some.
void setList(ReportChoice& choice, const Report& report, Database& database,
             const QCommandLineParser& parser) {
    choice.list = readList(database, report.tab);
    const std::array<std::pair<QString, ReportTab>, 2> options{
        {{u"types"_s, ReportTab::Leave}, {u"reasons"_s, ReportTab::WriteOff}}};
    for (const auto& [name, tab] : options) {
        if (!parser.isSet(name))
            continue;
        if (tab != report.tab || !report.fields.list)
            refuse(report, u"does not ask for --%1."_s.arg(name));
        QStringList codes = parser.value(name).split(u',');
        for (ListEntry& entry : choice.list)
            entry.selected = codes.removeAll(entry.text.section(u' ', 0, 0)) > 0;
        if (!codes.isEmpty())
            throw UsageFault{u"--%1: the store has no %2."_s.arg(name, codes.join(u", "_s))};
    }
}

using Save = bool (*)(const paper::ReportDocument&, const QString&);

Save saverOf(const QString& path) {
    const QString ending = QFileInfo(path).suffix().toLower();
    if (ending == u"pdf")
        return [](const auto& document, const QString& file) { return paper::savePdf(document, file); };
    if (ending == u"csv")
        return [](const auto& document, const QString& file) { return paper::saveCsv(document, file); };
    if (ending == u"xlsx")
        return [](const auto& document, const QString& file) { return paper::saveSheet(document, file); };
    throw UsageFault{path.isEmpty() ? u"Say where to: --output FILE."_s
                                    : u"%1: the file must end in .pdf, .csv or .xlsx."_s.arg(path)};
}

/// Works out what the report needs, over a connection that is closed when the report reads.
paper::ReportRun prepare(const Report& report, const QString& folder, const QCommandLineParser& parser) {
    ReportChoice choice = defaultChoice(report.tab, report.option);
    setDates(choice, report, parser);
    for (const RangeOption& option : rangeOptions())
        setRange(choice, report, option, parser);
    setPunchMark(choice, report, parser);
    const QString dataFile = storePathIn(folder);
    Database database(dataFile);
    setList(choice, report, database, parser);
    const Rows company = database.select(u"select CmpName from Syst01"_s);
    if (company.count() == 0)
        throw runTimeError(error::NoCurrentRecord, u"Syst01"_s);
    paper::ReportRun run;
    run.dataFile = dataFile;
    run.today = clock::today();
    paper::setNamedValue(run.names, namedValue(named::Title, company.at(0, 0).joined()).text);
    for (const NamedValue& value : periodValues(choice))
        paper::setNamedValue(run.names, value.text);
    for (const NamedValue& value : prepareReport(database, choice, run.today))
        paper::setNamedValue(run.names, value.text);
    const ReportCall call = reportCall(choice);
    run.formula = call.formula.value_or(SelectionFormula());
    run.templatePath = folder + u"/report/"_s + call.code + u".rpt"_s;
    return run;
}

} // namespace

void addPrintOptions(QCommandLineParser& parser) {
    const auto add = [&parser](const QString& name, const QString& help, const QString& value) {
        parser.addOption(QCommandLineOption(name, help, value));
    };
    add(u"output"_s, u"Where to: the ending .pdf, .csv or .xlsx says what is made."_s, u"FILE"_s);
    add(u"from"_s, u"First day, as 2026-01-01. D05 is of this day alone."_s, u"DATE"_s);
    add(u"to"_s, u"Last day."_s, u"DATE"_s);
    for (const RangeOption& option : rangeOptions())
        add(option.name, option.help, option.value);
    add(u"punch-mark"_s,
        u"Exceptions of which punch (C04 to C06): %1. The whole day where it is not given."_s.arg(
            PunchMarks.join(u", "_s)),
        u"PUNCH"_s);
    add(u"types"_s, u"Leave types (D01 to D04); all where it is not given."_s, u"CODE,..."_s);
    add(u"reasons"_s, u"Reasons of write-offs (E01 to E04); all where it is not given."_s, u"CODE,..."_s);
    add(u"folder"_s,
        u"The program's folder, with DB and report; that of pontrel-report where it is not given."_s,
        u"DIR"_s);
}

QString printReport(const QString& code, const QCommandLineParser& parser) {
    const Report* report = findReport(code);
    if (!report)
        throw UsageFault{u"There is no report %1."_s.arg(code)};
    const QString path = parser.value(u"output"_s);
    const Save save = saverOf(path);
    const QString folder =
        parser.isSet(u"folder"_s) ? parser.value(u"folder"_s) : QCoreApplication::applicationDirPath();
    const auto document = paper::runReport(prepare(*report, folder, parser));
    (void)save(*document, path); // nothing stops it
    return u"%1: %2，%L3 筆，%L4 頁"_s.arg(path, document->title())
        .arg(document->rowCount())
        .arg(document->pageCount());
}

} // namespace pontrel::tools
