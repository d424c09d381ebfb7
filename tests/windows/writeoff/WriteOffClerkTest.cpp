#include "app/Clerk.h"
#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The attendance window open, after a day on which one of two people did not swipe in the morning, and a
/// clerk without a mouse.
class ClerkFixture : public Form5Fixture {
  public:
    ClerkFixture() {
        addPeople();
        addSlot(database(), u"A"_s);
        for (const QString& EmpNo : {u"10001"_s, u"10002"_s})
            addRoster(database(), EmpNo, Day, u"A"_s);
        openModule(3);
        gAccount = u"clerk"_s;
        clerk_ = std::make_unique<Clerk>(mainWindow());
    }
    [[nodiscard]] Clerk& clerk() { return *clerk_; }
    [[nodiscard]] static QTabWidget& tabsOf(int module) {
        return control<QTabWidget>(*moduleWindow(module), u"SSTab1"_s);
    }
    /// Day, code and the four swipes of the exceptions.
    [[nodiscard]] QStringList exceptions() {
        return rowsOfSelection(database(), u"select EmpNo,Time1,Time2,Time3,Time4 from Atte03"_s);
    }
    [[nodiscard]] QStringList results() {
        return rowsOfSelection(database(), u"select EmpNo,FC1,FC2,FC3,FC4,F1,F2,F3,F4,Expt from Atte02"_s);
    }

  private:
    std::unique_ptr<Clerk> clerk_;
};

} // namespace

/// A clerk's way from an exception to the recalculated day without it, by keyboard alone.
class WriteOffClerkTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anExceptionIsAnsweredByABatchAndCounted();
    void anExceptionIsAnsweredByAnEntry();

  private:
    static void readTheDay(ClerkFixture& it);
    static void writeOffByBatch(ClerkFixture& it);
    static void countReasons(ClerkFixture& it);
    static void writeOffByEntry(ClerkFixture& it);
    static void recalculate(ClerkFixture& it);
    static void take(const std::vector<void (*)(ClerkFixture&)>& steps);
};

void WriteOffClerkTest::readTheDay(ClerkFixture& it) {
    QByteArray lines;
    for (const QTime& time : {QTime(7, 55), QTime(12, 5), QTime(12, 50), QTime(17, 3)}) {
        lines += punchLine("10001", Day, time);
        if (time > QTime(8, 0))
            lines += punchLine("10002", Day, time);
    }
    const QString file = it.store.writePunchFile(u"20010305.txt"_s, lines);
    QVERIFY(it.clerk().reach(u"CtrlCmd0(0)"_s));
    it.answers.expectFile(file).expectMsgBox();
    it.clerk().key(Qt::Key_Space);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.exceptions(), QStringList{u"10002|null|12:05:00|12:50:00|17:03:00"_s});
    QVERIFY(it.clerk().turnTo(it.tabsOf(3), 2));
}

void WriteOffClerkTest::writeOffByBatch(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.press(u"CmdCtrl(1)"_s));
    QVERIFY(moduleWindow(5));
    QCOMPARE(it.tabsOf(5).currentIndex(), int(Batch));
    QVERIFY(clerk.press(u"CmdBat(0)"_s));
    QVERIFY(clerk.reach(u"List1"_s));
    clerk.key(Qt::Key_Down);
    clerk.key(Qt::Key_End);
    clerk.key(Qt::Key_Return);
    QVERIFY(clerk.fill(u"TDBMask1(0)"_s, u"900305"_s));
    QVERIFY(clerk.fill(u"Text8(0)"_s, u"01"_s));
    it.answers.expectMsgBox(MsgAnswer::Yes);
    QVERIFY(clerk.press(u"CmdBat(1)"_s));
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList{entryRow(u"10002"_s, Day, {u"01"_s, u""_s, u""_s, u""_s}, u"clerk", Now)});
}

void WriteOffClerkTest::countReasons(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.turnTo(it.tabsOf(5), Counts));
    QVERIFY(clerk.fill(u"Text4"_s, u"10002"_s));
    clerk.key(Qt::Key_Return);
    clerk.write(u"900301"_s);
    QVERIFY(clerk.fill(u"TDBMask1(3)"_s, u"900331"_s));
    QCOMPARE(it.shown(u"TDBG1(1)"_s), QStringList{u"10002|陳美惠|忘記刷卡|1"_s});
    QVERIFY(clerk.turnTo(it.tabsOf(5), Batch));
    QVERIFY(clerk.press(u"CmdBat(3)"_s));
}

void WriteOffClerkTest::writeOffByEntry(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.press(u"CmdCtrl(1)"_s));
    QVERIFY(clerk.turnTo(it.tabsOf(5), Entries));
    QVERIFY(clerk.press(u"CtrlCmd2(0)"_s));
    QCOMPARE(clerk.focused(), u"TDBMask1(1)"_s);
    clerk.write(u"900305"_s);
    QVERIFY(clerk.fill(u"Text5(1)"_s, u"01"_s));
    QVERIFY(clerk.fill(u"Text5(0)"_s, u"10002"_s));
    QVERIFY(clerk.press(u"CtrlCmd2(4)"_s));
    QCOMPARE(it.rows(u"Canc02"_s), QStringList{entryRow(u"10002"_s, Day, {u"01"_s}, u"clerk",
                                                        QDateTime(QDate(2001, 3, 6), QTime(0, 0)))});
    QVERIFY(clerk.press(u"CtrlCmd2(13)"_s));
}

void WriteOffClerkTest::recalculate(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(!moduleWindow(5));
    QVERIFY(moduleWindow(3));
    QCOMPARE(it.tabsOf(3).currentIndex(), 2);
    // Until then the exception stands.
    QCOMPARE(it.exceptions().size(), 1);
    QVERIFY(clerk.reach(u"CmdCtrl(5)"_s));
    it.expectDate(u"900305"_s);
    it.answers.expectMsgBox();
    clerk.key(Qt::Key_Space);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.exceptions(), QStringList());
    QCOMPARE(control<TDBGrid>(*moduleWindow(3), u"TDBG3(0)"_s).model()->rowCount(), 0);
    QCOMPARE(it.results(), QStringList({u"10001|False|False|False|False|False|False|False|False|False"_s,
                                        u"10002|True|False|False|False|False|False|False|False|False"_s}));
}

void WriteOffClerkTest::take(const std::vector<void (*)(ClerkFixture&)>& steps) {
    ClerkFixture it;
    for (const auto& step : steps) {
        step(it);
        if (QTest::currentTestFailed())
            return;
    }
}

void WriteOffClerkTest::anExceptionIsAnsweredByABatchAndCounted() {
    take({readTheDay, writeOffByBatch, countReasons, recalculate});
}

void WriteOffClerkTest::anExceptionIsAnsweredByAnEntry() {
    take({readTheDay, writeOffByEntry, recalculate});
}

int main(int argc, char** argv) {
    return runTests<WriteOffClerkTest>(argc, argv);
}

#include "WriteOffClerkTest.moc"
