#pragma once

#include "rules/ActionHost.h"
#include "rules/Session.h"
#include "store/Database.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <array>

namespace pontrel {

/// The same reasons of one day for many employees.
struct WriteOffBatch {
    QStringList entries;            ///< The chosen employees, as they stand in the list.
    QDate date;                     ///< May be none, as that of an empty box.
    std::array<QString, 4> reasons; ///< Of the swipes of the day, in their order; an empty one writes nothing
                                    ///< off.
    QString gAccount;
    QDateTime TransDate; ///< When the batch is run.
};

/// Writes an entry of that day for each employee, in place of any that he has, whatever its reasons. Without
/// employees there are two messages and nothing is written. Throws RunTimeError, with what was done until
/// then left.
void RunWriteOffBatch(Database& database, ActionHost& host, const WriteOffBatch& batch);

} // namespace pontrel
