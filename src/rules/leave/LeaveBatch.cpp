#include "rules/leave/LeaveBatch.h"

#include "rules/Batch.h"
#include "rules/Session.h"
#include "rules/attendance/Minutes.h"
#include "rules/leave/LeaveNotes.h"
#include "store/StatementForm.h"

#include <array>
#include <vector>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// One press of the button.
class LeaveBatchWork final : public BatchWork {
  public:
    LeaveBatchWork(Database& database, LeaveBatchHost& host, LeaveValues& values, const LeaveBatch& batch)
        : database_(database)
        , host_(host)
        , values_(values)
        , batch_(batch)
        , balance_(balanceOf(batch.HoliNo, batch.codes)) {}

    [[nodiscard]] bool check(const QString& EmpNo, ActionHost& host) override {
        LeaveNotes notes(database_, host, values_);
        values_.setBusNo(notes.NewBusNo());
        if (balance_) {
            employee_.emplace(database_, EmpNo, *balance_);
            const std::int32_t left = employee_->hoursLeft();
            // Deliberate: what is left is held against the hours of the employee before, not against his own.
            if (heldHours_ > left) {
                host.tell(u"該假累計可請天數,已超過! 請檢查....."_s, FaultTitle);
                return false;
            }
        }
        splitDays(notes, EmpNo);
        return true;
    }

    void write(const QString& EmpNo) override {
        LeaveNotes notes(database_, host_, values_);
        for (const LeaveDay& day : days_)
            notes.insertDay(leaveOf(EmpNo), day);
        if (balance_)
            employee_->charge(heldHours_);
        const QString HoliHours = Value(numberOfHours(heldHours_)).joined();
        host_.showHours(HoliHours);
        insertNote(EmpNo, HoliHours);
    }

  private:
    [[nodiscard]] Leave leaveOf(const QString& EmpNo) const {
        return {EmpNo, batch_.HoliNo, batch_.date, batch_.date, batch_.HoliBegTime, batch_.HoliEndTime};
    }

    /// The days are counted and inserted, both from one walk: nothing changes between the two that would make
    /// them differ. Each looks at the type, which a batch does not change: once known it stays so.
    void splitDays(LeaveNotes& notes, const QString& EmpNo) {
        const Leave leave = leaveOf(EmpNo);
        requireWhole(leave);
        if (!typeKnown_)
            typeKnown_ = notes.LoadHoliDeduct(batch_.HoliNo);
        days_.clear();
        std::int16_t hours = 0;
        notes.walkDays(leave, [&](const LeaveDay& day) {
            hours = add16(hours, day.HoliHours);
            days_.push_back(day);
        });
        heldHours_ = hours;
        if (!typeKnown_)
            notes.LoadHoliDeduct(batch_.HoliNo);
    }

    void insertNote(const QString& EmpNo, const QString& HoliHours) {
        static const StatementForm form(
            u"insert into Holi03([BusNo],[EmpNo],[HoliNo],[HoliBegDate],[HoliBegTime],[HoliEndDate],"
            "[HoliEndTime],[HoliHours],[Account],[TransDate],[TransType]) "
            "Values('','','',#2000/1/1#,#08:00#,#2000/1/1#,#17:00#,1.4,'',#2000-Jan-01 08:00:00#,True)"_s);
        const std::array<Value, 10> note{values_.BusNo(),
                                         EmpNo,
                                         batch_.HoliNo,
                                         batch_.date,
                                         cutToMinutes(batch_.HoliBegTime),
                                         batch_.date,
                                         cutToMinutes(batch_.HoliEndTime),
                                         HoliHours.toDouble(),
                                         batch_.gAccount,
                                         batch_.TransDate};
        // A number that is taken already drops the note without a word.
        database_.execute(form, note);
    }

    Database& database_;
    LeaveBatchHost& host_;
    LeaveValues& values_;
    const LeaveBatch& batch_;
    std::optional<std::size_t> balance_;
    std::optional<LeaveBalance> employee_;
    std::vector<LeaveDay> days_;
    bool typeKnown_ = false;
    std::int16_t heldHours_ = 0; ///< Of the employee before, until the days of this one are split.
};

} // namespace

void RunLeaveBatch(Database& database, LeaveBatchHost& host, LeaveValues& values, const LeaveBatch& batch) {
    if (batch.entries.isEmpty())
        return refuseBatch(host, u"請選擇員工代碼...."_s);
    if (batch.HoliNo.isEmpty())
        return refuseBatch(host, u"請輸入假別...."_s);
    LeaveBatchWork work(database, host, values, batch);
    runBatch(database, host, batch.entries, batch.LenEmpNo, work);
}

} // namespace pontrel
