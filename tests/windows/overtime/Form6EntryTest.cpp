#include "support/RefuseDeletes.h"
#include "windows/overtime/Form6Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::entry;
using namespace Qt::StringLiterals;

/// The tab where overtime is entered row by row.
class Form6EntryTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theBarFollowsTheState();
    void hoursFollowFromTheTimes_data();
    void hoursFollowFromTheTimes();
    void hoursTypedOverStand();
    void aLaterStartLeavesTheHours();
    void anEmptyTimeCountsNothing();
    void aNewRowIsEmptyAndTheUsers();
    void theEmployeeBringsHisNames();
    void anUnknownEmployeeKeepsTheNamesAndIsSaved();
    void theRowOfAnUnknownEmployeeKeepsTheNames();
    void nothingNeedBeEntered();
    void anEditKeepsWhoEnteredTheRow();
    void restAndDrawAreSaved();
    void theLookupFillsTheEmployee();
    void punchesComeWithTheFinalEnter();
    void aDayWithoutPunchesEmptiesTheBoxes();
    void punchesNeedEmployeeAndDate();
    void punchesComeInAnEditAsWell();
    void aRowOfTheImportHasNoEnd();
    void aDeleteEndsOnTheLastRow();
    void aRefusedDeleteLeavesTheRow();
};

void Form6EntryTest::theBarFollowsTheState() {
    Form6Fixture it;
    it.open();
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 5, 10, 11, 12, 13}));
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    it.press(Add);
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({3, 4}));
    QCOMPARE(it.tabsOn(), QList<int>{0});
    QCOMPARE(it.focused(), u"Text1(0)"_s);
    QCOMPARE(it.panel(2), u"新增資料"_s);
    QVERIFY(!it.panel8Raised());
    it.press(Cancel);
    it.add(Form6Fixture::evening(u"10001"_s, 1, 2));
    it.press(Refresh);
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 1, 2, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    QCOMPARE(it.tabsOn(), QList<int>({0, 1, 2, 3}));
    QVERIFY(it.panel8Raised() && !it.at(u"Frame1(0)"_s).isEnabled());
    it.press(Modify);
    QCOMPARE(it.panel(2), u"修改資料"_s);
    QVERIFY(it.at(u"Frame1(0)"_s).isEnabled());
}

void Form6EntryTest::hoursFollowFromTheTimes_data() {
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("hours");
    QTest::addRow("over midnight") << u"2200"_s << u"0130"_s << u"3"_s;
    QTest::addRow("under an hour") << u"0800"_s << u"0859"_s << u"0"_s;
    QTest::addRow("no time at all") << u"0800"_s << u"0800"_s << u"0"_s;
    QTest::addRow("an hour to the minute") << u"0800"_s << u"0900"_s << u"1"_s;
    QTest::addRow("the rest is dropped") << u"1730"_s << u"2029"_s << u"2"_s;
    QTest::addRow("all but a minute of a day") << u"0800"_s << u"0759"_s << u"23"_s;
}

void Form6EntryTest::hoursFollowFromTheTimes() {
    QFETCH(const QString, begin);
    QFETCH(const QString, end);
    QFETCH(const QString, hours);
    Form6Fixture it;
    it.database().execute(u"update Syst01 set OverTimeMin = 120"_s); // which plays no part
    it.open();
    it.press(Add);
    it.keys(u"10001"_s);
    it.typeDate(1, u"990301"_s);
    it.typeTime(0, begin);
    it.typeTime(1, end);
    QCOMPARE(it.text(u"Text1(4)"_s), QString());
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"Text1(4)"_s);
    QCOMPARE(it.text(u"Text1(4)"_s), hours);
    it.press(Save);
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row({{u"EmpNo", u"10001"},
                                                           {u"OverDate", March1},
                                                           {u"BegTime", QTime::fromString(begin, u"hhmm"_s)},
                                                           {u"EndTime", QTime::fromString(end, u"hhmm"_s)},
                                                           {u"OverHours", hours.toInt()},
                                                           {u"Account", u"tester"}})});
    QVERIFY(it.answers.seen().isEmpty());
}

void Form6EntryTest::hoursTypedOverStand() {
    Form6Fixture it;
    it.add(Form6Fixture::evening(u"10001"_s, 1, 2));
    it.open();
    it.press(Modify);
    it.type(u"Text1(4)"_s, u"9"_s);
    it.press(Save);
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row(
                                with(Form6Fixture::evening(u"10001"_s, 1, 2), {u"OverHours", 9}))});
}

