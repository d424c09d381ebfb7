#include "app/ModuleProbes.h"
#include "store/Clock.h"
#include "support/Patience.h"
#include "windows/attendance/Form3Exceptions.h"
#include "windows/attendance/Form3Fixture.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Grid = u"TDBG3(0)"_s;
const QString LeaveGrid = u"TDBG4(0)"_s;
const QString WriteOffGrid = u"TDBG4(1)"_s;
const QString Recalculate = u"CmdCtrl(5)"_s;

} // namespace

class Form3ExceptionTabTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void columnsAreTheStatedOnes();
    void buttonsHaveTheirCaptions();
    void allColumnsAreInSight();
    void smallGridsThatScrollHideNothing_data();
    void smallGridsThatScrollHideNothing();
    void captionsTellWhatTheyLeaveUnsaid();
    void clickOnTheTabBindsIt();
    void selectingTheTabFromCodeBindsIt();
    void resultsShowTimesAndWhatWasLeftOver();
    void smallGridsFollowTheRowInFocus();
    void smallGridsShowNames();
    void withoutExceptionsTheSmallGridsShowAllRows();
    void jumpsOpenTheOtherModules_data();
    void jumpsOpenTheOtherModules();
    void jumpsToMissingModulesAreDisabled();
    void leavePanelUnloads();
    void controlsAreNamedAndReached();
};

void Form3ExceptionTabTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void Form3ExceptionTabTest::cleanup() {
    clock::setSource({});
    for (int index : {4, 5, 6, 7})
        registerModuleWindow(index, {});
}

void Form3ExceptionTabTest::columnsAreTheStatedOnes() {
    Form3Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.captions(Grid),
             QStringList({u"出勤日期"_s, u"員工碼"_s, u"姓名"_s, u"時段"_s, u"上班"_s, u"下班"_s, u"上班"_s,
                          u"下班"_s, u"遲到.早退"_s, u"時間一"_s, u"時間二"_s, u"逾時(分)"_s}));
    QCOMPARE(fixture.captions(LeaveGrid),
             QStringList({u"假單編號"_s, u"假名"_s, u"開始"_s, u"結束"_s, u"時數"_s}));
    QCOMPARE(fixture.captions(WriteOffGrid),
             QStringList({u"註銷日期"_s, u"上午上班"_s, u"上午下班"_s, u"下午上班"_s, u"下午下班"_s}));
}

void Form3ExceptionTabTest::buttonsHaveTheirCaptions() {
    Form3Fixture fixture;
    fixture.open();
    QStringList captions;
    for (int index = 0; index < 6; ++index)
        captions << fixture.button(u"CmdCtrl(%1)"_s.arg(index)).text();
    QCOMPARE(captions, QStringList({u"假單管理"_s, u"註銷管理"_s, u"加班管理"_s, u"查詢"_s, u"報表管理"_s,
                                    u"重新計算"_s}));
}

void Form3ExceptionTabTest::allColumnsAreInSight() {
    Form3Fixture fixture;
    for (int day = 1; day <= 30; ++day)
        insertRow(fixture.database(), u"Atte03"_s, withKey(u"10001"_s, {2001, 11, day}, {{u"Expt", true}}));
    fixture.open();
    fixture.clickTab(2);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.at<TDBGrid>(Grid).verticalScrollBar()->isVisible(), PatienceMs);
    QCOMPARE(fixture.gridsOutOfSight(), QStringList());
}

void Form3ExceptionTabTest::smallGridsThatScrollHideNothing_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QStringList>("grids");
    QTest::newRow("exceptions") << 2 << QStringList{LeaveGrid, WriteOffGrid};
    QTest::newRow("results") << 3 << QStringList{u"TDBG4(2)"_s, u"TDBG4(3)"_s};
}

