#include "store/Clock.h"
#include "windows/attendance/Form3Exceptions.h"
#include "windows/attendance/Form3Fixture.h"

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Grid = u"TDBG3(0)"_s;
const QString Recalculate = u"CmdCtrl(5)"_s;

} // namespace

class Form3RecalculationTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void cancelInTheRecalculationDoesNothing();
    void theDialogOpensOnTheDayOfTheException();
    void recalculationOfADayWithoutExceptions();
    void leaveForAMissingMorningClearsTheException();
    void recalculationShowsTheDaysRemainingExceptions();
    void recalculationTouchesNoOtherDay();
    void theRecalculationRunsUnderTheHourglass();
    void recalculationEndsSilentlyOnAnError();
    void aSecondRecalculationAddsCover();
    void clickOnTheTabShowsAllDaysAgain();
    void aRecalculationCountsUntilTheWindowCloses_data();
    void aRecalculationCountsUntilTheWindowCloses();
};

void Form3RecalculationTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void Form3RecalculationTest::cleanup() {
    clock::setSource({});
}

void Form3RecalculationTest::cancelInTheRecalculationDoesNothing() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    addMorningLeave(database, u"10001"_s);
    insertRow(database, u"AtteTemp1"_s, withKey(u"10002"_s, Day, {}));
    const QStringList before = dumpDailyTables(database);
    fixture.open();
    fixture.clickTab(2);
    QString caption;
    fixture.answers.expect(u"FrmI1Date"_s, [&](QWidget& dialog) {
        caption = control<QLabel>(dialog, u"Label1"_s).text();
        click(control(dialog, u"Command1(1)"_s));
    });
    fixture.press(Recalculate);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(caption, u"重算日期"_s);
    QCOMPARE(dumpDailyTables(database), before);
    QCOMPARE(fixture.shown(Grid).size(), 3);
    QVERIFY(!hourglass());
}

void Form3RecalculationTest::theDialogOpensOnTheDayOfTheException() {
    Form3Fixture fixture;
    addExceptions(fixture.database());
    fixture.open();
    fixture.clickTab(2);
    const auto dayOffered = [&fixture] {
        QDate day;
        fixture.answers.expect(u"FrmI1Date"_s, [&day](QWidget& dialog) {
            day = control<TDBDate>(dialog, u"TDBDate1(0)"_s).date();
            click(control(dialog, u"Command1(1)"_s));
        });
        fixture.press(Recalculate);
        return day;
    };
    QCOMPARE(dayOffered(), Day);
    auto& grid = fixture.at<TDBGrid>(Grid);
    while (grid.model()->index(grid.currentIndex().row(), 0).data().toString() != u"2001/3/6") {
        QVERIFY(grid.currentIndex().row() + 1 < grid.model()->rowCount());
        QTest::keyClick(&grid, Qt::Key_Down);
    }
    QCOMPARE(dayOffered(), QDate(2001, 3, 6));
    fixture.database().execute(u"delete * from Atte03"_s);
    fixture.clickTab(2);
    QCOMPARE(dayOffered(), QDate(2026, 3, 5)); // today, where there is none
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form3RecalculationTest::recalculationOfADayWithoutExceptions() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    insertRow(database, u"AtteTemp1"_s, withKey(u"10002"_s, Day, {}));
    const QStringList results = rowsOf(database, u"Atte02"_s);
    const QStringList exceptions = rowsOf(database, u"Atte03"_s);
    fixture.open();
    fixture.clickTab(2);
    fixture.expectDate(u"900307"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Recalculate);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constLast().text, u"2001/3/7異常處理已完成!!"_s);
    QCOMPARE(rowsOf(database, u"AtteTemp1"_s), QStringList());
    QCOMPARE(rowsOf(database, u"Atte02"_s), results);
    QCOMPARE(rowsOf(database, u"Atte03"_s), exceptions);
    QCOMPARE(fixture.shown(Grid), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    QVERIFY(!hourglass());
}

