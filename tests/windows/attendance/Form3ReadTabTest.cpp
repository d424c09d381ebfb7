#include "app/ModuleProbes.h"
#include "store/Clock.h"
#include "support/Patience.h"
#include "windows/attendance/Form3Fixture.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QDate Day = Form3Fixture::PunchDay;
const QString Grid = u"TDBG1"_s;

} // namespace

class Form3ReadTabTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void opensOnTheReadTabWithAllPunches();
    void standsInTheClientAreaInItsSize();
    void tabsHaveTheirCaptions();
    void buttonsHaveTheirCaptions();
    void columnsAreTheStatedOnes();
    void allColumnsAreInSight();
    void movesStopAtTheEnds();
    void theGridMovesTheCounter();
    void queryShowsTheDayInOrder();
    void cancelledQueryShowsAnEmptyDay();
    void movesInAnEmptyListDoNothing();
    void refreshShowsWhatOthersHaveWritten();
    void clickOnTheTabBindsItAnew();
    void leaveButtonUnloads();
    void leavePanelUnloads();
    void otherPanelsDoNothing();
    void printJumpsToTheAttendanceReports();
    void jumpsToMissingModulesAreDisabled();
    void aFailedOpenTellsAndEndsIdle();
    void aFailedBindingOfATabTells();
    void worksByKeyboardAlone();
};

void Form3ReadTabTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void Form3ReadTabTest::cleanup() {
    clock::setSource({});
}

void Form3ReadTabTest::opensOnTheReadTabWithAllPunches() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    QCOMPARE(fixture.tabs().currentIndex(), 0);
    QCOMPARE(
        fixture.shown(Grid),
        QStringList({u"10001|王小明|2001/3/4|08:01|255|001"_s, u"10001|王小明|2001/3/5|17:02|255|001"_s,
                     u"10002|陳美惠|2001/3/5|07:58|255|001"_s, u"10001|王小明|2001/3/6|08:03|255|001"_s}));
    QCOMPARE(fixture.currentRow(Grid), 0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
    QCOMPARE(fixture.panel(2), QString());
    QVERIFY(fixture.at<QProgressBar>(u"ProgressBar1"_s).isHidden());
}

void Form3ReadTabTest::standsInTheClientAreaInItsSize() {
    Form3Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.form().geometry(), QRect(0, 0, 574, 418));
    QCOMPARE(fixture.mainWindow().windowTitle(), u"出勤管理"_s);
}

void Form3ReadTabTest::tabsHaveTheirCaptions() {
    Form3Fixture fixture;
    fixture.open();
    QStringList captions;
    for (int tab = 0; tab < fixture.tabs().count(); ++tab)
        captions << fixture.tabs().tabText(tab);
    QCOMPARE(captions, QStringList({u"讀取記錄"_s, u"記錄查詢"_s, u"異常處理"_s, u"勤惰查詢"_s}));
}

void Form3ReadTabTest::buttonsHaveTheirCaptions() {
    Form3Fixture fixture;
    fixture.open();
    QStringList captions;
    for (int index = 0; index < 10; ++index)
        captions << fixture.button(u"CtrlCmd0(%1)"_s.arg(index)).text();
    QCOMPARE(captions, QStringList({u"讀取記錄"_s, u"查詢"_s, u"首筆"_s, u"上一筆"_s, u"下一筆"_s, u"末筆"_s,
                                    u"更新"_s, u"列印"_s, u"離開"_s, u"清除打卡記錄"_s}));
}

