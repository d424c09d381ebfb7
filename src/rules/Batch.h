#pragma once

#include "rules/ActionHost.h"
#include "store/Database.h"

#include <QString>
#include <QStringList>

namespace pontrel {

/// What a batch does for each employee in its list: each kind of batch says what it checks and what it
/// writes.
class BatchWork {
  public:
    virtual ~BatchWork() = default;

    /// Looks into the employee before anything of him is written. Whatever is asked or told of him is so
    /// here, and through this host. False ends the batch in front of him.
    [[nodiscard]] virtual bool check(const QString& /*EmpNo*/, ActionHost& /*host*/) { return true; }

    /// Writes all that the batch writes of the employee, asking and telling nothing.
    virtual void write(const QString& EmpNo) = 0;
};

/// Runs a batch over the chosen entries of its list, in their order; the employee's code is the first
/// LenEmpNo characters of an entry. Employees are written some thousand to a stage, and none is parted by the
/// end of one: whatever kills the program leaves all or nothing of an employee. A stage of each one's own
/// would wait for the disk ten thousand times where the batch is of ten thousand. When something is told, all
/// employees before are in the store. Throws RunTimeError, at the first entry for a negative LenEmpNo; what
/// was written until then stays.
void runBatch(Database& database, ActionHost& host, const QStringList& entries, int LenEmpNo,
              BatchWork& work);

/// Tells that a batch has not been saved for what is missing, in two messages: its own and the one that all
/// batches share.
void refuseBatch(ActionHost& host, const QString& missing);

} // namespace pontrel
