#include "windows/master/Form1SlotFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

enum Button { Add = 0, Modify = 1, Cancel = 3, Save = 4, Previous = 7, Next = 8 };

} // namespace

/// The time slots' texts, and how option and list follow the row.
class Form1SlotsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void captionsAreTheStatedOnes();
    void carriersAreNotSeen();
    void minuteBoxesTellUnitAndEffect();
    void anUntouchedChoiceIsStoredAsNull();
    void choicesFollowTheRowAtEveryButton();
    void theListFollowsTheRowOnlyWhereTheRowHasNoOption();
    void emptyCarriersKeepWhatWasShown();
    void typesWithoutAChoiceKeepWhatWasShown();
    void timesAreStoredInAnyOrder();
    void cancelTakesAChoiceBack();
    void cancelKeepsAChoiceShownThatTheRowLacks();
    void theListFollowsTheRowFromAnyTab();
    void theOptionFollowsARowWithoutAKind();
    void aRowWithNeitherKeepsBothWhenItBecomesCurrent();
};

void Form1SlotsTest::captionsAreTheStatedOnes() {
    SlotFixture fixture;
    fixture.openPage();
    QStringList captions;
    for (int index = 0; index < 5; ++index)
        captions += fixture.at<QRadioButton>(named(u"OptCT"_s, index)).text();
    QCOMPARE(captions, QStringList({u"免刷卡"_s, u"1卡"_s, u"2卡"_s, u"3卡"_s, u"4卡"_s}));
    captions.clear();
    for (int index = 0; index < 4; ++index)
        captions += fixture.at<QCheckBox>(u"CheckT(%1)"_s.arg(index)).text();
    QCOMPARE(captions, QStringList({u"上午上班"_s, u"上午下班"_s, u"下午上班"_s, u"下午下班"_s}));
    QCOMPARE(fixture.at<QCheckBox>(u"CheckRest"_s).text(), u"中途休息"_s);
    QCOMPARE(fixture.at(u"FrameTS(3)"_s).property("title").toString(), u"  打卡設定"_s);
    QCOMPARE(fixture.at(u"Frame2"_s).property("title").toString(), u"  彈性上班"_s);
    captions.clear();
    const auto& list = fixture.at<QComboBox>(u"Combo1"_s);
    for (int entry = 0; entry < list.count(); ++entry)
        captions += list.itemText(entry);
    QCOMPARE(captions, QStringList({u"無彈性"_s, u"至少8小時"_s, u"上午4小時"_s, u"下午4小時"_s,
                                    u"上午4 小時,下午4小時!"_s}));
    for (int index = 0; index < 8; ++index)
        QCOMPARE(fixture.at<TDBTime>(u"TDBTime1(%1)"_s.arg(index)).displayText(), u"__:__:__"_s);
}

void Form1SlotsTest::carriersAreNotSeen() {
    SlotFixture fixture;
    fixture.openPage();
    QVERIFY(!fixture.box(u"Text4(6)"_s).isVisible());
    QVERIFY(!fixture.box(u"Text4(7)"_s).isVisible());
}

void Form1SlotsTest::minuteBoxesTellUnitAndEffect() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    fixture.openPage();
    const QMap<int, QString> words{{2, u"「無彈性」時不採用"_s},
                                   {3, u"大於 0 時下午也按此值"_s},
                                   {4, u"緩衝過後這麼多分鐘以內的上班卡記為遲到"_s},
                                   {5, u"上午下班卡自標準時間前緩衝加這麼多分鐘起收"_s},
                                   {10, u"上午的緩衝為 0 時"_s},
                                   {9, u"上午的遲到為 0 時"_s},
                                   {8, u"下午下班卡自標準時間前緩衝加這麼多分鐘起收"_s}};
    QSet<QString> hints;
    for (auto each = words.begin(); each != words.end(); ++each) {
        const QLineEdit& box = fixture.box(named(u"Text4"_s, each.key()));
        const QString hint = box.toolTip();
        QVERIFY2(hint.startsWith(u"單位：分鐘"_s) && hint.contains(each.value()), qPrintable(hint));
        QCOMPARE(box.accessibleDescription(), hint);
        // On the caption as well.
        QStringList captions;
        for (const QLabel* label : fixture.at(u"Frame1(3)"_s).findChildren<QLabel*>()) {
            if (label->buddy() == &box)
                captions << label->toolTip();
        }
        QCOMPARE(captions, QStringList{hint});
        hints += hint;
    }
    QCOMPARE(hints.size(), words.size());
}

void Form1SlotsTest::anUntouchedChoiceIsStoredAsNull() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 2}, {u"ElstType", 1}});
    fixture.openPage();
    QCOMPARE(fixture.optionShown(), 2);
    fixture.pressButton(Add);
    // The screen goes on showing the choice of the row before.
    QCOMPARE(fixture.optionShown(), 2);
    QCOMPARE(fixture.entryShown(), u"至少8小時"_s);
    fixture.type(u"Text4(0)"_s, u"B"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows().last(), expectedRow(u"Base04"_s, {{u"TimeNo", u"B"}}));
    // A click on the option that is shown stores it.
    fixture.pressButton(Modify);
    fixture.press(named(u"OptCT"_s, 2));
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows().last(), expectedRow(u"Base04"_s, {{u"TimeNo", u"B"}, {u"CardType", 2}}));
}

