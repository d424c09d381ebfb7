#include "rules/reports/Staging.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <QFile>
#include <QTest>
#include <QtEndian>

#include <random>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate First(2010, 3, 1);
const QDate Last(2010, 3, 31);
const QDate Today(2010, 6, 15);

/// Reasons 01 to 03 and one of three characters; employees 00001 and 00002 in unit 0100, 00003 in 0200, and
/// 00004, who has left.
class Desk {
  public:
    Desk() {
        for (const auto& [code, name] :
             {std::pair{u"01", u"忘記刷卡"}, {u"02", u"卡片遺失"}, {u"03", u"卡鐘故障"}, {u"123", u"三碼"}})
            insertRow(database(), u"Canc01"_s, {{u"CnlNo", code}, {u"CnlName", name}});
        addEmployee(database(), u"00001"_s, {{u"UnitNo", u"0100"}, {u"WorkNo", u"0001"}});
        addEmployee(database(), u"00002"_s, {{u"UnitNo", u"0100"}, {u"WorkNo", u"0002"}});
        addEmployee(database(), u"00003"_s, {{u"UnitNo", u"0200"}, {u"WorkNo", u"0001"}});
        addEmployee(database(), u"00004"_s,
                    {{u"UnitNo", u"0100"}, {u"WorkNo", u"0001"}, {u"LeaveDate", QDate(2010, 5, 1)}});
    }

    Database& database() { return store_.database(); }
    [[nodiscard]] const TestStore& store() const { return store_; }

    void writeOff(const char16_t* EmpNo, QDate day, const char16_t* first, const char16_t* second = u"",
                  const char16_t* third = u"", const char16_t* fourth = u"") {
        addWriteOff(database(), QString::fromUtf16(EmpNo), day, QString::fromUtf16(first),
                    QString::fromUtf16(second), QString::fromUtf16(third), QString::fromUtf16(fourth));
    }

    std::vector<NamedValue> prepare(const ReportChoice& choice) {
        return prepareReport(database(), choice, Today);
    }

    /// The rows as another connection reads them.
    [[nodiscard]] QStringList committed(const QString& table) const {
        const std::unique_ptr<Database> other = store_.connect();
        return rowsOf(*other, table);
    }

  private:
    TestStore store_;
};

ReportChoice choiceOf(QStringView code) {
    const Report& report = *findReport(code);
    ReportChoice choice = defaultChoice(report.tab, report.option);
    choice.dates = {First, Last};
    for (const QString& reason : {u"01 忘記刷卡"_s, u"02 卡片遺失"_s, u"03 卡鐘故障"_s, u"123 三碼"_s})
        choice.list.push_back({reason, true});
    return choice;
}

QString count(const char16_t* EmpNo, const char16_t* CnlNo, int times, int upTimes = 0) {
    return u"%1|2010-03-01|2010-03-31|%2|%3|%4"_s.arg(QString::fromUtf16(EmpNo), QString::fromUtf16(CnlNo))
        .arg(times)
        .arg(upTimes);
}

QStringList texts(const std::vector<NamedValue>& values) {
    QStringList all;
    for (const NamedValue& value : values)
        all += u"%1 %2"_s.arg(value.index).arg(value.text);
    return all;
}

void select(ReportChoice& choice, const QList<int>& positions) {
    for (std::size_t index = 0; index < choice.list.size(); ++index)
        choice.list[index].selected = positions.contains(static_cast<int>(index));
}

} // namespace

class StagingTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void headsAreCounted();
    void headsAreLimitedByTheUnitsOfTheWriteOffs();
    void anEmployeesMinutesAreSummed();
    void sumsOverNoRowsAreEmpty();
    void sumsNeedBothDates();
    void countsOfReasons();
    void aReasonInTwoPlacesCountsTwice();
    void anEmployeeWithTheReasonOutsideThePeriodIsDropped();
    void countsWithinRanges();
    void unselectedAndLongReasonsStayOut();
    void withNothingSelectedNothingIsStaged_data();
    void withNothingSelectedNothingIsStaged();
    void theThirtyFirstReasonHasNoEffect_data();
    void theThirtyFirstReasonHasNoEffect();
    void anEntryBehindTheTableIsAnErrorBeforeAnythingIsDone_data();
    void anEntryBehindTheTableIsAnErrorBeforeAnythingIsDone();
    void detailTellsNames();
    void aBatchRowIsPrintedWhateverIsSelected();
    void timesBelowTheCountAreDropped();
    void anUnreadableCountLeavesWhatWasStaged_data();
    void anUnreadableCountLeavesWhatWasStaged();
    void theYearIsAddedUpFromTodaysJanuary();
    void emptyDates_data();
    void emptyDates();
    void anApostropheLeavesWhatWasStaged();
    void otherReportsNeedNothing();
    void stagedInOneStage_data();
    void stagedInOneStage();
    void countsEqualThoseOfTheStatements_data();
    void countsEqualThoseOfTheStatements();
};

