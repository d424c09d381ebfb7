#include "tour/WindowSteps.h"

#include "tour/Output.h"
#include "tour/Sights.h"

#include "app/DatePair.h"
#include "store/Format.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

// The system window and the master data.

namespace pontrel::tour {

using namespace Qt::StringLiterals;

const QString WindowSteps::NewEmployee = u"50001"_s;

void WindowSteps::awaitIdle() {
    clerk_.seeThat(u"the idle main window"_s, [](const QWidget& front) {
        const auto* idle = visible<QWidget>(front, u"Form0"_s);
        if (front.objectName() != u"MDI" || front.windowTitle() != u"Pontrel V1.1 - Norvale" || !idle)
            return false;
        for (int module = 1; module <= 8; ++module) {
            if (visible<QWidget>(front, u"Form%1"_s.arg(module)))
                return false;
        }
        return true;
    });
}

void WindowSteps::open(int button, const QString& window) {
    clerk_.click(u"Tb(%1)"_s.arg(button));
    clerk_.seeThat(u"the window %1"_s.arg(window),
                   [&window](const QWidget& front) { return visible<QWidget>(front, window) != nullptr; });
}

void WindowSteps::chooseTab(const QString& tabs, const QString& caption) {
    clerk_.click(u"the tab %1"_s.arg(caption), [&](const QWidget& front) -> std::optional<Spot> {
        const auto* found = visible<QTabWidget>(front, tabs);
        for (int tab = 0; found && tab < found->count(); ++tab) {
            if (found->tabText(tab) == caption)
                return Spot{found->tabBar(), found->tabBar()->tabRect(tab).center()};
        }
        return std::nullopt;
    });
    clerk_.seeThat(u"the page %1"_s.arg(caption), [&](const QWidget& front) {
        const auto* found = visible<QTabWidget>(front, tabs);
        return found && found->tabText(found->currentIndex()) == caption;
    });
}

void WindowSteps::enter(const QString& control, const QString& text) {
    clerk_.click(control);
    clerk_.type(text);
}

void WindowSteps::enterInTurn(const QStringList& texts) {
    for (const QString& text : texts) {
        clerk_.type(text);
        clerk_.press(Qt::Key_Tab);
    }
}

void WindowSteps::seeEdit(bool editing) {
    clerk_.seeThat(editing ? u"the edit state"_s : u"the browse state"_s, [editing](const QWidget& front) {
        return textOf(front, u"StbTool(2)"_s).isEmpty() != editing;
    });
}

void WindowSteps::save(const QString& bar) {
    clerk_.click(bar + u"(4)"_s);
    seeEdit(false);
}

void WindowSteps::recalculateWithout(const QStringList& answered, QDate day) {
    current_ = u"recalculating the day of answered exceptions"_s;
    const auto exceptions = [&answered](const QWidget& front) {
        const auto* grid = visible<QTableView>(front, u"TDBG3(0)"_s);
        qsizetype of = 0;
        for (int row = 0; grid && row < grid->model()->rowCount(); ++row)
            of += answered.count(grid->model()->index(row, 1).data().toString());
        return of;
    };
    clerk_.seeThat(u"the exceptions before"_s,
                   [&](const QWidget& front) { return exceptions(front) >= answered.size(); });
    clerk_.click(u"CmdCtrl(5)"_s);
    clerk_.awaitWindow(u"FrmI1Date"_s);
    clerk_.type(DatePair::maskText(day)); // over the day of the exception in focus, from its beginning
    clerk_.click(u"Command1(0)"_s);
    clerk_.awaitMessage(u"警告訊息"_s, shortDate(day) + u"異常處理已完成!!"_s);
    clerk_.acknowledge();
    clerk_.seeThat(u"the exceptions without those answered"_s, [&](const QWidget& front) {
        return rowsOf(front, u"TDBG3(0)"_s) > 0 && exceptions(front) == 0;
    });
}

void WindowSteps::visitSystemWindow() {
    current_ = u"visiting the system window"_s;
    open(8, u"Form8"_s);
    clerk_.takePicture(u"16-system"_s);
    visitSettings();
    visitAccounts();
    clerk_.click(u"CmdSet(3)"_s);
    awaitIdle();
    print(u"Opened and left the system window."_s);
}

void WindowSteps::visitSettings() {
    current_ = u"looking at the settings"_s;
    clerk_.click(u"CmdSet(0)"_s);
    clerk_.seeThat(u"the settings"_s,
                   [](const QWidget& front) { return visible<QWidget>(front, u"FrmSysSet"_s) != nullptr; });
    clerk_.takePicture(u"17-settings"_s);
    clerk_.click(u"CtrlCmd(0)"_s);
    clerk_.click(u"CmdBrow"_s);
    clerk_.awaitWindow(u"FrmBrower"_s);
    clerk_.takePicture(u"18-folders"_s);
    clerk_.click(u"CmdCancel"_s);
    clerk_.seeThat(u"the settings being edited"_s, [](const QWidget& front) {
        const auto* path = visible<QLineEdit>(front, u"Text1(0)"_s);
        return path && path->isEnabled();
    });
    clerk_.takePicture(u"19-settings-edit"_s);
    clerk_.click(u"CtrlCmd(1)"_s);
    clerk_.click(u"CtrlCmd(3)"_s);
}

void WindowSteps::visitAccounts() {
    current_ = u"looking at the accounts"_s;
    clerk_.click(u"CmdSet(1)"_s);
    clerk_.seeThat(u"the accounts"_s,
                   [](const QWidget& front) { return visible<QWidget>(front, u"FrmPsw"_s) != nullptr; });
    clerk_.takePicture(u"20-accounts"_s);
    clerk_.click(u"CtrlCmd(0)"_s);
    clerk_.seeThat(u"a new account"_s, [](const QWidget& front) {
        const auto* name = visible<QLineEdit>(front, u"text1(0)"_s);
        return name && name->isEnabled() && name->text().isEmpty();
    });
    clerk_.takePicture(u"21-accounts-edit"_s);
    clerk_.click(u"CtrlCmd(3)"_s);
    clerk_.click(u"CtrlCmd(9)"_s);
}

void WindowSteps::keepMasterData() {
    current_ = u"opening the master data"_s;
    open(1, u"Form1"_s);
    visitTitles();
    addUnit();
    addSlot();
    addClass();
    addEmployee();
    visitEmployeePages();
    findEmployee();
    clerk_.click(u"CtrlCmd5(12)"_s);
    awaitIdle();
    print(u"Entered a new unit, time slot, shift class and employee."_s);
}

void WindowSteps::visitTitles() {
    current_ = u"looking at the titles"_s;
    clerk_.takePicture(u"30-titles"_s);
    clerk_.click(u"CtrlCmd0(1)"_s);
    seeEdit(true);
    clerk_.takePicture(u"31-titles-edit"_s);
    clerk_.click(u"CtrlCmd0(3)"_s);
    seeEdit(false);
    chooseTab(u"SSTab1"_s, u"聘僱類別"_s);
    clerk_.takePicture(u"32-work-types"_s);
}

void WindowSteps::addUnit() {
    current_ = u"adding a unit"_s;
    chooseTab(u"SSTab1"_s, u"單位設定"_s);
    clerk_.takePicture(u"33-units"_s);
    clerk_.click(u"CtrlCmd1(0)"_s);
    seeEdit(true);
    enterInTurn({u"9000"_s, u"客服課"_s});
    clerk_.takePicture(u"34-units-new"_s);
    save(u"CtrlCmd1"_s);
}

void WindowSteps::addSlot() {
    current_ = u"adding a time slot"_s;
    chooseTab(u"SSTab1"_s, u"時段設定"_s);
    clerk_.takePicture(u"35-slots"_s);
    clerk_.click(u"CtrlCmd3(0)"_s);
    seeEdit(true);
    enterInTurn({u"T"_s, u"客服四卡"_s});
    clerk_.click(u"OptCT(4)"_s);
    const QStringList times{u"070000"_s, u"123100"_s, u"090000"_s, u"123000"_s,
                            u"133000"_s, u"180000"_s, u"123000"_s, u"230000"_s};
    for (int time = 0; time < times.size(); ++time)
        enter(u"TDBTime1(%1)"_s.arg(time), times.at(time));
    for (int position = 0; position < 4; ++position)
        clerk_.click(u"CheckT(%1)"_s.arg(position), [position](const QWidget& front) -> std::optional<Spot> {
            auto* box = visible<QCheckBox>(front, u"CheckT(%1)"_s.arg(position));
            return box ? std::optional(Spot{box, QPoint(10, box->height() / 2)}) : std::nullopt;
        });
    for (const auto& [box, minutes] : {std::pair{2, u"0"_s},
                                       {3, u"5"_s},
                                       {4, u"25"_s},
                                       {5, u"30"_s},
                                       {10, u"5"_s},
                                       {9, u"25"_s},
                                       {8, u"30"_s}})
        enter(u"Text4(%1)"_s.arg(box), minutes);
    // The list shows the choice of the slot before; the new one has it only when it is chosen.
    clerk_.click(u"Combo1"_s);
    clerk_.seeThat(u"the list of kinds"_s,
                   [](const QWidget& front) { return front.windowType() == Qt::Popup; });
    clerk_.press(Qt::Key_Return);
    clerk_.seeThat(u"the list closed"_s, [](const QWidget& front) { return front.objectName() == u"MDI"; });
    clerk_.takePicture(u"36-slots-new"_s);
    save(u"CtrlCmd3"_s);
}

void WindowSteps::addClass() {
    current_ = u"adding a shift class"_s;
    chooseTab(u"SSTab1"_s, u"班別設定"_s);
    clerk_.takePicture(u"37-classes"_s);
    clerk_.click(u"CtrlCmd4(0)"_s);
    seeEdit(true);
    enterInTurn({u"T01"_s, u"客服班"_s});
    clerk_.click(u"Search(0)"_s);
    clerk_.awaitWindow(u"QFrmTimeNo"_s);
    clerk_.press(Qt::Key_End, Qt::ControlModifier);
    clerk_.seeThat(u"the new time slot in the lookup"_s,
                   [](const QWidget& front) { return textOf(front, u"Label3"_s) == u"T"; });
    clerk_.takePicture(u"38-slot-lookup"_s);
    clerk_.click(u"Command1(0)"_s);
    enter(u"Text5(3)"_s, u"5"_s);
    enter(u"Text5(4)"_s, u"2"_s);
    clerk_.seeThat(u"the slot in its box"_s, [](const QWidget& front) {
        const auto* slot = visible<QLineEdit>(front, u"Text5(2)"_s);
        return slot && slot->text() == u"T";
    });
    clerk_.takePicture(u"39-classes-new"_s);
    save(u"CtrlCmd4"_s);
}

void WindowSteps::addEmployee() {
    current_ = u"adding an employee"_s;
    chooseTab(u"SSTab1"_s, u"員工資料"_s);
    clerk_.takePicture(u"40-employees"_s);
    clerk_.click(u"CtrlCmd5(0)"_s);
    seeEdit(true);
    // Code, name, identity number; past the sex; birth and arrival, each followed by its calendar.
    enterInTurn({NewEmployee, u"新進員"_s, u"A223456781"_s, {}, u"700115"_s, {}, u"990301"_s, {}});
    for (const auto& [box, code, label, name] :
         {std::tuple{3, u"9000"_s, u"Label12"_s, u"客服課"_s}, {4, u"T01"_s, u"Label13"_s, u"客服班"_s}}) {
        enter(u"Text6(%1)"_s.arg(box), code);
        clerk_.seeThat(u"the name of the code %1"_s.arg(code),
                       [&label, &name](const QWidget& front) { return textOf(front, label) == name; });
    }
    clerk_.takePicture(u"41-employees-new"_s);
    save(u"CtrlCmd5"_s);
}

void WindowSteps::visitEmployeePages() {
    current_ = u"turning the employee's pages"_s;
    clerk_.click(u"CtrlCmd5(1)"_s);
    seeEdit(true);
    int number = 42;
    for (const QString& page : {u"請假"_s, u"通訊"_s, u"考試經歷"_s, u"網頁"_s}) {
        chooseTab(u"SSTab2"_s, page);
        clerk_.takePicture(u"%1-employees-page"_s.arg(number++));
    }
    save(u"CtrlCmd5"_s);
}

void WindowSteps::findEmployee() {
    current_ = u"finding an employee"_s;
    clerk_.click(u"CtrlCmd5(6)"_s);
    clerk_.click(u"CtrlCmd5(5)"_s);
    clerk_.awaitWindow(u"QFrmEmpNO"_s);
    enter(u"Text1"_s, NewEmployee);
    clerk_.seeThat(u"the employee in the lookup"_s,
                   [](const QWidget& front) { return textOf(front, u"Label3"_s) == NewEmployee; });
    clerk_.takePicture(u"46-employee-lookup"_s);
    clerk_.click(u"Command1(0)"_s);
    clerk_.seeThat(u"the employee found"_s, [](const QWidget& front) {
        const auto* code = visible<QLineEdit>(front, u"Text6(0)"_s);
        return code && code->text() == NewEmployee;
    });
    clerk_.takePicture(u"47-employee-found"_s);
}

} // namespace pontrel::tour
