#include "windows/schedule/Form2Fixture.h"

#include "app/LookupProcess.h"
#include "support/Patience.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

int generate(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([] {
        OpenToolWindow(2);
        Window& form = *moduleWindow(2);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(1);
        for (const int index : {0, 1})
            control<TDBDate>(form, u"TDBD2(%1)"_s.arg(index)).setDate({2001, 3, 1});
        click(control(form, u"CmdCal"_s));
    });
}

} // namespace

/// The tab of generation and query.
class Form2GenerationTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void boxesHaveTheirDefaultTexts();
    void captionsAreTheStatedOnes();
    void listsHoldCodesAndNames();
    void aChosenEntryIsCutToItsCode();
    void aBoxMayBeTypedIntoFreely();
    void enterInAListMovesOn();
    void listsGrowAtEachVisit();
    void aVisitKeepsTheEntryOnWhichABoxStands();
    void theListShowsWhatAnotherTabHasChanged();
    void aBadDateIsToldAndKeepsTheFocus();
    void aDateOf2026IsChosenWithTheMaskBlank();
    void generateWritesTheRosterAndShowsIt();
    void generateWithoutADateTells();
    void generateNarrowsByTheBoxes();
    void aNullInAStepEndsTheProgram();
    void queryShowsTheRowsOfTheRange();
    void queryWithoutRowsEmptiesTheListAndTells();
    void queryWithoutADateTells();
    void aQueryThatCannotRunEndsNoGeneration();
    void restDaysShowOnlyFromAnEmptySlot();
    void theCounterFollowsTheRow();
};

void Form2GenerationTest::boxesHaveTheirDefaultTexts() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    const QStringList defaults{u"000000"_s, u"ZZZZZZ"_s, u"0000"_s, u"ZZZZ"_s, u"000000"_s, u"ZZZZZZ"_s,
                               {},          u"Z"_s,      {},        u"Z"_s,    {}};
    for (int index = 0; index < defaults.size(); ++index)
        QCOMPARE(fixture.combo(index).currentText(), defaults.at(index));
    for (int index = 0; index < 5; ++index) {
        QVERIFY(!fixture.date(index).date().isValid());
        QCOMPARE(fixture.mask(index).value(), QString());
    }
}

void Form2GenerationTest::captionsAreTheStatedOnes() {
    Form2Fixture fixture;
    fixture.open(1);
    QCOMPARE(fixture.label(u"Lb1(0)"_s), u"員工代號："_s);
    QCOMPARE(fixture.label(u"Lb1(1)"_s), u"日    期："_s);
    QCOMPARE(fixture.label(u"Lb1(2)"_s), u"班    別："_s);
    QCOMPARE(fixture.at<QPushButton>(u"CmdCal"_s).text(), u"產生班別表"_s);
    QCOMPARE(fixture.at<QPushButton>(u"CmdQuery"_s).text(), u"開始查詢"_s);
    QCOMPARE(fixture.at<QWidget>(u"Frame1(1)"_s).property("title").toString(), u"查詢班表條件設定"_s);
    QStringList captions;
    const QAbstractItemModel* model = fixture.at<TDBGrid>(u"TDBG1"_s).model();
    for (int column = 0; column < model->columnCount(); ++column)
        captions += model->headerData(column, Qt::Horizontal).toString();
    QCOMPARE(captions, QStringList({u"日期"_s, u"員工碼"_s, u"時段"_s}));
}

void Form2GenerationTest::listsHoldCodesAndNames() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open();
    // Filled once by the load; who has left is not in them.
    const QStringList employees{u"10001-王小明"_s, u"10002-陳美惠"_s};
    for (const int index : {0, 1, 4, 5})
        QCOMPARE(fixture.entriesOf(index), employees);
    for (const int index : {2, 3})
        QCOMPARE(fixture.entriesOf(index), QStringList{u"001-常日班"_s});
    for (const int index : {6, 7, 8, 9, 10})
        QCOMPARE(fixture.entriesOf(index), QStringList({u"A-日班"_s, u"N-夜班"_s}));
}

