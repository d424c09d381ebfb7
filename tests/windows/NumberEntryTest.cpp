#include "app/controls/MaskedEdit.h"
#include "app/controls/TDBDate.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/RecordTyping.h"
#include "windows/EveryWindow.h"

#include <QClipboard>
#include <QComboBox>
#include <QInputMethodQueryEvent>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// What the platform's input method asks of the control with the focus before it opens for it.
bool takesInputMethod(QWidget& control) {
    QInputMethodQueryEvent query(Qt::ImEnabled);
    QCoreApplication::sendEvent(&control, &query);
    return query.value(Qt::ImEnabled).toBool();
}

/// The same of one that stands in an area that is off, which takes none in any case.
bool enabledTakesInputMethod(QWidget& control) {
    for (QWidget* area = &control; !area->isWindow(); area = area->parentWidget())
        area->setEnabled(true);
    return takesInputMethod(control);
}

void commit(QLineEdit& box, const QString& text) {
    box.clear();
    typeInto(box, text);
}

void paste(QLineEdit& box, const QString& text) {
    box.clear();
    QApplication::clipboard()->setText(text);
    QTest::keySequence(&box, QKeySequence::Paste);
}

void fill(Database& database) {
    addEmployee(database, u"10001"_s, {{u"EmpName", u"王小明"}});
    addSlot(database, u"A"_s);
    insertRow(database, u"Base05"_s, {{u"ClsNo", u"D01"}, {u"ClassName", u"日班"}});
}

/// The boxes of a page that hold numbers, and one that holds a text.
struct NumberPage {
    QString window;
    int tab;       ///< -1 where there are none.
    QString begin; ///< The button that begins an edit or a batch.
    QStringList numbers;
    QString text; ///< Empty where there is none.
};

QStringList boxes(const QString& array, const QList<int>& indexes) {
    QStringList names;
    for (const int index : indexes)
        names << u"%1(%2)"_s.arg(array).arg(index);
    return names;
}

QList<NumberPage> pages() {
    return {{u"Form1"_s, 3, u"CtrlCmd3(1)"_s, boxes(u"Text4"_s, {2, 3, 4, 5, 8, 9, 10}), u"Text4(1)"_s},
            {u"Form1"_s, 4, u"CtrlCmd4(1)"_s, boxes(u"Text5"_s, {3, 4, 6, 7, 9, 10, 12, 13, 15, 16, 18, 19}),
             u"Text5(2)"_s},
            {u"Form1"_s, 5, u"CtrlCmd5(1)"_s, boxes(u"Text6"_s, {8, 9, 10, 11, 12, 13, 14, 25, 26}),
             u"Text6(1)"_s},
            {u"Form4"_s, 1, u"CtrlCmd1(0)"_s, boxes(u"Text2"_s, {2, 3, 4}), u"Text2(0)"_s},
            {u"Form4"_s, 2, u"CtrlCmd2(0)"_s, boxes(u"Text3"_s, {3}), u"Text3(4)"_s},
            {u"Form4"_s, 3, u"CmdBat(0)"_s, boxes(u"Text8"_s, {1}), u"Text8(0)"_s},
            {u"Form6"_s, 0, u"CtrlCmd0(0)"_s, boxes(u"Text1"_s, {4}), u"Text1(5)"_s},
            {u"Form6"_s, 1, u"CmdBat(0)"_s, boxes(u"Text8"_s, {1}), {}},
            {u"FrmSysSet"_s, -1, u"CtrlCmd(0)"_s, boxes(u"Text1"_s, {1, 2, 3, 4}), u"Text1(9)"_s}};
}

} // namespace

/// Boxes for digits in all windows: masks, times, dates and numbers.
class NumberEntryTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void theInputMethodIsOffForDatesAndTimes_data() { addEveryWindow(); }
    void theInputMethodIsOffForDatesAndTimes();
    void theInputMethodIsOffForDatesInDialogs();
    void theInputMethodIsOffForNumbersAlone_data() { addEveryWindow(); }
    void theInputMethodIsOffForNumbersAlone();
    void fullWidthNumbersBecomePlain_data() { addPages(); }
    void fullWidthNumbersBecomePlain();
    void fullWidthMinutesAreStored();
    void fullWidthDaysWithAPointAreStored();
    void whatIsNoNumberStaysAsItIsTyped();

  private:
    static void addPages();
    [[nodiscard]] static Window& open(const QString& title);
    /// Opens the window of the page and begins an edit there.
    [[nodiscard]] static Window& edit(const NumberPage& page);
};

void NumberEntryTest::addPages() {
    QTest::addColumn<int>("page");
    for (int page = 0; page < pages().size(); ++page)
        QTest::addRow("%s", qPrintable(pages().at(page).window + u' ' + pages().at(page).begin)) << page;
}

void NumberEntryTest::initTestCase() {
    registerWindows();
}

Window& NumberEntryTest::open(const QString& title) {
    const auto windows = everyWindow();
    const auto found =
        std::find_if(windows.begin(), windows.end(), [&](const auto& each) { return each.title == title; });
    found->open();
    return *found->opened();
}

Window& NumberEntryTest::edit(const NumberPage& page) {
    Window& form = open(page.window);
    if (page.tab >= 0)
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(page.tab);
    click(control<QPushButton>(form, page.begin));
    return form;
}

