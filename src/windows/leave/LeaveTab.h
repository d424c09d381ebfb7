#pragma once

namespace pontrel {

/// The tab of the reports window that the leave window leads to.
inline constexpr int LeaveReportsTab = 3;

/// The code boxes of the leave window, by their marks.
enum LeaveCode {
    SchemeOfGrant = 1,
    TypeOfGrant,
    EmployeeOfNote,
    SubstituteOfNote,
    TypeOfNote,
    TypeOfBatch,
    EmployeeBrowsed,
    EmployeeOfHours
};

} // namespace pontrel
