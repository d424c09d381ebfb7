#include "windows/leave/LeaveNotePage.h"

#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/Prompts.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "rules/Session.h"
#include "rules/leave/LeaveBalance.h"
#include "store/Clock.h"
#include "store/DataSource.h"
#include "store/Format.h"
#include "store/StatementText.h"
#include "windows/leave/LeaveTab.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace pontrel {

using namespace Qt::StringLiterals;

const QString LeaveNotePage::BalanceColumns =
    u"ThisYearHD,ThisYearUse,ThisYearLeft,LastYearHD,LastYearUse,LastYearLeft,"
    "LeaveHD,LeaveUse,LeaveLeft,SickHD,SickUse,SickLeft"_s;

RecordRules LeaveNotePage::rules() {
    return {.alsoWithRows = {BarAction::Query}, .printTab = LeaveReportsTab, .deleteEnd = DeleteEnd::Next};
}

RecordSteps LeaveNotePage::steps() {
    return {.afterAdd = [this] { startNote(); },
            .afterEdit = [this] { takeBusNo(); },
            .beforeSave = [this] { return saveDays(); },
            .afterSave = [this] { showBalancesOfEmployee(); },
            .beforeDelete = {[this] { takeBusNo(); }, [this] { deleteDays(); }, [this] { Data2->Refresh(); }},
            .afterMove =
                [this] {
                    takeBusNo();
                    showDaysOfNote();
                },
            .query = [this] { findNote(); },
            .refresh =
                [this] {
                    source().Refresh();
                    Data2->Refresh();
                }};
}

void LeaveNotePage::connectControls(FormState& form) {
    for (const std::size_t end : {Begin, End}) {
        form.watch.onLostFocus(dates_[end].mask, [this, end] { maskLeft(end); });
        form.watch.onLostFocus(dates_[end].date, [this, end] {
            if (day(end).isValid())
                fillTime(end, day(end)); // over a time that was entered, too, unlike the mask
        });
    }
    onEvent(CmdHD, &QPushButton::clicked, this, [this] { CmdHD_Click(); });
    onEvent(dayRows_, &TDBGrid::rowChosen, this, [this] { findNoteOfDay(); });
}

QDate LeaveNotePage::day(std::size_t end) const {
    return dates_.at(end).date->date();
}

Leave LeaveNotePage::entered() const {
    return {employee_->text(), type_->text(),           day(Begin),
            day(End),          TDBTime1[Begin]->time(), TDBTime1[End]->time()};
}

LeaveNotes LeaveNotePage::notes() {
    return {sharedDatabase(), host_, gLeaveValues};
}

// The note
// ------------------------------------------------------------------------------------------------------------

void LeaveNotePage::startNote() {
    gLeaveValues.setBusNo(notes().NewBusNo());
    BusNo->setText(gLeaveValues.BusNo());
    signNote();
    clearNames();
    clearMasks();
    for (TDBTime* time : TDBTime1)
        time->clear();
}

void LeaveNotePage::signNote() {
    account_->setText(gAccount);
    entryDate_->setText(shortDate(clock::today()));
    entryKind_->setText(Value(true).joined());
}

SaveStep LeaveNotePage::saveDays() {
    if (day(Begin).isValid() && day(End).isValid() && day(End) < day(Begin)) {
        refusePeriod();
        return SaveStep::StayInEdit;
    }
    const Leave leave = entered();
    const EditMode mode = source().editMode();
    const std::int16_t hours = notes().CountLeaveHours(leave);
    if (notes().IsLeaveDuplicate(leave.EmpNo, leave.HoliBegDate, leave.HoliEndDate, mode) &&
        !host_.confirm(u"假單重複!!是否繼續存檔?"_s, WarningTitle))
        return SaveStep::CancelRow;
    if (mode == EditMode::Edit)
        deleteDays();
    // Deliberate: the day rows are there ahead of their note, and stay where it cannot be saved.
    notes().InsertLeaveDays(leave);
    showDaysOfNote();
    hours_->setText(Value(numberOfHours(hours)).joined());
    signNote();
    return SaveStep::Save;
}

