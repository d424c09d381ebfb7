#pragma once

#include "store/Database.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <QTime>

#include <array>
#include <optional>
#include <vector>

namespace pontrel::demo {

/// Days for which there is a roster; the last two are a weekend, like the sixth and seventh.
inline const QDate FirstDay(2010, 3, 1);
inline const QDate LastDay(2010, 3, 14);

[[nodiscard]] inline bool isWeekend(QDate day) {
    return day.dayOfWeek() >= Qt::Saturday;
}

/// The pattern of a working day. Positions are counted from 0: morning in, morning out, afternoon in,
/// afternoon out.
struct TimeSlot {
    char16_t code;
    const char16_t* name;
    int cardType;
    int elstType;
    int elstMin; ///< The seven minute values stay below 60: the calculation reads them as the minutes of a
                 ///< time.
    std::array<bool, 4> required;
    std::array<QTime, 4> standard;
    QTime earliestMorning;   ///< StrIn1
    QTime latestMorning;     ///< EndOut2
    QTime earliestAfternoon; ///< StrIn3
    QTime latestAfternoon;   ///< EndOut4
    int cushion, delay, earlier;
    int cushion1, delay1, earlier1;
    bool rest;
};

/// In the order of their codes. All times are filled: a missing one would take the value of the slot before
/// it.
[[nodiscard]] const std::vector<TimeSlot>& timeSlots();
[[nodiscard]] const TimeSlot& timeSlot(char16_t code);

struct Employee {
    int number; ///< EmpNo, five digits.
    const char16_t* name;
    bool male;
    const char16_t* unit;
    const char16_t* title;
    const char16_t* workType;
    const char16_t* shiftClass;
    QDate birth;
    QDate arrived;
    QDate left; ///< Not valid while employed.

    [[nodiscard]] QString code() const { return QString::number(number); }
};

[[nodiscard]] const std::vector<Employee>& employees();
[[nodiscard]] const Employee& employeeOf(int number); ///< There is one of that number.
/// They as a batch lists them.
[[nodiscard]] QStringList listEntries(const std::vector<int>& numbers);

/// The time slot that the employee's class gives him on a day, by the same rotation as the roster; null on a
/// rest day.
[[nodiscard]] const TimeSlot* rosteredSlot(const Employee& employee, QDate day);

/// Which part of a day a leave covers.
enum class LeavePart { WholeDay, Morning, Afternoon };

struct LeaveNote {
    int employee;
    int substitute; ///< 0 where there is none.
    const char16_t* leaveType;
    QDate first;
    QDate last;
    LeavePart part;         ///< Of each day.
    const char16_t* reason; ///< Null for a note of a batch, which charges the balance of its type.
    QDate entered;
};

/// Notes of one batch stand next to each other.
[[nodiscard]] const std::vector<LeaveNote>& leaveNotes();

/// What the employee has noted for a day; nothing where he has not.
[[nodiscard]] const LeaveNote* leaveOn(int employee, QDate day);

/// Swipes of a day that are written off.
struct WriteOff {
    std::vector<int> employees; ///< Several of a batch, one of an entry of its own.
    QDate day;
    std::array<QString, 4> reasons; ///< Codes for the four positions, null where there is none.
};

/// Those of the days of the roster.
[[nodiscard]] const std::vector<WriteOff>& writeOffs();
void writeWriteOff(Database& database, const WriteOff& each);

// Each writes its rows. Throw RunTimeError.
void writeShifts(Database& database);    ///< Time slots, shift classes, days off.
void writeEmployees(Database& database); ///< Titles, units, employment types, employees, nobody gone yet.
void generateRoster(
    Database& database); ///< The roster from FirstDay to LastDay, a run of the program for each class.
void writeDepartures(Database& database); ///< The leaving dates, which came after the roster.
/// Leave types and grants, the seniority at the end of 2009 and what it grants, the notes with their days and
/// charges.
void writeLeave(Database& database);
void writeWriteOffs(Database& database);      ///< Reasons and entries.
void writeEarlierEntries(Database& database); ///< Write-offs of the months before.
void writeOvertime(Database& database);       ///< Single rows and a batch, on days without a punch file.

} // namespace pontrel::demo
