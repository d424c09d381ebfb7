#include "tour/Output.h"
#include "tour/Sights.h"
#include "tour/WindowSteps.h"

#include "app/DatePair.h"
#include "app/controls/TDBCalendar.h"
#include "store/Format.h"

#include <QComboBox>
#include <QListWidget>

// The roster window.

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

constexpr int DaysOfWeek = 7;
constexpr int RestingPeople = 3;

} // namespace

void WindowSteps::makeRoster(QDate monday) {
    current_ = u"opening the roster window"_s;
    open(2, u"Form2"_s);
    markDaysOff();
    chooseTab(u"SSTab1"_s, u"排班作業"_s);
    enter(u"Mk2(0)"_s, DatePair::maskText(monday));
    enter(u"Mk2(1)"_s, DatePair::maskText(monday.addDays(DaysOfWeek - 1)));
    generate(u"D01"_s);
    generate(u"T01"_s);
    queryRoster(monday);
    giveRestDay(monday);
    clerk_.click(u"StbTool(8)"_s);
    awaitIdle();
    print(u"Made the roster of two classes from %1 on."_s.arg(shortDate(monday)));
}

void WindowSteps::markDaysOff() {
    current_ = u"marking days off"_s;
    clerk_.takePicture(u"50-calendar"_s);
    for (const int day : {1, 2})
        clerk_.click(u"the day %1 of the calendar"_s.arg(day),
                     [day](const QWidget& front) -> std::optional<Spot> {
                         const auto* days = visible<QTableView>(front, u"Days"_s);
                         return days ? cellWith(*days, QString::number(day)) : std::nullopt;
                     });
    clerk_.seeThat(u"two days off"_s, [](const QWidget& front) {
        const auto* calendar = visible<TDBCalendar>(front, u"TDBC1"_s);
        const QDate first = calendar ? calendar->date().addDays(1 - calendar->date().day()) : QDate();
        return calendar && calendar->hasDay(u"nowork"_s, first) &&
               calendar->hasDay(u"nowork"_s, first.addDays(1));
    });
    clerk_.takePicture(u"51-days-off"_s);
}

void WindowSteps::generate(const QString& ClsNo) {
    current_ = u"generating the roster of %1"_s.arg(ClsNo);
    for (const int combo : {2, 3}) {
        clerk_.click(u"Combo2(%1)"_s.arg(combo), [combo](const QWidget& front) -> std::optional<Spot> {
            auto* box = visible<QComboBox>(front, u"Combo2(%1)"_s.arg(combo));
            return box ? std::optional(Spot{box, QPoint(20, box->height() / 2)}) : std::nullopt;
        });
        clerk_.press(Qt::Key_End);
        clerk_.press(Qt::Key_Home, Qt::ShiftModifier);
        clerk_.type(ClsNo);
    }
    if (ClsNo == u"D01")
        clerk_.takePicture(u"52-roster"_s);
    clerk_.click(u"CmdCal"_s);
    clerk_.awaitMessage(u"警告訊息"_s, u"排班表已產生完成,請按<確定>繼續......."_s);
    if (ClsNo == u"D01")
        clerk_.takePicture(u"53-roster-made"_s);
    clerk_.acknowledge();
}

void WindowSteps::queryRoster(QDate monday) {
    current_ = u"querying the roster"_s;
    enter(u"Mk2(2)"_s, DatePair::maskText(monday));
    enter(u"Mk2(3)"_s, DatePair::maskText(monday));
    clerk_.click(u"CmdQuery"_s);
    clerk_.seeThat(u"the roster of the day"_s, [](const QWidget& front) {
        const int rows = rowsOf(front, u"TDBG1"_s);
        return rows > RestingPeople && rows < 100;
    });
    clerk_.takePicture(u"54-roster-query"_s);
}

void WindowSteps::giveRestDay(QDate monday) {
    current_ = u"giving people a rest day"_s;
    chooseTab(u"SSTab1"_s, u"修改班表"_s);
    clerk_.takePicture(u"55-adjustment"_s);
    enter(u"Mk2(4)"_s, DatePair::maskText(monday));
    clerk_.click(u"Command2"_s);
    for (int person = 0; person < RestingPeople; ++person) {
        clerk_.click(u"the first entry of the list"_s, [](const QWidget& front) -> std::optional<Spot> {
            const auto* list = visible<QListWidget>(front, u"List1"_s);
            return list && list->count() > 0 ? spotOf(*list, list->model()->index(0, 0)) : std::nullopt;
        });
        clerk_.click(u"CMDCTRL(0)"_s);
        clerk_.seeThat(u"the entry among the chosen"_s,
                       [person](const QWidget& front) { return rowsOf(front, u"List2"_s) == person + 1; });
    }
    clerk_.takePicture(u"56-three-chosen"_s);
    clerk_.click(u"Command3"_s);
}

} // namespace pontrel::tour
