#include "master/Form1Fixture.h"
#include "store/DataSource.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

QString option(int index) {
    return u"OptCT(%1)"_s.arg(index);
}

int optionShown(const Form1Fixture& fixture) {
    for (int index = 0; index < 5; ++index) {
        if (fixture.at<QRadioButton>(option(index)).isChecked())
            return index;
    }
    return -1;
}

/// The tab of the time slots, and the tab of the shift classes.
class SlotsFixture : public Form1Fixture {
  public:
    [[nodiscard]] QString elasticType() const { return at<QComboBox>(u"Combo1"_s).currentText(); }
    void chooseElasticType(int entry) {
        auto& list = at<QComboBox>(u"Combo1"_s);
        list.setCurrentIndex(entry);
        Q_EMIT list.activated(entry);
    }
    [[nodiscard]] QStringList slotRows() { return rowsOf(database(), u"Base04"_s); }
    [[nodiscard]] QStringList classRows() { return rowsOf(database(), u"Base05"_s); }
};

} // namespace

class Form1SlotsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void captionsAreTheStatedOnes();
    void carriersAreNotSeen();
    void aWholeSlotIsEnteredAndStored();
    void anUntouchedChoiceIsStoredAsNull();
    void aChoiceChangesNothingElse();
    void choicesFollowTheRowAtEveryButton();
    void theListFollowsTheRowOnlyWhereTheRowHasNoOption();
    void emptyCarriersKeepWhatWasShown();
    void minutesOf75AreStored();
    void timesAreStoredInAnyOrder();
    void enterMovesNowhere();
    void aClassIsEnteredWithItsUnusedStepsNull();
    void lookupsWriteWhetherChosenOrNot();
    void limitsOfTheClass();
    void aSlotOfAClassIsNotLookedUp();
};

void Form1SlotsTest::captionsAreTheStatedOnes() {
    SlotsFixture fixture;
    fixture.open(3);
    QStringList captions;
    for (int index = 0; index < 5; ++index)
        captions += fixture.at<QRadioButton>(option(index)).text();
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
    SlotsFixture fixture;
    fixture.open(3);
    QVERIFY(!fixture.box(u"Text4(6)"_s).isVisible());
    QVERIFY(!fixture.box(u"Text4(7)"_s).isVisible());
}

void Form1SlotsTest::aWholeSlotIsEnteredAndStored() {
    SlotsFixture fixture;
    fixture.open(3);
    fixture.press(u"CtrlCmd3(0)"_s);
    QCOMPARE(fixture.focused(), u"Text4(0)"_s);
    fixture.type(u"Text4(0)"_s, u"T"_s);
    fixture.type(u"Text4(1)"_s, u"試班"_s);
    fixture.press(option(3));
    for (const int position : {0, 2, 3})
        fixture.at<QCheckBox>(u"CheckT(%1)"_s.arg(position)).click();
    const QStringList times{u"070000"_s, u"123100"_s, u"080000"_s, u"120000"_s,
                            u"130000"_s, u"170000"_s, u"123000"_s, u"230030"_s};
    for (int index = 0; index < times.size(); ++index) {
        auto& time = fixture.at<TDBTime>(u"TDBTime1(%1)"_s.arg(index));
        time.setFocus();
        QTest::keyClicks(&time, times.at(index));
    }
    fixture.at<QCheckBox>(u"CheckRest"_s).click();
    fixture.chooseElasticType(4);
    int minutes = 1;
    for (const int index : {2, 3, 4, 5, 10, 9, 8})
        fixture.type(u"Text4(%1)"_s.arg(index), QString::number(minutes++));
    fixture.press(u"CtrlCmd3(4)"_s);
    QCOMPARE(fixture.slotRows(), QStringList{expectedRow(u"Base04"_s, {{u"TimeNo", u"T"},
                                                                       {u"TimeName", u"試班"},
                                                                       {u"CardType", 3},
                                                                       {u"StdC1", true},
                                                                       {u"StdC3", true},
                                                                       {u"StdC4", true},
                                                                       {u"StrIn1", QTime(7, 0)},
                                                                       {u"StrIn3", QTime(12, 31)},
                                                                       {u"StdT1", QTime(8, 0)},
                                                                       {u"StdT2", QTime(12, 0)},
                                                                       {u"StdT3", QTime(13, 0)},
                                                                       {u"StdT4", QTime(17, 0)},
                                                                       {u"EndOut2", QTime(12, 30)},
                                                                       {u"EndOut4", QTime(23, 0, 30)},
                                                                       {u"Rest", true},
                                                                       {u"ElstType", 4},
                                                                       {u"ElstMin", 1},
                                                                       {u"Cushion", 2},
                                                                       {u"Delay", 3},
                                                                       {u"Earlier", 4},
                                                                       {u"Cushion1", 5},
                                                                       {u"Delay1", 6},
                                                                       {u"Earlier1", 7}})});
}

