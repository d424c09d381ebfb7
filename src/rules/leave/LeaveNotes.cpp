#include "rules/leave/LeaveNotes.h"

#include "rules/attendance/Minutes.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"

#include <array>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr double NumbersOfDay = 10'000;
constexpr std::int16_t HoursOfDay = 8;

void requireDates(QDate first, QDate last) {
    if (!first.isValid() || !last.isValid())
        throw runTimeError(error::InvalidNull, u"date"_s);
}

/// Hours of a stretch of a day. The midday break is taken off where the stretch begins at or before it and
/// ends at or after its end, and not otherwise.
std::int16_t hoursOf(QTime begin, QTime end, const LeaveValues& slot) {
    if (end < slot.StdT3 || begin > slot.StdT2)
        return MinutesToHoursUp(MinutesBetween(begin, end));
    return MinutesToHoursUp(add16(MinutesBetween(begin, slot.StdT2), MinutesBetween(slot.StdT3, end)));
}

/// The times of a leave from day to day: what no rule sets stays as the day before left it.
class DaySplit {
  public:
    DaySplit(const Leave& leave, const LeaveValues& values)
        : leave_(leave)
        , values_(values)
        , several_(leave.HoliBegDate < leave.HoliEndDate)
        , begin_(leave.HoliBegTime)
        , end_(leave.HoliEndTime) {}

    /// The next day, whose slot has been looked up.
    [[nodiscard]] LeaveDay take(QDate day) {
        const std::int16_t hours = values_.gDayRostered ? rostered(day) : unrostered(day);
        firstDay_ = false;
        return {day, begin_, end_, hours, values_.TimeNo};
    }

  private:
    std::int16_t rostered(QDate day) {
        // The times of a single day stand as they were entered, within the slot or not.
        if (several_) {
            if (!firstDay_)
                begin_ = values_.StdT1;
            endDay(day);
        }
        return hoursOf(begin_, end_, values_);
    }

    std::int16_t unrostered(QDate day) {
        if (several_) {
            // Deliberate: the begin of a day in the middle stays that of the day before, unlike on a rostered
            // one.
            endDay(day);
            return values_.gHoliDeduct ? std::int16_t{0} : hoursOf(begin_, end_, values_);
        }
        begin_ = values_.StdT1;
        end_ = values_.StdT4;
        return values_.gHoliDeduct ? std::int16_t{0} : HoursOfDay;
    }

    void endDay(QDate day) {
        if (day < leave_.HoliEndDate) {
            end_ = values_.StdT4;
        } else {
            begin_ = values_.StdT1;
            end_ = leave_.HoliEndTime;
        }
    }

    const Leave& leave_;
    const LeaveValues& values_;
    bool several_;
    bool firstDay_ = true;
    QTime begin_;
    QTime end_;
};

} // namespace

void requireWhole(const Leave& leave) {
    requireDates(leave.HoliBegDate, leave.HoliEndDate);
    if (!leave.HoliBegTime.isValid() || !leave.HoliEndTime.isValid())
        throw runTimeError(error::InvalidNull, u"time"_s);
}

QString LeaveNotes::NewBusNo(QDate today) {
    // There is no greatest number where none has the prefix, so that nothing need be counted.
    static const StatementForm greatest(
        u"SELECT max(BusNo) as max FROM Holi03 WHERE BusNo LIKE '20010305' & '*'"_s);
    const QString prefix = formatDate(today, u"yyyymmdd"_s);
    const std::array<Value, 2> pattern{prefix, u"*"_s};
    const Rows found = database_.select(greatest, pattern);
    const Value& max = found.at(0, 0);
    const double number =
        max.isNull() ? leadingNumber(prefix) * NumbersOfDay + 1 : leadingNumber(max.toText()) + 1;
    return Value(number).joined();
}

