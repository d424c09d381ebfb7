#include "windows/leave/Form4BatchFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Places = u"900305"_s;

} // namespace

/// One leave for many employees.
class Form4BatchTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aBatchIsOpenedOverThoseStillEmployed();
    void employeesAreChosen();
    void theDateBringsTheTimesOfTheFirstSlot_data();
    void theDateBringsTheTimesOfTheFirstSlot();
    void aTypeWithoutABalanceRefusesNobody();
    void aTypeWithABalanceIsCharged();
    void theOneBeforeDecidesAndTheBatchStops();
    void settingsHoldUntilTheWindowOpensAgain();
    void noAtTheQuestionClosesIt();
    void withoutEmployeesOrTypeNothingIsSaved_data();
    void withoutEmployeesOrTypeNothingIsSaved();
    void anUnknownTypeOpensTheLookup();
    void anUnknownTypeIsWrittenAllTheSame();
    void aSecondBatchOnTheDayAsksNothing();
    void theNotesShowAfterRefresh();
    void openingItAgainClearsAllButTheDate();
    void whatItClearsWasNotTypedWrong();
};

void Form4BatchTest::aBatchIsOpenedOverThoseStillEmployed() {
    Form4BatchFixture it;
    addEmployee(it.database(), u"10003"_s, {{u"EmpName", u"林大同"}, {u"LeaveDate", QDate(2001, 1, 1)}});
    it.open(BatchTab);
    QCOMPARE(it.at<QPushButton>(u"CmdBat(0)"_s).text() + it.at<QPushButton>(u"CmdBat(1)"_s).text(),
             u"新增存檔／取消"_s);
    QVERIFY(!it.at(u"Frame1(3)"_s).isEnabled());
    QVERIFY(it.at(u"CmdBat(0)"_s).isEnabled() && !it.at(u"CmdBat(1)"_s).isEnabled());
    QCOMPARE(it.left() + it.right(), QStringList());
    it.begin();
    QVERIFY(it.at(u"Frame1(3)"_s).isEnabled());
    QVERIFY(!it.at(u"CmdBat(0)"_s).isEnabled() && it.at(u"CmdBat(1)"_s).isEnabled());
    QCOMPARE(it.tabsOn(), QList<int>{BatchTab});
    QCOMPARE(it.panel(2), u"新增資料"_s);
    QVERIFY(!it.panel8Raised());
    QCOMPARE(it.left(), QStringList({u"10001  王小明"_s, u"10002  陳美惠"_s}));
    QCOMPARE(it.label(u"Label3(0)"_s) + it.label(u"Label3(1)"_s), u"20"_s);
    QCOMPARE(it.label4(23) + it.label(u"Label16"_s), u"tester"_s);
    it.press(u"StbTool(8)"_s); // no other way out
    QVERIFY(!it.form().isUnloaded());
}

void Form4BatchTest::employeesAreChosen() {
    Form4BatchFixture it;
    it.open(BatchTab);
    it.begin();
    it.answers.expectMsgBox();
    it.press(u"CMDCTRL(0)"_s);
    QCOMPARE(it.seen(), QStringList{u"錯誤訊息|請選擇員工編號及姓名..."_s});
    it.at<QListWidget>(u"List1"_s).setCurrentRow(1);
    it.key(Qt::Key_Return);
    QCOMPARE(it.right(), QStringList{u"10002  陳美惠"_s});
    QCOMPARE(it.label(u"Label3(0)"_s) + it.label(u"Label3(1)"_s), u"11"_s);
    it.press(u"CMDCTRL(1)"_s);
    QCOMPARE(it.right(), QStringList({u"10002  陳美惠"_s, u"10001  王小明"_s}));
    it.press(u"CMDCTRL(3)"_s);
    QCOMPARE(it.left().size(), 2);
    QCOMPARE(it.label(u"Label3(0)"_s) + it.label(u"Label3(1)"_s), u"20"_s);
}

void Form4BatchTest::theDateBringsTheTimesOfTheFirstSlot_data() {
    QTest::addColumn<QDate>("day");
    QTest::newRow("typed") << Monday;
    QTest::newRow("chosen, which the mask cannot hold") << QDate(2026, 3, 5);
}

