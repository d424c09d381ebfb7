#include "windows/writeoff/Form5BatchFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Idle = u"frame off, tabs 0 1 2 3, buttons 0 2 3, panel 2 '', panel 8 raised"_s;
const QString Open = u"frame on, tabs 1, buttons 1, panel 2 '', panel 8 sunken"_s;
const QString NoEmployees = u"錯誤訊息|請選擇員工代碼...."_s;
const QString NotSaved = u"錯誤訊息|部份欄位未輸入所以存檔不成功,請重新輸入..."_s;

} // namespace

/// The tab of the batch.
class Form5BatchTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theCaptionsAreThoseOfTheSwipesButOne();
    void aBatchOpensEmpty();
    void tabLeadsPastTheLookups();
    void entriesMoveBothWays();
    void aDoubleClickMovesAnEntry();
    void aBatchWritesAnEntryForEachChosen();
    void aBatchReplacesTheEntryOfTheDay();
    void emptyReasonsAreEmptyTexts();
    void aShorterLengthCutsTheCode();
    void noGoesBackWithNothingWritten();
    void withoutEmployeesTwoMessagesCome();
    void panelEightLeavesAnOpenBatchAlone();
    void aDateChosenBeyondTheMaskIsTaken();
    void theDateStaysForTheNextBatch();
    void leavingClosesTheWindow();
};

void Form5BatchTest::theCaptionsAreThoseOfTheSwipesButOne() {
    BatchFixture it;
    it.open(Batch);
    QStringList captions;
    QStringList spoken;
    for (int index = 0; index < 4; ++index) {
        captions << it.label(u"Label20(%1)"_s.arg(index));
        spoken << it.at(u"Text8(%1)"_s.arg(index)).accessibleName();
    }
    QCOMPARE(captions, QStringList({u"上午上班："_s, u"上午下班："_s, u"上午上班："_s, u"下午下班："_s}));
    QCOMPARE(spoken, QStringList({u"上午上班"_s, u"上午下班"_s, u"下午上班"_s, u"下午下班"_s}));
    QStringList buttons;
    for (int index = 0; index < 4; ++index)
        buttons << it.button(u"CmdBat(%1)"_s.arg(index)).text();
    QCOMPARE(buttons, QStringList({u"新增"_s, u"存檔／取消"_s, u"離開"_s, u"回異常處理"_s}));
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>({0, 2, 3}));
    QVERIFY(!it.at(u"Frame1(1)"_s).isEnabled());
    QCOMPARE(it.entriesOf(u"List1"_s) + it.entriesOf(u"List2"_s), QStringList());
}

void Form5BatchTest::aBatchOpensEmpty() {
    BatchFixture it;
    it.openBatch();
    QVERIFY(it.at(u"Frame1(1)"_s).isEnabled());
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>{1});
    QCOMPARE(it.tabsOn(), QList<int>{Batch});
    QVERIFY(!it.panel8Raised());
    // Who has left is not offered.
    QCOMPARE(it.entriesOf(u"List1"_s), QStringList({u"10001  王小明"_s, u"10002  陳美惠"_s}));
    QCOMPARE(it.counts() + it.reasons() + it.label(u"Label4(23)"_s) + it.label(u"Label16"_s),
             u"2/0|||clerk"_s);
    // A second batch starts as empty as the first.
    it.type(u"Text8(0)"_s, u"01"_s);
    it.press(u"CMDCTRL(1)"_s);
    it.answers.expectMsgBox(MsgAnswer::No);
    it.press(u"CmdBat(1)"_s);
    it.press(u"CmdBat(0)"_s);
    QCOMPARE(it.counts() + it.reasons() + it.label(u"Label16"_s), u"2/0|||"_s);
}

