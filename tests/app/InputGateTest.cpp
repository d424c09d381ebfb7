#include "app/InputGateForm.h"
#include "app/ProgressBox.h"
#include "support/Patience.h"

#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QCloseEvent>
#include <QScopeGuard>
#include <QSignalSpy>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(Qt::Key)
Q_DECLARE_METATYPE(std::function<void(GateForm&)>)

/// What of the user's input reaches the controls, and what does not.
class InputGateTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aHeldKeyAnswersNoMessage_data() { eachKey(); }
    void aHeldKeyAnswersNoMessage();
    void repeatsWithoutAMarkAnswerNoMessage_data() { eachKey(); }
    void repeatsWithoutAMarkAnswerNoMessage();
    void repeatsALittleApartAnswerNoMessage();
    void quickPressesAllCount();
    void aReleaseToAnotherWindowIsEnough();
    void aKeyHeldSinceAnotherProgramDoesNothing();
    void anotherKeyEndsTheRepeats();
    void aHeldBlankTicksOnce();
    void aHeldBlankTypesOnWhereItWasPressed();
    void otherKeysRepeat();
    void keysThatTheProgramSendsAlwaysCount();
    void aClickBehindTheAnswerIsDropped();
    void aKeyBehindTheAnswerIsDropped();
    void aCloseBehindTheAnswerIsDropped();
    void aPressByAssistiveTechnologyBehindAMessageDoesNothing();
    void theReleaseOfADroppedPressIsDropped();
    void whatTheProgramSendsBehindTheAnswerIsCarriedOut();
    void nextDialogsOfTheSameRoutineTakeInput();
    void aProgressDialogOfTheSameRoutineTakesInput_data() { eachBegin(); }
    void aProgressDialogOfTheSameRoutineTakesInput();
    void whatWaitedForTheRoutineIsDropped_data() { eachBegin(); }
    void whatWaitedForTheRoutineIsDropped();
    void inputCountsAgainOnceTheRoutineIsBack();

  private:
    static void eachKey();
    static void eachBegin();
};

void InputGateTest::eachKey() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Enter") << Qt::Key_Return;
    QTest::newRow("the other Enter") << Qt::Key_Enter;
}

/// The ways in which a routine begins.
void InputGateTest::eachBegin() {
    QTest::addColumn<std::function<void(GateForm&)>>("begin");
    const auto begunBy = [](const char* what, std::function<void(GateForm&)> begin) {
        QTest::newRow(what) << std::move(begin);
    };
    begunBy("the program", [](GateForm& form) { Q_EMIT form.button.clicked(); });
    begunBy("a click", [](GateForm& form) { click(form.button); });
    begunBy("a key", [](GateForm& form) { QTest::keyClick(form.windowHandle(), Qt::Key_Return); });
}

void InputGateTest::aHeldKeyAnswersNoMessage() {
    QFETCH(const Qt::Key, key);
    GateForm form;
    PromptAnswers answers;
    bool stood = false;
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        // Still down since it pressed the button.
        for (int press = 0; press < 3; ++press)
            QTest::keyPress(box.windowHandle(), key);
        stood = box.isVisible();
        QTest::keyRelease(box.windowHandle(), key);
        QTest::keyClick(box.windowHandle(), key);
    });
    QTest::keyPress(form.windowHandle(), key);
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(stood);
    QCOMPARE(form.clicks, 1);
}

void InputGateTest::repeatsWithoutAMarkAnswerNoMessage() {
    QFETCH(const Qt::Key, key);
    GateForm form;
    PromptAnswers answers;
    Keyboard keyboard(form);
    bool stood = false;
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        keyboard.turnTo(box);
        for (int repeat = 0; repeat < 3; ++repeat)
            keyboard.repeat(key);
        stood = box.isVisible();
        keyboard.release(key);
        keyboard.press(key);
    });
    keyboard.press(key);
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(stood);
    // And back in the window the answer, still held, presses nothing.
    keyboard.turnTo(form);
    form.button.setFocus();
    for (int repeat = 0; repeat < 3; ++repeat)
        keyboard.repeat(key);
    QCOMPARE(form.clicks, 1);
}

void InputGateTest::repeatsALittleApartAnswerNoMessage() {
    GateForm form;
    form.tells = false;
    Keyboard keyboard(form);
    keyboard.press(Qt::Key_Return);
    for (const int apart : {1, 2, 5})
        keyboard.repeat(Qt::Key_Return, apart);
    QCOMPARE(form.clicks, 1);
}

void InputGateTest::quickPressesAllCount() {
    GateForm form;
    form.tells = false;
    Keyboard keyboard(form);
    for (int press = 0; press < 5; ++press) {
        keyboard.press(Qt::Key_Return);
        keyboard.release(Qt::Key_Return);
    }
    QCOMPARE(form.clicks, 5);
    // A program that sends keys has no hand to hold them.
    for (int press = 0; press < 5; ++press)
        QTest::keyClick(form.windowHandle(), Qt::Key_Return);
    QCOMPARE(form.clicks, 10);
}

