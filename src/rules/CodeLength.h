#pragma once

#include <QString>

namespace pontrel {

class Database;

/// How many characters an employee's code has: LenEmpNo of the settings, as it stands there. Throws
/// RunTimeError, also for a null.
[[nodiscard]] int readLenEmpNo(Database& database);

/// Throws RunTimeError for a negative LenEmpNo, as many characters as no text gives.
void requireCodeLength(int LenEmpNo);

/// The employee's code in the entry of a list: its first LenEmpNo characters. Throws RunTimeError where that
/// is negative.
[[nodiscard]] QString codeOfEntry(const QString& entry, int LenEmpNo);

} // namespace pontrel
