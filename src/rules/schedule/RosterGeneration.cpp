#include "rules/schedule/RosterGeneration.h"

#include "rules/Session.h"
#include "store/StatementText.h"

#include <algorithm>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QString RestDay; ///< A rest day's slot is the empty text, not a null.

QString between(const QString& low, const QString& high) {
    return u" Between "_s + textLiteral(low) + u" and "_s + textLiteral(high);
}

} // namespace

RosterGeneration::RosterGeneration(Database& database, RosterHost& host, const RosterGlobals& globals)
    : database_(database), host_(host), globals_(globals) {}

void RosterGeneration::GenerateRoster(const RosterRange& range) {
    // Deliberate: whether the start lies before the end is not tested.
    if (!range.start.isValid() || !range.end.isValid()) {
        host_.tell(u"日期輸入錯誤,無法產生班別表,請重新輸入日期........"_s, WarningTitle);
        return;
    }
    current_ = range.start;
    steps_ = {};
    restOnHolidays_ = false;
    host_.setPointer(Pointer::Hourglass);
    employees_ = u"EmpNo"_s + between(range.firstEmpNo, range.lastEmpNo);
    // Employees who have left count as well.
    const Rows classes =
        database_.select(u"select Distinct ClsNo From Base06 Where ClsNo"_s +
                         between(range.firstClsNo, range.lastClsNo) + u"      and "_s + employees_);
    for (const auto& row : classes) {
        globals_.gPickClsNo = row.at(0).joined();
        readSteps();
        // Deliberate: the day is not set back for the next class; the first one of the range alone is filled.
        fillDates(range.end);
        if (restOnHolidays_)
            blankHolidays();
    }
    host_.setPointer(Pointer::Normal);
    host_.tell(u"排班表已產生完成,請按<確定>繼續......."_s, WarningTitle);
    host_.refreshRoster();
}

void RosterGeneration::readSteps() {
    for (std::size_t index = 0; index < StepCount; ++index) {
        const QString n = QString::number(index + 1);
        const Rows found =
            database_.select(u"SELECT TimeNo"_s + n + u", TimeDay"_s + n + u", TimeRest"_s + n +
                             u",ChkHoli     From Base05    Where ClsNo ="_s +
                             textLiteral(globals_.gPickClsNo) + u"       and TimeNo"_s + n + u" <> null"_s);
        // A step that the class does not use keeps what the class before left in it.
        for (const auto& row : found) {
            Step& step = steps_.at(index);
            step.slot = row.at(0).toText();
            step.days = row.at(1).toInt16();
            step.rests = row.at(2).toInt16();
            restOnHolidays_ = row.at(3).toBoolean();
        }
    }
}

void RosterGeneration::fillDates(QDate end) {
    // Deliberate: the end is looked at where a rotation begins, so that the last one is finished past it.
    while (end >= current_) {
        for (const Step& step : steps_) {
            for (int day = 0; day < step.days; ++day)
                writeWorkDay(step);
            for (int day = 0; day < step.rests; ++day)
                writeRestDay();
        }
    }
}

void RosterGeneration::nextDay() {
    current_ = current_.addDays(1);
    host_.showDay(current_);
}

void RosterGeneration::writeWorkDay(const Step& step) {
    {
        runStage(database_, [&] { writeWorkRows(step); });
    }
    nextDay();
}

