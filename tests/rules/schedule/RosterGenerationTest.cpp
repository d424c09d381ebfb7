#include "rules/schedule/RosterDesk.h"

#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Start(2001, 3, 1);
const QString Done = u"tell 排班表已產生完成,請按<確定>繼續......."_s;

/// Five days of A with two rests, three of B with one: a rotation of eleven days.
const std::vector<ClassStep> FiveAndThree{{u"A", 5, 2}, {u"B", 3, 1}};

} // namespace

class RosterGenerationTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theRotationIsLaidDayByDay();
    void theLastRotationIsFinishedPastTheEnd();
    void rowsPastTheEndAreOverwritten();
    void theSecondClassOfARangeGetsNothing();
    void theLowestClassComesFirst();
    void aRestDayIsTheLastEmployeesAlone();
    void theOthersKeepTheirEarlierRowOnARestDay();
    void holidaysAreBlankedByTheSharedDatesForTheLastEmployee();
    void holidaysBetweenTheDatesOfTheRunAreNotBlanked();
    void aClassWithoutTheFlagKeepsItsHolidays();
    void aRestDayIsTheEmptyText();
    void aSlotThatDoesNotExistIsWritten();
    void startAfterEndWritesNothing();
    void startEqualToEndWritesAWholeRotation();
    void anInvalidDateIsTold_data();
    void anInvalidDateIsTold();
    void noEmployeeInTheRange();
    void onlyRestsBeforeAnyWorkDayWriteNothing();
    void onlyRestsGoToTheEmployeeOfARunBefore();
    void employeesWhoLeftAreRewrittenButNotAdded();
    void aSecondRunAddsNoRows();
    void stepsNeedNotBeFilledFromTheTop();
    void anEmptyTextIsAStepInUse();
    void negativeDaysCountAsNone();
    void aNullInAStepEndsTheRun();
    void aNullInALaterClassEndsTheRunToo();
    void aStepNotInUseKeepsWhatTheClassBeforeHeld();
    void anApostropheInASlotEndsTheRun();
    void anApostropheInACodeEndsTheRunAtItsEmployee();
    void anApostropheInABoundEndsTheRunBeforeItWrites();
    void classesThatDifferInCaseAreOne();
    void theWindowIsTalkedToInOrder();
    void theGlobalsStayAfterTheRun();
};

void RosterGenerationTest::theRotationIsLaidDayByDay() {
    RosterDesk desk;
    desk.addClass(u"001"_s, FiveAndThree);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, {2001, 3, 13}));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AAAAA  BBB AAAAA  BBB "_s));
    QCOMPARE(desk.rosterOf(u"E2"_s), days(Start, u"AAAAA--BBB-AAAAA--BBB-"_s));
}

void RosterGenerationTest::theLastRotationIsFinishedPastTheEnd() {
    RosterDesk desk;
    desk.addClass(u"001"_s, FiveAndThree);
    desk.addMember(u"E1"_s, u"001"_s);
    // The end is the first day of the second rotation, which is finished; one day less, and it never begins.
    desk.generate(RosterDesk::range(Start, Start.addDays(11)));
    QCOMPARE(desk.roster().size(), 22);
    desk.database().execute(u"delete * from Rule03"_s);
    desk.generate(RosterDesk::range(Start, Start.addDays(10)));
    QCOMPARE(desk.roster().size(), 11);
}

void RosterGenerationTest::rowsPastTheEndAreOverwritten() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 3, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    addRoster(desk.database(), u"E1"_s, Start.addDays(2), u"Z"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AAA"_s));
}

