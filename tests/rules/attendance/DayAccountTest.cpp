#include "ExplainedDay.h"

#include "support/SavedFiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// An employee's day explained: what is told of it, what has changed since, what a recalculation would do.
class DayAccountTest : public QObject, private ExplainedDay {
    Q_OBJECT

  private Q_SLOTS:
    void init() { reset(); }

    void aLateMorningIsToldInTheOrderOfTheDecisions() {
        const DayAccount account = explainAfter(u""_s, u"08:13 08:20 12:00 12:50 17:03"_s);
        QCOMPARE(told(account),
                 QStringList({u"上午上班：收 07:00 至 08:30 的打卡"_s,
                              u"上午下班：收 11:45 至 12:30 的打卡"_s,
                              u"下午上班：收 12:31 至 13:30 的打卡"_s,
                              u"下午下班：收 16:45 至 23:00 的打卡"_s,
                              u"08:13 打卡，列為上午上班"_s,
                              u"08:20 打卡，上午上班已有 08:13，不再列入"_s,
                              u"12:00 打卡，列為上午下班"_s,
                              u"12:50 打卡，列為下午上班"_s,
                              u"17:03 打卡，列為下午下班"_s,
                              u"計算時沒有請假"_s,
                              u"計算時沒有註銷"_s,
                              u"彈性類別「無彈性」：判斷上午上班、上午下班、下午上班、下午下班的遲到早退"_s,
                              u"08:13 上班，超過 08:00＋緩衝 5 分，遲到 8 分"_s,
                              u"12:00 下班，不早於 12:00，準時"_s,
                              u"12:50 上班，不晚於 13:00，準時"_s,
                              u"17:03 下班，不早於 17:00，準時"_s,
                              u"遲到早退記在上午上班"_s,
                              u"上午上班遲到 8 分，列為異常"_s,
                              u"上午下班有打卡，不列異常"_s,
                              u"下午上班有打卡，不列異常"_s,
                              u"下午下班有打卡，不列異常"_s,
                              u"上午 08:13 至 12:00 共 227 分，不足 240 分，當日列為異常"_s,
                              u"當日列為異常"_s}));
        QCOMPARE(remarks(account), QStringList());
        QCOMPARE(section(account, u"當日"_s),
                 QStringList({u"時段 A 時段A，4 卡，無彈性"_s,
                              u"上午 08:00 至 12:00，緩衝 5 分、遲到 25 分、早退 10 分"_s,
                              u"下午 13:00 至 17:00，緩衝 5 分、遲到 25 分、早退 10 分"_s}));
        QCOMPARE(
            section(account, u"記錄所載"_s),
            QStringList({u"上午上班 08:13，遲到 8 分，異常"_s, u"上午下班 12:00"_s, u"下午上班 12:50"_s,
                         u"下午下班 17:03"_s, u"未列入的打卡 08:20"_s, u"遲到.早退 1 上午上班，異常 是"_s}));
        QCOMPARE(section(account, u"重新計算"_s), QStringList({u"現在重新計算，結果不變"_s}));
        QVERIFY(account.told.cells() == account.stored.cells());
        QCOMPARE(account.punches.size(), std::size_t{5});
        QCOMPARE(account.punches.at(0).position, 1);
        QCOMPARE(account.punches.at(1).position, 0);
    }

