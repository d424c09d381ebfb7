#pragma once

#include "store/Database.h"

#include <QDate>
#include <QHash>
#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace pontrel {

/// What the store holds about the employees of a day, read for all of them at once. None of it changes while
/// the day's slots are worked on, as each employee has one. What it gives of an employee is what a statement
/// of his own would give, in the same order, whatever the case of his code's letters.
class DayFacts {
  public:
    /// Up to this many punches of the day are read at once; of a day with more, employee by employee.
    static constexpr std::int64_t MostAtOnce = 500'000;

    DayFacts(Database& database, QDate date, std::int64_t mostAtOnce = MostAtOnce);

    using FactRows = std::span<const std::vector<Value>>;

    // The rows of one employee, good until the next call. The code stands in front of what each row names.
    // Each throws RunTimeError for a code with an apostrophe, as a statement of the employee's own does.

    /// UseTime and how often it occurs among the ordinary punches of the day, rising.
    [[nodiscard]] FactRows punchesOf(const QString& EmpNo);
    /// HoliNo, BegTime, EndTime, HoliHours, in the order of their entry.
    [[nodiscard]] FactRows leaveOf(const QString& EmpNo);
    /// CnlNo1 to CnlNo4: one row or none.
    [[nodiscard]] FactRows writeOffsOf(const QString& EmpNo);
    /// Whether the staging table held rows of the employee and day.
    [[nodiscard]] bool hasStagedRows(const QString& EmpNo);

  private:
    /// A selection about some table, and its rows by employee where they are read at once.
    struct Fact {
        QString table;
        QString columns;   ///< Selected behind the code.
        QString condition; ///< Apart from the employee.
        QString ending;    ///< What brings the rows together by employee.
        bool read = false;
        Rows rows{nullptr, {}};
        QHash<QString, std::pair<std::size_t, std::size_t>> places =
            {}; ///< First row and count by folded code.
    };

    [[nodiscard]] bool tooManyPunches();
    void readAtOnce(Fact& fact);
    [[nodiscard]] FactRows rowsOf(Fact& fact, const QString& EmpNo);

    Database& database_;
    QString day_; ///< As a literal.
    std::int64_t mostAtOnce_;
    std::optional<bool> tooMany_;
    Fact punches_;
    Fact leave_;
    Fact writeOffs_;
    Fact staged_;
    Rows single_{nullptr, {}};
};

} // namespace pontrel
