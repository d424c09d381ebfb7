#include "app/DatePair.h"
#include "app/FocusWatch.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TabPages.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString BadDate = u"日期格式輸入錯誤,請重新輸入"_s;

/// A form with two pairs of one kind, numbers 2 and 3, and a button.
struct PairForm : QWidget {
    bool updating = false;
    int mark = 0;
    TDBMask mask, otherMask;
    TDBDate date, otherDate;
    QPushButton button{u"按鈕"_s};
    FocusWatch watch{this};
    int clicks = 0;

    explicit PairForm(const DatePairRules& rules) {
        auto* rows = new QVBoxLayout(this);
        for (QWidget* control :
             {static_cast<QWidget*>(&mask), static_cast<QWidget*>(&date), static_cast<QWidget*>(&otherMask),
              static_cast<QWidget*>(&otherDate), static_cast<QWidget*>(&button)})
            rows->addWidget(control);
        new DatePair(&mask, &date, 2, rules, watch, updating, mark);
        new DatePair(&otherMask, &otherDate, 3, rules, watch, updating, mark);
        connect(&button, &QPushButton::clicked, this, [this] { ++clicks; });
        mask.setFocus();
        show();
    }
    /// Waits for the form to be active; not every platform makes it so when a message box over it has closed.
    [[nodiscard]] bool waitActive() {
        activateWindow();
        return QTest::qWaitForWindowActive(this, PatienceMs);
    }
};

} // namespace

class controlsDatePairTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void maskNamesADay_data();
    void maskNamesADay();
    void dateIsWrittenAsRocYear_data();
    void dateIsWrittenAsRocYear();
    void typing900131SetsTheDate();
    void choosing20010131WritesTheMask();
    void badDateLeavesTheDateControlAsItWas();
    void badDateSetsTheMark_data();
    void badDateSetsTheMark();
    void leavingABadMask_data();
    void leavingABadMask();
    void aSilentPairLeavesTheMarkOfOthers();
    void markOfAnotherPair_data();
    void markOfAnotherPair();
    void aGoodDateClearsTheMarkAndLeavesInSilence();
    void an2026DateLeavesTheMaskBlankWithoutAMark();
    void afterwardsTheBlankMaskIsLeftInSilence();
    void aFiveCharacterTextStandsFromTheLeftAndIsNoDate();
    void emptiedMask_data();
    void emptiedMask();
    void emptiedDate_data();
    void emptiedDate();
    void updatingFlagStandsWhileTheMaskSetsTheDate();
    void aDateSetDuringAnUpdateIsNotMirrored();
    void lostFocusMessageSwallowsTheClick();
    void aClickAfterAGoodDateIsCarriedOut();
    void messageOnlyLetsTheFocusMoveOn();
    void aMaskOnAHiddenPageAsksForNoFocus();
    void aDialogIsNoLossOfFocus();
    void theOwnCalendarOfTheMaskedDateIsReached();
};

void controlsDatePairTest::maskNamesADay_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QDate>("day");
    QTest::newRow("90/01/31 is 2001") << u"900131"_s << QDate(2001, 1, 31);
    QTest::newRow("00 is 1911") << u"000101"_s << QDate(1911, 1, 1);
    QTest::newRow("99 is 2010") << u"991231"_s << QDate(2010, 12, 31);
    QTest::newRow("a leap day") << u"890229"_s << QDate(2000, 2, 29);
    QTest::newRow("no leap day") << u"900229"_s << QDate();
    QTest::newRow("month 13") << u"901345"_s << QDate();
    QTest::newRow("day 0") << u"900100"_s << QDate();
    QTest::newRow("five places") << u"90013"_s << QDate();
    QTest::newRow("a blank place") << u"90 131"_s << QDate();
    QTest::newRow("digits of another script") << u"９００１３１"_s << QDate();
    QTest::newRow("empty") << QString() << QDate();
}

void controlsDatePairTest::maskNamesADay() {
    QFETCH(QString, value);
    QTEST(DatePair::dateOf(value).value_or(QDate()), "day");
}

void controlsDatePairTest::dateIsWrittenAsRocYear_data() {
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QString>("text");
    QTest::newRow("1911") << QDate(1911, 1, 2) << u"00102"_s;
    QTest::newRow("1920 in five") << QDate(1920, 12, 5) << u"91205"_s;
    QTest::newRow("1921 in six") << QDate(1921, 12, 5) << u"101205"_s;
    QTest::newRow("2001") << QDate(2001, 1, 31) << u"900131"_s;
    QTest::newRow("2010") << QDate(2010, 12, 31) << u"991231"_s;
    QTest::newRow("2011 in seven") << QDate(2011, 1, 1) << u"1000101"_s;
}

void controlsDatePairTest::dateIsWrittenAsRocYear() {
    QFETCH(QDate, day);
    QTEST(DatePair::maskText(day), "text");
}

