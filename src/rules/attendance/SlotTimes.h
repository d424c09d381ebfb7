#pragma once

#include "store/Database.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>

namespace pontrel {

/// The working values of one time slot. All times are whole minutes: a time of day from 0 to 1439, an
/// allowance from 0 to 59. Sums of them do not wrap at midnight.
struct SlotTimes {
    QString TimeNo;
    std::uint8_t CardType = 0;
    int StrIn1 = 0;
    int StdT1 = 0;
    int StdT2 = 0;
    int EndOut2 = 0;
    int StrIn3 = 0;
    int StdT3 = 0;
    int StdT4 = 0;
    int EndOut4 = 0;
    int ElstMin = 0;
    std::uint8_t ElstType = 0; ///< A place in elasticityNames(), or none of them.
    int Cushion = 0;
    int Delay = 0;
    int Earlier = 0;
    int Cushion1 = 0;
    int Delay1 = 0;
    int Earlier1 = 0;
    std::array<bool, 4> StdC{};

    /// Takes the values of a row of Base04. A null among the eight times leaves what the row before it gave.
    /// Throws RunTimeError for a null or an impossible value in any other column.
    void read(const Rows& rows, std::size_t row);
};

/// The kinds of elasticity as the user knows them, in the order of their numbers.
[[nodiscard]] const QStringList& elasticityNames();

/// A time of day cut to minutes and read anew: the size of a negative one, wrapped at midnight. The bounds of
/// some windows are taken so, those of others are plain sums.
[[nodiscard]] int wrappedMinutes(int minutes);

} // namespace pontrel
