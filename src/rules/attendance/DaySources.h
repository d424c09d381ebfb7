#pragma once

#include "rules/attendance/DayAccount.h"
#include "rules/attendance/DayRerun.h"

#include <QTime>

#include <optional>
#include <vector>

namespace pontrel {

/// Where the store has the punches that an employee's day was calculated from: the staging table, until some
/// day is replaced; the table of punches, until it is purged; the day's view. A copy of his rows is read when
/// the object is made, as every run over it changes them. Every routine throws RunTimeError.
class DaySources {
  public:
    DaySources(Database& copy, DayRerun& rerun);

    /// A run of the calculation, and what is to be said of the punches that it had.
    struct Run {
        DayRun run;
        bool holds = false; ///< It has put the punches where the row has them.
        std::optional<Remark> remark = {};
        bool slotChanged = false; ///< It has the row's punches, and puts them elsewhere.
    };
    /// What the calculation makes of the punches that the row was made of, as far as they can be told.
    [[nodiscard]] Run calculateFor(const DayRow& row, const QString& EmpNo, const QString& TimeNo);

    /// What the calculation makes of the punches that there are.
    [[nodiscard]] DayRun calculate(const QString& EmpNo, const QString& TimeNo);

    /// Those that a calculation looks at, rising, of the same table as the others.
    [[nodiscard]] const std::vector<int>& ordinary() const { return ordinary_; }
    /// Punches of the day that no calculation of it looks at, rising: those of the table of punches, or where
    /// it was purged those of the staging table.
    [[nodiscard]] const std::vector<DayStep>& others() const { return others_; }

  private:
    [[nodiscard]] std::vector<int> ordinaryIn(const QString& table);
    [[nodiscard]] std::vector<DayStep> othersIn(const QString& table);
    [[nodiscard]] Run calculateWithoutView(const DayRow& row, DayRun staged, DayRun kept) const;
    /// Of punches that nothing puts where the row has them.
    [[nodiscard]] Run judgeUnlike(const DayRow& row, DayRun run, std::optional<Remark> remark) const;
    /// Whether the view as the last run has left it is the one of before; or tells of the same punches.
    [[nodiscard]] bool isSameView();
    [[nodiscard]] bool isViewOfSame();
    [[nodiscard]] std::vector<QTime> viewedPunches(DayRow row) const;

    Database& copy_;
    DayRerun& rerun_;
    std::optional<StoredRow> view_;
    std::vector<StoredRow> kept_; ///< Rows of the table of punches.
    std::vector<int> ordinary_;   ///< Minutes of the day.
    bool hasStaged_ = false;      ///< Ordinary ones.
    bool hasKept_ = false;
    std::vector<DayStep> others_;
};

} // namespace pontrel
