#include "app/miniatures/LeaveNote.h"
#include "app/miniatures/OvertimeEntry.h"
#include "app/miniatures/OvertimeList.h"
#include "app/miniatures/OvertimeOfMany.h"
#include "app/miniatures/WriteOffEntry.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The tabs of the windows to come, in small: that what they need of the kit is there.
class MiniaturesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aLeaveNoteAndItsDays();
    void aWriteOffEntry();
    void anOvertimeEntry();
    void theOvertimeOfOneEmployee();
    void theOvertimeOfMany();
};

void MiniaturesTest::aLeaveNoteAndItsDays() {
    MiniatureFixture it;
    for (const QString& note : {u"1"_s, u"2"_s}) {
        insertRow(it.store.database(), u"Holi03"_s, {{u"BusNo", note}, {u"EmpNo", u"00001"}});
        insertRow(it.store.database(), u"Holi04"_s, {{u"BusNo", note}, {u"HoliDate", QDate(2005, 3, 1)}});
    }
    it.openTab<LeaveNote>();
    auto& days = it.at<TDBGrid>(u"TDBGrid1(2)"_s);
    QCOMPARE(shownRows(days), QStringList({u"2005/3/1|1"_s, u"2005/3/1|2"_s}));
    clickRow(days, 1); // a day row leads to its note
    QCOMPARE(it.panel(1) + it.label(u"Label4(0)"_s), u"資料錄:2/22"_s);
    it.press(6); // a move brings the note's own days
    QCOMPARE(shownRows(days), QStringList{u"2005/3/1|1"_s});
    it.press(0);
    it.keys(u"9"_s); // no such employee: the lookup opens
    it.answers.expectMsgBox().expectClick(u"QFrmEmpNO"_s, u"Command1(0)"_s).expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text3(0)"_s) + it.label(u"Label4(2)"_s) + it.label(u"Label4(3)"_s),
             u"00001王一科員"_s);
    it.at(u"TDBMask1(0)"_s).setFocus();
    it.keys(u"940305"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.at<TDBMask>(u"TDBMask1(1)"_s).value(), u"940305"_s);
    it.type(u"TDBMask1(1)"_s, u"940304"_s);
    it.press(4);
    QCOMPARE(it.seen(), QStringList({u"警告訊息|無此【員工代碼】,請重新輸入"_s, u"QFrmEmpNO"_s,
                                     u"警告訊息|終止日期不可小於開始日期,請重新輸入"_s}));
    QCOMPARE(it.focused(), u"TDBMask1(1)"_s);
    it.type(u"TDBMask1(1)"_s, u"940306"_s);
    it.press(4);
    QCOMPARE(it.rows(u"Holi03"_s).constLast(),
             expectedRow(u"Holi03"_s, {{u"BusNo", u"3"},
                                       {u"EmpNo", u"00001"},
                                       {u"HoliBegDate", QDate(2005, 3, 5)},
                                       {u"HoliEndDate", QDate(2005, 3, 6)}}));
}

void MiniaturesTest::aWriteOffEntry() {
    MiniatureFixture it;
    insertRow(it.store.database(), u"Canc01"_s, {{u"CnlNo", u"1"}, {u"CnlName", u"公出"}});
    insertRow(it.store.database(), u"Canc02"_s, {{u"EmpNo", u"7"}, {u"CnlDate", QDate(2005, 3, 1)}});
    it.openTab<WriteOffEntry>();
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 1, 2, 5, 6, 7, 8, 9, 10, 12, 13}));
    it.press(0);
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({3, 4, 13}));
    it.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(0)"_s);
    it.press(u"Search(5)"_s);
    QCOMPARE(it.label(u"Label4(96)"_s) + u'|' + it.focused(), u"王一|Text5(1)"_s);
    it.keys(u"9"_s); // no such reason: the lookup opens, and the focus stays
    it.answers.expectMsgBox().expectClick(u"QFrmCnlNo"_s, u"Command1(0)"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text5(1)"_s) + it.label(u"Label40(7)"_s) + it.focused(), u"1公出Text5(1)"_s);
    QCOMPARE(it.seen(),
             QStringList({u"QFrmEmpNO"_s, u"警告訊息|無此【註銷代碼】,請重新輸入"_s, u"QFrmCnlNo"_s}));
    it.type(u"TDBMask1(1)"_s, u"940302"_s);
    it.press(4);
    QCOMPARE(it.rows(u"Canc02"_s).constFirst(), expectedRow(u"Canc02"_s, {{u"EmpNo", u"00001"},
                                                                          {u"CnlDate", QDate(2005, 3, 2)},
                                                                          {u"CnlNo1", u"1"},
                                                                          {u"Account", u"tester"}}));
    it.answers.expect(u"IFrmQuery"_s, [](QWidget& dialog) {
        click(control(dialog, u"Option1(3)"_s));
        click(control(dialog, u"Command1(0)"_s));
    });
    it.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(0)"_s);
    it.press(5);
    QCOMPARE(it.panel(1) + it.text(u"Text5(0)"_s), u"資料錄:1/100001"_s);
    it.press(10);
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
    QCOMPARE(it.answers.trouble(), QString());
}

