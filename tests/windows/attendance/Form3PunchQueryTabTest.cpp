#include "app/LookupProcess.h"
#include "app/ModuleProbes.h"
#include "support/Patience.h"
#include "windows/attendance/Form3Fixture.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QDate Day(2001, 3, 5);
const QString Grid = u"TDBG2"_s;

/// Two employees with four punches of three days, and the page that looks them up.
class PunchQueryFixture : public Form3Fixture {
  public:
    PunchQueryFixture() {
        clearPicks();
        addEmployee(database(), u"A0001"_s, {{u"EmpName", u"王小明"}});
        addEmployee(database(), u"A0002"_s, {{u"EmpName", u"陳美惠"}});
        addReadPunch(database(), u"A0001"_s, {2001, 3, 4}, QTime(8, 1));
        addReadPunch(database(), u"A0001"_s, Day, QTime(17, 2, 30));
        addReadPunch(database(), u"A0001"_s, Day, QTime(8, 0));
        addReadPunch(database(), u"A0002"_s, Day, QTime(7, 58));
        open();
        clickTab(1);
    }

    [[nodiscard]] QLineEdit& code() const { return at<QLineEdit>(u"Text1"_s); }
    [[nodiscard]] QString name() const { return at<QLabel>(u"Label3"_s).text(); }

    void typeCode(const QString& text) {
        code().setFocus();
        QTest::keyClick(&code(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&code(), Qt::Key_Delete);
        QTest::keyClicks(&code(), text);
    }
    void pressEnter() { QTest::keyClick(&code(), Qt::Key_Return); }
};

const QStringList AllPunches{
    u"A0001|王小明|2001/3/4|08:01|255|001"_s, u"A0001|王小明|2001/3/5|08:00|255|001"_s,
    u"A0001|王小明|2001/3/5|17:02|255|001"_s, u"A0002|陳美惠|2001/3/5|07:58|255|001"_s};
const QStringList PunchesOfTheFirst{u"A0001|王小明|2001/3/5|08:00|255|001"_s,
                                    u"A0001|王小明|2001/3/5|17:02|255|001"_s,
                                    u"A0001|王小明|2001/3/4|08:01|255|001"_s};

/// In a process of its own: types an apostrophe into the code box behind the login.
int typeAnApostrophe(const QStringList&) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([] {
        OpenToolWindow(3);
        control<QTabWidget>(*moduleWindow(3), u"SSTab1"_s).setCurrentIndex(1);
        QTest::keyClicks(&control<QLineEdit>(*moduleWindow(3), u"Text1"_s), u"O'"_s);
    });
}

const Scenarios AllScenarios = {{u"typeAnApostrophe"_s, typeAnApostrophe}};

} // namespace

class Form3PunchQueryTabTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { clearPicks(); }
    void clickOnTheTabShowsAllPunches();
    void columnsAndCaptionsAreTheStatedOnes();
    void allColumnsAreInSight();
    void typingACodeShowsTheName();
    void enterShowsThePunchesOfTheEmployee();
    void enterShowsTheCodeAsItIsStored();
    void wrongCodeAndEnterTellsAndTheFocusStays();
    void theNameFoundLastStays();
    void enterInTheUntouchedBoxFails();
    void withoutTheSharedConnectionEnterFails();
    void searchFillsTheCodeAndRunsTheQuery();
    void theFirstSearchCancelledClearsTheCode();
    void theSecondSearchCancelledWritesBackTheEarlierPick();
    void clickOnTheTabShowsAllPunchesAgain();
    void anApostropheEndsTheProgram();
    void worksByKeyboardAlone();
    void controlsAreNamedAndReached();
};

void Form3PunchQueryTabTest::clickOnTheTabShowsAllPunches() {
    const PunchQueryFixture fixture;
    QCOMPARE(fixture.tabs().currentIndex(), 1);
    QCOMPARE(fixture.shown(Grid), AllPunches);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
    QCOMPARE(fixture.code().text(), QString());
    QCOMPARE(fixture.name(), QString());
}

