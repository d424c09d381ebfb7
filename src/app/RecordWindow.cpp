#include "app/RecordWindow.h"

#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/Module1.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TabPages.h"
#include "rules/Session.h"
#include "store/DataSource.h"

#include <utility>

namespace pontrel {

RecordWindow::RecordWindow(QWidget* parent, const QString& name, const QString& caption, Opening opening)
    : TabbedWindow(parent, name, caption), opening_(opening), form_{.watch = *new FocusWatch(this)} {}

RecordWindow::~RecordWindow() = default;

void RecordWindow::addTab(RecordTab* tab) {
    const int place = SSTab1->addTab(tab, tab->caption());
    Q_ASSERT_X(place == tab->index(), "RecordWindow::addTab", "a tab out of its place");
    tabs_.push_back(tab);
}

void RecordWindow::completeTabs() {
    addStatusBar();
    EnterAsTab* enter = EnterAsTab::install(*this);
    for (RecordTab* tab : tabs_) {
        if (!tab->entersAsTab())
            enter->leaveBoxesOf(*tab);
        tab->connectFields(form_);
    }
    if (opening_ == Opening::Lazily) {
        // Ahead of the record pages, which refresh the bar of the tab that comes to the front.
        onEvent(SSTab1, &QTabWidget::currentChanged, this, [this] { SourceOpen = false; });
        onEvent(SSTab1, &TabPages::frontTabClicked, this, [this] { SSTab1_Click(); });
    }
    for (RecordTab* tab : tabs_)
        makePage(*tab);
}

void RecordWindow::makePage(RecordTab& tab) {
    RecordParts parts = tab.parts();
    parts.statusBar = StbTool;
    parts.tabs = SSTab1;
    parts.tab = tab.index();
    RecordSteps steps = tab.steps();
    steps.beforeBar = [this, own = std::move(steps.beforeBar)] {
        if (!openSource())
            return false;
        beforeBar();
        return !own || own();
    };
    steps.afterReposition = [&tab, own = std::move(steps.afterReposition)] {
        tab.showDatesOfRow();
        if (own)
            own();
    };
    // What the row holds by now was not typed wrong by anybody. Another tab keeps its mark.
    for (auto* step : {&steps.afterAdd, &steps.afterEdit})
        *step = [&tab, own = std::move(*step)] {
            if (own)
                own();
            tab.forgetMarks();
        };
    pages_.push_back(new RecordPage(*this, std::move(parts), tab.rules(), std::move(steps)));
}

void RecordWindow::addBatch(BatchParts parts, BatchSteps steps) {
    parts.statusBar = StbTool;
    parts.tabs = SSTab1;
    new BatchPage(*this, std::move(parts), std::move(steps));
}

int RecordWindow::current() const {
    return SSTab1->currentIndex();
}

void RecordWindow::onLoad() {
    if (opening_ == Opening::AtLoad)
        openAll();
    RefreshRecordBar();
}

void RecordWindow::onUnload() {
    CloseDB();
    UnlockToolbar();
}

void RecordWindow::openAll() {
    OpenDB();
    SourceOpen = trapOfWindow([this] {
        for (RecordTab* tab : tabs_)
            tab->open();
        readAtLoad();
    });
}

bool RecordWindow::openSource() {
    if (SourceOpen || opening_ == Opening::AtLoad)
        return SourceOpen;
    OpenDB();
    SourceOpen = trapOfWindow([this] { tab(current()).open(); });
    return SourceOpen;
}

void RecordWindow::SSTab1_Click() {
    // A click on the tab in front opens its source anew, but takes nobody's edit away.
    if (tab(current()).source().editMode() != EditMode::None)
        return;
    SourceOpen = false;
    RefreshRecordBar();
}

void RecordWindow::RefreshRecordBar() {
    page(current()).RefreshRecordBar();
}

bool RecordWindow::trapOfWindow(const std::function<void()>& routine) {
    const bool opened = openTrapped(routine);
    if (!opened)
        UnlockToolbar();
    return opened;
}

} // namespace pontrel
