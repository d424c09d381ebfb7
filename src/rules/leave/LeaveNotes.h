#pragma once

#include "rules/ActionHost.h"
#include "rules/leave/LeaveValues.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "store/Recordset.h"

#include <QDate>
#include <QString>
#include <QTime>

#include <cstdint>
#include <functional>

namespace pontrel {

/// A leave as it is entered: who, of what type, from when to when. A date or time may be none, as that of an
/// empty box.
struct Leave {
    QString EmpNo;
    QString HoliNo;
    QDate HoliBegDate;
    QDate HoliEndDate;
    QTime HoliBegTime;
    QTime HoliEndTime;
};

/// Throws error 94 where a date or time is none: a null does not fit the routines' own.
void requireWhole(const Leave& leave);

/// What a leave covers of one day.
struct LeaveDay {
    QDate HoliDate;
    QTime BegTime;
    QTime EndTime;
    std::int16_t HoliHours = 0; ///< Whole hours, begun ones counting in full.
    QString TimeNo;             ///< The rostered slot; empty on a day without.
};

/// The routines that number leave notes, test them and split them into days. They work on the program's one
/// set of working values and each looks up anew what it needs of them. All throw RunTimeError: 3075 for a
/// text that breaks its statement, 94 for an invalid date or time and for a slot's standard time that is
/// null.
class LeaveNotes {
  public:
    LeaveNotes(Database& database, ActionHost& host, LeaveValues& values)
        : database_(database), host_(host), values_(values) {}

    /// The next note number of the day: the day as yyyymmdd and four digits, from 0001. Nothing reserves it,
    /// and behind 9999 it runs on into the numbers of the next day.
    [[nodiscard]] QString NewBusNo(QDate today = clock::today());

    /// Whether the employee has leave on a day of the range already, whatever its type and times: one row of
    /// it where a note is being added, two where one is being edited, since one row is its own.
    [[nodiscard]] bool IsLeaveDuplicate(const QString& EmpNo, QDate HoliBegDate, QDate HoliEndDate,
                                        EditMode mode);

    /// Takes gHoliDeduct from the leave type. An unknown one brings a message and leaves it as it was.
    /// Returns whether the type is known.
    bool LoadHoliDeduct(const QString& HoliNo);

    /// Takes standard times and code of the slot that the employee is rostered on, or without a roster row
    /// those of the first slot there is, with an empty code. Where there are no slots all stays as it was.
    void LoadDaySlot(QDate day, const QString& EmpNo);

    /// Whole hours of all days of the leave. Writes nothing. Throws also 6 for more than 32767.
    [[nodiscard]] std::int16_t CountLeaveHours(const Leave& leave);

    /// Writes a row for each day of the leave under gBusNo. An error leaves the rows of the days before it.
    void InsertLeaveDays(const Leave& leave);

    // What both do behind LoadHoliDeduct(), for who counts and writes from one walk.

    /// Gives the routine each day of the leave in turn, by gHoliDeduct as it stands.
    void walkDays(const Leave& leave, const std::function<void(const LeaveDay&)>& take);
    /// Writes a day of the leave under gBusNo.
    void insertDay(const Leave& leave, const LeaveDay& day);

  private:
    void takeStandardTimes(const Rows& slot, std::size_t column);

    Database& database_;
    ActionHost& host_;
    LeaveValues& values_;
};

} // namespace pontrel