    /// Each value that DelayF, F1 to F4 and Expt can have is told.
    void everyValueOfTheMarksIsTold_data() {
        QTest::addColumn<QString>("slot");
        QTest::addColumn<QString>("punches");
        QTest::addColumn<QString>("marks");
        QTest::addColumn<QStringList>("sentences");
        const auto add = [](const char* title, const QString& slot, const QString& punches,
                            const QString& marks, const QStringList& sentences) {
            QTest::newRow(title) << slot << punches << marks << sentences;
        };
        add("DelayF 0, nothing faulty", u""_s, u"08:00 12:00 13:00 17:00"_s, u"0 0000 0"_s,
            {u"沒有記下遲到或早退分鐘"_s, u"上午上班有打卡，不列異常"_s, u"上午下班有打卡，不列異常"_s,
             u"下午上班有打卡，不列異常"_s, u"下午下班有打卡，不列異常"_s, u"當日不列異常"_s});
        add("DelayF 0, everything missing", u""_s, u""_s, u"0 1111 1"_s,
            {u"沒有記下遲到或早退分鐘"_s, u"上午上班沒有打卡、請假或註銷，列為異常"_s,
             u"上午下班沒有打卡、請假或註銷，列為異常"_s, u"下午上班沒有打卡、請假或註銷，列為異常"_s,
             u"下午下班沒有打卡、請假或註銷，列為異常"_s, u"當日列為異常"_s});
        add("DelayF 1", u""_s, u"08:06 12:06 13:00 17:00"_s, u"1 1000 1"_s,
            {u"遲到早退記在上午上班"_s, u"上午上班遲到 1 分，列為異常"_s, u"當日列為異常"_s});
        add("DelayF 2", u""_s, u"07:50 11:55 13:00 17:00"_s, u"2 0100 1"_s,
            {u"遲到早退記在上午下班"_s, u"上午下班早退 5 分，列為異常"_s, u"當日列為異常"_s});
        add("early leave by the afternoon's switch", u"Earlier=0"_s, u"07:50 11:56 13:00 16:50"_s,
            u"4 0001 1"_s,
            {u"11:56 下班，早於 12:00，早退 4 分（依下午的設定）"_s,
             u"16:50 下班，早於 17:00，早退 10 分"_s});
        add("early leave by the morning's switch", u"Earlier1=0"_s, u"07:50 11:56 13:00 16:56"_s,
            u"4 0001 1"_s,
            {u"11:56 下班，早於 12:00，早退 4 分"_s, u"16:56 下班，早於 17:00，早退 4 分（依上午的設定）"_s});
        add("DelayF 3 takes the place of 1", u""_s, u"08:10 12:10 13:10 17:00"_s, u"3 0010 1"_s,
            {u"上午上班雖遲到 5 分，但只記當日最後一次"_s, u"遲到早退記在下午上班"_s,
             u"上午上班有打卡，不列異常"_s, u"下午上班遲到 5 分，列為異常"_s, u"當日列為異常"_s});
        add("DelayF 4", u""_s, u"08:00 12:00 13:00 16:50"_s, u"4 0001 1"_s,
            {u"遲到早退記在下午下班"_s, u"下午下班早退 10 分，列為異常"_s, u"當日列為異常"_s});
        add("an exception without a fault", u""_s, u"08:05 12:00 13:00 17:00"_s, u"0 0000 1"_s,
            {u"上午 08:05 至 12:00 共 235 分，不足 240 分，當日列為異常"_s, u"當日列為異常"_s});
        add("two punches ask for two positions", u"CardType=2"_s, u"08:00"_s, u"0 0001 1"_s,
            {u"上午上班有打卡，不列異常"_s, u"2 卡不看上午下班"_s, u"2 卡不看下午上班"_s,
             u"下午下班沒有打卡、請假或註銷，列為異常"_s, u"當日列為異常"_s});
        add("minutes of a slot without punches", u"CardType=0"_s, u"08:06"_s, u"1 0000 0"_s,
            {u"遲到早退記在上午上班"_s, u"免刷卡的日子不列異常"_s, u"當日不列異常"_s});
    }
    void everyValueOfTheMarksIsTold() {
        QFETCH(QString, slot);
        QFETCH(QString, punches);
        QFETCH(QString, marks);
        QFETCH(QStringList, sentences);
        const DayAccount account = explainAfter(slot, punches);
        DayRow row = account.stored;
        QCOMPARE(u"%1 %2%3%4%5 %6"_s.arg(row.DelayF())
                     .arg(row.F(1))
                     .arg(row.F(2))
                     .arg(row.F(3))
                     .arg(row.F(4))
                     .arg(row.Expt()),
                 marks);
        const QStringList all = told(account);
        for (const QString& sentence : sentences)
            QVERIFY2(all.contains(sentence), qPrintable(sentence + u" in\n"_s + all.join(u'\n')));
    }

