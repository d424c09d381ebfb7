#pragma once

#include "rules/ActionHost.h"
#include "rules/Session.h"
#include "rules/leave/LeaveBalance.h"
#include "rules/leave/LeaveValues.h"
#include "store/Database.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTime>

namespace pontrel {

/// What the leave batch asks of its window.
class LeaveBatchHost : public ActionHost {
  public:
    /// The hours of the employee just done, as a days-and-hours number: Text8(1). Called inside a stage, too.
    virtual void showHours(const QString& HoliHours) = 0;
};

/// One leave of one day for many employees. The date and the times may be none, as those of empty boxes.
struct LeaveBatch {
    QStringList entries; ///< The chosen employees, as they stand in the list.
    int LenEmpNo = 0;    ///< Characters of an entry that are the employee's code.
    QString HoliNo;      ///< The leave type.
    BalanceCodes codes;  ///< As they were when the window opened.
    QDate date;
    QTime HoliBegTime;
    QTime HoliEndTime;
    QString gAccount;
    QDateTime TransDate; ///< When the batch began.
};

/// Writes a note with its day rows for each employee and charges the balance of the leave type, where it has
/// one. An employee is tested against the hours of the one before: where he has less left, a message ends the
/// batch in front of him and those before keep what they got. Without employees or type there are two
/// messages and nothing is written. Throws RunTimeError, with what was done until then left.
void RunLeaveBatch(Database& database, LeaveBatchHost& host, LeaveValues& values, const LeaveBatch& batch);

} // namespace pontrel