void RosterGenerationTest::theSecondClassOfARangeGetsNothing() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 2, 0}});
    desk.addClass(u"002"_s, {{u"B", 2, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"002"_s);
    desk.generate(RosterDesk::range(Start, Start.addDays(3)));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AAAA"_s));
    QCOMPARE(desk.rosterOf(u"E2"_s), QStringList());
    // Class by class they all get theirs.
    desk.generate(RosterDesk::range(Start, Start.addDays(3), u"002"_s, u"002"_s));
    QCOMPARE(desk.rosterOf(u"E2"_s), days(Start, u"BBBB"_s));
}

void RosterGenerationTest::theLowestClassComesFirst() {
    RosterDesk desk;
    desk.addClass(u"C"_s, {{u"3", 1, 0}});
    desk.addClass(u"a"_s, {{u"1", 1, 0}});
    desk.addClass(u"B"_s, {{u"2", 1, 0}});
    for (const auto& [EmpNo, ClsNo] : {std::pair{u"E1"_s, u"C"_s}, {u"E2"_s, u"a"_s}, {u"E3"_s, u"B"_s}})
        desk.addMember(EmpNo, ClsNo);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.roster(), QStringList{u"E2|2001-03-01|1"_s});
}

void RosterGenerationTest::aRestDayIsTheLastEmployeesAlone() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, 1}});
    for (const QString& EmpNo : {u"E3"_s, u"e1"_s, u"E2"_s})
        desk.addMember(EmpNo, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    // The last in the order of the keys, whatever the case.
    QCOMPARE(desk.roster(), QStringList({u"e1|2001-03-01|A"_s, u"E2|2001-03-01|A"_s, u"E3|2001-03-01|A"_s,
                                         u"E3|2001-03-02|"_s}));
}

void RosterGenerationTest::theOthersKeepTheirEarlierRowOnARestDay() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, 1}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"001"_s);
    for (const QString& EmpNo : {u"E1"_s, u"E2"_s})
        addRoster(desk.database(), EmpNo, Start.addDays(1), u"Z"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AZ"_s));
    QCOMPARE(desk.rosterOf(u"E2"_s), days(Start, u"A-"_s));
}

void RosterGenerationTest::holidaysAreBlankedByTheSharedDatesForTheLastEmployee() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 4, 0}}, true);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"001"_s);
    for (int day = 0; day < 4; ++day)
        desk.addDayOff(Start.addDays(day));
    desk.gDate1 = Start.addDays(1);
    desk.gDate2 = Start.addDays(2);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AAAA"_s));
    QCOMPARE(desk.rosterOf(u"E2"_s), days(Start, u"A--A"_s));
}

void RosterGenerationTest::holidaysBetweenTheDatesOfTheRunAreNotBlanked() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 4, 0}}, true);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addDayOff(Start.addDays(1));
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AAAA"_s));
}

void RosterGenerationTest::aClassWithoutTheFlagKeepsItsHolidays() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 2, 0}}, false);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addDayOff(Start);
    desk.gDate1 = desk.gDate2 = Start;
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AA"_s));
}

void RosterGenerationTest::aRestDayIsTheEmptyText() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, 1}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(rowsOfSelection(desk.database(), u"select EmpNo,YMD from Rule03 where TimeNo = ''"_s),
             QStringList{u"E1|2001-03-02"_s});
    QCOMPARE(rowsOfSelection(desk.database(), u"select EmpNo from Rule03 where isnull(TimeNo) = True"_s),
             QStringList());
}

void RosterGenerationTest::aSlotThatDoesNotExistIsWritten() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"Q", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    QCOMPARE(rowsOf(desk.database(), u"Base04"_s), QStringList());
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.roster(), QStringList{u"E1|2001-03-01|Q"_s});
}

void RosterGenerationTest::startAfterEndWritesNothing() {
    RosterDesk desk;
    desk.addClass(u"001"_s, FiveAndThree);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start.addDays(-1)));
    QCOMPARE(desk.roster(), QStringList());
    QCOMPARE(desk.host.calls, QStringList({u"hourglass"_s, u"normal pointer"_s, Done, u"refreshRoster"_s}));
}

void RosterGenerationTest::startEqualToEndWritesAWholeRotation() {
    RosterDesk desk;
    desk.addClass(u"001"_s, FiveAndThree);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AAAAA--BBB-"_s));
}

void RosterGenerationTest::anInvalidDateIsTold_data() {
    QTest::addColumn<QDate>("start");
    QTest::addColumn<QDate>("end");
    QTest::addRow("no start") << QDate() << Start;
    QTest::addRow("no end") << Start << QDate();
    QTest::addRow("neither") << QDate() << QDate();
}

