#pragma once

#include "rules/leave/LeaveDesk.h"
#include "rules/overtime/OvertimeBatch.h"
#include "rules/writeoff/WriteOffBatch.h"
#include "rules/writeoff/WriteOffCounts.h"
#include "store/JoinedPlaces.h"

namespace pontrel::test {

// The leave
// ------------------------------------------------------------------------------------------------------------

inline const QString LeaveNumber = u"200103050001"_s;

/// A leave desk with a day row and a second employee of that code, and what a routine of its does.
template<typename Routine>
Outcome leaveRoutine(const QString& EmpNo, Routine&& routine) {
    LeaveDesk desk;
    clock::setSource([] { return QDateTime(Day, QTime(9, 0)); });
    addEmployee(desk.database(), EmpNo,
                {{u"ThisYearHD", 7.0}, {u"ThisYearUse", 0.0}, {u"ThisYearLeft", 7.0}});
    addLeaveDay(desk.database(), u"10001"_s, Day, u"01"_s, QTime(8, 0), QTime(17, 0));
    desk.values.setBusNo(LeaveNumber);
    const Outcome outcome = outcomeOf(desk.store, [&] { routine(desk); });
    clock::setSource({});
    return outcome;
}

inline Leave leaveOf(const QString& EmpNo, const QString& HoliNo) {
    return {EmpNo, HoliNo, Day, Day, QTime(8, 0), QTime(17, 0)};
}

inline Outcome leaveBatch(const QString& EmpNo, const QString& HoliNo, const QString& gAccount) {
    return leaveRoutine(EmpNo, [&](LeaveDesk& desk) {
        RunLeaveBatch(desk.database(), desk.host, desk.values,
                      {.entries = {u"10002  "_s, EmpNo},
                       .LenEmpNo = 12,
                       .HoliNo = HoliNo,
                       .codes = {u"01"_s, {}, {}, {}},
                       .date = Day,
                       .HoliBegTime = QTime(8, 0),
                       .HoliEndTime = QTime(17, 0),
                       .gAccount = gAccount,
                       .TransDate = QDateTime(Day, QTime(9, 0))});
    });
}

[[nodiscard]] inline std::vector<Place> leavePlaces() {
    const QString dayRow = u"Holi04 +'200103050001'|'10002  '|'08'|'2001-03-05'|'08:00:00'|'17:00:00'|8|''"_s;
    return {
        {"an employee of the test for duplicates",
         [] {
             return leaveRoutine(u"10009"_s, [](LeaveDesk& desk) {
                 (void)desk.notes().IsLeaveDuplicate(AnyRow, Day, Day, EditMode::Add);
             });
         },
         error::Syntax,
         {}},
        {"a leave type that is looked up",
         [] {
             return leaveRoutine(u"10009"_s, [](LeaveDesk& desk) { desk.notes().LoadHoliDeduct(AnyRow); });
         },
         error::Syntax,
         {}},
        {"an employee whose slot is looked up",
         [] {
             return leaveRoutine(u"10009"_s, [](LeaveDesk& desk) { desk.notes().LoadDaySlot(Day, AnyRow); });
         },
         error::Syntax,
         {}},
        {"an employee of a leave",
         [] {
             return leaveRoutine(
                 u"10009"_s, [](LeaveDesk& desk) { desk.notes().InsertLeaveDays(leaveOf(AnyRow, u"08"_s)); });
         },
         error::Syntax,
         {}},
        {"a type of a leave",
         [] {
             return leaveRoutine(u"10009"_s, [](LeaveDesk& desk) {
                 desk.notes().InsertLeaveDays(leaveOf(u"10001"_s, OtherValue));
             });
         },
         error::Syntax,
         {}},
        {"an employee of a row of leave",
         [] {
             return leaveRoutine(
                 u"10009"_s, [](LeaveDesk& desk) { desk.notes().insertDay(leaveOf(AnyRow, u"08"_s), {}); });
         },
         error::Syntax,
         {}},
        {"an employee whose leave is charged",
         [] {
             return leaveRoutine(AnyRow,
                                 [](LeaveDesk& desk) { (void)LeaveBalance(desk.database(), AnyRow, 0); });
         },
         error::Syntax,
         {}},
        {"an employee of a leave batch",
         [] { return leaveBatch(AnyRow, u"08"_s, u"clerk"_s); },
         error::Syntax,
         {u"Holi03 +'200103050001'|'10002  "
          u"'|null|'08'|'2001-03-05'|'08:00:00'|'2001-03-05'|'17:00:00'|1.0|null|0|"
          u"'clerk'|'2001-03-05 09:00:00'|1"_s,
          dayRow}},
        {"a type of a leave batch",
         [] { return leaveBatch(u"10009"_s, AnyRow, u"clerk"_s); },
         error::Syntax,
         {}},
        {"the account of a leave batch",
         [] { return leaveBatch(u"10009"_s, u"08"_s, AnyRow); },
         error::Syntax,
         {dayRow}},
    };
}

// The write-offs
// -------------------------------------------------------------------------------------------------------

/// A batch over the code, who has an entry of the day as another one has.
inline Outcome writeOffBatch(const QString& EmpNo, const QString& reason, const QString& gAccount) {
    TestStore store;
    store.database().execute(u"Update Syst01 Set LenEmpNo = 10"_s);
    for (const QString& each : {u"00001"_s, u"00002"_s})
        addWriteOff(store.database(), each, Day, u"1"_s, {}, {}, {});
    QuietHost<> host;
    return outcomeOf(store, [&] {
        RunWriteOffBatch(store.database(), host,
                         {.entries = {EmpNo},
                          .date = Day,
                          .reasons = {QString(), QString(), reason, QString()},
                          .gAccount = gAccount,
                          .TransDate = Day.startOfDay()});
    });
}

inline Outcome writeOffCounts(const QString& EmpNo, const QString& CnlNo) {
    TestStore store;
    insertRow(store.database(), u"Canc01"_s, {{u"CnlNo", CnlNo}});
    addWriteOff(store.database(), u"00001"_s, Day, u"1"_s, {}, {}, {});
    insertRow(store.database(), u"View01"_s, {{u"EmpNo", u"00009"}});
    return outcomeOf(store, [&] { CountWriteOffs(store.database(), EmpNo, Day, Day); });
}

[[nodiscard]] inline std::vector<Place> writeOffPlaces() {
    const QString gone = u"Canc02 -1"_s;
    const QString emptied = u"View01 -1"_s;
    return {
        {"an employee of the write-off batch",
         [] { return writeOffBatch(AnyRow, u"1"_s, u"a"_s); },
         error::Syntax,
         {}},
        // The entry of the day is deleted ahead of the insert.
        {"a reason of the write-off batch",
         [] { return writeOffBatch(u"00001"_s, OtherValue, u"a"_s); },
         error::Syntax,
         {gone}},
        {"the account of the write-off batch",
         [] { return writeOffBatch(u"00001"_s, u"1"_s, OtherValue); },
         error::Syntax,
         {gone}},
        {"an employee of the counts",
         [] { return writeOffCounts(AnyRow, u"1"_s); },
         error::Syntax,
         {emptied}},
        {"a reason of the counts",
         [] { return writeOffCounts(u"00001"_s, OtherValue); },
         error::Syntax,
         {emptied}},
    };
}

// The overtime
// -------------------------------------------------------------------------------------------------------

inline Outcome overtimeBatch(const QString& EmpNo, const QString& gAccount) {
    TestStore store;
    store.database().execute(u"Update Syst01 Set LenEmpNo = 10"_s);
    QuietHost<> host;
    return outcomeOf(store, [&] {
        RunOvertimeBatch(store.database(), host,
                         {.entries = {EmpNo},
                          .date = Day,
                          .BegTime = QTime(18, 0),
                          .EndTime = QTime(20, 0),
                          .OverHours = u"2"_s,
                          .gAccount = gAccount,
                          .TransDate = Day.startOfDay()});
    });
}

[[nodiscard]] inline std::vector<Place> overtimePlaces() {
    return {
        {"an employee of the overtime batch",
         [] { return overtimeBatch(AnyRow, u"a"_s); },
         error::Syntax,
         {}},
        {"the account of the overtime batch",
         [] { return overtimeBatch(u"00001"_s, OtherValue); },
         error::Syntax,
         {}},
    };
}

} // namespace pontrel::test