void Form2GenerationTest::aChosenEntryIsCutToItsCode() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    fixture.choose(0, 1);
    QCOMPARE(fixture.combo(0).currentText(), u"10002"_s);
    fixture.choose(2, 0);
    QCOMPARE(fixture.combo(2).currentText(), u"001"_s);
    fixture.choose(6, 1);
    QCOMPARE(fixture.combo(6).currentText(), u"N"_s);
}

void Form2GenerationTest::aBoxMayBeTypedIntoFreely() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    const qsizetype entries = fixture.entriesOf(0).size();
    fixture.typeCode(0, u"100"_s);
    QTest::keyClick(fixture.combo(0).lineEdit(), Qt::Key_Return);
    QCOMPARE(fixture.combo(0).currentText(), u"100"_s);
    QCOMPARE(fixture.entriesOf(0).size(), entries);
}

void Form2GenerationTest::enterInAListMovesOn() {
    Form2Fixture fixture;
    fixture.open(1);
    fixture.combo(0).setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(fixture.combo(1).hasFocus() || fixture.combo(1).lineEdit()->hasFocus());
}

void Form2GenerationTest::listsGrowAtEachVisit() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open();
    QCOMPARE(fixture.entriesOf(0).size(), 2);
    QCOMPARE(fixture.entriesOf(8).size(), 2);
    fixture.clickTab(1);
    QCOMPARE(fixture.entriesOf(0).size(), 4);
    QCOMPARE(fixture.entriesOf(7).size(), 4);
    QCOMPARE(fixture.entriesOf(8).size(), 2);
    fixture.clickTab(2);
    QCOMPARE(fixture.entriesOf(0).size(), 4);
    QCOMPARE(fixture.entriesOf(10).size(), 4);
    // A new employee stands beside those that were there already.
    addEmployee(fixture.database(), u"10004"_s, {{u"EmpName", u"新人"}});
    fixture.clickTab(1);
    const QStringList once{u"10001-王小明"_s, u"10002-陳美惠"_s};
    QCOMPARE(fixture.entriesOf(0), once + once + once + QStringList{u"10004-新人"_s});
    QCOMPARE(fixture.combo(0).currentText(), u"000000"_s);
}

void Form2GenerationTest::aVisitKeepsTheEntryOnWhichABoxStands() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    fixture.choose(0, 1);
    fixture.clickTab(2);
    fixture.clickTab(1);
    QCOMPARE(fixture.combo(0).currentText(), u"10002"_s);
    fixture.combo(0).setFocus();
    QTest::keyClick(&fixture.combo(0), Qt::Key_Down);
    QCOMPARE(fixture.combo(0).currentIndex(), 2);
}

void Form2GenerationTest::theListShowsWhatAnotherTabHasChanged() {
    Form2Fixture fixture;
    fixture.addPeople();
    for (const QString& EmpNo : {u"10001"_s, u"10002"_s})
        addRoster(fixture.database(), EmpNo, Form2Fixture::Today, u"A"_s);
    fixture.open(1);
    QCOMPARE(fixture.shown(), QStringList({u"2001/3/5|10001|A"_s, u"2001/3/5|10002|A"_s}));
    fixture.clickTab(2);
    fixture.typeDate(4, u"900305"_s);
    fixture.press(u"Command2"_s);
    fixture.press(u"CMDCTRL(1)"_s);
    fixture.press(u"Command3"_s);
    fixture.clickTab(1);
    QCOMPARE(fixture.shown(), QStringList({u"2001/3/5|10001|"_s, u"2001/3/5|10002|"_s}));
}

