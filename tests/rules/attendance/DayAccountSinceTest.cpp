#include "ExplainedDay.h"

#include <QRegularExpression>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// What is told of a day where the store no longer holds all that it was judged by, and the finer points of
/// what is told.
class DayAccountSinceTest : public QObject, private ExplainedDay {
    Q_OBJECT

  private Q_SLOTS:
    void init() { reset(); }

    /// The staging table is emptied whole where another day is replaced; the punches of this one stay.
    void aDayWhosePunchesWereStagedBeforeStandsAsItWas() {
        Database& store = it().database();
        addSlot(store, u"A"_s);
        it().addRostered(u"00001"_s);
        const QDate next = Day.addDays(1);
        addRoster(store, u"00001"_s, next, u"A"_s);
        const auto lines = [](QDate day, const QStringList& times) {
            QByteArray file;
            for (const QString& time : times)
                file += punchLine("00001", day, QTime::fromString(time, u"hh:mm"_s));
            return file;
        };
        it().import(u"20010305.txt"_s, lines(Day, {u"08:13"_s, u"12:00"_s, u"13:00"_s, u"17:00"_s}));
        QCOMPARE(it().errorNumber(), 0);
        it().import(u"20010306.txt"_s, lines(next, {u"08:00"_s}));
        it().import(u"20010306.txt"_s, lines(next, {u"08:00"_s}));
        QCOMPARE(it().errorNumber(), 0);
        QVERIFY(!it().rows(u"AtteTemp"_s).join(u' ').contains(u"08:13"_s));
        const DayAccount account = explain();
        QVERIFY(account.hasRow);
        QCOMPARE(remarks(account), QStringList());
        QVERIFY(told(account).contains(u"08:13 打卡，列為上午上班"_s));
        QVERIFY(account.told.cells() == account.stored.cells());
        // Nor are they changed where old ones were purged.
        store.execute(u"Delete * from Atte01"_s);
        QCOMPARE(remarks(explain()), QStringList());
        addReadPunch(store, u"00001"_s, Day, QTime(7, 30));
        QCOMPARE(remarks(explain()),
                 QStringList({u"打卡記錄在計算之後有變動，以打卡核對表為準"_s, u"當日的打卡：07:30"_s}));
    }

    /// Of the table of punches only those are held against the view that the calculation looks at.
    void punchesOfOtherClassesAreNoChange() {
        (void)explainAfter(u""_s, u"08:13 12:00"_s);
        Database& store = it().database();
        store.execute(u"Delete * from AtteTemp"_s);
        keepPunch(QTime(8, 13, 20), u"255"_s);
        keepPunch(QTime(12, 0), u"000"_s);
        keepPunch(QTime(17, 38), u"081"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList());
        QVERIFY(told(account).contains(u"08:13 打卡，列為上午上班"_s));
        QVERIFY(told(account).contains(u"17:38 是加班卡（班別 081），不列入出勤"_s));
        keepPunch(QTime(13, 0), u"000"_s);
        QCOMPARE(remarks(explain()), QStringList({u"打卡記錄在計算之後有變動，以打卡核對表為準"_s,
                                                  u"當日的打卡：08:13、12:00、13:00"_s}));
    }

    /// A punch at midnight leaves no time, and the thirteenth none in the view.
    void punchesThatTheViewLosesAreNoChange_data() {
        QTest::addColumn<QString>("slot");
        QTest::addColumn<QString>("punches");
        QTest::newRow("midnight") << u"StrIn1=00:00"_s << u"00:00 12:00 13:00 17:00"_s;
        QTest::newRow("midnight and nothing else") << u"StrIn1=00:00"_s << u"00:00"_s;
        QTest::newRow("midnight that no position takes") << u""_s << u"00:00 08:13 12:00"_s;
        QTest::newRow("a thirteenth") << u""_s
                                      << u"01:00 01:01 01:02 01:03 01:04 01:05 01:06 01:07 01:08 01:09 "
                                         "01:10 08:13 12:00"_s;
    }
    void punchesThatTheViewLosesAreNoChange() {
        QFETCH(QString, slot);
        QFETCH(QString, punches);
        (void)explainAfter(slot, punches);
        it().database().execute(u"Delete * from AtteTemp"_s);
        const DayAccount account = explain();
        QVERIFY(account.hasRow);
        QCOMPARE(remarks(account), QStringList());
        QVERIFY(account.told.cells() == account.stored.cells());
    }

