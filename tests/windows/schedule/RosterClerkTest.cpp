#include "app/Clerk.h"
#include "windows/schedule/Form2Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Monday(2001, 3, 5); ///< The first day of the rosters.
const QDate Wednesday = Monday.addDays(2);

/// What each employee has from Monday on, a character a day: the slot, "." a rest day, "-" no row.
using Days = QList<std::pair<QString, QString>>;
const Days Generated{{u"10001"_s, u"AAAAA--AAAAA--"_s},
                     {u"10002"_s, u"AAAAA--AAAAA--"_s},
                     {u"10003"_s, u"AAAAA..AAAAA.."_s},
                     {u"20001"_s, u"BBB-BBB-BBB-"_s},
                     {u"20002"_s, u"BBB.BBB.BBB."_s}};
const Days Adjusted{{u"10001"_s, u"AA.AA--AAAAA--"_s},
                    {u"10002"_s, u"AA.AA--AAAAA--"_s},
                    {u"10003"_s, u"AA.AA..AAAAA.."_s},
                    {u"20001"_s, u"BBB-BBB-BBB-"_s},
                    {u"20002"_s, u"BBB.BBB.BBB."_s}};

QString slotOf(QChar day) {
    return day == u'.' ? QString() : QString(day);
}

/// The rows as the roster's list shows them, by day and employee.
QStringList shownRowsOf(const Days& roster) {
    QStringList rows;
    for (int day = 0; day < 14; ++day) {
        for (const auto& [EmpNo, days] : roster) {
            if (day < days.size() && days.at(day) != u'-')
                rows << Monday.addDays(day).toString(u"yyyy/M/d"_s) + u'|' + EmpNo + u'|' +
                            slotOf(days.at(day));
        }
    }
    return rows;
}

/// The rows as the store has them, by employee and day.
QStringList storedRowsOf(const Days& roster) {
    QStringList rows;
    for (const auto& [EmpNo, days] : roster) {
        for (int day = 0; day < days.size(); ++day) {
            if (days.at(day) != u'-')
                rows << expectedRow(u"Rule03"_s, {{u"EmpNo", Value(EmpNo)},
                                                  {u"YMD", Monday.addDays(day)},
                                                  {u"TimeNo", Value(slotOf(days.at(day)))}});
        }
    }
    return rows;
}

/// The roster window over five people in two classes, and a clerk without a mouse.
class ClerkFixture : public Form2Fixture {
  public:
    ClerkFixture() {
        for (const QString& EmpNo : {u"10001"_s, u"10002"_s, u"10003"_s})
            addEmployee(database(), EmpNo, {{u"EmpName", u"日班"}, {u"ClsNo", u"D01"}});
        for (const QString& EmpNo : {u"20001"_s, u"20002"_s})
            addEmployee(database(), EmpNo, {{u"EmpName", u"輪班"}, {u"ClsNo", u"T01"}});
        addSlot(database(), u"A"_s, {{u"TimeName", u"日班"}});
        addSlot(database(), u"B"_s, {{u"TimeName", u"輪班"}});
        addClass(u"D01"_s, u"A"_s, 5, 2);
        addClass(u"T01"_s, u"B"_s, 3, 1);
        open();
        clerk_ = std::make_unique<Clerk>(mainWindow());
    }
    [[nodiscard]] Clerk& clerk() { return *clerk_; }
    [[nodiscard]] QTabWidget& tabs() const { return at<QTabWidget>(u"SSTab1"_s); }

  private:
    void addClass(const QString& ClsNo, const QString& TimeNo, int days, int rests) {
        insertRow(database(), u"Base05"_s,
                  {{u"ClsNo", Value(ClsNo)},
                   {u"TimeNo1", Value(TimeNo)},
                   {u"TimeDay1", days},
                   {u"TimeRest1", rests}});
    }

    std::unique_ptr<Clerk> clerk_;
};

} // namespace

/// A clerk's way from the days off to the first day read on the new roster, by keyboard alone.
class RosterClerkTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void fromDaysOffToTheFirstDay();

  private:
    static void markTwoDaysOff(ClerkFixture& fixture);
    static void generateTwoClasses(ClerkFixture& fixture);
    static void queryTheMonth(ClerkFixture& fixture);
    static void giveThreeARestDay(ClerkFixture& fixture);
    static void readTheDay(ClerkFixture& fixture);
};

void RosterClerkTest::markTwoDaysOff(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.reach(u"Days"_s));
    clerk.key(Qt::Key_Down);
    clerk.key(Qt::Key_Return);
    clerk.key(Qt::Key_Right);
    clerk.key(Qt::Key_Return);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList({u"2001-03-12"_s, u"2001-03-13"_s}));
    QVERIFY(fixture.isDayOff({2001, 3, 12}));
    QVERIFY(fixture.isDayOff({2001, 3, 13}));
}

