#pragma once

#include <QString>

namespace pontrel {

/// The condition on Base06 that an employee has arrived on a day, a literal or a column of days, and not
/// left. Leaving dates are filled beforehand.
[[nodiscard]] inline QString employedOn(const QString& day) {
    return QStringLiteral("Base06.ArriveDate <= %1    And Base06.LeaveDate >= %1").arg(day);
}

} // namespace pontrel