void InputGateTest::aReleaseToAnotherWindowIsEnough() {
    GateForm form;
    form.tells = false;
    Keyboard keyboard(form);
    keyboard.press(Qt::Key_Return);
    // Released in a window that a dialog blocks, so that nothing hears of it.
    GateForm other;
    other.tells = false;
    keyboard.turnTo(other);
    keyboard.press(Qt::Key_Return);
    QCOMPARE(form.clicks, 1);
    QCOMPARE(other.clicks, 1);
}

void InputGateTest::aKeyHeldSinceAnotherProgramDoesNothing() {
    GateForm form;
    form.tells = false;
    Keyboard keyboard(form);
    // What the window gets first of it is the release of a repeat.
    for (int repeat = 0; repeat < 3; ++repeat)
        keyboard.repeat(Qt::Key_Escape);
    for (int repeat = 0; repeat < 3; ++repeat)
        keyboard.repeat(Qt::Key_Return);
    QCOMPARE(form.clicks, 0);
    keyboard.release(Qt::Key_Return);
    keyboard.press(Qt::Key_Return);
    QCOMPARE(form.clicks, 1);
}

void InputGateTest::anotherKeyEndsTheRepeats() {
    GateForm form;
    form.tells = false;
    QTest::keyPress(form.windowHandle(), Qt::Key_Return);
    QTest::keyPress(form.windowHandle(), Qt::Key_Shift);
    QTest::keyPress(form.windowHandle(), Qt::Key_Return);
    QCOMPARE(form.clicks, 1);
    QTest::keyClick(form.windowHandle(), Qt::Key_7);
    QTest::keyPress(form.windowHandle(), Qt::Key_Return);
    QCOMPARE(form.clicks, 2);
}

void InputGateTest::aHeldBlankTicksOnce() {
    GateForm form;
    form.check.setFocus();
    Keyboard keyboard(form);
    keyboard.press(Qt::Key_Space);
    for (int repeat = 0; repeat < 4; ++repeat)
        keyboard.repeat(Qt::Key_Space);
    keyboard.release(Qt::Key_Space);
    QVERIFY(form.check.isChecked());
}

void InputGateTest::aHeldBlankTypesOnWhereItWasPressed() {
    GateForm form;
    form.box.setFocus();
    Keyboard keyboard(form);
    keyboard.press(Qt::Key_Space);
    for (int repeat = 0; repeat < 3; ++repeat)
        keyboard.repeat(Qt::Key_Space);
    QCOMPARE(form.box.text(), u"    "_s);
    // Pressed elsewhere it types nothing.
    keyboard.release(Qt::Key_Space);
    form.box.clear();
    form.check.setFocus();
    keyboard.press(Qt::Key_Space);
    form.box.setFocus();
    keyboard.repeat(Qt::Key_Space);
    QCOMPARE(form.box.text(), QString());
}

void InputGateTest::otherKeysRepeat() {
    GateForm form;
    form.box.setText(u"12345"_s);
    form.box.setFocus();
    form.box.setCursorPosition(5);
    Keyboard keyboard(form);
    keyboard.press(Qt::Key_Backspace);
    for (int repeat = 0; repeat < 3; ++repeat)
        keyboard.repeat(Qt::Key_Backspace);
    QCOMPARE(form.box.text(), u"1"_s);
}

void InputGateTest::keysThatTheProgramSendsAlwaysCount() {
    GateForm form;
    form.tells = false;
    QTest::keyPress(form.windowHandle(), Qt::Key_Return);
    QCOMPARE(form.clicks, 1);
    // The key is still down.
    QKeyEvent sent(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&form.button, &sent);
    QCOMPARE(form.clicks, 2);
}

void InputGateTest::aClickBehindTheAnswerIsDropped() {
    GateForm form;
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        click(control(box, u"Ok"_s));
        click(form.button);
        click(control(form.bar, u"StbTool(8)"_s));
    });
    click(form.button);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(form.clicks, 1);
    QCOMPARE(form.leaves, 0);
}

void InputGateTest::aKeyBehindTheAnswerIsDropped() {
    GateForm form;
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        click(control(box, u"Ok"_s));
        QTest::keyClick(form.windowHandle(), Qt::Key_Return);
        form.box.setFocus();
        QTest::keyClick(form.windowHandle(), Qt::Key_7);
    });
    click(form.button);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(form.clicks, 1);
    QCOMPARE(form.box.text(), QString());
}

void InputGateTest::aCloseBehindTheAnswerIsDropped() {
    GateForm form;
    PromptAnswers answers;
    bool ignored = false;
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        click(control(box, u"Ok"_s));
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        qApp->notify(form.windowHandle(), &close);
        ignored = !close.isAccepted();
    });
    click(form.button);
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(ignored);
    QVERIFY(form.isVisible());
}

