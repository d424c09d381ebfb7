#include "windows/schedule/Form2Fixture.h"

#include "app/LookupProcess.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString First = u"10001-王小明-A"_s;
const QString Second = u"10002-陳美惠-A"_s;

/// The tab of single days over two people on slot A on 2001/3/5, one who has left, and one at rest.
class AdjustmentFixture : public Form2Fixture {
  public:
    AdjustmentFixture() {
        addPeople();
        addEmployee(database(), QStringLiteral("10004"), {{u"EmpName", u"休息"}});
        for (const QString& EmpNo : {u"10001"_s, u"10002"_s, u"10003"_s})
            addRoster(database(), EmpNo, Today, u"A"_s);
        addRoster(database(), u"10004"_s, Today, QString());
        addRoster(database(), u"10001"_s, Today.addDays(1), u"A"_s);
    }
    /// Opens the tab, types the day and fills the first list with those on slot A.
    void openFilled() {
        open(2);
        typeDate(4, u"900305"_s);
        typeCode(8, u"A"_s);
        press(u"Command2"_s);
    }
    [[nodiscard]] QString counts() const { return label(u"Label3(0)"_s) + u'/' + label(u"Label3(1)"_s); }
    void expectNothingSelected() { answers.expectMsgBox(); }
};

int filterWithoutADate(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([] {
        OpenToolWindow(2);
        Window& form = *moduleWindow(2);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(2);
        click(control(form, u"Command2"_s));
    });
}

int changeWithoutADate(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([] {
        OpenToolWindow(2);
        Window& form = *moduleWindow(2);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(2);
        control<TwoLists>(form, u"Lists"_s).setEntries({u"10001-王小明-A"_s});
        click(control(form, u"CMDCTRL(1)"_s));
        click(control(form, u"Command3"_s));
    });
}

} // namespace

class Form2AdjustmentTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void captionsAreTheStatedOnes();
    void theFilterListsThoseOnTheSlots();
    void theFilterWithAnEmptySlotListsRestDaysToo();
    void theFilterSelectsRestAndClearsTheLists();
    void movingTakesTheSelectedEntry();
    void movingTwiceInARowTellsTheSecondTime();
    void movingBackTellsInTheSameWords();
    void allMoveTheSelectedOneFirst();
    void allOfAnEmptyListDoesNothing();
    void aDoubleClickMovesAnEntry();
    void enterMovesAnEntryAndSelectsTheFirst();
    void workEnablesTheSlotAndRestClearsIt();
    void arrowKeysChooseRestOrWork();
    void savingWithoutAnEntryTells();
    void savingARestDay();
    void savingASlot();
    void savingTypedSlotsAsTheyAre();
    void workWithoutASlotIsARestDay();
    void theListsStayAfterSaving();
    void theEntryChangedLastStaysSelected();
    void aDayWithoutRowsChangesNothing();
    void theCodeIsCutByItsLength();
    void aClickOnTheFrontTabDoesNothing();
    void aFilterWithoutADateEndsTheProgram();
    void aBadDateEndsTheProgram();
    void aNegativeCodeLengthEndsTheProgram();
};

void Form2AdjustmentTest::captionsAreTheStatedOnes() {
    AdjustmentFixture fixture;
    fixture.open(2);
    for (const auto& [name, caption] :
         {std::pair{u"Frame2"_s, u"設定班別人員篩選條件"_s}, {u"Frame3"_s, u"時段設定"_s}})
        QCOMPARE(fixture.at<QWidget>(name).property("title").toString(), caption);
    for (const auto& [name, caption] : {std::pair{u"Command2"_s, u"確定"_s},
                                        {u"CMDCTRL(0)"_s, u">"_s},
                                        {u"CMDCTRL(1)"_s, u">>"_s},
                                        {u"CMDCTRL(2)"_s, u"<"_s},
                                        {u"CMDCTRL(3)"_s, u"<<"_s},
                                        {u"Command3"_s, u"儲存設定"_s}})
        QCOMPARE(fixture.at<QPushButton>(name).text(), caption);
    QCOMPARE(fixture.at<QRadioButton>(u"Option1(0)"_s).text(), u"放假"_s);
    QCOMPARE(fixture.at<QRadioButton>(u"Option1(1)"_s).text(), u"上班"_s);
    QCOMPARE(fixture.label(u"Label4(99)"_s), u"選取人數："_s);
    QCOMPARE(fixture.label(u"Label4(98)"_s), u"剩餘人數："_s);
    QCOMPARE(fixture.label(u"Lb1(5)"_s), u"時段："_s);
}

