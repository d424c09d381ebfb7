#include "app/LookupProcess.h"
#include "windows/master/Form1SlotFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int Tab = 3;
enum Button { Modify = 1, Save = 4, Refresh = 10 };

const QStringList TimeColumns{u"StrIn1"_s, u"StrIn3"_s, u"StdT1"_s,   u"StdT2"_s,
                              u"StdT3"_s,  u"StdT4"_s,  u"EndOut2"_s, u"EndOut4"_s};
const QList<std::pair<int, QString>> MinuteColumns{{2, u"ElstMin"_s}, {3, u"Cushion"_s},   {4, u"Delay"_s},
                                                   {5, u"Earlier"_s}, {10, u"Cushion1"_s}, {9, u"Delay1"_s},
                                                   {8, u"Earlier1"_s}};

int saveMinutesThatAreNone(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(Tab);
        click(control(form, u"CtrlCmd3(1)"_s));
        typeInto(control<QLineEdit>(form, u"Text4(2)"_s), arguments.constFirst());
        click(control(form, u"CtrlCmd3(4)"_s));
    });
}

} // namespace

/// The time slots' controls, one by one: which column each writes, and what it leaves alone.
class Form1ChoicesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void labelsAreTheStatedOnes();
    void timeBoxesAreToldApart();
    void nothingAnswersWhileBrowsing();
    void anOptionStoresItsIndexAndNothingElse_data();
    void anOptionStoresItsIndexAndNothingElse();
    void anArrowKeyStoresTheOptionThatItMovesTo();
    void anArrowKeyStoresTheOptionThatIsShownAlready();
    void anEntryStoresItsPlaceAndNothingElse_data();
    void anEntryStoresItsPlaceAndNothingElse();
    void aPunchBoxStoresItsColumnAndNothingElse_data();
    void aPunchBoxStoresItsColumnAndNothingElse();
    void restIsStored();
    void aTimeStoresItsColumnAndNothingElse_data();
    void aTimeStoresItsColumnAndNothingElse();
    void anEmptiedTimeIsStoredAsNull();
    void seventyFiveMinutesAreStored_data();
    void seventyFiveMinutesAreStored();
    void minutesThatAreNoNumberEndTheProgram_data();
    void minutesThatAreNoNumberEndTheProgram();
    void noPunchesWithEverythingFilledIsStoredAsItStands();
    void enterStaysInEveryControl();
};

void Form1ChoicesTest::labelsAreTheStatedOnes() {
    SlotFixture fixture;
    fixture.openPage();
    QMap<QString, int> labels;
    for (const auto* label : fixture.at(u"Frame1(3)"_s).findChildren<QLabel*>())
        ++labels[label->text()];
    QCOMPARE(labels[u"時段："_s], 1);
    QCOMPARE(labels[u"彈性類別："_s], 1);
    QCOMPARE(labels[u"彈性："_s], 1);
    for (const QString& text : {u"緩衝："_s, u"遲到："_s, u"早退："_s})
        QCOMPARE(labels[text], 2);
    for (const QString& text : {u"上午"_s, u"下午"_s})
        QCOMPARE(labels[text], 1);
    QCOMPARE(labels[u"分"_s], 7);
}

void Form1ChoicesTest::timeBoxesAreToldApart() {
    SlotFixture fixture;
    fixture.openPage();
    QStringList names;
    for (int index = 0; index < 8; ++index) {
        QVERIFY(!fixture.time(index).accessibleName().isEmpty());
        names += fixture.time(index).accessibleName();
    }
    QCOMPARE(names.removeDuplicates(), 0);
}

void Form1ChoicesTest::nothingAnswersWhileBrowsing() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    fixture.openPage();
    const auto before = fixture.everything();
    for (int index = 0; index < 5; ++index)
        fixture.press(named(u"OptCT"_s, index));
    for (int index = 0; index < 4; ++index)
        fixture.tick(named(u"CheckT"_s, index));
    fixture.tick(u"CheckRest"_s);
    fixture.press(u"Combo1"_s);
    QVERIFY(!fixture.list().view()->isVisible());
    QCOMPARE(fixture.changedSince(before), QStringList());
}

void Form1ChoicesTest::anOptionStoresItsIndexAndNothingElse_data() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < 5; ++index)
        QTest::addRow("OptCT(%d)", index) << index;
}

