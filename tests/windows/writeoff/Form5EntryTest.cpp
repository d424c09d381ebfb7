#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const Value Today(QDateTime(QDate(2001, 3, 6), QTime(0, 0)));

/// The tab of the entries with a new one begun.
class NewEntry : public Form5Fixture {
  public:
    NewEntry() {
        addPeople();
        open(Entries);
        press(u"CtrlCmd2(0)"_s);
    }
};

} // namespace

/// The tab of the entries.
class Form5EntryTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theListShowsCodesAndTheNameOfTheEmployee();
    void theButtonsOfBothStates();
    void aNewEntryStartsWithTheUserAndTheDay();
    void aNewEntryClearsTheNamesOfTheReasonsAlone();
    void anEntryWithoutReasonsIsSaved();
    void anEntryIsChanged();
    void whoHasLeftMayBeWrittenOff();
    void theBoxesTakeFewerCharactersThanTheCodesHave();
    void anUnknownCodeIsToldAndItsLookupOpens_data();
    void anUnknownCodeIsToldAndItsLookupOpens();
    void aLookupWithoutAPickLetsTheUserGo_data();
    void aLookupWithoutAPickLetsTheUserGo();
    void aCancelledLookupBringsTheEarlierPick();
    void aReasonEmptiedByHandIsUnknown();
    void theSearchButtonsMoveOn();
    void aBadDateLeavesTheDateControl();
    void namesFollowTheRow();
    void aDeleteEndsOnTheLastRow();
};