void Form2GenerationTest::aBadDateIsToldAndKeepsTheFocus() {
    Form2Fixture fixture;
    fixture.open(1);
    fixture.typeDate(0, u"900131"_s);
    QCOMPARE(fixture.date(0).date(), QDate(2001, 1, 31));
    fixture.typeDate(0, u"901345"_s);
    fixture.answers.expectMsgBox();
    fixture.mask(1).setFocus();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"日期格式輸入錯誤,請重新輸入"_s);
    QTRY_COMPARE_WITH_TIMEOUT(fixture.mainWindow().focusWidget(), static_cast<QWidget*>(&fixture.mask(0)),
                              PatienceMs);
    QCOMPARE(fixture.date(0).date(), QDate(2001, 1, 31));
}

void Form2GenerationTest::aDateOf2026IsChosenWithTheMaskBlank() {
    Form2Fixture fixture;
    fixture.open(1);
    fixture.typeDate(0, u"900131"_s);
    fixture.date(0).setDate({2026, 3, 5});
    QCOMPARE(fixture.mask(0).value(), QString());
    QCOMPARE(fixture.date(0).currentText(), u"2026/03/05"_s);
    fixture.mask(1).setFocus();
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form2GenerationTest::generateWritesTheRosterAndShowsIt() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    fixture.typeDate(0, u"900301"_s);
    fixture.typeDate(1, u"900302"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdCal"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"排班表已產生完成,請按<確定>繼續......."_s);
    // The third employee has left: he is the last one, and gets neither days nor rests.
    QCOMPARE(fixture.roster(), QStringList({u"10001|2001-03-01|A"_s, u"10001|2001-03-02|A"_s,
                                            u"10002|2001-03-01|A"_s, u"10002|2001-03-02|A"_s}));
    QCOMPARE(fixture.shown().size(), 4);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
    QVERIFY(!hourglass());
}

void Form2GenerationTest::generateWithoutADateTells() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    fixture.typeDate(0, u"900301"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdCal"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text,
             u"日期輸入錯誤,無法產生班別表,請重新輸入日期........"_s);
    QCOMPARE(fixture.roster(), QStringList());
}

void Form2GenerationTest::generateNarrowsByTheBoxes() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    fixture.choose(0, 1);
    fixture.choose(1, 1);
    fixture.choose(2, 0);
    fixture.choose(3, 0);
    fixture.typeDate(0, u"900301"_s);
    fixture.typeDate(1, u"900301"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdCal"_s);
    QCOMPARE(fixture.roster(),
             QStringList({u"10002|2001-03-01|A"_s, u"10002|2001-03-02|A"_s, u"10002|2001-03-03|"_s}));
    QCOMPARE(gPickClsNo, u"001"_s);
    QCOMPARE(gPickEmpNo, u"10002"_s);
}

void Form2GenerationTest::aNullInAStepEndsTheProgram() {
    Form2Fixture fixture;
    fixture.addPeople();
    insertRow(fixture.database(), u"Base05"_s,
              {{u"ClsNo", u"002"}, {u"TimeNo1", u"A"}, {u"TimeDay1", 2}, {u"TimeRest1", Value()}});
    addEmployee(fixture.database(), u"20001"_s, {{u"ClsNo", u"002"}});
    OtherProcess program(fixture.store.folder(), u"generate"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines(), QStringList{u"Pontrel|執行階段錯誤 '94':"_s});
    // The rows of the class before stay.
    QCOMPARE(fixture.roster(), QStringList({u"10001|2001-03-01|A"_s, u"10001|2001-03-02|A"_s,
                                            u"10002|2001-03-01|A"_s, u"10002|2001-03-02|A"_s}));
}

