#include "rules/overtime/OvertimeBatch.h"

#include "rules/Batch.h"
#include "rules/CodeLength.h"
#include "rules/Session.h"
#include "rules/attendance/Minutes.h"
#include "store/RunTimeError.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"

#include <QRegularExpression>

#include <array>
#include <optional>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The time as the statement takes it. An empty box breaks it.
QTime joinedTime(QTime time) {
    if (!time.isValid())
        throw runTimeError(error::Syntax, u"no time"_s);
    return cutToMinutes(time);
}

QDate joinedDate(QDate date) {
    (void)dateLiteral(date);
    return date;
}

/// The number that the text is in the statement, which anything else breaks.
double joinedNumber(const QString& text) {
    static const QRegularExpression number(u"^\\s*-?(\\d+\\.?\\d*|\\.\\d+)\\s*$"_s);
    if (!number.match(text).hasMatch())
        throw runTimeError(error::Syntax, text);
    return text.toDouble();
}

class OvertimeBatchWork final : public BatchWork {
  public:
    OvertimeBatchWork(Database& database, const OvertimeBatch& batch) : database_(database), batch_(batch) {}

    void write(const QString& EmpNo) override {
        // Deliberate: whatever the employee has on that day stays, so that a second run adds a second row.
        static const StatementForm insert(
            u"insert into Over01([EmpNo],[OverDate],[BegTime],[EndTime],[OverHours],[Account],[TransDate]) "
            "Values('',#2000/1/1#,#08:00#,#17:00#,1.5,'', #2000-Jan-01 08:00:00#)"_s);
        if (!row_)
            join();
        row_->front() = EmpNo;
        database_.execute(insert, *row_);
    }

  private:
    void join() {
        row_ = {QString(),
                joinedDate(batch_.date),
                joinedTime(batch_.BegTime),
                joinedTime(batch_.EndTime),
                joinedNumber(batch_.OverHours),
                batch_.gAccount,
                batch_.TransDate};
    }

    Database& database_;
    const OvertimeBatch& batch_;
    std::optional<std::array<Value, 7>> row_; ///< But for the code the same for all.
};

} // namespace

void RunOvertimeBatch(Database& database, ActionHost& host, const OvertimeBatch& batch) {
    if (batch.entries.isEmpty())
        return refuseBatch(host, u"請選擇員工代碼...."_s);
    const int LenEmpNo = readLenEmpNo(database);
    OvertimeBatchWork work(database, batch);
    runBatch(database, host, batch.entries, LenEmpNo, work);
}

} // namespace pontrel