void Form4BatchTest::theDateBringsTheTimesOfTheFirstSlot() {
    QFETCH(const QDate, day);
    Form4BatchFixture it;
    addSlot(it.database(), u"B"_s, {{u"StdT1", QTime(9, 30)}});
    addRoster(it.database(), u"10001"_s, day, u"B"_s);
    it.open(BatchTab);
    it.begin();
    it.typeTime(2, u"1012"_s);
    if (day == Monday) {
        it.typeDate(2, Places);
    } else {
        it.date(2).setFocus();
        it.date(2).setDate(day);
    }
    QCOMPARE(it.time(2).time(), QTime(10, 12));
    it.key(Qt::Key_Return);
    QCOMPARE(it.time(2).time(), QTime(8, 0));
    QCOMPARE(it.time(3).time(), QTime(17, 0));
}

void Form4BatchTest::aTypeWithoutABalanceRefusesNobody() {
    Form4BatchFixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    const QStringList employees = it.employees();
    it.open(BatchTab);
    it.begin();
    it.fill(u"08"_s, u"0800"_s, u"1700"_s);
    QCOMPARE(it.label(u"Label40"_s), u"產假"_s);
    it.run();
    QCOMPARE(it.seen(), QStringList{BatchQuestion}); // and no word of its success
    QCOMPARE(it.answers.seen().constFirst().buttons.size(), 2);
    const QString next = u"200103020002"_s;
    QCOMPARE(it.notes(), it.expectedNotes({it.batchNote(FirstNumber, u"10001"_s, u"08"_s, 1.0),
                                           it.batchNote(next, u"10002"_s, u"08"_s, 1.0)}));
    QCOMPARE(it.days(), it.expectedDays({it.wholeDay(FirstNumber, u"10001"_s, u"08"_s, 8, u"A"_s),
                                         it.wholeDay(next, u"10002"_s, u"08"_s, 8, QString())}));
    QCOMPARE(it.employees(), employees);
    QCOMPARE(it.text(u"Text8(1)"_s), u"1"_s);
    QCOMPARE(it.label(u"Label16"_s), u"2001/3/2 09:10:12"_s);
    QVERIFY(!it.at(u"Frame1(3)"_s).isEnabled());
    QVERIFY(it.at(u"CmdBat(0)"_s).isEnabled() && !it.at(u"CmdBat(1)"_s).isEnabled());
    QCOMPARE(it.tabsOn().size(), 6);
    QCOMPARE(it.panel(2), QString());
    QVERIFY(it.panel8Raised());
}

void Form4BatchTest::aTypeWithABalanceIsCharged() {
    Form4BatchFixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.database().execute(u"delete * from Base06 where EmpNo ='10002'"_s);
    it.open(BatchTab);
    it.begin();
    it.fill(u"01"_s, u"1030"_s, u"1700"_s);
    it.run();
    QCOMPARE(it.seen(), QStringList{BatchQuestion});
    QCOMPARE(it.employees(), it.expected(u"Base06"_s, {with(with(it.first(), {u"ThisYearUse", 2.2}),
                                                            {u"ThisYearLeft", 4.6})}));
    QCOMPARE(it.notes(), it.expectedNotes({with(it.batchNote(FirstNumber, u"10001"_s, u"01"_s, 0.6),
                                                {u"HoliBegTime", QTime(10, 30)})}));
    QCOMPARE(it.text(u"Text8(1)"_s), u"0.6"_s);
}

void Form4BatchTest::theOneBeforeDecidesAndTheBatchStops() {
    Form4BatchFixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    const auto annual = [](const Fields& employee, double use, double left) {
        return with(with(with(employee, {u"ThisYearHD", 1.0}), {u"ThisYearUse", use}),
                    {u"ThisYearLeft", left});
    };
    const Fields third{{u"EmpNo", u"10003"}, {u"EmpName", u"林大同"}};
    it.database().execute(u"delete * from Base06"_s);
    for (const Fields& employee :
         {annual(it.first(), 1.0, 0.0), annual(it.second(), 0.0, 0.7), annual(third, 0.0, 9.0)})
        insertRow(it.database(), u"Base06"_s, employee);
    it.open(BatchTab);
    it.begin();
    it.fill(u"01"_s, u"0800"_s, u"1700"_s);
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    it.press(u"CmdBat(1)"_s);
    QCOMPARE(it.seen(), QStringList({BatchQuestion, BatchTooMuch}));
    // The first one passes with nothing left and goes below it; the second is held against his hours.
    QCOMPARE(it.employees(),
             it.expected(u"Base06"_s, {annual(it.first(), 2.0, -1.0), annual(it.second(), 0.0, 0.7),
                                       annual(third, 0.0, 9.0)}));
    QCOMPARE(it.notes(), it.expectedNotes({it.batchNote(FirstNumber, u"10001"_s, u"01"_s, 1.0)}));
    QCOMPARE(it.days(), it.expectedDays({it.wholeDay(FirstNumber, u"10001"_s, u"01"_s, 8, u"A"_s)}));
    QCOMPARE(it.text(u"Text8(1)"_s), u"1"_s);
    QCOMPARE(it.tabsOn().size(), 6);
}

