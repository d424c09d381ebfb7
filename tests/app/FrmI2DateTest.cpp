#include "app/FrmI2Date.h"
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

const QDate Before1(1950, 1, 1);
const QDate Before2(1950, 12, 31);

/// Shows the dialog over a window and lets the routine work in it.
void ask(PromptAnswers& answers, const PromptAnswers::Action& action) {
    QWidget parent;
    parent.show();
    gDate1 = Before1;
    gDate2 = Before2;
    answers.expect(u"FrmI2Date"_s, action);
    FrmI2Date::ask(&parent);
}

TDBMask& maskOf(const QWidget& dialog, int index) {
    return control<TDBMask>(dialog, u"TDBMask1(%1)"_s.arg(index));
}

TDBDate& dateOf(const QWidget& dialog, int index) {
    return control<TDBDate>(dialog, u"TDBDate1(%1)"_s.arg(index));
}

void clickOk(const QWidget& dialog) {
    click(control(dialog, u"Command1(0)"_s));
}

} // namespace

class FrmI2DateTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void captionsAreTheStatedOnes();
    void okStoresBothDates();
    void okOnTodayStoresTodayTwice();
    void otherEndsLeaveBothDates_data();
    void otherEndsLeaveBothDates();
    void eachMaskWritesItsOwnDate();
    void aBadDateIsToldOnLeavingItsMask_data();
    void aBadDateIsToldOnLeavingItsMask();
    void aBadMaskSwallowsTheClickOnOk();
    void aDateOf2026IsChosenWithTheMaskBlank();
    void worksByKeyboardAlone();
    void controlsAreNamedAndReached();
};

void FrmI2DateTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void FrmI2DateTest::cleanup() {
    clock::setSource({});
}

void FrmI2DateTest::captionsAreTheStatedOnes() {
    PromptAnswers answers;
    ask(answers, [](QWidget& dialog) {
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.windowTitle(), u"輸入日期起迄"_s);
        QCOMPARE(control<QLabel>(dialog, u"Label1"_s).text(), u"起始日期:"_s);
        QCOMPARE(control<QLabel>(dialog, u"Label2"_s).text(), u"~"_s);
        QCOMPARE(control<QPushButton>(dialog, u"Command1(0)"_s).text(), u"確定"_s);
        QCOMPARE(control<QPushButton>(dialog, u"Command1(1)"_s).text(), u"取消"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
}

void FrmI2DateTest::okStoresBothDates() {
    PromptAnswers answers;
    ask(answers, [](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog, 0), u"900131"_s);
        maskOf(dialog, 1).setFocus();
        QTest::keyClicks(&maskOf(dialog, 1), u"900228"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gDate1, QDate(2001, 1, 31));
    QCOMPARE(gDate2, QDate(2001, 2, 28));
}

void FrmI2DateTest::okOnTodayStoresTodayTwice() {
    PromptAnswers answers;
    ask(answers, clickOk);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gDate1, QDate(2026, 3, 5));
    QCOMPARE(gDate2, QDate(2026, 3, 5));
}

void FrmI2DateTest::otherEndsLeaveBothDates_data() {
    QTest::addColumn<QString>("way");
    for (const auto* way : {"button", "escape", "close box"})
        QTest::addRow("%s", way) << QString::fromLatin1(way);
}

void FrmI2DateTest::otherEndsLeaveBothDates() {
    QFETCH(const QString, way);
    PromptAnswers answers;
    ask(answers, [&way](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog, 0), u"900131"_s);
        if (way == u"button")
            click(control(dialog, u"Command1(1)"_s));
        else if (way == u"escape")
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
        else
            dialog.windowHandle()->close();
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gDate1, Before1);
    QCOMPARE(gDate2, Before2);
}