void LeaveNotePage::refusePeriod() {
    host_.tell(u"終止日期不可小於開始日期,請重新輸入"_s, WarningTitle);
    FocusWatch::putBack(*dates_[End].mask);
}

void LeaveNotePage::deleteDays() {
    sharedDatabase().execute(u"delete * from Holi04 where BusNo = "_s + textLiteral(gLeaveValues.BusNo()));
}

void LeaveNotePage::takeBusNo() {
    gLeaveValues.setBusNo(BusNo->text());
}

// What is looked up
// ------------------------------------------------------------------------------------------------------------

void LeaveNotePage::showDaysOfNote() {
    Data2->setRecordSource(u"select * from Holi04 where BusNo ="_s + textLiteral(gLeaveValues.BusNo()));
    Data2->Refresh();
}

void LeaveNotePage::findNote() {
    gLeaveValues.setBusNo(inputBox(u"請輸入假單編號:"_s, u"查詢"_s).value_or(QString()));
    source().FindFirst(u"BusNo ="_s + textLiteral(gLeaveValues.BusNo()));
    if (source().recordset().NoMatch())
        host_.tell(u"無此假單編號!請重新輸入"_s, FaultTitle);
}

void LeaveNotePage::findNoteOfDay() {
    if (source().editMode() != EditMode::None)
        return; // a note being edited is not left, nor its number lost, for a look at another one
    gLeaveValues.setBusNo(Data2->recordset().field(u"BusNo"_s).joined());
    source().FindFirst(u"BusNo ="_s + textLiteral(gLeaveValues.BusNo()));
}

void LeaveNotePage::CmdHD_Click() {
    // Whichever button ends the lookup: a cancel shows the days of who was picked before.
    Lookup::ask(LookupKind::QFrmEmpNO, window());
    Data2->setRecordSource(u"select * from Holi04 where EmpNo ="_s + textLiteral(gPickEmpNo) +
                           u" order by HoliDate desc "_s);
    Data2->Refresh();
}

void LeaveNotePage::maskLeft(std::size_t end) {
    const auto typed = DatePair::dateOf(dates_.at(end).mask->value());
    if (!typed)
        return;
    if (end == End) {
        // Of two that were typed: a begin that no mask can hold would let nobody out of this one.
        const auto begin = DatePair::dateOf(dates_[Begin].mask->value());
        if (begin && *typed < *begin)
            return refusePeriod();
    } else if (dates_[End].mask->value().isEmpty()) {
        dates_[End].mask->setValue(dates_[Begin].mask->value());
    }
    if (TDBTime1.at(end)->isNull())
        fillTime(end, *typed);
}

void LeaveNotePage::fillTime(std::size_t end, QDate day) {
    notes().LoadDaySlot(day, employee_->text());
    TDBTime1.at(end)->setTime(end == Begin ? gLeaveValues.StdT1 : gLeaveValues.StdT4);
}

// The balances
// ------------------------------------------------------------------------------------------------------------

void LeaveNotePage::showBalances(const Rows& employee) {
    const QStringList columns = BalanceColumns.split(u',');
    for (std::size_t index = 0; index < balances_.size(); ++index) {
        const Value& figure = employee.at(0, columns.at(static_cast<qsizetype>(index)));
        balances_.at(index)->setText(figure.isNull() ? u"0"_s : figure.joined());
    }
}

void LeaveNotePage::showBalancesOfEmployee() {
    const Rows employee = sharedDatabase().select(
        u"SELECT "_s + BalanceColumns + u" FROM Base06 WHERE EmpNo ="_s + textLiteral(employee_->text()));
    if (!employee.isEmpty())
        showBalances(employee);
}

} // namespace pontrel