void StagingTest::headsAreCounted() {
    Desk desk;
    addEmployee(desk.database(), u"00005"_s, {{u"UnitNo", Value()}, {u"WorkNo", u"0001"}});
    // Neither who has left nor who has no unit; the range of employees plays no part.
    ReportChoice choice = choiceOf(u"D05");
    choice.combos[0] = choice.combos[1] = u"00001"_s;
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='3'"_s));
    choice.combos[2] = choice.combos[3] = u"0100"_s;
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='2'"_s));
    choice.combos[4] = u"0002"_s;
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='1'"_s));
    choice.combos[5] = u"0001"_s;
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='0'"_s));
}

void StagingTest::headsAreLimitedByTheUnitsOfTheWriteOffs() {
    Desk desk;
    ReportChoice choice = choiceOf(u"D05");
    choice.writeOffUnits = {u"0200"_s, u"ZZZZ"_s};
    QCOMPARE(texts(desk.prepare(choice)), QStringList(u"3 Att='1'"_s));
    choice.writeOffUnits = {u"0'00"_s, u"ZZZZ"_s};
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
}

void StagingTest::anEmployeesMinutesAreSummed() {
    Desk desk;
    const auto day = [&](const char16_t* EmpNo, QDate date, int minutes) {
        insertRow(desk.database(), u"Atte02"_s,
                  {{u"EmpNo", QString::fromUtf16(EmpNo)},
                   {u"UseDate", date},
                   {u"TimeNo", u"A"},
                   {u"Cushion1", minutes},
                   {u"Cushion3", 1},
                   {u"Delay1", minutes * 10},
                   {u"Delay3", 2},
                   {u"Earlier2", minutes * 100},
                   {u"Earlier4", 3},
                   {u"Absent", 1}});
    };
    day(u"00004", First, 1); // who has left counts as well
    day(u"00004", Last, 2);
    day(u"00004", Last.addDays(1), 50);
    day(u"00001", First, 50);
    ReportChoice choice = choiceOf(u"D06");
    choice.combos[0] = u"00004"_s;
    QCOMPARE(texts(desk.prepare(choice)),
             QStringList({u"4 Cushion='5'"_s, u"5 Delay='34'"_s, u"6 Earlier='306'"_s, u"7 Absent='2'"_s}));
    // A null in one of two columns leaves its row out of that sum.
    desk.database().execute(u"Update Atte02 Set Delay3 = null Where UseDate = #2010/3/1#"_s);
    QCOMPARE(texts(desk.prepare(choice)),
             QStringList({u"4 Cushion='5'"_s, u"5 Delay='22'"_s, u"6 Earlier='306'"_s, u"7 Absent='2'"_s}));
}

void StagingTest::sumsOverNoRowsAreEmpty() {
    Desk desk;
    QCOMPARE(texts(desk.prepare(choiceOf(u"D06"))),
             QStringList({u"4 Cushion=''"_s, u"5 Delay=''"_s, u"6 Earlier=''"_s, u"7 Absent=''"_s}));
}

void StagingTest::sumsNeedBothDates() {
    Desk desk;
    for (const std::size_t index : {0U, 1U}) {
        ReportChoice choice = choiceOf(u"D06");
        choice.dates.at(index) = QDate();
        QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
    }
    ReportChoice choice = choiceOf(u"D06");
    choice.combos[0] = u"' or '1' = '1"_s;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
}

