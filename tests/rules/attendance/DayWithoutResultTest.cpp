#include "ExplainedDay.h"

#include <QSet>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// What is told of a day without a result, and of the days of a month.
class DayWithoutResultTest : public QObject, private ExplainedDay {
    Q_OBJECT

  private Q_SLOTS:
    void init() { reset(); }

    void aDayWithoutARowShowsItsSlotAndItsPunches() {
        addSlot(it().database(), u"A"_s);
        it().addRostered(u"00001"_s);
        const DayAccount account = explain({});
        QVERIFY(!account.hasRow);
        QCOMPARE(remarks(account), QStringList({u"當日沒有計算結果"_s}));
        QCOMPARE(account.windows.size(), std::size_t{4});
        QCOMPARE(sectionsOf(account).size(), std::size_t{1});
        QVERIFY(account.punches.empty());
        keepPunch(QTime(17, 2));
        keepPunch(QTime(8, 13, 20), u"000"_s);
        keepPunch(QTime(17, 38), u"081"_s);
        const DayAccount punched = explain({});
        QCOMPARE(remarks(punched), QStringList({u"當日沒有計算結果"_s, u"當日的打卡：08:13、17:02"_s}));
        QCOMPARE(told(punched), QStringList({u"17:38 是加班卡（班別 081），不列入出勤"_s}));
        QStringList punches;
        for (const DayPunch& punch : punched.punches)
            punches += minuteText(punch.time) + u' ' + QString::number(punch.position);
        QCOMPARE(punches, QStringList({u"08:13 0"_s, u"17:02 0"_s, u"17:38 0"_s}));
    }

    /// Each reason for which a day on the calendar is not calculated is said, and none where there is none.
    void whyADayHasNoResultIsSaid_data() {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not on the roster") << u"Delete * from Rule03"_s << u"班表現在沒有排這一天"_s;
        QTest::newRow("rest") << u"Update Rule03 Set TimeNo = ''"_s << u"班表現在這一天是休息"_s;
        QTest::newRow("a slot that is gone") << u"Delete * from Base04"_s << u"時段 A 已不存在，無法判讀"_s;
        QTest::newRow("not yet arrived") << u"Update Base06 Set ArriveDate = #2001/3/6#, LeaveDate = Null"_s
                                         << u"這一天不在職，不計算：到職日 2001/3/6，離職日 無"_s;
        QTest::newRow("left") << u"Update Base06 Set LeaveDate = #2001/3/4#"_s
                              << u"這一天不在職，不計算：到職日 2000/1/1，離職日 2001/3/4"_s;
        QTest::newRow("without a day of arrival")
            << u"Update Base06 Set ArriveDate = Null, LeaveDate = Null"_s
            << u"這一天不在職，不計算：到職日 無，離職日 無"_s;
        QTest::newRow("without a day of arrival, an import under way")
            << u"Update Base06 Set ArriveDate = Null"_s << u"這一天不在職，不計算：到職日 無，離職日 無"_s;
        QTest::newRow("nobody") << u"Delete * from Base06"_s << u"這一天不在職，不計算：員工資料沒有這一位"_s;
        QTest::newRow("employed") << u"Update Base06 Set LeaveDate = Null"_s << QString();
        QTest::newRow("leaving on the day") << u"Update Base06 Set LeaveDate = #2001/3/5#"_s << QString();
    }
    void whyADayHasNoResultIsSaid() {
        QFETCH(QString, change);
        QFETCH(QString, reason);
        addSlot(it().database(), u"A"_s);
        it().addRostered(u"00001"_s);
        it().database().execute(change);
        QStringList expected{u"當日沒有計算結果"_s};
        if (!reason.isEmpty())
            expected += reason;
        QCOMPARE(remarks(explain({})), expected);
        // The calculation leaves it out for that reason, and not otherwise.
        it().calculation.fillSentinel();
        QCOMPARE(it().calculate(), 0);
        QCOMPARE(explain({}).hasRow, reason.isEmpty());
    }