void controlsDatePairTest::typing900131SetsTheDate() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(form.date.date(), QDate(2001, 1, 31));
    QCOMPARE(form.date.currentText(), u"2001/01/31"_s);
    QCOMPARE(form.mask.value(), u"900131"_s);
    QCOMPARE(form.mark, 0);
    QVERIFY(!form.updating);
    QVERIFY(form.otherDate.value().isNull());
}

void controlsDatePairTest::choosing20010131WritesTheMask() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 30});
    form.date.setFocus();
    QTest::keyClick(&form.date, Qt::Key_F4);
    QTRY_VERIFY_WITH_TIMEOUT(form.date.calendar() && form.date.calendar()->isVisible(), PatienceMs);
    QWindow* popup = form.date.calendar()->window()->windowHandle();
    QTest::keyClick(popup, Qt::Key_Right);
    QTest::keyClick(popup, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(form.date.date(), QDate(2001, 1, 31), PatienceMs);
    QCOMPARE(form.mask.value(), u"900131"_s);
    QCOMPARE(form.mask.displayText(), u"90/01/31"_s);
    QCOMPARE(form.mark, 0);
}

void controlsDatePairTest::badDateLeavesTheDateControlAsItWas() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    form.date.setDate({1999, 9, 9});
    form.mask.setCursorPosition(0);
    QTest::keyClicks(&form.mask, u"901345"_s);
    QCOMPARE(form.mask.value(), u"901345"_s);
    // 90/09/09 is the last text on the way that is a day.
    QCOMPARE(form.date.date(), QDate(2001, 9, 9));
}

void controlsDatePairTest::badDateSetsTheMark_data() {
    QTest::addColumn<DatePairRules>("rules");
    QTest::addColumn<int>("mark");
    QTest::newRow("dialogs: index and 100") << DialogDatePair << 102;
    QTest::newRow("employees: index and 10") << EmployeeDatePair << 12;
    QTest::newRow("module windows: index and 10") << ModuleDatePair << 12;
    QTest::newRow("silent windows: none") << SilentDatePair << 0;
}

void controlsDatePairTest::badDateSetsTheMark() {
    QFETCH(DatePairRules, rules);
    PairForm form(rules);
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"901345"_s);
    QTEST(form.mark, "mark");
}

void controlsDatePairTest::leavingABadMask_data() {
    QTest::addColumn<DatePairRules>("rules");
    QTest::addColumn<bool>("message");
    QTest::addColumn<bool>("focusBack");
    QTest::newRow("dialogs: message, focus back") << DialogDatePair << true << true;
    QTest::newRow("employees: message, focus moves on") << EmployeeDatePair << true << false;
    QTest::newRow("module windows: message, focus back") << ModuleDatePair << true << true;
    QTest::newRow("silent windows: nothing") << SilentDatePair << false << false;
}

void controlsDatePairTest::leavingABadMask() {
    QFETCH(DatePairRules, rules);
    QFETCH(bool, message);
    QFETCH(bool, focusBack);
    PairForm form(rules);
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 9, 9});
    form.mask.setCursorPosition(0);
    QTest::keyClicks(&form.mask, u"901345"_s);
    PromptAnswers answers;
    if (message)
        answers.expectMsgBox();
    QTest::keyClick(&form.mask, Qt::Key_Return);
    QCOMPARE(answers.trouble(), QString());
    if (message) {
        QCOMPARE(answers.seen().constFirst().text, BadDate);
        QCOMPARE(answers.seen().constFirst().title, u"警告訊息"_s);
        QCOMPARE(answers.seen().constFirst().buttons.size(), 1);
    }
    QVERIFY(form.waitActive());
    QCOMPARE(QApplication::focusWidget(), focusBack ? static_cast<QWidget*>(&form.mask) : &form.date);
    QCOMPARE(form.mask.displayText(), u"90/13/45"_s);
    QCOMPARE(form.date.date(), QDate(2001, 9, 9));
}

void controlsDatePairTest::aSilentPairLeavesTheMarkOfOthers() {
    PairForm form(SilentDatePair);
    QVERIFY(form.waitActive());
    form.mark = 1; // of a code box, say
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(form.date.date(), QDate(2001, 1, 31));
    QCOMPARE(form.mark, 1);
    form.date.setDate({2026, 3, 5});
    QCOMPARE(form.mask.value(), QString());
    QCOMPARE(form.mark, 1);
}

void controlsDatePairTest::markOfAnotherPair_data() {
    QTest::addColumn<DatePairRules>("rules");
    QTest::addColumn<bool>("message");
    QTest::newRow("dialogs: any mark is told") << DialogDatePair << true;
    QTest::newRow("module windows: only its own") << ModuleDatePair << false;
    QTest::newRow("employees: only its own") << EmployeeDatePair << false;
}

