#include "support/LiveProgram.h"
#include "support/Patience.h"
#include "windows/DeleteButtons.h"
#include "windows/attendance/Form3Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

/// Clicks a button of the main window, which opens that dialog.
bool opens(LiveProgram& program, const QString& button, const QString& dialog) {
    program.click(u"MDI"_s, button);
    return program.waitForFront(dialog);
}

/// What is clicked while the program is stopped: the dialog's answer, then a button behind it.
void answerAndClickOn(LiveProgram& program, const QString& dialog, const QString& answer,
                      const QString& button) {
    program.stop();
    program.click(dialog, answer);
    program.click(u"MDI"_s, button);
    program.resume();
}

QStringList rows(const TestStore& store, const QString& table) {
    return rowsOf(*store.connect(), table);
}

void addTitles(Database& database) {
    for (const QString& code : {u"0010"_s, u"0020"_s, u"0100"_s})
        insertRow(database, u"Base01"_s, {{u"TitleNo", code}, {u"Title", u"職稱"_s + code}});
}

/// One employee in a day slot with a full day of punches in the file of the day.
void addDay(TestStore& store) {
    addSlot(store.database(), u"A"_s);
    addEmployee(store.database(), u"10001"_s);
    addRoster(store.database(), u"10001"_s, Day, u"A"_s);
    QByteArray file;
    for (const QTime time : {QTime(7, 55), QTime(12, 5), QTime(12, 50), QTime(17, 3)})
        file += punchLine("10001", Day, time);
    store.writePunchFile(u"20010305.txt"_s, file);
}

const QString DayRow = dailyRow(u"10001"_s, Day, u"A"_s,
                                {{u"Time1", QTime(7, 55)},
                                 {u"FT1", true},
                                 {u"Time2", QTime(12, 5)},
                                 {u"FT2", true},
                                 {u"Time3", QTime(12, 50)},
                                 {u"FT3", true},
                                 {u"Time4", QTime(17, 3)},
                                 {u"FT4", true}});

} // namespace

/// Clicks and keys that wait behind a dialog's last click, as a program finds them that had no time: it is
/// stopped, the clerk clicks on, and it goes on.
class QueuedInputTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aDeleteTakesTheRowAskedAbout();
    void noLeaveGetsPastTheQuestionOfADelete_data();
    void noLeaveGetsPastTheQuestionOfADelete();
    void noLeaveGetsPastTheQuestionOfABatch_data();
    void noLeaveGetsPastTheQuestionOfABatch();
    void noLeaveGetsPastTheFileDialog();
    void noLeaveGetsPastTheQuestionOfAnImport();
    void noLeaveGetsPastThePurgeDate();
    void noLeaveGetsPastTheMessageOfThePurge();
    void noLeaveGetsPastTheRecalculationDate();
    void noLeaveGetsPastAQuery();
    void noLeaveGetsPastALookup();
    void keysBehindAnAnswerAreDropped();
    void theNextDialogOfAQueryTakesWhatIsMeantForIt();
};

void QueuedInputTest::aDeleteTakesTheRowAskedAbout() {
    TestStore store;
    addTitles(store.database());
    const QStringList before = rows(store, u"Base01"_s);
    LiveProgram program(store, {1, {}, 0, u"CtrlCmd0(2)"_s});
    QVERIFY(opens(program, u"CtrlCmd0(2)"_s, u"MsgBox"_s));
    answerAndClickOn(program, u"MsgBox"_s, u"Yes"_s, u"CtrlCmd0(9)"_s);
    QVERIFY(program.settle());
    QCOMPARE(rows(store, u"Base01"_s), before.mid(1));
    // And what is done from then on counts again.
    QVERIFY(opens(program, u"CtrlCmd0(2)"_s, u"MsgBox"_s));
    program.click(u"MsgBox"_s, u"Yes"_s);
    QVERIFY(program.waitForFront(u"MDI"_s));
    QCOMPARE(rows(store, u"Base01"_s), before.mid(1, 1));
}

void QueuedInputTest::noLeaveGetsPastTheQuestionOfADelete_data() {
    QTest::addColumn<std::size_t>("button");
    for (std::size_t button = 0; button < deleteButtons().size(); ++button)
        QTest::addRow("%s", qPrintable(deleteButtons().at(button).title)) << button;
}

