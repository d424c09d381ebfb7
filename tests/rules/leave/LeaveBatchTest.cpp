#include "LeaveDesk.h"

#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString TooMuch = u"tell 錯誤訊息: 該假累計可請天數,已超過! 請檢查....."_s;
const QString Incomplete = u"tell 錯誤訊息: 部份欄位未輸入所以存檔不成功,請重新輸入..."_s;
const QDateTime Begun(QDate(2001, 3, 2), QTime(9, 10, 11));

/// An employee as addEmployee() makes him, with the figures of this year's annual leave.
Fields annual(const QString& EmpNo, const Value& HD, const Value& Use, const Value& Left) {
    return {{u"EmpNo", EmpNo},   {u"EmpName", u"員工"_s + EmpNo}, {u"ArriveDate", QDate(2000, 1, 1)},
            {u"ThisYearHD", HD}, {u"ThisYearUse", Use},           {u"ThisYearLeft", Left}};
}

} // namespace

/// The leave batch: a note with its day rows and its charge for each employee.
class LeaveBatchTest : public QObject {
    Q_OBJECT

    std::unique_ptr<LeaveDesk> desk_;
    LeaveDesk& it() { return *desk_; }

    /// A batch of the type for the entries on the 5th, from 08:00 to 17:00.
    [[nodiscard]] LeaveBatch batchOf(const QString& HoliNo, const QStringList& entries) {
        return {.entries = entries,
                .LenEmpNo = 5,
                .HoliNo = HoliNo,
                .codes = readBalanceCodes(it().database()),
                .date = March5,
                .HoliBegTime = QTime(8, 0),
                .HoliEndTime = QTime(17, 0),
                .gAccount = u"clerk"_s,
                .TransDate = Begun};
    }
    void run(const LeaveBatch& batch) { RunLeaveBatch(it().database(), it().host, it().values, batch); }
    /// Number of the error, 0 where there is none.
    [[nodiscard]] int runAndTell(const LeaveBatch& batch) {
        return errorOf([&] {
            run(batch);
            return 0;
        });
    }

    /// A note of the batch's usual times.
    [[nodiscard]] static Fields noteOf(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                       double HoliHours) {
        return {{u"BusNo", BusNo},
                {u"EmpNo", EmpNo},
                {u"HoliNo", HoliNo},
                {u"HoliBegDate", March5},
                {u"HoliBegTime", QTime(8, 0)},
                {u"HoliEndDate", March5},
                {u"HoliEndTime", QTime(17, 0)},
                {u"HoliHours", HoliHours},
                {u"Account", u"clerk"},
                {u"TransDate", Begun},
                {u"TransType", true}};
    }
    [[nodiscard]] static QString note(const Fields& fields) { return expectedRow(u"Holi03"_s, fields); }
    [[nodiscard]] static QString note(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                      double HoliHours) {
        return note(noteOf(BusNo, EmpNo, HoliNo, HoliHours));
    }
    [[nodiscard]] static QString wholeDay(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                          int hours, const QString& TimeNo) {
        return dayRow(BusNo, EmpNo, HoliNo, March5, QTime(8, 0), QTime(17, 0), hours, TimeNo);
    }

    void roster(const QStringList& employees) {
        for (const QString& EmpNo : employees)
            addRoster(it().database(), EmpNo, March5, u"A"_s);
    }
    /// Puts the employees' figures in place of what the desk gave them.
    void setEmployees(const QList<Fields>& employees) {
        it().database().execute(u"delete * from Base06"_s);
        for (const Fields& employee : employees)
            insertRow(it().database(), u"Base06"_s, employee);
    }
    [[nodiscard]] QStringList employees() { return rowsOf(it().database(), u"Base06"_s); }
    [[nodiscard]] static QStringList rowsOfEmployees(const QList<Fields>& all) {
        QStringList rows;
        for (const Fields& fields : all)
            rows += expectedRow(u"Base06"_s, fields);
        return rows;
    }