void Form3PunchQueryTabTest::columnsAndCaptionsAreTheStatedOnes() {
    const PunchQueryFixture fixture;
    QCOMPARE(fixture.captions(Grid),
             QStringList({u"員工碼"_s, u"姓名"_s, u"打卡日期"_s, u"打卡時間"_s, u"班別"_s, u"機號"_s}));
    QCOMPARE(fixture.at<QLabel>(u"Label4(0)"_s).text(), u"員工編號："_s);
    QVERIFY(!fixture.button(u"Search"_s).icon().isNull());
}

void Form3PunchQueryTabTest::allColumnsAreInSight() {
    PunchQueryFixture fixture;
    for (int minute = 0; minute < 40; ++minute)
        addReadPunch(fixture.database(), u"A0002"_s, {2001, 11, 30}, QTime(8, minute));
    fixture.clickTab(1);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.at<TDBGrid>(Grid).verticalScrollBar()->isVisible(), PatienceMs);
    QCOMPARE(fixture.gridsOutOfSight(), QStringList());
}

void Form3PunchQueryTabTest::typingACodeShowsTheName() {
    PunchQueryFixture fixture;
    fixture.typeCode(u"A000"_s);
    QCOMPARE(fixture.name(), QString());
    QTest::keyClicks(&fixture.code(), u"2"_s);
    QCOMPARE(fixture.name(), u"陳美惠"_s);
    QCOMPARE(fixture.shown(Grid), AllPunches);
}

void Form3PunchQueryTabTest::enterShowsThePunchesOfTheEmployee() {
    PunchQueryFixture fixture;
    fixture.typeCode(u"A0001"_s);
    fixture.pressEnter();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(Grid), PunchesOfTheFirst);
    QCOMPARE(fixture.currentRow(Grid), 0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(fixture.code().text(), u"A0001"_s);
    QCOMPARE(fixture.name(), u"王小明"_s);
}

void Form3PunchQueryTabTest::enterShowsTheCodeAsItIsStored() {
    PunchQueryFixture fixture;
    fixture.typeCode(u"a0002"_s);
    fixture.pressEnter();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(Grid), QStringList{u"A0002|陳美惠|2001/3/5|07:58|255|001"_s});
    QCOMPARE(fixture.code().text(), u"A0002"_s);
    QCOMPARE(fixture.name(), u"陳美惠"_s);
}

void Form3PunchQueryTabTest::wrongCodeAndEnterTellsAndTheFocusStays() {
    PunchQueryFixture fixture;
    fixture.typeCode(u"A9999"_s);
    fixture.answers.expectMsgBox();
    fixture.pressEnter();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"無此【員工代碼】,請重新輸入"_s);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.code().hasFocus(), PatienceMs);
    QCOMPARE(fixture.code().text(), u"A9999"_s);
    QCOMPARE(fixture.code().selectedText(), u"A9999"_s);
    QCOMPARE(fixture.shown(Grid), AllPunches);
    // A right code takes its place as it is typed.
    QTest::keyClicks(&fixture.code(), u"A0001"_s);
    QCOMPARE(fixture.code().text(), u"A0001"_s);
    fixture.pressEnter();
    QCOMPARE(fixture.shown(Grid), PunchesOfTheFirst);
}

void Form3PunchQueryTabTest::theNameFoundLastStays() {
    PunchQueryFixture fixture;
    fixture.typeCode(u"A0001"_s);
    QTest::keyClicks(&fixture.code(), u"9"_s);
    QCOMPARE(fixture.code().text(), u"A00019"_s);
    QCOMPARE(fixture.name(), u"王小明"_s);
}

void Form3PunchQueryTabTest::enterInTheUntouchedBoxFails() {
    PunchQueryFixture fixture;
    fixture.code().setFocus();
    fixture.answers.expectMsgBox();
    fixture.pressEnter();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    // The list had been read by then.
    QCOMPARE(fixture.shown(Grid), QStringList());
    QVERIFY(!gOpenFailed);
}

