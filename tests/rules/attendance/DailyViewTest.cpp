#include "Opening.h"

#include "store/RunTimeError.h"
#include "support/Errors.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

QString viewWith(const QString& EmpNo, const Fields& times) {
    return expectedRow(u"View02"_s, Fields{{u"EmpNo", EmpNo}, {u"UseDate", Day}} + times);
}

} // namespace

/// The raw view of all employees, the older reader that makes it, and the routine that sets a position by
/// itself.
class DailyViewTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    void addCurrent(const QString& EmpNo, QDate leave = QDate(2038, 1, 1)) {
        addEmployee(it().database(), EmpNo, {{u"LeaveDate", leave.isValid() ? Value(leave) : Value()}});
    }

    int readOld(const QByteArray& content) {
        it().host.punchFile = it().store.writePunchFile(u"20010305.txt"_s, content);
        return errorOf([&] { it().calculation.UseRecord2PontrelOld(); });
    }

  private Q_SLOTS:
    void init() { opening_ = std::make_unique<Opening>(); }

    void theViewIsMadeForAllWhoHaveNotLeftWithSecondsAndAllClasses() {
        addCurrent(u"00001"_s);
        addCurrent(u"00002"_s, Day);
        addCurrent(u"00003"_s, Day.addDays(-1));
        addCurrent(u"00004"_s, QDate());
        addPunch(it().database(), u"00001"_s, Day, QTime(8, 0, 5));
        addPunch(it().database(), u"00001"_s, Day, QTime(7, 0, 7), u"081"_s);
        addPunch(it().database(), u"00001"_s, Day, QTime(9, 0), u"001"_s);
        addPunch(it().database(), u"00001"_s, Day.addDays(1), QTime(10, 0));
        addPunch(it().database(), u"00002"_s, Day, QTime(6, 0));
        addPunch(it().database(), u"00002"_s, Day, QTime(7, 0));
        addPunch(it().database(), u"00002"_s, Day, QTime(8, 0));
        it().calculation.FillDailyView(Day);
        QCOMPARE(it().rows(u"View02"_s),
                 (QStringList{viewRow(u"00001"_s, Day, {QTime(7, 0, 7), QTime(8, 0, 5), QTime(9, 0)}),
                              viewRow(u"00002"_s, Day, {QTime(6, 0), QTime(7, 0), QTime(8, 0)})}));
        QCOMPARE(it().rows(u"Atte02"_s) + it().rows(u"AtteTemp1"_s), QStringList());
    }

    void positionsBeyondAnEmployeesPunchesHoldTheTimesOfTheOneBefore() {
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s, u"00003"_s})
            addCurrent(EmpNo);
        addPunch(it().database(), u"00001"_s, Day, QTime(7, 0));
        addPunch(it().database(), u"00001"_s, Day, QTime(8, 0));
        addPunch(it().database(), u"00002"_s, Day, QTime(6, 0));
        it().calculation.FillDailyView(Day);
        QCOMPARE(it().rows(u"View02"_s), (QStringList{viewRow(u"00001"_s, Day, {QTime(7, 0), QTime(8, 0)}),
                                                      viewRow(u"00002"_s, Day, {QTime(6, 0), QTime(8, 0)}),
                                                      viewRow(u"00003"_s, Day, {QTime(6, 0), QTime(8, 0)})}));
    }

    void aTimeOfMidnightIsNullAndAThirteenthIsDropped() {
        addCurrent(u"00001"_s);
        QList<QTime> times;
        for (int hour = 0; hour < 13; ++hour)
            times += QTime(hour, 0);
        for (const QTime& time : times)
            addPunch(it().database(), u"00001"_s, Day, time);
        it().calculation.FillDailyView(Day);
        Fields expected;
        for (int place = 2; place <= 12; ++place)
            expected.append({u"T%1"_s.arg(place), times[place - 1]});
        QCOMPARE(it().rows(u"View02"_s), QStringList{viewWith(u"00001"_s, expected)});
    }

    void aViewRowThatIsThereIsWrittenOver() {
        addCurrent(u"00001"_s);
        insertRow(it().database(), u"View02"_s,
                  {{u"EmpNo", u"00001"}, {u"UseDate", Day}, {u"T7", QTime(7, 0)}});
        addPunch(it().database(), u"00001"_s, Day, QTime(8, 0));
        it().calculation.FillDailyView(Day);
        QCOMPARE(it().rows(u"View02"_s), QStringList{viewRow(u"00001"_s, Day, {QTime(8, 0)})});
    }

    void aPositionIsSetByItselfInAllStagedRowsOfTheDay() {
        const auto stage = [&](const QString& EmpNo, QDate day, const QString& TimeNo) {
            insertRow(it().database(), u"AtteTemp1"_s,
                      {{u"EmpNo", EmpNo}, {u"UseDate", day}, {u"TimeNo", TimeNo}});
        };
        stage(u"00001"_s, Day, u"A"_s);
        stage(u"00001"_s, Day, u"B"_s);
        stage(u"00001"_s, Day.addDays(1), u"A"_s);
        stage(u"00002"_s, Day, u"A"_s);
        it().calculation.SetSlotTime(Day, u"00001"_s, QTime(8, 1, 2), 3);
        const Fields set{{u"Time3", QTime(8, 1, 2)}, {u"FT3", true}};
        QCOMPARE(
            it().rows(u"AtteTemp1"_s),
            (QStringList{dailyRow(u"00001"_s, Day, u"A"_s, set), dailyRow(u"00001"_s, Day, u"B"_s, set),
                         dailyRow(u"00001"_s, Day.addDays(1), u"A"_s), dailyRow(u"00002"_s, Day, u"A"_s)}));
    }

    // The older reader
    // ------------------------------------------------------------------------------------------

    void theOlderReaderDoesTheWholeActionItself() {
        addSlot(it().database(), u"A"_s);
        addEmployee(it().database(), u"00001"_s);
        addEmployee(it().database(), u"00002"_s);
        addRoster(it().database(), u"00001"_s, Day, u"A"_s);
        QCOMPARE(readOld(punchLine("00001", Day, QTime(8, 0)) +
                         punchLine("00001", Day, QTime(18, 0), "000", "42") +
                         punchLine("00002", Day, QTime(18, 0, 3))),
                 0);
        QCOMPARE(
            it().host.calls,
            (QStringList{u"choosePunchFile "_s + it().store.punchFolder(), u"hourglass"_s, u"bar shown"_s,
                         u"confirm 是否繼續轉入原始打卡資料檔?"_s, u"normal pointer"_s,
                         u"tell 2001/03/05資料已轉入成功!!"_s,
                         u"showPunches Select * from Atte01  Where UseDate = #2001/3/5# order by usedate "
                         "desc,empno,UseTime"_s,
                         u"bar hidden"_s}));
        QCOMPARE(it().host.insideStage, QStringList());
        QCOMPARE(it().host.progressValues, (QList<int>{2, 3, 5, 7, 9, 11}));
        const QStringList punches{punchRow(u"00001"_s, Day, QTime(8, 0)),
                                  punchRow(u"00002"_s, Day, QTime(18, 0, 3), u"081"_s)};
        QCOMPARE(it().rows(u"AtteTemp"_s), punches);
        QCOMPARE(it().rows(u"Atte01"_s), punches);
        QCOMPARE(it().rows(u"Over01"_s),
                 QStringList{overtimeRow(u"00002"_s, Day, QTime(18, 0, 3), QTime(), 0)});
        QCOMPARE(it().rows(u"Atte02"_s).size(), 1);
        // The raw view has every employee, with the seconds.
        QCOMPARE(it().rows(u"View02"_s), (QStringList{viewRow(u"00001"_s, Day, {QTime(8, 0)}),
                                                      viewRow(u"00002"_s, Day, {QTime(18, 0, 3)})}));
        QCOMPARE(rowsOfSelection(it().database(), u"Select LeaveDate from Base06"_s),
                 (QStringList{u"null"_s, u"null"_s}));
        QVERIFY(!it().calculation.ImportRunning());
    }

    void withoutTheRawFileTheViewOfTheTimeSlotsStays() {
        addSlot(it().database(), u"A"_s);
        addEmployee(it().database(), u"00001"_s);
        addEmployee(it().database(), u"00002"_s);
        addRoster(it().database(), u"00001"_s, Day, u"A"_s);
        it().host.answer = false;
        QCOMPARE(readOld(punchLine("00001", Day, QTime(8, 0, 30))), 0);
        QCOMPARE(it().rows(u"View02"_s), QStringList{viewRow(u"00001"_s, Day, {QTime(8, 0)})});
        QCOMPARE(it().host.calls.last(), u"bar hidden"_s);
    }

    void aKeyAppliesOnlyAtTheSameReader() {
        QCOMPARE(readOld(punchLine("00001", Day, QTime(18, 0), "000", "42", "001") +
                         punchLine("00001", Day, QTime(18, 0, 3), "255", "07", "002")),
                 0);
        QCOMPARE(it().rows(u"Atte01"_s),
                 QStringList{punchRow(u"00001"_s, Day, QTime(18, 0, 3), u"255"_s, u"002"_s)});
    }

    void aDayThatIsThereIsReplacedButForViewAndStagedResults() {
        addSlot(it().database(), u"A"_s);
        addEmployee(it().database(), u"00001"_s);
        addRoster(it().database(), u"00001"_s, Day, u"A"_s);
        QCOMPARE(readOld(punchLine("00001", Day, QTime(8, 0)) + punchLine("00001", Day, QTime(18, 0), "081")),
                 0);
        insertRow(it().database(), u"View02"_s, {{u"EmpNo", u"00009"}, {u"UseDate", Day}});
        it().host.calls.clear();
        int answers = 0;
        it().host.onCall = [&](const QString& call) {
            if (call.startsWith(u"confirm"))
                it().host.answer = ++answers == 1;
        };
        QCOMPARE(readOld(punchLine("00001", Day, QTime(9, 0))), 0);
        QCOMPARE(it().host.calls.at(1), u"confirm 這一天的資料已經轉入,是否要取代掉?"_s);
        const QStringList punches{punchRow(u"00001"_s, Day, QTime(9, 0))};
        QCOMPARE(it().rows(u"AtteTemp"_s), punches);
        QCOMPARE(it().rows(u"Atte01"_s), punches);
        QCOMPARE(it().rows(u"Over01"_s), QStringList());
        QCOMPARE(it().rows(u"AtteTemp1"_s).size(), 2);
        QCOMPARE(it().rows(u"View02"_s),
                 (QStringList{viewRow(u"00001"_s, Day, {QTime(9, 0)}), viewRow(u"00009"_s, Day, {})}));
    }

    void anAnswerOfNoLeavesTheOlderReaderAtOnce() {
        QCOMPARE(readOld(punchLine("00001", Day, QTime(8, 0))), 0);
        it().host.calls.clear();
        it().host.answer = false;
        QCOMPARE(readOld(punchLine("00001", Day, QTime(9, 0))), 0);
        QCOMPARE(it().host.calls, (QStringList{u"choosePunchFile "_s + it().store.punchFolder(),
                                               u"confirm 這一天的資料已經轉入,是否要取代掉?"_s}));
        QCOMPARE(it().rows(u"Atte01"_s), QStringList{punchRow(u"00001"_s, Day, QTime(8, 0))});
    }

    void aCancelledChoiceLeavesTheOlderReaderAtOnce() {
        it().calculation.UseRecord2PontrelOld();
        QCOMPARE(it().host.calls, QStringList{u"choosePunchFile "_s + it().store.punchFolder()});
    }

    void anErrorLeavesTheOlderReader() {
        QCOMPARE(readOld(punchLine("00001", Day, QTime(8, 0)) + punchLine("0'001", Day, QTime(8, 0))),
                 error::Syntax);
        QCOMPARE(it().committedRows(u"Atte01"_s), QStringList{punchRow(u"00001"_s, Day, QTime(8, 0))});
        QCOMPARE(it().committedRows(u"AtteTemp"_s), QStringList{punchRow(u"00001"_s, Day, QTime(8, 0))});
        QVERIFY(it().calculation.ImportRunning());
    }
};

QTEST_GUILESS_MAIN(DailyViewTest)
#include "DailyViewTest.moc"
