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

/// The minutes of a half day that a slot allows or counts; below 60, for the calculation reads them as the
/// minutes of a time.
struct HalfDay {
    int cushion = 0;
    int delay = 0;
    int earlier = 0;
};

/// The pattern of a working day, as most slots have it where nothing else is said. Positions are counted from
/// 0: morning in, morning out, afternoon in, afternoon out.
struct TimeSlot {
    char16_t code;
    const char16_t* name;
    int cardType;
    int elstType = 0;
    int elstMin = 0; ///< Below 60 too.
    std::array<bool, 4> required;
    std::array<QTime, 4> standard;
    QTime earliestMorning{6, 30};    ///< StrIn1
    QTime latestMorning{12, 30};     ///< EndOut2
    QTime earliestAfternoon{12, 31}; ///< StrIn3
    QTime latestAfternoon{23, 0};    ///< EndOut4
    HalfDay morning{};
    HalfDay afternoon{};
    bool rest = true;
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
