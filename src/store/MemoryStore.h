#pragma once

#include "store/Database.h"

#include <QDate>
#include <QString>

#include <memory>
#include <vector>

namespace pontrel {

/// The path under which a connection gets a new store of its own in memory, without rows, which goes with it.
inline const QString MemoryPath = QStringLiteral(":memory:");

/// Rows of a table: all, or those of an employee, of a few days, or both.
struct RowChoice {
    QString table;
    QString employeeColumn = {}; ///< Empty: of all employees.
    QString dayColumn = {};      ///< Empty: of all days.
    QDate first = {};            ///< Of the days, with the last.
    QDate last = {};
};

/// A store in memory that holds these rows of another store as they are at one moment, in the order of their
/// insertion, for work that is to leave that store as it is. It is read over a connection that changes
/// nothing and is closed when this returns. Throws RunTimeError.
[[nodiscard]] std::unique_ptr<Database>
copyIntoMemory(const QString& path, const std::vector<RowChoice>& choices, const QString& EmpNo);

} // namespace pontrel