void StagingTest::countsOfReasons() {
    Desk desk;
    insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"rest"}, {u"CnlTimes", 9}});
    desk.writeOff(u"00002", First, u"01", u"", u"02");
    desk.writeOff(u"00001", First, u"01");
    desk.writeOff(u"00001", Last, u"", u"", u"", u"01");
    desk.writeOff(u"00004", First, u"01"); // has left
    desk.writeOff(u"99999", First, u"01"); // of nobody
    QVERIFY(desk.prepare(choiceOf(u"E01")).empty());
    const QStringList expected{count(u"00001", u"01", 2), count(u"00002", u"01", 1),
                               count(u"00002", u"02", 1)};
    QCOMPARE(desk.committed(u"View01"_s), expected);
    // A print again begins anew.
    (void)desk.prepare(choiceOf(u"E01"));
    QCOMPARE(desk.committed(u"View01"_s), expected);
}

void StagingTest::aReasonInTwoPlacesCountsTwice() {
    Desk desk;
    desk.writeOff(u"00001", First, u"01", u"02", u"01", u"01");
    (void)desk.prepare(choiceOf(u"E01"));
    QCOMPARE(desk.committed(u"View01"_s),
             QStringList({count(u"00001", u"01", 3), count(u"00001", u"02", 1)}));
}

void StagingTest::anEmployeeWithTheReasonOutsideThePeriodIsDropped() {
    Desk desk;
    desk.writeOff(u"00001", First.addDays(-1), u"01");
    desk.writeOff(u"00002", Last.addDays(1), u"01");
    desk.writeOff(u"00003", Last, u"01");
    (void)desk.prepare(choiceOf(u"E01"));
    QCOMPARE(desk.committed(u"View01"_s), QStringList(count(u"00003", u"01", 1)));
}

void StagingTest::countsWithinRanges() {
    Desk desk;
    for (const auto* EmpNo : {u"00001", u"00002", u"00003"})
        desk.writeOff(EmpNo, First, u"01");
    ReportChoice choice = choiceOf(u"E01");
    choice.combos[0] = u"00002"_s;
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(u"View01"_s),
             QStringList({count(u"00002", u"01", 1), count(u"00003", u"01", 1)}));
    choice.combos[3] = u"0100"_s;
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(u"View01"_s), QStringList(count(u"00002", u"01", 1)));
    choice.combos[1] = u"00001"_s; // reversed
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(u"View01"_s), QStringList());
}

void StagingTest::unselectedAndLongReasonsStayOut() {
    Desk desk;
    desk.writeOff(u"00001", First, u"01", u"02", u"03", u"123");
    insertRow(desk.database(), u"Canc01"_s, {{u"CnlNo", u"1"}, {u"CnlName", u"一碼"}});
    desk.writeOff(u"00002", First, u"1");
    ReportChoice choice = choiceOf(u"E01");
    // "12" and "1 " are compared, which no reason has.
    choice.list.push_back({u"1 一碼"_s, true});
    select(choice, {1, 3, 4});
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(u"View01"_s), QStringList(count(u"00001", u"02", 1)));
}

void StagingTest::withNothingSelectedNothingIsStaged_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("table");
    for (const auto* code : {"E01", "E02", "E03", "E04"})
        QTest::newRow(code) << QString::fromLatin1(code)
                            << (qstrcmp(code, "E02") == 0 ? u"View03"_s : u"View01"_s);
}

void StagingTest::withNothingSelectedNothingIsStaged() {
    QFETCH(QString, code);
    QFETCH(QString, table);
    Desk desk;
    insertRow(desk.database(), table, {{u"EmpNo", u"rest"}});
    // The empty places of a batch are no reason either.
    desk.writeOff(u"00001", First, u"01");
    ReportChoice choice = choiceOf(code);
    select(choice, {});
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(table), QStringList());
    choice.list.clear();
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(table), QStringList());
}

void StagingTest::theThirtyFirstReasonHasNoEffect_data() {
    withNothingSelectedNothingIsStaged_data();
}

void StagingTest::theThirtyFirstReasonHasNoEffect() {
    QFETCH(QString, code);
    QFETCH(QString, table);
    Desk desk;
    desk.writeOff(u"00001", First, u"01");
    ReportChoice choice = choiceOf(code);
    choice.list.assign(31, {u"02 卡片遺失"_s, false});
    choice.list[30] = {u"01 忘記刷卡"_s, true};
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(table), QStringList());
    // The thirtieth has.
    std::swap(choice.list[29], choice.list[30]);
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(table).size(), 1);
}

