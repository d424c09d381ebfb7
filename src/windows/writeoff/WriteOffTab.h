#pragma once

#include "rules/attendance/Positions.h"

#include <QString>

namespace pontrel {

// What the tabs of the write-off window share.

enum WriteOffTab { WriteOffReasonTab, WriteOffBatchTab, WriteOffEntryTab, WriteOffCountTab };

/// The tab of the reports window that the write-off window leads to.
inline constexpr int WriteOffReportsTab = 4;

/// The code boxes of the write-off window, by their marks. An entry's four reasons follow its employee, those
/// of the batch its first one.
enum WriteOffCode { EmployeeOfEntry = 1, FirstReasonOfBatch = 6, EmployeeCounted = 10 };

/// The caption of the box for the reason of a position of the day, 1 to 4.
[[nodiscard]] inline QString reasonCaption(int position) {
    return positionName(position) + QChar(0xff1a);
}

} // namespace pontrel