void NumberEntryTest::theInputMethodIsOffForDatesAndTimes() {
    QFETCH(const std::size_t, window);
    TestStore store;
    const Shell shell(store);
    const EveryWindow each = everyWindow().at(window);
    each.open();
    const auto masks = each.opened()->findChildren<MaskedEdit*>();
    const auto dates = each.opened()->findChildren<TDBDate*>();
    const QMap<QString, QString> expected{{u"Form1"_s, u"12 masks, 4 dates"_s},
                                          {u"Form2"_s, u"5 masks, 5 dates"_s},
                                          {u"Form4"_s, u"9 masks, 5 dates"_s},
                                          {u"Form5"_s, u"4 masks, 4 dates"_s},
                                          {u"Form6"_s, u"20 masks, 4 dates"_s}};
    if (expected.contains(each.title))
        QCOMPARE(u"%1 masks, %2 dates"_s.arg(masks.size()).arg(dates.size()), expected.value(each.title));
    for (QWidget* box :
         QList<QWidget*>(masks.begin(), masks.end()) + QList<QWidget*>(dates.begin(), dates.end()))
        QVERIFY2(!enabledTakesInputMethod(*box), qPrintable(box->objectName()));
    for (const MaskedEdit* mask : masks)
        QVERIFY(mask->inputMethodHints().testFlag(Qt::ImhPreferNumbers));
}

void NumberEntryTest::theInputMethodIsOffForDatesInDialogs() {
    TestStore store;
    const Shell shell(store);
    PromptAnswers answers;
    int masks = 0;
    const auto look = [&masks](QWidget& dialog) {
        for (MaskedEdit* mask : dialog.findChildren<MaskedEdit*>())
            masks += !takesInputMethod(*mask);
        click(control(dialog, u"Command1(1)"_s));
    };
    answers.expect(u"FrmI1Date"_s, look).expect(u"FrmI2Date"_s, look);
    FrmI1Date::ask(gMDI);
    FrmI2Date::ask(gMDI);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(masks, 3);
}

void NumberEntryTest::theInputMethodIsOffForNumbersAlone() {
    QFETCH(const std::size_t, window);
    TestStore store;
    const Shell shell(store);
    const EveryWindow each = everyWindow().at(window);
    each.open();
    QStringList numbers;
    for (QLineEdit* box : each.opened()->findChildren<QLineEdit*>()) {
        if (qobject_cast<MaskedEdit*>(box) || enabledTakesInputMethod(*box))
            continue;
        const auto* list = qobject_cast<const QComboBox*>(box->parentWidget());
        numbers << (list ? list : static_cast<const QWidget*>(box))->objectName();
        QVERIFY2(box->inputMethodHints().testFlag(Qt::ImhPreferNumbers), qPrintable(numbers.last()));
    }
    QStringList expected;
    const auto all = pages();
    for (const NumberPage& page : all) {
        if (page.window == each.title)
            expected += page.numbers;
    }
    if (each.title == u"Form7")
        expected << u"Combo1(6)"_s << u"Combo5(4)"_s;
    numbers.sort();
    expected.sort();
    QCOMPARE(numbers, expected);
}

void NumberEntryTest::fullWidthNumbersBecomePlain() {
    QFETCH(const int, page);
    const NumberPage each = pages().at(page);
    TestStore store;
    fill(store.database());
    const Shell shell(store);
    Window& form = edit(each);
    for (const QString& name : each.numbers) {
        auto& box = control<QLineEdit>(form, name);
        commit(box, u"１２"_s);
        QCOMPARE(name + u' ' + box.text(), name + u" 12"_s);
        paste(box, u"３４"_s);
        QCOMPARE(name + u' ' + box.text(), name + u" 34"_s);
        box.clear();
        for (const QChar digit : u"５6"_s) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(digit));
            QCoreApplication::sendEvent(&box, &press);
        }
        QCOMPARE(name + u' ' + box.text(), name + u" 56"_s);
    }
    if (each.text.isEmpty())
        return;
    // A text keeps its full-width digits.
    auto& text = control<QLineEdit>(form, each.text);
    commit(text, u"７"_s);
    QCOMPARE(text.text(), u"７"_s);
}

void NumberEntryTest::fullWidthMinutesAreStored() {
    TestStore store;
    fill(store.database());
    const Shell shell(store);
    Window& form = edit(pages().at(0));
    commit(control<QLineEdit>(form, u"Text4(3)"_s), u"１５"_s);
    paste(control<QLineEdit>(form, u"Text4(8)"_s), u"２０"_s);
    click(control(form, u"CtrlCmd3(4)"_s));
    QCOMPARE(rowsOfSelection(store.database(),
                             u"select ElstMin,Cushion,Delay,Earlier,Cushion1,Delay1,Earlier1 from Base04"_s),
             QStringList{u"0|15|25|10|5|25|20"_s});
}

void NumberEntryTest::fullWidthDaysWithAPointAreStored() {
    TestStore store;
    fill(store.database());
    const Shell shell(store);
    Window& form = edit(pages().at(2));
    control<QTabWidget>(form, u"SSTab2"_s).setCurrentIndex(1);
    commit(control<QLineEdit>(form, u"Text6(13)"_s), u"１０．５"_s);
    commit(control<QLineEdit>(form, u"Text6(26)"_s), u"－２"_s);
    click(control(form, u"CtrlCmd5(4)"_s));
    QCOMPARE(rowsOfSelection(store.database(), u"select ThisYearHD,SickHD from Base06"_s),
             QStringList{u"10.5|-2"_s});
}

void NumberEntryTest::whatIsNoNumberStaysAsItIsTyped() {
    TestStore store;
    fill(store.database());
    const Shell shell(store);
    auto& box = control<QLineEdit>(edit(pages().at(0)), u"Text4(2)"_s);
    for (const QString& text : {u"75"_s, u"1a"_s, u"分"_s, u" 5"_s}) {
        commit(box, text);
        QCOMPARE(box.text(), text);
    }
}

int main(int argc, char** argv) {
    return runTests<NumberEntryTest>(argc, argv);
}

#include "NumberEntryTest.moc"
