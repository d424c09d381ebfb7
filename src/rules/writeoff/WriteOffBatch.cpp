#include "rules/writeoff/WriteOffBatch.h"

#include "rules/Batch.h"
#include "rules/CodeLength.h"
#include "rules/Session.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"
#include "store/StoreText.h"

#include <QHash>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// One press of the button. What it leaves is that of a delete and an insert for each employee; where he has
/// no entry of the day yet, or one under the same code, one statement does.
class WriteOffBatchWork final : public BatchWork {
  public:
    WriteOffBatchWork(Database& database, const WriteOffBatch& batch)
        : database_(database), batch_(batch), isWhole_(!breaksLiteral(batch.gAccount)) {
        for (const QString& reason : batch.reasons)
            isWhole_ = isWhole_ && !breaksLiteral(reason);
        readEntriesOfDay();
    }

    void write(const QString& EmpNo) override {
        (void)dateLiteral(batch_.date); // An empty box breaks all statements.
        const QString key = foldedCode(EmpNo);
        const auto known = entries_.constFind(key);
        // An insert that breaks does so behind the delete.
        const bool isDone =
            isWhole_ && (known == entries_.constEnd() ? insert(EmpNo) : *known == EmpNo && update(EmpNo));
        if (!isDone) {
            clear(EmpNo);
            insert(EmpNo);
        }
        entries_.insert(key, EmpNo);
    }

  private:
    void readEntriesOfDay() {
        if (!batch_.date.isValid())
            return;
        const Rows rows =
            database_.select(u"select EmpNo from Canc02 where CnlDate ="_s + dateLiteral(batch_.date));
        for (const std::vector<Value>& row : rows)
            entries_.insert(foldedCode(row.front().toText()), row.front().toText());
    }

    void clear(const QString& EmpNo) {
        static const StatementForm form(u"delete * from Canc02  where EmpNo ='' and CnlDate =  #2000/1/1#"_s);
        database_.execute(form, std::array<Value, 2>{EmpNo, batch_.date});
    }

    // Empty reasons are stored as empty texts. Whether there was a place for the entry.

    bool insert(const QString& EmpNo) {
        static const StatementForm form(
            u"insert into Canc02(EmpNo,CnlDate,CnlNo1,CnlNo2,CnlNo3,CnlNo4,Account,TransDate) "
            "values('',#2000/1/1#,'','','','','',#2000-Jan-01 08:00:00#)"_s);
        const auto& [first, second, third, fourth] = batch_.reasons;
        return database_.execute(form, std::array<Value, 8>{EmpNo, batch_.date, first, second, third, fourth,
                                                            batch_.gAccount, batch_.TransDate}) > 0;
    }

    bool update(const QString& EmpNo) {
        static const StatementForm form(
            u"Update Canc02 Set CnlNo1='',CnlNo2='',CnlNo3='',CnlNo4='',Account='',"
            "TransDate=#2000-Jan-01 08:00:00# Where EmpNo ='' and CnlDate =#2000/1/1#"_s);
        const auto& [first, second, third, fourth] = batch_.reasons;
        return database_.execute(form, std::array<Value, 8>{first, second, third, fourth, batch_.gAccount,
                                                            batch_.TransDate, EmpNo, batch_.date}) > 0;
    }

    Database& database_;
    const WriteOffBatch& batch_;
    bool isWhole_;                    ///< Nothing breaks an insert but perhaps a code.
    QHash<QString, QString> entries_; ///< Codes with an entry of the day, by their folded case.
};

} // namespace

void RunWriteOffBatch(Database& database, ActionHost& host, const WriteOffBatch& batch) {
    if (batch.entries.isEmpty())
        return refuseBatch(host, u"請選擇員工代碼...."_s);
    const int LenEmpNo = readLenEmpNo(database);
    WriteOffBatchWork work(database, batch);
    runBatch(database, host, batch.entries, LenEmpNo, work);
}

} // namespace pontrel