  private Q_SLOTS:
    void init() {
        clock::setSource([] { return QDateTime(QDate(2001, 3, 2), QTime(9, 10, 12)); });
        desk_ = std::make_unique<LeaveDesk>();
    }
    void cleanup() { clock::setSource({}); }

    void eachEmployeeGetsANoteOfHisOwnInTheOrderOfTheList() {
        roster({u"10001"_s, u"10003"_s});
        const QStringList before = employees();
        run(batchOf(u"08"_s, {u"10003  員工10003"_s, u"10001  員工10001"_s, u"10002  員工10002"_s}));
        QCOMPARE(it().noteRows(), (QStringList{note(u"200103020001"_s, u"10003"_s, u"08"_s, 1),
                                               note(u"200103020002"_s, u"10001"_s, u"08"_s, 1),
                                               note(u"200103020003"_s, u"10002"_s, u"08"_s, 1)}));
        QCOMPARE(it().days(), (QStringList{wholeDay(u"200103020001"_s, u"10003"_s, u"08"_s, 8, u"A"_s),
                                           wholeDay(u"200103020002"_s, u"10001"_s, u"08"_s, 8, u"A"_s),
                                           wholeDay(u"200103020003"_s, u"10002"_s, u"08"_s, 8, QString())}));
        // A type without a balance moves none and refuses nobody.
        QCOMPARE(employees(), before);
        QCOMPARE(it().host.calls, QStringList());
        QCOMPARE(it().host.hours, (QStringList{u"1"_s, u"1"_s, u"1"_s}));
        QCOMPARE(it().values.BusNo(), u"200103020003"_s);
        QVERIFY(!it().database().inStage());
    }

    void notesAreCutToMinutesAndDayRowsAreNot() {
        roster({u"10001"_s});
        LeaveBatch batch = batchOf(u"08"_s, {u"10001"_s});
        batch.HoliBegTime = QTime(13, 0, 59);
        batch.HoliEndTime = QTime(15, 30, 1);
        run(batch);
        QCOMPARE(it().noteRows(),
                 QStringList{note(with(with(noteOf(u"200103020001"_s, u"10001"_s, u"08"_s, 0.3),
                                            {u"HoliBegTime", QTime(13, 0)}),
                                       {u"HoliEndTime", QTime(15, 30)}))});
        QCOMPARE(it().days(), QStringList{dayRow(u"200103020001"_s, u"10001"_s, u"08"_s, March5,
                                                 QTime(13, 0, 59), QTime(15, 30, 1), 3, u"A"_s)});
    }