/// Where there is no result the small grids list all leave and all write-offs, so that both scroll.
void Form3ExceptionTabTest::smallGridsThatScrollHideNothing() {
    QFETCH(const int, tab);
    QFETCH(const QStringList, grids);
    Form3Fixture fixture;
    Database& database = fixture.database();
    insertRow(database, u"Holi01"_s, {{u"HoliNo", u"03"}, {u"HoliType", u"特別休假"}});
    insertRow(database, u"Canc01"_s, {{u"CnlNo", u"01"}, {u"CnlName", u"忘記刷卡"}});
    for (int day = 10; day <= 30; ++day) {
        addLeaveDay(database, u"10001"_s, {2001, 12, day}, u"03"_s, QTime(8, 0), QTime(12, 0),
                    {{u"BusNo", u"2001121000%1"_s.arg(day)}});
        addWriteOff(database, u"10001"_s, {2001, 12, day}, u"01"_s, u"01"_s, u"01"_s, u"01"_s);
    }
    fixture.open();
    fixture.clickTab(tab);
    for (const QString& name : grids) {
        const auto& grid = fixture.at<TDBGrid>(name);
        QTRY_VERIFY_WITH_TIMEOUT(grid.verticalScrollBar()->isVisible(), PatienceMs);
        QCOMPARE(grid.horizontalScrollBar()->maximum(), 0);
        QCOMPARE(grid.model()->rowCount(), 21);
        const int margins = 2 * (grid.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &grid) + 1);
        for (int column = 0; column < grid.model()->columnCount(); ++column) {
            const QString text = grid.model()->index(0, column).data().toString();
            const int needed = grid.fontMetrics().horizontalAdvance(text) + margins + 1; // the line beside it
            QVERIFY2(
                !text.isEmpty() && grid.columnWidth(column) >= needed,
                qPrintable(u"%1 %2: %3 of %4"_s.arg(name, text).arg(grid.columnWidth(column)).arg(needed)));
        }
        QVERIFY(!grid.accessibleName().isEmpty());
        QVERIFY(!grid.accessibleDescription().isEmpty());
    }
    QCOMPARE(fixture.gridsOutOfSight(), QStringList());
}

void Form3ExceptionTabTest::captionsTellWhatTheyLeaveUnsaid() {
    Form3Fixture fixture;
    fixture.open();
    const QAbstractItemModel& model = *fixture.at<TDBGrid>(Grid).model();
    QStringList hints;
    for (int column = 0; column < model.columnCount(); ++column) {
        hints << model.headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString();
        QCOMPARE(model.headerData(column, Qt::Horizontal, Qt::AccessibleDescriptionRole).toString(),
                 hints.constLast());
    }
    QCOMPARE(hints.mid(4, 4), QStringList({u"上午上班"_s, u"上午下班"_s, u"下午上班"_s, u"下午下班"_s}));
    QCOMPARE(hints.at(8), u"當日最後一次遲到或早退的位置：\n"
                          u"0 無，1 上午上班遲到，2 上午下班早退，3 下午上班遲到，4 下午下班早退"_s);
    hints.remove(4, 5);
    QCOMPARE(hints.join(QString()), QString());
}

void Form3ExceptionTabTest::clickOnTheTabBindsIt() {
    Form3Fixture fixture;
    addExceptions(fixture.database());
    fixture.open();
    fixture.clickTab(2);
    QCOMPARE(fixture.tabs().currentIndex(), 2);
    QCOMPARE(fixture.shown(Grid), QStringList({u"2001/3/5|10001|王小明|A|||12:50|17:03|0|||0"_s,
                                               u"2001/3/5|10002|陳美惠|A|||12:50|17:03|0|||0"_s,
                                               u"2001/3/6|10001|王小明|A|||12:50|17:03|0|||0"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
}

void Form3ExceptionTabTest::selectingTheTabFromCodeBindsIt() {
    Form3Fixture fixture;
    addExceptions(fixture.database());
    fixture.open();
    fixture.tabs().setCurrentIndex(2);
    QCOMPARE(fixture.shown(Grid).size(), 3);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
}

void Form3ExceptionTabTest::resultsShowTimesAndWhatWasLeftOver() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addEmployee(database, u"10001"_s);
    insertRow(database, u"Atte03"_s,
              withKey(u"10001"_s, Day,
                      {{u"Time1", QTime(8, 31)},
                       {u"Time2", QTime(12, 1)},
                       {u"Time3", QTime(13, 4)},
                       {u"Time4", QTime(16, 40)},
                       {u"T1", QTime(9, 5)},
                       {u"T2", QTime(10, 15)},
                       {u"T3", QTime(11, 0)},
                       {u"DelayF", 4},
                       {u"Cushion3", 4},
                       {u"Expt", true}}));
    fixture.open();
    fixture.clickTab(2);
    QCOMPARE(fixture.shown(Grid),
             QStringList{u"2001/3/5|10001|員工10001|A|08:31|12:01|13:04|16:40|4|09:05|10:15|4"_s});
}

void Form3ExceptionTabTest::smallGridsFollowTheRowInFocus() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    addMorningLeave(database, u"10001"_s);
    addWriteOff(database, u"10002"_s, Day, u"01"_s, QString(), QString(), u"02"_s);
    fixture.open();
    fixture.clickTab(2);
    const QStringList leave{u"90030001|03|08:00|12:00|4"_s};
    const QStringList writeOff{u"2001/3/5|01|||02"_s};
    QCOMPARE(fixture.shown(LeaveGrid), leave);
    QCOMPARE(fixture.shown(WriteOffGrid), QStringList());
    auto& grid = fixture.at<TDBGrid>(Grid);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(fixture.shown(LeaveGrid), QStringList());
    QCOMPARE(fixture.shown(WriteOffGrid), writeOff);
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(fixture.shown(LeaveGrid), QStringList());
    QCOMPARE(fixture.shown(WriteOffGrid), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:3/3"_s);
    const QPoint first = grid.visualRect(grid.model()->index(0, 0)).center();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, first);
    QCOMPARE(fixture.shown(LeaveGrid), leave);
}

void Form3ExceptionTabTest::smallGridsShowNames() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    addMorningLeave(database, u"10001"_s);
    addWriteOff(database, u"10001"_s, Day, u"01"_s, u"02"_s, u"09"_s, QString());
    insertRow(database, u"Holi01"_s, {{u"HoliNo", u"03"}, {u"HoliType", u"事假"}});
    insertRow(database, u"Canc01"_s, {{u"CnlNo", u"01"}, {u"CnlName", u"忘刷"}});
    insertRow(database, u"Canc01"_s, {{u"CnlNo", u"02"}, {u"CnlName", u"公出"}});
    fixture.open();
    fixture.clickTab(2);
    QCOMPARE(fixture.shown(LeaveGrid), QStringList{u"90030001|事假|08:00|12:00|4"_s});
    QCOMPARE(fixture.shown(WriteOffGrid), QStringList{u"2001/3/5|忘刷|公出|09|"_s});
}

