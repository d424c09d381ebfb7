#pragma once

#include "rules/attendance/Positions.h"
#include "store/Database.h"
#include "store/Recordset.h"

#include <QDate>
#include <QString>

#include <array>
#include <cstdint>
#include <vector>

namespace pontrel {

class DayObserver;

/// A daily row in memory: the columns that the calculation reads and writes. A time is a second of the day,
/// or NoTime for a null; a flag is 0 or 1; a null number is 0. Positions and punches count from 1.
class DayRow {
  public:
    static constexpr std::int64_t NoTime = -1;

    /// Places of the columns; of a numbered family the place of its first column.
    enum Place : std::size_t {
        TimePlace = 0,
        FTPlace = 4,
        FHPlace = 8,
        FCPlace = 12,
        TPlace = 16,
        FPlace = 28,
        ExptPlace = 32,
        DelayFPlace,
        Cushion1Place,
        Cushion3Place,
        Delay1Place,
        Delay3Place,
        Earlier2Place,
        Earlier4Place,
        Places
    };
    using Cells = std::array<std::int64_t, Places>;

    DayRow();

    /// Out of the values of a row of AtteTemp1, Atte02 or Atte03, which have the same columns. Throws
    /// RunTimeError for a value of another kind.
    [[nodiscard]] static DayRow of(const std::vector<Value>& values);

    /// The name of the column at that place.
    [[nodiscard]] static const QString& columnName(std::size_t place);

    [[nodiscard]] std::int64_t& Time(int position) { return at(TimePlace, position); }
    [[nodiscard]] std::int64_t& FT(int position) { return at(FTPlace, position); }
    [[nodiscard]] std::int64_t& FH(int position) { return at(FHPlace, position); }
    [[nodiscard]] std::int64_t& FC(int position) { return at(FCPlace, position); }
    [[nodiscard]] std::int64_t& T(int punch) { return at(TPlace, punch); }
    [[nodiscard]] std::int64_t& F(int position) { return at(FPlace, position); }
    [[nodiscard]] std::int64_t& Expt() { return cells_[ExptPlace]; }
    [[nodiscard]] std::int64_t& DelayF() { return cells_[DelayFPlace]; }
    [[nodiscard]] std::int64_t& Cushion(int position) {
        return cells_[position == 1 ? Cushion1Place : Cushion3Place];
    }
    [[nodiscard]] std::int64_t& Delay(int position) {
        return cells_[position == 1 ? Delay1Place : Delay3Place];
    }
    [[nodiscard]] std::int64_t& Earlier(int position) {
        return cells_[position == 2 ? Earlier2Place : Earlier4Place];
    }
    /// Of lateness at a way in, of early leave at a way out.
    [[nodiscard]] std::int64_t& minutes(int position) {
        return isWayIn(position) ? Delay(position) : Earlier(position);
    }

    [[nodiscard]] Cells& cells() { return cells_; }
    [[nodiscard]] const Cells& cells() const { return cells_; }

  private:
    [[nodiscard]] std::int64_t& at(Place first, int number) {
        return cells_.at(first + static_cast<std::size_t>(number - 1));
    }

    Cells cells_{};
};

/// The rows of AtteTemp1 of one employee and day, held in memory while the steps of the calculation work on
/// them. Normally one row, new; but the staging table may hold older ones of the same employee and day, of
/// any time slot, and whatever a step does hits them all. store() leaves the table as the steps' statements
/// one by one would have.
class EmployeeDay {
  public:
    /// The observer is told what is decided, and outlives the day; null where nobody listens.
    EmployeeDay(Database& database, QDate date, QString EmpNo, DayObserver* observer = nullptr);

    [[nodiscard]] Database& database() { return database_; }
    [[nodiscard]] DayObserver* observer() const { return observer_; }
    /// The row of which the observer is told: of several that one which was added last.
    [[nodiscard]] bool isObserved(const DayRow& row) const {
        return observer_ != nullptr && &row == &rows_.back();
    }
    [[nodiscard]] const QString& EmpNo() const { return EmpNo_; }
    [[nodiscard]] QDate date() const { return date_; }
    [[nodiscard]] QString dayLiteral() const; ///< "#2001/3/5#".
    [[nodiscard]] std::vector<DayRow>& rows() { return rows_; }
    [[nodiscard]] bool hasException() const; ///< Whether Expt is set in any row.

    void load();                        ///< Takes the rows that the table holds. Throws RunTimeError.
    void addRow(const QString& TimeNo); ///< A further row, which reaches the table with store().

    /// Writes new rows and what has changed in older ones, once: later calls do nothing. Throws RunTimeError.
    void store();
    /// The same where an error is already on its way, which is the one to be told.
    void storeQuietly() noexcept;

  private:
    void insert(const DayRow& row);
    void update(std::size_t row);

    Database& database_;
    QString EmpNo_;
    QDate date_;
    DayObserver* observer_;
    QString newTimeNo_;
    Recordset older_;
    std::vector<DayRow::Cells> olderCells_; ///< Of the first rows, as the table holds them.
    std::vector<DayRow> rows_;
    bool stored_ = false;
};

} // namespace pontrel
