#pragma once

#include <QString>

#include <array>

namespace pontrel {

// What the tabs of the write-off window share.

enum WriteOffTab { WriteOffReasonTab, WriteOffBatchTab, WriteOffEntryTab, WriteOffCountTab };

/// The tab of the reports window that the write-off window leads to.
inline constexpr int WriteOffReportsTab = 4;

/// The code boxes of the write-off window, by their marks. An entry's four reasons follow its employee, those
/// of the batch its first one.
enum WriteOffCode { EmployeeOfEntry = 1, FirstReasonOfBatch = 6, EmployeeCounted = 10 };

/// The captions of the reasons, in the order of the swipes of a day.
inline const std::array<QString, 4> SwipeCaptions = {
    QStringLiteral("上午上班："), QStringLiteral("上午下班："), QStringLiteral("下午上班："),
    QStringLiteral("下午下班：")};

} // namespace pontrel
