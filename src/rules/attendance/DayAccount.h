#pragma once

#include "rules/attendance/DayObserver.h"
#include "rules/attendance/EmployeeDay.h"
#include "rules/attendance/MonthStates.h"
#include "rules/attendance/PunchWindows.h"
#include "rules/attendance/SlotTimes.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace pontrel {

/// What is to be known of a day besides its calculation.
enum class Remark {
    NotCalculated,  ///< There is no row of the day.
    SlotUnknown,    ///< code: of the row's slot, which is no longer there.
    RosterOther,    ///< code: of the slot that the roster has for the day now.
    RosterNone,     ///< The roster no longer has the day.
    RosterRest,     ///< The roster has it as a day of rest now.
    OtherRow,       ///< code: of a further slot with a row of the day.
    PunchesGone,    ///< The row has punches, and none are there.
    PunchesChanged, ///< The day's view has other punches than the store; the row is told by the view.
    SlotChanged,
    CoverChanged, ///< Leave or write-offs have come or gone since, or the slot's times make more or less of
                  ///< them.
    CalculationFails, ///< text: the error in which the calculation ends.
    NotEmployed,      ///< text: the dates, or what there is of the employee, by which he is not calculated.
    TimesCarried,     ///< text: the times that the slot does not set, with what it takes from a slot before.
    ViewChanged,      ///< The same the other way round.
    PunchesUnlike,    ///< The row has other punches than store and view; it is told by itself.
    ListsDiffer,      ///< text: the list whose row is explained; the other one's of the day differs.
    PunchesThere,     ///< text: the times of the day's punches, where they are not what is told.
};
inline constexpr int RemarkCount = static_cast<int>(Remark::PunchesThere) + 1;

/// A list of results, from which a day is explained.
enum class DayList { Exceptions, Results };

struct DayRemark {
    Remark remark;
    QString text = {};
};

/// What a recalculation of the day would do to the row now.
struct Recalculation {
    enum class Outcome {
        Untouched, ///< It works on exceptions alone, and the day has none.
        Same,      ///< The row stays as it is.
        Changes,   ///< It stays an exception, with other figures.
        Clears,    ///< It is an exception no longer.
        Fails,     ///< It ends in an error.
        Alters,    ///< The row is no exception, and has other figures for one beside it.
        Removes    ///< The row goes, as it is none and another one of the day is.
    };
    Outcome outcome = Outcome::Untouched;
    DayRow after;
    std::vector<std::size_t> changed = {}; ///< Places of the columns that would change.
    QString failure = {}; ///< The error in which it ends; behind the day where it does not fail.
};

/// Leave of the day as it stands now, in minutes of the day.
struct LeaveSpan {
    int from = 0;
    int to = 0;
    QString name;
};

/// A punch of the day: the position that took it, 0 where none did.
struct DayPunch {
    int time = 0;
    int position = 0;
    std::optional<DayStep> step = {}; ///< Where it was told what became of it.
};

/// How the row of an employee and day came to what it holds.
struct DayAccount {
    QString EmpNo;
    QString EmpName;
    QString TimeNo; ///< Of the row; of the roster where there is no row.
    QString TimeName;
    QDate date;
    DayList list = DayList::Exceptions; ///< From which the day is explained.
    bool hasRow = false;
    bool isException = false;         ///< The slot's day stands among the exceptions.
    DayRow stored;                    ///< What the store holds.
    DayRow told;                      ///< What the steps come to; the same where nothing has changed since.
    std::optional<SlotTimes> slot;    ///< As it is now.
    std::vector<PunchWindow> windows; ///< Of the slot, as it is now.
    std::vector<DayStep> steps;       ///< In the order in which the calculation decided.
    std::vector<DayPunch> punches;
    std::vector<LeaveSpan> leave;
    std::vector<DayRemark> remarks;
    Recalculation recalculation;
    std::vector<MonthDay> month;
};

/// Explains what the store at that path holds of the employee's day; of several rows that of the slot or,
/// where it has none, the first; the row of that list, or where it has none, the other's. The calculation
/// itself runs over a copy of his rows in memory; the store is read at one moment, over a connection that is
/// closed when this returns, and stays as it is. Throws RunTimeError where the store cannot be read.
[[nodiscard]] DayAccount explainDay(const QString& path, const QString& EmpNo, QDate date,
                                    const QString& TimeNo = {}, DayList list = DayList::Exceptions);

} // namespace pontrel