void StagingTest::anEntryBehindTheTableIsAnErrorBeforeAnythingIsDone_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("entries");
    for (const auto* code : {"E01", "E02", "E03", "E04"})
        QTest::newRow(code) << QString::fromLatin1(code) << 32;
    for (const auto* code : {"D05", "D06"})
        QTest::newRow(code) << QString::fromLatin1(code) << 52;
}

void StagingTest::anEntryBehindTheTableIsAnErrorBeforeAnythingIsDone() {
    QFETCH(QString, code);
    QFETCH(int, entries);
    Desk desk;
    insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"rest"}});
    insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"rest"}});
    ReportChoice choice = choiceOf(code);
    choice.list.assign(static_cast<std::size_t>(entries), {u"01 忘記刷卡"_s, false});
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), 0);
    insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"later"}});
    insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"later"}});
    const QStringList before = desk.committed(u"View01"_s) + desk.committed(u"View03"_s);
    choice.list.back().selected = true;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::SubscriptOutOfRange);
    QCOMPARE(desk.committed(u"View01"_s) + desk.committed(u"View03"_s), before);
}

void StagingTest::detailTellsNames() {
    Desk desk;
    insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"rest"}});
    const auto entry = [&](const char16_t* EmpNo, QDate day, const Value& first, const Value& second) {
        insertRow(desk.database(), u"Canc02"_s,
                  {{u"EmpNo", QString::fromUtf16(EmpNo)},
                   {u"CnlDate", day},
                   {u"CnlNo1", first},
                   {u"CnlNo2", second}});
    };
    entry(u"00001", First, u"01", u"99"); // a code that no reason has stays a code
    entry(u"00001", Last, Value(), u"02");
    entry(u"00002", First, Value(), u"03"); // not selected
    entry(u"00002", Last, Value(), Value());
    entry(u"00003", Last.addDays(1), u"01", Value());
    entry(u"00004", First, u"01", Value()); // has left
    ReportChoice choice = choiceOf(u"E02");
    select(choice, {0, 1});
    QVERIFY(desk.prepare(choice).empty());
    QCOMPARE(desk.committed(u"View03"_s), QStringList({u"00001|2010-03-01|忘記刷卡|99|null|null"_s,
                                                       u"00001|2010-03-31|null|卡片遺失|null|null"_s}));
}

void StagingTest::aBatchRowIsPrintedWhateverIsSelected() {
    Desk desk;
    desk.writeOff(u"00001", First, u"03");                      // empty texts elsewhere
    desk.writeOff(u"00002", First, u"03", u"03", u"03", u"03"); // no place is empty
    desk.writeOff(u"00003", First, u"01", u"01", u"01", u"02");
    ReportChoice choice = choiceOf(u"E02");
    select(choice, {0});
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(u"View03"_s),
             QStringList({u"00001|2010-03-01|卡鐘故障|||"_s,
                          u"00003|2010-03-01|忘記刷卡|忘記刷卡|忘記刷卡|卡片遺失"_s}));
    // With thirty selected there is no empty text left to compare.
    choice.list.assign(30, {u"01 忘記刷卡"_s, true});
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(u"View03"_s),
             QStringList(u"00003|2010-03-01|忘記刷卡|忘記刷卡|忘記刷卡|卡片遺失"_s));
}

void StagingTest::timesBelowTheCountAreDropped() {
    Desk desk;
    desk.writeOff(u"00001", First, u"01", u"01");
    desk.writeOff(u"00001", Last, u"01");
    desk.writeOff(u"00002", First, u"01", u"02");
    desk.writeOff(u"00003", First.addDays(-1), u"01");
    ReportChoice choice = choiceOf(u"E03");
    const auto staged = [&](const QString& times) {
        choice.combos[4] = times;
        (void)desk.prepare(choice);
        return desk.committed(u"View01"_s);
    };
    QCOMPARE(staged(u"1"_s),
             QStringList({count(u"00001", u"01", 3), count(u"00002", u"01", 1), count(u"00002", u"02", 1)}));
    QCOMPARE(staged(u"3"_s), QStringList(count(u"00001", u"01", 3)));
    QCOMPARE(staged(u"4"_s), QStringList());
    QCOMPARE(staged(u"0"_s).size(), 4);
    // The text is joined as it stands.
    QCOMPARE(staged(u"2 or EmpNo = '00001'"_s), QStringList());
}

