#include "windows/overtime/Form6Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Begin = u"CmdBat(0)"_s;
const QString End = u"CmdBat(1)"_s;
const QString Leave = u"CmdBat(2)"_s;
const QString Question = u"警告訊息|是否確定執行註銷批次 ?|是/否"_s;

class BatchFixture : public Form6Fixture {
  public:
    BatchFixture() { open(1); }

    /// Opens the batch and fills it: the first of March, 22:00 to 01:30.
    void fill() {
        press(Begin);
        typeDate(0, u"990301"_s);
        typeTime(2, u"2200"_s);
        typeTime(3, u"0130"_s);
        key(Qt::Key_Return);
    }
    void chooseAll() { press(u"CMDCTRL(1)"_s); }
    void end(MsgAnswer answer) {
        answers.expectMsgBox(answer);
        press(End);
    }
    /// A row of the batch as fill() has it.
    [[nodiscard]] static Fields written(const QString& EmpNo) {
        return {{u"EmpNo", EmpNo},          {u"OverDate", March1}, {u"BegTime", QTime(22, 0)},
                {u"EndTime", QTime(1, 30)}, {u"OverHours", 3},     {u"Account", u"tester"},
                {u"TransDate", Now}};
    }
    [[nodiscard]] QString written() const {
        return mask(0).value() + u' ' + time(2).displayText() + u' ' + time(3).displayText() + u' ' +
               text(u"Text8(1)"_s);
    }
};

const QStringList Everybody{u"10001  王小明"_s, u"10002  陳美惠"_s, u"10003  林大同"_s};

} // namespace

/// The tab that gives the same overtime to many.
class Form6BatchTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void itIsShutUntilItIsOpened();
    void openedItListsWhoeverIsThere();
    void openedAgainItKeepsDateTimesAndHours();
    void entriesAreMovedBothWays();
    void hoursFollowFromTheTimes();
    void eachEmployeeGetsARow();
    void theEntryShowsTheRowsAfterItsRefresh();
    void aRepeatedBatchAddsRows();
    void hoursAreThoseOfTheirBox();
    void codesAreCutToTheirLength();
    void noIsACancel();
    void withoutEmployeesThereAreTwoMessages();
    void leavingClosesTheWindow();
};

void Form6BatchTest::itIsShutUntilItIsOpened() {
    BatchFixture it;
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>({0, 2}));
    QVERIFY(!it.at(u"Frame1(1)"_s).isEnabled());
    QCOMPARE(it.tabsOn(), QList<int>({0, 1, 2, 3}));
    QVERIFY(it.panel8Raised());
    QCOMPARE(it.label(u"Label4(23)"_s) + it.label(u"Label16"_s), QString());
    QCOMPARE(it.counts(), u"0/0"_s);
}

void Form6BatchTest::openedItListsWhoeverIsThere() {
    BatchFixture it;
    it.press(Begin);
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>{1});
    QVERIFY(it.at(u"Frame1(1)"_s).isEnabled());
    QCOMPARE(it.tabsOn(), QList<int>{1});
    QVERIFY(!it.panel8Raised());
    QCOMPARE(it.label(u"Label4(23)"_s), u"tester"_s);
    QCOMPARE(it.entriesOf(u"List1"_s), Everybody); // but not who has left
    QCOMPARE(it.entriesOf(u"List2"_s), QStringList());
    QCOMPARE(it.counts(), u"3/0"_s);
    // No other way leads out.
    it.clickTab(0);
    QCOMPARE(it.tabs().currentIndex(), 1);
    it.press(u"StbTool(8)"_s);
    QVERIFY(it.isOpen());
}

void Form6BatchTest::openedAgainItKeepsDateTimesAndHours() {
    BatchFixture it;
    it.fill();
    it.chooseAll();
    it.end(MsgAnswer::Yes);
    QCOMPARE(it.label(u"Label16"_s), u"2010/3/9 10:11:12"_s);
    it.press(Begin);
    QCOMPARE(it.label(u"Label16"_s), QString());
    QCOMPARE(it.entriesOf(u"List1"_s), Everybody);
    QCOMPARE(it.entriesOf(u"List2"_s), QStringList());
    QCOMPARE(it.written(), u"990301 22:00 01:30 3"_s);
}

void Form6BatchTest::entriesAreMovedBothWays() {
    BatchFixture it;
    it.press(Begin);
    it.answers.expectMsgBox();
    it.press(u"CMDCTRL(0)"_s); // nothing is selected
    QCOMPARE(it.seen(), QStringList{u"錯誤訊息|請選擇員工編號及姓名...|確定"_s});
    it.clickEntry(u"List1"_s, 1);
    it.press(u"CMDCTRL(0)"_s);
    QCOMPARE(it.entriesOf(u"List2"_s), QStringList{Everybody.at(1)});
    QCOMPARE(it.counts(), u"2/1"_s);
    it.chooseAll();
    QCOMPARE(it.entriesOf(u"List2"_s), QStringList({Everybody.at(1), Everybody.at(0), Everybody.at(2)}));
    it.press(u"CMDCTRL(3)"_s);
    QCOMPARE(it.counts(), u"3/0"_s);
}