void Form1ChoicesTest::anOptionStoresItsIndexAndNothingElse() {
    QFETCH(const int, index);
    SlotFixture fixture;
    fixture.begin();
    const auto before = fixture.everything();
    fixture.press(named(u"OptCT"_s, index));
    QCOMPARE(fixture.optionShown(), index);
    QCOMPARE(fixture.text(u"Text4(7)"_s), QString::number(index));
    QStringList changed = fixture.changedSince(before);
    changed.removeIf([](const QString& name) { return name.startsWith(u"OptCT"); });
    QCOMPARE(changed, QStringList{u"Text4(7)"_s});
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({{u"CardType", index}})});
    QCOMPARE(fixture.optionShown(), index);
}

void Form1ChoicesTest::anArrowKeyStoresTheOptionThatItMovesTo() {
    SlotFixture fixture;
    fixture.begin();
    fixture.key(Qt::Key_Tab);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.focused(), u"OptCT(0)"_s);
    QCOMPARE(fixture.optionShown(), -1);
    fixture.key(Qt::Key_Right);
    QCOMPARE(fixture.focused(), u"OptCT(1)"_s);
    QCOMPARE(fixture.optionShown(), 1);
    fixture.key(Qt::Key_Right);
    QCOMPARE(fixture.optionShown(), 2);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({{u"CardType", 2}})});
}

void Form1ChoicesTest::anArrowKeyStoresTheOptionThatIsShownAlready() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"0"_s, {{u"CardType", 2}});
    fixture.begin();
    // A press that is dragged away gives an option the keyboard and does not choose it.
    QWidget& option = fixture.at(named(u"OptCT"_s, 3));
    QTest::mousePress(&option, Qt::LeftButton);
    QTest::mouseRelease(&option, Qt::LeftButton, {}, QPoint(-50, -50));
    QCOMPARE(fixture.focused(), u"OptCT(3)"_s);
    QCOMPARE(fixture.optionShown(), 2);
    fixture.key(Qt::Key_Left);
    QCOMPARE(fixture.focused(), u"OptCT(2)"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows().last(), SlotFixture::rowOfA({{u"CardType", 2}}));
}

void Form1ChoicesTest::anEntryStoresItsPlaceAndNothingElse_data() {
    QTest::addColumn<int>("entry");
    for (int entry = 0; entry < 5; ++entry)
        QTest::addRow("entry %d", entry) << entry;
}

void Form1ChoicesTest::anEntryStoresItsPlaceAndNothingElse() {
    QFETCH(const int, entry);
    SlotFixture fixture;
    fixture.begin();
    const auto before = fixture.everything();
    fixture.choose(entry);
    QCOMPARE(fixture.list().currentIndex(), entry);
    QCOMPARE(fixture.text(u"Text4(6)"_s), QString::number(entry));
    QStringList changed = fixture.changedSince(before);
    changed.removeOne(u"Combo1"_s);
    QCOMPARE(changed, QStringList{u"Text4(6)"_s});
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({{u"ElstType", entry}})});
    QCOMPARE(fixture.list().currentIndex(), entry);
}

void Form1ChoicesTest::aPunchBoxStoresItsColumnAndNothingElse_data() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < 4; ++index)
        QTest::addRow("CheckT(%d)", index) << index;
}

void Form1ChoicesTest::aPunchBoxStoresItsColumnAndNothingElse() {
    QFETCH(const int, index);
    SlotFixture fixture;
    fixture.begin();
    const auto before = fixture.everything();
    fixture.tick(named(u"CheckT"_s, index));
    QCOMPARE(fixture.changedSince(before), QStringList{named(u"CheckT"_s, index)});
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({{u"StdC%1"_s.arg(index + 1), true}})});
    fixture.pressButton(Modify);
    fixture.tick(named(u"CheckT"_s, index));
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({})});
}

void Form1ChoicesTest::restIsStored() {
    SlotFixture fixture;
    fixture.begin();
    const auto before = fixture.everything();
    fixture.tick(u"CheckRest"_s);
    QCOMPARE(fixture.changedSince(before), QStringList{u"CheckRest"_s});
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({{u"Rest", true}})});
    fixture.pressButton(Refresh);
    QVERIFY(fixture.at<QCheckBox>(u"CheckRest"_s).isChecked());
}

void Form1ChoicesTest::aTimeStoresItsColumnAndNothingElse_data() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < 8; ++index)
        QTest::addRow("TDBTime1(%d)", index) << index;
}

