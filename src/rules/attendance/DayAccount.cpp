#include "rules/attendance/DayAccount.h"

#include "rules/attendance/DayBackground.h"
#include "rules/attendance/DayRerun.h"
#include "rules/attendance/DaySources.h"
#include "rules/attendance/Minutes.h"
#include "store/Format.h"
#include "store/MemoryStore.h"
#include "store/StoreText.h"

#include <algorithm>

namespace pontrel {

namespace {

/// All that the day of an employee is judged by, and the month around it.
std::vector<RowChoice> rowsAround(QDate date) {
    const QDate first(date.year(), date.month(), 1);
    const QDate last = first.addMonths(1).addDays(-1);
    const QString EmpNo = QStringLiteral("EmpNo");
    const QString UseDate = QStringLiteral("UseDate");
    return {{QStringLiteral("Base04")},
            {QStringLiteral("Base06"), EmpNo},
            {QStringLiteral("Holi01")},
            {QStringLiteral("Canc01")},
            {QStringLiteral("Rule01"), {}, QStringLiteral("hymd"), first, last},
            {QStringLiteral("Rule03"), EmpNo, QStringLiteral("YMD"), first, last},
            {QStringLiteral("Atte02"), EmpNo, UseDate, first, last},
            {QStringLiteral("Atte03"), EmpNo, UseDate, date, date},
            {QStringLiteral("Atte01"), EmpNo, UseDate, date, date},
            {QStringLiteral("AtteTemp"), EmpNo, UseDate, date, date},
            {QStringLiteral("View02"), EmpNo, UseDate, date, date},
            {QStringLiteral("Holi04"), EmpNo, QStringLiteral("HoliDate"), date, date},
            {QStringLiteral("Canc02"), EmpNo, QStringLiteral("CnlDate"), date, date}};
}

bool isAssignment(const DayStep& step) {
    return step.decision <= Decision::PunchBeyondList;
}

bool sameRow(const std::optional<DayRow>& a, const DayRow& b) {
    return a && a->cells() == b.cells();
}

QString codeIn(const StoredRow& row) {
    return row.at(QStringLiteral("TimeNo")).joined();
}

bool isExcuse(const DayStep& step) {
    return step.decision == Decision::LeaveExcuses || step.decision == Decision::WriteOffExcuses;
}

/// Whether the employee's day was worked out to its end: an error in a slot behind his comes later.
bool isComplete(const DayRun& run) {
    return !run.steps.empty() && (run.steps.back().decision == Decision::DayException ||
                                  run.steps.back().decision == Decision::DayInOrder);
}

/// Whether an error ended the employee's day, or came before it.
bool endsEarly(const DayRun& run) {
    return !run.failure.isEmpty() && !isComplete(run);
}

/// Works out one account over a copy of the employee's rows, which it uses up.
class Explanation {
  public:
    Explanation(Database& copy, DayAccount& account)
        : copy_(copy), rerun_(copy, account.date), sources_(copy, rerun_), account_(account) {}

    void explain(const QString& TimeNo) {
        employment_ = employmentText(copy_);
        rerun_.fillLeavingDate();
        account_.month = statesOfMonth(copy_, account_.date);
        readRoster();
        readRow(TimeNo);
        readNames();
        readLeave();
        if (account_.hasRow)
            explainRow();
        else
            explainWithoutRow();
        tellOtherPunches();
    }

  private:
    void remark(Remark which, const QString& text = {}) { account_.remarks.push_back({which, text}); }

    void readRoster();
    void readRow(const QString& TimeNo);
    void readNames();
    void readLeave();
    void remarkRoster();
    void recalculate();
    void explainRow();
    void explainWithoutRow();
    void tellWhyNotCalculated();
    void remarkPunches();
    void tellOtherPunches();
    void tellStory();
    void keepCushions(DayRun& run) const;
    [[nodiscard]] bool cushionsComeOutAgain();
    [[nodiscard]] DayRun judgeStoredRow(const DayRun& anew, bool assignmentHolds, bool slotChanged);
    void takeSlot(const std::optional<SlotTimes>& slot);
    void takePunches();
    void nameCodes();
    /// The name that a table of names has for the code, the code itself where it has none.
    [[nodiscard]] QString nameOf(const char16_t* table, const char16_t* codeColumn,
                                 const char16_t* nameColumn, const QString& code);
    [[nodiscard]] QString leaveName(const QString& code) {
        return nameOf(u"Holi01", u"HoliNo", u"HoliType", code);
    }

