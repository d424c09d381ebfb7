#include "app/EnterAsTab.h"
#include "app/FocusWatch.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A window with two boxes, a button and tabs, whose losses of the focus are written down.
class Form : public QWidget {
  public:
    Form() {
        setObjectName(u"Form"_s);
        auto* row = new QHBoxLayout(this);
        for (QWidget* each : std::initializer_list<QWidget*>{&first, &second, &button, &tabs})
            row->addWidget(each);
        first.setObjectName(u"first"_s);
        second.setObjectName(u"second"_s);
        tabs.addTab(u"一"_s);
        tabs.addTab(u"二"_s);
        tabs.setFocusPolicy(Qt::StrongFocus);
        QObject::connect(&button, &QPushButton::clicked, this, [this] { ++clicks; });
        for (QLineEdit* box : {&first, &second}) {
            watch.onLostFocus(box, [this, box] {
                lost << box->objectName();
                if (routine)
                    routine(*box);
            });
        }
        show();
        if (!QTest::qWaitForWindowActive(this, PatienceMs))
            qFatal("the window does not become active");
        first.setFocus();
    }

    QLineEdit first;
    QLineEdit second;
    QPushButton button{u"按鈕"_s};
    QTabBar tabs;
    FocusWatch watch{this};
    std::function<void(QLineEdit&)> routine;
    QStringList lost;
    int clicks = 0;
};

void putBack(QLineEdit& box) {
    box.setFocus();
}

void tellAndPutBack(QLineEdit& box) {
    MsgBox(u"日期格式輸入錯誤,請重新輸入"_s, u"警告訊息"_s);
    box.setFocus();
}

void tell(QLineEdit&) {
    MsgBox(u"日期格式輸入錯誤,請重新輸入"_s, u"警告訊息"_s);
}

QPoint centreOf(const QWidget& widget) {
    return widget.mapTo(widget.window(), widget.rect().center());
}

} // namespace

class FocusTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anotherControlOfTheWindowTakesTheFocus();
    void aDialogTakesNothing();
    void anotherWindowTakesNothing();
    void aPopupTakesNothing();
    void aChangeBehindADialogIsALoss();
    void partsOfOneControlTakeNothingFromEachOther();
    void aClickThatTookTheFocusAwayIsNotCarriedOut_data();
    void aClickThatTookTheFocusAwayIsNotCarriedOut();
    void aClickIsCarriedOutWhereTheFocusMovesOn();
    void aMessageLeavesNoButtonPressed();
    void theClickAfterIsCarriedOut();
    void aTabThatIsTakenBackCostsNoClick();
    void aWheelThatTakesTheFocusCostsNoClick();
    void puttingBackIsNoLossOfTheOther();
    void severalRoutinesOfAControlRunInTheirOrder();
    void theRoutinesEndWhereOnePutsTheFocusBack();
    void aClosedWindowTellsNothing();
    void aWatchedWindowMayGoInTheRoutine();
    void enterMovesOnInEveryBox();
    void enterMovesOnInAnUnfilledMask();
    void enterClicksTheButtonWithTheFocusOnce();
    void enterHeldDownClicksOnce();
    void enterWithAModifierMovesOnAsWell_data();
    void enterWithAModifierMovesOnAsWell();
};

void FocusTest::anotherControlOfTheWindowTakesTheFocus() {
    Form form;
    QTest::keyClick(&form.first, Qt::Key_Tab);
    QCOMPARE(form.lost, QStringList{u"first"_s});
    QTest::keyClick(&form.second, Qt::Key_Tab);
    QCOMPARE(form.lost, QStringList({u"first"_s, u"second"_s}));
    QTest::keyClick(&form.button, Qt::Key_Tab);
    QCOMPARE(form.lost.size(), 2);
    click(form.first);
    click(form.second);
    QCOMPARE(form.lost, QStringList({u"first"_s, u"second"_s, u"first"_s}));
}

void FocusTest::aDialogTakesNothing() {
    Form form;
    PromptAnswers answers;
    answers.expectMsgBox();
    MsgBox(u"訊息"_s);
    QCOMPARE(answers.trouble(), QString());
    QTRY_VERIFY_WITH_TIMEOUT(form.first.hasFocus(), PatienceMs);
    QCOMPARE(form.lost, QStringList());
}

