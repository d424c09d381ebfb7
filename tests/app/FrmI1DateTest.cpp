#include "app/FrmI1Date.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "rules/Session.h"
#include "store/Clock.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QDate CancelDate(2038, 1, 1);

/// The window over which the dialog opens.
struct Parent : QWidget {
    Parent() { show(); }
};

/// Shows the dialog, lets the routine work in it, and tells what it left in gDate1.
QDate dateOf(PromptAnswers& answers, const PromptAnswers::Action& action, const QString& caption = {}) {
    Parent parent;
    gDate1 = QDate(1950, 1, 1);
    answers.expect(u"FrmI1Date"_s, action);
    if (caption.isNull())
        FrmI1Date::ask(&parent);
    else
        FrmI1Date::ask(&parent, caption);
    return gDate1;
}

TDBMask& maskOf(const QWidget& dialog) {
    return control<TDBMask>(dialog, u"TDBMask1(0)"_s);
}

TDBDate& dateControlOf(const QWidget& dialog) {
    return control<TDBDate>(dialog, u"TDBDate1(0)"_s);
}

/// Whether the dialog becomes active; not every platform makes it so when a message box over it has closed.
bool isActiveAgain(QWidget& dialog) {
    dialog.activateWindow();
    return QTest::qWaitForWindowActive(&dialog, PatienceMs);
}

void clickOk(const QWidget& dialog) {
    click(control(dialog, u"Command1(0)"_s));
}

} // namespace

class FrmI1DateTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void captionsAreTheStatedOnes();
    void captionIsReplacedForOneShowing();
    void opensOnTodayInTheMaskUpTo2010();
    void opensOnTodayWithABlankMaskFrom2011();
    void okStoresTheTypedDate();
    void okStoresTheChosenDate();
    void okOnTodayWithTheBlankMask();
    void cancelGivesTheSentinel();
    void escapeGivesTheSentinel();
    void closeBoxGivesTheSentinel();
    void typing901345TellsOnLeavingAndKeepsTheDate();
    void aBadMaskSwallowsTheClickOnOk();
    void aBadMaskSwallowsTheClickOnCancelButEscapeLeaves();
    void okWithABadMaskStoresTheDateControlsDate();
    void okWithAnEmptiedMaskStoresTheDateControlsDate();
    void worksByKeyboardAlone();
    void enterInTheMaskDoesNotPressAButton();
    void controlsAreNamedAndReached();
};

void FrmI1DateTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void FrmI1DateTest::cleanup() {
    clock::setSource({});
}

void FrmI1DateTest::captionsAreTheStatedOnes() {
    PromptAnswers answers;
    dateOf(answers, [](QWidget& dialog) {
        QCOMPARE(dialog.windowTitle(), u"輸入日期"_s);
        QVERIFY(dialog.isModal());
        QCOMPARE(control<QLabel>(dialog, u"Label1"_s).text(), u"截止日期："_s);
        QCOMPARE(control<QPushButton>(dialog, u"Command1(0)"_s).text(), u"確定"_s);
        QCOMPARE(control<QPushButton>(dialog, u"Command1(1)"_s).text(), u"取消"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
}

void FrmI1DateTest::captionIsReplacedForOneShowing() {
    PromptAnswers answers;
    QString first;
    QString second;
    dateOf(
        answers,
        [&](QWidget& dialog) {
            first = control<QLabel>(dialog, u"Label1"_s).text();
            clickOk(dialog);
        },
        u"重算日期"_s);
    dateOf(answers, [&](QWidget& dialog) {
        second = control<QLabel>(dialog, u"Label1"_s).text();
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(first, u"重算日期"_s);
    QCOMPARE(second, u"截止日期："_s);
}

void FrmI1DateTest::opensOnTodayInTheMaskUpTo2010() {
    clock::setSource([] { return QDateTime(QDate(2010, 3, 5), QTime(9, 30)); });
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) {
        QCOMPARE(maskOf(dialog).displayText(), u"99/03/05"_s);
        QCOMPARE(dateControlOf(dialog).currentText(), u"2010/03/05"_s);
        QVERIFY(maskOf(dialog).hasFocus());
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, QDate(2010, 3, 5));
}

void FrmI1DateTest::opensOnTodayWithABlankMaskFrom2011() {
    PromptAnswers answers;
    dateOf(answers, [](QWidget& dialog) {
        QCOMPARE(maskOf(dialog).displayText(), u"__/__/__"_s);
        QCOMPARE(maskOf(dialog).value(), QString());
        QCOMPARE(dateControlOf(dialog).currentText(), u"2026/03/05"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
}

void FrmI1DateTest::okStoresTheTypedDate() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog), u"900131"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, QDate(2001, 1, 31));
}

void FrmI1DateTest::okStoresTheChosenDate() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) {
        TDBDate& date = dateControlOf(dialog);
        date.setFocus();
        QTest::keyClick(&date, Qt::Key_F4);
        QTRY_VERIFY_WITH_TIMEOUT(date.calendar() && date.calendar()->isVisible(), PatienceMs);
        QWindow* popup = date.calendar()->window()->windowHandle();
        QTest::keyClick(popup, Qt::Key_Left);
        QTest::keyClick(popup, Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(date.currentText(), u"2026/03/04"_s, PatienceMs);
        QCOMPARE(maskOf(dialog).value(), QString());
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, QDate(2026, 3, 4));
}

void FrmI1DateTest::okOnTodayWithTheBlankMask() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, clickOk);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, QDate(2026, 3, 5));
}