void Form2AdjustmentTest::theFilterListsThoseOnTheSlots() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    // Who has left is never listed, though the roster has a row of him.
    QCOMPARE(fixture.list1(), QStringList({First, Second}));
    QCOMPARE(fixture.list2(), QStringList());
    QCOMPARE(fixture.counts(), u"2/0"_s);
}

void Form2AdjustmentTest::theFilterWithAnEmptySlotListsRestDaysToo() {
    AdjustmentFixture fixture;
    fixture.open(2);
    fixture.typeDate(4, u"900305"_s);
    fixture.press(u"Command2"_s);
    QCOMPARE(fixture.list1(), QStringList({First, Second, u"10004-休息-"_s}));
}

void Form2AdjustmentTest::theFilterSelectsRestAndClearsTheLists() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.press(u"CMDCTRL(1)"_s);
    click(fixture.at(u"Option1(1)"_s));
    fixture.typeCode(10, u"N"_s);
    fixture.press(u"Command2"_s);
    QVERIFY(fixture.at<QRadioButton>(u"Option1(0)"_s).isChecked());
    QVERIFY(!fixture.combo(10).isEnabled());
    QCOMPARE(fixture.combo(10).currentText(), QString());
    QCOMPARE(fixture.list1(), QStringList({First, Second}));
    QCOMPARE(fixture.list2(), QStringList());
}

void Form2AdjustmentTest::movingTakesTheSelectedEntry() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.clickEntry(u"List1"_s, 1);
    fixture.press(u"CMDCTRL(0)"_s);
    QCOMPARE(fixture.list1(), QStringList{First});
    QCOMPARE(fixture.list2(), QStringList{Second});
    QCOMPARE(fixture.counts(), u"1/1"_s);
    fixture.clickEntry(u"List2"_s, 0);
    fixture.press(u"CMDCTRL(2)"_s);
    QCOMPARE(fixture.list1(), QStringList({First, Second}));
    QCOMPARE(fixture.counts(), u"2/0"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form2AdjustmentTest::movingTwiceInARowTellsTheSecondTime() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.clickEntry(u"List1"_s, 0);
    fixture.press(u"CMDCTRL(0)"_s);
    fixture.expectNothingSelected();
    fixture.press(u"CMDCTRL(0)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"錯誤訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"請選擇員工編號及姓名..."_s);
    QCOMPARE(fixture.list1(), QStringList{Second});
}

void Form2AdjustmentTest::movingBackTellsInTheSameWords() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.expectNothingSelected();
    fixture.press(u"CMDCTRL(2)"_s);
    QCOMPARE(fixture.answers.seen().constFirst().title, u"錯誤訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"請選擇員工編號及姓名..."_s);
}

void Form2AdjustmentTest::allMoveTheSelectedOneFirst() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.clickEntry(u"List1"_s, 1);
    fixture.press(u"CMDCTRL(1)"_s);
    QCOMPARE(fixture.list2(), QStringList({Second, First}));
    fixture.press(u"CMDCTRL(3)"_s);
    QCOMPARE(fixture.list1(), QStringList({Second, First}));
    QCOMPARE(fixture.counts(), u"2/0"_s);
}

