#include "app/TabbedWindow.h"

#include "app/Events.h"
#include "app/MDI.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TabPages.h"

#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 3;

} // namespace

TabbedWindow::TabbedWindow(QWidget* parent, const QString& name, const QString& caption)
    : Window(parent), SSTab1(new TabPages(this, u"SSTab1"_s, u"頁籤"_s)) {
    setObjectName(name);
    setAccessibleName(caption);
    setFixedSize(ModuleWindowSize);
    move(0, 0);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Margin, Margin, Margin, Margin);
    rows->setSpacing(4);
    rows->addWidget(SSTab1, 1);
}

void TabbedWindow::addStatusBar() {
    StbTool = new StatusBar(this);
    layout()->addWidget(StbTool);
    onEvent(StbTool, &StatusBar::leaveClicked, this, [this] { unload(); });
}

} // namespace pontrel