void FocusTest::anotherWindowTakesNothing() {
    Form form;
    QLineEdit other;
    other.show();
    other.activateWindow();
    other.setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(other.hasFocus(), PatienceMs);
    form.activateWindow();
    QTRY_VERIFY_WITH_TIMEOUT(form.first.hasFocus(), PatienceMs);
    QCOMPARE(form.lost, QStringList());
    form.second.setFocus();
    QCOMPARE(form.lost, QStringList{u"first"_s});
}

void FocusTest::aPopupTakesNothing() {
    Form form;
    QMenu menu(&form);
    menu.addAction(u"貼上"_s);
    menu.popup(form.mapToGlobal(QPoint()));
    QTRY_VERIFY_WITH_TIMEOUT(menu.isVisible(), PatienceMs);
    menu.close();
    QTRY_VERIFY_WITH_TIMEOUT(form.first.hasFocus(), PatienceMs);
    QCOMPARE(form.lost, QStringList());
}

void FocusTest::aChangeBehindADialogIsALoss() {
    Form form;
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, [&form](QWidget& box) {
        form.second.setFocus();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    MsgBox(u"訊息"_s);
    QTRY_VERIFY_WITH_TIMEOUT(form.second.hasFocus(), PatienceMs);
    QCOMPARE(form.lost, QStringList{u"first"_s});
}

void FocusTest::partsOfOneControlTakeNothingFromEachOther() {
    QWidget window;
    QWidget pair(&window);
    QLineEdit left(&pair);
    QLineEdit right(&pair);
    QLineEdit outside(&window);
    FocusWatch watch(&window);
    int lost = 0;
    watch.onLostFocus(&pair, [&lost] { ++lost; });
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, PatienceMs));
    left.setFocus();
    right.setFocus();
    left.setFocus();
    QCOMPARE(lost, 0);
    outside.setFocus();
    QCOMPARE(lost, 1);
}

void FocusTest::aClickThatTookTheFocusAwayIsNotCarriedOut_data() {
    QTest::addColumn<bool>("withMessage");
    QTest::addRow("the routine shows a message and puts the focus back") << true;
    QTest::addRow("the routine puts the focus back") << false;
}

void FocusTest::aClickThatTookTheFocusAwayIsNotCarriedOut() {
    QFETCH(const bool, withMessage);
    Form form;
    form.routine = withMessage ? tellAndPutBack : putBack;
    PromptAnswers answers;
    if (withMessage)
        answers.expectMsgBox().expectMsgBox().expectMsgBox();
    click(form.button);
    QTRY_VERIFY_WITH_TIMEOUT(form.first.hasFocus(), PatienceMs);
    QCOMPARE(form.clicks, 0);
    QVERIFY(!form.button.isDown());
    QTest::mouseClick(form.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      form.tabs.mapTo(&form, form.tabs.tabRect(1).center()));
    QTRY_VERIFY_WITH_TIMEOUT(form.first.hasFocus(), PatienceMs);
    QCOMPARE(form.tabs.currentIndex(), 0);
    click(form.second);
    QTRY_VERIFY_WITH_TIMEOUT(form.first.hasFocus(), PatienceMs);
    QCOMPARE(form.lost, QStringList({u"first"_s, u"first"_s, u"first"_s}));
    QCOMPARE(answers.trouble(), QString());
}

void FocusTest::aClickIsCarriedOutWhereTheFocusMovesOn() {
    Form form;
    click(form.button);
    QCOMPARE(form.lost, QStringList{u"first"_s});
    QCOMPARE(form.clicks, 1);
    QVERIFY(form.button.hasFocus());
}