void Form2GenerationTest::queryShowsTheRowsOfTheRange() {
    Form2Fixture fixture;
    fixture.addPeople();
    for (const QString& EmpNo : {u"10002"_s, u"10001"_s})
        for (int day = 1; day <= 3; ++day)
            addRoster(fixture.database(), EmpNo, {2001, 3, day}, day == 3 ? u"N"_s : u"A"_s);
    fixture.open(1);
    QCOMPARE(fixture.shown().size(), 6);
    fixture.typeDate(2, u"900302"_s);
    fixture.typeDate(3, u"900303"_s);
    fixture.press(u"CmdQuery"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(), QStringList({u"2001/3/2|10001|A"_s, u"2001/3/2|10002|A"_s,
                                           u"2001/3/3|10001|N"_s, u"2001/3/3|10002|N"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
    fixture.typeCode(4, u"10002"_s);
    fixture.typeCode(6, u"B"_s);
    fixture.press(u"CmdQuery"_s);
    QCOMPARE(fixture.shown(), QStringList{u"2001/3/3|10002|N"_s});
    QVERIFY(!hourglass());
}

void Form2GenerationTest::queryWithoutRowsEmptiesTheListAndTells() {
    Form2Fixture fixture;
    fixture.addPeople();
    addRoster(fixture.database(), u"10001"_s, {2001, 3, 1}, u"A"_s);
    fixture.open(1);
    fixture.typeDate(2, u"900401"_s);
    fixture.typeDate(3, u"900402"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdQuery"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"查無此資料,請重新輸入查詢條件........"_s);
    QCOMPARE(fixture.shown(), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QVERIFY(!hourglass());
}

void Form2GenerationTest::queryWithoutADateTells() {
    Form2Fixture fixture;
    fixture.addPeople();
    addRoster(fixture.database(), u"10001"_s, {2001, 3, 1}, u"A"_s);
    fixture.open(1);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdQuery"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"查無此資料,請重新輸入查詢條件........"_s);
    QCOMPARE(fixture.shown(), QStringList{u"2001/3/1|10001|A"_s});
    QVERIFY(!hourglass());
}

void Form2GenerationTest::aQueryThatCannotRunEndsNoGeneration() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdQuery"_s);
    // The list is refreshed behind the generation from the source that it had before.
    fixture.typeDate(0, u"900301"_s);
    fixture.typeDate(1, u"900301"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdCal"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"排班表已產生完成,請按<確定>繼續......."_s);
    QCOMPARE(fixture.shown(), QStringList({u"2001/3/1|10001|A"_s, u"2001/3/1|10002|A"_s,
                                           u"2001/3/2|10001|A"_s, u"2001/3/2|10002|A"_s}));
}

void Form2GenerationTest::restDaysShowOnlyFromAnEmptySlot() {
    Form2Fixture fixture;
    fixture.addPeople();
    addRoster(fixture.database(), u"10001"_s, {2001, 3, 1}, QString());
    addRoster(fixture.database(), u"10001"_s, {2001, 3, 2}, u"A"_s);
    fixture.open(1);
    fixture.typeDate(2, u"900301"_s);
    fixture.typeDate(3, u"900331"_s);
    fixture.press(u"CmdQuery"_s);
    QCOMPARE(fixture.shown(), QStringList({u"2001/3/1|10001|"_s, u"2001/3/2|10001|A"_s}));
    fixture.choose(6, 0);
    fixture.press(u"CmdQuery"_s);
    QCOMPARE(fixture.shown(), QStringList{u"2001/3/2|10001|A"_s});
}

void Form2GenerationTest::theCounterFollowsTheRow() {
    Form2Fixture fixture;
    fixture.addPeople();
    for (int day = 1; day <= 3; ++day)
        addRoster(fixture.database(), u"10001"_s, {2001, 3, day}, u"A"_s);
    fixture.open(1);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    auto& grid = fixture.at<TDBGrid>(u"TDBG1"_s);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(fixture.panel(1), u"資料錄:2/3"_s);
}

int main(int argc, char** argv) {
    return runTests<Form2GenerationTest>(argc, argv, {{u"generate"_s, generate}});
}

#include "Form2GenerationTest.moc"