void Form3ExceptionTabTest::withoutExceptionsTheSmallGridsShowAllRows() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addMorningLeave(database, u"10001"_s);
    addMorningLeave(database, u"10002"_s);
    fixture.open();
    fixture.clickTab(2);
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(fixture.shown(LeaveGrid).size(), 2);
}

void Form3ExceptionTabTest::jumpsOpenTheOtherModules_data() {
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("tab");
    QTest::newRow("假單管理 to the entry of leave notes") << 0 << 4 << 2;
    QTest::newRow("註銷管理 to the batch") << 1 << 5 << 1;
    QTest::newRow("加班管理 to the first tab") << 2 << 6 << 0;
    QTest::newRow("報表管理 to the attendance reports") << 4 << 7 << 2;
}

void Form3ExceptionTabTest::jumpsOpenTheOtherModules() {
    QFETCH(int, button);
    QFETCH(int, module);
    QFETCH(int, tab);
    ProbeLog log;
    Form3Fixture fixture;
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
    fixture.clickTab(2);
    // Rights gate the toolbar alone.
    setAllRights(false);
    fixture.press(u"CmdCtrl(%1)"_s.arg(button));
    QVERIFY(!fixture.isOpen());
    QVERIFY(moduleWindow(module) && moduleWindow(module)->isVisible());
    QCOMPARE(control<QTabWidget>(*moduleWindow(module), u"SSTab1"_s).currentIndex(), tab);
    QCOMPARE(enabledButtons(), QList<int>{module});
    QCOMPARE(log.loads, 1);
}

void Form3ExceptionTabTest::jumpsToMissingModulesAreDisabled() {
    Form3Fixture fixture;
    fixture.open();
    fixture.openAmong();
    fixture.clickTab(2);
    QList<int> enabled;
    for (int index = 0; index < 6; ++index) {
        if (fixture.button(u"CmdCtrl(%1)"_s.arg(index)).isEnabled())
            enabled << index;
    }
    QCOMPARE(enabled, QList<int>({3, 5}));
}

void Form3ExceptionTabTest::leavePanelUnloads() {
    Form3Fixture fixture;
    fixture.open();
    fixture.clickTab(2);
    click(fixture.at(u"StbTool(8)"_s));
    QVERIFY(!fixture.isOpen());
    QCOMPARE(fixture.mainWindow().windowTitle(), IdleCaption);
}

void Form3ExceptionTabTest::controlsAreNamedAndReached() {
    Form3Fixture fixture;
    fixture.open();
    fixture.openAmong();
    fixture.clickTab(2);
    fixture.tabs().tabBar()->setFocus();
    QStringList order;
    for (int stop = 0; stop < 7; ++stop) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(fixture.mainWindow().windowHandle(), Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({u"qt_tabwidget_tabbar"_s, Grid, LeaveGrid, WriteOffGrid, u"CmdCtrl(3)"_s,
                                 Recalculate, u"StbTool(8)"_s}));
}

int main(int argc, char** argv) {
    return runTests<Form3ExceptionTabTest>(argc, argv);
}

#include "Form3ExceptionTabTest.moc"
