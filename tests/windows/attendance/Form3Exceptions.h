#pragma once

#include "support/Builders.h"

namespace pontrel::test {

inline const QDate Day(2001, 3, 5);

/// The day of an employee whose morning is missing, as an import has left it.
inline Fields missingMorning() {
    return {{u"Time3", QTime(12, 50)},
            {u"FT3", true},
            {u"Time4", QTime(17, 3)},
            {u"FT4", true},
            {u"F1", true},
            {u"F2", true},
            {u"Expt", true}};
}

inline Fields withKey(const QString& EmpNo, QDate day, Fields fields) {
    fields.prepend({u"TimeNo", u"A"});
    fields.prepend({u"UseDate", day});
    fields.prepend({u"EmpNo", EmpNo});
    return fields;
}

/// An exception in both result tables, its employee and roster row.
inline void addException(Database& database, const QString& EmpNo, QDate day, const Fields& fields) {
    addRoster(database, EmpNo, day, QStringLiteral("A"));
    insertRow(database, QStringLiteral("Atte02"), withKey(EmpNo, day, fields));
    insertRow(database, QStringLiteral("Atte03"), withKey(EmpNo, day, fields));
}

/// Two employees with an exception each, and the first with one of another day.
inline void addExceptions(Database& database) {
    addSlot(database, QStringLiteral("A"));
    addEmployee(database, QStringLiteral("10001"), {{u"EmpName", u"王小明"}});
    addEmployee(database, QStringLiteral("10002"), {{u"EmpName", u"陳美惠"}});
    addException(database, QStringLiteral("10001"), Day, missingMorning());
    addException(database, QStringLiteral("10001"), {2001, 3, 6}, missingMorning());
    addException(database, QStringLiteral("10002"), Day, missingMorning());
}

inline void addMorningLeave(Database& database, const QString& EmpNo) {
    addLeaveDay(database, EmpNo, Day, QStringLiteral("03"), QTime(8, 0), QTime(12, 0));
}

} // namespace pontrel::test
