#pragma once

#include "store/Format.h"
#include "store/Value.h"

#include <QString>
#include <QTime>

namespace pontrel {

/// The working values of the leave routines. They outlive a lookup and are shared by all that run one after
/// the other, so there is one object for the program's run: where a lookup finds nothing, what the one before
/// it left still counts.
struct LeaveValues {
    // Of the time slot looked up last: start of work, start and end of the midday break, end of work.
    QTime StdT1{0, 0};
    QTime StdT2{0, 0};
    QTime StdT3{0, 0};
    QTime StdT4{0, 0};
    QString TimeNo;            ///< Its code; empty for a day without a roster row.
    bool gDayRostered = false; ///< Whether the lookup found a roster row.
    bool gHoliDeduct = false;  ///< Whether the leave type looked up last leaves out days off.
    double gBusNo = 0;         ///< The current note number.

    /// The current note number as text, without grouping or padding.
    [[nodiscard]] QString BusNo() const { return Value(gBusNo).joined(); }
    /// Takes the number at the start of a text; 0 where there is none.
    void setBusNo(const QString& text) { gBusNo = leadingNumber(text); }
};

} // namespace pontrel