void Form1SlotsTest::anUntouchedChoiceIsStoredAsNull() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 2}, {u"ElstType", 1}});
    fixture.open(3);
    QCOMPARE(optionShown(fixture), 2);
    fixture.press(u"CtrlCmd3(0)"_s);
    // The screen goes on showing the choice of the row before.
    QCOMPARE(optionShown(fixture), 2);
    QCOMPARE(fixture.elasticType(), u"至少8小時"_s);
    fixture.type(u"Text4(0)"_s, u"B"_s);
    fixture.press(u"CtrlCmd3(4)"_s);
    QCOMPARE(fixture.slotRows().last(), expectedRow(u"Base04"_s, {{u"TimeNo", u"B"}}));
    // A click on the option that is shown stores it.
    fixture.press(u"CtrlCmd3(1)"_s);
    fixture.press(option(2));
    fixture.press(u"CtrlCmd3(4)"_s);
    QCOMPARE(fixture.slotRows().last(), expectedRow(u"Base04"_s, {{u"TimeNo", u"B"}, {u"CardType", 2}}));
}

void Form1SlotsTest::aChoiceChangesNothingElse() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    const QStringList before = fixture.slotRows();
    fixture.open(3);
    fixture.press(u"CtrlCmd3(1)"_s);
    fixture.press(option(0));
    for (int position = 0; position < 4; ++position)
        QVERIFY(fixture.at<QCheckBox>(u"CheckT(%1)"_s.arg(position)).isChecked() &&
                fixture.at<QCheckBox>(u"CheckT(%1)"_s.arg(position)).isEnabled());
    fixture.press(u"CtrlCmd3(4)"_s);
    fixture.database().execute(u"update Base04 set CardType = 4"_s);
    QCOMPARE(fixture.slotRows(), before);
}

void Form1SlotsTest::choicesFollowTheRowAtEveryButton() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 1}, {u"ElstType", 3}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", 4}, {u"ElstType", 0}});
    fixture.open(3);
    QCOMPARE(optionShown(fixture), 1);
    QCOMPARE(fixture.elasticType(), u"下午4小時"_s);
    fixture.press(u"CtrlCmd3(8)"_s);
    QCOMPARE(optionShown(fixture), 4);
    QCOMPARE(fixture.elasticType(), u"無彈性"_s);
}

void Form1SlotsTest::theListFollowsTheRowOnlyWhereTheRowHasNoOption() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 1}, {u"ElstType", 3}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", 4}, {u"ElstType", 0}});
    addSlot(fixture.database(), u"C"_s, {{u"CardType", Value()}, {u"ElstType", 2}});
    fixture.open(3);

    // A row that becomes current without a button, as the source itself tells it.
    DataSource& data = *fixture.form().findChild<DataSource*>(u"Data1(3)"_s);
    data.MoveNext();
    QCOMPARE(optionShown(fixture), 4);
    QCOMPARE(fixture.elasticType(), u"下午4小時"_s);
    data.MoveNext();
    QCOMPARE(optionShown(fixture), 4);
    QCOMPARE(fixture.elasticType(), u"上午4小時"_s);
    fixture.press(u"CtrlCmd3(7)"_s);
    QCOMPARE(fixture.elasticType(), u"無彈性"_s);
}

void Form1SlotsTest::emptyCarriersKeepWhatWasShown() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", 3}, {u"ElstType", 1}});
    addSlot(fixture.database(), u"B"_s, {{u"CardType", Value()}, {u"ElstType", Value()}});
    fixture.open(3);
    fixture.press(u"CtrlCmd3(8)"_s);
    QCOMPARE(fixture.text(u"Text4(0)"_s), u"B"_s);
    QCOMPARE(optionShown(fixture), 3);
    QCOMPARE(fixture.elasticType(), u"至少8小時"_s);
}

void Form1SlotsTest::minutesOf75AreStored() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    fixture.open(3);
    fixture.press(u"CtrlCmd3(1)"_s);
    fixture.type(u"Text4(4)"_s, u"75"_s);
    fixture.press(u"CtrlCmd3(4)"_s);
    QCOMPARE(rowsOfSelection(fixture.database(), u"select Delay from Base04"_s), QStringList{u"75"_s});
}

void Form1SlotsTest::timesAreStoredInAnyOrder() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    fixture.open(3);
    fixture.press(u"CtrlCmd3(1)"_s);
    auto& out = fixture.at<TDBTime>(u"TDBTime1(3)"_s);
    out.setFocus();
    out.clear();
    QTest::keyClicks(&out, u"030000"_s);
    fixture.press(u"CtrlCmd3(4)"_s);
    QCOMPARE(rowsOfSelection(fixture.database(), u"select StdT1,StdT2 from Base04"_s),
             QStringList{u"08:00:00|03:00:00"_s});
}

