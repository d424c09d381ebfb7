#include "app/ModuleProbes.h"
#include "app/frmLogin.h"
#include "store/Clock.h"
#include "windows/attendance/Form3Exceptions.h"
#include "windows/attendance/Form3Fixture.h"

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Recalculate = u"CmdCtrl(5)"_s;
const QString Leave = u"90030001|事假|08:00|12:00|4"_s;

/// The two pages with a query: what differs between them.
struct Page {
    int tab;
    QString button;
    QString grid;
    QString leaveGrid;
    QString writeOffGrid;
};

const Page Exceptions{2, u"CmdCtrl(3)"_s, u"TDBG3(0)"_s, u"TDBG4(0)"_s, u"TDBG4(1)"_s};
const Page Results{3, u"CmdCtrl(9)"_s, u"TDBG3(1)"_s, u"TDBG4(2)"_s, u"TDBG4(3)"_s};

/// The exceptions of addExceptions(), a result without an exception, two units, and the names of leave and
/// write-offs.
void addDays(Database& database) {
    addExceptions(database);
    insertRow(database, u"Atte02"_s, withKey(u"10002"_s, {2001, 3, 6}, {}));
    insertRow(database, u"Base02"_s, {{u"UnitNo", u"10"}, {u"Unit", u"總務科"}});
    insertRow(database, u"Base02"_s, {{u"UnitNo", u"20"}, {u"Unit", u"人事室"}});
    database.execute(u"Update Base06 Set UnitNo = '10' Where EmpNo = '10001'"_s);
    database.execute(u"Update Base06 Set UnitNo = '20' Where EmpNo = '10002'"_s);
    insertRow(database, u"Holi01"_s, {{u"HoliNo", u"03"}, {u"HoliType", u"事假"}});
    insertRow(database, u"Canc01"_s, {{u"CnlNo", u"01"}, {u"CnlName", u"忘刷"}});
}

class QueryFixture : public Form3Fixture {
  public:
    void openPage(const Page& page) {
        open();
        clickTab(page.tab);
    }

    /// Presses the query button and answers its dialogs: the day, and in a lookup the row of that number.
    void query(const Page& page, int kind, int row = 1) {
        expectKind(kind);
        if (kind == 1 || kind == 2 || kind == 4)
            expectDate(u"900305"_s);
        if (kind == 2 || kind == 3)
            expectPick(u"QFrmEmpNO"_s, row);
        if (kind == 4)
            expectPick(u"QFrmUnitNo"_s, row);
        press(page.button);
    }
    void cancelQuery(const Page& page) {
        answers.expectClick(u"IFrmQuery"_s, u"Command1(1)"_s);
        press(page.button);
    }

    /// Day and employee of the rows shown.
    [[nodiscard]] QStringList shownKeys(const Page& page) const {
        QStringList keys;
        for (const QString& row : shown(page.grid))
            keys << row.section(u'|', 0, 1);
        return keys;
    }
};

const QString First5 = u"2001/3/5|10001"_s;
const QString First6 = u"2001/3/6|10001"_s;
const QString Second5 = u"2001/3/5|10002"_s;
const QString Second6 = u"2001/3/6|10002"_s;

} // namespace

/// The queries of the two pages of results, and the work that goes on with what they show.
class Form3QueryTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void eachKindShowsItsRows_data();
    void eachKindShowsItsRows();
    void queriedRowsAreShownWhole();
    void cancelAtFirstShowsAllRows();
    void cancelRepeatsTheLastKind();
    void theKindOfOnePageCountsOnTheOther();
    void aCancelledDateShowsNoRows_data();
    void aCancelledDateShowsNoRows();
    void withoutRowsTheSmallGridsKeepTheirs();
    void smallGridsFollowTheQueriedRows();
    void clickOnTheTabShowsAllRowsAgain();
    void recalculationAfterLeaveAndWriteOff();
    void fromLoginToAFinishedExceptionQueryByKeyboardAlone();
};

void Form3QueryTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
    gQueryKind = 0;
    clearPicks();
}