void Form3ReadTabTest::columnsAreTheStatedOnes() {
    Form3Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.captions(Grid),
             QStringList({u"員工碼"_s, u"姓名"_s, u"打卡日期"_s, u"打卡時間"_s, u"班別"_s, u"機號"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
}

void Form3ReadTabTest::allColumnsAreInSight() {
    Form3Fixture fixture;
    for (int minute = 0; minute < 40; ++minute)
        addReadPunch(fixture.database(), u"10001"_s, Day, QTime(8, minute));
    fixture.open();
    QTRY_VERIFY_WITH_TIMEOUT(fixture.at<TDBGrid>(Grid).verticalScrollBar()->isVisible(), PatienceMs);
    QCOMPARE(fixture.gridsOutOfSight(), QStringList());
}

void Form3ReadTabTest::movesStopAtTheEnds() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    QStringList counters;
    for (const QString& name : {u"CtrlCmd0(3)"_s, u"CtrlCmd0(4)"_s, u"CtrlCmd0(5)"_s, u"CtrlCmd0(4)"_s,
                                u"CtrlCmd0(3)"_s, u"CtrlCmd0(2)"_s}) {
        fixture.press(name);
        counters << fixture.panel(1);
        QCOMPARE(counters.constLast(), u"資料錄:%1/4"_s.arg(fixture.currentRow(Grid) + 1));
    }
    QCOMPARE(counters, QStringList({u"資料錄:1/4"_s, u"資料錄:2/4"_s, u"資料錄:4/4"_s, u"資料錄:4/4"_s,
                                    u"資料錄:3/4"_s, u"資料錄:1/4"_s}));
}

void Form3ReadTabTest::theGridMovesTheCounter() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    auto& grid = fixture.at<TDBGrid>(Grid);
    const QPoint third = grid.visualRect(grid.model()->index(2, 0)).center();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, third);
    QCOMPARE(fixture.panel(1), u"資料錄:3/4"_s);
}

void Form3ReadTabTest::queryShowsTheDayInOrder() {
    Form3Fixture fixture;
    fixture.addPunches();
    addReadPunch(fixture.database(), u"10001"_s, Day, QTime(8, 0));
    fixture.open();
    fixture.expectDate(u"900305"_s);
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(Grid),
             QStringList({u"10001|王小明|2001/3/5|08:00|255|001"_s, u"10001|王小明|2001/3/5|17:02|255|001"_s,
                          u"10002|陳美惠|2001/3/5|07:58|255|001"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
}

void Form3ReadTabTest::cancelledQueryShowsAnEmptyDay() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    fixture.expectDateCancelled();
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(Grid), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s).size(), 4);
}

void Form3ReadTabTest::movesInAnEmptyListDoNothing() {
    Form3Fixture fixture;
    fixture.open();
    for (int index : {2, 3, 4, 5}) {
        fixture.press(u"CtrlCmd0(%1)"_s.arg(index));
        QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    }
    QVERIFY(fixture.isOpen());
}

void Form3ReadTabTest::refreshShowsWhatOthersHaveWritten() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    fixture.press(u"CtrlCmd0(5)"_s);
    addReadPunch(fixture.database(), u"10002"_s, {2001, 3, 6}, QTime(8, 4));
    QCOMPARE(fixture.shown(Grid).size(), 4);
    fixture.press(u"CtrlCmd0(6)"_s);
    QCOMPARE(fixture.shown(Grid).size(), 5);
    QCOMPARE(fixture.shown(Grid).constLast(), u"10002|陳美惠|2001/3/6|08:04|255|001"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/5"_s);
}

void Form3ReadTabTest::clickOnTheTabBindsItAnew() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    fixture.expectDateCancelled();
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(fixture.shown(Grid), QStringList());
    fixture.clickTab(0);
    QCOMPARE(fixture.shown(Grid).size(), 4);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
}

void Form3ReadTabTest::leaveButtonUnloads() {
    Form3Fixture fixture;
    fixture.open();
    fixture.press(u"CtrlCmd0(8)"_s);
    QVERIFY(!fixture.isOpen());
    QVERIFY(!gDbOpen);
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
    QVERIFY(button(3).isEnabled());
}

