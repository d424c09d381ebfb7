#pragma once

#include "EmployeeDesk.h"

#include "rules/master/Entitlement.h"
#include "support/Errors.h"

namespace pontrel::test {

/// An employee of the scheme who has taken leave of all kinds; the figures that no grant touches stay as
/// here.
[[nodiscard]] inline Fields employee(const QString& EmpNo, const Value& HoliExper,
                                     const Value& SuitNo = u"1") {
    return {{u"EmpNo", EmpNo},       {u"EmpName", u"王小明"},
            {u"SuitNo", SuitNo},     {u"IniArrDate", QDate(1950, 1, 1)},
            {u"BreakY", 600},        {u"HoliExper", HoliExper},
            {u"ThisYearHD", 99.5},   {u"ThisYearUse", 1.4},
            {u"ThisYearLeft", 98.1}, {u"LastYearHD", 3.0},
            {u"LastYearUse", 1.0},   {u"LastYearLeft", 2.0},
            {u"LeaveHD", 88.5},      {u"LeaveUse", 2.2},
            {u"LeaveLeft", 86.3},    {u"SickHD", 77.5},
            {u"SickUse", 0.1},       {u"SickLeft", 77.4}};
}

[[nodiscard]] inline QString rowOf(const Fields& fields) {
    return expectedRow(QStringLiteral("Base06"), fields);
}

[[nodiscard]] inline Fields withAnnual(const Fields& fields, int days) {
    return with(with(fields, {u"ThisYearHD", days}), {u"ThisYearLeft", days});
}
[[nodiscard]] inline Fields withPersonal(const Fields& fields, int days) {
    return with(with(fields, {u"LeaveHD", days}), {u"LeaveLeft", days});
}
[[nodiscard]] inline Fields withSick(const Fields& fields, int days) {
    return with(with(fields, {u"SickHD", days}), {u"SickLeft", days});
}

inline const QString Annual = QStringLiteral("01");
inline const QString Personal = QStringLiteral("03");
inline const QString Sick = QStringLiteral("04");

/// Employees and grants, and who presses the button of the entitlement. All goes into one transaction until
/// he does.
struct EntitlementDesk : EmployeeDesk {
    EntitlementDesk() { store.holdOpen(); }

    void add(const Fields& fields) { insertRow(database(), QStringLiteral("Base06"), fields); }
    /// Grants out of "1~3:7 3~5:10", in that order; "null" stands for a null.
    void grant(const QString& HoliNo, const QString& bands, const QString& SuitNo = QStringLiteral("1")) {
        for (const QString& band : bands.split(u' ', Qt::SkipEmptyParts))
            insertRow(database(), QStringLiteral("Holi02"),
                      {{u"SuitNo", SuitNo},
                       {u"HoliNo", HoliNo},
                       {u"HoliYearBeg", valueOf(band.section(u'~', 0, 0))},
                       {u"HoliYearEnd", valueOf(band.section(u'~', 1).section(u':', 0, 0))},
                       {u"HoliDays", valueOf(band.section(u':', 1))}});
    }
    void compute() {
        store.commit();
        ComputeEntitlement(database(), host);
    }
    /// Number of the error, 0 where there is none.
    [[nodiscard]] int computeAndTell() {
        return errorOf([this] { compute(); });
    }
};

} // namespace pontrel::test