    /// A day calculated without the punches that the store has: the staging table had gone on to another day.
    void punchesThatTheCalculationDidNotHaveAreSaid() {
        addSlot(it().database(), u"A"_s);
        it().addRostered(u"00001"_s);
        keepPunch(QTime(8, 26));
        keepPunch(QTime(17, 35));
        (void)it().calculate();
        const DayAccount account = explain();
        QVERIFY(told(account).contains(u"當日沒有打卡"_s));
        QCOMPARE(remarks(account), QStringList({u"打卡記錄在計算之後有變動，以打卡核對表為準"_s,
                                                u"當日的打卡：08:26、17:35"_s}));
        QVERIFY(account.told.cells() == account.stored.cells());
        // Without a view it is the row by which it is told.
        it().database().execute(u"Delete * from View02"_s);
        QCOMPARE(remarks(explain()), QStringList({u"打卡記錄與結果所載的不同，打卡時間以結果所載為準"_s,
                                                  u"當日的打卡：08:26、17:35"_s}));
    }

    /// Deliberate: the result stays, the view loses its punches, and an exception without any comes beside
    /// it.
    void aDayReadAgainWithoutReplacingItIsToldForEachList() {
        Database& store = it().database();
        addSlot(store, u"A"_s);
        it().addRostered(u"00001"_s);
        const QDate next = Day.addDays(1);
        QByteArray file;
        for (const QTime time : {QTime(8, 0), QTime(12, 0), QTime(13, 0), QTime(17, 0)})
            file += punchLine("00001", Day, time);
        const QByteArray nextFile = punchLine("00001", next, QTime(8, 0));
        it().import(u"20010305.txt"_s, file);
        it().import(u"20010306.txt"_s, nextFile);
        it().import(u"20010306.txt"_s, nextFile);
        it().host.answer = false;
        it().import(u"20010305.txt"_s, file);
        it().host.answer = true;
        QCOMPARE(it().errorNumber(), 0);
        const DayAccount result = explain(u"A"_s, DayList::Results);
        QCOMPARE(remarks(result),
                 QStringList({u"「異常處理」與「勤惰查詢」所載的這一天不同，以下判讀「勤惰查詢」的記錄"_s,
                              u"打卡核對表在計算之後有變動，以打卡記錄為準"_s}));
        QVERIFY(told(result).contains(u"08:00 打卡，列為上午上班"_s));
        QVERIFY(result.told.cells() == result.stored.cells());
        QVERIFY(section(result, u"重新計算"_s).contains(u"上午上班：08:00 → 無"_s));
        const DayAccount exception = explain(u"A"_s, DayList::Exceptions);
        QCOMPARE(remarks(exception),
                 QStringList({u"「異常處理」與「勤惰查詢」所載的這一天不同，以下判讀「異常處理」的記錄"_s,
                              u"打卡記錄在計算之後有變動，以打卡核對表為準"_s,
                              u"當日的打卡：08:00、12:00、13:00、17:00"_s}));
        QVERIFY(told(exception).contains(u"當日沒有打卡"_s));
        QVERIFY(exception.told.cells() == exception.stored.cells());
        QCOMPARE(section(exception, u"重新計算"_s), QStringList({u"現在重新計算，結果不變"_s}));
    }