void FocusTest::aMessageLeavesNoButtonPressed() {
    Form form;
    form.routine = tell;
    PromptAnswers answers;
    answers.expectMsgBox();
    const QPoint place = centreOf(form.button);
    QTest::mousePress(form.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(answers.trouble(), QString());
    QTRY_VERIFY_WITH_TIMEOUT(form.button.hasFocus(), PatienceMs);
    QVERIFY(!form.button.isDown());
    QTest::mouseRelease(form.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(form.clicks, 0);
}

void FocusTest::theClickAfterIsCarriedOut() {
    Form form;
    form.routine = tellAndPutBack;
    PromptAnswers answers;
    answers.expectMsgBox();
    click(form.button);
    QTRY_VERIFY_WITH_TIMEOUT(form.first.hasFocus(), PatienceMs);
    form.routine = {};
    click(form.button);
    QCOMPARE(form.clicks, 1);
    click(form.button);
    QCOMPARE(form.clicks, 2);
    QCOMPARE(answers.trouble(), QString());
}

void FocusTest::aTabThatIsTakenBackCostsNoClick() {
    Form form;
    form.routine = putBack;
    QTest::keyClick(&form.first, Qt::Key_Tab);
    QVERIFY(form.first.hasFocus());
    QCOMPARE(form.lost, QStringList{u"first"_s});
    form.routine = {};
    click(form.button);
    QCOMPARE(form.clicks, 1);
}

void FocusTest::aWheelThatTakesTheFocusCostsNoClick() {
    Form form;
    form.button.setFocusPolicy(Qt::WheelFocus);
    form.routine = putBack;
    turnWheel(form.button, true);
    QCOMPARE(form.lost, QStringList{u"first"_s});
    QVERIFY(form.first.hasFocus());
    form.routine = {};
    click(form.button);
    QCOMPARE(form.clicks, 1);
}

void FocusTest::puttingBackIsNoLossOfTheOther() {
    Form form;
    form.routine = putBack;
    QTest::keyClick(&form.first, Qt::Key_Tab);
    QCOMPARE(form.lost, QStringList{u"first"_s});
    form.second.setFocus();
    QCOMPARE(form.lost, QStringList({u"first"_s, u"first"_s}));
    QVERIFY(form.first.hasFocus());
}

void FocusTest::severalRoutinesOfAControlRunInTheirOrder() {
    Form form;
    form.watch.onLostFocus(&form.first, [&form] { form.lost << u"then"_s; });
    form.watch.onLostFocus(&form.first, [&form] {
        form.button.setFocus(); // not back: the last one runs as well
        form.lost << u"and then"_s;
    });
    form.watch.onLostFocus(&form.first, [&form] { form.lost << u"last"_s; });
    QTest::keyClick(&form.first, Qt::Key_Tab);
    QCOMPARE(form.lost, QStringList({u"first"_s, u"then"_s, u"and then"_s, u"last"_s}));
    QVERIFY(form.button.hasFocus());
}

void FocusTest::theRoutinesEndWhereOnePutsTheFocusBack() {
    Form form;
    form.watch.onLostFocus(&form.first, [&form] { form.lost << u"then"_s; });
    form.routine = putBack;
    QTest::keyClick(&form.first, Qt::Key_Tab);
    QCOMPARE(form.lost, QStringList{u"first"_s});
    QVERIFY(form.first.hasFocus());
    form.routine = {};
    QTest::keyClick(&form.first, Qt::Key_Tab);
    QCOMPARE(form.lost, QStringList({u"first"_s, u"first"_s, u"then"_s}));
}

void FocusTest::aClosedWindowTellsNothing() {
    Form form;
    form.close();
    form.second.setFocus();
    form.activateWindow();
    QCoreApplication::processEvents();
    QCOMPARE(form.lost, QStringList());
}

void FocusTest::aWatchedWindowMayGoInTheRoutine() {
    auto form = std::make_unique<Form>();
    QStringList lost;
    form->routine = [&](QLineEdit& box) {
        lost << box.objectName();
        form->hide();
        form.release()->deleteLater();
    };
    QTest::keyClick(&form->first, Qt::Key_Tab);
    QCOMPARE(lost, QStringList{u"first"_s});
    QVERIFY(!form);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void FocusTest::enterMovesOnInEveryBox() {
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* text = new QLineEdit;
    auto* check = new QCheckBox(u"核取"_s);
    auto* list = new QComboBox;
    auto* entry = new QComboBox;
    auto* last = new QLineEdit;
    entry->setEditable(true);
    for (QWidget* each : std::initializer_list<QWidget*>{text, check, list, entry, last})
        row->addWidget(each);
    EnterAsTab::install(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, PatienceMs));
    text->setFocus();
    for (QWidget* next : std::initializer_list<QWidget*>{check, list, entry, last, text}) {
        QTest::keyClick(QApplication::focusWidget(), next == list ? Qt::Key_Enter : Qt::Key_Return);
        QVERIFY(next->hasFocus() || next->isAncestorOf(QApplication::focusWidget()));
    }
    QVERIFY(!check->isChecked());
}

void FocusTest::enterMovesOnInAnUnfilledMask() {
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* mask = new QLineEdit;
    auto* next = new QLineEdit;
    mask->setInputMask(u"99:99"_s);
    row->addWidget(mask);
    row->addWidget(next);
    EnterAsTab::install(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, PatienceMs));
    mask->setFocus();
    QTest::keyClick(mask, Qt::Key_1);
    QTest::keyClick(mask, Qt::Key_Return);
    QVERIFY(next->hasFocus());
}

void FocusTest::enterClicksTheButtonWithTheFocusOnce() {
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* box = new QLineEdit;
    auto* button = new QPushButton(u"按鈕"_s);
    row->addWidget(box);
    row->addWidget(button);
    EnterAsTab::install(window);
    QVERIFY(!button->autoDefault());
    int clicks = 0;
    connect(button, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, PatienceMs));
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Return);
    QVERIFY(button->hasFocus());
    QCOMPARE(clicks, 0);
    QTest::keyClick(button, Qt::Key_Return);
    QCOMPARE(clicks, 1);
    button->setEnabled(false);
    QTest::keyClick(button, Qt::Key_Return);
    QCOMPARE(clicks, 1);
}

