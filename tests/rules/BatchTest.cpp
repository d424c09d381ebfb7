#include "rules/Batch.h"

#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/RecordingHost.h"
#include "support/TestStore.h"

#include <QTest>

#include <functional>
#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A batch that writes two rows of each employee.
class TwoRows final : public BatchWork {
  public:
    explicit TwoRows(Database& database) : database_(database) {}

    std::function<bool(const QString&, ActionHost&)> onCheck;
    std::function<void(const QString&)> onWrite; ///< Between the rows.

    [[nodiscard]] bool check(const QString& EmpNo, ActionHost& host) override {
        return !onCheck || onCheck(EmpNo, host);
    }
    void write(const QString& EmpNo) override {
        add(EmpNo, 1);
        if (onWrite)
            onWrite(EmpNo);
        add(EmpNo, 2);
    }

  private:
    void add(const QString& EmpNo, int row) {
        insertRow(database_, u"Over01"_s, {{u"EmpNo", EmpNo}, {u"OverHours", row}});
    }
    Database& database_;
};

QStringList codes(int count) {
    QStringList all;
    for (int number = 10001; number < 10001 + count; ++number)
        all += QString::number(number);
    return all;
}

} // namespace

/// The loop that all batches share.
class BatchTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestStore> store_;
    std::unique_ptr<RecordingHost<>> host_;

    Database& database() { return store_->database(); }
    void run(const QStringList& entries, BatchWork& work, int LenEmpNo = 5) {
        runBatch(database(), *host_, entries, LenEmpNo, work);
    }
    /// "code row" of all that is in the store, as another connection sees it.
    [[nodiscard]] QStringList committed() const {
        QStringList rows;
        const auto other = store_->connect();
        for (const auto& row : other->select(u"select EmpNo,OverHours from Over01"_s))
            rows += row.at(0).joined() + u' ' + row.at(1).joined();
        return rows;
    }
    [[nodiscard]] static QStringList rowsOfWhole(const QStringList& employees) {
        QStringList rows;
        for (const QString& EmpNo : employees)
            rows += {EmpNo + u" 1"_s, EmpNo + u" 2"_s};
        return rows;
    }

  private Q_SLOTS:
    void init() {
        store_ = std::make_unique<TestStore>();
        host_ = std::make_unique<RecordingHost<>>(&database());
    }

    void employeesAreTheStartsOfTheEntriesInTheirOrder() {
        TwoRows work(database());
        run({u"10003  王小明"_s, u"10001"_s, u"99"_s, u"100029"_s}, work);
        QCOMPARE(committed(), rowsOfWhole({u"10003"_s, u"10001"_s, u"99"_s, u"10002"_s}));
        QVERIFY(!database().inStage());
    }

    void nobodyIsNoWork() {
        TwoRows work(database());
        run({}, work);
        QCOMPARE(committed(), QStringList());
    }

    void aWorkThatChecksNothingGoesToTheEnd() {
        class Plain final : public BatchWork {
          public:
            QStringList written;
            void write(const QString& EmpNo) override { written += EmpNo; }
        };
        Plain work;
        run(codes(3), work);
        QCOMPARE(work.written, codes(3));
    }

    void aCheckThatFailsEndsTheBatchBeforeItsEmployee() {
        TwoRows work(database());
        QStringList checked;
        work.onCheck = [&](const QString& EmpNo, ActionHost&) {
            checked += EmpNo;
            return EmpNo != u"10003";
        };
        run(codes(5), work);
        QCOMPARE(checked, codes(3));
        QCOMPARE(committed(), rowsOfWhole(codes(2)));
    }

    void anEmployeeIsWrittenInsideAStage() {
        TwoRows work(database());
        QList<bool> inStage;
        work.onWrite = [&](const QString&) { inStage += database().inStage(); };
        run(codes(2), work);
        QCOMPARE(inStage, (QList<bool>{true, true}));
    }

    void whatIsToldOrAskedComesOutsideAStageWithAllBeforeItInTheStore() {
        TwoRows work(database());
        work.onCheck = [&](const QString& EmpNo, ActionHost& host) {
            if (EmpNo == u"10002")
                host.tell(u"two"_s, WarningTitle);
            return EmpNo != u"10004" || host.confirm(u"four?"_s, ProgramTitle);
        };
        host_->answer = false;
        QList<QStringList> seen;
        host_->onCall = [&](const QString&) { seen += committed(); };
        run(codes(5), work);
        QCOMPARE(host_->calls, (QStringList{u"tell two"_s, u"confirm four?"_s}));
        QCOMPARE(host_->insideStage, QStringList());
        QCOMPARE(seen, (QList<QStringList>{rowsOfWhole(codes(1)), rowsOfWhole(codes(3))}));
        QCOMPARE(committed(), rowsOfWhole(codes(3)));
    }

    void pointerAndBarReachTheHostFromWithin() {
        TwoRows work(database());
        work.onCheck = [&](const QString&, ActionHost& host) {
            host.setPointer(Pointer::Hourglass);
            host.setProgressShown(true);
            host.setProgress(host.progress() + 7);
            return true;
        };
        run(codes(1), work);
        QCOMPARE(host_->calls, (QStringList{u"hourglass"_s, u"bar shown"_s}));
        QCOMPARE(host_->progressValues, QList<int>{7});
    }

    void wholeEmployeesAreInTheStoreAtAnyTime() {
        TwoRows work(database());
        QList<qsizetype> seen; ///< Rows that another connection sees, each number once.
        work.onWrite = [&](const QString& EmpNo) {
            // Around the borders of stages every one, elsewhere some.
            const int number = EmpNo.toInt() - 10000;
            if (number % 500 > 2)
                return;
            const qsizetype rows = committed().size();
            if (seen.isEmpty() || seen.constLast() != rows)
                seen += rows;
        };
        run(codes(4201), work);
        QVERIFY(seen.size() > 2);
        for (const qsizetype rows : seen)
            QCOMPARE(rows % 2, 0);
        QCOMPARE(committed(), rowsOfWhole(codes(4201)));
    }

    void anErrorLeavesAllThatWasWritten() {
        TwoRows work(database());
        work.onWrite = [](const QString& EmpNo) {
            if (EmpNo == u"10003")
                throw runTimeError(error::InvalidNull);
        };
        QCOMPARE(errorOf([&] {
                     run(codes(5), work);
                     return 0;
                 }),
                 error::InvalidNull);
        QCOMPARE(committed(), rowsOfWhole(codes(2)) + QStringList{u"10003 1"_s});
        QVERIFY(!database().inStage());
    }

    void anErrorOfACheckLeavesThoseBeforeIt() {
        TwoRows work(database());
        work.onCheck = [](const QString& EmpNo, ActionHost&) -> bool {
            if (EmpNo == u"10003")
                throw runTimeError(error::NoCurrentRecord);
            return true;
        };
        QCOMPARE(errorOf([&] {
                     run(codes(5), work);
                     return 0;
                 }),
                 error::NoCurrentRecord);
        QCOMPARE(committed(), rowsOfWhole(codes(2)));
    }

    void aRefusalIsTwoMessages() {
        refuseBatch(*host_, u"what"_s);
        QCOMPARE(host_->calls, (QStringList{u"tell 錯誤訊息: what"_s,
                                            u"tell 錯誤訊息: 部份欄位未輸入所以存檔不成功,請重新輸入..."_s}));
    }
};

QTEST_GUILESS_MAIN(BatchTest)
#include "BatchTest.moc"