void Form1SlotsTest::choicesFollowTheRowAtEveryButton() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 1}, {u"ElstType", 3}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", 4}, {u"ElstType", 0}});
    fixture.openPage();
    QCOMPARE(fixture.optionShown(), 1);
    QCOMPARE(fixture.entryShown(), u"下午4小時"_s);
    fixture.pressButton(Next);
    QCOMPARE(fixture.optionShown(), 4);
    QCOMPARE(fixture.entryShown(), u"無彈性"_s);
}

void Form1SlotsTest::theListFollowsTheRowOnlyWhereTheRowHasNoOption() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 1}, {u"ElstType", 3}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", 4}, {u"ElstType", 0}});
    addSlot(fixture.database(), u"C"_s, {{u"CardType", Value()}, {u"ElstType", 2}});
    fixture.openPage();

    // A row that becomes current without a button, as the source itself tells it.
    fixture.moveSource();
    QCOMPARE(fixture.optionShown(), 4);
    QCOMPARE(fixture.entryShown(), u"下午4小時"_s);
    fixture.moveSource();
    QCOMPARE(fixture.optionShown(), 4);
    QCOMPARE(fixture.entryShown(), u"上午4小時"_s);
    fixture.pressButton(Previous);
    QCOMPARE(fixture.entryShown(), u"無彈性"_s);
}

void Form1SlotsTest::emptyCarriersKeepWhatWasShown() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 3}, {u"ElstType", 1}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", Value()}, {u"ElstType", Value()}});
    fixture.openPage();
    fixture.pressButton(Next);
    QCOMPARE(fixture.text(u"Text4(0)"_s), u"B"_s);
    QCOMPARE(fixture.optionShown(), 3);
    QCOMPARE(fixture.entryShown(), u"至少8小時"_s);
}

void Form1SlotsTest::typesWithoutAChoiceKeepWhatWasShown() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 3}, {u"ElstType", 1}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", 7}, {u"ElstType", 9}});
    addSlot(fixture.database(), u"C"_s, {{u"CardType", 5}, {u"ElstType", 2}});
    const QStringList rows = fixture.rows();
    fixture.openPage();
    fixture.pressButton(Next);
    QCOMPARE(fixture.text(u"Text4(7)"_s), u"7"_s);
    QCOMPARE(fixture.optionShown(), 3);
    QCOMPARE(fixture.entryShown(), u"至少8小時"_s);
    // An edit that touches neither keeps both.
    fixture.pressButton(Modify);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), rows);
    fixture.pressButton(Next);
    QCOMPARE(fixture.optionShown(), 3);
    QCOMPARE(fixture.entryShown(), u"上午4小時"_s);
}

void Form1SlotsTest::timesAreStoredInAnyOrder() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    fixture.openPage();
    fixture.pressButton(Modify);
    fixture.typeTime(3, u"030000"_s);
    fixture.pressButton(Save);
    QCOMPARE(rowsOfSelection(fixture.database(), u"select StdT1,StdT2 from Base04"_s),
             QStringList{u"08:00:00|03:00:00"_s});
}

void Form1SlotsTest::cancelTakesAChoiceBack() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 2}, {u"ElstType", 3}});
    fixture.openPage();
    fixture.pressButton(Modify);
    fixture.press(named(u"OptCT"_s, 4));
    fixture.choose(1);
    fixture.pressButton(Cancel);
    QCOMPARE(fixture.optionShown(), 2);
    QCOMPARE(fixture.entryShown(), u"下午4小時"_s);
}

void Form1SlotsTest::cancelKeepsAChoiceShownThatTheRowLacks() {
    SlotFixture fixture;
    insertRow(fixture.database(), u"Base04"_s, {{u"TimeNo", u"A"}});
    fixture.openPage();
    fixture.pressButton(Modify);
    fixture.press(named(u"OptCT"_s, 4));
    fixture.choose(2);
    fixture.pressButton(Cancel);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({})});
    QCOMPARE(fixture.optionShown(), 4);
    QCOMPARE(fixture.entryShown(), u"上午4小時"_s);
}

void Form1SlotsTest::theListFollowsTheRowFromAnyTab() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 1}, {u"ElstType", 3}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", 4}, {u"ElstType", 0}});
    fixture.openPage();
    fixture.moveSource();
    QCOMPARE(fixture.shown().left(7), u"資料錄:2/2"_s);
    QCOMPARE(fixture.optionShown(), 4);
    QCOMPARE(fixture.entryShown(), u"下午4小時"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.entryShown(), u"無彈性"_s);
}

void Form1SlotsTest::theOptionFollowsARowWithoutAKind() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 1}, {u"ElstType", 3}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", 0}, {u"ElstType", Value()}});
    fixture.openPage();
    fixture.pressButton(Next);
    QCOMPARE(fixture.optionShown(), 0);
    QCOMPARE(fixture.entryShown(), u"下午4小時"_s);
}

void Form1SlotsTest::aRowWithNeitherKeepsBothWhenItBecomesCurrent() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 1}, {u"ElstType", 3}});
    insertRow(fixture.database(), u"Base04"_s, {{u"TimeNo", u"B"}});
    fixture.openPage();
    fixture.moveSource();
    QCOMPARE(fixture.text(u"Text4(0)"_s), u"B"_s);
    QCOMPARE(fixture.optionShown(), 1);
    QCOMPARE(fixture.entryShown(), u"下午4小時"_s);
}

int main(int argc, char** argv) {
    return runTests<Form1SlotsTest>(argc, argv);
}

#include "Form1SlotsTest.moc"
