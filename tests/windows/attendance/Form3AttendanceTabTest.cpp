#include "app/ModuleProbes.h"
#include "support/Patience.h"
#include "windows/attendance/Form3Exceptions.h"
#include "windows/attendance/Form3Fixture.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Grid = u"TDBG3(1)"_s;
const QString LeaveGrid = u"TDBG4(2)"_s;
const QString WriteOffGrid = u"TDBG4(3)"_s;
const QString Leave = u"90030001|03|08:00|12:00|4"_s;

/// The page of all results.
class ResultsFixture : public Form3Fixture {
  public:
    void openPage() {
        open();
        clickTab(3);
    }
};

/// The results of addExceptions(), and one that is no exception.
void addResults(Database& database) {
    addExceptions(database);
    insertRow(database, u"Atte02"_s,
              withKey(u"10002"_s, {2001, 3, 6},
                      {{u"Time1", QTime(8, 4)},
                       {u"Time2", QTime(12, 1)},
                       {u"Time3", QTime(12, 58)},
                       {u"Time4", QTime(17, 10)},
                       {u"Cushion3", 3}}));
}

const QStringList AllResults{
    u"2001/3/5|10001|王小明|A|||12:50|17:03|v|0"_s, u"2001/3/5|10002|陳美惠|A|||12:50|17:03|v|0"_s,
    u"2001/3/6|10001|王小明|A|||12:50|17:03|v|0"_s, u"2001/3/6|10002|陳美惠|A|08:04|12:01|12:58|17:10|-|3"_s};

} // namespace

class Form3AttendanceTabTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup();
    void clickOnTheTabShowsAllResults();
    void columnsAreTheStatedOnes();
    void buttonsHaveTheirCaptions();
    void allColumnsAreInSight();
    void smallGridsFollowTheRowInFocus();
    void smallGridsFollowTheTabInFront();
    void smallGridsAreNotReadWhilePainting();
    void withoutResultsTheSmallGridsShowAllRows();
    void jumpsOpenTheOtherModules_data();
    void jumpsOpenTheOtherModules();
    void jumpsToMissingModulesAreDisabled();
    void leaveButtonUnloads();
    void controlsAreNamedAndReached();
};

void Form3AttendanceTabTest::cleanup() {
    for (int index : {4, 5, 6, 7})
        registerModuleWindow(index, {});
}

