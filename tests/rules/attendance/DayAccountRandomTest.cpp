#include "RandomDay.h"

#include "rules/attendance/DailyCalculation.h"
#include "rules/attendance/DaySentences.h"
#include "support/Errors.h"
#include "support/FakeHost.h"
#include "support/TestStore.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

bool isUnlisted(DayRow& row, int time) {
    for (int punch = 1; punch <= 12; ++punch)
        if (row.T(punch) == std::int64_t{time} * 60)
            return true;
    // A punch at midnight leaves no time, and the thirteenth and later are lost.
    return time == 0 || row.T(12) != DayRow::NoTime;
}

/// Minutes of positions that are not among these.
std::int64_t minutesOutside(DayRow& row, int first, int last) {
    std::int64_t minutes = 0;
    for (int position = 1; position <= Positions; ++position)
        if (position < first || position > last)
            minutes += row.minutes(position) + (isWayIn(position) ? row.Cushion(position) : 0);
    return minutes;
}

/// Whether what a step tells is what the row holds.
bool agrees(const DayStep& step, DayRow row) {
    const int position = step.position;
    switch (step.decision) {
    case Decision::PunchTaken:
        return row.FT(position) == 1 && row.Time(position) == std::int64_t{step.time} * 60;
    case Decision::MidnightTaken:
        return row.FT(position) == 1 && row.Time(position) == DayRow::NoTime;
    case Decision::PositionTaken:
        return (step.earlier == 0 || row.Time(position) == std::int64_t{step.earlier} * 60) &&
               isUnlisted(row, step.time);
    case Decision::PunchOutside:
        return isUnlisted(row, step.time);
    case Decision::NoWindows:
        return row.FT(1) + row.FT(2) + row.FT(3) + row.FT(4) == 0;
    case Decision::LeaveStands:
        return row.FH(position) == 1;
    case Decision::LeaveEndsUncovered:
        return row.FH(position) == 0;
    case Decision::WriteOffStands:
    case Decision::WriteOff:
        return row.FC(position) == 1;
    case Decision::NoTime:
        return row.Time(position) == DayRow::NoTime || row.Time(position) == 0;
    case Decision::NotRequired:
    case Decision::OnTime:
    case Decision::NotEarly:
    case Decision::EarlyUncounted:
    case Decision::LateUncounted:
        return row.Time(position) == std::int64_t{step.time} * 60;
    case Decision::LeaveExcuses:
        return row.FH(position) == 1 && step.minutes == 0;
    case Decision::WriteOffExcuses:
        return row.FC(position) == 1 && row.FH(position) == 0;
    case Decision::WithinCushion:
        return row.Cushion(position) == step.minutes && step.time - step.standard == step.minutes &&
               step.minutes <= step.cushion;
    case Decision::Late:
        return row.Delay(position) == step.minutes &&
               step.time - step.standard - step.cushion == step.minutes;
    case Decision::LeftEarly:
        return row.Earlier(position) == step.minutes && step.standard - step.time == step.minutes;
    case Decision::NoDelay:
        return row.DelayF() == 0;
    case Decision::DelayMarked:
        return row.DelayF() == position;
    case Decision::DelayPassedOver:
        return row.DelayF() > position;
    case Decision::NotAsked:
        return row.F(position) == 0;
    case Decision::FaultByMinutes:
        return row.F(position) == 1 && row.DelayF() == position &&
               (position % 2 == 1 ? row.Delay(position) : row.Earlier(position)) == step.minutes;
    case Decision::FaultMissing:
        return row.F(position) == 1 && row.FT(position) + row.FH(position) + row.FC(position) == 0;
    case Decision::FineByPunch:
        return row.F(position) == 0 && row.FT(position) == 1;
    case Decision::FineByLeave:
        return row.F(position) == 0 && row.FH(position) == 1;
    case Decision::FineByWriteOff:
        return row.F(position) == 0 && row.FC(position) == 1;
    case Decision::ShortMorning:
        return row.Expt() == 1 && step.minutes < 240 && std::abs(step.to - step.from) == step.minutes;
    case Decision::FullMorning:
        return step.minutes >= 240 && std::abs(step.to - step.from) == step.minutes;
    case Decision::NoExceptionsKept:
        return row.Expt() == 0;
    case Decision::DayException:
        return row.Expt() == 1;
    case Decision::DayInOrder:
        return row.Expt() == 0;
    case Decision::NoLeave:
        return row.FH(1) + row.FH(2) + row.FH(3) + row.FH(4) == 0;
    case Decision::NoWriteOff:
        return row.FC(1) + row.FC(2) + row.FC(3) + row.FC(4) == 0;
    case Decision::NoPunches:
        return row.FT(1) + row.FT(2) + row.FT(3) + row.FT(4) == 0 && row.T(1) == DayRow::NoTime;
    case Decision::PositionsJudged:
        return step.from >= 1 && step.to <= Positions && minutesOutside(row, step.from, step.to) == 0;
    case Decision::NoMinutes:
        return minutesOutside(row, 1, 0) == 0;
    case Decision::Window:
    case Decision::PunchBeyondList:
    case Decision::LeaveRow:
    case Decision::LeaveRunsOn:
    case Decision::PunchOfClass:
        return true; // held against the account as a whole
    default:
        return false;
    }
}

