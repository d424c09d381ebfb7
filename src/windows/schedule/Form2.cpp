#include "windows/schedule/Form2.h"

#include "app/CodeCombo.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/TwoLists.h"
#include "app/WindowRegistry.h"
#include "app/controls/OptionButton.h"
#include "app/controls/TDBCalendar.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TabPages.h"
#include "rules/ActionHost.h"
#include "rules/CodeLength.h"
#include "rules/Session.h"
#include "store/Clock.h"
#include "store/DataSource.h"
#include "store/Format.h"
#include "store/StatementText.h"

#include <QLabel>
#include <QListWidget>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QString DaysOff = u"nowork"_s;
constexpr int NewSlot = 10; ///< Of Combo2: the slot that the adjustment sets.

} // namespace

void Form2::registerWindow() {
    registerModuleWindow(2, [](QWidget* parent) { return new Form2(parent); });
}

Form2::~Form2() = default;

void Form2::onLoad() {
    OpenDB();
    const bool opened = openTrapped([this] {
        TDBC1->setUpdatesEnabled(false);
        TDBC1->createGroup(DaysOff, u"放假日"_s);
        readDaysOff();
        TDBC1->showGroup(DaysOff);
        TDBC1->setDate(clock::today());
        TDBC1->setUpdatesEnabled(true);
        Data1->setDatabaseName(storePath());
        Data1->setRecordSource(u"Rule03"_s);
        Data1->Refresh();
        Data1->MoveLastAndFirst();
        gDate1 = clock::today();
        gDate2 = clock::today();
        fillCodeLists(0, ComboCount - 1);
    });
    if (!opened)
        UnlockToolbar();
}

void Form2::onUnload() {
    CloseDB();
    UnlockToolbar();
}

void Form2::readDaysOff() {
    TDBC1->clearDays(DaysOff);
    for (const auto& row : sharedDatabase().select(u"select hymd from Rule01"_s))
        TDBC1->addDay(DaysOff, row.at(0).toDate());
}

void Form2::TDBC1_Pick(QDate day) {
    const QString literal = dateLiteral(day);
    Database& database = sharedDatabase();
    const Rows counted = database.select(u"select count(*) as cnt from Rule01 where hymd = "_s + literal);
    if (counted.at(0, 0).toInteger() < 1) {
        database.execute(u"insert into Rule01(hymd)  values("_s + literal + u")"_s);
        TDBC1->addDay(DaysOff, day);
    } else {
        database.execute(u"delete * from Rule01 where hymd ="_s + literal);
        readDaysOff();
    }
}

void Form2::SSTab1_Click() {
    // Deliberate: the lists grow by a full set at each visit.
    if (SSTab1->currentIndex() == GenerationTab)
        fillCodeLists(0, 7);
    else if (SSTab1->currentIndex() == AdjustmentTab)
        fillCodeLists(8, NewSlot);
}

void Form2::fillCodeLists(int first, int last) {
    const auto fill = [&](const QString& statement, std::vector<int> combos) {
        std::erase_if(combos, [&](int index) { return index < first || index > last; });
        if (combos.empty())
            return;
        const QStringList entries = codeEntries(sharedDatabase(), statement);
        for (const int index : combos)
            Combo2.at(static_cast<std::size_t>(index))->addEntries(entries);
    };
    fill(u"SELECT EmpNo, EmpName   From Base06  where isnull(LeaveDate) = true "_s, {0, 1, 4, 5});
    fill(u"SELECT ClsNo, ClassName   From Base05 "_s, {2, 3});
    fill(u"SELECT TimeNo, TimeName   From Base04 "_s, {6, 7, 8, 9, NewSlot});
}

QString Form2::combo(int index) const {
    return Combo2.at(static_cast<std::size_t>(index))->currentText();
}

QString Form2::code(int index) const {
    return textLiteral(combo(index));
}

