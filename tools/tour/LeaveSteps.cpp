#include "tour/Output.h"
#include "tour/Sights.h"
#include "tour/WindowSteps.h"

#include "app/DatePair.h"
#include "app/controls/TDBTime.h"

#include <QLineEdit>
#include <QListWidget>

// The leave window.

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

constexpr int PeopleOfBatch = 20;
constexpr int DaysOfWeek = 7;

/// The text of a box in sight; nothing without it.
std::optional<QString> boxed(const QWidget& front, const QString& box) {
    const auto* found = visible<QLineEdit>(front, box);
    return found ? std::optional(found->text()) : std::nullopt;
}

} // namespace

void WindowSteps::answerByLeave(const QString& EmpNo, QDate day) {
    current_ = u"answering an exception by a leave note"_s;
    clerk_.click(u"CmdCtrl(0)"_s);
    clerk_.seeThat(u"the leave notes"_s,
                   [](const QWidget& front) { return visible<QWidget>(front, u"Frame1(2)"_s) != nullptr; });
    clerk_.takePicture(u"65-notes"_s);
    clerk_.click(u"CtrlCmd2(0)"_s);
    seeEdit(true);
    const QString places = DatePair::maskText(day);
    // Employee, no substitute, leave type; the first day brings the last one and the times with it.
    enterInTurn({EmpNo, {}, u"03"_s, places});
    clerk_.seeThat(u"the day and the begin of work"_s, [&](const QWidget& front) {
        const auto* begin = visible<TDBTime>(front, u"TDBTime1(0)"_s);
        return begin && !begin->isNull() && !textOf(front, u"Label4(2)"_s).isEmpty();
    });
    clerk_.click(u"TDBMask1(1)"_s);
    clerk_.press(Qt::Key_Tab);
    enter(u"Text3(4)"_s, u"Private"_s);
    clerk_.takePicture(u"66-notes-new"_s);
    save(u"CtrlCmd2"_s);
    clerk_.seeThat(u"the day row of the note"_s,
                   [](const QWidget& front) { return rowsOf(front, u"TDBGrid1(2)"_s) == 1; });
    clerk_.takePicture(u"67-notes-saved"_s);
    const QString BusNo =
        clerk_.see<QString>(u"the number of the note"_s, [](const QWidget& front) -> std::optional<QString> {
            const QString number = textOf(front, u"Label4(0)"_s);
            return number.isEmpty() ? std::nullopt : std::optional(number);
        });
    clerk_.click(u"CtrlCmd2(13)"_s);

    recalculateWithout({EmpNo}, day);
    clerk_.takePicture(u"68-exception-answered"_s);
    print(u"Answered the exception of %1 by a leave note."_s.arg(EmpNo));
}

void WindowSteps::keepLeave(QDate monday) {
    current_ = u"opening the leave window"_s;
    open(4, u"Form4"_s);
    visitLeaveTypes();
    runLeaveBatch(monday.addDays(4));
    askForLeave(monday);
    clerk_.click(u"StbTool(8)"_s);
    awaitIdle();
}

void WindowSteps::visitLeaveTypes() {
    current_ = u"looking at leave types and grants"_s;
    clerk_.takePicture(u"70-leave-types"_s);
    clerk_.click(u"CtrlCmd0(1)"_s);
    seeEdit(true);
    clerk_.takePicture(u"71-leave-types-edit"_s);
    clerk_.click(u"CtrlCmd0(3)"_s);
    seeEdit(false);
    chooseTab(u"SSTab1"_s, u"給假規定"_s);
    clerk_.takePicture(u"72-grants"_s);
    clerk_.click(u"CtrlCmd1(10)"_s);
    clerk_.click(u"CtrlCmd1(1)"_s);
    seeEdit(true);
    clerk_.takePicture(u"73-grants-edit"_s);
    clerk_.click(u"CtrlCmd1(3)"_s);
    seeEdit(false);
}

void WindowSteps::runLeaveBatch(QDate day) {
    current_ = u"running a leave batch"_s;
    chooseTab(u"SSTab1"_s, u"假單批次"_s);
    clerk_.takePicture(u"74-batch"_s);
    clerk_.click(u"CmdBat(0)"_s);
    for (int person = 0; person < PeopleOfBatch; ++person) {
        clerk_.click(u"the first entry of the list"_s, [](const QWidget& front) -> std::optional<Spot> {
            const auto* list = visible<QListWidget>(front, u"List1"_s);
            return list && list->count() > 0 ? spotOf(*list, list->model()->index(0, 0)) : std::nullopt;
        });
        clerk_.press(Qt::Key_Return);
        clerk_.seeThat(u"the entry among the chosen"_s,
                       [person](const QWidget& front) { return rowsOf(front, u"List2"_s) == person + 1; });
    }
    enter(u"TDBMask1(2)"_s, DatePair::maskText(day));
    clerk_.press(Qt::Key_Tab, Qt::NoModifier, 2);
    clerk_.seeThat(u"the times of the first slot"_s, [](const QWidget& front) {
        const auto* end = visible<TDBTime>(front, u"TDBTime1(3)"_s);
        return end && !end->isNull();
    });
    clerk_.type(u"1300"_s);
    enter(u"Text8(0)"_s, u"05"_s);
    clerk_.takePicture(u"75-batch-open"_s);
    clerk_.click(u"CmdBat(1)"_s);
    clerk_.awaitMessage(u"警告訊息"_s, u"是否確定執行假單批次 ?"_s);
    clerk_.takePicture(u"76-batch-question"_s);
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"the hours of the last one"_s,
                   [](const QWidget& front) { return boxed(front, u"Text8(1)"_s) == u"0.4"_s; });
    clerk_.takePicture(u"77-batch-done"_s);
    print(u"Gave %1 people leave for an afternoon."_s.arg(PeopleOfBatch));
}

void WindowSteps::askForLeave(QDate monday) {
    current_ = u"asking for the leave of an employee"_s;
    chooseTab(u"SSTab1"_s, u"瀏覽"_s);
    clerk_.takePicture(u"78-browse"_s);
    enter(u"Text5"_s, u"10012"_s);
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"the notes of one employee"_s, [](const QWidget& front) {
        const int rows = rowsOf(front, u"TDBGrid1(3)"_s);
        return rows > 0 && rows < 5 && !textOf(front, u"Label4(96)"_s).isEmpty();
    });
    clerk_.takePicture(u"79-browse-one"_s);
    chooseTab(u"SSTab1"_s, u"假時查詢"_s);
    clerk_.takePicture(u"80-hours"_s);
    enter(u"Text4"_s, u"10012"_s);
    enter(u"TDBMask1(3)"_s, DatePair::maskText(monday.addDays(-DaysOfWeek)));
    enter(u"TDBMask1(4)"_s, DatePair::maskText(monday.addDays(DaysOfWeek)));
    clerk_.seeThat(u"the hours of the leave types"_s,
                   [](const QWidget& front) { return rowsOf(front, u"TDBGrid2"_s) == 2; });
    clerk_.takePicture(u"81-hours-one"_s);
    print(u"Asked for the leave of an employee."_s);
}

} // namespace pontrel::tour