bool LeaveNotes::IsLeaveDuplicate(const QString& EmpNo, QDate HoliBegDate, QDate HoliEndDate, EditMode mode) {
    requireDates(HoliBegDate, HoliEndDate);
    for (QDate day = HoliBegDate; day <= HoliEndDate; day = day.addDays(1)) {
        const Rows counted = database_.select(u"select count(*) as c from Holi04 where EmpNo="_s +
                                              textLiteral(EmpNo) + u"   and HoliDate ="_s + dateLiteral(day));
        const std::int64_t c = counted.at(0, 0).toInteger();
        if ((mode == EditMode::Add && c > 0) || (mode == EditMode::Edit && c >= 2))
            return true;
    }
    return false;
}

bool LeaveNotes::LoadHoliDeduct(const QString& HoliNo) {
    const Rows type =
        database_.select(u"SELECT HoliDeduct From Holi01 WHERE HoliNo = "_s + textLiteral(HoliNo));
    if (type.isEmpty())
        host_.tell(u"無此假別代碼,請重新輸入......"_s, FaultTitle);
    else
        values_.gHoliDeduct = type.at(0, 0).toBoolean();
    return !type.isEmpty();
}

void LeaveNotes::LoadDaySlot(QDate day, const QString& EmpNo) {
    static const StatementForm rosteredSlot(
        u"SELECT Base04.TimeNo as TimeNo,StdT1, StdT2,StdT3, StdT4      From Rule03, Base04"
        "    Where Rule03.ymd = #2001/3/5#         and Rule03.empno = '00001'"
        "        and Rule03.timeno = base04.timeno"_s);
    if (!day.isValid())
        throw runTimeError(error::Syntax, u"date"_s);
    const std::array<Value, 2> place{day, EmpNo};
    const Rows rostered = database_.select(rosteredSlot, place);
    if (!rostered.isEmpty()) {
        values_.TimeNo = rostered.at(0, 0).toText();
        takeStandardTimes(rostered, 1);
        values_.gDayRostered = true;
        return;
    }
    const Rows first = database_.select(u"SELECT top 1 StdT1, StdT2,StdT3, StdT4      From base04"_s);
    if (first.isEmpty())
        return;
    values_.TimeNo = u""_s;
    takeStandardTimes(first, 0);
    values_.gDayRostered = false;
}

void LeaveNotes::takeStandardTimes(const Rows& slot, std::size_t column) {
    for (QTime* time : {&values_.StdT1, &values_.StdT2, &values_.StdT3, &values_.StdT4})
        *time = slot.at(0, column++).toTime();
}

std::int16_t LeaveNotes::CountLeaveHours(const Leave& leave) {
    requireWhole(leave);
    LoadHoliDeduct(leave.HoliNo);
    std::int16_t hours = 0;
    walkDays(leave, [&hours](const LeaveDay& day) { hours = add16(hours, day.HoliHours); });
    return hours;
}

void LeaveNotes::InsertLeaveDays(const Leave& leave) {
    requireWhole(leave);
    LoadHoliDeduct(leave.HoliNo);
    walkDays(leave, [&](const LeaveDay& day) { insertDay(leave, day); });
}

void LeaveNotes::walkDays(const Leave& leave, const std::function<void(const LeaveDay&)>& take) {
    DaySplit split(leave, values_);
    for (QDate day = leave.HoliBegDate; day <= leave.HoliEndDate; day = day.addDays(1)) {
        LoadDaySlot(day, leave.EmpNo);
        take(split.take(day));
    }
}

void LeaveNotes::insertDay(const Leave& leave, const LeaveDay& day) {
    static const StatementForm form(
        u"Insert Into Holi04(BusNo,EmpNo, HoliNo, HoliDate, BegTime, EndTime, HoliHours,TimeNo)"
        "Values('','','','2000/1/1','08:00:00','17:00:00',8,'')"_s);
    const std::array<Value, 8> values{values_.BusNo(), leave.EmpNo, leave.HoliNo,  day.HoliDate,
                                      day.BegTime,     day.EndTime, day.HoliHours, day.TimeNo};
    database_.execute(form, values);
}

} // namespace pontrel