    void aDayOnWhichTheCalculationFailsSaysWhere() {
        addSlot(it().database(), u"A"_s, {{u"ElstType", 2}, {u"CardType", 3}});
        it().addRostered(u"00001"_s);
        punch(u"08:13"_s);
        const DayAccount account = explain({});
        QVERIFY(!account.hasRow);
        QCOMPARE(account.remarks.back().remark, Remark::CalculationFails);
        QVERIFY2(told(account).contains(u"彈性類別「上午4小時」不能配 3 卡，計算到此中止"_s),
                 qPrintable(told(account).join(u'\n')));
        QCOMPARE(account.punches.size(), std::size_t{1});
        // The same from the table of punches.
        it().database().execute(u"Delete * from AtteTemp"_s);
        keepPunch(QTime(8, 13));
        QVERIFY(told(explain({})).contains(u"08:13 打卡，不在任何收卡時間內，不列入"_s));
        changeSlot(u"Delay = 60"_s);
        const DayAccount unread = explain({});
        QCOMPARE(unread.remarks.back().remark, Remark::CalculationFails);
        QVERIFY(!unread.slot);
        QCOMPARE(unread.punches.size(), std::size_t{1});
    }

    void eachDayOfTheMonthHasItsState() {
        Database& store = it().database();
        addSlot(store, u"A"_s);
        addEmployee(store, u"00001"_s);
        const auto result = [&](int day, const QString& fields) {
            insertRow(store, u"Atte02"_s,
                      Fields{{u"EmpNo", u"00001"}, {u"UseDate", QDate(2001, 3, day)}, {u"TimeNo", u"A"}} +
                          fieldsOf(fields));
        };
        result(1, u"FT1 FT2 FT3 FT4"_s);
        result(2, u"FT1 DelayF=1 Delay1=5 F1 Expt"_s);
        result(3, u"DelayF=1 F1 F2 Expt"_s);
        result(4, u"Expt"_s);
        result(5, u"FH2"_s);
        result(6, u"FC3"_s);
        result(7, u"DelayF=4 Earlier4=3"_s);
        for (const int day : {1, 8, 9})
            addRoster(store, u"00001"_s, QDate(2001, 3, day), day == 9 ? u"Z"_s : u"A"_s);
        addRoster(store, u"00001"_s, QDate(2001, 3, 12), u""_s);
        insertRow(store, u"Rule01"_s, {{u"hymd", QDate(2001, 3, 8)}});
        insertRow(store, u"Rule01"_s, {{u"hymd", QDate(2001, 3, 10)}});
        // Another month, another employee.
        insertRow(store, u"Atte02"_s,
                  {{u"EmpNo", u"00002"}, {u"UseDate", QDate(2001, 3, 11)}, {u"TimeNo", u"A"}});
        const std::vector<MonthDay> month = explain({}).month;
        QCOMPARE(month.size(), std::size_t{31});
        QStringList signs;
        for (const MonthDay& day : month)
            signs += stateName(day.state);
        QCOMPARE(signs.first(12),
                 QStringList({u"正常"_s, u"遲到早退"_s, u"異常"_s, u"異常"_s, u"請假"_s, u"註銷"_s,
                              u"遲到早退"_s, u"尚無結果"_s, u"不計算"_s, u"放假"_s, u"無班表"_s, u"放假"_s}));
        QSet<QString> distinct;
        for (int state = 0; state < DayStateCount; ++state)
            distinct.insert(stateSign(static_cast<DayState>(state)));
        QCOMPARE(distinct.size(), DayStateCount);
    }

    /// A day on the roster which no calculation will take promises no result.
    void rosteredDaysOutsideTheEmploymentAreLeftOut() {
        Database& store = it().database();
        addSlot(store, u"A"_s);
        addEmployee(store, u"00001"_s,
                    {{u"ArriveDate", QDate(2001, 3, 3)}, {u"LeaveDate", QDate(2001, 3, 5)}});
        for (int day = 2; day <= 6; ++day)
            addRoster(store, u"00001"_s, QDate(2001, 3, day), u"A"_s);
        const auto states = [&] {
            QStringList names;
            for (const MonthDay& day : explain({}).month)
                names += stateName(day.state);
            return names.mid(1, 5);
        };
        QCOMPARE(states(),
                 QStringList({u"不計算"_s, u"尚無結果"_s, u"尚無結果"_s, u"尚無結果"_s, u"不計算"_s}));
        // Whatever is said of them, a calculation does as it says.
        for (int day = 2; day <= 6; ++day)
            it().calculation.CalcSlotLoop(QDate(2001, 3, day), false);
        QCOMPARE(states(), QStringList({u"不計算"_s, u"異常"_s, u"異常"_s, u"異常"_s, u"不計算"_s}));
        store.execute(u"Delete * from Base06"_s);
        QCOMPARE(states().first(), u"不計算"_s);
    }
};

QTEST_GUILESS_MAIN(DayWithoutResultTest)
#include "DayWithoutResultTest.moc"
