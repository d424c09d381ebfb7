#include "tour/Output.h"
#include "tour/Sights.h"
#include "tour/WindowSteps.h"

#include "app/DatePair.h"
#include "store/Format.h"

#include <QLineEdit>
#include <QListWidget>

// The overtime window.

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

constexpr int People = 3;

QString shownIn(const QWidget& front, const QString& box) {
    const auto* found = visible<QLineEdit>(front, box);
    return found ? found->text() : QString();
}

} // namespace

void WindowSteps::enterOvertime(const QString& EmpNo, QDate day) {
    current_ = u"opening the overtime window"_s;
    open(6, u"Form6"_s);
    clerk_.takePicture(u"90-overtime"_s);
    addOvertime(EmpNo, day);
    runOvertimeBatch(day);
    listOvertime(EmpNo);
    totalOvertime(EmpNo, day);
    clerk_.click(u"StbTool(8)"_s);
    awaitIdle();
    print(u"Entered overtime of %1, of one and of %2 people."_s.arg(shortDate(day)).arg(People));
}

void WindowSteps::addOvertime(const QString& EmpNo, QDate day) {
    current_ = u"entering overtime"_s;
    clerk_.click(u"CtrlCmd0(0)"_s);
    seeEdit(true);
    clerk_.type(EmpNo);
    clerk_.press(Qt::Key_Return);
    clerk_.type(DatePair::maskText(day));
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"the punches of the day"_s,
                   [](const QWidget& front) { return shownIn(front, u"Time1(0)"_s).contains(u'7'); });
    enter(u"overTime(0)"_s, u"1800"_s);
    clerk_.press(Qt::Key_Return);
    clerk_.type(u"2030"_s);
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"two hours"_s,
                   [](const QWidget& front) { return shownIn(front, u"Text1(4)"_s) == u"2"; });
    enter(u"Text1(5)"_s, u"月初出貨"_s);
    clerk_.takePicture(u"91-overtime-new"_s);
    save(u"CtrlCmd0"_s);
}

void WindowSteps::runOvertimeBatch(QDate day) {
    current_ = u"giving overtime to many"_s;
    chooseTab(u"SSTab1"_s, u"加班批次"_s);
    clerk_.takePicture(u"92-overtime-batch"_s);
    clerk_.click(u"CmdBat(0)"_s);
    for (int person = 0; person < People; ++person) {
        clerk_.click(u"the first entry of the list"_s, [](const QWidget& front) -> std::optional<Spot> {
            const auto* list = visible<QListWidget>(front, u"List1"_s);
            return list && list->count() > 0 ? spotOf(*list, list->model()->index(0, 0)) : std::nullopt;
        });
        clerk_.click(u"CMDCTRL(0)"_s);
        clerk_.seeThat(u"the entry among the chosen"_s,
                       [person](const QWidget& front) { return rowsOf(front, u"List2"_s) == person + 1; });
    }
    enter(u"TDBMask1(0)"_s, DatePair::maskText(day));
    enter(u"overTime(2)"_s, u"2200"_s);
    enter(u"overTime(3)"_s, u"0130"_s);
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"three hours"_s,
                   [](const QWidget& front) { return shownIn(front, u"Text8(1)"_s) == u"3"; });
    clerk_.takePicture(u"93-overtime-batch-open"_s);
    clerk_.click(u"CmdBat(1)"_s);
    clerk_.awaitMessage(u"警告訊息"_s, u"是否確定執行註銷批次 ?"_s);
    clerk_.takePicture(u"94-overtime-batch-question"_s);
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"the time of the batch"_s,
                   [](const QWidget& front) { return !textOf(front, u"Label16"_s).isEmpty(); });
    clerk_.takePicture(u"95-overtime-batch-run"_s);
}

void WindowSteps::listOvertime(const QString& EmpNo) {
    current_ = u"listing the overtime of one employee"_s;
    chooseTab(u"SSTab1"_s, u"加班明細"_s);
    clerk_.takePicture(u"96-overtime-list"_s);
    enter(u"Text5"_s, EmpNo);
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"his overtime"_s, [](const QWidget& front) { return rowsOf(front, u"TDBG1(0)"_s) == 1; });
    clerk_.takePicture(u"97-overtime-of-one"_s);
}

void WindowSteps::totalOvertime(const QString& EmpNo, QDate day) {
    current_ = u"adding up the overtime of one employee"_s;
    chooseTab(u"SSTab1"_s, u"加班查詢"_s);
    clerk_.takePicture(u"98-overtime-totals"_s);
    enter(u"Text4"_s, EmpNo);
    enter(u"TDBMask1(2)"_s, DatePair::maskText(day));
    enter(u"TDBMask1(3)"_s, DatePair::maskText(day.addDays(day.daysInMonth() - day.day())));
    clerk_.seeThat(u"his total"_s, [](const QWidget& front) { return rowsOf(front, u"TDBG1(1)"_s) == 1; });
    clerk_.takePicture(u"99-overtime-total-of-one"_s);
}

} // namespace pontrel::tour
