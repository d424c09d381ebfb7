#include "app/BatchPage.h"

#include "app/ActionKeys.h"
#include "app/Events.h"
#include "app/Prompts.h"
#include "app/TwoLists.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TabPages.h"
#include "rules/Session.h"
#include "store/Clock.h"
#include "store/Format.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace pontrel {

using namespace Qt::StringLiterals;

QStringList batchEntries() {
    QStringList entries;
    const Rows employees =
        sharedDatabase().select(u"SELECT EmpNo, EmpName   From Base06   where isnull(LeaveDate) = true "_s);
    for (const std::vector<Value>& employee : employees)
        entries += employee.at(0).joined() + u"  "_s + employee.at(1).joined();
    return entries;
}

BatchPage::BatchPage(QWidget& window, BatchParts parts, BatchSteps steps)
    : QObject(&window), parts_(std::move(parts)), steps_(std::move(steps)) {
    giveKey(*parts_.begin, ActionKey::New);
    giveKey(*parts_.end, ActionKey::Save);
    onEvent(parts_.begin, &QPushButton::clicked, this, [this] { begin(); });
    onEvent(parts_.end, &QPushButton::clicked, this, [this] { end(); });
    parts_.frame->setEnabled(false);
    parts_.end->setEnabled(false);
}

void BatchPage::begin() {
    setOpen(true);
    parts_.lists->clear();
    if (parts_.moment)
        parts_.moment->clear();
    if (steps_.clear)
        steps_.clear();
    if (parts_.account)
        parts_.account->setText(gAccount);
    parts_.lists->setEntries(batchEntries());
}

void BatchPage::end() {
    if (MsgBox(steps_.question, WarningTitle, MsgIcon::None, MsgButtons::YesNo) == MsgAnswer::Yes) {
        const QDateTime now = clock::now();
        if (parts_.moment)
            parts_.moment->setText(shortDate(now.date()) + u' ' + formatTime(now.time(), u"hh:nn:ss"_s));
        steps_.run(parts_.lists->chosen(), now);
    }
    setOpen(false);
    if (steps_.closed)
        steps_.closed();
}

void BatchPage::setOpen(bool open) {
    open_ = open;
    parts_.frame->setEnabled(open);
    parts_.end->setEnabled(open);
    parts_.begin->setEnabled(!open);
    for (QPushButton* other : std::as_const(parts_.others))
        other->setEnabled(!open);
    parts_.statusBar->setText(2, open ? steps_.stateWord : QString());
    parts_.statusBar->setLeaveRaised(!open);
    setOtherTabsEnabled(*parts_.tabs, !open);
    // The button that was clicked has gone off.
    (open ? parts_.lists->list1() : static_cast<QWidget*>(parts_.begin))->setFocus();
}

} // namespace pontrel
