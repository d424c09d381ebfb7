#include "tour/Output.h"
#include "tour/Sights.h"
#include "tour/WindowSteps.h"

#include "app/DatePair.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>

#include <cstdlib>

// The write-off window: exceptions are answered by a batch, and counted.

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

/// Two people who did not swipe when they left in the morning.
const QStringList Forgetful = {u"10025"_s, u"10034"_s};
const QString Forgotten = u"01"_s;
const QString ForgottenName = u"忘記刷卡"_s;

} // namespace

void WindowSteps::answerByWriteOff(QDate day) {
    current_ = u"answering exceptions by write-offs"_s;
    clerk_.click(u"CmdCtrl(1)"_s);
    clerk_.seeThat(u"the page of the batch"_s, [](const QWidget& front) {
        const auto* tabs = visible<QTabWidget>(front, u"SSTab1"_s);
        return visible<QWidget>(front, u"Form5"_s) && tabs && tabs->currentIndex() == 1;
    });
    runWriteOffBatch(day);
    visitReasonsAndWriteOffs();
    countWriteOffs(day);
    chooseTab(u"SSTab1"_s, u"註銷批次"_s);
    clerk_.click(u"CmdBat(3)"_s);
    recalculateWithout(Forgetful, day);
    clerk_.takePicture(u"69-written-off"_s);
    print(u"Answered the exceptions of %1 by write-offs."_s.arg(Forgetful.join(u" and "_s)));
}

void WindowSteps::runWriteOffBatch(QDate day) {
    clerk_.takePicture(u"86-write-off-batch"_s);
    clerk_.click(u"CmdBat(0)"_s);
    for (const QString& EmpNo : Forgetful)
        chooseForBatch(EmpNo);
    enter(u"TDBMask1(0)"_s, DatePair::maskText(day));
    enter(u"Text8(1)"_s, Forgotten);
    clerk_.seeThat(u"the name of the reason"_s,
                   [](const QWidget& front) { return textOf(front, u"Label40(1)"_s) == ForgottenName; });
    clerk_.takePicture(u"87-write-off-batch-open"_s);
    clerk_.click(u"CmdBat(1)"_s);
    clerk_.awaitMessage(u"警告訊息"_s, u"是否確定執行註銷批次 ?"_s);
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"the time of the batch"_s,
                   [](const QWidget& front) { return !textOf(front, u"Label16"_s).isEmpty(); });
}

void WindowSteps::chooseForBatch(const QString& EmpNo) {
    const auto entryOf = [&EmpNo](const QWidget& front) -> QListWidgetItem* {
        const auto* list = visible<QListWidget>(front, u"List1"_s);
        const auto found = list ? list->findItems(EmpNo, Qt::MatchStartsWith) : QList<QListWidgetItem*>();
        return found.isEmpty() ? nullptr : found.constFirst();
    };
    clerk_.click(u"an entry of the list in sight"_s, [](const QWidget& front) -> std::optional<Spot> {
        const auto* list = visible<QListWidget>(front, u"List1"_s);
        return list ? spotOf(*list, list->indexAt(QPoint(1, 1))) : std::nullopt;
    });
    const int way =
        clerk_.see<int>(u"the way to the employee"_s, [&](const QWidget& front) -> std::optional<int> {
            const QListWidgetItem* entry = entryOf(front);
            const QListWidget* list = entry ? entry->listWidget() : nullptr;
            return list ? std::optional(list->row(entry) - list->currentRow()) : std::nullopt;
        });
    clerk_.press(way < 0 ? Qt::Key_Up : Qt::Key_Down, Qt::NoModifier, std::abs(way));
    clerk_.seeThat(u"the employee selected"_s, [&](const QWidget& front) {
        const QListWidgetItem* entry = entryOf(front);
        return entry && entry->listWidget()->currentItem() == entry;
    });
    clerk_.click(u"CMDCTRL(0)"_s);
    clerk_.seeThat(u"the employee among the chosen"_s,
                   [&](const QWidget& front) { return entryOf(front) == nullptr; });
}

void WindowSteps::visitReasonsAndWriteOffs() {
    chooseTab(u"SSTab1"_s, u"註銷明細"_s);
    clerk_.click(u"CtrlCmd2(9)"_s);
    clerk_.takePicture(u"84-write-offs"_s);
    clerk_.click(u"CtrlCmd2(1)"_s);
    seeEdit(true);
    clerk_.takePicture(u"85-write-offs-edit"_s);
    clerk_.click(u"CtrlCmd2(3)"_s);
    seeEdit(false);
    chooseTab(u"SSTab1"_s, u"註銷原因"_s);
    clerk_.takePicture(u"82-reasons"_s);
    clerk_.click(u"CtrlCmd0(2)"_s);
    seeEdit(true);
    clerk_.takePicture(u"83-reasons-edit"_s);
    clerk_.click(u"CtrlCmd0(4)"_s);
    seeEdit(false);
}

void WindowSteps::countWriteOffs(QDate day) {
    chooseTab(u"SSTab1"_s, u"註銷查詢"_s);
    clerk_.takePicture(u"88-write-off-counts"_s);
    enter(u"Text4"_s, Forgetful.back());
    enter(u"TDBMask1(2)"_s, DatePair::maskText(day.addDays(1 - day.day())));
    enter(u"TDBMask1(3)"_s, DatePair::maskText(day));
    clerk_.seeThat(u"the count of the reason"_s, [](const QWidget& front) {
        const auto* grid = visible<QTableView>(front, u"TDBG1(1)"_s);
        return grid && grid->model()->rowCount() == 1 && cellWith(*grid, ForgottenName).has_value();
    });
    clerk_.takePicture(u"89-write-offs-counted"_s);
}

} // namespace pontrel::tour
