#pragma once

#include "rules/attendance/DailyCalculation.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/FakeHost.h"
#include "support/TestStore.h"

namespace pontrel::test {

/// One opening of the attendance window over a store of its own, without the window.
struct Opening {
    TestStore store;
    FakeHost host{&store.database()};
    DailyCalculation calculation{store.database(), host};

    /// The day that the calculations are tried on, and the date that stands for "not gone" while one is under
    /// way.
    inline static const QDate Day{2001, 3, 5};
    inline static const QDate Sentinel{2038, 1, 1};

    [[nodiscard]] Database& database() { return store.database(); }

    /// An employee as an import sees him, on the roster of Day.
    void addRostered(const QString& EmpNo, const QString& TimeNo = QStringLiteral("A"),
                     const Fields& more = {}) {
        addEmployee(database(), EmpNo, Fields{{u"LeaveDate", Sentinel}} + more);
        addRoster(database(), EmpNo, Day, TimeNo);
    }

    /// Runs the slot loop of Day; the number of the error that it ends in, 0 where it ends in none.
    [[nodiscard]] int calculate(bool recalculating = false) {
        return errorOf([&] { calculation.CalcSlotLoop(Day, recalculating); });
    }

    [[nodiscard]] QStringList rows(const QString& table) { return rowsOf(store.database(), table); }

    /// What another program sees of the table at this moment: what has been committed.
    [[nodiscard]] QStringList committedRows(const QString& table) const {
        const auto other = store.connect();
        return rowsOf(*other, table);
    }

    /// Writes the file into the punch folder, chooses it and presses the read button.
    void import(const QString& name, const QByteArray& content) {
        host.punchFile = store.writePunchFile(name, content);
        calculation.ReadPunchFile();
    }

    /// Number of the error that ended the last action early, 0 where none did.
    [[nodiscard]] int errorNumber() const {
        return calculation.lastError() ? calculation.lastError()->number() : 0;
    }
};

/// Fields out of "Time1=08:00 FT1 Delay1=5": times, flags and numbers by the look of the value.
[[nodiscard]] inline Fields fieldsOf(const QString& text) {
    Fields fields;
    for (const QString& part : text.split(u' ', Qt::SkipEmptyParts)) {
        const QString value = part.section(u'=', 1);
        if (value.contains(u':'))
            fields.append({part.section(u'=', 0, 0), QTime::fromString(value, Qt::ISODate)});
        else if (value.isEmpty())
            fields.append({part, true});
        else
            fields.append({part.section(u'=', 0, 0), value.toInt()});
    }
    return fields;
}

/// A punch as rowsOf() shows it in Atte01 and AtteTemp.
[[nodiscard]] inline QString punchRow(const QString& EmpNo, QDate day, QTime time,
                                      const QString& classCode = QStringLiteral("255"),
                                      const QString& reader = QStringLiteral("001")) {
    return expectedRow(QStringLiteral("Atte01"), {{u"EmpNo", EmpNo},
                                                  {u"UseDate", day},
                                                  {u"UseTime", time},
                                                  {u"class", classCode},
                                                  {u"ReaderID", reader}});
}

/// A row of View02 with the punches from T1 on.
[[nodiscard]] inline QString viewRow(const QString& EmpNo, QDate day, const QList<QTime>& times) {
    Fields fields{{u"EmpNo", EmpNo}, {u"UseDate", day}};
    for (qsizetype place = 0; place < times.size(); ++place)
        fields.append({QStringLiteral("T%1").arg(place + 1), times[place]});
    return expectedRow(QStringLiteral("View02"), fields);
}

/// A row of Over01 as the import makes it; an invalid end stands for none.
[[nodiscard]] inline QString overtimeRow(const QString& EmpNo, QDate day, QTime begin, QTime end, int hours) {
    return expectedRow(QStringLiteral("Over01"), {{u"EmpNo", EmpNo},
                                                  {u"OverDate", day},
                                                  {u"BegTime", begin},
                                                  {u"EndTime", end.isValid() ? Value(end) : Value()},
                                                  {u"OverHours", hours}});
}

} // namespace pontrel::test