void controlsDatePairTest::markOfAnotherPair() {
    QFETCH(DatePairRules, rules);
    QFETCH(bool, message);
    PairForm form(rules);
    QVERIFY(form.waitActive());
    form.otherMask.setValue(u"901345"_s);
    PromptAnswers answers;
    if (message)
        answers.expectMsgBox();
    QTest::keyClick(&form.mask, Qt::Key_Tab);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().size(), message ? 1 : 0);
}

void controlsDatePairTest::aGoodDateClearsTheMarkAndLeavesInSilence() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"901345"_s);
    QCOMPARE(form.mark, 102);
    form.mask.setCursorPosition(0);
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(form.mark, 0);
    const PromptAnswers answers;
    QTest::keyClick(&form.mask, Qt::Key_Tab);
    QVERIFY(form.date.hasFocus());
    QCOMPARE(answers.seen().size(), 0);
}

void controlsDatePairTest::an2026DateLeavesTheMaskBlankWithoutAMark() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    QCOMPARE(form.mask.value(), u"900131"_s);
    form.date.setDate({2026, 3, 5});
    QCOMPARE(form.mask.value(), QString());
    QCOMPARE(form.mask.displayText(), u"__/__/__"_s);
    QCOMPARE(form.date.date(), QDate(2026, 3, 5));
    QCOMPARE(form.date.currentText(), u"2026/03/05"_s);
    QCOMPARE(form.mark, 0);
}

void controlsDatePairTest::afterwardsTheBlankMaskIsLeftInSilence() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    form.date.setDate({2026, 3, 5});
    const PromptAnswers answers;
    QTest::keyClick(&form.mask, Qt::Key_Return);
    QVERIFY(form.date.hasFocus());
    QCOMPARE(answers.seen().size(), 0);
    QCOMPARE(form.date.date(), QDate(2026, 3, 5));
}

void controlsDatePairTest::aFiveCharacterTextStandsFromTheLeftAndIsNoDate() {
    PairForm form(ModuleDatePair);
    form.date.setDate({1920, 12, 5});
    QCOMPARE(form.mask.displayText(), u"91/20/5_"_s);
    QCOMPARE(form.mask.value(), u"91205"_s);
    QCOMPARE(form.date.date(), QDate(1920, 12, 5));
    QCOMPARE(form.mark, 12);
}

void controlsDatePairTest::emptiedMask_data() {
    QTest::addColumn<DatePairRules>("rules");
    QTest::addColumn<bool>("dateStays");
    QTest::addColumn<int>("mark");
    QTest::newRow("dialogs: the date stays, a bad date") << DialogDatePair << true << 102;
    QTest::newRow("employees: the date goes, no bad date") << EmployeeDatePair << false << 0;
    QTest::newRow("module windows: the date stays, a bad date") << ModuleDatePair << true << 12;
    QTest::newRow("silent windows: the date stays") << SilentDatePair << true << 0;
}

void controlsDatePairTest::emptiedMask() {
    QFETCH(DatePairRules, rules);
    QFETCH(bool, dateStays);
    PairForm form(rules);
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"900131"_s);
    QTest::keyClick(&form.mask, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&form.mask, Qt::Key_Delete);
    QCOMPARE(form.mask.value(), QString());
    QCOMPARE(form.date.date(), dateStays ? QDate(2001, 1, 31) : QDate());
    QTEST(form.mark, "mark");
    QVERIFY(!form.updating);
}

void controlsDatePairTest::emptiedDate_data() {
    QTest::addColumn<DatePairRules>("rules");
    QTest::addColumn<QString>("mask");
    QTest::newRow("dialogs: the mask keeps its text") << DialogDatePair << u"900131"_s;
    QTest::newRow("employees: the mask is cleared") << EmployeeDatePair << QString();
    QTest::newRow("module windows: the mask keeps its text") << ModuleDatePair << u"900131"_s;
    QTest::newRow("silent windows: the mask keeps its text") << SilentDatePair << u"900131"_s;
}

void controlsDatePairTest::emptiedDate() {
    QFETCH(DatePairRules, rules);
    PairForm form(rules);
    form.date.setDate({2001, 1, 31});
    form.date.setValue(QVariant());
    QTEST(form.mask.value(), "mask");
    QVERIFY(form.date.value().isNull());
    QCOMPARE(form.mark, 0);
}

void controlsDatePairTest::updatingFlagStandsWhileTheMaskSetsTheDate() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    QList<bool> flags;
    connect(&form.date, &TDBDate::changed, &form, [&] { flags << form.updating; });
    QTest::keyClicks(&form.mask, u"900131"_s);
    QCOMPARE(flags, QList<bool>{true});
    QVERIFY(!form.updating);
}