void QueuedInputTest::noLeaveGetsPastTheQuestionOfADelete() {
    QFETCH(const std::size_t, button);
    const DeleteButton& each = deleteButtons().at(button);
    TestStore store;
    for (const Fields& row : each.rows)
        insertRow(store.database(), each.table, row);
    const QStringList before = rows(store, each.table);
    LiveProgram program(store, each.place);
    QVERIFY(opens(program, each.place.control, u"MsgBox"_s));
    answerAndClickOn(program, u"MsgBox"_s, u"Yes"_s, each.leave());
    QVERIFY(program.settle());
    QCOMPARE(program.opened(),
             each.place.child.isEmpty() ? u"Form%1"_s.arg(each.place.module) : each.place.child);
    QCOMPARE(rows(store, each.table), before.mid(1));
}

void QueuedInputTest::noLeaveGetsPastTheQuestionOfABatch_data() {
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("tab");
    QTest::newRow("leave") << 4 << 3;
    QTest::newRow("write-offs") << 5 << 1;
    QTest::newRow("overtime") << 6 << 1;
}

void QueuedInputTest::noLeaveGetsPastTheQuestionOfABatch() {
    QFETCH(const int, module);
    QFETCH(const int, tab);
    TestStore store;
    LiveProgram program(store, {module, {}, tab, u"CmdBat(0)"_s});
    program.click(u"MDI"_s, u"CmdBat(0)"_s);
    QVERIFY(program.settle());
    QVERIFY(opens(program, u"CmdBat(1)"_s, u"MsgBox"_s));
    answerAndClickOn(program, u"MsgBox"_s, u"No"_s, u"StbTool(8)"_s);
    QVERIFY(program.settle());
    QCOMPARE(program.opened(), u"Form%1"_s.arg(module));
    program.click(u"MDI"_s, u"StbTool(8)"_s);
    QTRY_COMPARE_WITH_TIMEOUT(program.opened(), u"Form0"_s, PatienceMs);
}

void QueuedInputTest::noLeaveGetsPastTheFileDialog() {
    TestStore store;
    addDay(store);
    LiveProgram program(store, {3, {}, 0, u"CtrlCmd0(0)"_s});
    QVERIFY(opens(program, u"CtrlCmd0(0)"_s, u"CommonDialog1"_s));
    answerAndClickOn(program, u"CommonDialog1"_s, u"Open"_s, u"StbTool(8)"_s);
    QVERIFY(program.waitForFront(u"MsgBox"_s)); // the message of the import's end
    QCOMPARE(program.opened(), u"Form3"_s);
    QCOMPARE(rows(store, u"Atte02"_s), QStringList{DayRow});
    program.click(u"MsgBox"_s, u"Ok"_s);
    QVERIFY(program.settle());
    QCOMPARE(program.opened(), u"Form3"_s);
}

void QueuedInputTest::noLeaveGetsPastTheQuestionOfAnImport() {
    TestStore store;
    addDay(store);
    LiveProgram program(store, {3, {}, 0, u"CtrlCmd0(0)"_s});
    for (const bool again : {false, true}) {
        QVERIFY(opens(program, u"CtrlCmd0(0)"_s, u"CommonDialog1"_s));
        program.click(u"CommonDialog1"_s, u"Open"_s);
        QVERIFY(program.waitForFront(u"MsgBox"_s));
        if (again) // the question whether to replace the day comes first
            answerAndClickOn(program, u"MsgBox"_s, u"Yes"_s, u"StbTool(8)"_s);
        else
            program.click(u"MsgBox"_s, u"Ok"_s);
        if (!again)
            QVERIFY(program.waitForFront(u"MDI"_s));
    }
    QVERIFY(program.settle());
    QCOMPARE(program.front(), u"MsgBox"_s);
    QCOMPARE(program.opened(), u"Form3"_s);
    QCOMPARE(rows(store, u"Atte02"_s), QStringList{DayRow});
}

void QueuedInputTest::noLeaveGetsPastThePurgeDate() {
    TestStore store;
    addReadPunch(store.database(), u"10001"_s, Day, QTime(8, 0));
    LiveProgram program(store, {3, {}, 0, u"CtrlCmd0(9)"_s});
    QVERIFY(opens(program, u"CtrlCmd0(9)"_s, u"FrmI1Date"_s));
    answerAndClickOn(program, u"FrmI1Date"_s, u"Command1(0)"_s, u"CtrlCmd0(8)"_s);
    QVERIFY(program.waitForFront(u"MsgBox"_s));
    QCOMPARE(program.opened(), u"Form3"_s);
    QCOMPARE(rows(store, u"Atte01"_s), QStringList());
    program.click(u"MsgBox"_s, u"Ok"_s);
    QVERIFY(program.settle());
    QCOMPARE(program.opened(), u"Form3"_s);
}