void InputGateTest::aPressByAssistiveTechnologyBehindAMessageDoesNothing() {
    GateForm form;
    PromptAnswers answers;
    QSignalSpy presses(&form.button, &QPushButton::clicked);
    bool pressed = false;
    const auto press = [&form] {
        QAccessible::queryAccessibleInterface(&form.button)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
    };
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        press();
        pressed = presses.wait(); // it shows for a moment that it is pressed
        click(control(box, u"Ok"_s));
    });
    click(form.button);
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(pressed);
    QCOMPARE(form.clicks, 1);
    form.tells = false;
    press();
    QTRY_COMPARE_WITH_TIMEOUT(form.clicks, 2, PatienceMs);
}

void InputGateTest::theReleaseOfADroppedPressIsDropped() {
    GateForm form;
    PromptAnswers answers;
    QWidget& leave = control(form.bar, u"StbTool(8)"_s);
    const QPoint place = leave.mapTo(&form, leave.rect().center());
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        click(control(box, u"Ok"_s));
        QTest::mousePress(form.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    });
    click(form.button);
    QTest::mouseRelease(form.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(form.leaves, 0);
    click(leave);
    QCOMPARE(form.leaves, 1);
}

void InputGateTest::whatTheProgramSendsBehindTheAnswerIsCarriedOut() {
    GateForm form;
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        click(control(box, u"Ok"_s));
        form.box.setFocus();
        QKeyEvent sent(QEvent::KeyPress, Qt::Key_7, Qt::NoModifier, u"7"_s);
        QCoreApplication::sendEvent(&form.box, &sent);
    });
    click(form.button);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(form.box.text(), u"7"_s);
}

void InputGateTest::nextDialogsOfTheSameRoutineTakeInput() {
    GateForm form;
    form.tells = false;
    PromptAnswers answers;
    QStringList answered;
    onEvent(&form.button, &QPushButton::clicked, &form, [&] {
        for (const QString& text : {u"一"_s, u"二"_s, u"三"_s}) {
            MsgBox(text);
            answered << text;
        }
    });
    for (int message = 0; message < 3; ++message)
        answers.expectMsgBox();
    click(form.button);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answered, QStringList({u"一"_s, u"二"_s, u"三"_s}));
}

void InputGateTest::aProgressDialogOfTheSameRoutineTakesInput() {
    QFETCH(const std::function<void(GateForm&)>, begin);
    GateForm form;
    PromptAnswers answers;
    bool seen = false;
    answers.expectMsgBox().expectAndLeave(u"ProgressBox"_s, [&seen](QWidget&) { seen = true; });
    setProgressDelay(0);
    const auto pace = qScopeGuard([] { setProgressDelay(-1); });
    bool goesOn = true;
    onEvent(&form.button, &QPushButton::clicked, &form, [&] {
        goesOn = runWithProgress(u"工作"_s, [&](const ProgressStep& progress) {
            progress(0, 2);
            if (!QTest::qWaitFor([&seen] { return seen; }, PatienceMs))
                return true;
            click(form.check);
            click(control(*QApplication::activeModalWidget(), u"Cancel"_s));
            return progress(1, 2);
        });
    });
    begin(form);
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(!goesOn);
    QVERIFY(!form.check.isChecked());
    QCOMPARE(form.clicks, 1);
}

void InputGateTest::whatWaitedForTheRoutineIsDropped() {
    QFETCH(const std::function<void(GateForm&)>, begin);
    GateForm form;
    PromptAnswers answers;
    answers.expectMsgBox();
    QWidget& leave = control(form.bar, u"StbTool(8)"_s);
    std::optional<int> leavesAtOnce;
    onEvent(&form.button, &QPushButton::clicked, &form, [&] {
        // The message has been answered. What the user does while the routine goes on comes once it is back.
        QTimer::singleShot(0, &form, [&] {
            click(leave);
            leavesAtOnce = form.leaves;
        });
    });
    QEventLoop loop;
    // As input comes: from the loop itself, amid no other event.
    connect(
        QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &form,
        [&] { begin(form); }, Qt::SingleShotConnection);
    QTimer later;
    connect(&later, &QTimer::timeout, &form, [&] {
        if (leavesAtOnce)
            click(leave);
        if (form.leaves > 0)
            loop.quit();
    });
    later.start(10);
    loop.exec();
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(leavesAtOnce, std::optional<int>(0));
    QCOMPARE(form.leaves, 1);
}

void InputGateTest::inputCountsAgainOnceTheRoutineIsBack() {
    GateForm form;
    PromptAnswers answers;
    for (int message = 0; message < 3; ++message)
        answers.expectMsgBox();
    for (int press = 0; press < 2; ++press)
        click(form.button);
    // In an event loop, too, as the program runs.
    QTimer::singleShot(0, &form, [&] { click(form.button); });
    QTRY_COMPARE_WITH_TIMEOUT(form.clicks, 3, PatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(answers.trouble(), QString(), PatienceMs);
    QEventLoop loop;
    QTimer::singleShot(0, &form, [&] {
        form.tells = false;
        click(form.button);
        loop.quit();
    });
    loop.exec();
    QCOMPARE(form.clicks, 4);
}

int main(int argc, char** argv) {
    return runTests<InputGateTest>(argc, argv);
}

#include "InputGateTest.moc"