void Form6EntryTest::aLaterStartLeavesTheHours() {
    Form6Fixture it;
    it.add(Form6Fixture::evening(u"10001"_s, 1, 2));
    it.open();
    it.press(Modify);
    it.typeTime(0, u"1900"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"overTime(1)"_s);
    QCOMPARE(it.text(u"Text1(4)"_s), u"2"_s);
    it.key(Qt::Key_Return); // leaving the end counts anew
    QCOMPARE(it.text(u"Text1(4)"_s), u"1"_s);
}

void Form6EntryTest::anEmptyTimeCountsNothing() {
    Form6Fixture it;
    it.open();
    it.press(Add);
    it.type(u"Text1(4)"_s, u"4"_s);
    for (const auto& [begin, end] : {std::pair(QString(), u"2030"_s), std::pair(u"1800"_s, QString())}) {
        for (int index : {0, 1})
            it.time(index).clear();
        it.typeTime(0, begin);
        it.typeTime(1, end);
        it.key(Qt::Key_Return);
        QCOMPARE(it.text(u"Text1(4)"_s), u"4"_s);
    }
}

void Form6EntryTest::aNewRowIsEmptyAndTheUsers() {
    Form6Fixture it;
    it.add(with(with(Form6Fixture::evening(u"10001"_s, 1, 2), {u"Memo", u"月結"}), {u"Account", u"other"}));
    it.open();
    QCOMPARE(it.names(), u"王小明|會計課|科員|日班"_s);
    QCOMPARE(it.label(u"Label4(3)"_s), u"other"_s);
    it.press(Add);
    QCOMPARE(it.names(), u"|||"_s);
    QCOMPARE(it.label(u"Label4(3)"_s), u"tester"_s);
    QCOMPARE(it.text(u"Text1(0)"_s) + it.text(u"Text1(4)"_s) + it.text(u"Text1(5)"_s), QString());
    QVERIFY(it.mask(1).value().isEmpty() && it.date(1).value().isNull());
    QVERIFY(it.time(0).isNull() && it.time(1).isNull());
    QVERIFY(!it.at<QCheckBox>(u"Check1(0)"_s).isChecked());
    QVERIFY(!it.at<QCheckBox>(u"Check1(1)"_s).isChecked());
    it.press(Cancel);
    QCOMPARE(it.names(), u"王小明|會計課|科員|日班"_s);
    QCOMPARE(it.mask(1).value(), u"990301"_s);
}

void Form6EntryTest::theEmployeeBringsHisNames() {
    Form6Fixture it;
    it.open();
    it.press(Add);
    it.keys(u"10001"_s);
    QCOMPARE(it.names(), u"王小明|會計課|科員|日班"_s);
    it.type(u"Text1(0)"_s, u"10002"_s);
    QCOMPARE(it.names(), u"陳美惠|人事課|課長|夜班"_s);
    // Of what has no row the text before stays.
    it.type(u"Text1(0)"_s, u"10003"_s);
    QCOMPARE(it.names(), u"林大同|人事課|課長|夜班"_s);
}

void Form6EntryTest::anUnknownEmployeeKeepsTheNamesAndIsSaved() {
    Form6Fixture it;
    it.add(Form6Fixture::evening(u"10001"_s, 1, 2));
    it.open();
    it.press(Modify);
    it.type(u"Text1(0)"_s, u"77777"_s);
    QCOMPARE(it.names(), u"王小明|會計課|科員|日班"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"TDBMask1(1)"_s);
    it.press(Save);
    QVERIFY(it.answers.seen().isEmpty());
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row(Form6Fixture::evening(u"77777"_s, 1, 2))});
}

void Form6EntryTest::theRowOfAnUnknownEmployeeKeepsTheNames() {
    Form6Fixture it;
    it.add(Form6Fixture::evening(u"10001"_s, 1, 2));
    it.add(Form6Fixture::evening(u"77777"_s, 2, 3));
    it.open();
    it.press(Next);
    QCOMPARE(it.text(u"Text1(0)"_s) + it.panel(1), u"77777資料錄:2/2"_s);
    QCOMPARE(it.names(), u"王小明|會計課|科員|日班"_s);
    QVERIFY(it.answers.seen().isEmpty());
}