    Database& copy_;
    DayRerun rerun_;
    DaySources sources_;
    DayAccount& account_;
    bool isRostered_ = false;
    QString rosterTimeNo_; ///< Empty on a day of rest.
    QString employment_;   ///< The dates of his employment.
    StoredRow row_;
};

void Explanation::readRoster() {
    for (const StoredRow& row : rerun_.rowsOfDay(QStringLiteral("Rule03"), QStringLiteral("YMD"))) {
        isRostered_ = true;
        rosterTimeNo_ = codeIn(row);
    }
}

void Explanation::readRow(const QString& TimeNo) {
    const QString exceptions = QStringLiteral("Atte03");
    const QString results = QStringLiteral("Atte02");
    const bool fromResults = account_.list == DayList::Results;
    std::optional<StoredRow> row = rerun_.result(fromResults ? results : exceptions, TimeNo);
    if (!row)
        row = rerun_.result(fromResults ? exceptions : results, TimeNo);
    account_.hasRow = row.has_value();
    account_.TimeNo = rosterTimeNo_;
    if (!row)
        return;
    row_ = *row;
    account_.stored = DayRow::of(row_.values);
    account_.EmpNo = row_.at(QStringLiteral("EmpNo")).joined();
    account_.TimeNo = codeIn(row_);
    const std::optional<StoredRow> exception = rerun_.result(exceptions, account_.TimeNo);
    const std::optional<StoredRow> result = rerun_.result(results, account_.TimeNo);
    account_.isException = exception.has_value();
    if (exception && result && !sameRow(DayRow::of(exception->values), DayRow::of(result->values)))
        remark(Remark::ListsDiffer, fromResults ? QStringLiteral("勤惰查詢") : QStringLiteral("異常處理"));
    for (const StoredRow& other : rerun_.rowsOfDay(results))
        if (foldedCode(codeIn(other)) != foldedCode(account_.TimeNo))
            remark(Remark::OtherRow, codeIn(other));
}

QString Explanation::nameOf(const char16_t* table, const char16_t* codeColumn, const char16_t* nameColumn,
                            const QString& code) {
    const Rows names =
        copy_.select(QStringLiteral("Select %1,%2 from %3")
                         .arg(QStringView(codeColumn), QStringView(nameColumn), QStringView(table)));
    for (const std::vector<Value>& name : names)
        if (foldedCode(name.at(0).joined()) == foldedCode(code) && !name.at(1).joined().isEmpty())
            return name.at(1).joined();
    return code;
}

void Explanation::readNames() {
    const QString name = nameOf(u"Base06", u"EmpNo", u"EmpName", account_.EmpNo);
    account_.EmpName = name == account_.EmpNo ? QString() : name;
    const QString slot = nameOf(u"Base04", u"TimeNo", u"TimeName", account_.TimeNo);
    account_.TimeName = slot == account_.TimeNo ? QString() : slot;
}

void Explanation::readLeave() {
    for (const StoredRow& row : rerun_.rowsOfDay(QStringLiteral("Holi04"), QStringLiteral("HoliDate"))) {
        const Value from = row.at(QStringLiteral("BegTime"));
        const Value to = row.at(QStringLiteral("EndTime"));
        if (!from.isNull() && !to.isNull())
            account_.leave.push_back({secondOfDay(from.toTime()) / 60, secondOfDay(to.toTime()) / 60,
                                      leaveName(row.at(QStringLiteral("HoliNo")).joined())});
    }
}

void Explanation::remarkRoster() {
    if (!isRostered_)
        remark(Remark::RosterNone);
    else if (rosterTimeNo_.isEmpty())
        remark(Remark::RosterRest);
    else if (foldedCode(rosterTimeNo_) != foldedCode(account_.TimeNo))
        remark(Remark::RosterOther, rosterTimeNo_);
}

void Explanation::recalculate() {
    const DayRun run = rerun_.recalculate(account_.TimeNo);
    Recalculation& would = account_.recalculation;
    would.failure = run.failure;
    would.after = run.row.value_or(account_.stored);
    for (std::size_t place = 0; place < DayRow::Places; ++place)
        if (would.after.cells().at(place) != account_.stored.cells().at(place))
            would.changed.push_back(place);
    using enum Recalculation::Outcome;
    would.outcome = endsEarly(run)          ? Fails
                    : !run.row              ? Removes
                    : !account_.isException ? (would.changed.empty() ? Untouched : Alters)
                    : !run.isException      ? Clears
                    : would.changed.empty() ? Same
                                            : Changes;
}

void Explanation::takeSlot(const std::optional<SlotTimes>& slot) {
    account_.slot = slot;
    if (!slot)
        return;
    const PunchWindows windows(*slot);
    account_.windows.assign(windows.all().begin(), windows.all().end());
    const QString carried = carriedTimes(copy_, *slot);
    if (!carried.isEmpty())
        remark(Remark::TimesCarried, carried);
}

/// Those that were told of; where the punches can no longer be told, those that the row has.
void Explanation::takePunches() {
    for (const DayStep& step : account_.steps) {
        const bool taken = step.decision == Decision::PunchTaken || step.decision == Decision::MidnightTaken;
        if (taken || step.decision == Decision::PositionTaken || step.decision == Decision::PunchOutside)
            account_.punches.push_back({step.time, taken ? step.position : 0, step});
    }
    if (!account_.punches.empty())
        return;
    const DayRow::Cells& cells = account_.stored.cells();
    const auto take = [&](std::size_t place, int position) {
        if (cells.at(place) != DayRow::NoTime)
            account_.punches.push_back({static_cast<int>(cells.at(place) / 60), position});
    };
    for (int position = 1; position <= Positions; ++position)
        take(DayRow::TimePlace + static_cast<std::size_t>(position - 1), position);
    for (std::size_t place = DayRow::TPlace; place < DayRow::FPlace; ++place)
        take(place, 0);
}

/// Codes of leave and reasons are told with their names.
void Explanation::nameCodes() {
    for (DayStep& step : account_.steps) {
        if (step.code.isEmpty())
            continue;
        const QString name = step.decision == Decision::WriteOff
                                 ? nameOf(u"Canc01", u"CnlNo", u"CnlName", step.code)
                                 : leaveName(step.code);
        if (name != step.code)
            step.code += u' ' + name;
    }
}

void Explanation::explainRow() {
    remarkRoster();
    if (rerun_.result(QStringLiteral("Atte03"), {}))
        recalculate();
    tellStory();
}

/// Behind what became of the others, as the calculation does not look at them.
void Explanation::tellOtherPunches() {
    std::vector<DayStep>& steps = account_.steps;
    const std::vector<DayStep>& others = sources_.others();
    steps.insert(std::find_if_not(steps.begin(), steps.end(), isAssignment), others.begin(), others.end());
    for (const DayStep& step : others)
        account_.punches.push_back({step.time, 0, step});
}

void Explanation::explainWithoutRow() {
    remark(Remark::NotCalculated);
    remarkPunches();
    if (!isRostered_)
        remark(Remark::RosterNone);
    else if (rosterTimeNo_.isEmpty())
        remark(Remark::RosterRest);
    else
        tellWhyNotCalculated();
    for (const int minute : sources_.ordinary())
        if (account_.steps.empty())
            account_.punches.push_back({minute, 0});
}

/// Of a day on the roster. Who is calculated is found by calculating: once as he stands in the store, once as
/// if he were employed.
void Explanation::tellWhyNotCalculated() {
    const bool isCalculated = rerun_.isCalculated();
    DayRun run = sources_.calculate(account_.EmpNo, rosterTimeNo_);
    takeSlot(run.slot);
    if (!run.slot && run.failure.isEmpty())
        remark(Remark::SlotUnknown, rosterTimeNo_);
    else if (run.slot && !isCalculated)
        remark(Remark::NotEmployed, employment_);
    if (!endsEarly(run))
        return;
    remark(Remark::CalculationFails, run.failure);
    account_.steps = std::move(run.steps); // which lead to it
    if (run.slot)
        takePunches();
    nameCodes();
}

void Explanation::remarkPunches() {
    QStringList times;
    for (const int minute : sources_.ordinary())
        times += shortTime(QTime(minute / 60, minute % 60));
    if (!times.isEmpty())
        remark(Remark::PunchesThere, times.join(u'、'));
}

/// The row judged as if it had none. Those beside leave or a write-off, or without a punch, may be older.
bool Explanation::cushionsComeOutAgain() {
    StoredRow bare = row_;
    DayRow stored = account_.stored;
    for (const int position : {1, 3})
        if (stored.FT(position) != 0 && stored.FH(position) == 0 && stored.FC(position) == 0)
            bare.set(DayRow::columnName(position == 1 ? DayRow::Cushion1Place : DayRow::Cushion3Place), 0);
    DayRun run = rerun_.judge(bare);
    return !run.row || (run.row->Cushion(1) == stored.Cushion(1) && run.row->Cushion(3) == stored.Cushion(3));
}

/// Where the day would no longer come out as it is stored: the row by itself, and what has changed.
DayRun Explanation::judgeStoredRow(const DayRun& anew, bool assignmentHolds, bool slotChanged) {
    if (anew.row && !sameCover(*anew.row, account_.stored))
        remark(Remark::CoverChanged);
    const bool cushionsHold = cushionsComeOutAgain();
    DayRun run = rerun_.judge(row_);
    if (!sameRow(run.row, account_.stored) || slotChanged || !cushionsHold)
        remark(Remark::SlotChanged);
    if (assignmentHolds)
        run.steps.insert(run.steps.begin(), anew.steps.begin(),
                         std::find_if_not(anew.steps.begin(), anew.steps.end(), isAssignment));
    return run;
}

/// A recalculation does not reset cushions: one that leave or a write-off has excused since is still there.
void Explanation::keepCushions(DayRun& run) const {
    if (!run.row)
        return;
    DayRun kept = run;
    DayRow stored = account_.stored;
    for (DayStep& step : kept.steps) {
        if (!isExcuse(step) || !isWayIn(step.position))
            continue;
        kept.row->Cushion(step.position) = stored.Cushion(step.position);
        step.minutes = static_cast<int>(stored.Cushion(step.position));
    }
    if (sameRow(kept.row, stored))
        run = std::move(kept);
}

void Explanation::tellStory() {
    auto [run, holds, punchesRemark, slotChanged] =
        sources_.calculateFor(account_.stored, account_.EmpNo, account_.TimeNo);
    if (punchesRemark)
        remark(*punchesRemark);
    if (punchesRemark == Remark::PunchesChanged || punchesRemark == Remark::PunchesUnlike)
        remarkPunches();
    takeSlot(run.slot);
    if (!run.slot) {
        if (run.failure.isEmpty())
            remark(Remark::SlotUnknown, account_.TimeNo);
        else
            remark(Remark::CalculationFails, run.failure);
        takePunches();
        return;
    }
    keepCushions(run);
    if (!sameRow(run.row, account_.stored))
        run = judgeStoredRow(run, holds, slotChanged);
    if (endsEarly(run))
        remark(Remark::CalculationFails, run.failure);
    account_.told = run.row.value_or(account_.stored);
    account_.steps = std::move(run.steps);
    takePunches();
    nameCodes();
}

} // namespace

DayAccount explainDay(const QString& path, const QString& EmpNo, QDate date, const QString& TimeNo,
                      DayList list) {
    DayAccount account;
    account.list = list;
    account.EmpNo = EmpNo;
    account.date = date;
    const auto copy = copyIntoMemory(path, rowsAround(date), EmpNo);
    Explanation(*copy, account).explain(TimeNo);
    return account;
}

} // namespace pontrel
