#include "windows/master/Form1.h"

#include "app/Events.h"
#include "app/FrmI1Date.h"
#include "app/Prompts.h"
#include "app/WindowRegistry.h"
#include "rules/Session.h"
#include "rules/master/Entitlement.h"
#include "rules/master/Seniority.h"
#include "store/RunTimeError.h"
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

Form1::Form1(QWidget* parent) : RecordWindow(parent, u"Form1"_s, u"基本資料"_s, Opening::Lazily) {
    addTabs();
    completeTabs();
    SeniorityHost& host = *this;
    onEvent(employees_, &EmployeePage::computeSeniority, this,
            [&host] { ComputeSeniority(sharedDatabase(), host); });
    onEvent(employees_, &EmployeePage::computeEntitlement, this,
            [&host] { ComputeEntitlement(sharedDatabase(), host); });
}

void Form1::addTabs() {
    auto code = CodeTables.begin();
    const int count = static_cast<int>(CodeTables.size()) + OtherTabs;
    for (int tab = 0; tab < count; ++tab) {
        switch (tab) {
        case SlotTab:
            slots_ = new SlotPage(tab);
            addTab(slots_);
            break;
        case ClassTab:
            addTab(new ClassPage(tab));
            break;
        case EmployeeTab:
            employees_ = new EmployeePage(tab);
            addTab(employees_);
            break;
        default:
            addTab(new CodePage(tab, *code++));
        }
    }
}

void Form1::beforeBar() {
    slots_->showChoices();
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

} // namespace pontrel