void Form6EntryTest::anEditKeepsWhoEnteredTheRow() {
    Form6Fixture it;
    Fields row = Form6Fixture::evening(u"10001"_s, 1, 2);
    row += {{u"Account", u"other"}, {u"TransDate", QDateTime(QDate(2010, 3, 2), QTime(8, 7, 6))}};
    it.add(row);
    it.open();
    it.press(Modify);
    it.type(u"Text1(5)"_s, u"month end"_s);
    it.press(Save);
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row(row + Fields{{u"Memo", u"month end"}})});
    QCOMPARE(it.label(u"Label4(3)"_s), u"other"_s);
}

void Form6EntryTest::nothingNeedBeEntered() {
    Form6Fixture it;
    it.open();
    it.press(Add);
    it.press(Save);
    QVERIFY(it.answers.seen().isEmpty());
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row({{u"Account", u"tester"}})});
    QCOMPARE(it.panel(1), u"資料錄:1/1"_s);
}

void Form6EntryTest::restAndDrawAreSaved() {
    Form6Fixture it;
    it.add(Form6Fixture::evening(u"10001"_s, 1, 2));
    it.open();
    it.press(Modify);
    it.press(u"Check1(0)"_s);
    it.press(u"Check1(1)"_s);
    it.type(u"Text1(5)"_s, u"month end"_s);
    it.press(Save);
    Fields expected = Form6Fixture::evening(u"10001"_s, 1, 2);
    expected += {{u"Memo", u"month end"}, {u"Rest", true}, {u"Draw", true}};
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row(expected)});
}

void Form6EntryTest::theLookupFillsTheEmployee() {
    Form6Fixture it;
    it.open();
    it.press(Add);
    it.answers.expect(u"QFrmEmpNO"_s, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    it.press(u"Search(0)"_s);
    QCOMPARE(it.text(u"Text1(0)"_s) + u'|' + it.names(), u"10002|陳美惠|人事課|課長|夜班"_s);
    // Cancelled, it writes the pick before.
    it.type(u"Text1(0)"_s, u"10001"_s);
    it.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(1)"_s);
    it.press(u"Search(0)"_s);
    QCOMPARE(it.text(u"Text1(0)"_s), u"10002"_s);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form6EntryTest::punchesComeWithTheFinalEnter() {
    Form6Fixture it;
    Fields punches{{u"EmpNo", u"10001"}, {u"UseDate", March1}};
    for (int punch = 1; punch <= 12; ++punch)
        punches += Field(u"T%1"_s.arg(punch), QTime(7 + punch, punch));
    insertRow(it.database(), u"View02"_s, punches);
    it.open();
    it.press(Add);
    it.keys(u"10001"_s);
    it.typeDate(1, u"990301"_s);
    QCOMPARE(it.date(1).date(), March1);
    QCOMPARE(it.punches(), QString(11, u'|')); // The date was not there yet as its last key went down.
    it.key(Qt::Key_Return);
    QCOMPARE(it.punches(), u"08:01|09:02|10:03|11:04|12:05|13:06|14:07|15:08|16:09|17:10|18:11|19:12"_s);
    // They are for looking at only.
    const auto& first = it.at<TDBTime>(u"Time1(0)"_s);
    QVERIFY(first.isReadOnly());
    click(it.at(u"Time1(0)"_s));
    QVERIFY(it.focused() != u"Time1(0)"_s);
}

void Form6EntryTest::aDayWithoutPunchesEmptiesTheBoxes() {
    Form6Fixture it;
    insertRow(it.database(), u"View02"_s,
              {{u"EmpNo", u"10001"}, {u"UseDate", March1}, {u"T1", QTime(8, 1)}, {u"T2", QTime(17, 2)}});
    it.open();
    it.press(Add);
    it.keys(u"10001"_s);
    it.typeDate(1, u"990301"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.punches(), u"08:01|17:02"_s + QString(10, u'|'));
    // Another employee: nothing until a key goes down in the date.
    it.type(u"Text1(0)"_s, u"10002"_s);
    QCOMPARE(it.punches(), u"08:01|17:02"_s + QString(10, u'|'));
    click(it.mask(1));
    it.key(Qt::Key_Right);
    QCOMPARE(it.punches(), QString(11, u'|'));
}

void Form6EntryTest::punchesNeedEmployeeAndDate() {
    Form6Fixture it;
    insertRow(it.database(), u"View02"_s, {{u"EmpNo", u"10001"}, {u"UseDate", March1}, {u"T1", QTime(8, 1)}});
    it.open();
    it.press(Add);
    click(it.mask(1));
    it.key(Qt::Key_Return);
    it.typeDate(1, u"990301"_s);
    it.key(Qt::Key_Return); // the date alone
    QCOMPARE(it.punches(), QString(11, u'|'));
    it.press(Cancel);
    it.press(Add);
    it.keys(u"10001"_s);
    click(it.mask(1));
    it.key(Qt::Key_Return); // the employee alone
    QCOMPARE(it.punches(), QString(11, u'|'));
}

void Form6EntryTest::punchesComeInAnEditAsWell() {
    Form6Fixture it;
    it.add(Form6Fixture::evening(u"10001"_s, 1, 2));
    insertRow(it.database(), u"View02"_s,
              {{u"EmpNo", u"10001"}, {u"UseDate", March1}, {u"T1", QTime(8, 1)}, {u"T2", QTime(20, 2)}});
    it.open();
    QCOMPARE(it.punches(), QString(11, u'|')); // not by the row alone
    it.press(Modify);
    click(it.mask(1));
    it.key(Qt::Key_Return);
    QCOMPARE(it.punches(), u"08:01|20:02"_s + QString(10, u'|'));
    it.press(Save);
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row(Form6Fixture::evening(u"10001"_s, 1, 2))});
}