void RosterGenerationTest::anInvalidDateIsTold() {
    QFETCH(const QDate, start);
    QFETCH(const QDate, end);
    RosterDesk desk;
    desk.addClass(u"001"_s, FiveAndThree);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.generate(RosterDesk::range(start, end));
    QCOMPARE(desk.roster(), QStringList());
    QCOMPARE(desk.host.calls, QStringList{u"tell 日期輸入錯誤,無法產生班別表,請重新輸入日期........"_s});
}

void RosterGenerationTest::noEmployeeInTheRange() {
    RosterDesk desk;
    desk.addClass(u"001"_s, FiveAndThree);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.roster(), QStringList());
    QCOMPARE(desk.host.calls, QStringList({u"hourglass"_s, u"normal pointer"_s, Done, u"refreshRoster"_s}));
}

void RosterGenerationTest::onlyRestsBeforeAnyWorkDayWriteNothing() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 0, 2}, {u"B", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"X1"_s, u"002"_s);
    desk.gPickEmpNo = u"X1"_s; // Of another class, as a lookup may have left it.
    desk.generate(RosterDesk::range(Start, Start, u"001"_s, u"001"_s));
    QCOMPARE(desk.roster(), QStringList{u"E1|2001-03-03|B"_s});
}

void RosterGenerationTest::onlyRestsGoToTheEmployeeOfARunBefore() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 0, 2}, {u"B", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.gPickEmpNo = u"E1"_s;
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"--B"_s));
}

void RosterGenerationTest::employeesWhoLeftAreRewrittenButNotAdded() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 2, 1}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"001"_s, {2001, 2, 28});
    addRoster(desk.database(), u"E2"_s, Start, u"Z"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"AA"_s));
    // The last employee, and so the one whose rest day it would be.
    QCOMPARE(desk.rosterOf(u"E2"_s), days(Start, u"A"_s));
}

void RosterGenerationTest::aSecondRunAddsNoRows() {
    RosterDesk desk;
    desk.addClass(u"001"_s, FiveAndThree);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    const QStringList first = desk.roster();
    desk.database().execute(u"update Rule03 set TimeNo = 'Z'"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.roster(), first);
}

void RosterGenerationTest::stepsNeedNotBeFilledFromTheTop() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{{}, 9, 9}, {u"B", 2, 1}, {{}, {}, {}}, {u"D", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"BB-D"_s));
}

void RosterGenerationTest::anEmptyTextIsAStepInUse() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"", 2, 0}, {u"B", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    // Worked days without a slot, which all of the class get.
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"--B"_s));
    QCOMPARE(desk.rosterOf(u"E2"_s), days(Start, u"--B"_s));
}

void RosterGenerationTest::negativeDaysCountAsNone() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", -3, -1}, {u"B", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.rosterOf(u"E1"_s), days(Start, u"B"_s));
}

void RosterGenerationTest::aNullInAStepEndsTheRun() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, {}}});
    desk.addMember(u"E1"_s, u"001"_s);
    QCOMPARE(errorOf([&] {
                 desk.generate(RosterDesk::range(Start, Start));
                 return 0;
             }),
             94);
    QCOMPARE(desk.roster(), QStringList());
    QCOMPARE(desk.host.calls, QStringList{u"hourglass"_s});
}

