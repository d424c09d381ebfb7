#include "rules/attendance/DailyCalculation.h"
#include "rules/attendance/DayObserver.h"
#include "rules/attendance/DayRules.h"
#include "rules/attendance/Employment.h"
#include "rules/attendance/PunchAssignment.h"
#include "store/StagedCopy.h"
#include "store/StatementText.h"

namespace pontrel {

void DailyCalculation::CalcSlotLoop(QDate date, bool recalculating) {
    const Rows slots = database_.select(QStringLiteral(
        "Select TimeNo,CardType,StrIn1,StdT1,StdT2,EndOut2,StrIn3,StdT3,StdT4,EndOut4 ,ElstMin,ElstType,"
        "Cushion,Delay,Earlier,Cushion1,Delay1,Earlier1 ,StdC1 ,StdC2,StdC3,StdC4   from Base04 "));
    // Deliberate: one set of working values for all slots; where a row has a null time, the row before it
    // shines through.
    SlotTimes slot;
    DayFacts facts(database_, date);
    for (std::size_t row = 0; row < slots.count(); ++row) {
        slot.read(slots, row);
        if (recalculating)
            RecalcSlot(date, slot, facts);
        else
            AssignSlotPunches(date, slot, facts);
    }
}

void DailyCalculation::AssignSlotPunches(QDate date, const SlotTimes& slot, DayFacts& facts) {
    takeProgress();
    runStage(database_, [&] {
        const Rows employees = database_.select(
            QStringLiteral(
                "Select Rule03.EmpNo    From Base06,Rule03  Where Rule03.EmpNo = Base06.EmpNo     And "
                "Rule03.YMD "
                "=%1    And Rule03.TimeNo = %2    And  %3")
                .arg(dateLiteral(date), textLiteral(slot.TimeNo), employedOn(dateLiteral(date))));
        const PunchWindows windows(slot);
        for (const std::vector<Value>& employee : employees) {
            calculateEmployee(date, employee.at(0).toText(), slot, windows, facts);
            addProgressBelow100(2);
        }
        // In place of "Insert into Atte02  Select * from AtteTemp1": the same rows arrive, but staged rows
        // that are known to be there are passed over.
        copyStaged(database_, CopyTarget::Atte02);
    });
}

void DailyCalculation::calculateEmployee(QDate date, const QString& EmpNo, const SlotTimes& slot,
                                         const PunchWindows& windows, DayFacts& facts) {
    EmployeeDay day(database_, date, EmpNo, observer_);
    if (observer_ != nullptr)
        observer_->dayBegins(EmpNo, slot);
    if (facts.hasStagedRows(EmpNo))
        day.load();
    day.addRow(slot.TimeNo);
    bool viewed = false;
    // The rows are worked on in memory. An error in the middle leaves in the tables what was done before it.
    try {
        const PunchAssignment punches(facts.punchesOf(EmpNo), windows, observer_);
        viewed = true;
        punches.writeView(day);
        punches.writeTo(day);
        MarkLeaveCover(day, facts.leaveOf(EmpNo), slot);
        MarkWriteOffCover(day, facts.writeOffsOf(EmpNo));
        CalcLateEarly(day, slot);
        ClassifyExceptions(day, slot.CardType, recalcDone_);
    } catch (const RunTimeError&) {
        day.storeQuietly();
        if (!viewed)
            PunchAssignment::writeBlankViewQuietly(day);
        throw;
    }
}

void DailyCalculation::RecalcSlot(QDate date, const SlotTimes& slot, DayFacts& facts) {
    takeProgress();
    runStage(database_, [&] {
        const Rows employees = database_.select(
            QStringLiteral("Select EmpNo from Atte03  where UseDate = %1     and TimeNo = %2 Order by EmpNo ")
                .arg(dateLiteral(date), textLiteral(slot.TimeNo)));
        for (const std::vector<Value>& employee : employees) {
            recalculateEmployee(date, employee.at(0).toText(), slot, facts);
            addProgressBelow100(2);
        }
    });
}

void DailyCalculation::recalculateEmployee(QDate date, const QString& EmpNo, const SlotTimes& slot,
                                           DayFacts& facts) {
    EmployeeDay day(database_, date, EmpNo, observer_);
    if (observer_ != nullptr)
        observer_->dayBegins(EmpNo, slot);
    day.load();
    try {
        MarkLeaveCover(day, facts.leaveOf(EmpNo), slot);
        MarkWriteOffCover(day, facts.writeOffsOf(EmpNo));
        CalcLateEarly(day, slot);
        ClassifyExceptions(day, slot.CardType, true);
    } catch (const RunTimeError&) {
        day.storeQuietly();
        throw;
    }
}

} // namespace pontrel