void Form3QueryTest::cleanup() {
    clock::setSource({});
    gQueryKind = 0;
    clearPicks();
}

void Form3QueryTest::eachKindShowsItsRows_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("exceptions");
    QTest::addColumn<QStringList>("results");
    QTest::newRow("all") << 0 << QStringList{First5, Second5, First6}
                         << QStringList{First5, Second5, First6, Second6};
    QTest::newRow("day") << 1 << QStringList{First5, Second5} << QStringList{First5, Second5};
    QTest::newRow("day and employee") << 2 << QStringList{Second5} << QStringList{Second5};
    QTest::newRow("employee") << 3 << QStringList{Second5} << QStringList{Second5, Second6};
    QTest::newRow("day and unit") << 4 << QStringList{Second5} << QStringList{Second5};
}

void Form3QueryTest::eachKindShowsItsRows() {
    QFETCH(const int, kind);
    QFETCH(const QStringList, exceptions);
    QFETCH(const QStringList, results);
    QueryFixture fixture;
    addDays(fixture.database());
    fixture.open();
    for (const auto& [page, expected] : {std::pair(Exceptions, exceptions), std::pair(Results, results)}) {
        fixture.clickTab(page.tab);
        fixture.query(page, kind);
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.shownKeys(page), expected);
        QCOMPARE(fixture.currentRow(page.grid), 0);
        QCOMPARE(fixture.panel(1), u"資料錄:1/%1"_s.arg(expected.size()));
    }
}

void Form3QueryTest::queriedRowsAreShownWhole() {
    QueryFixture fixture;
    addDays(fixture.database());
    fixture.openPage(Exceptions);
    fixture.query(Exceptions, 4);
    QCOMPARE(fixture.shown(Exceptions.grid), QStringList{u"2001/3/5|10002|陳美惠|A|||12:50|17:03|0|||0"_s});
    fixture.clickTab(3);
    fixture.query(Results, 3);
    QCOMPARE(fixture.shown(Results.grid), QStringList({u"2001/3/5|10002|陳美惠|A|||12:50|17:03|v|0"_s,
                                                       u"2001/3/6|10002|陳美惠|A|||||-|0"_s}));
}

void Form3QueryTest::cancelAtFirstShowsAllRows() {
    QueryFixture fixture;
    addDays(fixture.database());
    fixture.openPage(Results);
    fixture.cancelQuery(Results);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shownKeys(Results), QStringList({First5, Second5, First6, Second6}));
}

void Form3QueryTest::cancelRepeatsTheLastKind() {
    QueryFixture fixture;
    addDays(fixture.database());
    fixture.openPage(Exceptions);
    fixture.query(Exceptions, 2);
    fixture.clickTab(2);
    QCOMPARE(fixture.shownKeys(Exceptions), QStringList({First5, Second5, First6}));
    fixture.cancelQuery(Exceptions);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gQueryKind, 2);
    QCOMPARE(fixture.shownKeys(Exceptions), QStringList{Second5});
}

void Form3QueryTest::theKindOfOnePageCountsOnTheOther() {
    QueryFixture fixture;
    addDays(fixture.database());
    fixture.openPage(Exceptions);
    fixture.query(Exceptions, 3);
    fixture.clickTab(3);
    fixture.cancelQuery(Results);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shownKeys(Results), QStringList({Second5, Second6}));
}

void Form3QueryTest::aCancelledDateShowsNoRows_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("lookup");
    QTest::newRow("day") << 1 << QString();
    QTest::newRow("day and employee") << 2 << u"QFrmEmpNO"_s;
    QTest::newRow("day and unit") << 4 << u"QFrmUnitNo"_s;
}

void Form3QueryTest::aCancelledDateShowsNoRows() {
    QFETCH(const int, kind);
    QFETCH(const QString, lookup);
    QueryFixture fixture;
    addDays(fixture.database());
    fixture.openPage(Exceptions);
    fixture.expectKind(kind);
    fixture.expectDateCancelled();
    if (!lookup.isEmpty())
        fixture.expectPick(lookup, 1);
    fixture.press(Exceptions.button);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(Exceptions.grid), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
}