    /// No setting of the slot has changed where the view has lost the punches of the row.
    void aViewThatWasEmptiedIsNoChangeOfTheSlot() {
        (void)explainAfter(u""_s, u"08:13 12:00 13:00 17:00"_s);
        Database& store = it().database();
        store.execute(u"Insert into Atte01 Select * from AtteTemp"_s);
        store.execute(u"Delete * from AtteTemp"_s);
        store.execute(u"Update View02 Set T1 = Null, T2 = Null, T3 = Null, T4 = Null"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"打卡核對表在計算之後有變動，以打卡記錄為準"_s}));
        QVERIFY(told(account).contains(u"08:13 打卡，列為上午上班"_s));
        QVERIFY(account.told.cells() == account.stored.cells());
        store.execute(u"Update View02 Set T1 = #09:00:00#"_s);
        store.execute(u"Delete * from Atte01"_s);
        QCOMPARE(remarks(explain()), QStringList({u"打卡記錄與結果所載的不同，打卡時間以結果所載為準"_s}));
        store.execute(u"Update View02 Set T1 = Null"_s);
        const DayAccount alone = explain();
        QCOMPARE(remarks(alone), QStringList({u"找不到當日的打卡記錄，打卡時間以結果所載為準"_s}));
        QVERIFY(alone.told.cells() == alone.stored.cells());
    }

    void aWindowThatTakesAPunchNoLongerIsAChangeOfTheSlot() {
        (void)explainAfter(u""_s, u"08:13 12:00 13:00 17:00"_s);
        changeSlot(u"StrIn3 = #13:10:00#"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"時段設定在計算之後有變動，以下依現在的設定"_s}));
    }

    void settingsChangedSinceAreSaidOfARowWithoutItsPunches() {
        (void)explainAfter(u""_s, u"08:13"_s);
        it().database().execute(u"Delete * from AtteTemp"_s);
        it().database().execute(u"Delete * from View02"_s);
        changeSlot(u"Cushion = 10"_s);
        QCOMPARE(remarks(explain()), QStringList({u"找不到當日的打卡記錄，打卡時間以結果所載為準"_s,
                                                  u"時段設定在計算之後有變動，以下依現在的設定"_s}));
    }

    /// The row keeps the cushion, so that nothing in it would come out otherwise.
    void aSlotThatLeavesNothingOfACushionIsSaid() {
        (void)explainAfter(u""_s, u"08:03 12:00"_s);
        QCOMPARE(remarks(explain()), QStringList());
        changeSlot(u"StdT1 = #08:05:00#"_s);
        const QStringList changed{u"時段設定在計算之後有變動，以下依現在的設定"_s};
        const DayAccount account = explain();
        QVERIFY(told(account).contains(u"08:03 上班，不晚於 08:05，準時"_s));
        QCOMPARE(section(account, u"記錄所載"_s).first(), u"上午上班 08:03，逾時 3 分"_s);
        QCOMPARE(remarks(account), changed);
        // Also of a row by itself.
        it().database().execute(u"Delete * from AtteTemp"_s);
        it().database().execute(u"Delete * from View02"_s);
        QCOMPARE(remarks(explain()),
                 QStringList({u"找不到當日的打卡記錄，打卡時間以結果所載為準"_s}) + changed);
        changeSlot(u"StdT1 = #08:00:00#"_s);
        QCOMPARE(remarks(explain()), QStringList({u"找不到當日的打卡記錄，打卡時間以結果所載為準"_s}));
    }

    /// Deliberate: a recalculation resets no cushion.
    void aCushionStaysBesideLeaveEnteredSince() {
        (void)explainAfter(u""_s, u"08:03"_s);
        addLeaveDay(it().database(), u"00001"_s, Day, u"03"_s, QTime(8, 0), QTime(12, 0));
        it().calculation.Recalculate(Day);
        const DayAccount account = explain();
        QCOMPARE(account.stored.cells().at(DayRow::Cushion1Place), 3);
        QCOMPARE(remarks(account), QStringList());
        QVERIFY(told(account).contains(u"請假 03，08:00 至 12:00，涵蓋上午上班、上午下班"_s));
        QVERIFY(told(account).contains(u"上午上班 08:03，已請假，不計分鐘，先前的逾時 3 分照舊"_s));
        QVERIFY(account.told.cells() == account.stored.cells());
        // The same where the leave has gone again and the row is told by itself.
        it().database().execute(u"Delete * from Holi04"_s);
        QVERIFY(told(explain()).contains(u"上午上班 08:03，已請假，不計分鐘，先前的逾時 3 分照舊"_s));
    }

    void theHalfWhoseSettingsCountIsSaid_data() {
        QTest::addColumn<QString>("slot");
        QTest::addColumn<QString>("punches");
        QTest::addColumn<QString>("sentence");
        QTest::newRow("the morning's cushion in the afternoon")
            << u"Cushion=5 Cushion1=2"_s << u"13:04"_s
            << u"13:04 上班，未超過 13:00＋緩衝 5 分，逾時 4 分，不算遲到（依上午的設定）"_s;
        QTest::newRow("the afternoon's cushion in the morning")
            << u"Cushion=0 Cushion1=5"_s << u"08:04"_s
            << u"08:04 上班，未超過 08:00＋緩衝 5 分，逾時 4 分，不算遲到（依下午的設定）"_s;
        QTest::newRow("the morning's own") << u"Cushion=5 Cushion1=2"_s << u"08:04"_s
                                           << u"08:04 上班，未超過 08:00＋緩衝 5 分，逾時 4 分，不算遲到"_s;
        QTest::newRow("the morning's delay in the afternoon")
            << u"Cushion=5 Delay=20 Cushion1=5 Delay1=25"_s << u"13:10"_s
            << u"13:10 上班，超過 13:00＋緩衝 5 分，遲到 5 分（依上午的設定）"_s;
        QTest::newRow("outside of the morning's delay in the afternoon")
            << u"Cushion=1 Delay=2 Cushion1=5 Delay1=20"_s << u"13:10"_s
            << u"13:10 上班，晚於 13:00，但不在緩衝 1 分之後的遲到 2 分之內，不記分鐘（依上午的設定）"_s;
    }
    void theHalfWhoseSettingsCountIsSaid() {
        QFETCH(QString, slot);
        QFETCH(QString, punches);
        QFETCH(QString, sentence);
        const QStringList sentences = told(explainAfter(slot, punches));
        QVERIFY2(sentences.contains(sentence), qPrintable(sentences.join(u'\n')));
    }

    void leaveIsToldByTheEndsThatLieInTheDay_data() {
        QTest::addColumn<QList<QTime>>("leave");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QStringList>("sentences");
        QTest::newRow("both ends in one part")
            << QList{QTime(9, 0), QTime(11, 0)} << u"03"_s
            << QStringList{u"請假 03，09:00 至 11:00，起訖同在一段，其後一併視為請假，"
                           "涵蓋上午上班、上午下班、下午上班、下午下班"_s};
        QTest::newRow("one end in none")
            << QList{QTime(6, 0), QTime(7, 0)} << u"03"_s
            << QStringList{u"請假 03，06:00 至 07:00，只有一端落在時段之內，其後一併視為請假，"
                           "涵蓋上午上班、上午下班、下午上班、下午下班"_s};
        QTest::newRow("nothing follows the last part")
            << QList{QTime(17, 30), QTime(23, 59, 59)} << u"03"_s
            << QStringList{u"請假 03，17:30 至 23:59，涵蓋下午下班"_s};
        QTest::newRow("both ends uncovered in one part, once")
            << QList{QTime(9, 0), QTime(11, 0)} << u"14"_s
            << QStringList{u"假別 14 起訖所在的上午上班不算請假"_s};
        QTest::newRow("an end that the leave before has given")
            << QList{QTime(8, 0), QTime(12, 0), QTime(13, 0), QTime(23, 59, 59)} << u"14"_s
            << QStringList{u"假別 14 起訖所在的下午上班不算請假"_s,
                           u"假別 14 起訖所在的上午下班（沿用前一筆）不算請假"_s};
    }
    void leaveIsToldByTheEndsThatLieInTheDay() {
        QFETCH(QList<QTime>, leave);
        QFETCH(QString, type);
        QFETCH(QStringList, sentences);
        for (qsizetype end = 0; end < leave.size(); end += 2)
            addLeaveDay(it().database(), u"00001"_s, Day, type, leave.at(end), leave.at(end + 1));
        const QStringList all = told(explainAfter(u""_s, u""_s));
        const QString start = (type == u"14" ? u"假別 "_s : u"請假 "_s) + type;
        QCOMPARE(all.filter(QRegularExpression(u'^' + start)), sentences);
    }

    /// Deliberate: a recalculation leaves of a day the exceptions alone.
    void aRowBesideAnExceptionGoesAtARecalculation() {
        Database& store = it().database();
        (void)explainAfter(u""_s, u"08:00 12:00 13:00 17:00"_s);
        QCOMPARE(section(explain(), u"重新計算"_s), QStringList({u"當日不是異常，重新計算不會改變這一天"_s}));
        addSlot(store, u"B"_s);
        for (const QString& table : {u"Atte02"_s, u"Atte03"_s})
            insertRow(store, table,
                      {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"TimeNo", u"B"}, {u"Expt", true}});
        QCOMPARE(section(explain(), u"重新計算"_s),
                 QStringList({u"現在重新計算，這一筆會消失，當日只留下列在異常處理的記錄"_s}));
        it().calculation.Recalculate(Day);
        QVERIFY(it().calculation.finished());
        QCOMPARE(explain().TimeNo, u"A"_s);
        QVERIFY(!explain().hasRow);
        QVERIFY(explain(u"B"_s).hasRow);
    }

    void anExceptionOfASlotThatIsGoneTakesTheMarksBesideIt() {
        Database& store = it().database();
        (void)explainAfter(u"CardType=0"_s, u"08:06"_s);
        insertRow(store, u"Atte03"_s,
                  {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"TimeNo", u"Z"}, {u"Expt", true}});
        const DayAccount account = explain();
        QCOMPARE(section(account, u"重新計算"_s),
                 QStringList({u"現在重新計算，下列各項會改變"_s, u"遲到.早退：1 上午上班 → 0"_s,
                              u"上午上班遲到(分)：1 → 0"_s}));
        it().calculation.Recalculate(Day);
        QVERIFY(explain().stored.cells() == account.recalculation.after.cells());
    }

    void aSlotThatCannotBeReadIsSaid() {
        (void)explainAfter(u""_s, u"08:13"_s);
        changeSlot(u"Delay = 60"_s);
        const DayAccount account = explain();
        QCOMPARE(account.remarks.size(), std::size_t{1});
        QCOMPARE(account.remarks.front().remark, Remark::CalculationFails);
        QVERIFY(!account.remarks.front().text.isEmpty());
        QVERIFY(!account.slot);
    }

    /// The day is worked out, and cleared, before the recalculation comes to the slot in which it ends.
    void aRecalculationThatEndsBehindTheDayIsToldWithWhatItDoes() {
        (void)explainAfter(u""_s, u"08:13 12:20 13:00 17:00"_s);
        addSlot(it().database(), u"B"_s, {{u"Delay", 60}});
        const QStringList same = section(explain(), u"重新計算"_s);
        QCOMPARE(same.size(), 2);
        QCOMPARE(same.first(), u"現在重新計算，結果不變"_s);
        QVERIFY2(same.last().startsWith(u"重新計算在這一天之後會中途停止："_s), qPrintable(same.last()));
        addWriteOff(it().database(), u"00001"_s, Day, u"01"_s, u""_s, u""_s, u""_s);
        const DayAccount account = explain();
        QCOMPARE(account.recalculation.outcome, Recalculation::Outcome::Clears);
        QCOMPARE(section(account, u"重新計算"_s).first(), u"現在重新計算，當日就不再是異常"_s);
        QCOMPARE(section(account, u"重新計算"_s).last(), same.last());
        it().calculation.Recalculate(Day);
        QVERIFY(!it().calculation.finished());
        QCOMPARE(it().rows(u"Atte03"_s), QStringList());
        QVERIFY(explain().stored.cells() == account.recalculation.after.cells());
    }

    void aSlotBehindThatCannotBeReadLeavesTheDayAsItIs() {
        addSlot(it().database(), u"B"_s, {{u"Delay", 60}});
        const DayAccount account = explainAfter(u""_s, u"08:13"_s);
        QVERIFY(account.hasRow);
        QCOMPARE(remarks(account), QStringList());
        QVERIFY(told(account).contains(u"當日列為異常"_s));
    }
};

QTEST_GUILESS_MAIN(DayAccountSinceTest)
#include "DayAccountSinceTest.moc"
