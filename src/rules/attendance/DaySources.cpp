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

std::vector<std::int64_t> secondsOf(const std::vector<QTime>& times) {
    std::vector<std::int64_t> seconds;
    for (const QTime time : times)
        seconds.push_back(secondOfDay(time));
    std::sort(seconds.begin(), seconds.end());
    return seconds;
}

/// The times that the row has, in positions and beside them, rising.
std::vector<std::int64_t> punchesIn(const DayRow& row) {
    const DayRow::Cells& cells = row.cells();
    std::vector<std::int64_t> seconds(cells.begin() + DayRow::TimePlace, cells.begin() + DayRow::FTPlace);
    seconds.insert(seconds.end(), cells.begin() + DayRow::TPlace, cells.begin() + DayRow::FPlace);
    std::erase(seconds, DayRow::NoTime);
    std::sort(seconds.begin(), seconds.end());
    return seconds;
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

bool DaySources::isSameView() {
    const std::optional<StoredRow> now = firstOf(rerun_.rowsOfDay(QStringLiteral("View02")));
    return now && view_ && timesOf(*now) == timesOf(*view_);
}

bool DaySources::isViewOfSame() {
    const std::optional<StoredRow> now = firstOf(rerun_.rowsOfDay(QStringLiteral("View02")));
    if (!now || !view_)
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
    DayRun staged = rerun_.calculate(EmpNo, TimeNo);
    if (!staged.slot)
        return {std::move(staged)};
    const bool stagedViewed = isSameView();
    DayRun kept;
    bool keptViewed = false;
    if (hasKept_) {
        kept = calculate(EmpNo, TimeNo);
        keptViewed = isViewOfSame();
    }
    if (!view_)
        return calculateWithoutView(row, std::move(staged), std::move(kept));
    const bool differ = hasKept_ ? !keptViewed : hasStaged_ && !stagedViewed;
    const std::optional<Remark> changed = differ ? std::optional(Remark::PunchesChanged) : std::nullopt;
    if (stagedViewed && holds(staged))
        return {std::move(staged), true, changed};
    if (hasKept_ && holds(kept))
        return {std::move(kept), true, differ ? std::optional(Remark::ViewChanged) : std::nullopt};
    rerun_.replacePunches(EmpNo, viewedPunches(row));
    DayRun viewed = rerun_.calculate(EmpNo, TimeNo);
    if (holds(viewed))
        return {std::move(viewed), true, changed};
    return judgeUnlike(row, std::move(viewed), changed);
}

DaySources::Run DaySources::calculateWithoutView(const DayRow& row, DayRun staged, DayRun kept) const {
    const auto holds = [&](const DayRun& run) { return run.row && sameAssignment(*run.row, row); };
    if (hasKept_ && holds(kept))
        return {std::move(kept), true};
    if (!hasKept_ && holds(staged))
        return {std::move(staged), true};
    return judgeUnlike(row, std::move(staged), {});
}

DaySources::Run DaySources::judgeUnlike(const DayRow& row, DayRun run, std::optional<Remark> remark) const {
    const bool holds = run.row && sameAssignment(*run.row, row);
    // Of a full view the punches behind it cannot be told, nor what became of them.
    if (view_ && isFull(*view_))
        return {std::move(run), holds, remark};
    if (view_ && secondsOf(timesOf(*view_)) == punchesIn(row))
        return {std::move(run), holds, remark, true};
    if (hasStaged_ || hasKept_ || (view_ && !timesOf(*view_).empty()))
        remark = Remark::PunchesUnlike;
    else if (!punchesIn(row).empty())
        remark = Remark::PunchesGone;
    return {std::move(run), holds, remark};
}

} // namespace pontrel
