#pragma once

#include "rules/ActionHost.h"
#include "rules/Session.h"
#include "store/Database.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTime>

namespace pontrel {

/// The same overtime of one day for many employees. Date and times may be none, as those of empty boxes.
struct OvertimeBatch {
    QStringList entries; ///< The chosen employees, as they stand in the list.
    QDate date;
    QTime BegTime; ///< Kept to the minute, as the next.
    QTime EndTime;
    QString OverHours; ///< The number as it stands in its box, which need not be that of the times.
    QString gAccount;
    QDateTime TransDate; ///< When the batch is run.
};

/// Adds a row for each employee, whether or not he has overtime on that day. Without employees there are two
/// messages and nothing is written. Throws RunTimeError, with what was done until then left; 3075 before the
/// first row for an empty date or time and for hours that are no plain number.
void RunOvertimeBatch(Database& database, ActionHost& host, const OvertimeBatch& batch);

} // namespace pontrel