void Form4BatchTest::settingsHoldUntilTheWindowOpensAgain() {
    Form4BatchFixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.database().execute(u"delete * from Base06 where EmpNo ='10002'"_s);
    it.open(BatchTab);
    it.database().execute(u"Update Syst01 Set ThisYearRest ='08', LenEmpNo = 3"_s);
    const QStringList before = it.employees();
    it.begin();
    it.fill(u"08"_s, u"0800"_s, u"1200"_s);
    it.run();
    QCOMPARE(it.employees(), before);
    QCOMPARE(it.notes(), it.expectedNotes({with(it.batchNote(FirstNumber, u"10001"_s, u"08"_s, 0.4),
                                                {u"HoliEndTime", QTime(12, 0)})}));
    it.form().unload();
    it.database().execute(u"Update Syst01 Set LenEmpNo = 5"_s);
    OpenToolWindow(4);
    it.clickTab(BatchTab);
    it.begin();
    it.fill(u"08"_s, u"0800"_s, u"1200"_s);
    it.run();
    QCOMPARE(it.employees(), it.expected(u"Base06"_s, {with(with(it.first(), {u"ThisYearUse", 2.0}),
                                                            {u"ThisYearLeft", 5.0})}));
}

void Form4BatchTest::noAtTheQuestionClosesIt() {
    Form4BatchFixture it;
    it.open(BatchTab);
    it.begin();
    it.fill(u"08"_s, u"0800"_s, u"1700"_s);
    it.run(MsgAnswer::No);
    QCOMPARE(it.seen(), QStringList{BatchQuestion});
    QCOMPARE(it.notes() + it.days(), QStringList());
    QCOMPARE(it.label(u"Label16"_s), QString());
    QVERIFY(!it.at(u"Frame1(3)"_s).isEnabled());
    QCOMPARE(it.tabsOn().size(), 6);
    it.begin(); // the lists are lost
    QCOMPARE(it.right(), QStringList());
}

void Form4BatchTest::withoutEmployeesOrTypeNothingIsSaved_data() {
    QTest::addColumn<bool>("employees");
    QTest::addColumn<QString>("HoliNo");
    QTest::addColumn<QString>("message");
    QTest::newRow("nobody chosen") << false << u"08"_s << u"請選擇員工代碼...."_s;
    QTest::newRow("no type") << true << QString() << u"請輸入假別...."_s;
    QTest::newRow("neither") << false << QString() << u"請選擇員工代碼...."_s;
}

void Form4BatchTest::withoutEmployeesOrTypeNothingIsSaved() {
    QFETCH(const bool, employees);
    QFETCH(const QString, HoliNo);
    QFETCH(const QString, message);
    Form4BatchFixture it;
    it.open(BatchTab);
    it.begin();
    if (employees)
        it.press(u"CMDCTRL(1)"_s);
    if (!HoliNo.isEmpty())
        it.type(u"Text8(0)"_s, HoliNo);
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox().expectMsgBox();
    it.press(u"CmdBat(1)"_s);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList({BatchQuestion, u"錯誤訊息|"_s + message, BatchNotSaved}));
    QCOMPARE(it.notes() + it.days(), QStringList());
    QVERIFY(!it.at(u"Frame1(3)"_s).isEnabled());
    QCOMPARE(it.label(u"Label16"_s), u"2001/3/2 09:10:12"_s);
}