void FocusTest::enterHeldDownClicksOnce() {
    Form form;
    EnterAsTab::install(form);
    form.second.setFocus();
    // From the box to the button by the first press; what the key repeats then presses nothing.
    QTest::keyPress(form.windowHandle(), Qt::Key_Return);
    QVERIFY(form.button.hasFocus());
    for (int repeat = 0; repeat < 3; ++repeat) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
        QApplication::sendEvent(form.windowHandle(), &again);
    }
    QTest::keyRelease(form.windowHandle(), Qt::Key_Return);
    QCOMPARE(form.clicks, 0);
    QVERIFY(form.button.hasFocus());
    QTest::keyClick(form.windowHandle(), Qt::Key_Return);
    QCOMPARE(form.clicks, 1);
}

void FocusTest::enterWithAModifierMovesOnAsWell_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    for (const auto& [key, name] : {std::pair(Qt::Key_Return, "Return"), std::pair(Qt::Key_Enter, "Enter")}) {
        const Qt::KeyboardModifiers pad = key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier;
        QTest::addRow("%s with Shift", name) << int(key) << (pad | Qt::ShiftModifier);
        QTest::addRow("%s with Ctrl", name) << int(key) << (pad | Qt::ControlModifier);
        QTest::addRow("%s with both", name) << int(key) << (pad | Qt::ShiftModifier | Qt::ControlModifier);
    }
}

void FocusTest::enterWithAModifierMovesOnAsWell() {
    QFETCH(const int, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* box = new QLineEdit;
    auto* mask = new QLineEdit;
    auto* check = new QCheckBox(u"核取"_s);
    auto* next = new QLineEdit;
    mask->setInputMask(u"99:99"_s);
    for (QWidget* each : std::initializer_list<QWidget*>{box, mask, check, next})
        row->addWidget(each);
    EnterAsTab::install(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, PatienceMs));
    box->setFocus();
    for (const QWidget* each : std::initializer_list<const QWidget*>{mask, check, next}) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
        QVERIFY(each->hasFocus());
    }
    QVERIFY(!check->isChecked());
    QCOMPARE(box->text(), QString());
}

int main(int argc, char** argv) {
    return runTests<FocusTest>(argc, argv);
}

#include "FocusTest.moc"