void Form1SlotsTest::enterMovesNowhere() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    insertRow(fixture.database(), u"Base05"_s, {{u"ClsNo", u"001"}});
    fixture.open(3);
    fixture.press(u"CtrlCmd3(1)"_s);
    for (const QString& name : {u"Text4(0)"_s, u"CheckRest"_s, u"TDBTime1(0)"_s}) {
        fixture.at(name).setFocus();
        fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.focused(), name);
    }
    fixture.press(u"CtrlCmd3(3)"_s);
    fixture.clickTab(4);
    fixture.press(u"CtrlCmd4(1)"_s);
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.focused(), u"Text5(0)"_s);
}

void Form1SlotsTest::aClassIsEnteredWithItsUnusedStepsNull() {
    SlotsFixture fixture;
    fixture.open(4);
    fixture.press(u"CtrlCmd4(0)"_s);
    QCOMPARE(fixture.focused(), u"Text5(0)"_s);
    const QList<std::pair<int, QString>> texts{
        {0, u"T01"_s}, {1, u"試班"_s}, {5, u"A"_s}, {6, u"5"_s}, {7, u"2"_s}};
    for (const auto& [index, text] : texts)
        fixture.type(u"Text5(%1)"_s.arg(index), text);
    fixture.at<QCheckBox>(u"Check1"_s).click();
    QCOMPARE(fixture.at<QCheckBox>(u"Check1"_s).text(), u"國定假日休假"_s);
    fixture.press(u"CtrlCmd4(4)"_s);
    QCOMPARE(fixture.classRows(), QStringList{expectedRow(u"Base05"_s, {{u"ClsNo", u"T01"},
                                                                        {u"ClassName", u"試班"},
                                                                        {u"TimeNo2", u"A"},
                                                                        {u"TimeDay2", 5},
                                                                        {u"TimeRest2", 2},
                                                                        {u"ChkHoli", true}})});
    // Modified and saved, the unused steps stay null.
    fixture.press(u"CtrlCmd4(1)"_s);
    fixture.press(u"CtrlCmd4(4)"_s);
    QCOMPARE(rowsOfSelection(fixture.database(), u"select ClsNo from Base05 where TimeNo1 <> null"_s),
             QStringList());
    for (int line = 1; line <= 6; ++line)
        QCOMPARE(fixture.label(u"Label9(%1)"_s.arg(line)), QString());
}

void Form1SlotsTest::lookupsWriteWhetherChosenOrNot() {
    SlotsFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    addSlot(fixture.database(), u"N"_s);
    insertRow(fixture.database(), u"Base05"_s, {{u"ClsNo", u"001"}, {u"TimeNo1", u"A"}});
    fixture.open(4);
    fixture.press(u"CtrlCmd4(1)"_s);
    // The first, cancelled, empties the box.
    fixture.answers.expect(u"QFrmTimeNo"_s, [](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(u"Search(0)"_s);
    QCOMPARE(fixture.text(u"Text5(2)"_s), QString());
    for (int step = 0; step < 6; ++step) {
        fixture.answers.expect(u"QFrmTimeNo"_s, [step](QWidget& dialog) {
            if (step == 0)
                clickRow(dialog, 1);
            step == 0 ? clickOk(dialog) : clickCancel(dialog);
        });
        fixture.press(u"Search(%1)"_s.arg(step));
        // From then on a cancelled one writes the earlier pick.
        QCOMPARE(fixture.text(u"Text5(%1)"_s.arg(3 * step + 2)), u"N"_s);
    }
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form1SlotsTest::limitsOfTheClass() {
    SlotsFixture fixture;
    fixture.open(4);
    fixture.press(u"CtrlCmd4(0)"_s);
    QTest::keyClicks(&fixture.box(u"Text5(0)"_s), u"ABCDE"_s);
    QCOMPARE(fixture.text(u"Text5(0)"_s), u"ABC"_s);
    QTest::keyClicks(&fixture.box(u"Text5(1)"_s), u"1234567890123456"_s);
    QCOMPARE(fixture.text(u"Text5(1)"_s), u"12345678901234"_s);
}

void Form1SlotsTest::aSlotOfAClassIsNotLookedUp() {
    SlotsFixture fixture;
    fixture.open(4);
    fixture.press(u"CtrlCmd4(0)"_s);
    fixture.type(u"Text5(0)"_s, u"001"_s);
    fixture.type(u"Text5(2)"_s, u"Q"_s);
    fixture.press(u"CtrlCmd4(4)"_s);
    QCOMPARE(fixture.classRows(),
             QStringList{expectedRow(u"Base05"_s, {{u"ClsNo", u"001"}, {u"TimeNo1", u"Q"}})});
    QCOMPARE(fixture.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form1SlotsTest>(argc, argv);
}

#include "Form1SlotsTest.moc"
