#include "Opening.h"

#include "store/RunTimeError.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

} // namespace

/// What another program sees of the store while a long action runs: whole stages, one after the other.
class StagesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    /// Rows committed in each table, as "AtteTemp 1, Atte01 1, ...", empty tables left out, and whether a
    /// sentinel is.
    QString committed() {
        const auto other = it().store.connect();
        QStringList counts;
        for (const QString& table : {u"AtteTemp"_s, u"Atte01"_s, u"Over01"_s, u"AtteTemp1"_s, u"View02"_s,
                                     u"Atte02"_s, u"Atte03"_s}) {
            const qsizetype count = rowsOf(*other, table).size();
            if (count > 0)
                counts += u"%1 %2"_s.arg(table).arg(count);
        }
        if (!rowsOfSelection(*other, u"Select EmpNo from Base06 where LeaveDate = #2038/1/1#"_s).isEmpty())
            counts += u"sentinel"_s;
        return counts.join(u", "_s);
    }

  private Q_SLOTS:
    void init() {
        opening_ = std::make_unique<Opening>();
        addSlot(it().database(), u"A"_s);
        addSlot(it().database(), u"B"_s);
        for (const auto& [EmpNo, TimeNo] :
             {std::pair{u"00001"_s, u"A"_s}, {u"00002"_s, u"A"_s}, {u"00003"_s, u"B"_s}}) {
            addEmployee(it().database(), EmpNo);
            addRoster(it().database(), EmpNo, Day, TimeNo);
        }
    }

    void anImportIsSentinelFileOvertimeEachSlotAndSentinelBack() {
        QStringList seen;
        it().host.onProgress = [&](int value) {
            seen += u"%1 %2: %3"_s.arg(value).arg(it().database().inStage() ? u"inside"_s : u"outside"_s,
                                                  committed());
        };
        it().import(u"20010305.txt"_s,
                    punchLine("00001", Day, QTime(8, 0)) + punchLine("00002", Day, QTime(18, 0), "081"));
        QVERIFY(it().calculation.finished());
        const QString file = u"AtteTemp 2, Atte01 2, "_s;
        const QString overtime = file + u"Over01 1, "_s;
        const QString slotA = overtime + u"AtteTemp1 2, View02 2, Atte02 2, Atte03 2, "_s;
        const QString slotB = overtime + u"AtteTemp1 3, View02 3, Atte02 3, Atte03 3"_s;
        QCOMPARE(seen, (QStringList{u"12 inside: sentinel"_s, u"14 outside: "_s + file + u"sentinel"_s,
                                    u"15 inside: "_s + file + u"sentinel"_s,
                                    u"17 outside: "_s + overtime + u"sentinel"_s,
                                    u"19 inside: "_s + overtime + u"sentinel"_s,
                                    u"21 inside: "_s + overtime + u"sentinel"_s,
                                    u"23 inside: "_s + slotA + u"sentinel"_s, u"110 outside: "_s + slotB}));
    }

    void aRecalculationIsResetWithCopyAndEachSlot() {
        it().import(u"20010305.txt"_s, {});
        QStringList seen;
        const auto look = [&] {
            const auto other = it().store.connect();
            seen += QString(it().database().inStage() ? u"inside"_s : u"outside"_s) + u": "_s +
                    rowsOfSelection(*other, u"Select EmpNo,Expt,F1,FC1 from Atte02"_s).join(u", "_s);
        };
        it().host.onProgress = [&](int) { look(); };
        it().host.onCall = [&](const QString& call) {
            if (call == u"hourglass"_s)
                look();
        };
        it().host.progressValue = 0;
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s, u"00003"_s})
            addWriteOff(it().database(), EmpNo, Day, u"01"_s, u"01"_s, u"01"_s, u"01"_s);
        it().calculation.Recalculate(Day);
        QVERIFY(it().calculation.finished());
        const QString reset = u"00001|False|False|False, 00002|False|False|False, 00003|False|False|False"_s;
        const QString slotA = u"00001|False|False|True, 00002|False|False|True, 00003|False|False|False"_s;
        QCOMPARE(seen, (QStringList{u"outside: "_s + reset, u"inside: "_s + reset, u"inside: "_s + reset,
                                    u"inside: "_s + slotA}));
    }

    void aStageIsCommittedAlsoWhenAnErrorLeavesIt_data() {
        QTest::addColumn<QString>("spoiled");
        QTest::addColumn<QString>("left");
        const QString file = u"AtteTemp 3, Atte01 3, "_s;
        const QString overtime = file + u"Over01 1, "_s;
        QTest::newRow("the file") << u"file"_s << u"AtteTemp 3, sentinel"_s;
        QTest::newRow("overtime") << u"overtime"_s << u"AtteTemp 5, Atte01 4, Over01 1, sentinel"_s;
        QTest::newRow("the first slot")
            << u"00002"_s << overtime + u"AtteTemp1 2, View02 2, Atte03 1, sentinel"_s;
        QTest::newRow("the second slot")
            << u"00003"_s << overtime + u"AtteTemp1 3, View02 3, Atte02 2, Atte03 2, sentinel"_s;
    }
    void aStageIsCommittedAlsoWhenAnErrorLeavesIt() {
        QFETCH(QString, spoiled);
        QFETCH(QString, left);
        QByteArray file = punchLine("00001", Day, QTime(8, 0)) +
                          punchLine("00002", Day, QTime(18, 0), "081") +
                          punchLine("00002", Day, QTime(19, 0), "081");
        if (spoiled == u"file"_s)
            file += punchLine("00'01", Day, QTime(8, 0));
        else if (spoiled == u"overtime"_s)
            file +=
                punchLine("00003", Day, QTime(18, 0), "081") + punchLine("00003", Day, QTime(18, 0), "081");
        else
            addLeaveDay(it().database(), spoiled, Day, u"01"_s, QTime(8, 0), QTime(9, 0),
                        {{u"HoliHours", Value()}});
        it().import(u"20010305.txt"_s, file);
        QVERIFY(it().calculation.lastError().has_value());
        QVERIFY(!it().database().inStage());
        QCOMPARE(committed(), left);
    }
};

QTEST_GUILESS_MAIN(StagesTest)
#include "StagesTest.moc"