void Form5BatchTest::tabLeadsPastTheLookups() {
    BatchFixture it;
    it.openBatch();
    it.at(u"Text8(0)"_s).setFocus();
    QStringList way;
    for (int press = 0; press < 12; ++press) {
        it.key(Qt::Key_Tab);
        way << it.focused();
    }
    QCOMPARE(way.join(u' '), u"Text8(1) Text8(2) Text8(3) List1 CMDCTRL(0) CMDCTRL(1) CMDCTRL(2) CMDCTRL(3)"
                             " List2 CmdBat(1) Search(2) Search(3)"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form5BatchTest::entriesMoveBothWays() {
    BatchFixture it;
    it.openBatch();
    it.answers.expectMsgBox();
    it.press(u"CMDCTRL(0)"_s);
    QCOMPARE(it.seen(), QStringList{u"錯誤訊息|請選擇員工編號及姓名..."_s});
    it.press(u"CMDCTRL(1)"_s);
    QCOMPARE(it.entriesOf(u"List2"_s), QStringList({u"10001  王小明"_s, u"10002  陳美惠"_s}));
    QCOMPARE(it.counts(), u"0/2"_s);
    it.clickEntry(u"List2"_s, 0);
    it.press(u"CMDCTRL(2)"_s);
    QCOMPARE(it.entriesOf(u"List1"_s), QStringList{u"10001  王小明"_s});
    QCOMPARE(it.counts(), u"1/1"_s);
    it.press(u"CMDCTRL(3)"_s);
    QCOMPARE(it.counts(), u"2/0"_s);
}

void Form5BatchTest::aDoubleClickMovesAnEntry() {
    BatchFixture it;
    it.openBatch();
    it.doubleClickEntry(u"List1"_s, 1);
    QCOMPARE(it.entriesOf(u"List1"_s), QStringList{u"10001  王小明"_s});
    QCOMPARE(it.entriesOf(u"List2"_s), QStringList{u"10002  陳美惠"_s});
    QCOMPARE(it.counts(), u"1/1"_s);
    it.doubleClickEntry(u"List2"_s, 0);
    QCOMPARE(it.entriesOf(u"List1"_s), QStringList({u"10001  王小明"_s, u"10002  陳美惠"_s}));
    QCOMPARE(it.entriesOf(u"List2"_s), QStringList());
    QCOMPARE(it.counts(), u"2/0"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form5BatchTest::aBatchWritesAnEntryForEachChosen() {
    BatchFixture it;
    it.openBatch();
    it.typeDate(0, u"900305"_s);
    it.type(u"Text8(0)"_s, u"01"_s);
    it.type(u"Text8(3)"_s, u"02"_s);
    QCOMPARE(it.reasons(), u"01忘記刷卡|||02公出"_s);
    it.press(u"CMDCTRL(1)"_s);
    it.run();
    QCOMPARE(it.seen(), QStringList{BatchQuestion});
    const QStringList reasons{u"01"_s, u""_s, u""_s, u"02"_s};
    QCOMPARE(it.rows(u"Canc02"_s), QStringList({entryRow(u"10001"_s, Day, reasons, u"clerk", Now),
                                                entryRow(u"10002"_s, Day, reasons, u"clerk", Now)}));
    QCOMPARE(it.label(u"Label16"_s), u"2001/3/6 09:10:11"_s);
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>({0, 2, 3}));
    QVERIFY(!it.at(u"Frame1(1)"_s).isEnabled());
    QCOMPARE(it.tabsOn(), QList<int>({Reasons, Batch, Entries, Counts}));
    // The entries' list has them.
    it.clickTab(Entries);
    QCOMPARE(it.shown(u"TDBG1(0)"_s), QStringList({u"10001|王小明|2001/3/5|01|||02|clerk|2001/3/6 09:10"_s,
                                                   u"10002|陳美惠|2001/3/5|01|||02|clerk|2001/3/6 09:10"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
}

void Form5BatchTest::aBatchReplacesTheEntryOfTheDay() {
    BatchFixture it;
    addWriteOff(it.database(), u"10001"_s, Day, u"02"_s, u"02"_s, {}, {});
    addWriteOff(it.database(), u"10001"_s, Day.addDays(1), u"02"_s, {}, {}, {});
    const QStringList before = it.rows(u"Canc02"_s);
    it.openBatch();
    it.typeDate(0, u"900305"_s);
    it.type(u"Text8(0)"_s, u"01"_s);
    it.clickEntry(u"List1"_s, 0);
    it.press(u"CMDCTRL(0)"_s);
    it.run();
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList(
                 {entryRow(u"10001"_s, Day, {u"01"_s, u""_s, u""_s, u""_s}, u"clerk", Now), before.at(1)}));
}

void Form5BatchTest::emptyReasonsAreEmptyTexts() {
    BatchFixture it;
    it.openBatch();
    it.typeDate(0, u"900305"_s);
    it.clickEntry(u"List1"_s, 1);
    it.press(u"CMDCTRL(0)"_s);
    it.run();
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList{entryRow(u"10002"_s, Day, {u""_s, u""_s, u""_s, u""_s}, u"clerk", Now)});
    QCOMPARE(it.seen(), QStringList{BatchQuestion});
}

void Form5BatchTest::aShorterLengthCutsTheCode() {
    BatchFixture it;
    it.database().execute(u"delete * from Base06"_s);
    addEmployee(it.database(), u"100017"_s);
    it.openBatch();
    QCOMPARE(it.entriesOf(u"List1"_s), QStringList{u"100017  員工100017"_s});
    it.typeDate(0, u"900305"_s);
    it.press(u"CMDCTRL(1)"_s);
    it.run();
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList{entryRow(u"10001"_s, Day, {u""_s, u""_s, u""_s, u""_s}, u"clerk", Now)});
}

void Form5BatchTest::noGoesBackWithNothingWritten() {
    BatchFixture it;
    it.openBatch();
    it.typeDate(0, u"900305"_s);
    it.press(u"CMDCTRL(1)"_s);
    it.answers.expectMsgBox(MsgAnswer::No);
    it.press(u"CmdBat(1)"_s);
    QCOMPARE(it.seen(), QStringList{BatchQuestion});
    QCOMPARE(it.rows(u"Canc02"_s), QStringList());
    QCOMPARE(it.label(u"Label16"_s), QString());
    QCOMPARE(it.state(), Idle);
    it.press(u"StbTool(8)"_s);
    QVERIFY(!it.isOpen());
}

void Form5BatchTest::withoutEmployeesTwoMessagesCome() {
    BatchFixture it;
    addWriteOff(it.database(), u"10001"_s, Day, u"02"_s, {}, {}, {});
    const QStringList before = it.rows(u"Canc02"_s);
    it.openBatch();
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox().expectMsgBox();
    it.press(u"CmdBat(1)"_s);
    QCOMPARE(it.seen(), QStringList({BatchQuestion, NoEmployees, NotSaved}));
    QCOMPARE(it.rows(u"Canc02"_s), before);
    QCOMPARE(it.label(u"Label16"_s), u"2001/3/6 09:10:11"_s);
    QCOMPARE(it.state(), Idle);
    it.press(u"StbTool(8)"_s);
    QVERIFY(!it.isOpen());
}

void Form5BatchTest::panelEightLeavesAnOpenBatchAlone() {
    BatchFixture it;
    it.open(Batch);
    QCOMPARE(it.state(), Idle);
    it.press(u"CmdBat(0)"_s);
    it.typeDate(0, u"900305"_s);
    it.type(u"Text8(0)"_s, u"01"_s);
    it.press(u"CMDCTRL(1)"_s);
    QCOMPARE(it.state(), Open);
    it.press(u"StbTool(8)"_s);
    QVERIFY(it.isOpen());
    QCOMPARE(it.state(), Open);
    QCOMPARE(it.counts() + it.reasons() + it.mask(0).value(), u"0/201忘記刷卡|||900305"_s);
    QVERIFY(it.seen().isEmpty());
    // And the batch goes on.
    it.run();
    const QStringList reasons{u"01"_s, u""_s, u""_s, u""_s};
    QCOMPARE(it.rows(u"Canc02"_s), QStringList({entryRow(u"10001"_s, Day, reasons, u"clerk", Now),
                                                entryRow(u"10002"_s, Day, reasons, u"clerk", Now)}));
    QCOMPARE(it.state(), Idle);
    QCOMPARE(it.seen(), QStringList{BatchQuestion});
}

void Form5BatchTest::aDateChosenBeyondTheMaskIsTaken() {
    BatchFixture it;
    it.openBatch();
    it.date(0).setDate({2024, 3, 5});
    QCOMPARE(it.mask(0).value(), QString());
    it.clickEntry(u"List1"_s, 0);
    it.press(u"CMDCTRL(0)"_s);
    it.run();
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList{entryRow(u"10001"_s, {2024, 3, 5}, {u""_s, u""_s, u""_s, u""_s}, u"clerk", Now)});
}

void Form5BatchTest::theDateStaysForTheNextBatch() {
    BatchFixture it;
    it.openBatch();
    it.typeDate(0, u"900305"_s);
    it.answers.expectMsgBox(MsgAnswer::No);
    it.press(u"CmdBat(1)"_s);
    it.press(u"CmdBat(0)"_s);
    QCOMPARE(it.mask(0).value(), u"900305"_s);
    QCOMPARE(it.date(0).date(), Day);
    // And in the date control when the mask is cleared or spoiled.
    it.typeDate(0, u"9013"_s);
    QCOMPARE(it.date(0).date(), Day);
    QVERIFY(it.seen().size() == 1);
}

void Form5BatchTest::leavingClosesTheWindow() {
    BatchFixture it;
    it.open(Batch);
    it.press(u"CmdBat(2)"_s);
    QVERIFY(!it.isOpen());
    QVERIFY(!gDbOpen);
}

int main(int argc, char** argv) {
    return runTests<Form5BatchTest>(argc, argv);
}

#include "Form5BatchTest.moc"
