#include "rules/Batch.h"

#include "rules/CodeLength.h"

#include <optional>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The costs of a commit are then a small part of those of the rows.
constexpr int EmployeesPerStage = 2000;

/// The stage that is open on behalf of the batch, if one is.
class BatchStage {
  public:
    explicit BatchStage(Database& database) : database_(database) {}

    void open() {
        if (!stage_)
            stage_.emplace(database_);
    }
    void countEmployee() {
        if (++employees_ >= EmployeesPerStage)
            finish();
    }
    void finish() {
        employees_ = 0;
        if (!stage_)
            return;
        stage_->finish();
        stage_.reset();
    }

  private:
    Database& database_;
    std::optional<Stage> stage_;
    int employees_ = 0;
};

/// The batch's host, before which no stage is open when it asks or tells.
class HostOutsideStage final : public ActionHost {
  public:
    HostOutsideStage(ActionHost& host, BatchStage& stage) : host_(host), stage_(stage) {}

    void tell(const QString& message, const QString& title) override {
        stage_.finish();
        host_.tell(message, title);
    }
    [[nodiscard]] bool confirm(const QString& question, const QString& title) override {
        stage_.finish();
        return host_.confirm(question, title);
    }
    void setPointer(Pointer pointer) override { host_.setPointer(pointer); }
    void setProgressShown(bool shown) override { host_.setProgressShown(shown); }
    [[nodiscard]] int progress() const override { return host_.progress(); }
    void setProgress(int value) override { host_.setProgress(value); }

  private:
    ActionHost& host_;
    BatchStage& stage_;
};

} // namespace

void runBatch(Database& database, ActionHost& host, const QStringList& entries, int LenEmpNo,
              BatchWork& work) {
    BatchStage stage(database);
    HostOutsideStage outside(host, stage);
    for (const QString& entry : entries) {
        const QString EmpNo = codeOfEntry(entry, LenEmpNo);
        if (!work.check(EmpNo, outside))
            break;
        stage.open();
        work.write(EmpNo);
        stage.countEmployee();
    }
    stage.finish();
}

void refuseBatch(ActionHost& host, const QString& missing) {
    host.tell(missing, FaultTitle);
    host.tell(u"部份欄位未輸入所以存檔不成功,請重新輸入..."_s, FaultTitle);
}

} // namespace pontrel