void Form3RecalculationTest::leaveForAMissingMorningClearsTheException() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    addMorningLeave(database, u"10001"_s);
    fixture.open();
    fixture.clickTab(2);
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Recalculate);
    QCOMPARE(fixture.answers.trouble(), QString());
    const Fields covered{{u"Time3", QTime(12, 50)},
                         {u"FT3", true},
                         {u"Time4", QTime(17, 3)},
                         {u"FT4", true},
                         {u"FH1", true},
                         {u"FH2", true}};
    QCOMPARE(rowsOf(database, u"Atte03"_s),
             QStringList({dailyRow(u"10002"_s, Day, u"A"_s, missingMorning()),
                          dailyRow(u"10001"_s, {2001, 3, 6}, u"A"_s, missingMorning())}));
    QCOMPARE(rowsOf(database, u"Atte02"_s),
             QStringList({dailyRow(u"10001"_s, Day, u"A"_s, covered),
                          dailyRow(u"10002"_s, Day, u"A"_s, missingMorning()),
                          dailyRow(u"10001"_s, {2001, 3, 6}, u"A"_s, missingMorning())}));
}

void Form3RecalculationTest::recalculationShowsTheDaysRemainingExceptions() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    addEmployee(database, u"10000"_s, {{u"EmpName", u"林大同"}});
    addException(database, u"10000"_s, Day, missingMorning());
    addMorningLeave(database, u"10001"_s);
    fixture.open();
    fixture.clickTab(2);
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Recalculate);
    QCOMPARE(fixture.answers.seen().constLast().text, u"2001/3/5異常處理已完成!!"_s);
    QCOMPARE(fixture.shown(Grid), QStringList({u"2001/3/5|10000|林大同|A|||12:50|17:03|0|||0"_s,
                                               u"2001/3/5|10002|陳美惠|A|||12:50|17:03|0|||0"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
}

void Form3RecalculationTest::recalculationTouchesNoOtherDay() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    const QString other = dailyRow(u"10001"_s, {2001, 3, 6}, u"A"_s, missingMorning());
    fixture.open();
    fixture.clickTab(2);
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Recalculate);
    QVERIFY(rowsOf(database, u"Atte02"_s).contains(other));
    QVERIFY(rowsOf(database, u"Atte03"_s).contains(other));
    QCOMPARE(rowsOf(database, u"Atte03"_s).size(), 3);
}

void Form3RecalculationTest::theRecalculationRunsUnderTheHourglass() {
    Form3Fixture fixture;
    addExceptions(fixture.database());
    fixture.open();
    fixture.clickTab(2);
    QList<bool> pointers;
    QObject::connect(&fixture.at<QProgressBar>(u"ProgressBar1"_s), &QProgressBar::valueChanged,
                     &fixture.form(), [&] { pointers += hourglass(); });
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    QVERIFY(!hourglass());
    fixture.press(Recalculate);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(!pointers.isEmpty());
    QVERIFY(!pointers.contains(false));
    QVERIFY(!hourglass());
}

void Form3RecalculationTest::recalculationEndsSilentlyOnAnError() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    database.execute(u"Update Base04 Set Cushion = 75"_s);
    fixture.open();
    fixture.clickTab(2);
    fixture.expectDate(u"900305"_s);
    fixture.press(Recalculate);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().size(), 1);
    QVERIFY(hourglass());
    // What was done until then stays: the day's flags are reset, its rows staged.
    QCOMPARE(rowsOfSelection(database, u"Select EmpNo, F1, Expt from Atte03 where UseDate = #2001/3/5#"_s),
             QStringList({u"10001|False|False"_s, u"10002|False|False"_s}));
    QCOMPARE(rowsOf(database, u"AtteTemp1"_s).size(), 2);
    QCOMPARE(fixture.shown(Grid).size(), 3);
    QVERIFY(fixture.isOpen());
}