void RosterGenerationTest::aNullInALaterClassEndsTheRunToo() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, 0}});
    desk.addClass(u"002"_s, {{u"B", {}, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"002"_s);
    QCOMPARE(errorOf([&] {
                 desk.generate(RosterDesk::range(Start, Start));
                 return 0;
             }),
             94);
    // What the first class was given stays.
    QCOMPARE(desk.roster(), QStringList{u"E1|2001-03-01|A"_s});
    QCOMPARE(desk.host.pointer, Pointer::Hourglass);
}

void RosterGenerationTest::aStepNotInUseKeepsWhatTheClassBeforeHeld() {
    // Only the holiday pass of a later class can show it: the flag is kept where the class has no step at
    // all.
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 2, 0}}, true);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"002"_s);
    addRoster(desk.database(), u"E2"_s, Start, u"Z"_s);
    desk.addDayOff(Start);
    desk.gDate1 = desk.gDate2 = Start;
    desk.generate(RosterDesk::range(Start, Start));
    // The pass of the second class looks for the last employee, who is of the first: nothing changes there.
    QCOMPARE(desk.roster(), QStringList({u"E1|2001-03-01|"_s, u"E1|2001-03-02|A"_s, u"E2|2001-03-01|Z"_s}));
    QCOMPARE(desk.gPickClsNo, u"002"_s);
    QCOMPARE(desk.gPickEmpNo, u"E1"_s);
}

void RosterGenerationTest::anApostropheInASlotEndsTheRun() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, 0}, {u"'", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"001"_s);
    QVERIFY(errorOf([&] {
                desk.generate(RosterDesk::range(Start, Start));
                return 0;
            }) != 0);
    QCOMPARE(desk.roster(), QStringList({u"E1|2001-03-01|A"_s, u"E2|2001-03-01|A"_s}));
    QCOMPARE(desk.host.pointer, Pointer::Hourglass);
    QCOMPARE(desk.gPickEmpNo, u"E1"_s);
}

void RosterGenerationTest::anApostropheInACodeEndsTheRunAtItsEmployee() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 2, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2'"_s, u"001"_s);
    desk.addMember(u"E3"_s, u"001"_s);
    QVERIFY(errorOf([&] {
                desk.generate(RosterDesk::range(Start, Start));
                return 0;
            }) != 0);
    QCOMPARE(desk.roster(), QStringList{u"E1|2001-03-01|A"_s});
    QCOMPARE(desk.gPickEmpNo, u"E2'"_s);
}

void RosterGenerationTest::anApostropheInABoundEndsTheRunBeforeItWrites() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    addRoster(desk.database(), u"E1"_s, Start, u"Z"_s);
    RosterRange range = RosterDesk::range(Start, Start);
    // It would let all employees through.
    range.lastEmpNo = u"E1' or '1'='1"_s;
    QCOMPARE(errorOf([&] {
                 desk.generate(range);
                 return 0;
             }),
             error::Syntax);
    QCOMPARE(desk.roster(), QStringList{u"E1|2001-03-01|Z"_s});
    QCOMPARE(desk.host.calls, QStringList{u"hourglass"_s});
    QCOMPARE(desk.gPickClsNo, QString());
}

void RosterGenerationTest::classesThatDifferInCaseAreOne() {
    RosterDesk desk;
    desk.addClass(u"d01"_s, {{u"A", 1, 0}});
    desk.addMember(u"E1"_s, u"D01"_s);
    desk.addMember(u"E2"_s, u"d01"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.roster(), QStringList({u"E1|2001-03-01|A"_s, u"E2|2001-03-01|A"_s}));
}

void RosterGenerationTest::theWindowIsTalkedToInOrder() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 2, 1}}, true);
    desk.addMember(u"E1"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.host.calls, QStringList({u"hourglass"_s, u"normal pointer"_s, Done, u"refreshRoster"_s}));
    QCOMPARE(desk.host.days, std::vector<QDate>({Start.addDays(1), Start.addDays(2), Start.addDays(3)}));
    QCOMPARE(desk.host.insideStage, QStringList());
}

void RosterGenerationTest::theGlobalsStayAfterTheRun() {
    RosterDesk desk;
    desk.addClass(u"001"_s, {{u"A", 1, 0}});
    desk.addMember(u"E1"_s, u"001"_s);
    desk.addMember(u"E2"_s, u"001"_s);
    desk.generate(RosterDesk::range(Start, Start));
    QCOMPARE(desk.gPickClsNo, u"001"_s);
    QCOMPARE(desk.gPickEmpNo, u"E2"_s);
}

QTEST_GUILESS_MAIN(RosterGenerationTest)
#include "RosterGenerationTest.moc"