void Form4BatchTest::anUnknownTypeOpensTheLookup() {
    Form4BatchFixture it;
    it.open(BatchTab);
    it.begin();
    it.type(u"Text8(0)"_s, u"77"_s);
    it.answers.expectMsgBox().expect(u"QFrmHoliNo"_s, [](QWidget& dialog) {
        clickRow(dialog, 2);
        clickOk(dialog);
    });
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList({u"警告訊息|無此【假別代碼】,請重新輸入"_s, u"QFrmHoliNo"_s}));
    QCOMPARE(it.text(u"Text8(0)"_s) + it.label(u"Label40"_s), u"03事假"_s);
    it.answers.expect(u"QFrmHoliNo"_s, [](QWidget& dialog) {
        clickRow(dialog, 4);
        clickOk(dialog);
    });
    it.press(u"Search(5)"_s);
    QCOMPARE(it.text(u"Text8(0)"_s) + it.label(u"Label40"_s), u"08產假"_s);
}

void Form4BatchTest::anUnknownTypeIsWrittenAllTheSame() {
    Form4BatchFixture it;
    it.database().execute(u"delete * from Base06 where EmpNo ='10002'"_s);
    it.open(BatchTab);
    it.begin();
    it.fill(u"08"_s, u"0800"_s, u"1700"_s);
    it.at<QLineEdit>(u"Text8(0)"_s).setText(u"77"_s);
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox().expectMsgBox();
    it.press(u"CmdBat(1)"_s);
    const QString unknown = u"錯誤訊息|無此假別代碼,請重新輸入......"_s;
    QCOMPARE(it.seen(), QStringList({BatchQuestion, unknown, unknown}));
    QCOMPARE(it.notes(), it.expectedNotes({it.batchNote(FirstNumber, u"10001"_s, u"77"_s, 1.0)}));
}

void Form4BatchTest::aSecondBatchOnTheDayAsksNothing() {
    Form4BatchFixture it;
    it.open(BatchTab);
    for (int time = 0; time < 2; ++time) {
        it.begin();
        it.fill(u"08"_s, u"0800"_s, u"1700"_s);
        it.run();
    }
    QCOMPARE(it.seen(), QStringList(2, BatchQuestion));
    QCOMPARE(it.notes().size() + it.days().size(), 8);
    QVERIFY(it.notes().constLast().startsWith(u"200103020004|10002|"_s));
}

void Form4BatchTest::theNotesShowAfterRefresh() {
    Form4BatchFixture it;
    it.open(BatchTab);
    it.begin();
    it.fill(u"03"_s, u"0800"_s, u"1700"_s);
    it.database().execute(u"Update Base06 Set LeaveHD = 1, LeaveUse = 0, LeaveLeft = 1"_s);
    it.run();
    QCOMPARE(it.notes().size(), 2); // days off, which charge nothing
    QCOMPARE(rowsOfSelection(it.database(), u"select LeaveHD,LeaveUse,LeaveLeft from Base06"_s),
             QStringList(2, u"1|0|1"_s));
    it.clickTab(NotesTab);
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    it.press(10);
    QCOMPARE(it.panel(1) + it.label4(0), u"資料錄:1/2200103020001"_s);
    QCOMPARE(it.labels4(9, 10), u"2001/3/2 09:10:12|True"_s);
}

void Form4BatchTest::openingItAgainClearsAllButTheDate() {
    Form4BatchFixture it;
    it.open(BatchTab);
    it.begin();
    it.fill(u"08"_s, u"0800"_s, u"1700"_s);
    it.run();
    it.begin();
    QCOMPARE(it.text(u"Text8(0)"_s) + it.text(u"Text8(1)"_s) + it.label(u"Label40"_s) +
                 it.label(u"Label16"_s) + it.mask(2).value(),
             QString());
    QVERIFY(it.time(2).isNull() && it.time(3).isNull());
    QCOMPARE(it.date(2).date(), Monday);
    QCOMPARE(it.left().size() + it.right().size(), 2);
}

void Form4BatchTest::whatItClearsWasNotTypedWrong() {
    Form4BatchFixture it;
    it.open(BatchTab);
    it.begin();
    it.fill(u"08"_s, u"0800"_s, u"1700"_s);
    it.run();
    it.begin();
    it.at(u"TDBMask1(2)"_s).setFocus();
    it.key(Qt::Key_Tab);
    it.at(u"Text8(0)"_s).setFocus();
    it.key(Qt::Key_Tab);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList{BatchQuestion});
}

int main(int argc, char** argv) {
    return runTests<Form4BatchTest>(argc, argv);
}

#include "Form4BatchTest.moc"
