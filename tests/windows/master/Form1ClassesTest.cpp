#include "windows/master/Form1Pages.h"

#include "app/LookupProcess.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int Tab = 4;
constexpr int Steps = 6;
enum Button { Add = 0, Modify = 1, Cancel = 3, Save = 4, Refresh = 10 };

QString field(int index) {
    return u"Text5(%1)"_s.arg(index);
}

QString search(int step) {
    return u"Search(%1)"_s.arg(step);
}

class ClassFixture : public PlainPageFixture {
  public:
    ClassFixture() : PlainPageFixture(Tab) {}

    void begin() {
        openPage();
        pressButton(Add);
        type(field(0), u"001"_s);
    }
    [[nodiscard]] static QString rowOf001(Fields fields) {
        fields.prepend({u"ClsNo", u"001"_s});
        return expectedRow(u"Base05"_s, fields);
    }
    [[nodiscard]] QStringList texts() const {
        QStringList all;
        for (int index = 0; index < 20; ++index)
            all += text(field(index));
        return all;
    }
    /// The slots' lookup comes next and is answered.
    void expectLookup(const PromptAnswers::Action& answer) { answers.expect(u"QFrmTimeNo"_s, answer); }
};

int saveAStep(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(1);
        Window& form = *moduleWindow(1);
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(Tab);
        click(control(form, u"CtrlCmd4(1)"_s));
        typeInto(control<QLineEdit>(form, arguments.at(0)), arguments.at(1));
        click(control(form, u"CtrlCmd4(4)"_s));
    });
}

} // namespace

/// The shift classes' controls: six lines of slot, days and rest.
class Form1ClassesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aLineReadsAsStated();
    void theFirstLineHasCodeAndName();
    void everyBoxStoresItsColumn();
    void aStepStandsByItself_data();
    void aStepStandsByItself();
    void unusedStepsStayNullThroughEverySave();
    void anEmptiedStepIsNull();
    void theHolidayMarkIsStored();
    void daysAndRestsAreNotTested_data();
    void daysAndRestsAreNotTested();
    void daysThatAreNoNumberEndTheProgram_data();
    void daysThatAreNoNumberEndTheProgram();
    void aSlotThatDoesNotExistIsStored();
    void aLookupWritesTheChosenSlot_data();
    void aLookupWritesTheChosenSlot();
    void theFirstLookupCancelledEmptiesTheBox();
    void aLaterLookupCancelledWritesTheEarlierPick();
    void aPickOutlivesTheWindow();
    void aLookupOfNoSlotsWritesNothing();
    void lookupsAreOffWhileBrowsing();
    void theLabelsAtTheEndStayEmpty();
    void enterStaysInEveryControl();
};

void Form1ClassesTest::aLineReadsAsStated() {
    ClassFixture fixture;
    fixture.openPage();
    const QWidget& frame = fixture.at(u"Frame1(4)"_s);
    for (int step = 0; step < Steps; ++step) {
        const QWidget& slot = fixture.at(field(3 * step + 2));
        const int middle = slot.mapTo(&frame, slot.rect().center()).y();
        // Everything that the line passes through, from left to right.
        QMap<int, QString> line;
        for (const auto* each : frame.findChildren<QWidget*>()) {
            const QRect place(each->mapTo(&frame, QPoint()), each->size());
            if (!each->isVisible() || place.top() > middle || place.bottom() < middle)
                continue;
            if (const auto* label = qobject_cast<const QLabel*>(each)) {
                if (!label->text().isEmpty())
                    line[place.left()] = label->text();
            } else if (!each->objectName().isEmpty() && !each->objectName().startsWith(u"qt_")) {
                line[place.left()] = each->objectName();
            }
        }
        QCOMPARE(line.values(),
                 QStringList({u"時　　段："_s, field(3 * step + 2), search(step), u"×"_s, field(3 * step + 3),
                              u"天，"_s, u"休息："_s, field(3 * step + 4), u"天"_s}));
    }
}

void Form1ClassesTest::theFirstLineHasCodeAndName() {
    ClassFixture fixture;
    fixture.openPage();
    QStringList labels;
    for (const auto* label : fixture.at(u"Frame1(4)"_s).findChildren<QLabel*>())
        labels += label->text();
    QCOMPARE(labels.count(u"班　　別："_s), 1);
    QCOMPARE(fixture.at<QCheckBox>(u"Check1"_s).text(), u"國定假日休假"_s);
    const QRect code = fixture.at(field(0)).geometry();
    const QRect name = fixture.at(field(1)).geometry();
    QVERIFY(code.right() < name.left() && code.intersects(QRect(code.x(), name.y(), 1, name.height())));
}