void FrmI1DateTest::cancelGivesTheSentinel() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog), u"900131"_s);
        click(control(dialog, u"Command1(1)"_s));
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, CancelDate);
}

void FrmI1DateTest::escapeGivesTheSentinel() {
    PromptAnswers answers;
    const QDate left =
        dateOf(answers, [](QWidget& dialog) { QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape); });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, CancelDate);
}

void FrmI1DateTest::closeBoxGivesTheSentinel() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) { dialog.windowHandle()->close(); });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, CancelDate);
}

void FrmI1DateTest::typing901345TellsOnLeavingAndKeepsTheDate() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [&](QWidget& dialog) {
        TDBMask& mask = maskOf(dialog);
        QTest::keyClicks(&mask, u"901345"_s);
        QCOMPARE(dateControlOf(dialog).currentText(), u"2026/03/05"_s);
        answers.expectMsgBox();
        QTest::keyClick(&mask, Qt::Key_Tab);
        QVERIFY(isActiveAgain(dialog));
        QVERIFY(mask.hasFocus());
        QCOMPARE(mask.displayText(), u"90/13/45"_s);
        QCOMPARE(dateControlOf(dialog).currentText(), u"2026/03/05"_s);
        mask.setCursorPosition(0);
        QTest::keyClicks(&mask, u"900131"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().at(1).title, u"警告訊息"_s);
    QCOMPARE(answers.seen().at(1).text, u"日期格式輸入錯誤,請重新輸入"_s);
    QCOMPARE(left, QDate(2001, 1, 31));
}

void FrmI1DateTest::aBadMaskSwallowsTheClickOnOk() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [&](QWidget& dialog) {
        TDBMask& mask = maskOf(dialog);
        QTest::keyClicks(&mask, u"901345"_s);
        answers.expectMsgBox();
        clickOk(dialog);
        QVERIFY(dialog.isVisible());
        QVERIFY(isActiveAgain(dialog));
        QVERIFY(mask.hasFocus());
        mask.setCursorPosition(0);
        QTest::keyClicks(&mask, u"900131"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, QDate(2001, 1, 31));
}

void FrmI1DateTest::aBadMaskSwallowsTheClickOnCancelButEscapeLeaves() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [&](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog), u"901345"_s);
        answers.expectMsgBox();
        click(control(dialog, u"Command1(1)"_s));
        QVERIFY(dialog.isVisible());
        QVERIFY(isActiveAgain(dialog));
        QVERIFY(maskOf(dialog).hasFocus());
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().size(), 2);
    QCOMPARE(left, CancelDate);
}

void FrmI1DateTest::okWithABadMaskStoresTheDateControlsDate() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog), u"901345"_s);
        // Pressed without taking the focus, as assistive technology does.
        control<QPushButton>(dialog, u"Command1(0)"_s).click();
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, QDate(2026, 3, 5));
}

void FrmI1DateTest::okWithAnEmptiedMaskStoresTheDateControlsDate() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog), u"900131"_s);
        QTest::keyClick(&maskOf(dialog), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&maskOf(dialog), Qt::Key_Delete);
        QCOMPARE(maskOf(dialog).value(), QString());
        control<QPushButton>(dialog, u"Command1(0)"_s).click();
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, QDate(2001, 1, 31));
}

void FrmI1DateTest::worksByKeyboardAlone() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) {
        QWindow* window = dialog.windowHandle();
        for (const char digit : {'9', '0', '0', '1', '3', '1'})
            QTest::keyClick(window, digit);
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(dateControlOf(dialog).hasFocus());
        QTest::keyClick(window, Qt::Key_Down);
        QCOMPARE(maskOf(dialog).displayText(), u"90/02/01"_s);
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(control(dialog, u"Command1(0)"_s).hasFocus());
        QTest::keyClick(window, Qt::Key_Return);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, QDate(2001, 2, 1));
}

void FrmI1DateTest::enterInTheMaskDoesNotPressAButton() {
    PromptAnswers answers;
    const QDate left = dateOf(answers, [](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog), u"900131"_s);
        QTest::keyClick(&maskOf(dialog), Qt::Key_Return);
        QVERIFY(dialog.isVisible());
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left, CancelDate);
}

void FrmI1DateTest::controlsAreNamedAndReached() {
    PromptAnswers answers;
    dateOf(answers, [](QWidget& dialog) {
        QCOMPARE(control<QLabel>(dialog, u"Label1"_s).buddy(), static_cast<QWidget*>(&maskOf(dialog)));
        QCOMPARE(maskOf(dialog).accessibleName(), u"截止日期"_s);
        QWindow* window = dialog.windowHandle();
        QStringList order;
        for (int stop = 0; stop < 4; ++stop) {
            order << dialog.focusWidget()->objectName();
            QTest::keyClick(window, Qt::Key_Tab);
        }
        QCOMPARE(order,
                 QStringList({u"TDBMask1(0)"_s, u"TDBDate1(0)"_s, u"Command1(0)"_s, u"Command1(1)"_s}));
        QCOMPARE(dialog.focusWidget()->objectName(), u"TDBMask1(0)"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<FrmI1DateTest>(argc, argv);
}

#include "FrmI1DateTest.moc"