/// Whether what is told of cover, windows and lost punches adds up to what the account holds.
bool addsUp(const DayAccount& account) {
    DayRow row = account.stored;
    unsigned leave = 0;
    unsigned writeOffs = 0;
    std::size_t windows = 0;
    int punches = 0;
    for (const DayStep& step : account.steps) {
        const unsigned position = step.position == 0 ? 0 : 1U << (step.position - 1);
        using enum Decision;
        if (step.decision == LeaveRow || step.decision == LeaveRunsOn)
            leave |= step.positions;
        else if (step.decision == LeaveEndsUncovered)
            leave &= ~position;
        else if (step.decision == WriteOff)
            writeOffs |= position;
        else if (step.decision == PunchTaken || step.decision == MidnightTaken ||
                 step.decision == PositionTaken || step.decision == PunchOutside)
            ++punches;
        else if (step.decision == PunchBeyondList && punches <= 12)
            return false;
        if (step.decision == LeaveRunsOn && (step.count < 1 || step.count > 2))
            return false;
        if (step.decision == Window) {
            if (windows >= account.windows.size())
                return false;
            const PunchWindow& window = account.windows[windows++];
            if (window.position != step.position || window.lower != step.from || window.upper != step.to)
                return false;
        }
    }
    for (int position = 1; position <= Positions; ++position)
        if (row.FH(position) != (leave >> (position - 1) & 1U) ||
            row.FC(position) != (writeOffs >> (position - 1) & 1U))
            return false;
    return windows == account.windows.size();
}

/// The figures that a sentence about minutes has to name.
QStringList figuresOf(const DayStep& step) {
    switch (step.decision) {
    case Decision::WithinCushion:
    case Decision::Late:
        return {minuteText(step.time), minuteText(step.standard), QString::number(step.cushion),
                QString::number(step.minutes)};
    case Decision::LeftEarly:
        return {minuteText(step.time), minuteText(step.standard), QString::number(step.minutes)};
    case Decision::PunchTaken:
        return {minuteText(step.time), positionName(step.position)};
    case Decision::FaultByMinutes:
        return {positionName(step.position), QString::number(step.minutes)};
    default:
        return {};
    }
}

/// Whether each mark and each minute that the row holds has been told, once.
QString untold(const DayAccount& account) {
    const auto count = [&](std::initializer_list<Decision> decisions, int position = 0) {
        return std::count_if(account.steps.begin(), account.steps.end(), [&](const DayStep& step) {
            return (position == 0 || step.position == position) &&
                   std::find(decisions.begin(), decisions.end(), step.decision) != decisions.end();
        });
    };
    using enum Decision;
    const bool ended = count({CannotJudge}) > 0;
    DayRow row = account.stored;
    if (!ended && count({NoDelay, DelayMarked}) != 1)
        return u"DelayF"_s;
    if (!ended && count({DayException, DayInOrder}) != 1)
        return u"Expt"_s;
    for (int position = 1; position <= Positions; ++position) {
        const auto marks = count(
            {NotAsked, FaultByMinutes, FaultMissing, FaultStands, FineByPunch, FineByLeave, FineByWriteOff},
            position);
        if (!ended && marks + count({NoExceptionsKept}) != 1)
            return u"F%1"_s.arg(position);
        const bool arrives = isWayIn(position);
        if (count({arrives ? Late : LeftEarly}, position) != (row.minutes(position) != 0 ? 1 : 0))
            return u"minutes of %1"_s.arg(position);
        if (arrives && count({WithinCushion}, position) != (row.Cushion(position) != 0 ? 1 : 0))
            return u"cushion of %1"_s.arg(position);
        if (count({PunchTaken, MidnightTaken}, position) != row.FT(position))
            return u"punch of %1"_s.arg(position);
    }
    return {};
}

} // namespace

/// Explains days of made-up organisations, of which nothing has changed since they were calculated: what is
/// told comes to what the store holds, field by field.
class DayAccountRandomTest : public QObject {
    Q_OBJECT

    static constexpr int Days = 2000;

    void verify(const DayAccount& account) {
        for (std::size_t place = 0; place < DayRow::Places; ++place)
            QVERIFY2(account.told.cells().at(place) == account.stored.cells().at(place),
                     qPrintable(where_ + DayRow::columnName(place)));
        for (const DayRemark& remark : account.remarks)
            QVERIFY2(remark.remark == Remark::CalculationFails || remark.remark == Remark::TimesCarried,
                     qPrintable(where_ + sentenceOf(remark)));
        for (const DayStep& step : account.steps) {
            const QString sentence = sentenceOf(step);
            QVERIFY2(agrees(step, account.stored), qPrintable(where_ + sentence));
            for (const QString& figure : figuresOf(step))
                QVERIFY2(sentence.contains(figure), qPrintable(where_ + sentence));
            told_.insert(static_cast<int>(step.decision));
        }
        QVERIFY2(addsUp(account), qPrintable(where_ + plainText(account)));
        QVERIFY2(untold(account).isEmpty(), qPrintable(where_ + untold(account)));
        exceptions_ += account.isException ? 1 : 0;
    }

