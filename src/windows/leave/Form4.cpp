#include "windows/leave/Form4.h"

#include "app/WindowRegistry.h"
#include "rules/Session.h"
#include "windows/leave/GrantPage.h"
#include "windows/leave/LeaveBatchTab.h"
#include "windows/leave/LeaveHoursPage.h"
#include "windows/leave/LeaveListPage.h"
#include "windows/leave/LeaveNotePage.h"
#include "windows/leave/LeaveTypePage.h"

namespace pontrel {

using namespace Qt::StringLiterals;

void Form4::registerWindow() {
    registerModuleWindow(4, [](QWidget* parent) { return new Form4(parent); });
}

Form4::Form4(QWidget* parent)
    : RecordWindow(parent, u"Form4"_s, u"差假管理"_s, Opening::AtLoad), batch_(new LeaveBatchTab(3)) {
    addTab(new LeaveTypePage(0));
    addTab(new GrantPage(1, names_));
    addTab(new LeaveNotePage(2, names_));
    addTab(batch_);
    addTab(new LeaveListPage(4, names_));
    addTab(new LeaveHoursPage(5));
    completeTabs();
    addBatch(batch_->batchParts(), batch_->batchSteps());
}

void Form4::readAtLoad() {
    batch_->readSettings(sharedDatabase());
    names_.read(sharedDatabase());
}

} // namespace pontrel
