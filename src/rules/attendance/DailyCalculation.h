#pragma once

#include "rules/attendance/AttendanceHost.h"
#include "store/Database.h"
#include "store/RunTimeError.h"

#include <QDate>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace pontrel {

struct SlotTimes;
class PunchWindows;
class DayFacts;
class DayObserver;

/// From a punch file to the day's results, and the recalculation of a day: the routines of the attendance
/// window without the window. One object lives as long as one opening of it.
class DailyCalculation {
  public:
    /// The observer is told what is decided about each employee's day; null where nobody listens. It
    /// outlives the object.
    DailyCalculation(Database& database, AttendanceHost& host, DayObserver* observer = nullptr);

    /// Set while a punch file is read and worked on; an import that ends early leaves it set.
    [[nodiscard]] bool ImportRunning() const { return importRunning_; }
    /// Set by the first recalculation, also one that ends early, and never cleared.
    [[nodiscard]] bool RecalcDone() const { return recalcDone_; }

    /// Lets the user choose a punch file, reads it and works out its day. A run-time error ends it silently
    /// with nothing undone; lastError() tells it. Throws RunTimeError where the settings cannot be read,
    /// which comes before anything else.
    void ReadPunchFile();

    /// The recalculation of a day after leave notes or write-offs were entered. Ends silently on a run-time
    /// error.
    void Recalculate(QDate date);

    /// Whether the last ReadPunchFile or Recalculate came to its end; if not, it ended early by lastError(),
    /// or was cancelled where there is none.
    [[nodiscard]] bool finished() const { return finished_; }
    [[nodiscard]] const std::optional<RunTimeError>& lastError() const { return lastError_; }

    /// Reads the file's lines into the staging table and copies it into the punches. LenEmpNo is 1 to 12 in
    /// use, IntervalSec 0 to 255 seconds. Leaves everything as it is where the day is there already and the
    /// user does not want it replaced. Throws RunTimeError.
    void UseRecord2Pontrel(QDate date, const QString& fileName, std::int16_t LenEmpNo,
                           std::uint8_t IntervalSec);

    /// An earlier form of the whole action, which asks for its file itself and makes the raw daily view of
    /// all employees on request. Nothing calls it. Throws RunTimeError.
    void UseRecord2PontrelOld();

    // The steps of the calculation; each throws RunTimeError.

    /// Gives every employee without a leaving date one after any punch, so that the comparisons need no test
    /// for null.
    void fillSentinel();
    /// Pairs the day's overtime swipes in the staging table into rows of Over01, which it only adds to.
    void BuildPunchOvertime(QDate date);
    /// Writes the day's raw view of all employees who have not left.
    void FillDailyView(QDate date);
    /// Works through all time slots, in the order of their codes.
    void CalcSlotLoop(QDate date, bool recalculating);
    /// Sorts the punches of the slot's employees and works out their day.
    void AssignSlotPunches(QDate date, const SlotTimes& slot, DayFacts& facts);
    /// Works out anew the exceptions of the slot that the staging table holds.
    void RecalcSlot(QDate date, const SlotTimes& slot, DayFacts& facts);
    /// Puts a punch into a position, 1 to 4, of the employee's staged rows of the day.
    void SetSlotTime(QDate date, const QString& EmpNo, QTime time, int slot);

  private:
    struct Settings {
        QString HandPath;
        std::int16_t LenEmpNo;
        std::uint8_t IntervalSec;
    };
    enum class Reader { Current, Old };

    [[nodiscard]] Settings readSettings();
    void importFile(const Settings& settings);
    void recalculateDay(QDate date);
    void clearSentinel();

    [[nodiscard]] bool hasPunches(QDate date);
    [[nodiscard]] bool mayReplace();
    void clearDay(QDate date, Reader reader);
    void startWork();
    void readLines(const QString& fileName, const Settings& settings, Reader reader);
    void showDay(QDate date);

    void writeDailyView(const QString& day, const QString& EmpNo, const std::array<int, 12>& list);
    void pairSwipes(QDate date, const QString& EmpNo, std::uint8_t cnt);
    void calculateEmployee(QDate date, const QString& EmpNo, const SlotTimes& slot,
                           const PunchWindows& windows, DayFacts& facts);
    void recalculateEmployee(QDate date, const QString& EmpNo, const SlotTimes& slot, DayFacts& facts);

    void takeProgress() { bar_ = host_.progress(); } ///< Outside stages only.
    void addProgress(int step);
    void addProgressBelow100(int step);

    Database& database_;
    AttendanceHost& host_;
    DayObserver* observer_;
    bool importRunning_ = false;
    bool recalcDone_ = false;
    bool finished_ = false;
    std::optional<RunTimeError> lastError_;
    int bar_ = 0; ///< The progress bar's value, known here so that no stage need ask for it.
};

} // namespace pontrel
