#pragma once

#include "store/Database.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace pontrel {

// Lengths of leave are kept as one number: whole days in front, hours in the tenths place, on a day of 8
// hours. 1.4 is one day and four hours.

/// Hours of a days-and-hours number. Tenths 8 and 9, which only a hand can have written, count as such hours.
/// Throws error 6 beyond 32 bits.
[[nodiscard]] std::int32_t hoursOfNumber(double number);

/// The days-and-hours number of hours; -12 hours are -1.4.
[[nodiscard]] double numberOfHours(std::int32_t hours);

/// Codes of the leave types that have a balance, in the order in which they are compared: this year's and
/// last year's annual leave, personal and sick leave. A null code equals no type.
using BalanceCodes = std::array<std::optional<QString>, 4>;

/// Reads them from the settings. Throws RunTimeError, 3021 where there is no settings row.
[[nodiscard]] BalanceCodes readBalanceCodes(Database& database);

/// Place among the codes of the balance that a leave of the type charges: of the first equal code, case
/// included. Nothing where it charges none.
[[nodiscard]] std::optional<std::size_t> balanceOf(const QString& HoliNo, const BalanceCodes& codes);

/// One employee's balance of one kind. A null figure is error 94 where it is first read, an employee whom
/// there is not error 3021.
class LeaveBalance {
  public:
    /// balance is a place among the codes. Throws RunTimeError.
    LeaveBalance(Database& database, const QString& EmpNo, std::size_t balance);

    [[nodiscard]] std::int32_t hoursLeft() const;

    /// Adds the hours to what is taken, and takes what is left anew from what may be taken and what is.
    void charge(std::int16_t hours);

  private:
    [[nodiscard]] std::vector<Value> readFigures() const;

    Database& database_;
    QString EmpNo_;
    std::size_t balance_;
    std::vector<Value> figures_; ///< What may be taken, is taken and is left.
};

} // namespace pontrel
