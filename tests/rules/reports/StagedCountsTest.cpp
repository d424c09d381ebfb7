#include "rules/reports/StagingDesk.h"
#include "store/RunTimeError.h"
#include "support/Errors.h"

#include <QTest>

#include <random>
#include <tuple>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The rows that are staged for the reports of the write-offs.
class StagedCountsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void countsOfReasons();
    void aReasonInTwoPlacesCountsTwice();
    void anEmployeeWithTheReasonOutsideThePeriodIsDropped();
    void countsWithinRanges();
    void unselectedAndLongReasonsStayOut();
    void withNothingSelectedNothingIsStaged_data();
    void withNothingSelectedNothingIsStaged();
    void theThirtyFirstReasonHasNoEffect_data();
    void theThirtyFirstReasonHasNoEffect();
    void detailTellsNames();
    void detailWithinRanges();
    void noUnitIsInNoRange();
    void aReasonWithoutNameLeavesItsPlaceEmpty();
    void aBatchRowIsPrintedWhateverIsSelected();
    void timesBelowTheCountAreDropped();
    void anUnreadableCountLeavesWhatWasStaged_data();
    void anUnreadableCountLeavesWhatWasStaged();
    void theYearIsAddedUpFromTodaysJanuary();
    void countsEqualThoseOfTheStatements_data();
    void countsEqualThoseOfTheStatements();
};