    void hoursGoThroughTextIntoTheNoteAndStraightIntoTheBalance() {
        roster({u"10001"_s});
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0)});
        LeaveBatch batch = batchOf(u"01"_s, {u"10001"_s});
        batch.HoliBegTime = QTime(14, 0);
        run(batch);
        QCOMPARE(it().host.hours, QStringList{u"0.3"_s});
        QCOMPARE(it().database().select(u"select HoliHours from Holi03"_s).at(0, 0), Value(0.3));
        QCOMPARE(it().database().select(u"select ThisYearUse from Base06"_s).at(0, 0), Value(3 * 0.1));
    }

    void theBalanceOfTheTypeIsCharged() {
        // 1.4 taken of 7, and six hours more.
        roster({u"10001"_s});
        setEmployees({annual(u"10001"_s, 7.0, 1.4, 0.0)});
        LeaveBatch batch = batchOf(u"01"_s, {u"10001"_s});
        batch.HoliBegTime = QTime(10, 30);
        run(batch);
        QCOMPARE(employees(), rowsOfEmployees({annual(u"10001"_s, 7.0, 2.2, 4.6)}));
        QCOMPARE(it().noteRows(), QStringList{note(with(noteOf(u"200103020001"_s, u"10001"_s, u"01"_s, 0.6),
                                                        {u"HoliBegTime", QTime(10, 30)}))});
    }

    void theFirstEmployeePassesWhateverIsLeft() {
        roster({u"10001"_s});
        setEmployees({annual(u"10001"_s, 0.4, 0.0, 0.0)});
        run(batchOf(u"01"_s, {u"10001"_s}));
        QCOMPARE(it().host.calls, QStringList());
        QCOMPARE(employees(), rowsOfEmployees({annual(u"10001"_s, 0.4, 1.0, -0.4)}));
        QCOMPARE(it().noteRows(), QStringList{note(u"200103020001"_s, u"10001"_s, u"01"_s, 1)});
    }

    void lessThanNothingLeftStopsEvenTheFirst() {
        roster({u"10001"_s, u"10002"_s});
        const QList<Fields> both{annual(u"10001"_s, 7.0, 0.0, -0.1), annual(u"10002"_s, 7.0, 0.0, 7.0)};
        setEmployees(both);
        run(batchOf(u"01"_s, {u"10001"_s, u"10002"_s}));
        QCOMPARE(it().host.calls, QStringList{TooMuch});
        QCOMPARE(it().host.insideStage, QStringList());
        QCOMPARE(it().host.hours, QStringList());
        QCOMPARE(employees(), rowsOfEmployees(both));
        QCOMPARE(it().days() + it().noteRows(), QStringList());
    }

    void oneIsHeldAgainstTheHoursOfTheOneBefore_data() {
        QTest::addColumn<double>("left"); ///< Of the second, behind a first of 8 hours.
        QTest::addColumn<bool>("passes");
        QTest::newRow("a day is enough") << 1.0 << true;
        QTest::newRow("an hour less is not") << 0.7 << false;
        QTest::newRow("eight tenths are") << 0.8 << true;
        QTest::newRow("nothing is not") << 0.0 << false;
    }
    void oneIsHeldAgainstTheHoursOfTheOneBefore() {
        QFETCH(const double, left);
        QFETCH(const bool, passes);
        roster({u"10001"_s}); // The second has no hours of his own.
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 0.0), annual(u"10002"_s, 7.0, 0.0, left),
                      annual(u"10003"_s, 7.0, 0.0, 7.0)});
        run(batchOf(u"01"_s, {u"10001"_s, u"10002"_s, u"10003"_s}));
        // Notes and charges of those before stay; those behind are not reached.
        QStringList notes{note(u"200103020001"_s, u"10001"_s, u"01"_s, 1)};
        QStringList days{wholeDay(u"200103020001"_s, u"10001"_s, u"01"_s, 8, u"A"_s)};
        QList<Fields> figures{annual(u"10001"_s, 7.0, 1.0, 6.0), annual(u"10002"_s, 7.0, 0.0, left),
                              annual(u"10003"_s, 7.0, 0.0, 7.0)};
        if (passes) {
            notes += {note(u"200103020002"_s, u"10002"_s, u"01"_s, 0),
                      note(u"200103020003"_s, u"10003"_s, u"01"_s, 0)};
            days += {wholeDay(u"200103020002"_s, u"10002"_s, u"01"_s, 0, QString()),
                     wholeDay(u"200103020003"_s, u"10003"_s, u"01"_s, 0, QString())};
            figures[1] = annual(u"10002"_s, 7.0, 0.0, 7.0);
        }
        QCOMPARE(it().host.calls, passes ? QStringList() : QStringList{TooMuch});
        QCOMPARE(it().host.insideStage, QStringList());
        QCOMPARE(it().host.hours, passes ? (QStringList{u"1"_s, u"0"_s, u"0"_s}) : QStringList{u"1"_s});
        QCOMPARE(it().noteRows(), notes);
        QCOMPARE(it().days(), days);
        QCOMPARE(employees(), rowsOfEmployees(figures));
    }

    void allBeforeTheMessageIsInTheStoreWhenItShows() {
        roster({u"10001"_s});
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0), annual(u"10002"_s, 7.0, 0.0, 0.0)});
        QStringList seen;
        it().host.onCall = [&](const QString&) {
            const auto other = it().store.connect();
            seen = rowsOf(*other, u"Holi03"_s);
        };
        run(batchOf(u"01"_s, {u"10001"_s, u"10002"_s}));
        QCOMPARE(seen, QStringList{note(u"200103020001"_s, u"10001"_s, u"01"_s, 1)});
    }

    void behindNoHoursTheNextPassesWithNothingLeft() {
        roster({u"10002"_s});
        setEmployees({annual(u"10001"_s, 1.0, 0.0, 9.0), annual(u"10002"_s, 0.0, 0.0, 0.0)});
        run(batchOf(u"01"_s, {u"10001"_s, u"10002"_s}));
        QCOMPARE(it().host.calls, QStringList());
        // No hours write the figures of the first anew.
        QCOMPARE(employees(),
                 rowsOfEmployees({annual(u"10001"_s, 1.0, 0.0, 1.0), annual(u"10002"_s, 0.0, 1.0, -1.0)}));
    }

    void eachRunStartsWithNoHoursHeld() {
        roster({u"10001"_s, u"10002"_s});
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0), annual(u"10002"_s, 0.0, 0.0, 0.0)});
        run(batchOf(u"01"_s, {u"10001"_s}));
        run(batchOf(u"01"_s, {u"10002"_s}));
        QCOMPARE(it().host.calls, QStringList());
        QCOMPARE(employees(),
                 rowsOfEmployees({annual(u"10001"_s, 7.0, 1.0, 6.0), annual(u"10002"_s, 0.0, 1.0, -1.0)}));
    }

    void theCodesAreThoseThatTheWindowHasRead() {
        roster({u"10001"_s});
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0)});
        const LeaveBatch batch = batchOf(u"01"_s, {u"10001"_s});
        it().database().execute(u"Update Syst01 Set ThisYearRest='77'"_s);
        run(batch);
        QCOMPARE(employees(), rowsOfEmployees({annual(u"10001"_s, 7.0, 1.0, 6.0)}));
    }

    void aCodeOfTwoBalancesChargesTheFirst() {
        roster({u"10001"_s});
        it().database().execute(u"Update Syst01 Set LastYearRest='08',Leave='08',Sick='08'"_s);
        const Fields figures{{u"EmpNo", u"10001"},  {u"EmpName", u"員工10001"}, {u"LastYearHD", 2.0},
                             {u"LastYearUse", 0.0}, {u"LastYearLeft", 2.0},     {u"LeaveHD", 5.0}};
        setEmployees({figures});
        run(batchOf(u"08"_s, {u"10001"_s}));
        QCOMPARE(employees(),
                 rowsOfEmployees({with(with(figures, {u"LastYearUse", 1.0}), {u"LastYearLeft", 1.0})}));
    }

    void nothingIsWrittenWithoutEmployeesOrType_data() {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("HoliNo");
        QTest::addColumn<QString>("message");
        QTest::newRow("no employees") << QStringList() << u"08"_s << u"請選擇員工代碼...."_s;
        QTest::newRow("no type") << QStringList{u"10001"_s} << QString() << u"請輸入假別...."_s;
        QTest::newRow("neither") << QStringList() << QString() << u"請選擇員工代碼...."_s;
    }
    void nothingIsWrittenWithoutEmployeesOrType() {
        QFETCH(const QStringList, entries);
        QFETCH(const QString, HoliNo);
        QFETCH(const QString, message);
        run(batchOf(HoliNo, entries));
        QCOMPARE(it().host.calls, (QStringList{u"tell 錯誤訊息: "_s + message, Incomplete}));
        QCOMPARE(it().days() + it().noteRows(), QStringList());
        QCOMPARE(it().values.gBusNo, 0.0);
    }

    void anUnknownTypeIsToldTwiceForEachEmployeeAheadOfHisRows() {
        QList<qsizetype> rowsSeen;
        it().host.onCall = [&](const QString&) {
            rowsSeen += rowsOf(*it().store.connect(), u"Holi04"_s).size();
        };
        run(batchOf(u"99"_s, {u"10001"_s, u"10002"_s}));
        QCOMPARE(it().host.calls, QStringList(4, UnknownType));
        QCOMPARE(it().host.insideStage, QStringList());
        QCOMPARE(rowsSeen, (QList<qsizetype>{0, 0, 1, 1}));
        QCOMPARE(it().noteRows(), (QStringList{note(u"200103020001"_s, u"10001"_s, u"99"_s, 1),
                                               note(u"200103020002"_s, u"10002"_s, u"99"_s, 1)}));
    }

    void aSecondBatchOfTheDayWritesASecondSet() {
        roster({u"10001"_s});
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0)});
        for (int time = 0; time < 2; ++time)
            run(batchOf(u"01"_s, {u"10001"_s}));
        QCOMPARE(it().host.calls, QStringList());
        QCOMPARE(it().noteRows(), (QStringList{note(u"200103020001"_s, u"10001"_s, u"01"_s, 1),
                                               note(u"200103020002"_s, u"10001"_s, u"01"_s, 1)}));
        QCOMPARE(it().days(), (QStringList{wholeDay(u"200103020001"_s, u"10001"_s, u"01"_s, 8, u"A"_s),
                                           wholeDay(u"200103020002"_s, u"10001"_s, u"01"_s, 8, u"A"_s)}));
        QCOMPARE(employees(), rowsOfEmployees({annual(u"10001"_s, 7.0, 2.0, 5.0)}));
    }

    void behindNumber9999TheNumberOfTheNextDayIsOfferedTwiceAndTheSecondNoteDropped() {
        roster({u"10001"_s, u"10002"_s, u"10003"_s});
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0), annual(u"10002"_s, 7.0, 0.0, 7.0),
                      annual(u"10003"_s, 7.0, 0.0, 7.0)});
        const Fields last{{u"BusNo", u"200103029999"}, {u"EmpNo", u"10009"}};
        insertRow(it().database(), u"Holi03"_s, last);
        run(batchOf(u"01"_s, {u"10001"_s, u"10002"_s, u"10003"_s}));
        QCOMPARE(it().host.calls, QStringList());
        QCOMPARE(it().noteRows(), (QStringList{note(last), note(u"200103030000"_s, u"10001"_s, u"01"_s, 1)}));
        QCOMPARE(it().days(), (QStringList{wholeDay(u"200103030000"_s, u"10001"_s, u"01"_s, 8, u"A"_s),
                                           wholeDay(u"200103030000"_s, u"10002"_s, u"01"_s, 8, u"A"_s),
                                           wholeDay(u"200103030000"_s, u"10003"_s, u"01"_s, 8, u"A"_s)}));
        QCOMPARE(employees(),
                 rowsOfEmployees({annual(u"10001"_s, 7.0, 1.0, 6.0), annual(u"10002"_s, 7.0, 1.0, 6.0),
                                  annual(u"10003"_s, 7.0, 1.0, 6.0)}));
    }

    void aCodeIsCutToItsLengthAndMayBeNobodys() {
        LeaveBatch batch = batchOf(u"08"_s, {u"10001  員工10001"_s});
        batch.LenEmpNo = 4;
        run(batch);
        QCOMPARE(it().noteRows(), QStringList{note(u"200103020001"_s, u"1000"_s, u"08"_s, 1)});
        batch.HoliNo = u"01"_s;
        QCOMPARE(runAndTell(batch), error::NoCurrentRecord);
        QCOMPARE(it().noteRows().size(), 1);
        QCOMPARE(it().days().size(), 1);
    }

    void aLengthBelowNothingIsAnError() {
        LeaveBatch batch = batchOf(u"08"_s, {u"10001  員工10001"_s});
        batch.LenEmpNo = -1;
        QCOMPARE(runAndTell(batch), 5);
        QCOMPARE(it().noteRows() + it().days(), QStringList());
    }

    void anErrorLeavesWhatWasDone_data() {
        QTest::addColumn<QString>("spoil"); ///< A statement that spoils the second employee of three.
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("hasDays"); ///< Whether his day rows are written by then.
        QTest::newRow("nothing known to be left")
            << u"Update Base06 Set ThisYearLeft=null Where EmpNo='10002'"_s << error::InvalidNull << false;
        QTest::newRow("nothing known to be taken")
            << u"Update Base06 Set ThisYearUse=null Where EmpNo='10002'"_s << error::InvalidNull << true;
        QTest::newRow("nothing known to be allowed")
            << u"Update Base06 Set ThisYearHD=null Where EmpNo='10002'"_s << error::InvalidNull << true;
        QTest::newRow("no such employee")
            << u"delete * from Base06 Where EmpNo='10002'"_s << error::NoCurrentRecord << false;
        QTest::newRow("a slot without a time")
            << u"Update Rule03 Set TimeNo='B' Where EmpNo='10002'"_s << error::InvalidNull << false;
    }
    void anErrorLeavesWhatWasDone() {
        QFETCH(const QString, spoil);
        QFETCH(const int, number);
        QFETCH(const bool, hasDays);
        insertRow(it().database(), u"Base04"_s, {{u"TimeNo", u"B"}});
        roster({u"10001"_s, u"10002"_s, u"10003"_s});
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0), annual(u"10002"_s, 7.0, 0.0, 7.0),
                      annual(u"10003"_s, 7.0, 0.0, 7.0)});
        it().database().execute(spoil);
        QStringList expected = employees();
        expected[0] = rowsOfEmployees({annual(u"10001"_s, 7.0, 1.0, 6.0)}).constFirst();
        QCOMPARE(runAndTell(batchOf(u"01"_s, {u"10001"_s, u"10002"_s, u"10003"_s})), number);
        QStringList days{wholeDay(u"200103020001"_s, u"10001"_s, u"01"_s, 8, u"A"_s)};
        if (hasDays)
            days += wholeDay(u"200103020002"_s, u"10002"_s, u"01"_s, 8, u"A"_s);
        // Also for whoever opens the store after it.
        const auto other = it().store.connect();
        QCOMPARE(rowsOf(*other, u"Base06"_s), expected);
        QCOMPARE(rowsOf(*other, u"Holi04"_s), days);
        QCOMPARE(rowsOf(*other, u"Holi03"_s), QStringList{note(u"200103020001"_s, u"10001"_s, u"01"_s, 1)});
        QCOMPARE(it().host.hours, QStringList{u"1"_s});
        QCOMPARE(it().host.calls, QStringList());
    }

    void anAccountThatBreaksItsStatementLeavesRowsAndCharge() {
        roster({u"10001"_s});
        setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0)});
        LeaveBatch batch = batchOf(u"01"_s, {u"10001"_s, u"10002"_s});
        batch.gAccount = u"o'neil"_s;
        QCOMPARE(runAndTell(batch), error::Syntax);
        QCOMPARE(it().noteRows(), QStringList());
        QCOMPARE(it().days(), QStringList{wholeDay(u"200103020001"_s, u"10001"_s, u"01"_s, 8, u"A"_s)});
        QCOMPARE(employees(), rowsOfEmployees({annual(u"10001"_s, 7.0, 1.0, 6.0)}));
        QCOMPARE(it().host.hours, QStringList{u"1"_s});
    }

    void anEmptyBoxIsAnErrorBeforeAnythingIsWritten_data() {
        QTest::addColumn<int>("empty");
        QTest::newRow("date") << 0;
        QTest::newRow("begin") << 1;
        QTest::newRow("end") << 2;
    }
    void anEmptyBoxIsAnErrorBeforeAnythingIsWritten() {
        QFETCH(const int, empty);
        for (const QString& HoliNo : {u"01"_s, u"08"_s}) {
            setEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0)});
            LeaveBatch batch = batchOf(HoliNo, {u"10001"_s});
            if (empty == 0)
                batch.date = QDate();
            else
                (empty == 1 ? batch.HoliBegTime : batch.HoliEndTime) = QTime();
            QCOMPARE(runAndTell(batch), error::InvalidNull);
            QCOMPARE(it().days() + it().noteRows() + it().host.calls, QStringList());
            QCOMPARE(employees(), rowsOfEmployees({annual(u"10001"_s, 7.0, 0.0, 7.0)}));
        }
    }
};

QTEST_GUILESS_MAIN(LeaveBatchTest)
#include "LeaveBatchTest.moc"