void Form3AttendanceTabTest::clickOnTheTabShowsAllResults() {
    ResultsFixture fixture;
    addResults(fixture.database());
    fixture.openPage();
    QCOMPARE(fixture.tabs().currentIndex(), 3);
    QCOMPARE(fixture.shown(Grid), AllResults);
    QCOMPARE(fixture.currentRow(Grid), 0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
}

void Form3AttendanceTabTest::columnsAreTheStatedOnes() {
    ResultsFixture fixture;
    fixture.openPage();
    QCOMPARE(fixture.captions(Grid),
             QStringList({u"出勤日期"_s, u"員工碼"_s, u"姓名"_s, u"時段"_s, u"上午上班"_s, u"上午下班"_s,
                          u"下午上班"_s, u"下午下班"_s, u"異常"_s, u"逾時(分)"_s}));
    QCOMPARE(fixture.captions(LeaveGrid),
             QStringList({u"假單編號"_s, u"假名"_s, u"開始"_s, u"結束"_s, u"時數"_s}));
    QCOMPARE(fixture.captions(WriteOffGrid),
             QStringList({u"註銷日期"_s, u"上午上班"_s, u"上午下班"_s, u"下午上班"_s, u"下午下班"_s}));
}

void Form3AttendanceTabTest::buttonsHaveTheirCaptions() {
    ResultsFixture fixture;
    fixture.openPage();
    QStringList captions;
    for (int index = 6; index < 12; ++index)
        captions << fixture.button(u"CmdCtrl(%1)"_s.arg(index)).text();
    QCOMPARE(captions,
             QStringList({u"假單管理"_s, u"註銷管理"_s, u"加班管理"_s, u"查詢"_s, u"報表管理"_s, u"離開"_s}));
}

void Form3AttendanceTabTest::allColumnsAreInSight() {
    ResultsFixture fixture;
    for (int day = 1; day <= 30; ++day)
        insertRow(fixture.database(), u"Atte02"_s, withKey(u"10001"_s, {2001, 11, day}, {{u"Expt", true}}));
    fixture.openPage();
    QTRY_VERIFY_WITH_TIMEOUT(fixture.at<TDBGrid>(Grid).verticalScrollBar()->isVisible(), PatienceMs);
    QCOMPARE(fixture.gridsOutOfSight(), QStringList());
}

void Form3AttendanceTabTest::smallGridsFollowTheRowInFocus() {
    ResultsFixture fixture;
    Database& database = fixture.database();
    addResults(database);
    addMorningLeave(database, u"10001"_s);
    addWriteOff(database, u"10002"_s, Day, u"01"_s, QString(), QString(), u"02"_s);
    fixture.openPage();
    QCOMPARE(fixture.shown(LeaveGrid), QStringList{Leave});
    QCOMPARE(fixture.shown(WriteOffGrid), QStringList());
    auto& grid = fixture.at<TDBGrid>(Grid);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(fixture.shown(LeaveGrid), QStringList());
    QCOMPARE(fixture.shown(WriteOffGrid), QStringList{u"2001/3/5|01|||02"_s});
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(fixture.shown(LeaveGrid), QStringList());
    QCOMPARE(fixture.shown(WriteOffGrid), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:3/4"_s);
}

void Form3AttendanceTabTest::smallGridsFollowTheTabInFront() {
    ResultsFixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    insertRow(database, u"Atte02"_s, withKey(u"10000"_s, Day, {}));
    addMorningLeave(database, u"10001"_s);
    fixture.openPage();
    QCOMPARE(fixture.shown(LeaveGrid), QStringList());
    fixture.clickTab(2);
    QCOMPARE(fixture.shown(u"TDBG4(0)"_s), QStringList{Leave});
    fixture.clickTab(3);
    QCOMPARE(fixture.shown(LeaveGrid), QStringList());
}

void Form3AttendanceTabTest::smallGridsAreNotReadWhilePainting() {
    ResultsFixture fixture;
    Database& database = fixture.database();
    addResults(database);
    fixture.openPage();
    addMorningLeave(database, u"10001"_s);
    auto& grid = fixture.at<TDBGrid>(Grid);
    QVERIFY(!grid.grab().isNull());
    grid.viewport()->repaint();
    QCoreApplication::processEvents();
    QCOMPARE(fixture.shown(LeaveGrid), QStringList());
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Down);
    QTest::keyClick(&grid, Qt::Key_Up);
    QCOMPARE(fixture.shown(LeaveGrid), QStringList{Leave});
}

void Form3AttendanceTabTest::withoutResultsTheSmallGridsShowAllRows() {
    ResultsFixture fixture;
    Database& database = fixture.database();
    addMorningLeave(database, u"10001"_s);
    addMorningLeave(database, u"10002"_s);
    addWriteOff(database, u"10002"_s, Day, u"01"_s, QString(), QString(), u"02"_s);
    fixture.openPage();
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(fixture.shown(LeaveGrid), QStringList({Leave, Leave}));
    QCOMPARE(fixture.shown(WriteOffGrid), QStringList{u"2001/3/5|01|||02"_s});
}

void Form3AttendanceTabTest::jumpsOpenTheOtherModules_data() {
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("tab");
    QTest::newRow("假單管理 to the entry of leave notes") << 6 << 4 << 2;
    QTest::newRow("註銷管理 to the batch") << 7 << 5 << 1;
    QTest::newRow("加班管理 to the first tab") << 8 << 6 << 0;
    QTest::newRow("報表管理 to the attendance reports") << 10 << 7 << 2;
}

void Form3AttendanceTabTest::jumpsOpenTheOtherModules() {
    QFETCH(const int, button);
    QFETCH(const int, module);
    QFETCH(const int, tab);
    ProbeLog log;
    ResultsFixture fixture;
    fixture.open();
    fixture.openAmong([&] {
        registerModuleWindow(module, [&log](QWidget* parent) -> Window* {
            auto* window = new ProbeWindow(parent, u"Probe"_s, log);
            auto* tabs = new QTabWidget(window);
            tabs->setObjectName(u"SSTab1"_s);
            for (int index = 0; index < 6; ++index)
                tabs->addTab(new QWidget, QString::number(index));
            return window;
        });
    });
    fixture.clickTab(3);
    fixture.press(u"CmdCtrl(%1)"_s.arg(button));
    QVERIFY(!fixture.isOpen());
    QVERIFY(moduleWindow(module) && moduleWindow(module)->isVisible());
    QCOMPARE(control<QTabWidget>(*moduleWindow(module), u"SSTab1"_s).currentIndex(), tab);
}

void Form3AttendanceTabTest::jumpsToMissingModulesAreDisabled() {
    ResultsFixture fixture;
    fixture.open();
    fixture.openAmong();
    fixture.clickTab(3);
    QList<int> enabled;
    for (int index = 6; index < 12; ++index) {
        if (fixture.button(u"CmdCtrl(%1)"_s.arg(index)).isEnabled())
            enabled << index;
    }
    QCOMPARE(enabled, QList<int>({9, 11}));
}

void Form3AttendanceTabTest::leaveButtonUnloads() {
    ResultsFixture fixture;
    fixture.openPage();
    fixture.press(u"CmdCtrl(11)"_s);
    QVERIFY(!fixture.isOpen());
    QVERIFY(!gDbOpen);
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
}

void Form3AttendanceTabTest::controlsAreNamedAndReached() {
    ResultsFixture fixture;
    fixture.open();
    fixture.openAmong();
    fixture.clickTab(3);
    fixture.tabs().tabBar()->setFocus();
    QStringList order;
    for (int stop = 0; stop < 7; ++stop) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(fixture.mainWindow().windowHandle(), Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({u"qt_tabwidget_tabbar"_s, Grid, LeaveGrid, WriteOffGrid, u"CmdCtrl(9)"_s,
                                 u"CmdCtrl(11)"_s, u"StbTool(8)"_s}));
}

int main(int argc, char** argv) {
    return runTests<Form3AttendanceTabTest>(argc, argv);
}

#include "Form3AttendanceTabTest.moc"