void StagingTest::anUnreadableCountLeavesWhatWasStaged_data() {
    QTest::addColumn<QString>("times");
    QTest::addColumn<int>("number");
    QTest::newRow("nothing") << QString() << error::Syntax;
    QTest::newRow("no number") << u"三"_s << error::UnknownName;
    QTest::newRow("an apostrophe") << u"1'"_s << error::Syntax;
    QTest::newRow("a second statement") << u"1; delete * from Canc02"_s << error::Syntax;
}

void StagingTest::anUnreadableCountLeavesWhatWasStaged() {
    QFETCH(QString, times);
    QFETCH(int, number);
    Desk desk;
    desk.writeOff(u"00001", First, u"01");
    desk.writeOff(u"00002", First.addDays(-1), u"01");
    ReportChoice choice = choiceOf(u"E03");
    choice.combos[4] = times;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), number);
    QCOMPARE(desk.committed(u"View01"_s),
             QStringList({count(u"00001", u"01", 1), count(u"00002", u"01", 0)}));
}

void StagingTest::theYearIsAddedUpFromTodaysJanuary() {
    Desk desk;
    desk.writeOff(u"00001", First, u"01", u"01");
    desk.writeOff(u"00001", QDate(2010, 1, 1), u"01");
    desk.writeOff(u"00001", QDate(2009, 12, 31), u"01");
    desk.writeOff(u"00001", Last.addDays(1), u"01");
    desk.writeOff(u"00002", QDate(2010, 2, 1), u"02"); // only before the period
    desk.writeOff(u"00003", QDate(2009, 3, 1), u"02"); // only last year
    (void)desk.prepare(choiceOf(u"E04"));
    QCOMPARE(desk.committed(u"View01"_s),
             QStringList({count(u"00001", u"01", 2, 3), count(u"00002", u"02", 0, 1)}));
    // Asked for last year, it adds up from this year's January: nothing.
    ReportChoice choice = choiceOf(u"E04");
    choice.dates = {QDate(2009, 3, 1), QDate(2009, 12, 31)};
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(u"View01"_s),
             QStringList({u"00001|2009-03-01|2009-12-31|01|1|0"_s, u"00003|2009-03-01|2009-12-31|02|1|0"_s}));
}

void StagingTest::emptyDates_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("found"); // a reason and an employee
    QTest::addColumn<int>("number");
    for (const auto* code : {"E01", "E03", "E04"}) {
        QTest::addRow("%s, with an employee", code) << QString::fromLatin1(code) << true << error::Syntax;
        QTest::addRow("%s, with none", code) << QString::fromLatin1(code) << false << 0;
    }
    QTest::newRow("E02, with an employee") << u"E02"_s << true << error::Syntax;
    QTest::newRow("E02, with none") << u"E02"_s << false << error::Syntax;
}

void StagingTest::emptyDates() {
    QFETCH(QString, code);
    QFETCH(bool, found);
    QFETCH(int, number);
    for (const std::size_t index : {0U, 1U}) {
        Desk desk;
        insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"rest"}});
        insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"rest"}});
        if (found)
            desk.writeOff(u"00001", First, u"01");
        ReportChoice choice = choiceOf(code);
        choice.dates.at(index) = QDate();
        QCOMPARE(errorOf([&] { return desk.prepare(choice); }), number);
        // What was there is gone: the table is emptied first.
        QCOMPARE(desk.committed(code == u"E02"_s ? u"View03"_s : u"View01"_s), QStringList());
    }
}

void StagingTest::anApostropheLeavesWhatWasStaged() {
    Desk desk;
    desk.writeOff(u"00001", First, u"01");
    desk.writeOff(u"00002", First, u"01");
    // A code of a row breaks its statement like a typed one, with those before it staged.
    addEmployee(desk.database(), u"00001'x"_s, {{u"UnitNo", u"0100"}});
    insertRow(desk.database(), u"Canc02"_s,
              {{u"EmpNo", u"00001'x"}, {u"CnlDate", First}, {u"CnlNo1", u"01"}});
    QCOMPARE(errorOf([&] { return desk.prepare(choiceOf(u"E01")); }), error::Syntax);
    QCOMPARE(desk.committed(u"View01"_s), QStringList(count(u"00001", u"01", 1)));
    ReportChoice choice = choiceOf(u"E01");
    choice.combos[1] = u"z' or '1"_s;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
    QCOMPARE(desk.committed(u"View01"_s), QStringList());
    choice = choiceOf(u"E02");
    choice.list[0].text = u"'1 事由"_s;
    QCOMPARE(errorOf([&] { return desk.prepare(choice); }), error::Syntax);
}