void Form3ReadTabTest::leavePanelUnloads() {
    Form3Fixture fixture;
    fixture.open();
    click(fixture.at(u"StbTool(8)"_s));
    QVERIFY(!fixture.isOpen());
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
}

void Form3ReadTabTest::otherPanelsDoNothing() {
    Form3Fixture fixture;
    fixture.open();
    for (int index = 1; index <= 7; ++index)
        click(fixture.at(u"StbTool(%1)"_s.arg(index)));
    QVERIFY(fixture.isOpen());
}

void Form3ReadTabTest::printJumpsToTheAttendanceReports() {
    Form3Fixture fixture;
    fixture.open();
    fixture.form().unload();
    registerModuleWindow(7, [](QWidget* parent) -> Window* {
        static ProbeLog log;
        auto* window = new ProbeWindow(parent, u"Form7"_s, log);
        auto* tabs = new QTabWidget(window);
        tabs->setObjectName(u"SSTab1"_s);
        for (int tab = 0; tab < 6; ++tab)
            tabs->addTab(new QWidget, QString::number(tab));
        return window;
    });
    OpenToolWindow(3);
    QVERIFY(fixture.button(u"CtrlCmd0(7)"_s).isEnabled());
    fixture.press(u"CtrlCmd0(7)"_s);
    QVERIFY(!fixture.isOpen());
    QVERIFY(moduleWindow(7) && moduleWindow(7)->isVisible());
    QCOMPARE(control<QTabWidget>(*moduleWindow(7), u"SSTab1"_s).currentIndex(), 2);
    registerModuleWindow(7, {});
}

void Form3ReadTabTest::jumpsToMissingModulesAreDisabled() {
    Form3Fixture fixture;
    fixture.open();
    fixture.openAmong();
    QVERIFY(!fixture.button(u"CtrlCmd0(7)"_s).isEnabled());
    fixture.press(u"CtrlCmd0(7)"_s);
    QVERIFY(fixture.isOpen());
}

void Form3ReadTabTest::aFailedOpenTellsAndEndsIdle() {
    Form3Fixture fixture;
    fixture.open();
    fixture.form().unload();
    OpenDB();
    gDbPath = u"/nowhere/DB/"_s;
    fixture.answers.expectMsgBox();
    OpenToolWindow(3);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QVERIFY(!fixture.isOpen());
    QVERIFY(!gOpenFailed);
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
}

void Form3ReadTabTest::aFailedBindingOfATabTells() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    CloseDB();
    fixture.answers.expectMsgBox();
    fixture.clickTab(0);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QVERIFY(fixture.isOpen());
    OpenDB();
    fixture.clickTab(0);
    QCOMPARE(fixture.shown(Grid).size(), 4);
}

void Form3ReadTabTest::worksByKeyboardAlone() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    QWindow* window = fixture.mainWindow().windowHandle();
    QStringList order;
    for (int stop = 0; stop < 13; ++stop) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(window, Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({u"qt_tabwidget_tabbar"_s, u"TDBG1"_s, u"CtrlCmd0(0)"_s, u"CtrlCmd0(1)"_s,
                                 u"CtrlCmd0(2)"_s, u"CtrlCmd0(3)"_s, u"CtrlCmd0(4)"_s, u"CtrlCmd0(5)"_s,
                                 u"CtrlCmd0(6)"_s, u"CtrlCmd0(7)"_s, u"CtrlCmd0(8)"_s, u"CtrlCmd0(9)"_s,
                                 u"StbTool(8)"_s}));
    // Round again to the moves: Enter presses the button that has the focus.
    for (int stop = 0; stop < 6; ++stop)
        QTest::keyClick(window, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"CtrlCmd0(4)"_s);
    QTest::keyClick(window, Qt::Key_Return);
    QCOMPARE(fixture.panel(1), u"資料錄:2/4"_s);
}

int main(int argc, char** argv) {
    return runTests<Form3ReadTabTest>(argc, argv);
}

#include "Form3ReadTabTest.moc"