void FrmI2DateTest::eachMaskWritesItsOwnDate() {
    PromptAnswers answers;
    ask(answers, [](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog, 0), u"900131"_s);
        QCOMPARE(dateOf(dialog, 0).currentText(), u"2001/01/31"_s);
        QCOMPARE(dateOf(dialog, 1).currentText(), u"2026/03/05"_s);
        dateOf(dialog, 1).setFocus();
        QTest::keyClick(&dateOf(dialog, 1), Qt::Key_Down);
        QCOMPARE(dateOf(dialog, 1).currentText(), u"2026/03/06"_s);
        QCOMPARE(maskOf(dialog, 0).displayText(), u"90/01/31"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
}

void FrmI2DateTest::aBadDateIsToldOnLeavingItsMask_data() {
    QTest::addColumn<int>("index");
    QTest::addRow("the first") << 0;
    QTest::addRow("the second") << 1;
}

void FrmI2DateTest::aBadDateIsToldOnLeavingItsMask() {
    QFETCH(const int, index);
    PromptAnswers answers;
    ask(answers, [&answers, index](QWidget& dialog) {
        TDBMask& mask = maskOf(dialog, index);
        mask.setFocus();
        QTest::keyClicks(&mask, u"901345"_s);
        answers.expectMsgBox();
        QTest::keyClick(&mask, Qt::Key_Tab);
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog, PatienceMs));
        QVERIFY(mask.hasFocus());
        QCOMPARE(mask.displayText(), u"90/13/45"_s);
        QCOMPARE(dateOf(dialog, index).currentText(), u"2026/03/05"_s);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().at(1).title, u"警告訊息"_s);
    QCOMPARE(answers.seen().at(1).text, u"日期格式輸入錯誤,請重新輸入"_s);
    QCOMPARE(answers.seen().at(1).buttons, QStringList{u"確定"_s});
}

void FrmI2DateTest::aBadMaskSwallowsTheClickOnOk() {
    PromptAnswers answers;
    ask(answers, [&answers](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog, 0), u"900131"_s);
        TDBMask& mask = maskOf(dialog, 1);
        mask.setFocus();
        QTest::keyClicks(&mask, u"901345"_s);
        answers.expectMsgBox();
        clickOk(dialog);
        QVERIFY(dialog.isVisible());
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog, PatienceMs));
        QVERIFY(mask.hasFocus());
        QCOMPARE(gDate1, Before1);
        mask.setCursorPosition(0);
        QTest::keyClicks(&mask, u"900228"_s);
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gDate1, QDate(2001, 1, 31));
    QCOMPARE(gDate2, QDate(2001, 2, 28));
}

void FrmI2DateTest::aDateOf2026IsChosenWithTheMaskBlank() {
    PromptAnswers answers;
    ask(answers, [](QWidget& dialog) {
        QTest::keyClicks(&maskOf(dialog, 1), u"900131"_s);
        TDBDate& date = dateOf(dialog, 1);
        date.setDate({2026, 3, 5});
        date.setFocus();
        QTest::keyClick(&date, Qt::Key_F4);
        QTRY_VERIFY_WITH_TIMEOUT(date.calendar() && date.calendar()->isVisible(), PatienceMs);
        QWindow* popup = date.calendar()->window()->windowHandle();
        QTest::keyClick(popup, Qt::Key_Right);
        QTest::keyClick(popup, Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(date.currentText(), u"2026/03/06"_s, PatienceMs);
        QCOMPARE(maskOf(dialog, 1).value(), QString());
        QCOMPARE(maskOf(dialog, 1).displayText(), u"__/__/__"_s);
        clickOk(dialog); // without a message
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gDate1, QDate(2026, 3, 5));
    QCOMPARE(gDate2, QDate(2026, 3, 6));
}

void FrmI2DateTest::worksByKeyboardAlone() {
    PromptAnswers answers;
    ask(answers, [](QWidget& dialog) {
        QWindow* window = dialog.windowHandle();
        for (const char* digits : {"900131", "900228"}) {
            for (; *digits != '\0'; ++digits)
                QTest::keyClick(window, *digits);
            QTest::keyClick(window, Qt::Key_Return);
            QTest::keyClick(window, Qt::Key_Return);
        }
        QVERIFY(control(dialog, u"Command1(0)"_s).hasFocus());
        QTest::keyClick(window, Qt::Key_Return);
    });
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gDate1, QDate(2001, 1, 31));
    QCOMPARE(gDate2, QDate(2001, 2, 28));
}

void FrmI2DateTest::controlsAreNamedAndReached() {
    PromptAnswers answers;
    ask(answers, [](QWidget& dialog) {
        QCOMPARE(control<QLabel>(dialog, u"Label1"_s).buddy(), static_cast<QWidget*>(&maskOf(dialog, 0)));
        QCOMPARE(control<QLabel>(dialog, u"Label2"_s).buddy(), static_cast<QWidget*>(&maskOf(dialog, 1)));
        QStringList order;
        for (int stop = 0; stop < 6; ++stop) {
            order << dialog.focusWidget()->objectName();
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
        }
        QCOMPARE(order, QStringList({u"TDBMask1(0)"_s, u"TDBDate1(0)"_s, u"TDBMask1(1)"_s, u"TDBDate1(1)"_s,
                                     u"Command1(0)"_s, u"Command1(1)"_s}));
        clickOk(dialog);
    });
    QCOMPARE(answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<FrmI2DateTest>(argc, argv);
}

#include "FrmI2DateTest.moc"