    QString where_;
    int exceptions_ = 0;
    QSet<int> told_;

  private Q_SLOTS:
    void whatIsToldIsWhatTheStoreHolds() {
        TestStore store;
        int days = 0;
        for (quint32 seed = 1; days < Days; ++seed) {
            store.holdOpen();
            store.clear();
            RandomDay random(seed);
            random.fill({&store.database()});
            // Nothing from before: the day is calculated once.
            for (const QString& table : {u"AtteTemp1"_s, u"Atte02"_s, u"Atte03"_s, u"View02"_s})
                store.database().execute(u"Delete * from "_s + table);
            FakeHost host;
            DailyCalculation calculation(store.database(), host);
            (void)errorOf([&] { calculation.CalcSlotLoop(RandomDay::day(), false); });
            // Of every second one the punches are in their table as well, as an import leaves them.
            if (seed % 2 == 0)
                store.database().execute(u"Insert into Atte01 Select * from AtteTemp"_s);
            store.commit();
            for (const std::vector<Value>& row :
                 store.database().select(u"Select EmpNo,TimeNo from Atte02"_s)) {
                where_ = u"seed %1, %2: "_s.arg(seed).arg(row.at(0).toText());
                verify(explainDay(store.path(), row.at(0).toText(), RandomDay::day(), row.at(1).toText()));
                if (QTest::currentTestFailed())
                    return;
                ++days;
            }
        }
        // Worth looking at: many go wrong, and most of what can be decided has been.
        QVERIFY2(exceptions_ > 300, qPrintable(QString::number(exceptions_)));
        QStringList never;
        for (int decision = 0; decision < DecisionCount; ++decision)
            if (!told_.contains(decision))
                never += QString::number(decision);
        // What only earlier rows or wild ones leave behind, and what ends the day without a result.
        QStringList expected;
        for (const Decision decision :
             {Decision::LeaveStands, Decision::WriteOffStands, Decision::CannotJudge,
              Decision::TimeWithoutPunch, Decision::FaultStands})
            expected += QString::number(static_cast<int>(decision));
        QCOMPARE(never, expected);
    }

    /// What is said of a recalculation before it runs is what it does.
    void whatARecalculationWouldDoIsWhatItDoes() {
        TestStore store;
        int cleared = 0;
        int changed = 0;
        for (quint32 seed = 1; seed <= 60; ++seed) {
            store.holdOpen();
            store.clear();
            RandomDay random(seed);
            random.fill({&store.database()});
            for (const QString& table : {u"AtteTemp1"_s, u"Atte02"_s, u"Atte03"_s, u"View02"_s})
                store.database().execute(u"Delete * from "_s + table);
            FakeHost host;
            DailyCalculation calculation(store.database(), host);
            (void)errorOf([&] { calculation.CalcSlotLoop(RandomDay::day(), false); });
            random.enterMore({&store.database()});
            store.commit();
            std::vector<DayAccount> accounts;
            for (const std::vector<Value>& row :
                 store.database().select(u"Select EmpNo,TimeNo from Atte03"_s))
                accounts.push_back(
                    explainDay(store.path(), row.at(0).toText(), RandomDay::day(), row.at(1).toText()));
            calculation.Recalculate(RandomDay::day());
            if (!calculation.finished())
                continue; // ended early by one of the employees, and the others were not reached
            for (const DayAccount& before : accounts) {
                where_ = u"seed %1, %2: "_s.arg(seed).arg(before.EmpNo);
                const DayAccount after =
                    explainDay(store.path(), before.EmpNo, RandomDay::day(), before.TimeNo);
                for (std::size_t place = 0; place < DayRow::Places; ++place)
                    QVERIFY2(before.recalculation.after.cells().at(place) == after.stored.cells().at(place),
                             qPrintable(where_ + DayRow::columnName(place)));
                const bool clears = before.recalculation.outcome == Recalculation::Outcome::Clears;
                QVERIFY2(clears != after.isException, qPrintable(where_));
                cleared += clears ? 1 : 0;
                changed += before.recalculation.outcome == Recalculation::Outcome::Changes ? 1 : 0;
            }
        }
        QVERIFY2(cleared > 5, qPrintable(QString::number(cleared)));
        QVERIFY2(changed > 5, qPrintable(QString::number(changed)));
    }
};

QTEST_GUILESS_MAIN(DayAccountRandomTest)
#include "DayAccountRandomTest.moc"