void controlsDatePairTest::aDateSetDuringAnUpdateIsNotMirrored() {
    PairForm form(DialogDatePair);
    form.mask.setValue(u"900131"_s);
    form.updating = true;
    form.date.setDate({1999, 9, 9});
    QCOMPARE(form.mask.value(), u"900131"_s);
    form.updating = false;
    form.date.setDate({1999, 9, 10});
    QCOMPARE(form.mask.value(), u"880910"_s);
}

void controlsDatePairTest::lostFocusMessageSwallowsTheClick() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"901345"_s);
    PromptAnswers answers;
    answers.expectMsgBox();
    click(form.button);
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(form.waitActive());
    QVERIFY(form.mask.hasFocus());
    QCOMPARE(form.clicks, 0);
    // And only that click: with the date put right the next one works.
    form.mask.setCursorPosition(0);
    QTest::keyClicks(&form.mask, u"900131"_s);
    click(form.button);
    QCOMPARE(form.clicks, 1);
}

void controlsDatePairTest::aClickAfterAGoodDateIsCarriedOut() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"900131"_s);
    click(form.button);
    QCOMPARE(form.clicks, 1);
}

void controlsDatePairTest::messageOnlyLetsTheFocusMoveOn() {
    PairForm form(EmployeeDatePair);
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"901345"_s);
    PromptAnswers answers;
    answers.expectMsgBox();
    QTest::keyClick(&form.mask, Qt::Key_Tab);
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(form.waitActive());
    QVERIFY(form.date.hasFocus());
}

void controlsDatePairTest::aMaskOnAHiddenPageAsksForNoFocus() {
    QWidget form;
    auto* rows = new QVBoxLayout(&form);
    auto* pages = new TabPages(&form, u"SSTab1"_s, u"頁籤"_s);
    rows->addWidget(pages);
    auto* dates = new QWidget;
    auto* mask = new TDBMask(dates);
    pages->addTab(dates, u"日期"_s);
    auto* other = new QWidget;
    auto* otherRows = new QVBoxLayout(other);
    auto* first = new QPushButton(u"一"_s);
    auto* second = new QPushButton(u"二"_s);
    otherRows->addWidget(first);
    otherRows->addWidget(second);
    pages->addTab(other, u"其他"_s);
    TDBDate date(&form);
    FocusWatch watch(&form);
    bool updating = false;
    int mark = 0;
    new DatePair(mask, &date, 2, ModuleDatePair, watch, updating, mark);
    int clicks = 0;
    for (const QPushButton* button : {first, second})
        connect(button, &QPushButton::clicked, &form, [&clicks] { ++clicks; });
    form.show();
    const auto active = [&form] {
        form.activateWindow();
        return QTest::qWaitForWindowActive(&form, PatienceMs);
    };
    QVERIFY(active());
    mask->setFocus();
    QTest::keyClicks(mask, u"901345"_s);
    PromptAnswers answers;
    answers.expectMsgBox();
    pages->setCurrentIndex(1); // as the program does it, without the tabs' taking the focus first
    QTRY_COMPARE_WITH_TIMEOUT(answers.trouble(), QString(), PatienceMs);
    QVERIFY(active());
    QVERIFY(!mask->hasFocus());
    for (QPushButton* button : {first, second, first}) {
        click(*button);
        QCOMPARE(form.focusWidget(), button);
    }
    QCOMPARE(clicks, 3);
    QCOMPARE(answers.seen().size(), 1);
    QCOMPARE(answers.trouble(), QString());
}

void controlsDatePairTest::aDialogIsNoLossOfFocus() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    QTest::keyClicks(&form.mask, u"901345"_s);
    PromptAnswers answers;
    answers.expect(u"Other"_s, [](QWidget& dialog) { static_cast<QDialog&>(dialog).accept(); });
    QDialog other(&form);
    other.setObjectName(u"Other"_s);
    other.exec();
    QVERIFY(form.waitActive());
    QVERIFY(form.mask.hasFocus());
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().size(), 1);
}

void controlsDatePairTest::theOwnCalendarOfTheMaskedDateIsReached() {
    PairForm form(DialogDatePair);
    QVERIFY(form.waitActive());
    form.date.setDate({2001, 1, 31});
    const PromptAnswers answers;
    click(form.date);
    QTRY_VERIFY_WITH_TIMEOUT(form.date.calendar() && form.date.calendar()->isVisible(), PatienceMs);
    QWindow* popup = form.date.calendar()->window()->windowHandle();
    QTest::keyClick(popup, Qt::Key_Up);
    QTest::keyClick(popup, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(form.mask.value(), u"900124"_s, PatienceMs);
    QCOMPARE(answers.seen().size(), 0);
}

int main(int argc, char** argv) {
    return runTests<controlsDatePairTest>(argc, argv);
}

#include "controlsDatePairTest.moc"