void Form3QueryTest::withoutRowsTheSmallGridsKeepTheirs() {
    QueryFixture fixture;
    addDays(fixture.database());
    addMorningLeave(fixture.database(), u"10001"_s);
    fixture.openPage(Exceptions);
    QCOMPARE(fixture.shown(Exceptions.leaveGrid), QStringList{Leave});
    fixture.expectKind(1);
    fixture.expectDateCancelled();
    fixture.press(Exceptions.button);
    QCOMPARE(fixture.shown(Exceptions.grid), QStringList());
    QCOMPARE(fixture.shown(Exceptions.leaveGrid), QStringList{Leave});
}

void Form3QueryTest::smallGridsFollowTheQueriedRows() {
    QueryFixture fixture;
    addDays(fixture.database());
    addMorningLeave(fixture.database(), u"10001"_s);
    addWriteOff(fixture.database(), u"10002"_s, Day, u"01"_s, QString(), QString(), QString());
    fixture.open();
    for (const Page& page : {Exceptions, Results}) {
        fixture.clickTab(page.tab);
        fixture.query(page, 2, 1);
        QCOMPARE(fixture.shown(page.leaveGrid), QStringList());
        QCOMPARE(fixture.shown(page.writeOffGrid), QStringList{u"2001/3/5|忘刷|||"_s});
        fixture.query(page, 2, 0);
        QCOMPARE(fixture.shown(page.leaveGrid), QStringList{Leave});
        QCOMPARE(fixture.shown(page.writeOffGrid), QStringList());
    }
}

void Form3QueryTest::clickOnTheTabShowsAllRowsAgain() {
    QueryFixture fixture;
    addDays(fixture.database());
    fixture.openPage(Results);
    fixture.query(Results, 2);
    QCOMPARE(fixture.shownKeys(Results), QStringList{Second5});
    fixture.clickTab(3);
    QCOMPARE(fixture.shownKeys(Results).size(), 4);
}

void Form3QueryTest::recalculationAfterLeaveAndWriteOff() {
    QueryFixture fixture;
    Database& database = fixture.database();
    addDays(database);
    addMorningLeave(database, u"10001"_s);
    addWriteOff(database, u"10002"_s, Day, u"01"_s, QString(), QString(), QString());
    fixture.openPage(Exceptions);
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Recalculate);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"2001/3/5異常處理已完成!!"_s);
    const Fields afternoon{
        {u"Time3", QTime(12, 50)}, {u"FT3", true}, {u"Time4", QTime(17, 3)}, {u"FT4", true}};
    const Fields onLeave = afternoon + Fields{{u"FH1", true}, {u"FH2", true}};
    // One punch of the two is excused: the day stays an exception.
    const Fields halfExcused = afternoon + Fields{{u"FC1", true}, {u"F2", true}, {u"Expt", true}};
    const QString untouched = dailyRow(u"10001"_s, {2001, 3, 6}, u"A"_s, missingMorning());
    const QString second = dailyRow(u"10002"_s, Day, u"A"_s, halfExcused);
    QCOMPARE(rowsOf(database, u"Atte03"_s), QStringList({second, untouched}));
    QCOMPARE(rowsOf(database, u"Atte02"_s),
             QStringList({dailyRow(u"10001"_s, Day, u"A"_s, onLeave), second, untouched,
                          dailyRow(u"10002"_s, {2001, 3, 6}, u"A"_s)}));
    QCOMPARE(fixture.shown(Exceptions.grid), QStringList{u"2001/3/5|10002|陳美惠|A|||12:50|17:03|0|||0"_s});
    QCOMPARE(fixture.shown(Exceptions.leaveGrid), QStringList());
    QCOMPARE(fixture.shown(Exceptions.writeOffGrid), QStringList{u"2001/3/5|忘刷|||"_s});
    fixture.clickTab(3);
    QCOMPARE(fixture.shown(Results.grid), QStringList({u"2001/3/5|10001|王小明|A|||12:50|17:03|-|0"_s,
                                                       u"2001/3/5|10002|陳美惠|A|||12:50|17:03|v|0"_s,
                                                       u"2001/3/6|10001|王小明|A|||12:50|17:03|v|0"_s,
                                                       u"2001/3/6|10002|陳美惠|A|||||-|0"_s}));
    QCOMPARE(fixture.shown(Results.leaveGrid), QStringList{Leave});
    QCOMPARE(fixture.shown(Results.writeOffGrid), QStringList());
}

