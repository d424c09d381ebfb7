#include "rules/attendance/DayObserver.h"
#include "rules/attendance/DayRules.h"
#include "rules/attendance/Minutes.h"
#include "store/StatementText.h"

#include <algorithm>

namespace pontrel {

namespace {

constexpr int LastSecond = 24 * 3600 - 1;

using Bounds = std::array<int, 5>;

Bounds boundsOf(const SlotTimes& slot) {
    return {slot.StdT1 * 60, slot.StdT2 * 60, slot.StdT3 * 60, slot.StdT4 * 60, LastSecond};
}

/// The part of the day, 1 to 4, that holds the second; 0 where none does.
int partOf(int second, const Bounds& B) {
    for (std::size_t part = 0; part < Positions; ++part)
        if (B[part] <= second && second < B[part + 1])
            return static_cast<int>(part) + 1;
    return 0;
}

/// The day's leave, from row to row.
class LeaveMarker {
  public:
    LeaveMarker(EmployeeDay& day, const SlotTimes& slot) : day_(day), B_(boundsOf(slot)) {}

    void mark(const QString& HoliNo, int begin, int end) {
        std::array<bool, Positions + 1> Hit{};
        const std::array times{std::max(begin, B_[0]), end};
        found_ = {};
        for (std::size_t which = 0; which < times.size(); ++which) {
            const int part = partOf(times[which], B_);
            if (part == 0)
                continue;
            Hit[static_cast<std::size_t>(part)] = true;
            Pos_[which] = part;
            found_[which] = true;
        }
        SavedPos_ = Pos_;
        // Deliberate: the 1 also stands as the start of a later row that falls in no part.
        if (Pos_[0] != Pos_[1])
            Pos_[0] = 1;
        const Cover covered = cover(Hit);
        if (DayObserver* observer = day_.observer())
            observer->told({.decision = covered.runsOn ? Decision::LeaveRunsOn : Decision::LeaveRow,
                            .from = begin / 60,
                            .to = end / 60,
                            .count = covered.runsOn ? int{found_[0]} + int{found_[1]} : 0,
                            .positions = covered.positions,
                            .code = HoliNo});
    }

    /// Leave of this type does not cover the parts in which it starts and ends, only those between.
    void uncoverEnds(const QString& HoliNo) {
        for (const int position : SavedPos_) {
            if (position == 0)
                refuseUnknownPosition();
            for (DayRow& row : day_.rows())
                row.FH(position) = 0;
        }
        if (DayObserver* observer = day_.observer())
            tellUncovered(*observer, HoliNo);
    }

  private:
    struct Cover {
        unsigned positions = 0; ///< Bit 0 is position 1.
        bool runsOn = false;    ///< Beyond the one part in which it starts or ends.
    };

    /// Each part once; one that this leave itself starts or ends in is not known from before.
    void tellUncovered(DayObserver& observer, const QString& HoliNo) const {
        for (std::size_t which = 0; which < SavedPos_.size(); ++which) {
            const bool again = SavedPos_[0] == SavedPos_[1];
            if (again && which == 1)
                return;
            const bool found = found_[which] || (again && found_[1]);
            observer.told({.decision = Decision::LeaveEndsUncovered,
                           .position = SavedPos_[which],
                           .count = found ? 0 : 1,
                           .code = HoliNo});
        }
    }

    [[nodiscard]] Cover cover(const std::array<bool, Positions + 1>& Hit) {
        Cover covered;
        // Deliberate: a leave that starts and ends in the first part is never left and covers the whole day.
        bool inside = false;
        for (int position = 1; position <= Positions; ++position) {
            const bool hit = Hit[static_cast<std::size_t>(position)];
            if (hit)
                inside = !inside;
            if (!hit && !(Pos_[0] == 1 && inside))
                continue;
            for (DayRow& row : day_.rows())
                row.FH(position) = 1;
            covered.positions |= 1U << (position - 1);
        }
        covered.runsOn = inside && Pos_[0] == 1 && !Hit[Positions];
        return covered;
    }

    /// There is no column FH0: the statement fails, and with it the whole run.
    void refuseUnknownPosition() {
        day_.database().execute(
            QStringLiteral("Update AtteTemp1 set FH0 = False Where EmpNo = %1     and UseDate =%2")
                .arg(textLiteral(day_.EmpNo()), day_.dayLiteral()));
    }

    EmployeeDay& day_;
    Bounds B_;
    std::array<int, 2> Pos_{};
    std::array<int, 2> SavedPos_{};
    std::array<bool, 2> found_{}; ///< Which ends of the last row lie in a part.
};

/// What earlier runs have left marked, and where there is nothing at all, that.
void tellMarked(DayObserver& observer, EmployeeDay& day, DayRow::Place flags, bool hasRows, Decision stands,
                Decision nothing) {
    bool anyStands = false;
    for (int position = 1; position <= Positions; ++position) {
        if (day.rows().back().cells().at(flags + static_cast<std::size_t>(position - 1)) == 0)
            continue;
        anyStands = true;
        observer.told({.decision = stands, .position = position});
    }
    if (!anyStands && !hasRows)
        observer.told({.decision = nothing});
}

} // namespace

void MarkLeaveCover(EmployeeDay& day, DayFacts::FactRows leave, const SlotTimes& slot) {
    if (DayObserver* observer = day.observer())
        tellMarked(*observer, day, DayRow::FHPlace, !leave.empty(), Decision::LeaveStands, Decision::NoLeave);
    LeaveMarker marker(day, slot);
    QString LastHoliNo;
    for (const std::vector<Value>& row : leave) {
        LastHoliNo = row.at(1).toText();
        const int BegTime = secondOfDay(row.at(2).toTime());
        const int EndTime = secondOfDay(row.at(3).toTime());
        // The hours are read and not used; a null among them is an error all the same.
        [[maybe_unused]] const std::int16_t HoliHours = row.at(4).toInt16();
        marker.mark(LastHoliNo, BegTime, EndTime);
    }
    if (LastHoliNo == QLatin1String("14"))
        marker.uncoverEnds(LastHoliNo);
}

void MarkWriteOffCover(EmployeeDay& day, DayFacts::FactRows writeOffs) {
    DayObserver* observer = day.observer();
    if (observer != nullptr)
        tellMarked(*observer, day, DayRow::FCPlace, !writeOffs.empty(), Decision::WriteOffStands,
                   Decision::NoWriteOff);
    for (const std::vector<Value>& entry : writeOffs)
        for (int position = 1; position <= Positions; ++position) {
            const QString CnlNo = entry.at(static_cast<std::size_t>(position)).joined();
            if (CnlNo.isEmpty())
                continue;
            for (DayRow& row : day.rows())
                row.FC(position) = 1;
            if (observer != nullptr)
                observer->told({.decision = Decision::WriteOff, .position = position, .code = CnlNo});
        }
}

} // namespace pontrel