    void leaveEnteredSinceWouldClearTheException() {
        (void)explainAfter(u""_s, u"13:00 17:00"_s);
        it().database().execute(u"Insert into Holi01(HoliNo,HoliType) values('03','事假')"_s);
        addLeaveDay(it().database(), u"00001"_s, Day, u"03"_s, QTime(8, 0), QTime(12, 0));
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"請假、註銷或時段的標準時間在計算之後有變動"_s}));
        QCOMPARE(section(account, u"重新計算"_s),
                 QStringList({u"現在重新計算，當日就不再是異常"_s, u"上午上班請假：否 → 是"_s,
                              u"上午下班請假：否 → 是"_s, u"上午上班異常：是 → 否"_s,
                              u"上午下班異常：是 → 否"_s, u"異常：是 → 否"_s}));
        // The exception itself is told as it was judged.
        QVERIFY(told(account).contains(u"上午上班沒有打卡、請假或註銷，列為異常"_s));
        QVERIFY(told(account).contains(u"13:00 打卡，列為下午上班"_s));
        QVERIFY(account.told.cells() == account.stored.cells());
        it().calculation.Recalculate(Day);
        QCOMPARE(it().rows(u"Atte03"_s), QStringList());
        const DayAccount after = explain();
        QVERIFY(after.stored.cells() == account.recalculation.after.cells());
        QVERIFY(after.told.cells() == after.stored.cells());
        QCOMPARE(remarks(after), QStringList());
        QVERIFY(told(after).contains(u"請假 03 事假，08:00 至 12:00，涵蓋上午上班、上午下班"_s));
        QCOMPARE(section(after, u"重新計算"_s), QStringList({u"當日不是異常，重新計算不會改變這一天"_s}));
    }

    void aWriteOffOfOneOfTwoFaultsChangesTheException() {
        (void)explainAfter(u""_s, u"13:00 17:00"_s);
        addWriteOff(it().database(), u"00001"_s, Day, u"01"_s, u""_s, u""_s, u""_s);
        QCOMPARE(section(explain(), u"重新計算"_s),
                 QStringList({u"現在重新計算，仍列在異常處理，但下列各項會改變"_s, u"上午上班註銷：否 → 是"_s,
                              u"上午上班異常：是 → 否"_s}));
        it().calculation.Recalculate(Day);
        const DayAccount after = explain();
        QVERIFY(told(after).contains(u"上午上班註銷，原因 01"_s));
        QVERIFY(told(after).contains(u"上午上班已註銷，不列異常"_s));
        QCOMPARE(section(after, u"重新計算"_s), QStringList({u"現在重新計算，結果不變"_s}));
    }

    /// Deliberate: a recalculation adds cover and takes none away.
    void leaveTakenBackStaysInTheRow() {
        addSlot(it().database(), u"A"_s);
        it().addRostered(u"00001"_s);
        addLeaveDay(it().database(), u"00001"_s, Day, u"03"_s, QTime(8, 0), QTime(12, 0));
        (void)it().calculate();
        it().database().execute(u"Delete * from Holi04"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"請假、註銷或時段的標準時間在計算之後有變動"_s}));
        QVERIFY(told(account).contains(u"上午上班已有請假"_s));
        QVERIFY(account.told.cells() == account.stored.cells());
        QCOMPARE(section(account, u"重新計算"_s), QStringList({u"現在重新計算，結果不變"_s}));
    }

    void changedSettingsAreSaid() {
        (void)explainAfter(u""_s, u"08:13 12:20 13:00 17:00"_s);
        changeSlot(u"Delay = 45, Cushion = 10"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"時段設定在計算之後有變動，以下依現在的設定"_s}));
        QVERIFY(told(account).contains(u"08:13 上班，超過 08:00＋緩衝 10 分，遲到 3 分"_s));
        DayRow row = account.stored;
        QCOMPARE(row.Delay(1), 8);
        QCOMPARE(
            section(account, u"重新計算"_s),
            QStringList({u"現在重新計算，仍列在異常處理，但下列各項會改變"_s, u"上午上班遲到(分)：8 → 3"_s}));
    }

    /// Deliberate: the working values of a slot start with those of the one before it.
    void timesThatTheSlotTakesFromAnotherAreSaid() {
        Database& store = it().database();
        addSlot(store, u"A"_s, {{u"EndOut2", QTime(12, 10)}});
        addSlot(store, u"B"_s, {{u"CardType", 2}});
        store.execute(u"Update Base04 Set StdT2 = Null, EndOut2 = Null, StrIn3 = Null, StdT3 = Null "
                      "Where TimeNo = 'B'"_s);
        it().addRostered(u"00001"_s, u"B"_s);
        punch(u"08:13 17:00"_s);
        (void)it().calculate();
        const DayAccount account = explain(u"B"_s);
        QCOMPARE(remarks(account),
                 QStringList({u"這個時段沒有設的時間，計算時沿用前面的時段，都沒有設的算 00:00："
                              "上午下班標準 12:00、上午下班最晚 12:10、"
                              "下午上班最早 12:31、下午上班標準 13:00"_s}));
        QVERIFY(told(account).contains(u"上午下班：收 11:45 至 12:10 的打卡"_s));
        QVERIFY(account.told.cells() == account.stored.cells());
    }

    void aChangedRosterIsSaid() {
        (void)explainAfter(u""_s, u"08:13"_s);
        addSlot(it().database(), u"B"_s);
        it().database().execute(u"Update Rule03 Set TimeNo = 'B'"_s);
        QCOMPARE(remarks(explain()), QStringList({u"班表現在排的是時段 B"_s}));
        it().database().execute(u"Delete * from Rule03"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"班表現在沒有排這一天"_s}));
        QVERIFY(account.told.cells() == account.stored.cells());
        addRoster(it().database(), u"00001"_s, Day, u""_s);
        QCOMPARE(remarks(explain()), QStringList({u"班表現在這一天是休息"_s}));
    }

    void changedPunchesAreSaid() {
        (void)explainAfter(u""_s, u"08:00 12:00 13:00 17:00"_s);
        punch(u"07:30"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"打卡記錄在計算之後有變動，以打卡核對表為準"_s,
                                                u"當日的打卡：07:30、08:00、12:00、13:00、17:00"_s}));
        QVERIFY(told(account).contains(u"08:00 打卡，列為上午上班"_s));
        QVERIFY(account.told.cells() == account.stored.cells());
    }

    void aRowWithoutItsPunchesIsSaid() {
        (void)explainAfter(u""_s, u"08:00 12:00 13:00 17:00"_s);
        it().database().execute(u"Delete * from AtteTemp"_s);
        it().database().execute(u"Delete * from View02"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"找不到當日的打卡記錄，打卡時間以結果所載為準"_s}));
        QVERIFY(told(account).contains(u"08:00 上班，不晚於 08:00，準時"_s));
        QVERIFY(account.told.cells() == account.stored.cells());
    }

    /// Deliberate: a punch of another class takes no position, and the missing one makes an exception.
    void overtimePunchesAreToldThoughTheyDoNotCount() {
        for (const auto& [time, kind] :
             QList<std::pair<QTime, QString>>{{{19, 26}, u"082"_s}, {{17, 38}, u"081"_s}})
            addPunch(it().database(), u"00001"_s, Day, time, kind);
        const DayAccount account = explainAfter(u""_s, u"08:00 12:00 13:00"_s);
        const QStringList sentences = told(account);
        const qsizetype first = sentences.indexOf(u"17:38 是加班卡（班別 081），不列入出勤"_s);
        QCOMPARE(first, sentences.indexOf(u"13:00 打卡，列為下午上班"_s) + 1);
        QCOMPARE(sentences.at(first + 1), u"19:26 是其他班別的打卡（班別 082），不列入出勤"_s);
        QCOMPARE(sentences.at(first + 2), u"計算時沒有請假"_s);
        QVERIFY(sentences.contains(u"下午下班沒有打卡、請假或註銷，列為異常"_s));
        QCOMPARE(account.punches.size(), std::size_t{5});
        QCOMPARE(account.punches.at(3).time, 17 * 60 + 38);
        QCOMPARE(account.punches.at(3).position, 0);
        QCOMPARE(sentenceOf(*account.punches.at(3).step), sentences.at(first));
        QVERIFY(account.told.cells() == account.stored.cells());
        // The same where the staging table has gone on to other days.
        it().database().execute(u"Insert into Atte01 Select * from AtteTemp"_s);
        it().database().execute(u"Delete * from AtteTemp"_s);
        QVERIFY(told(explain()).contains(sentences.at(first)));
        QCOMPARE(remarks(explain()), QStringList());
        // One without a class is in no class that counts.
        it().database().execute(u"Delete * from Atte01"_s);
        insertRow(it().database(), u"AtteTemp"_s,
                  {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"UseTime", QTime(20, 0)}});
        QVERIFY(told(explain()).contains(u"20:00 是沒有班別的打卡，不列入出勤"_s));
    }

    void aSlotThatIsGoneIsSaid() {
        (void)explainAfter(u""_s, u"08:13"_s);
        it().database().execute(u"Delete * from Base04"_s);
        const DayAccount account = explain();
        QCOMPARE(remarks(account), QStringList({u"時段 A 已不存在，無法判讀"_s}));
        QCOMPARE(told(account), QStringList());
        QVERIFY(!account.slot);
        QCOMPARE(account.stored.cells().at(DayRow::Delay1Place), 8);
    }

    void aCombinationThatEndsTheCalculationIsSaid() {
        (void)explainAfter(u""_s, u"08:13"_s);
        changeSlot(u"ElstType = 2, CardType = 3"_s);
        const DayAccount account = explain();
        QVERIFY2(told(account).contains(u"彈性類別「上午4小時」不能配 3 卡，計算到此中止"_s),
                 qPrintable(told(account).join(u'\n')));
        QCOMPARE(account.recalculation.outcome, Recalculation::Outcome::Fails);
        const QString error = account.recalculation.failure;
        QVERIFY(!error.isEmpty());
        QCOMPARE(remarks(account).last(), u"計算在這一天中止："_s + error);
        QCOMPARE(section(account, u"重新計算"_s).first(), u"現在重新計算，會中途停止："_s + error);
    }

    void twoRowsOfADayAreToldApart() {
        (void)explainAfter(u""_s, u"08:13"_s);
        addSlot(it().database(), u"B"_s);
        insertRow(it().database(), u"Atte02"_s, {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"TimeNo", u"B"}});
        QCOMPARE(explain(u"A"_s).TimeNo, u"A"_s);
        QCOMPARE(remarks(explain(u"A"_s)), QStringList({u"當日另有時段 B 的記錄"_s}));
        QCOMPARE(explain(u"b"_s).TimeNo, u"B"_s);
        QVERIFY(remarks(explain(u"b"_s)).contains(u"當日另有時段 A 的記錄"_s));
    }

    /// A day read again without replacing it leaves its result, and makes an exception of it beside.
    void theRowOfTheListThatAsksIsExplained() {
        (void)explainAfter(u""_s, u"08:00 12:00 13:00 17:00"_s);
        Database& store = it().database();
        insertRow(
            store, u"Atte03"_s,
            {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"TimeNo", u"A"}, {u"F1", true}, {u"Expt", true}});
        const DayAccount result = explain(u"A"_s, DayList::Results);
        QCOMPARE(section(result, u"記錄所載"_s).first(), u"上午上班 08:00"_s);
        QCOMPARE(remarks(result),
                 QStringList({u"「異常處理」與「勤惰查詢」所載的這一天不同，以下判讀「勤惰查詢」的記錄"_s}));
        QVERIFY(told(result).contains(u"當日不列異常"_s));
        // A recalculation works on the exception, and puts it in place of the result.
        QCOMPARE(section(result, u"重新計算"_s).first(), u"現在重新計算，仍列在異常處理，但下列各項會改變"_s);
        QVERIFY(section(result, u"重新計算"_s).contains(u"上午上班：08:00 → 無"_s));
        const DayAccount exception = explain(u"A"_s, DayList::Exceptions);
        QCOMPARE(section(exception, u"記錄所載"_s).first(), u"上午上班 無，異常"_s);
        QCOMPARE(remarks(exception).first(),
                 u"「異常處理」與「勤惰查詢」所載的這一天不同，以下判讀「異常處理」的記錄"_s);
        it().calculation.Recalculate(Day);
        QVERIFY(it().calculation.finished());
        const DayAccount after = explain(u"A"_s, DayList::Results);
        QVERIFY(after.stored.cells() == result.recalculation.after.cells());
        QVERIFY(!remarks(after).join(u' ').contains(u"所載的這一天不同"_s));
        // A list without the day's row leaves it to the other.
        store.execute(u"Delete * from Atte02"_s);
        QVERIFY(explain(u"A"_s, DayList::Results).hasRow);
        QVERIFY(explain({}, DayList::Results).isException);
    }

    void codesAreFoundInAnyCaseAndWithApostrophes() {
        addSlot(it().database(), u"A"_s);
        addEmployee(it().database(), u"ab'1"_s);
        insertRow(it().database(), u"Atte03"_s,
                  {{u"EmpNo", u"AB'1"}, {u"UseDate", Day}, {u"TimeNo", u"A"}, {u"Expt", true}});
        const DayAccount account = explainDay(it().store.path(), u"ab'1"_s, Day);
        QVERIFY(account.hasRow);
        QCOMPARE(account.EmpNo, u"AB'1"_s);
        QCOMPARE(account.recalculation.outcome, Recalculation::Outcome::Fails);
    }

    void nothingInTheStoreChanges() {
        (void)explainAfter(u""_s, u"08:13"_s);
        addLeaveDay(it().database(), u"00001"_s, Day, u"03"_s, QTime(8, 0), QTime(12, 0));
        const QByteArray before = contentOf(it().store.path());
        QVERIFY(before.size() > 1000);
        (void)explain();
        QVERIFY(contentOf(it().store.path()) == before);
        QCOMPARE(QDir(QFileInfo(it().store.path()).path()).entryList(QDir::Files),
                 QStringList({u"Pontrel.mdb"_s}));
    }

    void aStoreThatIsGoneIsAnError() {
        QCOMPARE(errorOf([] { (void)explainDay(u"/nowhere/Pontrel.mdb"_s, u"00001"_s, Day); }),
                 error::StoreNotFound);
    }
};

QTEST_GUILESS_MAIN(DayAccountTest)
#include "DayAccountTest.moc"
