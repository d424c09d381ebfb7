#include "windows/overtime/Form6.h"

#include "app/Events.h"
#include "app/WindowRegistry.h"
#include "windows/overtime/OvertimeBatchPage.h"
#include "windows/overtime/OvertimeEntryPage.h"
#include "windows/overtime/OvertimeListPage.h"
#include "windows/overtime/OvertimeTotalPage.h"

namespace pontrel {

using namespace Qt::StringLiterals;

void Form6::registerWindow() {
    registerModuleWindow(6, [](QWidget* parent) { return new Form6(parent); });
}

Form6::Form6(QWidget* parent) : RecordWindow(parent, u"Form6"_s, u"加班管理"_s, Opening::AtLoad) {
    auto* batch = new OvertimeBatchPage;
    addTab(new OvertimeEntryPage);
    addTab(batch);
    addTab(new OvertimeListPage);
    addTab(new OvertimeTotalPage);
    completeTabs();
    addBatch(batch->batchParts(), batch->batchSteps());
    onEvent(batch, &OvertimeBatchPage::leave, this, [this] { unload(); });
}

} // namespace pontrel
