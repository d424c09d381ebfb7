#include "rules/attendance/DaySources.h"

#include "rules/attendance/Minutes.h"
#include "rules/attendance/PunchClasses.h"

#include <algorithm>

namespace pontrel {

namespace {

constexpr std::size_t MostViewed = 12; ///< Punches in a row of View02.

std::vector<QTime> timesOf(const StoredRow& view) {
    std::vector<QTime> times;
    for (std::size_t punch = 1; punch <= MostViewed; ++punch) {
        const Value time = view.at(QStringLiteral("T%1").arg(punch));
        if (!time.isNull())
            times.push_back(time.toTime());
    }
    return times;
}

/// Whether there may be further punches, which the view has no place for.
bool isFull(const StoredRow& view) {
    return !view.at(QStringLiteral("T%1").arg(MostViewed)).isNull();
}

/// Each time once: the table of punches keeps those of one second once that were staged again.
std::vector<QTime> distinctTimesOf(const StoredRow& view) {
    std::vector<QTime> times = timesOf(view);
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

std::optional<StoredRow> firstOf(const std::vector<StoredRow>& rows) {
    return rows.empty() ? std::nullopt : std::optional(rows.front());
}

} // namespace

DaySources::DaySources(Database& copy, DayRerun& rerun)
    : copy_(copy)
    , rerun_(rerun)
    , view_(firstOf(rerun.rowsOfDay(QStringLiteral("View02"))))
    , kept_(rerun.rowsOfDay(QStringLiteral("Atte01"))) {
    const QString staging = QStringLiteral("AtteTemp");
    const QString punches = QStringLiteral("Atte01");
    hasStaged_ = !ordinaryIn(staging).empty();
    hasKept_ = !ordinaryIn(punches).empty();
    ordinary_ = ordinaryIn(kept_.empty() ? staging : punches);
    others_ = othersIn(kept_.empty() ? staging : punches);
}

std::vector<int> DaySources::ordinaryIn(const QString& table) {
    std::vector<int> minutes;
    for (const std::vector<Value>& punch : copy_.select(
             QStringLiteral("Select UseTime from %1 Where %2 and IsNull(UseTime) = False Order by UseTime")
                 .arg(table, OrdinaryPunches)))
        minutes.push_back(secondOfDay(punch.at(0).toTime()) / 60);
    return minutes;
}

std::vector<DayStep> DaySources::othersIn(const QString& table) {
    std::vector<DayStep> others;
    for (const std::vector<Value>& punch :
         copy_.select(QStringLiteral("Select UseTime,Class from %1 Where (Not%2 or IsNull(Class) = True) and "
                                     "IsNull(UseTime) = False Order by UseTime")
                          .arg(table, OrdinaryPunches)))
        others.push_back({.decision = Decision::PunchOfClass,
                          .time = secondOfDay(punch.at(0).toTime()) / 60,
                          .code = punch.at(1).joined()});
    return others;
}

// Of a full view the punches behind it cannot be told, nor what became of them.
bool DaySources::knowPunches() const {
    return view_ && !isFull(*view_);
}

bool DaySources::isViewed() {
    const std::optional<StoredRow> now = firstOf(rerun_.rowsOfDay(QStringLiteral("View02")));
    if (!now)
        return false;
    std::vector<QTime> made = distinctTimesOf(*now);
    const std::vector<QTime> viewed = distinctTimesOf(*view_);
    if (isFull(*view_) && made.size() > viewed.size())
        made.resize(viewed.size());
    return made == viewed;
}

/// The punches that the view stands for. Those at midnight leave their places before the others empty; of a
/// day that has no others, the row tells of one.
std::vector<QTime> DaySources::viewedPunches(DayRow row) const {
    const QTime midnight(0, 0);
    std::vector<QTime> times = timesOf(*view_);
    std::size_t before = 0;
    while (!times.empty() && view_->at(QStringLiteral("T%1").arg(before + 1)).isNull())
        ++before;
    for (int position = 1; times.empty() && position <= 4; ++position)
        if (row.FT(position) != 0 && row.Time(position) == DayRow::NoTime)
            before = 1;
    times.insert(times.begin(), before, midnight);
    return times;
}

DayRun DaySources::calculate(const QString& EmpNo, const QString& TimeNo) {
    if (!kept_.empty())
        rerun_.replacePunches(kept_);
    return rerun_.calculate(EmpNo, TimeNo);
}

DaySources::Run DaySources::calculateFor(const DayRow& row, const QString& EmpNo, const QString& TimeNo) {
    const auto holds = [&](const DayRun& run) { return run.row && sameAssignment(*run.row, row); };
    DayRun anew = rerun_.calculate(EmpNo, TimeNo);
    if (!view_) {
        const bool has = holds(anew);
        return {std::move(anew), has,
                sameAssignment(row, DayRow()) ? std::nullopt : std::optional(Remark::PunchesGone)};
    }
    const std::optional<StoredRow> viewNow = firstOf(rerun_.rowsOfDay(QStringLiteral("View02")));
    const bool stagedHold = !viewNow || timesOf(*viewNow) == timesOf(*view_);
    if (stagedHold && (hasStaged_ || holds(anew))) {
        const bool has = holds(anew);
        return {std::move(anew), has};
    }
    std::optional<Remark> remark;
    rerun_.replacePunches(kept_);
    anew = rerun_.calculate(EmpNo, TimeNo);
    if (isViewed()) {
        if (holds(anew))
            return {std::move(anew), true};
    } else if (!stagedHold && (hasStaged_ || hasKept_)) {
        remark = Remark::PunchesChanged;
    }
    rerun_.replacePunches(EmpNo, viewedPunches(row));
    anew = rerun_.calculate(EmpNo, TimeNo);
    const bool has = holds(anew);
    return {std::move(anew), has, remark};
}

} // namespace pontrel