void Form2AdjustmentTest::allOfAnEmptyListDoesNothing() {
    AdjustmentFixture fixture;
    fixture.open(2);
    fixture.press(u"CMDCTRL(1)"_s);
    fixture.press(u"CMDCTRL(3)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.counts(), u"0/0"_s);
}

void Form2AdjustmentTest::aDoubleClickMovesAnEntry() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    for (const auto& [list, row] : {std::pair{u"List1"_s, 1}, {u"List2"_s, 0}}) {
        auto& entries = fixture.at<QListWidget>(list);
        const QPoint place = entries.visualItemRect(entries.item(row)).center();
        QTest::mouseClick(entries.viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(entries.viewport(), Qt::LeftButton, Qt::NoModifier, place);
        if (list == u"List1")
            QCOMPARE(fixture.list2(), QStringList{Second});
    }
    QCOMPARE(fixture.list1(), QStringList({First, Second}));
}

void Form2AdjustmentTest::enterMovesAnEntryAndSelectsTheFirst() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    auto& list = fixture.at<QListWidget>(u"List1"_s);
    fixture.clickEntry(u"List1"_s, 1);
    QTest::keyClick(&list, Qt::Key_Return);
    QCOMPARE(fixture.list2(), QStringList{Second});
    QVERIFY(list.item(0)->isSelected());
    QTest::keyClick(&list, Qt::Key_Return);
    QCOMPARE(fixture.list2(), QStringList({Second, First}));
    QCOMPARE(fixture.counts(), u"0/2"_s);
    QTest::keyClick(&list, Qt::Key_Return);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form2AdjustmentTest::workEnablesTheSlotAndRestClearsIt() {
    AdjustmentFixture fixture;
    fixture.open(2);
    const auto enabled = [&] {
        return std::pair{fixture.combo(10).isEnabled(), fixture.at(u"Lb1(5)"_s).isEnabled()};
    };
    QCOMPARE(enabled(), std::pair(false, false));
    click(fixture.at(u"Option1(1)"_s));
    QCOMPARE(enabled(), std::pair(true, true));
    fixture.choose(10, 1);
    QCOMPARE(fixture.combo(10).currentText(), u"N"_s);
    click(fixture.at(u"Option1(0)"_s));
    QCOMPARE(enabled(), std::pair(false, false));
    QCOMPARE(fixture.combo(10).currentText(), QString());
}

void Form2AdjustmentTest::arrowKeysChooseRestOrWork() {
    AdjustmentFixture fixture;
    fixture.open(2);
    fixture.at(u"Option1(0)"_s).setFocus();
    QTest::keyClick(fixture.mainWindow().windowHandle(), Qt::Key_Right);
    QVERIFY(fixture.at<QRadioButton>(u"Option1(1)"_s).isChecked());
    QVERIFY(fixture.combo(10).isEnabled());
    fixture.typeCode(10, u"N"_s);
    QTest::keyClick(fixture.mainWindow().windowHandle(), Qt::Key_Left);
    QVERIFY(fixture.at<QRadioButton>(u"Option1(0)"_s).isChecked());
    QVERIFY(!fixture.combo(10).isEnabled());
    QCOMPARE(fixture.combo(10).currentText(), QString());
}

void Form2AdjustmentTest::savingWithoutAnEntryTells() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.answers.expectMsgBox();
    fixture.press(u"Command3"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"請選擇欲修改時段之員工代碼"_s);
}

void Form2AdjustmentTest::savingARestDay() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.press(u"CMDCTRL(1)"_s);
    fixture.press(u"Command3"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.roster(),
             QStringList({u"10001|2001-03-05|"_s, u"10001|2001-03-06|A"_s, u"10002|2001-03-05|"_s,
                          u"10003|2001-03-05|A"_s, u"10004|2001-03-05|"_s}));
}

void Form2AdjustmentTest::savingASlot() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.clickEntry(u"List1"_s, 0);
    fixture.press(u"CMDCTRL(0)"_s);
    click(fixture.at(u"Option1(1)"_s));
    fixture.choose(10, 1);
    fixture.press(u"Command3"_s);
    QCOMPARE(fixture.roster().first(2), QStringList({u"10001|2001-03-05|N"_s, u"10001|2001-03-06|A"_s}));
    QCOMPARE(fixture.roster().at(2), u"10002|2001-03-05|A"_s);
}

void Form2AdjustmentTest::savingTypedSlotsAsTheyAre() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.press(u"CMDCTRL(1)"_s);
    click(fixture.at(u"Option1(1)"_s));
    fixture.typeCode(10, u"Q"_s);
    fixture.press(u"Command3"_s);
    QCOMPARE(fixture.roster().constFirst(), u"10001|2001-03-05|Q"_s);
}

void Form2AdjustmentTest::workWithoutASlotIsARestDay() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.press(u"CMDCTRL(1)"_s);
    click(fixture.at(u"Option1(1)"_s));
    fixture.press(u"Command3"_s);
    QCOMPARE(fixture.roster().constFirst(), u"10001|2001-03-05|"_s);
}

