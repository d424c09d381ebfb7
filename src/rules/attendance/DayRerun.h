#pragma once

#include "rules/attendance/DayObserver.h"
#include "rules/attendance/EmployeeDay.h"
#include "rules/attendance/SlotTimes.h"
#include "store/Database.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace pontrel {

/// A row of a table, its values by column.
struct StoredRow {
    QStringList columns;
    std::vector<Value> values;

    /// Null for a column that the table does not have.
    [[nodiscard]] Value at(const QString& column) const;
    void set(const QString& column, const Value& value); ///< Of a column that the table has.
};

/// What a run of the calculation over one employee's day has come to.
struct DayRun {
    std::optional<DayRow> row;
    bool isException = false;
    std::optional<SlotTimes> slot; ///< None where the run met no slot of the row's code.
    std::vector<DayStep> steps;
    QString failure; ///< Of the error that ended it early; empty where none did.
};

/// Whether the rows have the same punches in the same places.
[[nodiscard]] bool sameAssignment(const DayRow& a, const DayRow& b);
/// Whether leave and write-offs cover the same positions of the rows.
[[nodiscard]] bool sameCover(const DayRow& a, const DayRow& b);

/// Runs the daily calculation over a store of one employee's rows, a copy that the runs use up: each leaves
/// what it has written. Every routine throws RunTimeError.
class DayRerun {
  public:
    DayRerun(Database& copy, QDate date) : copy_(copy), date_(date) {}

    /// The rows of the day in a table, by its column of days.
    [[nodiscard]] std::vector<StoredRow> rowsOfDay(const QString& table,
                                                   const QString& dayColumn = QStringLiteral("UseDate"));
    /// The result of the slot in one of the result tables; the first one where the code is empty.
    [[nodiscard]] std::optional<StoredRow> result(const QString& table, const QString& TimeNo);

    /// What a recalculation makes of the day as it stands.
    [[nodiscard]] DayRun recalculate(const QString& TimeNo);
    /// Gives an employee who is still there the leaving date that a calculation gives him.
    void fillLeavingDate();
    /// Whether an import that comes to the slot calculates the day, by the roster and the employee's dates as
    /// they stand.
    [[nodiscard]] bool isCalculated();
    /// What an import makes of punches, leave and write-offs, for an employee who is on the roster of the
    /// slot.
    [[nodiscard]] DayRun calculate(const QString& EmpNo, const QString& TimeNo);
    /// What a recalculation makes of the row alone, without leave and write-offs: punches and cover stay as
    /// the row has them, and the rest is judged anew.
    [[nodiscard]] DayRun judge(const StoredRow& row);

    // Each puts other punches in place of the staged ones: ordinary ones at these times, rows of punches.
    void replacePunches(const QString& EmpNo, const std::vector<QTime>& times);
    void replacePunches(const std::vector<StoredRow>& punches);

  private:
    void insert(const QString& table, const QStringList& columns, const std::vector<Value>& values);
    void empty(std::initializer_list<const char16_t*> tables);

    Database& copy_;
    QDate date_;
};

} // namespace pontrel