void StagedCountsTest::countsOfReasons() {
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

void StagedCountsTest::aReasonInTwoPlacesCountsTwice() {
    Desk desk;
    desk.writeOff(u"00001", First, u"01", u"02", u"01", u"01");
    (void)desk.prepare(choiceOf(u"E01"));
    QCOMPARE(desk.committed(u"View01"_s),
             QStringList({count(u"00001", u"01", 3), count(u"00001", u"02", 1)}));
}

void StagedCountsTest::anEmployeeWithTheReasonOutsideThePeriodIsDropped() {
    Desk desk;
    desk.writeOff(u"00001", First.addDays(-1), u"01");
    desk.writeOff(u"00002", Last.addDays(1), u"01");
    desk.writeOff(u"00003", Last, u"01");
    (void)desk.prepare(choiceOf(u"E01"));
    QCOMPARE(desk.committed(u"View01"_s), QStringList(count(u"00003", u"01", 1)));
}

void StagedCountsTest::countsWithinRanges() {
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

void StagedCountsTest::unselectedAndLongReasonsStayOut() {
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

void StagedCountsTest::withNothingSelectedNothingIsStaged_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("table");
    for (const auto* code : {"E01", "E02", "E03", "E04"})
        QTest::newRow(code) << QString::fromLatin1(code)
                            << (qstrcmp(code, "E02") == 0 ? u"View03"_s : u"View01"_s);
}

void StagedCountsTest::withNothingSelectedNothingIsStaged() {
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

void StagedCountsTest::theThirtyFirstReasonHasNoEffect_data() {
    withNothingSelectedNothingIsStaged_data();
}

void StagedCountsTest::theThirtyFirstReasonHasNoEffect() {
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

void StagedCountsTest::detailTellsNames() {
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

void StagedCountsTest::detailWithinRanges() {
    Desk desk;
    for (const auto* EmpNo : {u"00001", u"00002", u"00003"})
        desk.writeOff(EmpNo, First, u"01");
    const auto detail = [](const QString& EmpNo) { return EmpNo + u"|2010-03-01|忘記刷卡|||"_s; };
    ReportChoice choice = choiceOf(u"E02");
    const auto staged = [&](const QStringList& combos) {
        for (qsizetype index = 0; index < combos.size(); ++index)
            choice.combos[index] = combos[index];
        (void)desk.prepare(choice);
        return desk.committed(u"View03"_s);
    };
    const QStringList all{detail(u"00001"_s), detail(u"00002"_s), detail(u"00003"_s)};
    QCOMPARE(staged({u"00001"_s, u"00003"_s, u"0100"_s, u"0200"_s}), all); // both ends belong to a range
    QCOMPARE(staged({u"00002"_s, u"ZZZZZZ"_s, u"0000"_s, u"ZZZZ"_s}), all.mid(1));
    QCOMPARE(staged({u"000000"_s, u"00002"_s, u"0000"_s, u"ZZZZ"_s}), all.first(2));
    QCOMPARE(staged({u"000000"_s, u"ZZZZZZ"_s, u"0101"_s, u"ZZZZ"_s}), all.mid(2));
    QCOMPARE(staged({u"000000"_s, u"ZZZZZZ"_s, u"0000"_s, u"0199"_s}), all.first(2));
    QCOMPARE(staged({u"00002"_s, u"ZZZZZZ"_s, u"0000"_s, u"0100"_s}), QStringList(all[1]));
    // Reversed ranges hold nobody.
    QCOMPARE(staged({u"00003"_s, u"00001"_s, u"0000"_s, u"ZZZZ"_s}), QStringList());
    QCOMPARE(staged({u"000000"_s, u"ZZZZZZ"_s, u"0200"_s, u"0100"_s}), QStringList());
}

void StagedCountsTest::noUnitIsInNoRange() {
    Desk desk;
    addEmployee(desk.database(), u"00005"_s, {{u"UnitNo", Value()}, {u"WorkNo", u"0001"}});
    desk.writeOff(u"00002", First, u"01");
    desk.writeOff(u"00005", First, u"01");
    for (const auto* low : {u"0000", u""}) {
        for (const auto& [code, table, row] : {std::tuple{u"E01"_s, u"View01"_s, count(u"00002", u"01", 1)},
                                               {u"E02"_s, u"View03"_s, u"00002|2010-03-01|忘記刷卡|||"_s}}) {
            ReportChoice choice = choiceOf(code);
            choice.combos[2] = QString::fromUtf16(low);
            (void)desk.prepare(choice);
            QCOMPARE(desk.committed(table), QStringList(row));
        }
    }
}

void StagedCountsTest::aReasonWithoutNameLeavesItsPlaceEmpty() {
    Desk desk;
    desk.database().execute(u"Update Canc01 Set CnlName = null Where CnlNo = '02'"_s);
    desk.writeOff(u"00001", First, u"02", u"01", u"99", u"02");
    desk.writeOff(u"00002", First, u"01", u"02", u"02");
    (void)desk.prepare(choiceOf(u"E02"));
    QCOMPARE(desk.committed(u"View03"_s), QStringList({u"00001|2010-03-01|null|忘記刷卡|99|null"_s,
                                                       u"00002|2010-03-01|忘記刷卡|null|null|"_s}));
    // The entries themselves keep their codes.
    QCOMPARE(rowsOfSelection(desk.database(), u"select EmpNo,CnlNo1,CnlNo2,CnlNo3,CnlNo4 from Canc02"_s),
             QStringList({u"00001|02|01|99|02"_s, u"00002|01|02|02|"_s}));
}

void StagedCountsTest::aBatchRowIsPrintedWhateverIsSelected() {
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

void StagedCountsTest::timesBelowTheCountAreDropped() {
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

void StagedCountsTest::anUnreadableCountLeavesWhatWasStaged_data() {
    QTest::addColumn<QString>("times");
    QTest::addColumn<int>("number");
    QTest::newRow("nothing") << QString() << error::Syntax;
    QTest::newRow("no number") << u"三"_s << error::UnknownName;
    QTest::newRow("an apostrophe") << u"1'"_s << error::Syntax;
    QTest::newRow("a second statement") << u"1; delete * from Canc02"_s << error::Syntax;
}

void StagedCountsTest::anUnreadableCountLeavesWhatWasStaged() {
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

void StagedCountsTest::theYearIsAddedUpFromTodaysJanuary() {
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

/// Stores at random, counted by a plain walk over the entries.
void StagedCountsTest::countsEqualThoseOfTheStatements_data() {
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 6; ++seed)
        QTest::addRow("store %u", seed) << seed;
}

void StagedCountsTest::countsEqualThoseOfTheStatements() {
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

QTEST_GUILESS_MAIN(StagedCountsTest)
#include "StagedCountsTest.moc"