void Form3QueryTest::fromLoginToAFinishedExceptionQueryByKeyboardAlone() {
    TestStore store;
    addDays(store.database());
    Shell shell(store);
    setAllRights(false);
    PromptAnswers answers;
    // Only the window that is in front is sent keys; where they go within it is its own affair.
    const auto press = [](const QWidget& dialog, const QList<int>& keys) {
        for (const int key : keys)
            QTest::keyClick(dialog.windowHandle(), static_cast<Qt::Key>(key));
    };
    const auto type = [](const QWidget& dialog, const char* letters) {
        for (; *letters != '\0'; ++letters)
            QTest::keyClick(dialog.windowHandle(), *letters);
    };
    answers.expect(u"frmLogin"_s, [&](QWidget& dialog) {
        type(dialog, "tester");
        press(dialog, {Qt::Key_Return});
        type(dialog, "secret");
        press(dialog, {Qt::Key_Return, Qt::Key_Return});
    });
    frmLogin().showModal();
    QCOMPARE(answers.trouble(), QString());
    MDI& window = shell.window();
    const auto tabTo = [&](const QString& name) {
        for (int stop = 0; stop < 20 && (!window.focusWidget() || window.focusWidget()->objectName() != name);
             ++stop)
            press(window, {Qt::Key_Tab});
        return window.focusWidget() ? window.focusWidget()->objectName() : QString();
    };
    QCOMPARE(tabTo(u"Tb(3)"_s), u"Tb(3)"_s);
    press(window, {Qt::Key_Space});
    QVERIFY(moduleWindow(3));
    QCOMPARE(tabTo(u"qt_tabwidget_tabbar"_s), u"qt_tabwidget_tabbar"_s);
    press(window, {Qt::Key_Right, Qt::Key_Right});
    QCOMPARE(tabTo(Exceptions.button), Exceptions.button);
    answers.expect(u"IFrmQuery"_s, [&](QWidget& dialog) {
        press(dialog, {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return, Qt::Key_Return});
    });
    answers.expect(u"FrmI1Date"_s, [&](QWidget& dialog) {
        type(dialog, "900305");
        press(dialog, {Qt::Key_Return, Qt::Key_Return, Qt::Key_Return});
    });
    answers.expect(u"QFrmEmpNO"_s, [&](QWidget& dialog) {
        type(dialog, "10002");
        press(dialog, {Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Space});
    });
    press(window, {Qt::Key_Return});
    QCOMPARE(answers.trouble(), QString());
    const auto& grid = control<TDBGrid>(*moduleWindow(3), Exceptions.grid);
    QStringList cells;
    for (int column = 0; column < grid.model()->columnCount(); ++column)
        cells << grid.model()->index(0, column).data().toString();
    QCOMPARE(grid.model()->rowCount(), 1);
    QCOMPARE(cells.join(u'|'), u"2001/3/5|10002|陳美惠|A|||12:50|17:03|0|||0"_s);
    QCOMPARE(control<QLabel>(*moduleWindow(3), u"StbTool(1)"_s).text(), u"資料錄:1/1"_s);
    // Round to the grid, through its rows, and out by the panel.
    QCOMPARE(tabTo(Exceptions.grid), Exceptions.grid);
    QCOMPARE(tabTo(u"StbTool(8)"_s), u"StbTool(8)"_s);
    press(window, {Qt::Key_Return});
    QVERIFY(!moduleWindow(3));
    QCOMPARE(window.windowTitle(), IdleCaption);
}

int main(int argc, char** argv) {
    return runTests<Form3QueryTest>(argc, argv);
}

#include "Form3QueryTest.moc"