void Form1ClassesTest::everyBoxStoresItsColumn() {
    ClassFixture fixture;
    fixture.begin();
    fixture.type(field(1), u"輪班"_s);
    Fields expected{{u"ClassName", u"輪班"_s}};
    for (int step = 0; step < Steps; ++step) {
        const QString code(QChar(u'A' + step));
        fixture.type(field(3 * step + 2), code);
        fixture.type(field(3 * step + 3), QString::number(10 + step));
        fixture.type(field(3 * step + 4), QString::number(20 + step));
        expected.append({u"TimeNo%1"_s.arg(step + 1), code});
        expected.append({u"TimeDay%1"_s.arg(step + 1), 10 + step});
        expected.append({u"TimeRest%1"_s.arg(step + 1), 20 + step});
    }
    const QStringList typed = fixture.texts();
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001(expected)});
    fixture.pressButton(Refresh);
    QCOMPARE(fixture.texts(), typed);
}

void Form1ClassesTest::aStepStandsByItself_data() {
    QTest::addColumn<int>("step");
    for (int step = 1; step <= Steps; ++step)
        QTest::addRow("step %d alone", step) << step;
}

void Form1ClassesTest::aStepStandsByItself() {
    QFETCH(const int, step);
    ClassFixture fixture;
    fixture.begin();
    fixture.type(field(3 * step - 1), u"N"_s);
    fixture.type(field(3 * step), u"5"_s);
    fixture.type(field(3 * step + 1), u"2"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({{u"TimeNo%1"_s.arg(step), u"N"_s},
                                                                 {u"TimeDay%1"_s.arg(step), 5},
                                                                 {u"TimeRest%1"_s.arg(step), 2}})});
}

void Form1ClassesTest::unusedStepsStayNullThroughEverySave() {
    ClassFixture fixture;
    fixture.begin();
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({})});
    fixture.pressButton(Modify);
    fixture.type(field(1), u"班"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({{u"ClassName", u"班"_s}})});
}

void Form1ClassesTest::anEmptiedStepIsNull() {
    ClassFixture fixture;
    insertRow(
        fixture.database(), u"Base05"_s,
        {{u"ClsNo", u"001"}, {u"TimeNo1", u"A"}, {u"TimeDay1", 5}, {u"TimeRest1", 2}, {u"TimeNo2", u"N"}});
    fixture.openPage();
    fixture.pressButton(Modify);
    for (const int index : {2, 3, 4})
        fixture.type(field(index), QString());
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({{u"TimeNo2", u"N"_s}})});
}

void Form1ClassesTest::theHolidayMarkIsStored() {
    ClassFixture fixture;
    fixture.begin();
    fixture.tick(u"Check1"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({{u"ChkHoli", true}})});
    fixture.pressButton(Modify);
    fixture.tick(u"Check1"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({})});
}

void Form1ClassesTest::daysAndRestsAreNotTested_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("none") << 0;
    QTest::newRow("below none") << -3;
    QTest::newRow("more than a year") << 400;
}

void Form1ClassesTest::daysAndRestsAreNotTested() {
    QFETCH(const int, number);
    ClassFixture fixture;
    fixture.begin();
    fixture.type(field(2), u"A"_s);
    fixture.type(field(3), QString::number(number));
    fixture.type(field(4), QString::number(number));
    fixture.pressButton(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001(
                                 {{u"TimeNo1", u"A"_s}, {u"TimeDay1", number}, {u"TimeRest1", number}})});
}

void Form1ClassesTest::daysThatAreNoNumberEndTheProgram_data() {
    QTest::addColumn<QString>("where");
    QTest::newRow("days") << field(3);
    QTest::newRow("rests") << field(19);
}

void Form1ClassesTest::daysThatAreNoNumberEndTheProgram() {
    QFETCH(const QString, where);
    TestStore store;
    insertRow(store.database(), u"Base05"_s, {{u"ClsNo", u"001"}, {u"TimeDay1", 5}});
    OtherProcess program(store.folder(), u"saveAStep"_s, {where, u"x"_s});
    QCOMPARE(program.waitForEnd(), std::optional(1));
    QCOMPARE(program.lines().size(), 1);
    QVERIFY2(program.lines().constFirst().startsWith(u"Pontrel|執行階段錯誤 '"_s),
             qUtf8Printable(program.lines().constFirst()));
    QCOMPARE(rowsOf(*store.connect(), u"Base05"_s), QStringList{ClassFixture::rowOf001({{u"TimeDay1", 5}})});
}

void Form1ClassesTest::aSlotThatDoesNotExistIsStored() {
    ClassFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    fixture.begin();
    fixture.type(field(2), u"QR"_s); // one character is all that it takes
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.text(field(2)), u"Q"_s);
    fixture.pressButton(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({{u"TimeNo1", u"Q"_s}})});
}

