#include "app/Clerk.h"
#include "windows/overtime/Form6Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A day with a roster on which one employee stayed from 17:32 to 20:41, and came through the main door.
class ClerkFixture : public Form6Fixture {
  public:
    ClerkFixture() {
        addSlot(database(), u"A"_s);
        addRoster(database(), u"10001"_s, March1, u"A"_s);
        showMainWindow();
        gAccount = u"tester"_s;
        clerk_ = std::make_unique<Clerk>(mainWindow());
    }
    [[nodiscard]] Clerk& clerk() { return *clerk_; }

  private:
    std::unique_ptr<Clerk> clerk_;
};

} // namespace

/// What a clerk does with overtime, by keyboard alone.
class OvertimeClerkTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void fromTheImportToTheTotal();

  private:
    static void importDay(ClerkFixture& it);
    static void enterRow(ClerkFixture& it);
    static void runBatch(ClerkFixture& it);
    static void lookAtOne(ClerkFixture& it);
};

void OvertimeClerkTest::importDay(ClerkFixture& it) {
    const QString file = it.store.writePunchFile(
        u"20100301.txt"_s,
        punchLine("10001", March1, QTime(7, 55)) + punchLine("10001", March1, QTime(12, 5)) +
            punchLine("10001", March1, QTime(12, 50)) + punchLine("10001", March1, QTime(17, 32)) +
            punchLine("10001", March1, QTime(20, 41)));
    OpenToolWindow(3);
    it.answers.expectFile(file).expectMsgBox();
    QVERIFY(it.clerk().press(u"CtrlCmd0(0)"_s));
    QCOMPARE(it.answers.trouble(), QString());
    auto& tabs = control<QTabWidget>(*moduleWindow(3), u"SSTab1"_s);
    QVERIFY(it.clerk().turnTo(tabs, 2));
    QVERIFY(it.clerk().press(u"CmdCtrl(2)"_s));
    QVERIFY(it.isOpen());
}

void OvertimeClerkTest::enterRow(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.press(entry::Add));
    QCOMPARE(clerk.focused(), u"Text1(0)"_s);
    clerk.write(u"10001"_s);
    clerk.key(Qt::Key_Return);
    clerk.write(u"990301"_s);
    clerk.key(Qt::Key_Return);
    QCOMPARE(it.punches(), u"07:55|12:05|12:50|17:32|20:41"_s + QString(7, u'|'));
    // The times as they are read there, Enter leading from box to box and on to the saving.
    clerk.key(Qt::Key_Return);
    QCOMPARE(clerk.focused(), u"overTime(0)"_s);
    clerk.write(it.at<TDBTime>(u"Time1(3)"_s).time().toString(u"hhmm"_s));
    clerk.key(Qt::Key_Return);
    clerk.write(it.at<TDBTime>(u"Time1(4)"_s).time().toString(u"hhmm"_s));
    clerk.key(Qt::Key_Return);
    QCOMPARE(clerk.focused(), u"Text1(4)"_s);
    clerk.key(Qt::Key_Return);
    clerk.write(u"月結"_s);
    clerk.key(Qt::Key_Return);
    QCOMPARE(clerk.focused(), u"Check1(0)"_s);
    clerk.key(Qt::Key_Space);
    clerk.key(Qt::Key_Return, 2);
    QCOMPARE(clerk.focused(), entry::Save);
    clerk.key(Qt::Key_Return);
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row({{u"EmpNo", u"10001"},
                                                           {u"OverDate", March1},
                                                           {u"BegTime", QTime(17, 32)},
                                                           {u"EndTime", QTime(20, 41)},
                                                           {u"OverHours", 3},
                                                           {u"Memo", u"月結"},
                                                           {u"Rest", true},
                                                           {u"Account", u"tester"}})});
}

void OvertimeClerkTest::runBatch(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.turnTo(it.tabs(), 1));
    QVERIFY(clerk.press(u"CmdBat(0)"_s));
    QCOMPARE(clerk.focused(), u"List1"_s);
    clerk.key(Qt::Key_Home);
    clerk.key(Qt::Key_Return);
    QCOMPARE(it.entriesOf(u"List2"_s), QStringList{u"10001  王小明"_s});
    QVERIFY(clerk.fill(u"TDBMask1(0)"_s, u"990302"_s));
    QVERIFY(clerk.fill(u"overTime(2)"_s, u"2200"_s));
    QVERIFY(clerk.fill(u"overTime(3)"_s, u"0130"_s));
    clerk.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text8(1)"_s), u"3"_s);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    QVERIFY(clerk.press(u"CmdBat(1)"_s));
    QCOMPARE(it.overtime().constLast(), Form6Fixture::row({{u"EmpNo", u"10001"},
                                                           {u"OverDate", QDate(2010, 3, 2)},
                                                           {u"BegTime", QTime(22, 0)},
                                                           {u"EndTime", QTime(1, 30)},
                                                           {u"OverHours", 3},
                                                           {u"Account", u"tester"},
                                                           {u"TransDate", Form6Fixture::Now}}));
}

void OvertimeClerkTest::lookAtOne(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.turnTo(it.tabs(), 2));
    QVERIFY(clerk.fill(u"Text5"_s, u"10001"_s));
    clerk.key(Qt::Key_Return);
    QCOMPARE(it.shown(u"TDBG1(0)"_s),
             QStringList({u"-|-|10001|王小明|2010/3/2|22:00|01:30|3|tester|2010/3/9 10:11"_s,
                          u"v|-|10001|王小明|2010/3/1|17:32|20:41|3|tester|"_s}));
    QVERIFY(clerk.turnTo(it.tabs(), 3));
    QVERIFY(clerk.fill(u"Text4"_s, u"10001"_s));
    clerk.key(Qt::Key_Return);
    clerk.write(u"990301"_s);
    QVERIFY(clerk.fill(u"TDBMask1(3)"_s, u"990302"_s));
    QCOMPARE(it.shown(u"TDBG1(1)"_s), QStringList{u"10001|王小明|6"_s});
    QVERIFY(clerk.turnTo(it.tabs(), 0));
    QVERIFY(clerk.press(entry::Back));
    QVERIFY(!it.isOpen() && moduleWindow(3));
}

void OvertimeClerkTest::fromTheImportToTheTotal() {
    ClerkFixture it;
    for (const auto& step : {importDay, enterRow, runBatch, lookAtOne}) {
        step(it);
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(it.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<OvertimeClerkTest>(argc, argv);
}

#include "OvertimeClerkTest.moc"