void QueuedInputTest::noLeaveGetsPastTheMessageOfThePurge() {
    TestStore store;
    LiveProgram program(store, {3, {}, 0, u"CtrlCmd0(9)"_s});
    QVERIFY(opens(program, u"CtrlCmd0(9)"_s, u"FrmI1Date"_s));
    program.click(u"FrmI1Date"_s, u"Command1(0)"_s);
    QVERIFY(program.waitForFront(u"MsgBox"_s));
    answerAndClickOn(program, u"MsgBox"_s, u"Ok"_s, u"StbTool(8)"_s);
    QVERIFY(program.settle());
    QCOMPARE(program.opened(), u"Form3"_s);
}

void QueuedInputTest::noLeaveGetsPastTheRecalculationDate() {
    TestStore store;
    addDay(store);
    LiveProgram program(store, {3, {}, 2, u"CmdCtrl(5)"_s});
    QVERIFY(opens(program, u"CmdCtrl(5)"_s, u"FrmI1Date"_s));
    answerAndClickOn(program, u"FrmI1Date"_s, u"Command1(0)"_s, u"StbTool(8)"_s);
    QVERIFY(program.waitForFront(u"MsgBox"_s));
    program.click(u"MsgBox"_s, u"Ok"_s);
    QVERIFY(program.settle());
    QCOMPARE(program.opened(), u"Form3"_s);
}

void QueuedInputTest::noLeaveGetsPastAQuery() {
    TestStore store;
    LiveProgram program(store, {3, {}, 3, u"CmdCtrl(9)"_s});
    QVERIFY(opens(program, u"CmdCtrl(9)"_s, u"IFrmQuery"_s));
    answerAndClickOn(program, u"IFrmQuery"_s, u"Command1(0)"_s, u"CmdCtrl(11)"_s);
    QVERIFY(program.settle());
    QCOMPARE(program.opened(), u"Form3"_s);
}

void QueuedInputTest::noLeaveGetsPastALookup() {
    TestStore store;
    addEmployee(store.database(), u"10001"_s);
    LiveProgram program(store, {3, {}, 1, u"Search"_s});
    QVERIFY(opens(program, u"Search"_s, u"QFrmEmpNO"_s));
    answerAndClickOn(program, u"QFrmEmpNO"_s, u"Command1(0)"_s, u"StbTool(8)"_s);
    QVERIFY(program.settle());
    QCOMPARE(program.opened(), u"Form3"_s);
    QTRY_COMPARE_WITH_TIMEOUT(program.focus(), u"Text1"_s, PatienceMs);
}

void QueuedInputTest::keysBehindAnAnswerAreDropped() {
    TestStore store;
    addTitles(store.database());
    const QStringList before = rows(store, u"Base01"_s);
    LiveProgram program(store, {1, {}, 0, u"CtrlCmd0(2)"_s});
    QVERIFY(opens(program, u"CtrlCmd0(2)"_s, u"MsgBox"_s));
    program.input.tap(Qt::Key_Tab);
    QTRY_COMPARE_WITH_TIMEOUT(program.focus(), u"Yes"_s, PatienceMs);
    program.stop();
    for (int press = 0; press < 6; ++press)
        program.input.tap(Qt::Key_Return);
    program.resume();
    QVERIFY(program.settle());
    QCOMPARE(program.front(), u"MDI"_s);
    QCOMPARE(rows(store, u"Base01"_s), before.mid(1));
}

void QueuedInputTest::theNextDialogOfAQueryTakesWhatIsMeantForIt() {
    TestStore store;
    LiveProgram program(store, {3, {}, 3, u"CmdCtrl(9)"_s});
    QVERIFY(opens(program, u"CmdCtrl(9)"_s, u"IFrmQuery"_s));
    program.click(u"IFrmQuery"_s, u"Option1(2)"_s);
    answerAndClickOn(program, u"IFrmQuery"_s, u"Command1(0)"_s, u"CmdCtrl(11)"_s);
    for (const QString& dialog : {u"FrmI1Date"_s, u"QFrmEmpNO"_s}) {
        QVERIFY(program.waitForFront(dialog));
        answerAndClickOn(program, dialog, u"Command1(0)"_s, u"CmdCtrl(11)"_s);
    }
    QVERIFY(program.waitForFront(u"MDI"_s));
    QVERIFY(program.settle());
    QCOMPARE(program.opened(), u"Form3"_s);
}

int main(int argc, char** argv) {
    return runTests<QueuedInputTest>(argc, argv, liveProgram());
}

#include "QueuedInputTest.moc"