void MiniaturesTest::anOvertimeEntry() {
    MiniatureFixture it;
    insertRow(it.store.database(), u"View02"_s,
              {{u"EmpNo", u"00001"}, {u"UseDate", QDate(2005, 3, 1)}, {u"T1", QTime(8, 1)}});
    it.openTab<OvertimeEntry>();
    it.press(0);
    it.keys(u"00001"_s);
    QCOMPARE(it.label(u"Label2(0)"_s) + it.label(u"Label4(0)"_s), u"王一科員"_s);
    it.keys(u"9"_s); // no such employee, and no word of it
    it.type(u"TDBMask1(1)"_s, u"940301"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.at<TDBTime>(u"Time1(0)"_s).time(), QTime());
    it.type(u"Text1(0)"_s, u"00001"_s);
    it.at(u"TDBMask1(1)"_s).setFocus();
    it.key(Qt::Key_Return);
    QCOMPARE(it.at<TDBTime>(u"Time1(0)"_s).time(), QTime(8, 1));
    it.at(u"overTime(0)"_s).setFocus();
    it.keys(u"1800"_s);
    it.key(Qt::Key_Return);
    it.keys(u"2030"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text1(4)"_s) + u'|' + it.focused(), u"2|Text1(4)"_s);
    it.press(4);
    QCOMPARE(it.rows(u"Over01"_s), QStringList{expectedRow(u"Over01"_s, {{u"EmpNo", u"00001"},
                                                                         {u"OverDate", QDate(2005, 3, 1)},
                                                                         {u"BegTime", QTime(18, 0)},
                                                                         {u"EndTime", QTime(20, 30)},
                                                                         {u"OverHours", 2}})});
    QVERIFY(it.seen().isEmpty());
}

void MiniaturesTest::theOvertimeOfOneEmployee() {
    MiniatureFixture it;
    for (const auto& [code, day] :
         {std::pair(u"00001"_s, 1), std::pair(u"00002"_s, 2), std::pair(u"00001"_s, 3)})
        insertRow(it.store.database(), u"Over01"_s,
                  {{u"EmpNo", code}, {u"OverDate", QDate(2005, 3, day)}, {u"OverHours", day}});
    it.openTab<OvertimeList>();
    const auto& list = it.at<TDBGrid>(u"TDBG1(0)"_s);
    QCOMPARE(shownRows(list).size(), 3);
    it.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(0)"_s);
    it.press(u"Search(1)"_s);
    QCOMPARE(shownRows(list), QStringList({u"2005/3/3|3"_s, u"2005/3/1|1"_s}));
    QCOMPARE(it.panel(1) + it.label(u"Label4(96)"_s) + it.focused(), u"資料錄:1/2王一Text5"_s);
    it.type(u"Text5"_s, u"9"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(shownRows(list).size(), 2);
    QCOMPARE(it.seen(), QStringList({u"QFrmEmpNO"_s, u"警告訊息|無此【員工代碼】,請重新輸入"_s}));
    QCOMPARE(it.focused(), u"Text5"_s);
    QVERIFY(it.at(u"Text5"_s).isEnabled());
}

void MiniaturesTest::theOvertimeOfMany() {
    MiniatureFixture it;
    addEmployee(it.store.database(), u"00002"_s, {{u"EmpName", u"陳二"}});
    it.openOther([](QWidget* parent) -> Window* { return new OvertimeOfManyWindow(parent); });
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>{0});
    it.press(u"CmdBat(0)"_s);
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>{1});
    it.type(u"TDBMask1(0)"_s, u"940305"_s);
    it.press(u"CMDCTRL(1)"_s);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(u"CmdBat(1)"_s);
    QCOMPARE(it.seen(), QStringList{u"警告訊息|是否確定執行加班批次 ?"_s});
    QStringList expected;
    for (const QString& EmpNo : {u"00001"_s, u"00002"_s})
        expected << expectedRow(u"Over01"_s,
                                {{u"EmpNo", EmpNo}, {u"OverDate", QDate(2005, 3, 5)}, {u"OverHours", 1}});
    QCOMPARE(it.rows(u"Over01"_s), expected);
    QCOMPARE(it.buttonsOn(u"CmdBat"_s), QList<int>{0});
    QVERIFY(!it.label(u"Label16"_s).isEmpty());
}

int main(int argc, char** argv) {
    return runTests<MiniaturesTest>(argc, argv);
}

#include "MiniaturesTest.moc"
