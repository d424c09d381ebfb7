#pragma once

#include "rules/ActionHost.h"
#include "rules/Session.h"
#include "store/Database.h"

#include <QDate>
#include <QString>

#include <array>
#include <cstdint>

namespace pontrel {

/// What the generation of a roster asks of its window.
class RosterHost : public ActionHost {
  public:
    /// The days before this one are done. A sign of life while a long run is on; not called inside a stage.
    virtual void showDay(QDate day) = 0;
    /// The list of roster rows: run its source again.
    virtual void refreshRoster() = 0;
};

/// What a roster is generated for. The texts go into the statements, which one with an apostrophe
/// breaks; a date may be none.
struct RosterRange {
    QString firstEmpNo;
    QString lastEmpNo;
    QDate start;
    QDate end;
    QString firstClsNo;
    QString lastClsNo;
};

/// The values that all windows share and that a run works on.
struct RosterGlobals {
    QString& gPickClsNo; ///< The class being worked on; stays as it is after the run.
    QString& gPickEmpNo; ///< The employee read last; stays likewise.
    QDate gDate1;        ///< The days between which holidays are blanked.
    QDate gDate2;
};

/// Lays the steps of shift classes over a range of days and writes the roster, one row an employee and day.
class RosterGeneration {
  public:
    RosterGeneration(Database& database, RosterHost& host, const RosterGlobals& globals);

    /// The whole run. Each day is one stage. A run-time error leaves the days before it written and the
    /// hourglass set. Deliberate: a first class whose steps have neither days nor rests never ends. Throws
    /// RunTimeError.
    void GenerateRoster(const RosterRange& range);

  private:
    static constexpr std::size_t StepCount = 6;

    /// A slot that is worked for some days, and the rest days after them. Without a slot, empty and 0.
    struct Step {
        QString slot;
        std::int16_t days = 0;
        std::int16_t rests = 0;
    };

    void readSteps();
    void fillDates(QDate end);
    void writeWorkDay(const Step& step);
    void writeWorkRows(const Step& step);
    void writeRestDay();
    void blankHolidays();
    void nextDay();

    // A day is given as a literal.
    [[nodiscard]] std::int64_t CountRosterRow(const QString& EmpNo);
    void InsertRosterRow(const QString& TimeNo, const QString& ClsNo, const QString& day,
                         const QString& EmpNo);
    void UpdateRosterRow(const QString& TimeNo, const QString& ClsNo, const QString& day,
                         const QString& EmpNo);

    Database& database_;
    RosterHost& host_;
    RosterGlobals globals_;
    QString employees_; ///< The condition that an employee is in the range.
    QDate current_;     ///< The day being filled.
    std::array<Step, StepCount> steps_;
    bool restOnHolidays_ = false;
};

} // namespace pontrel