void Form6EntryTest::aRowOfTheImportHasNoEnd() {
    Form6Fixture it;
    it.open();
    it.press(Leave);
    // Behind function key 1, and never again.
    const QString file =
        it.store.writePunchFile(u"20100301.txt"_s, punchLine("10001", March1, QTime(18, 3, 4), "081"));
    OpenToolWindow(3);
    it.answers.expectFile(file).expectMsgBox();
    click(control(*moduleWindow(3), u"CtrlCmd0(0)"_s));
    QCOMPARE(it.answers.trouble(), QString());
    moduleWindow(3)->unload();
    OpenToolWindow(6);
    QCOMPARE(it.time(0).displayText(), u"18:03"_s);
    QVERIFY(it.time(1).isNull());
    QCOMPARE(it.time(1).displayText(), u"__:__"_s);
    QCOMPARE(it.text(u"Text1(4)"_s), u"0"_s);
    // Leaving the empty end changes nothing, and the start keeps its seconds.
    it.press(Modify);
    click(it.time(1));
    it.key(Qt::Key_Return);
    it.press(Save);
    QCOMPARE(it.overtime(), QStringList{Form6Fixture::row({{u"EmpNo", u"10001"},
                                                           {u"OverDate", March1},
                                                           {u"BegTime", QTime(18, 3, 4)},
                                                           {u"OverHours", 0}})});
}

void Form6EntryTest::aDeleteEndsOnTheLastRow() {
    Form6Fixture it;
    for (int day : {1, 2, 3})
        it.add(Form6Fixture::evening(u"10001"_s, day, day));
    it.open();
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(Delete);
    QCOMPARE(it.panel(1), u"資料錄:2/2"_s);
    QCOMPARE(it.text(u"Text1(4)"_s), u"3"_s);
    QCOMPARE(it.overtime(), QStringList({Form6Fixture::row(Form6Fixture::evening(u"10001"_s, 2, 2)),
                                         Form6Fixture::row(Form6Fixture::evening(u"10001"_s, 3, 3))}));
}

void Form6EntryTest::aRefusedDeleteLeavesTheRow() {
    Form6Fixture it;
    for (int day : {1, 2})
        it.add(Form6Fixture::evening(u"10001"_s, day, day));
    const QStringList overtime = it.overtime();
    refuseDeletes(it.store, "Over01");
    it.open();
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    it.press(Delete);
    QCOMPARE(it.seen(),
             QStringList({u"確認刪除|確定刪除這筆資料?|是/否"_s, u"錯誤訊息|無法刪除資料!|確定"_s}));
    QCOMPARE(it.answers.seen().constLast().icon, MsgIcon::Exclamation);
    QCOMPARE(it.overtime(), overtime);
    QCOMPARE(it.panel(1) + it.text(u"Text1(4)"_s), u"資料錄:1/21"_s);
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 1, 2, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    QCOMPARE(it.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form6EntryTest>(argc, argv);
}

#include "Form6EntryTest.moc"
