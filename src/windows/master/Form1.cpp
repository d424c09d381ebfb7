#include "windows/master/Form1.h"

#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/FrmI1Date.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/RecordPage.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TabPages.h"
#include "rules/master/Entitlement.h"
#include "rules/master/Seniority.h"
#include "store/DataSource.h"
#include "windows/master/ClassPage.h"
#include "windows/master/CodePage.h"
#include "windows/master/EmployeePage.h"
#include "windows/master/SlotPage.h"

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The tabs that are more than a code list, by their places, and so by the numbers of their tables.
enum Tab { SlotTab = 3, ClassTab = 4, EmployeeTab = 5 };
constexpr int OtherTabs = 3;

/// The tabs that are mere code lists, in the order of their tables: a seventh tab would be a line more.
const std::vector<CodeTable> CodeTables = {
    {u"職稱設定"_s, u"職稱代碼："_s, u"TitleNo"_s, u"職稱："_s, u"Title"_s, u"職稱代碼"_s, u"職稱"_s},
    {u"單位設定"_s, u"單位代碼："_s, u"UnitNo"_s, u"單位名稱："_s, u"Unit"_s, u"單位代碼"_s, u"單位名稱"_s},
    {u"聘僱類別"_s, u"聘雇別代碼："_s, u"WorkNo"_s, u"聘雇類別："_s, u"WorkType"_s, u"聘雇代碼"_s,
     u"聘雇類別"_s},
};

} // namespace

void Form1::registerWindow() {
    registerModuleWindow(1, [](QWidget* parent) { return new Form1(parent); });
}

Form1::Form1(QWidget* parent)
    : TabbedWindow(parent, u"Form1"_s, u"基本資料"_s), watch_(new FocusWatch(this)) {
    makeTabPages();
    addStatusBar();
    connectControls();
    makeRecordPages();
}

Form1::~Form1() = default;

void Form1::makeTabPages() {
    const auto add = [this](MasterPage* page, const QString& caption) {
        SSTab1->addTab(page, caption);
        tabs_.push_back(page);
    };
    auto code = CodeTables.begin();
    const int count = static_cast<int>(CodeTables.size()) + OtherTabs;
    for (int tab = 0; tab < count; ++tab) {
        switch (tab) {
        case SlotTab:
            slots_ = new SlotPage(tab);
            add(slots_, u"時段設定"_s);
            break;
        case ClassTab:
            add(new ClassPage(tab), u"班別設定"_s);
            break;
        case EmployeeTab:
            employees_ = new EmployeePage(tab);
            add(employees_, u"員工資料"_s);
            break;
        default:
            add(new CodePage(tab, *code), code->caption);
            ++code;
        }
    }
}

void Form1::connectControls() {
    EnterAsTab* enter = EnterAsTab::install(*this);
    for (MasterPage* page : tabs_) {
        if (!page->entersAsTab())
            enter->leaveBoxesOf(*page);
    }
    employees_->connectControls(*watch_);
    // Ahead of the record pages, which refresh the bar of the tab that comes to the front.
    onEvent(SSTab1, &QTabWidget::currentChanged, this, [this] { SourceOpen = false; });
    onEvent(SSTab1, &TabPages::frontTabClicked, this, [this] { SSTab1_Click(); });
    SeniorityHost& host = *this;
    onEvent(employees_, &EmployeePage::computeSeniority, this,
            [&host] { ComputeSeniority(sharedDatabase(), host); });
    onEvent(employees_, &EmployeePage::computeEntitlement, this,
            [&host] { ComputeEntitlement(sharedDatabase(), host); });
}

void Form1::makeRecordPages() {
    for (MasterPage* tab : tabs_) {
        RecordParts parts = tab->parts();
        parts.statusBar = StbTool;
        parts.tabs = SSTab1;
        parts.tab = tab->tab();
        RecordSteps steps = tab->steps();
        steps.beforeBar = [this] {
            if (!openCurrentSource())
                return false;
            slots_->showChoices();
            return true;
        };
        pages_.push_back(new RecordPage(*this, std::move(parts), tab->rules(), std::move(steps)));
    }
}

void Form1::onLoad() {
    RefreshRecordBar();
}

void Form1::onUnload() {
    CloseDB();
    UnlockToolbar();
}

void Form1::SSTab1_Click() {
    // A click on the tab in front opens its source anew, but takes nobody's edit away.
    const auto tab = static_cast<std::size_t>(SSTab1->currentIndex());
    if (tabs_.at(tab)->source().editMode() != EditMode::None)
        return;
    SourceOpen = false;
    RefreshRecordBar();
}

void Form1::RefreshRecordBar() {
    pages_.at(static_cast<std::size_t>(SSTab1->currentIndex()))->RefreshRecordBar();
}

bool Form1::openCurrentSource() {
    if (SourceOpen)
        return true;
    OpenDB();
    const auto tab = static_cast<std::size_t>(SSTab1->currentIndex());
    SourceOpen = trapOfWindow([&] { pages_.at(tab)->open(tabs_.at(tab)->table()); });
    return SourceOpen;
}

QDate Form1::askDate() {
    FrmI1Date::ask(this);
    return gDate1;
}

void Form1::refreshRecordBar() {
    RefreshRecordBar();
}

void Form1::openFailed(const RunTimeError& cause) {
    trapOfWindow([&] { throw RunTimeError(cause); });
}

bool Form1::trapOfWindow(const std::function<void()>& routine) {
    const bool opened = openTrapped(routine);
    if (!opened)
        UnlockToolbar();
    return opened;
}

} // namespace pontrel