void Form1ClassesTest::aLookupWritesTheChosenSlot_data() {
    QTest::addColumn<int>("step");
    for (int step = 0; step < Steps; ++step)
        QTest::addRow("Search(%d)", step) << step;
}

void Form1ClassesTest::aLookupWritesTheChosenSlot() {
    QFETCH(const int, step);
    ClassFixture fixture;
    for (const QString& code : {u"A"_s, u"B"_s, u"N"_s})
        addSlot(fixture.database(), code);
    fixture.begin();
    QStringList expected = fixture.texts();
    expected[3 * step + 2] = u"B"_s;
    fixture.expectLookup([](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    fixture.press(search(step));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"時段代碼查詢"_s);
    QCOMPARE(fixture.texts(), expected);
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({{u"TimeNo%1"_s.arg(step + 1), u"B"_s}})});
}

void Form1ClassesTest::theFirstLookupCancelledEmptiesTheBox() {
    ClassFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    insertRow(fixture.database(), u"Base05"_s, {{u"ClsNo", u"001"}, {u"TimeNo2", u"A"}, {u"TimeDay2", 5}});
    fixture.openPage();
    fixture.pressButton(Modify);
    fixture.expectLookup([](QWidget& dialog) { clickCancel(dialog); });
    fixture.press(search(1));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.text(field(5)), QString());
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(), QStringList{ClassFixture::rowOf001({{u"TimeDay2", 5}})});
}

void Form1ClassesTest::aLaterLookupCancelledWritesTheEarlierPick() {
    ClassFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    addSlot(fixture.database(), u"N"_s);
    fixture.begin();
    fixture.type(field(17), u"X"_s);
    fixture.expectLookup([](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    fixture.press(search(0));
    fixture.expectLookup([](QWidget& dialog) {
        clickRow(dialog, 0);
        clickCancel(dialog);
    });
    fixture.press(search(5));
    QCOMPARE(fixture.answers.trouble(), QString());
    fixture.pressButton(Save);
    QCOMPARE(fixture.rows(),
             QStringList{ClassFixture::rowOf001({{u"TimeNo1", u"N"_s}, {u"TimeNo6", u"N"_s}})});
}

void Form1ClassesTest::aPickOutlivesTheWindow() {
    ClassFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    fixture.begin();
    fixture.expectLookup([](QWidget& dialog) { clickOk(dialog); });
    fixture.press(search(0));
    fixture.pressButton(Cancel);
    fixture.press(fixture.button(12));
    OpenToolWindow(1);
    fixture.clickTab(Tab);
    fixture.pressButton(Add);
    fixture.expectLookup([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    fixture.press(search(3));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.text(field(11)), u"A"_s);
}

void Form1ClassesTest::aLookupOfNoSlotsWritesNothing() {
    ClassFixture fixture;
    fixture.begin();
    fixture.type(field(8), u"X"_s);
    fixture.expectLookup([](QWidget& dialog) { clickOk(dialog); });
    fixture.press(search(2));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.text(field(8)), QString());
}

void Form1ClassesTest::lookupsAreOffWhileBrowsing() {
    ClassFixture fixture;
    fixture.addCodes(1);
    fixture.openPage();
    const QStringList before = fixture.texts();
    for (int step = 0; step < Steps; ++step)
        fixture.press(search(step));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().size(), 0);
    QCOMPARE(fixture.texts(), before);
}

void Form1ClassesTest::theLabelsAtTheEndStayEmpty() {
    ClassFixture fixture;
    addSlot(fixture.database(), u"A"_s);
    insertRow(fixture.database(), u"Base05"_s, {{u"ClsNo", u"001"}, {u"TimeNo1", u"A"}});
    fixture.openPage();
    const auto labels = [&fixture] {
        QString all;
        for (int line = 1; line <= Steps; ++line)
            all += fixture.label(u"Label9(%1)"_s.arg(line));
        return all;
    };
    QCOMPARE(labels(), QString());
    fixture.pressButton(Modify);
    fixture.type(field(5), u"A"_s);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(labels(), QString());
    fixture.pressButton(Save);
    QCOMPARE(labels(), QString());
}

void Form1ClassesTest::enterStaysInEveryControl() {
    ClassFixture fixture;
    fixture.addCodes(1);
    fixture.openPage();
    fixture.pressButton(Modify);
    QStringList names{u"Check1"_s};
    for (int index = 0; index < 20; ++index)
        names += field(index);
    for (const QString& name : names) {
        fixture.at(name).setFocus();
        fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.focused(), name);
    }
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form1ClassesTest>(argc, argv, {{u"saveAStep"_s, saveAStep}});
}

#include "Form1ClassesTest.moc"