QString Form2::day(int index) const {
    return dateLiteral(dates_.at(static_cast<std::size_t>(index)).date->date());
}

void Form2::CmdCal_Click() {
    RosterGeneration generation(sharedDatabase(), *this, {gPickClsNo, gPickEmpNo, gDate1, gDate2});
    generation.GenerateRoster({.firstEmpNo = combo(0),
                               .lastEmpNo = combo(1),
                               .start = dates_[0].date->date(),
                               .end = dates_[1].date->date(),
                               .firstClsNo = combo(2),
                               .lastClsNo = combo(3)});
}

void Form2::CmdQuery_Click() {
    setHourglass(true);
    const QString before = Data1->RecordSource();
    bool ran = false;
    try {
        Data1->setRecordSource(u"select * from rule03 where EmpNo Between "_s + code(4) + u" and "_s +
                               code(5) + u"    and Ymd Between "_s + day(2) + u" and "_s + day(3) +
                               u"     and TimeNo Between "_s + code(6) + u" and "_s + code(7) +
                               u"Order by ymd,empno,timeno"_s);
        Data1->Refresh();
        ran = true;
        Data1->MoveLast(); // An empty result is an error here, and told as such.
        Data1->MoveFirst();
    } catch (const RunTimeError&) {
        // A source that cannot run would end the next generation, which runs it again.
        if (!ran)
            Data1->setRecordSource(before);
        MsgBox(u"查無此資料,請重新輸入查詢條件........"_s, WarningTitle);
    }
    setHourglass(false);
}

void Form2::Command2_Click() {
    Option1[0]->setChecked(true);
    Option1_Click();
    lists_->clear();
    QStringList entries;
    const Rows employees = sharedDatabase().select(
        u"SELECT Rule03.EmpNo, Base06.EmpName,Rule03.TimeNo   From Base06,Rule03  where "
        u"isnull(Base06.LeaveDate) = "
        u"True     and Rule03.EmpNo = Base06.EmpNo     and Rule03.Ymd = "_s +
        day(4) + u"     and Rule03.TimeNo Between "_s + code(8) + u" and "_s + code(9));
    for (const auto& row : employees)
        entries << row.at(0).joined() + u"-"_s + row.at(1).joined() + u"-"_s + row.at(2).joined();
    lists_->setEntries(entries);
}

void Form2::Option1_Click() {
    const bool works = Option1[1]->isChecked();
    CodeCombo& slot = *Combo2[NewSlot];
    if (!works)
        slot.setEditText(QString());
    Lb1_5->setEnabled(works);
    slot.setEnabled(works);
}

void Form2::Command3_Click() {
    const QStringList chosen = lists_->chosen();
    if (chosen.isEmpty()) {
        MsgBox(u"請選擇欲修改時段之員工代碼"_s, WarningTitle);
        return;
    }
    Database& database = sharedDatabase();
    const int LenEmpNo = readLenEmpNo(database);
    for (int entry = 0; entry < chosen.size(); ++entry) {
        lists_->list2()->setCurrentRow(entry, QItemSelectionModel::ClearAndSelect);
        // Deliberate: the code is cut by its length and not at the hyphen.
        const QString EmpNo = codeOfEntry(chosen.at(entry), LenEmpNo);
        database.execute(u"Update Rule03 Set TimeNo = "_s + code(NewSlot) + u" Where EmpNo = "_s +
                         textLiteral(EmpNo) + u"      and Ymd = "_s + day(4));
    }
}

void Form2::setPointer(Pointer pointer) {
    WindowHost::setPointer(pointer);
    if (pointer == Pointer::Normal)
        DoneUpTo->clear();
}

void Form2::showDay(QDate day) {
    DoneUpTo->setText(u"排至"_s + shortDate(day.addDays(-1)));
    DoneUpTo->repaint(); // no event is worked off while the run lasts
}

void Form2::refreshRoster() {
    Data1->Refresh();
}

} // namespace pontrel
