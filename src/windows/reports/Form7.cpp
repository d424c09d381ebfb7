#include "windows/reports/Form7.h"

#include "app/CodeCombo.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/WindowRegistry.h"
#include "app/controls/TabPages.h"
#include "rules/Session.h"
#include "rules/reports/Lists.h"
#include "rules/reports/Staging.h"
#include "store/Clock.h"
#include "windows/reports/Cr1.h"
#include "windows/reports/ReportPage.h"

#include <QDir>
#include <QListWidget>
#include <QStringListModel>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// Of the two dates those that the report asks for; none on the tab of basic reports.
std::array<QDate, 2> periodOf(const ReportChoice& choice) {
    if (choice.tab == ReportTab::Basic)
        return {};
    const Report* report = findReport(choice.tab, choice.option);
    return {choice.dates[0], report && report->fields.mask(1) ? choice.dates[1] : QDate()};
}

/// Whether the reports of a tab run statements of their own.
bool hasPreparations(ReportTab tab) {
    return tab == ReportTab::Leave || tab == ReportTab::WriteOff;
}

} // namespace

void Form7::registerWindow() {
    registerModuleWindow(7, [](QWidget* parent) { return new Form7(parent); });
}

Form7::Form7(QWidget* parent)
    : TabbedWindow(parent, u"Form7"_s, u"報表列印"_s)
    , Cr1_(new Cr1(this))
    , form_{.watch = *new FocusWatch(this)} {
    Cr1_->setObjectName(u"Cr1"_s);
    makePages();
    connectControls();
}

void Form7::makePages() {
    const QStringList captions{u"基本報表"_s, u"排班報表"_s, u"勤惰報表"_s,
                               u"請假報表"_s, u"註銷報表"_s, u"加班報表"_s};
    for (int tab = 0; tab < captions.size(); ++tab) {
        auto* page = new ReportPage(static_cast<ReportTab>(tab), form_);
        SSTab1->addTab(page, captions.at(tab));
        pages_.push_back(page);
    }
}

void Form7::connectControls() {
    EnterAsTab* enter = EnterAsTab::install(*this);
    const auto lists = findChildren<QListWidget*>();
    for (QListWidget* list : lists)
        enter->watch(*list);
    for (ReportPage* page : pages_) {
        onEvent(page, &ReportPage::print, this, [this, page] { Cmd_Click(*page); });
        onEvent(page, &ReportPage::leave, this, [this] { unload(); });
    }
}

ReportPage& Form7::page(ReportTab tab) const {
    return *pages_.at(static_cast<std::size_t>(tab));
}

void Form7::onLoad() {
    Cr1_->setDataFile(storePath());
    OpenDB();
    openTrapped(
        [this] {
            SSTab1->setCurrentIndex(0);
            readTitle();
            readLists();
            readChoices();
        },
        u"報表開啟異常,請洽程式設計師"_s);
}

void Form7::onUnload() {
    // Deliberate: without CloseDB, which each print has run.
    UnlockToolbar();
}

void Form7::readTitle() {
    gRecordset = sharedDatabase().openRecordset(u"select CmpName from Syst01"_s);
    setValues({namedValue(named::Title, gRecordset.field(u"CmpName"_s).joined())});
    gRecordset.Close();
}

void Form7::readLists() {
    for (const ReportTab tab : {ReportTab::Leave, ReportTab::WriteOff})
        page(tab).setEntries(readList(sharedDatabase(), tab));
}

void Form7::readChoices() {
    for (const RangeKind kind :
         {RangeKind::ShiftClass, RangeKind::Unit, RangeKind::Employee, RangeKind::WorkType}) {
        auto* choices = new QStringListModel(codeEntries(sharedDatabase(), choicesStatement(kind)), this);
        for (ReportPage* each : pages_)
            each->setChoices(kind, choices);
    }
}

void Form7::Cmd_Click(ReportPage& front) {
    ReportChoice choice = front.choice();
    choice.writeOffUnits = page(ReportTab::WriteOff).units();
    setValues(periodValues(choice));
    // The reports of staged rows have no formula, and masks hold no day from 2011 on.
    Cr1_->period = periodOf(choice);
    if (hasPreparations(choice.tab))
        printTrapped(choice);
    else
        print(choice);
    CloseDB();
}

void Form7::printTrapped(const ReportChoice& choice) {
    try {
        OpenDB();
        setValues(prepareReport(sharedDatabase(), choice, clock::today()));
        print(choice);
    } catch (const RunTimeError& error) {
        logError(error);
        MsgBox(error.text());
    }
}

void Form7::print(const ReportChoice& choice) {
    const ReportCall call = reportCall(choice);
    // Deliberate: stored ahead of the run, and so also where the engine cannot read it.
    code_ = call.code;
    formula_ = call.formula.value_or(formula_);
    PrintReport();
}

void Form7::PrintReport() {
    constexpr int InWindow = 0;
    constexpr int Maximised = 2;
    constexpr int Run = 1;
    Cr1_->reportFileName = QDir(programFolder()).filePath(u"report/"_s + code_ + u".rpt"_s);
    Cr1_->selectionFormula = formula_;
    Cr1_->showPrint = true;
    Cr1_->showExport = true;
    Cr1_->destination = InWindow;
    Cr1_->windowState = Maximised;
    Cr1_->setAction(Run);
}

void Form7::setValues(const std::vector<NamedValue>& values) {
    for (const NamedValue& value : values)
        Cr1_->setFormula(value.index, value.text);
}

} // namespace pontrel
