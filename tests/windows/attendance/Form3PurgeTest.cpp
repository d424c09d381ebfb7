#include "store/Clock.h"
#include "windows/attendance/Form3Fixture.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QDate Day = Form3Fixture::PunchDay;
const QString Grid = u"TDBG1"_s;

} // namespace

class Form3PurgeTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void purgeTakesTheChosenDayAsWell();
    void cancelInThePurgeWipesAllPunches();
    void purgeOfAnEmptyListTellsAsWell();
    void purgeLeavesTheOtherTables();
    void itsButtonStandsApartAndWarns();
};

void Form3PurgeTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void Form3PurgeTest::cleanup() {
    clock::setSource({});
}

void Form3PurgeTest::purgeTakesTheChosenDayAsWell() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CtrlCmd0(9)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constLast().text, u"2001/3/5前之打卡資料已清除完畢!!"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), QStringList{u"10001|2001-03-06|08:03:00|255|001"_s});
    QCOMPARE(fixture.shown(Grid), QStringList{u"10001|王小明|2001/3/6|08:03|255|001"_s});
    QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
}

void Form3PurgeTest::cancelInThePurgeWipesAllPunches() {
    Form3Fixture fixture;
    fixture.addPunches();
    addReadPunch(fixture.database(), u"10001"_s, {2038, 1, 1}, QTime(8, 0));
    addReadPunch(fixture.database(), u"10001"_s, {2038, 1, 2}, QTime(8, 0));
    fixture.open();
    fixture.expectDateCancelled();
    fixture.answers.expectMsgBox();
    fixture.press(u"CtrlCmd0(9)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"2038/1/1前之打卡資料已清除完畢!!"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), QStringList{u"10001|2038-01-02|08:00:00|255|001"_s});
    QCOMPARE(fixture.shown(Grid).size(), 1);
}

void Form3PurgeTest::purgeOfAnEmptyListTellsAsWell() {
    Form3Fixture fixture;
    fixture.addPunches();
    fixture.open();
    fixture.expectDateCancelled();
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(fixture.shown(Grid), QStringList());
    fixture.expectDate(u"990101"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CtrlCmd0(9)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"2010/1/1前之打卡資料已清除完畢!!"_s);
    QCOMPARE(rowsOf(fixture.database(), u"Atte01"_s), QStringList());
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
}

void Form3PurgeTest::purgeLeavesTheOtherTables() {
    Form3Fixture fixture;
    Database& database = fixture.database();
    fixture.addPunches();
    addPunch(database, u"10001"_s, Day, QTime(8, 0));
    for (const QString& table : {u"Atte02"_s, u"Atte03"_s, u"AtteTemp1"_s})
        insertRow(database, table, {{u"EmpNo", u"10001"}, {u"UseDate", Day}, {u"TimeNo", u"A"}});
    insertRow(database, u"View02"_s, {{u"EmpNo", u"10001"}, {u"UseDate", Day}, {u"T1", QTime(8, 0)}});
    const auto others = [&] {
        return dumpDailyTables(database).filter(QRegularExpression(u"^(?!Atte01)"_s));
    };
    const QStringList before = others();
    fixture.open();
    fixture.expectDateCancelled();
    fixture.answers.expectMsgBox();
    fixture.press(u"CtrlCmd0(9)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(rowsOf(database, u"Atte01"_s), QStringList());
    QVERIFY(before.size() >= 5);
    QCOMPARE(others(), before);
}

void Form3PurgeTest::itsButtonStandsApartAndWarns() {
    Form3Fixture fixture;
    fixture.open();
    const auto place = [&fixture](int index) { return fixture.at(u"CtrlCmd0(%1)"_s.arg(index)).geometry(); };
    const int usual = place(8).left() - place(7).right();
    QVERIFY(place(9).left() - place(8).right() >= usual + 12);
    QCOMPARE(place(9).top(), place(8).top());
    QCOMPARE(place(9).right(), place(4).right()); // in line with the row above
    const QPushButton& purge = fixture.button(u"CtrlCmd0(9)"_s);
    QVERIFY(purge.toolTip().contains(u"按「取消」也會刪除，而且是全部的打卡記錄"_s));
    QCOMPARE(purge.accessibleDescription(), purge.toolTip());
}

int main(int argc, char** argv) {
    return runTests<Form3PurgeTest>(argc, argv);
}

#include "Form3PurgeTest.moc"