void RosterGeneration::writeWorkRows(const Step& step) {
    const Rows employees = database_.select(u"select EmpNo From Base06 Where "_s + employees_ +
                                            u"      and ClsNo = "_s + textLiteral(globals_.gPickClsNo));
    if (employees.isEmpty())
        return;
    const auto codeOf = [](const std::vector<Value>& row) { return row.at(0).joined(); };
    if (std::any_of(employees.begin(), employees.end(),
                    [&](const auto& row) { return breaksLiteral(codeOf(row)); })) {
        // A code that breaks its statement stops the run at its employee, with those before it written.
        for (const auto& row : employees) {
            globals_.gPickEmpNo = codeOf(row);
            if (CountRosterRow(globals_.gPickEmpNo) > 0)
                UpdateRosterRow(step.slot, globals_.gPickClsNo, dateLiteral(current_), globals_.gPickEmpNo);
            else
                InsertRosterRow(step.slot, globals_.gPickClsNo, dateLiteral(current_), globals_.gPickEmpNo);
        }
        return;
    }
    // The same rows in two statements: existing ones are rewritten, also those of employees who have left,
    // and the insert leaves them alone for their key.
    globals_.gPickEmpNo = codeOf(employees.row(0));
    const QString day = dateLiteral(current_);
    const QString ClsNo = textLiteral(globals_.gPickClsNo);
    const QString slot = textLiteral(step.slot);
    database_.execute(u"update Rule03,Base06 set Rule03.[TimeNo] ="_s + slot +
                      u" where Rule03.EmpNo =Base06.EmpNo      and Base06.ClsNo = "_s + ClsNo +
                      u"    and  Rule03.ymd = "_s + day + u"    and  Base06."_s + employees_);
    database_.execute(u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo,  "_s + day +
                      u", "_s + slot + u"  From Base06  where Base06.ClsNo = "_s + ClsNo +
                      u"    and  Base06."_s + employees_ + u"    and  isnull(Base06.LeaveDate) = True"_s);
    globals_.gPickEmpNo = codeOf(employees.row(employees.count() - 1));
}

void RosterGeneration::writeRestDay() {
    // Deliberate: for the employee left by the last work day alone, and not for the class.
    {
        runStage(database_, [&] {
            if (CountRosterRow(globals_.gPickEmpNo) < 1)
                InsertRosterRow(RestDay, globals_.gPickClsNo, dateLiteral(current_), globals_.gPickEmpNo);
            else
                UpdateRosterRow(RestDay, globals_.gPickClsNo, dateLiteral(current_), globals_.gPickEmpNo);
        });
    }
    nextDay();
}

void RosterGeneration::blankHolidays() {
    // Deliberate: by the shared dates, not by those of the run, and for the last employee alone.
    const Rows holidays =
        database_.select(u"SELECT hymd from Rule01 where hymd between "_s + dateLiteral(globals_.gDate1) +
                         u" and "_s + dateLiteral(globals_.gDate2));
    runStage(database_, [&] {
        for (const auto& row : holidays)
            UpdateRosterRow(RestDay, globals_.gPickClsNo, dateLiteral(row.at(0).joined()),
                            globals_.gPickEmpNo);
    });
}

std::int64_t RosterGeneration::CountRosterRow(const QString& EmpNo) {
    const Rows counted = database_.select(
        u"select count(*) as cnt From Rule03,Base06 where Base06.ClsNo ="_s +
        textLiteral(globals_.gPickClsNo) + u"    and  Rule03.ymd = "_s + dateLiteral(current_) +
        u"    and Base06.EmpNo = Rule03.EmpNo     and Rule03.EmpNo = "_s + textLiteral(EmpNo));
    return counted.at(0, 0).toInteger();
}

void RosterGeneration::InsertRosterRow(const QString& TimeNo, const QString& ClsNo, const QString& day,
                                       const QString& EmpNo) {
    // An employee who has left gets no new row, without a word.
    database_.execute(u"Insert into Rule03( [EmpNo],[YMD],[TimeNo]) Select Base06.EmpNo,  "_s + day +
                      u", "_s + textLiteral(TimeNo) + u"  From Base06  where Base06.ClsNo = "_s +
                      textLiteral(ClsNo) + u"    and  Base06.EmpNo = "_s + textLiteral(EmpNo) +
                      u"    and  isnull(Base06.LeaveDate) = True"_s);
}

void RosterGeneration::UpdateRosterRow(const QString& TimeNo, const QString& ClsNo, const QString& day,
                                       const QString& EmpNo) {
    database_.execute(u"update Rule03,Base06 set Rule03.[TimeNo] ="_s + textLiteral(TimeNo) +
                      u" where Rule03.EmpNo =Base06.EmpNo      and Base06.ClsNo = "_s + textLiteral(ClsNo) +
                      u"    and  Rule03.ymd = "_s + day + u"    and  Rule03.EmpNo = "_s + textLiteral(EmpNo));
}

} // namespace pontrel