void Form5EntryTest::theListShowsCodesAndTheNameOfTheEmployee() {
    Form5Fixture it;
    it.addPeople();
    it.addEntries();
    insertRow(it.database(), u"Canc02"_s,
              {{u"EmpNo", u"zz"}, {u"CnlDate", Day}, {u"Account", u"a"}, {u"TransDate", Now}});
    it.open(Entries);
    QCOMPARE(shownCaptions(it.at<TDBGrid>(u"TDBG1(0)"_s)).join(u'|'),
             u"員工碼|姓名|註銷日期|上午上班|上午下班|下午上班|下午下班|登錄人員|輸入時間"_s);
    QCOMPARE(
        it.shown(u"TDBG1(0)"_s),
        QStringList({u"10001|王小明|2001/3/5|01||||tester|"_s, u"10001|王小明|2001/3/6||02|||tester|"_s,
                     u"10002|陳美惠|2001/3/5||||A12|tester|"_s, u"zz|zz|2001/3/5|||||a|2001/3/6 09:10"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/4"_s);
    QCOMPARE(it.text(u"Text5(0)"_s) + it.label(u"Label4(96)"_s) + it.text(u"Text5(1)"_s) +
                 it.label(u"Label40(7)"_s) + it.mask(1).value(),
             u"10001王小明01忘記刷卡900305"_s);
}

void Form5EntryTest::theButtonsOfBothStates() {
    Form5Fixture it;
    it.addPeople();
    it.open(Entries);
    // The way back is on in all states; print has no window to lead to.
    QCOMPARE(it.buttonsOn(u"CtrlCmd2"_s), QList<int>({0, 5, 10, 11, 12, 13}));
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    it.press(u"CtrlCmd2(0)"_s);
    QCOMPARE(it.buttonsOn(u"CtrlCmd2"_s), QList<int>({3, 4, 13}));
    QCOMPARE(it.tabsOn(), QList<int>{Entries});
    QCOMPARE(it.panel(2), u"新增資料"_s);
    QVERIFY(!it.panel8Raised());
    it.press(u"CtrlCmd2(3)"_s);
    it.addEntries();
    it.press(u"CtrlCmd2(10)"_s);
    QCOMPARE(it.buttonsOn(u"CtrlCmd2"_s), QList<int>({0, 1, 2, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    QCOMPARE(it.tabsOn(), QList<int>({Reasons, Batch, Entries, Counts}));
    it.press(u"CtrlCmd2(1)"_s);
    QCOMPARE(it.panel(2), u"修改資料"_s);
    QCOMPARE(it.focused(), u"Text5(0)"_s);
    it.press(u"CtrlCmd2(12)"_s);
    QVERIFY(it.isOpen()); // It is off.
}

void Form5EntryTest::aNewEntryStartsWithTheUserAndTheDay() {
    Form5Fixture it;
    it.addPeople();
    it.addEntries();
    it.open(Entries);
    it.press(u"CtrlCmd2(0)"_s);
    QCOMPARE(it.focused(), u"TDBMask1(1)"_s);
    QCOMPARE(it.label(u"Label4(0)"_s) + u'|' + it.label(u"Label5"_s), u"clerk|2001/3/6"_s);
    QCOMPARE(it.label(u"Label40(7)"_s) + it.mask(1).value() + it.text(u"Text5(0)"_s), QString());
    QVERIFY(!it.date(1).date().isValid());
    it.keys(u"900307"_s);
    it.type(u"Text5(0)"_s, u"10002"_s);
    QCOMPARE(it.label(u"Label4(96)"_s), u"陳美惠"_s);
    it.type(u"Text5(2)"_s, u"01"_s);
    QCOMPARE(it.label(u"Label40(6)"_s), u"忘記刷卡"_s);
    it.type(u"Text5(4)"_s, u"02"_s);
    it.press(u"CtrlCmd2(4)"_s);
    QCOMPARE(it.rows(u"Canc02"_s).constLast(),
             entryRow(u"10002"_s, {2001, 3, 7}, {QString(), u"01"_s, QString(), u"02"_s}, u"clerk", Today));
    // The row saved is current.
    QCOMPARE(it.text(u"Text5(0)"_s) + it.mask(1).value() + it.panel(1), u"10002900307資料錄:4/4"_s);
    QCOMPARE(it.shown(u"TDBG1(0)"_s).constLast(), u"10002|陳美惠|2001/3/7||01||02|clerk|2001/3/6"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form5EntryTest::aNewEntryClearsTheNamesOfTheReasonsAlone() {
    Form5Fixture it;
    it.addPeople();
    addWriteOff(it.database(), u"10001"_s, Day, u"01"_s, u"02"_s, u"A12"_s, u"01"_s);
    it.open(Entries);
    const QStringList before = it.rows(u"Canc02"_s);
    const auto line = [&it] {
        QString all = it.label(u"Label4(96)"_s) + u'|' + it.mask(1).value();
        for (int reason = 0; reason <= 4; ++reason)
            all += u'|' + it.text(u"Text5(%1)"_s.arg(reason));
        for (int label = 7; label >= 4; --label)
            all += u'|' + it.label(u"Label40(%1)"_s.arg(label));
        return all;
    };
    const QString row = u"王小明|900305|10001|01|02|A12|01|忘記刷卡|公出|卡鐘故障|忘記刷卡"_s;
    QCOMPARE(line(), row);
    it.press(u"CtrlCmd2(0)"_s);
    // The employee's name stays beside the empty box until a code brings another.
    QCOMPARE(line(), u"王小明||||||||||"_s);
    it.type(u"Text5(0)"_s, u"10002"_s);
    it.type(u"Text5(3)"_s, u"02"_s);
    QCOMPARE(line(), u"陳美惠||10002|||02||||公出|"_s);
    it.press(u"CtrlCmd2(3)"_s);
    QCOMPARE(line(), row);
    QCOMPARE(it.rows(u"Canc02"_s), before);
    QVERIFY(it.seen().isEmpty());
}

void Form5EntryTest::anEntryWithoutReasonsIsSaved() {
    NewEntry it;
    it.keys(u"900307"_s);
    it.type(u"Text5(0)"_s, u"10001"_s);
    it.press(u"CtrlCmd2(4)"_s);
    // Without a reason there is a null, unlike in an entry of a batch.
    QCOMPARE(it.rows(u"Canc02"_s), QStringList{entryRow(u"10001"_s, {2001, 3, 7}, {}, u"clerk", Today)});
    QVERIFY(it.seen().isEmpty());
}

void Form5EntryTest::anEntryIsChanged() {
    Form5Fixture it;
    it.addPeople();
    it.addEntries();
    it.open(Entries);
    const QStringList before = it.rows(u"Canc02"_s);
    it.press(u"CtrlCmd2(8)"_s);
    it.press(u"CtrlCmd2(1)"_s);
    it.type(u"Text5(1)"_s, u"02"_s);
    it.press(u"CtrlCmd2(4)"_s);
    // Who entered it and when stay as they were.
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList({before.at(0),
                          entryRow(u"10001"_s, Day.addDays(1), {u"02"_s, u"02"_s}, u"tester", Value()),
                          before.at(2)}));
    it.press(u"CtrlCmd2(1)"_s);
    it.type(u"Text5(1)"_s, u"01"_s);
    it.press(u"CtrlCmd2(3)"_s);
    QCOMPARE(it.text(u"Text5(1)"_s) + it.label(u"Label40(7)"_s), u"02公出"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form5EntryTest::whoHasLeftMayBeWrittenOff() {
    NewEntry it;
    it.keys(u"900307"_s);
    it.type(u"Text5(0)"_s, u"10003"_s);
    it.key(Qt::Key_Return);
    it.press(u"CtrlCmd2(4)"_s);
    QCOMPARE(it.rows(u"Canc02"_s), QStringList{entryRow(u"10003"_s, {2001, 3, 7}, {}, u"clerk", Today)});
    QVERIFY(it.seen().isEmpty());
}

void Form5EntryTest::theBoxesTakeFewerCharactersThanTheCodesHave() {
    NewEntry it;
    it.type(u"Text5(0)"_s, u"100019"_s);
    QCOMPARE(it.text(u"Text5(0)"_s), u"10001"_s);
    it.type(u"Text5(1)"_s, u"019"_s);
    QCOMPARE(it.text(u"Text5(1)"_s), u"01"_s);
    // A longer reason can be picked, and is stored whole.
    it.expectPick(u"QFrmCnlNo"_s, 2);
    it.press(u"Search(7)"_s);
    QCOMPARE(it.text(u"Text5(2)"_s) + it.label(u"Label40(6)"_s), u"A12卡鐘故障"_s);
    it.typeDate(1, u"900307"_s);
    it.press(u"CtrlCmd2(4)"_s);
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList{entryRow(u"10001"_s, {2001, 3, 7}, {u"01"_s, u"A12"_s}, u"clerk", Today)});
}

void Form5EntryTest::anUnknownCodeIsToldAndItsLookupOpens_data() {
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("lookup");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("label");
    QTest::newRow("employee") << u"Text5(0)"_s << u"QFrmEmpNO"_s << UnknownEmployee << u"Label4(96)"_s;
    for (int reason = 1; reason <= 4; ++reason)
        QTest::addRow("reason %d", reason) << u"Text5(%1)"_s.arg(reason) << u"QFrmCnlNo"_s << UnknownReason
                                           << u"Label40(%1)"_s.arg(8 - reason);
}

void Form5EntryTest::anUnknownCodeIsToldAndItsLookupOpens() {
    QFETCH(const QString, box);
    QFETCH(const QString, lookup);
    QFETCH(const QString, message);
    QFETCH(const QString, label);
    NewEntry it;
    it.type(box, u"99"_s);
    QCOMPARE(it.seen(), QStringList()); // Only when it is left.
    it.answers.expectMsgBox();
    it.expectPick(lookup, 1);
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList({message, lookup}));
    const bool employee = box == u"Text5(0)"_s;
    QCOMPARE(it.text(box) + it.label(label) + it.focused(),
             (employee ? u"10002陳美惠"_s : u"02公出"_s) + box);
    it.key(Qt::Key_Return);
    QVERIFY(it.focused() != box);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5EntryTest::aLookupWithoutAPickLetsTheUserGo_data() {
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("lookup");
    QTest::addColumn<QString>("search");
    QTest::addColumn<bool>("cancelled");
    for (const bool cancelled : {false, true}) {
        const char* end = cancelled ? "cancelled" : "over an empty table";
        QTest::addRow("employees, %s", end) << u"Text5(0)"_s << u"QFrmEmpNO"_s << u"Search(0)"_s << cancelled;
        QTest::addRow("reasons, %s", end) << u"Text5(3)"_s << u"QFrmCnlNo"_s << u"Search(8)"_s << cancelled;
    }
}

void Form5EntryTest::aLookupWithoutAPickLetsTheUserGo() {
    QFETCH(const QString, box);
    QFETCH(const QString, lookup);
    QFETCH(const QString, search);
    QFETCH(const bool, cancelled);
    Form5Fixture it; // Without reasons and employees.
    const auto expectLookup = [&] { it.answers.expect(lookup, cancelled ? clickCancel : clickOk); };
    it.open(Entries);
    it.press(u"CtrlCmd2(0)"_s);
    it.type(box, u"9"_s);
    it.answers.expectMsgBox();
    expectLookup();
    it.key(Qt::Key_Return);
    // The box has what was picked, nothing, and the focus; nobody has typed that.
    QCOMPARE(it.text(box) + it.focused(), box);
    it.key(Qt::Key_Return);
    QVERIFY(it.focused() != box);
    QCOMPARE(it.seen().size(), 2);
    // Nor behind the button.
    expectLookup();
    it.type(box, u"9"_s);
    it.button(search).setFocusPolicy(Qt::NoFocus); // So that the box is not left ahead of the click.
    it.press(search);
    QCOMPARE(it.text(box), QString());
    QVERIFY(it.focused() != box);
    QCOMPARE(it.seen().size(), 3);
    // By the mouse as well.
    it.press(u"CtrlCmd2(3)"_s);
    QCOMPARE(it.panel(2), QString());
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5EntryTest::aCancelledLookupBringsTheEarlierPick() {
    NewEntry it;
    gPickCnlNo = u"02"_s;
    it.type(u"Text5(1)"_s, u"99"_s);
    it.answers.expectMsgBox();
    it.answers.expect(u"QFrmCnlNo"_s, clickCancel);
    it.key(Qt::Key_Return);
    QCOMPARE(it.text(u"Text5(1)"_s) + it.label(u"Label40(7)"_s) + it.focused(), u"02公出Text5(1)"_s);
}

void Form5EntryTest::aReasonEmptiedByHandIsUnknown() {
    Form5Fixture it;
    it.addPeople();
    it.addEntries();
    it.open(Entries);
    it.press(u"CtrlCmd2(1)"_s);
    it.at(u"Text5(1)"_s).setFocus();
    it.key(Qt::Key_Backspace);
    it.key(Qt::Key_Backspace);
    QCOMPARE(it.text(u"Text5(1)"_s), QString());
    it.answers.expectMsgBox();
    it.answers.expect(u"QFrmCnlNo"_s, clickCancel);
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList({UnknownReason, u"QFrmCnlNo"_s}));
    it.key(Qt::Key_Return);
    it.press(u"CtrlCmd2(4)"_s);
    QCOMPARE(it.rows(u"Canc02"_s).constFirst(), entryRow(u"10001"_s, Day, {}, u"tester", Value()));
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5EntryTest::theSearchButtonsMoveOn() {
    NewEntry it;
    it.expectPick(u"QFrmEmpNO"_s, 1);
    it.press(u"Search(0)"_s);
    QCOMPARE(it.text(u"Text5(0)"_s) + it.label(u"Label4(96)"_s) + it.focused(), u"10002陳美惠TDBMask1(1)"_s);
    for (int reason = 1; reason <= 4; ++reason) {
        it.expectPick(u"QFrmCnlNo"_s, 0);
        it.press(u"Search(%1)"_s.arg(5 + reason));
        QCOMPARE(it.text(u"Text5(%1)"_s.arg(reason)) + it.label(u"Label40(%1)"_s.arg(8 - reason)),
                 u"01忘記刷卡"_s);
        QVERIFY(it.focused() != u"Text5(%1)"_s.arg(reason));
    }
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5EntryTest::aBadDateLeavesTheDateControl() {
    Form5Fixture it;
    it.addPeople();
    it.addEntries();
    it.open(Entries);
    it.press(u"CtrlCmd2(1)"_s);
    it.typeDate(1, u"901345"_s);
    it.key(Qt::Key_Return);
    // No word of it.
    QVERIFY(it.focused() != u"TDBMask1(1)"_s);
    QCOMPARE(it.date(1).date(), Day);
    QVERIFY(it.seen().isEmpty());
    it.date(1).setDate({2011, 3, 5});
    QCOMPARE(it.mask(1).value(), QString());
    it.press(u"CtrlCmd2(4)"_s);
    QCOMPARE(it.rows(u"Canc02"_s).at(1), entryRow(u"10001"_s, {2011, 3, 5}, {u"01"_s}, u"tester", Value()));
}

void Form5EntryTest::namesFollowTheRow() {
    Form5Fixture it;
    it.addPeople();
    it.addEntries();
    addWriteOff(it.database(), u"99999"_s, Day, u"77"_s, {}, {}, u"A12"_s);
    it.open(Entries);
    const auto names = [&it] {
        QString all = it.label(u"Label4(96)"_s);
        for (int label = 7; label >= 4; --label)
            all += u'|' + it.label(u"Label40(%1)"_s.arg(label));
        return all;
    };
    QCOMPARE(names(), u"王小明|忘記刷卡|||"_s);
    it.press(u"CtrlCmd2(8)"_s);
    QCOMPARE(names(), u"王小明||公出||"_s);
    it.press(u"CtrlCmd2(9)"_s);
    QCOMPARE(names(), u"||||卡鐘故障"_s);
    it.press(u"CtrlCmd2(6)"_s);
    QCOMPARE(names(), u"王小明|忘記刷卡|||"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form5EntryTest::aDeleteEndsOnTheLastRow() {
    Form5Fixture it;
    it.addPeople();
    it.addEntries();
    it.open(Entries);
    const QStringList before = it.rows(u"Canc02"_s);
    it.answers.expectMsgBox(MsgAnswer::No).expectMsgBox(MsgAnswer::Yes);
    it.press(u"CtrlCmd2(2)"_s);
    QCOMPARE(it.rows(u"Canc02"_s), before);
    it.press(u"CtrlCmd2(2)"_s);
    QCOMPARE(it.rows(u"Canc02"_s), before.mid(1));
    QCOMPARE(it.seen(), QStringList(2, u"確認刪除|確定刪除這筆資料?"_s));
    QCOMPARE(it.text(u"Text5(0)"_s) + it.panel(1), u"10002資料錄:2/2"_s);
}

int main(int argc, char** argv) {
    return runTests<Form5EntryTest>(argc, argv);
}

#include "Form5EntryTest.moc"