void Form2AdjustmentTest::theListsStayAfterSaving() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.press(u"CMDCTRL(1)"_s);
    fixture.press(u"Command3"_s);
    QCOMPARE(fixture.list2(), QStringList({First, Second}));
    fixture.typeCode(8, QString());
    fixture.press(u"Command2"_s);
    QCOMPARE(fixture.list1(), QStringList({u"10001-王小明-"_s, u"10002-陳美惠-"_s, u"10004-休息-"_s}));
}

void Form2AdjustmentTest::theEntryChangedLastStaysSelected() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.press(u"CMDCTRL(1)"_s);
    const auto selected = [&] {
        QStringList texts;
        for (const QListWidgetItem* item : fixture.at<QListWidget>(u"List2"_s).selectedItems())
            texts += item->text();
        return texts;
    };
    QCOMPARE(selected(), QStringList());
    fixture.press(u"Command3"_s);
    QCOMPARE(selected(), QStringList{Second});
    // So "<" takes it back.
    fixture.press(u"CMDCTRL(2)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.list1(), QStringList{Second});
    QCOMPARE(fixture.list2(), QStringList{First});
}

void Form2AdjustmentTest::aDayWithoutRowsChangesNothing() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.press(u"CMDCTRL(1)"_s);
    fixture.typeDate(4, u"900601"_s);
    const QStringList before = fixture.roster();
    fixture.press(u"Command3"_s);
    QCOMPARE(fixture.roster(), before);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form2AdjustmentTest::theCodeIsCutByItsLength() {
    AdjustmentFixture fixture;
    fixture.database().execute(u"update Syst01 set LenEmpNo = 4"_s);
    fixture.openFilled();
    fixture.press(u"CMDCTRL(1)"_s);
    const QStringList before = fixture.roster();
    fixture.press(u"Command3"_s);
    QCOMPARE(fixture.roster(), before);
}

void Form2AdjustmentTest::aClickOnTheFrontTabDoesNothing() {
    AdjustmentFixture fixture;
    fixture.openFilled();
    fixture.clickEntry(u"List1"_s, 0);
    fixture.press(u"CMDCTRL(0)"_s);
    click(fixture.at(u"Option1(1)"_s));
    fixture.typeCode(10, u"N"_s);
    const auto lists = [&] {
        QStringList all = fixture.list1() + fixture.list2();
        for (int index = 0; index < 11; ++index)
            all += fixture.entriesOf(index) + QStringList{fixture.combo(index).currentText()};
        return all;
    };
    const QStringList before = lists();
    fixture.clickTab(2);
    QCOMPARE(lists(), before);
    QCOMPARE(fixture.date(4).date(), Form2Fixture::Today);
    QVERIFY(fixture.combo(10).isEnabled());
    // Nor is the roster's list read again, where it is the one in front.
    fixture.clickTab(1);
    fixture.database().execute(u"delete * from Rule03"_s);
    const QStringList reached = lists();
    fixture.clickTab(1);
    QCOMPARE(fixture.at<TDBGrid>(u"TDBG1"_s).model()->rowCount(), 5);
    QCOMPARE(lists(), reached);
}

void Form2AdjustmentTest::aFilterWithoutADateEndsTheProgram() {
    TestStore store;
    OtherProcess program(store.folder(), u"filterWithoutADate"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList{u"Pontrel|執行階段錯誤 '3075':"_s});
}

void Form2AdjustmentTest::aBadDateEndsTheProgram() {
    TestStore store;
    OtherProcess program(store.folder(), u"changeWithoutADate"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    const QStringList lines = program.lines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"Pontrel|執行階段錯誤"_s), qUtf8Printable(lines.constFirst()));
}

void Form2AdjustmentTest::aNegativeCodeLengthEndsTheProgram() {
    TestStore store;
    store.database().execute(u"update Syst01 set LenEmpNo = -1"_s);
    OtherProcess program(store.folder(), u"changeWithoutADate"_s); // the code is cut ahead of the statement
    QCOMPARE(faultOfEnd(program, 5), QString());
}

int main(int argc, char** argv) {
    return runTests<Form2AdjustmentTest>(
        argc, argv,
        {{u"changeWithoutADate"_s, changeWithoutADate}, {u"filterWithoutADate"_s, filterWithoutADate}});
}

#include "Form2AdjustmentTest.moc"
