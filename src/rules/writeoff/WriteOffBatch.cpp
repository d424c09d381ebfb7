#include "rules/writeoff/WriteOffBatch.h"

#include "rules/Batch.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

class WriteOffBatchWork final : public BatchWork {
  public:
    WriteOffBatchWork(Database& database, const WriteOffBatch& batch) : database_(database), batch_(batch) {}

    void write(const QString& EmpNo) override {
        static const StatementForm clear(
            u"delete * from Canc02  where EmpNo ='' and CnlDate =  #2000/1/1#"_s);
        static const StatementForm insert(
            u"insert into Canc02(EmpNo,CnlDate,CnlNo1,CnlNo2,CnlNo3,CnlNo4,Account,TransDate) "
            "values('',#2000/1/1#,'','','','','',#2000-Jan-01 08:00:00#)"_s);
        (void)dateLiteral(batch_.date); // An empty box breaks both statements.
        const auto& [first, second, third, fourth] = batch_.reasons;
        database_.execute(clear, std::array<Value, 2>{EmpNo, batch_.date});
        // Empty reasons are stored as empty texts.
        database_.execute(insert, std::array<Value, 8>{EmpNo, batch_.date, first, second, third, fourth,
                                                       batch_.gAccount, batch_.TransDate});
    }

  private:
    Database& database_;
    const WriteOffBatch& batch_;
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