void Form6BatchTest::hoursFollowFromTheTimes() {
    BatchFixture it;
    it.press(Begin);
    it.typeTime(2, u"0800"_s);
    it.typeTime(3, u"0859"_s);
    QCOMPARE(it.text(u"Text8(1)"_s), QString());
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text8(1)"_s), u"0"_s);
    it.typeTime(3, u"0900"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text8(1)"_s), u"1"_s);
    it.typeTime(3, u"0800"_s); // no time at all
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text8(1)"_s), u"0"_s);
    it.typeTime(2, u"2200"_s); // of which nothing follows yet
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text8(1)"_s), u"0"_s);
    it.typeTime(3, u"0130"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text8(1)"_s), u"3"_s);
    it.time(3).clear();
    click(it.time(3));
    it.key(Qt::Key_Return); // an empty time counts nothing
    QCOMPARE(it.text(u"Text8(1)"_s), u"3"_s);
}

void Form6BatchTest::eachEmployeeGetsARow() {
    BatchFixture it;
    it.fill();
    it.chooseAll();
    it.end(MsgAnswer::Yes);
    QCOMPARE(it.seen(), QStringList{Question});
    QCOMPARE(it.overtime(), QStringList({Form6Fixture::row(BatchFixture::written(u"10001"_s)),
                                         Form6Fixture::row(BatchFixture::written(u"10002"_s)),
                                         Form6Fixture::row(BatchFixture::written(u"10003"_s))}));
    QCOMPARE(it.label(u"Label16"_s), u"2010/3/9 10:11:12"_s);
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>({0, 2}));
    QVERIFY(!it.at(u"Frame1(1)"_s).isEnabled());
    QCOMPARE(it.tabsOn(), QList<int>({0, 1, 2, 3}));
    QVERIFY(it.panel8Raised());
}

void Form6BatchTest::theEntryShowsTheRowsAfterItsRefresh() {
    BatchFixture it;
    it.fill();
    it.chooseAll();
    it.end(MsgAnswer::Yes);
    it.clickTab(0);
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    it.press(entry::Refresh);
    QCOMPARE(it.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(it.time(0).displayText() + it.time(1).displayText(), u"22:0001:30"_s);
    QCOMPARE(it.label(u"Label4(3)"_s), u"tester"_s);
}

void Form6BatchTest::aRepeatedBatchAddsRows() {
    BatchFixture it;
    for (int run = 0; run < 2; ++run) {
        it.fill();
        it.chooseAll();
        it.press(u"CMDCTRL(3)"_s);
        auto& list = it.at<QListWidget>(u"List1"_s);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                           list.visualItemRect(list.item(0)).center());
        it.end(MsgAnswer::Yes);
    }
    const QString row = Form6Fixture::row(BatchFixture::written(u"10001"_s));
    QCOMPARE(it.overtime(), QStringList({row, row}));
    QCOMPARE(it.answers.trouble(), QString());
}

void Form6BatchTest::hoursAreThoseOfTheirBox() {
    BatchFixture it;
    it.fill();
    it.type(u"Text8(1)"_s, u"8"_s);
    it.chooseAll();
    it.end(MsgAnswer::Yes);
    QCOMPARE(it.overtime().constFirst(),
             Form6Fixture::row(with(BatchFixture::written(u"10001"_s), {u"OverHours", 8})));
}

void Form6BatchTest::codesAreCutToTheirLength() {
    BatchFixture it;
    it.database().execute(u"update Syst01 set LenEmpNo = 3"_s);
    it.fill();
    it.chooseAll();
    it.end(MsgAnswer::Yes);
    const QString row = Form6Fixture::row(BatchFixture::written(u"100"_s)); // whom nobody knows
    QCOMPARE(it.overtime(), QStringList({row, row, row}));
}

void Form6BatchTest::noIsACancel() {
    BatchFixture it;
    it.fill();
    it.chooseAll();
    it.end(MsgAnswer::No);
    QCOMPARE(it.seen(), QStringList{Question});
    QCOMPARE(it.overtime(), QStringList());
    QCOMPARE(it.label(u"Label16"_s), QString());
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>({0, 2}));
    QCOMPARE(it.tabsOn(), QList<int>({0, 1, 2, 3}));
}

void Form6BatchTest::withoutEmployeesThereAreTwoMessages() {
    BatchFixture it;
    it.press(Begin); // and not even a date
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox().expectMsgBox();
    it.press(End);
    QCOMPARE(it.seen(), QStringList({Question, u"錯誤訊息|請選擇員工代碼....|確定"_s,
                                     u"錯誤訊息|部份欄位未輸入所以存檔不成功,請重新輸入...|確定"_s}));
    QCOMPARE(it.label(u"Label16"_s), u"2010/3/9 10:11:12"_s);
    QCOMPARE(it.overtime(), QStringList());
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>({0, 2}));
    QCOMPARE(it.answers.trouble(), QString());
}

void Form6BatchTest::leavingClosesTheWindow() {
    BatchFixture it;
    it.press(Leave);
    QVERIFY(!it.isOpen());
    QVERIFY(!gDbOpen);
}

int main(int argc, char** argv) {
    return runTests<Form6BatchTest>(argc, argv);
}

#include "Form6BatchTest.moc"