void RosterClerkTest::generateTwoClasses(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.turnTo(fixture.tabs(), 1));
    QVERIFY(clerk.fill(u"Mk2(0)"_s, u"900305"_s));
    QVERIFY(clerk.fill(u"Mk2(1)"_s, u"900316"_s));
    for (const QString& ClsNo : {u"D01"_s, u"T01"_s}) {
        QVERIFY(clerk.fill(u"Combo2(2)"_s, ClsNo));
        QVERIFY(clerk.fill(u"Combo2(3)"_s, ClsNo));
        fixture.answers.expectMsgBox();
        QVERIFY(clerk.press(u"CmdCal"_s));
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.answers.seen().constLast().text, u"排班表已產生完成,請按<確定>繼續......."_s);
    }
    QCOMPARE(fixture.roster(), storedRowsOf(Generated));
}

void RosterClerkTest::queryTheMonth(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.fill(u"Mk2(2)"_s, u"900301"_s));
    QVERIFY(clerk.fill(u"Mk2(3)"_s, u"900331"_s));
    QVERIFY(clerk.press(u"CmdQuery"_s));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(), shownRowsOf(Generated));
    QCOMPARE(fixture.panel(1), u"資料錄:1/%1"_s.arg(shownRowsOf(Generated).size()));
}

void RosterClerkTest::giveThreeARestDay(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QVERIFY(clerk.turnTo(fixture.tabs(), 2));
    QVERIFY(clerk.fill(u"Mk2(4)"_s, u"900307"_s));
    QVERIFY(clerk.press(u"Command2"_s));
    QCOMPARE(fixture.list1(), QStringList({u"10001-日班-A"_s, u"10002-日班-A"_s, u"10003-日班-A"_s,
                                           u"20001-輪班-B"_s, u"20002-輪班-B"_s}));
    QVERIFY(clerk.reach(u"List1"_s));
    clerk.key(Qt::Key_Space); // selects the entry on which the keyboard stands
    clerk.key(Qt::Key_Return, 3);
    QCOMPARE(fixture.list2(), QStringList({u"10001-日班-A"_s, u"10002-日班-A"_s, u"10003-日班-A"_s}));
    QVERIFY(clerk.press(u"Command3"_s));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.roster(), storedRowsOf(Adjusted));
    QVERIFY(clerk.press(u"StbTool(8)"_s));
    QVERIFY(!moduleWindow(2));
}

void RosterClerkTest::readTheDay(ClerkFixture& fixture) {
    Clerk& clerk = fixture.clerk();
    QByteArray lines;
    for (const QByteArray& EmpNo : {QByteArrayLiteral("10001"), QByteArrayLiteral("20001")}) {
        for (const QTime& time : {QTime(7, 55), QTime(12, 5), QTime(12, 50), QTime(17, 3)})
            lines += punchLine(EmpNo, Wednesday, time);
    }
    const QString file = fixture.store.writePunchFile(u"20010307.txt"_s, lines);
    QVERIFY(clerk.press(u"Tb(3)"_s));
    QVERIFY(clerk.reach(u"CtrlCmd0(0)"_s));
    fixture.answers.expectFile(file).expectMsgBox();
    clerk.key(Qt::Key_Space);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"2001/03/07資料已轉入成功!!"_s);
    // Those at rest are not expected, whether they punched or not.
    QCOMPARE(rowsOfSelection(fixture.database(), u"select EmpNo,TimeNo,Time1,Time2,Time3,Time4,Expt from "
                                                 "Atte02 where UseDate = #2001/3/7# order by EmpNo"_s),
             QStringList({u"20001|B|07:55:00|12:05:00|12:50:00|17:03:00|False"_s,
                          u"20002|B|null|null|null|null|True"_s}));
    QCOMPARE(rowsOfSelection(fixture.database(), u"select count(*) as cnt from Atte01"_s),
             QStringList{u"8"_s});
}

void RosterClerkTest::fromDaysOffToTheFirstDay() {
    ClerkFixture fixture;
    for (const auto& step :
         {markTwoDaysOff, generateTwoClasses, queryTheMonth, giveThreeARestDay, readTheDay}) {
        step(fixture);
        if (QTest::currentTestFailed())
            return;
    }
}

int main(int argc, char** argv) {
    return runTests<RosterClerkTest>(argc, argv);
}

#include "RosterClerkTest.moc"