void Form1ChoicesTest::aTimeStoresItsColumnAndNothingElse() {
    QFETCH(const int, index);
    SlotFixture fixture;
    fixture.begin();
    QCOMPARE(fixture.time(index).displayText(), u"__:__:__"_s);
    const auto before = fixture.everything();
    fixture.typeTime(index, u"075930"_s);
    QCOMPARE(fixture.time(index).displayText(), u"07:59:30"_s);
    QCOMPARE(fixture.changedSince(before), QStringList{named(u"TDBTime1"_s, index)});
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({{TimeColumns.at(index), QTime(7, 59, 30)}})});
    fixture.pressButton(Refresh);
    QCOMPARE(fixture.time(index).displayText(), u"07:59:30"_s);
}

void Form1ChoicesTest::anEmptiedTimeIsStoredAsNull() {
    SlotFixture fixture;
    insertRow(fixture.database(), u"Base04"_s,
              {{u"TimeNo", u"A"}, {u"StdT1", QTime(8, 0)}, {u"StdT2", QTime(0, 0)}});
    fixture.openPage();
    QCOMPARE(fixture.time(3).displayText(), u"00:00:00"_s);
    fixture.pressButton(Modify);
    fixture.time(2).setFocus();
    fixture.time(2).selectAll();
    QTest::keyClick(&fixture.time(2), Qt::Key_Delete);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({{u"StdT2", QTime(0, 0)}})});
}

void Form1ChoicesTest::seventyFiveMinutesAreStored_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("column");
    for (const auto& [index, column] : MinuteColumns)
        QTest::newRow(qUtf8Printable(column)) << index << column;
}

void Form1ChoicesTest::seventyFiveMinutesAreStored() {
    QFETCH(const int, index);
    QFETCH(const QString, column);
    SlotFixture fixture;
    fixture.begin();
    fixture.type(named(u"Text4"_s, index), u"75"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA({{column, 75}})});
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form1ChoicesTest::minutesThatAreNoNumberEndTheProgram_data() {
    QTest::addColumn<QString>("typed");
    QTest::newRow("letters") << u"x"_s;
    QTest::newRow("a blank") << u" "_s;
}

void Form1ChoicesTest::minutesThatAreNoNumberEndTheProgram() {
    QFETCH(const QString, typed);
    TestStore store;
    addSlot(store.database(), u"A"_s);
    const QStringList before = rowsOf(store.database(), u"Base04"_s);
    OtherProcess program(store.folder(), u"saveMinutesThatAreNone"_s, {typed});
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines().size(), 1);
    QVERIFY2(program.lines().constFirst().startsWith(u"Pontrel|執行階段錯誤 '"_s),
             qUtf8Printable(program.lines().constFirst()));
    QCOMPARE(rowsOf(*store.connect(), u"Base04"_s), before);
}

void Form1ChoicesTest::noPunchesWithEverythingFilledIsStoredAsItStands() {
    SlotFixture fixture;
    fixture.begin();
    Fields expected{{u"CardType", 0}, {u"ElstType", 1}, {u"Rest", true}};
    for (int index = 0; index < 4; ++index) {
        fixture.tick(named(u"CheckT"_s, index));
        expected.append({u"StdC%1"_s.arg(index + 1), true});
    }
    // Each time lies before the one that ought to follow it.
    for (int index = 0; index < 8; ++index) {
        fixture.typeTime(index, u"%1:30:15"_s.arg(20 - index));
        expected.append({TimeColumns.at(index), QTime(20 - index, 30, 15)});
    }
    for (const auto& [index, column] : MinuteColumns) {
        fixture.type(named(u"Text4"_s, index), QString::number(10 + index));
        expected.append({column, 10 + index});
    }
    fixture.tick(u"CheckRest"_s);
    fixture.choose(1);
    fixture.press(named(u"OptCT"_s, 0));
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{SlotFixture::rowOfA(expected)});
    QCOMPARE(fixture.answers.trouble(), QString());
}

void Form1ChoicesTest::enterStaysInEveryControl() {
    SlotFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    fixture.openPage();
    fixture.pressButton(Modify);
    QStringList names{u"CheckRest"_s};
    for (const int index : {0, 1, 2, 3, 4, 5, 8, 9, 10})
        names += named(u"Text4"_s, index);
    for (int index = 0; index < 8; ++index)
        names += named(u"TDBTime1"_s, index);
    for (int index = 0; index < 4; ++index)
        names += named(u"CheckT"_s, index);
    const auto before = fixture.everything();
    for (const QString& name : names) {
        fixture.at(name).setFocus();
        fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.focused(), name);
    }
    QCOMPARE(fixture.changedSince(before), QStringList());
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
}

int main(int argc, char** argv) {
    return runTests<Form1ChoicesTest>(argc, argv, {{u"saveMinutesThatAreNone"_s, saveMinutesThatAreNone}});
}

#include "Form1ChoicesTest.moc"