void StagingTest::otherReportsNeedNothing() {
    Desk desk;
    insertRow(desk.database(), u"View01"_s, {{u"EmpNo", u"rest"}});
    insertRow(desk.database(), u"View03"_s, {{u"EmpNo", u"rest"}});
    const std::int64_t before = desk.database().statementCount();
    for (const Report& report : reports())
        if (report.preparation == Preparation::None)
            QVERIFY(desk.prepare(choiceOf(report.code)).empty());
    QCOMPARE(desk.database().statementCount(), before);
    QCOMPARE(desk.committed(u"View01"_s).size() + desk.committed(u"View03"_s).size(), 2);
}

void StagingTest::stagedInOneStage_data() {
    QTest::addColumn<QString>("code");
    for (const auto* code : {"E01", "E02", "E03", "E04"})
        QTest::newRow(code) << QString::fromLatin1(code);
}

/// The store's file counts its commits: a print is one.
void StagingTest::stagedInOneStage() {
    QFETCH(QString, code);
    Desk desk;
    desk.writeOff(u"00001", First, u"01");
    const auto commits = [&] {
        QFile file(desk.store().path());
        quint32 counter = 0;
        if (file.open(QIODevice::ReadOnly) && file.seek(24))
            counter = qFromBigEndian<quint32>(file.read(4).constData());
        return counter;
    };
    const quint32 before = commits();
    (void)desk.prepare(choiceOf(code));
    QCOMPARE(commits(), before + 1);
    QCOMPARE(desk.committed(code == u"E02"_s ? u"View03"_s : u"View01"_s).size(), 1);
    QVERIFY(!desk.database().inStage());
}

void StagingTest::countsEqualThoseOfTheStatements_data() {
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 6; ++seed)
        QTest::addRow("store %u", seed) << seed;
}

/// Stores at random, counted by a plain walk over the entries.
void StagingTest::countsEqualThoseOfTheStatements() {
    QFETCH(unsigned, seed);
    std::mt19937 random(seed);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    Desk desk;
    struct Entry {
        QString EmpNo;
        QDate day;
        QStringList reasons;
    };
    std::vector<Entry> entries;
    for (int number = 1; number <= 6; ++number)
        for (int day = 0; day < 8; ++day) {
            Entry entry{u"0000%1"_s.arg(number), QDate(2009, 12, 25).addDays(day * 15 + below(15)), {}};
            for (int place = 0; place < 4; ++place)
                entry.reasons += below(2) == 0 ? QString() : u"0%1"_s.arg(1 + below(4));
            addWriteOff(desk.database(), entry.EmpNo, entry.day, entry.reasons[0], entry.reasons[1],
                        entry.reasons[2], entry.reasons[3]);
            entries.push_back(entry);
        }
    QStringList expected;
    for (const auto* reason : {u"01", u"03"})
        for (const auto* EmpNo : {u"00001", u"00002", u"00003"}) {
            int times = 0;
            int upTimes = 0;
            for (const Entry& entry : entries) {
                const int places = static_cast<int>(entry.reasons.count(QString::fromUtf16(reason)));
                if (entry.EmpNo != QString::fromUtf16(EmpNo) || entry.day > Last)
                    continue;
                times += entry.day >= First ? places : 0;
                upTimes += entry.day >= QDate(2010, 1, 1) ? places : 0;
            }
            if (times > 0 || upTimes > 0)
                expected += count(EmpNo, reason, times, upTimes);
        }
    ReportChoice choice = choiceOf(u"E04");
    select(choice, {0, 2});
    (void)desk.prepare(choice);
    QCOMPARE(desk.committed(u"View01"_s), expected);
}

QTEST_GUILESS_MAIN(StagingTest)
#include "StagingTest.moc"
