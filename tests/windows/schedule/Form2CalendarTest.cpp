#include "windows/schedule/Form2Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

class Form2CalendarTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void opensOnTheCalendarOfTodayWithTheDaysOff();
    void anEmptyTableLoadsAnEmptyGroup();
    void aClickMakesADayOffAtOnce();
    void twoClicksLeaveTheTableAsItWas();
    void afterUnmarkingTheOtherDaysAreStillShown();
    void aDayMarkedElsewhereIsTakenBackByTheClick();
    void aDayOfAnotherMonthTogglesInTheSameWay();
    void enterPicksADayToo();
    void arrowKeysOnlyMove();
    void rowsOfTheRosterDoNotChange();
    void loadSetsTheSharedDatesToToday();
    void tabsHaveTheirCaptions();
    void panel8Unloads();
    void aFailedOpenTells();
};

void Form2CalendarTest::opensOnTheCalendarOfTodayWithTheDaysOff() {
    Form2Fixture fixture;
    for (const QDate day : {QDate(2001, 1, 1), QDate(2001, 3, 9)})
        insertRow(fixture.database(), u"Rule01"_s, {{u"hymd", day}});
    fixture.open();
    QCOMPARE(fixture.mainWindow().windowTitle(), u"制度管理"_s);
    QCOMPARE(fixture.form().geometry(), QRect(0, 0, 574, 418));
    QCOMPARE(fixture.at<QTabWidget>(u"SSTab1"_s).currentIndex(), 0);
    QVERIFY(fixture.calendar().isVisible());
    QCOMPARE(fixture.calendar().date(), Form2Fixture::Today);
    QCOMPARE(fixture.calendar().days(u"nowork"_s), std::set<QDate>({{2001, 1, 1}, {2001, 3, 9}}));
}

void Form2CalendarTest::anEmptyTableLoadsAnEmptyGroup() {
    Form2Fixture fixture;
    fixture.open();
    QCOMPARE(fixture.calendar().days(u"nowork"_s), std::set<QDate>());
}

void Form2CalendarTest::aClickMakesADayOffAtOnce() {
    Form2Fixture fixture;
    fixture.open();
    fixture.clickDay(17);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList{u"2001-03-17"_s});
    QVERIFY(fixture.isDayOff({2001, 3, 17}));
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form2CalendarTest::twoClicksLeaveTheTableAsItWas() {
    Form2Fixture fixture;
    insertRow(fixture.database(), u"Rule01"_s, {{u"hymd", QDate(2001, 3, 9)}});
    fixture.open();
    for (const int day : {9, 9, 10, 10})
        fixture.clickDay(day);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList{u"2001-03-09"_s});
    QCOMPARE(fixture.calendar().days(u"nowork"_s), std::set<QDate>({{2001, 3, 9}}));
}

void Form2CalendarTest::afterUnmarkingTheOtherDaysAreStillShown() {
    Form2Fixture fixture;
    for (const int day : {9, 10, 11})
        insertRow(fixture.database(), u"Rule01"_s, {{u"hymd", QDate(2001, 3, day)}});
    fixture.open();
    // One more by another program, which the group built anew shows as well.
    fixture.store.connect()->execute(u"insert into Rule01(hymd) values(#2001/3/20#)"_s);
    QVERIFY(!fixture.isDayOff({2001, 3, 20}));
    fixture.clickDay(10);
    QCOMPARE(fixture.calendar().days(u"nowork"_s),
             std::set<QDate>({{2001, 3, 9}, {2001, 3, 11}, {2001, 3, 20}}));
}

void Form2CalendarTest::aDayMarkedElsewhereIsTakenBackByTheClick() {
    Form2Fixture fixture;
    fixture.open();
    fixture.store.connect()->execute(u"insert into Rule01(hymd) values(#2001/3/20#)"_s);
    // The table counts, and not what the calendar shows.
    fixture.clickDay(20);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList());
    QVERIFY(!fixture.isDayOff({2001, 3, 20}));
}

void Form2CalendarTest::aDayOfAnotherMonthTogglesInTheSameWay() {
    Form2Fixture fixture;
    fixture.open();
    fixture.calendar().setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList());
    fixture.clickDay(5);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList{u"2001-04-05"_s});
    fixture.clickDay(5);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList());
}

void Form2CalendarTest::enterPicksADayToo() {
    Form2Fixture fixture;
    fixture.open();
    fixture.calendar().setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList{u"2001-03-06"_s});
}

void Form2CalendarTest::arrowKeysOnlyMove() {
    Form2Fixture fixture;
    fixture.open();
    fixture.calendar().setFocus();
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End})
        QTest::keyClick(QApplication::focusWidget(), key);
    QCOMPARE(rowsOf(fixture.database(), u"Rule01"_s), QStringList());
    QVERIFY(fixture.calendar().date() != Form2Fixture::Today);
}

void Form2CalendarTest::rowsOfTheRosterDoNotChange() {
    Form2Fixture fixture;
    fixture.addPeople();
    addRoster(fixture.database(), u"10001"_s, {2001, 3, 17}, u"A"_s);
    fixture.open();
    fixture.clickDay(17);
    QCOMPARE(fixture.roster(), QStringList{u"10001|2001-03-17|A"_s});
}

void Form2CalendarTest::loadSetsTheSharedDatesToToday() {
    Form2Fixture fixture;
    gDate1 = gDate2 = QDate(2038, 1, 1);
    fixture.open();
    QCOMPARE(gDate1, Form2Fixture::Today);
    QCOMPARE(gDate2, Form2Fixture::Today);
}

void Form2CalendarTest::tabsHaveTheirCaptions() {
    Form2Fixture fixture;
    fixture.open();
    const auto& tabs = fixture.at<QTabWidget>(u"SSTab1"_s);
    QStringList captions;
    for (int tab = 0; tab < tabs.count(); ++tab)
        captions += tabs.tabText(tab);
    QCOMPARE(captions, QStringList({u"行事曆"_s, u"排班作業"_s, u"修改班表"_s}));
}

void Form2CalendarTest::panel8Unloads() {
    Form2Fixture fixture;
    fixture.open();
    QVERIFY(gDbOpen);
    fixture.press(u"StbTool(8)"_s);
    QVERIFY(!moduleWindow(2));
    QVERIFY(!gDbOpen);
    QCOMPARE(fixture.mainWindow().windowTitle(), u"Pontrel V1.1 - Norvale"_s);
}

void Form2CalendarTest::aFailedOpenTells() {
    Form2Fixture fixture;
    fixture.database().execute(u"delete * from Rule03"_s);
    Shell shell(fixture.store);
    OpenDB();
    // A table that is gone fails a source, after the shared connection has opened.
    fixture.answers.expectMsgBox();
    QVERIFY(QFile::remove(fixture.store.path()));
    OpenToolWindow(2);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QVERIFY(!moduleWindow(2));
    QVERIFY(!gOpenFailed);
    QCOMPARE(shell.window().windowTitle(), u"Pontrel V1.1 - Norvale"_s);
}

int main(int argc, char** argv) {
    return runTests<Form2CalendarTest>(argc, argv);
}

#include "Form2CalendarTest.moc"