void Form3RecalculationTest::aSecondRecalculationAddsCover() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    addExceptions(database);
    fixture.open();
    fixture.clickTab(2);
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Recalculate);
    addWriteOff(database, u"10002"_s, Day, u"01"_s, u"01"_s, QString(), QString());
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Recalculate);
    QCOMPARE(fixture.answers.trouble(), QString());
    const Fields covered{{u"Time3", QTime(12, 50)},
                         {u"FT3", true},
                         {u"Time4", QTime(17, 3)},
                         {u"FT4", true},
                         {u"FC1", true},
                         {u"FC2", true}};
    QCOMPARE(rowsOf(database, u"Atte02"_s).at(1), dailyRow(u"10002"_s, Day, u"A"_s, covered));
    QCOMPARE(fixture.shown(Grid), QStringList{u"2001/3/5|10001|王小明|A|||12:50|17:03|0|||0"_s});
}

void Form3RecalculationTest::clickOnTheTabShowsAllDaysAgain() {
    Form3Fixture fixture;
    addExceptions(fixture.database());
    fixture.open();
    fixture.clickTab(2);
    fixture.expectDate(u"900306"_s);
    fixture.answers.expectMsgBox();
    fixture.press(Recalculate);
    QCOMPARE(fixture.shown(Grid).size(), 1);
    fixture.clickTab(2);
    QCOMPARE(fixture.shown(Grid).size(), 3);
}

void Form3RecalculationTest::aRecalculationCountsUntilTheWindowCloses_data() {
    QTest::addColumn<bool>("recalculated");
    QTest::addColumn<bool>("reopened");
    QTest::addColumn<int>("minutes"); // What the results of an import that adds no punch hold afterwards.
    QTest::addRow("no recalculation: the results that are there stay") << false << false << 9;
    QTest::addRow("a recalculation: the results are written anew") << true << false << 0;
    QTest::addRow("reopened after it: they stay again") << true << true << 9;
}

void Form3RecalculationTest::aRecalculationCountsUntilTheWindowCloses() {
    QFETCH(const bool, recalculated);
    QFETCH(const bool, reopened);
    QFETCH(const int, minutes);
    Form3Fixture fixture;
    Database& database = fixture.database();
    addSlot(database, u"A"_s);
    addEmployee(database, u"10001"_s);
    addRoster(database, u"10001"_s, Day, u"A"_s);
    const QString file = fixture.store.writePunchFile(
        u"20010305.txt"_s, punchLine("10001", Day, QTime(12, 50)) + punchLine("10001", Day, QTime(17, 3)));
    fixture.open();
    fixture.answers.expectFile(file).expectMsgBox();
    fixture.press(u"CtrlCmd0(0)"_s);
    QCOMPARE(rowsOf(database, u"Atte03"_s), QStringList{dailyRow(u"10001"_s, Day, u"A"_s, missingMorning())});
    if (recalculated) {
        fixture.clickTab(2);
        fixture.expectDate(u"900307"_s);
        fixture.answers.expectMsgBox();
        fixture.press(Recalculate);
    }
    if (reopened) {
        fixture.form().unload();
        OpenToolWindow(3);
    }
    // No import would come to this figure.
    for (const QString& table : {u"Atte02"_s, u"Atte03"_s})
        database.execute(u"Update %1 Set Cushion3 = 9"_s.arg(table));
    database.execute(u"Delete * from AtteTemp1"_s);
    fixture.clickTab(0);
    fixture.answers.expectFile(file).expectMsgBox(MsgAnswer::No).expectMsgBox();
    fixture.press(u"CtrlCmd0(0)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    const QStringList expected{
        dailyRow(u"10001"_s, Day, u"A"_s, missingMorning() + Fields{{u"Cushion3", minutes}})};
    QCOMPARE(rowsOf(database, u"Atte02"_s), expected);
    QCOMPARE(rowsOf(database, u"Atte03"_s), expected);
}

int main(int argc, char** argv) {
    return runTests<Form3RecalculationTest>(argc, argv);
}

#include "Form3RecalculationTest.moc"
