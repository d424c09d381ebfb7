#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The tab of the reasons.
class Form5ReasonTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theBarHasTwelveButtonsFromOneOn();
    void theButtonsOfBothStates();
    void aReasonIsAdded();
    void aReasonIsChangedAndDeleted();
    void anEmptyListShowsNoRow();
};

void Form5ReasonTest::theBarHasTwelveButtonsFromOneOn() {
    Form5Fixture it;
    it.open(Reasons);
    QStringList captions;
    for (int index = 0; index <= 13; ++index) {
        const auto* button = it.form().findChild<QPushButton*>(u"CtrlCmd0(%1)"_s.arg(index));
        captions << (button ? button->text() : u"none"_s);
    }
    QCOMPARE(captions.join(u' '),
             u"none 新增資料 修改 刪除 取消 存檔 首筆 上一筆 下一筆 末筆 更新 列印 離開 none"_s);
}

void Form5ReasonTest::theButtonsOfBothStates() {
    Form5Fixture it;
    it.addPeople();
    it.open(Reasons);
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({1, 2, 3, 6, 7, 8, 9, 10, 11, 12}));
    QVERIFY(!it.at(u"Frame1(0)"_s).isEnabled());
    it.press(u"CtrlCmd0(2)"_s);
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({4, 5}));
    QVERIFY(it.at(u"Frame1(0)"_s).isEnabled());
    QCOMPARE(it.panel(2) + it.focused(), u"修改資料Text1(0)"_s);
    QCOMPARE(it.tabsOn(), QList<int>{Reasons});
    it.press(u"CtrlCmd0(4)"_s);
    QCOMPARE(it.panel(2), QString());
    QCOMPARE(it.tabsOn(), QList<int>({Reasons, Batch, Entries, Counts}));
}

void Form5ReasonTest::aReasonIsAdded() {
    Form5Fixture it;
    it.addPeople();
    it.open(Reasons);
    it.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(it.panel(2), u"新增資料"_s);
    it.keys(u"0399"_s); // The box takes three characters.
    it.type(u"Text1(1)"_s, u"卡片遺失"_s);
    it.type(u"Text1(2)"_s, u"補發"_s);
    it.press(u"CtrlCmd0(5)"_s);
    QCOMPARE(it.rows(u"Canc01"_s), QStringList({u"01|忘記刷卡|null"_s, u"02|公出|null"_s,
                                                u"039|卡片遺失|補發"_s, u"A12|卡鐘故障|null"_s}));
    QCOMPARE(it.text(u"Text1(0)"_s) + it.panel(1), u"039資料錄:4/4"_s);
    QCOMPARE(it.shown(u"TDBG2"_s).constLast(), u"039|卡片遺失|補發"_s);
}

void Form5ReasonTest::aReasonIsChangedAndDeleted() {
    Form5Fixture it;
    it.addPeople();
    it.open(Reasons);
    it.press(u"CtrlCmd0(8)"_s);
    it.press(u"CtrlCmd0(2)"_s);
    it.type(u"Text1(1)"_s, u"公差"_s);
    it.press(u"CtrlCmd0(5)"_s);
    QCOMPARE(it.rows(u"Canc01"_s).at(1), u"02|公差|null"_s);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(u"CtrlCmd0(3)"_s);
    QCOMPARE(it.seen(), QStringList{u"確認刪除|確定刪除這筆資料?"_s});
    QCOMPARE(it.rows(u"Canc01"_s), QStringList({u"01|忘記刷卡|null"_s, u"A12|卡鐘故障|null"_s}));
    QCOMPARE(it.text(u"Text1(0)"_s) + it.panel(1), u"A12資料錄:2/2"_s);
    it.press(u"CtrlCmd0(6)"_s);
    it.press(u"CtrlCmd0(7)"_s);
    QCOMPARE(it.text(u"Text1(0)"_s) + it.panel(1), u"01資料錄:1/2"_s);
    it.press(u"CtrlCmd0(9)"_s);
    QCOMPARE(it.text(u"Text1(0)"_s), u"A12"_s);
}

void Form5ReasonTest::anEmptyListShowsNoRow() {
    Form5Fixture it;
    it.open(Reasons);
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(it.buttonsOn(u"CtrlCmd0"_s), QList<int>({1, 10, 11, 12}));
    insertRow(it.database(), u"Canc01"_s, {{u"CnlNo", u"01"}, {u"CnlName", u"忘記刷卡"}});
    it.press(u"CtrlCmd0(10)"_s);
    QCOMPARE(it.panel(1), u"資料錄:1/1"_s);
}

int main(int argc, char** argv) {
    return runTests<Form5ReasonTest>(argc, argv);
}

#include "Form5ReasonTest.moc"
