#pragma once

#include "attendance/AttendanceHost.h"
#include "store/Database.h"
#include "store/RunTimeError.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>

namespace pontrel {

struct SlotTimes;

/// From a punch file to the day's results, and the recalculation of a day: the routines of the attendance window
/// without the window. One object lives as long as one opening of it.
class DailyCalculation {
  public:
    DailyCalculation(Database& database, AttendanceHost& host);

    /// Set while a punch file is read and worked on; an import that ends early leaves it set.
    [[nodiscard]] bool ImportRunning() const { return importRunning_; }
    /// Set by the first recalculation, also one that ends early, and never cleared.
    [[nodiscard]] bool RecalcDone() const { return recalcDone_; }

    /// Lets the user choose a punch file, reads it and works out its day. A run-time error ends it silently with
    /// nothing undone; lastError() tells it.
    void ReadPunchFile();

    /// The recalculation of a day after leave notes or write-offs were entered. Ends silently on a run-time error.
    void Recalculate(QDate date);

    /// Whether the last ReadPunchFile or Recalculate came to its end, was cancelled, or ended early by an error.
    [[nodiscard]] bool finished() const { return finished_; }
    [[nodiscard]] const std::optional<RunTimeError>& lastError() const { return lastError_; }

    /// Reads the file's lines into the staging table and copies it into the punches. LenEmpNo is 1 to 12 in use,
    /// IntervalSec 0 to 255 seconds. Throws RunTimeError.
    void UseRecord2Pontrel(QDate date, const QString& fileName, std::int16_t LenEmpNo, std::uint8_t IntervalSec);

    // The steps of the calculation; each throws RunTimeError.
    void BuildPunchOvertime(QDate date);
    void FillDailyView(QDate date);
    void CalcSlotLoop(QDate date, bool recalculating);
    void AssignSlotPunches(QDate date, const SlotTimes& slot);
    void RecalcSlot(QDate date, const SlotTimes& slot);
    void SetSlotTime(QDate date, const QString& EmpNo, QTime time, int slot);

  private:
    Database& database_;
    AttendanceHost& host_;
    bool importRunning_ = false;
    bool recalcDone_ = false;
    bool finished_ = false;
    std::optional<RunTimeError> lastError_;
    QString LastHoliNo_;
};

} // namespace pontrel