void Form3PunchQueryTabTest::withoutTheSharedConnectionEnterFails() {
    PunchQueryFixture fixture;
    fixture.typeCode(u"A0001"_s);
    CloseDB();
    fixture.answers.expectMsgBox();
    fixture.pressEnter();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    // A bound source does not depend on that connection.
    QCOMPARE(fixture.shown(Grid), PunchesOfTheFirst);
}

void Form3PunchQueryTabTest::searchFillsTheCodeAndRunsTheQuery() {
    PunchQueryFixture fixture;
    fixture.expectPick(u"QFrmEmpNO"_s, 1);
    fixture.press(u"Search"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickEmpNo, u"A0002"_s);
    QCOMPARE(fixture.code().text(), u"A0002"_s);
    QCOMPARE(fixture.name(), u"陳美惠"_s);
    QCOMPARE(fixture.shown(Grid), QStringList{u"A0002|陳美惠|2001/3/5|07:58|255|001"_s});
    QTRY_VERIFY_WITH_TIMEOUT(fixture.code().hasFocus(), PatienceMs);
}

void Form3PunchQueryTabTest::theFirstSearchCancelledClearsTheCode() {
    PunchQueryFixture fixture;
    fixture.typeCode(u"A0001"_s);
    fixture.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(1)"_s);
    fixture.answers.expectMsgBox(); // the empty code is checked like a typed one
    fixture.press(u"Search"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"無此【員工代碼】,請重新輸入"_s);
    QCOMPARE(fixture.code().text(), QString());
    QCOMPARE(fixture.shown(Grid), AllPunches);
}

void Form3PunchQueryTabTest::theSecondSearchCancelledWritesBackTheEarlierPick() {
    PunchQueryFixture fixture;
    fixture.expectPick(u"QFrmEmpNO"_s, 0);
    fixture.press(u"Search"_s);
    fixture.typeCode(u"A0002"_s);
    fixture.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(1)"_s);
    fixture.press(u"Search"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.code().text(), u"A0001"_s);
    QCOMPARE(fixture.shown(Grid), PunchesOfTheFirst);
}

void Form3PunchQueryTabTest::clickOnTheTabShowsAllPunchesAgain() {
    PunchQueryFixture fixture;
    fixture.typeCode(u"A0001"_s);
    fixture.pressEnter();
    fixture.clickTab(1);
    QCOMPARE(fixture.shown(Grid), AllPunches);
    QCOMPARE(fixture.code().text(), u"A0001"_s);
}

void Form3PunchQueryTabTest::anApostropheEndsTheProgram() {
    const TestStore store;
    OtherProcess program(store.folder(), u"typeAnApostrophe"_s);
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines().size(), 1);
    QVERIFY2(program.lines().constFirst().startsWith(u"Pontrel|執行階段錯誤 '3075'"_s),
             qUtf8Printable(program.lines().constFirst()));
}

void Form3PunchQueryTabTest::worksByKeyboardAlone() {
    PunchQueryFixture fixture;
    QWindow* window = fixture.mainWindow().windowHandle();
    fixture.tabs().tabBar()->setFocus();
    QStringList order;
    for (int stop = 0; stop < 5; ++stop) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(window, Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({u"qt_tabwidget_tabbar"_s, u"Text1"_s, u"Search"_s, Grid, u"StbTool(8)"_s}));
    QTest::keyClick(window, Qt::Key_Tab);
    for (const char letter : {'a', '0', '0', '0', '2'})
        QTest::keyClick(window, letter);
    QTest::keyClick(window, Qt::Key_Return);
    QCOMPARE(fixture.shown(Grid), QStringList{u"A0002|陳美惠|2001/3/5|07:58|255|001"_s});
    QCOMPARE(QApplication::focusWidget()->objectName(), u"Text1"_s);
}

void Form3PunchQueryTabTest::controlsAreNamedAndReached() {
    const PunchQueryFixture fixture;
    QCOMPARE(fixture.at<QLabel>(u"Label4(0)"_s).buddy(), static_cast<QWidget*>(&fixture.code()));
}

int main(int argc, char** argv) {
    return runTests<Form3PunchQueryTabTest>(argc, argv, AllScenarios);
}

#include "Form3PunchQueryTabTest.moc"
