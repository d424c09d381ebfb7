#include "windows/writeoff/Form5.h"

#include "app/Events.h"
#include "app/WindowRegistry.h"
#include "store/DataSource.h"
#include "windows/writeoff/WriteOffBatchPage.h"
#include "windows/writeoff/WriteOffCountPage.h"
#include "windows/writeoff/WriteOffEntryPage.h"
#include "windows/writeoff/WriteOffReasonPage.h"

namespace pontrel {

using namespace Qt::StringLiterals;

void Form5::registerWindow() {
    registerModuleWindow(5, [](QWidget* parent) { return new Form5(parent); });
}

Form5::Form5(QWidget* parent) : RecordWindow(parent, u"Form5"_s, u"註銷管理"_s, Opening::AtLoad) {
    auto* batch = new WriteOffBatchPage;
    auto* entries = new WriteOffEntryPage;
    addTab(new WriteOffReasonPage);
    addTab(batch);
    addTab(entries);
    addTab(new WriteOffCountPage);
    completeTabs();
    BatchSteps steps = batch->batchSteps();
    steps.closed = [entries] { entries->source().Refresh(); };
    addBatch(batch->batchParts(), std::move(steps));
    onEvent(batch, &WriteOffBatchPage::leave, this, [this] { unload(); });
    onEvent(batch, &WriteOffBatchPage::backToExceptions, this, [this] { jumpTo(3, 2); });
}

} // namespace pontrel
