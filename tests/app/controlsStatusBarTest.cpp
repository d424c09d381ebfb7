#include "app/controls/LockKeys.h"
#include "app/controls/StatusBar.h"
#include "store/Clock.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QAccessible>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

struct BarForm : QWidget {
    QLineEdit edit;
    StatusBar bar;
    BarForm() {
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(&edit);
        rows->addWidget(&bar);
        resize(562, 80);
        edit.setFocus();
        show();
    }
    [[nodiscard]] bool waitActive() { return QTest::qWaitForWindowActive(this, PatienceMs); }
    [[nodiscard]] QLabel& panel(int index) const {
        return control<QLabel>(*this, u"StbTool(%1)"_s.arg(index));
    }
};

} // namespace

class controlsStatusBarTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup();
    void hasEightNamedPanels();
    void counterCountsFromOne_data();
    void counterCountsFromOne();
    void clockAndDateAreTheProgramsOwn();
    void lockKeysFollowTheKeysPressed_data();
    void lockKeysFollowTheKeysPressed();
    void raisedPanel8Leaves();
    void sunkenPanel8DoesNothing();
    void otherPanelsDoNothing();
    void panel8AnswersNoReleaseOfAPressElsewhere();
    void panel8TakesNoFocusByTheMouse();
    void panel8IsPressedByTheKeyboard_data();
    void panel8IsPressedByTheKeyboard();
    void panel8IsReachedOnlyWhileRaised();
    void assistiveTechnologyMeetsPanel8AsAButton();
    void textsFitTheirPanels();
};

void controlsStatusBarTest::cleanup() {
    clock::setSource({});
}

void controlsStatusBarTest::hasEightNamedPanels() {
    const BarForm form;
    QCOMPARE(form.bar.objectName(), u"StbTool"_s);
    QStringList texts;
    for (int index : {1, 2, 3, 4, 5, 8})
        texts << form.panel(index).text();
    QCOMPARE(texts, QStringList({QString(), QString(), u"CAPS"_s, u"NUM"_s, u"INS"_s, u"離開"_s}));
}

void controlsStatusBarTest::counterCountsFromOne_data() {
    QTest::addColumn<qint64>("position");
    QTest::addColumn<qint64>("count");
    QTest::addColumn<QString>("text");
    QTest::newRow("the third of seventeen") << qint64{2} << qint64{17} << u"資料錄:3/17"_s;
    QTest::newRow("an empty list") << qint64{0} << qint64{0} << u"資料錄:1/0"_s;
    QTest::newRow("the last of a million")
        << qint64{999'999} << qint64{1'000'000} << u"資料錄:1000000/1000000"_s;
}

void controlsStatusBarTest::counterCountsFromOne() {
    QFETCH(qint64, position);
    QFETCH(qint64, count);
    BarForm form;
    form.bar.showCounter(position, count);
    QTEST(form.panel(1).text(), "text");
}

void controlsStatusBarTest::clockAndDateAreTheProgramsOwn() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 7, 59)); });
    const BarForm form;
    QCOMPARE(form.panel(6).text(), u"09:07"_s);
    QCOMPARE(form.panel(7).text(), u"2026/3/5"_s);
    clock::setSource([] { return QDateTime(QDate(2026, 11, 15), QTime(0, 0)); });
    QTRY_COMPARE_WITH_TIMEOUT(form.panel(6).text(), u"00:00"_s, PatienceMs);
    QCOMPARE(form.panel(7).text(), u"2026/11/15"_s);
}

void controlsStatusBarTest::lockKeysFollowTheKeysPressed_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::newRow("CAPS") << int(Qt::Key_CapsLock) << 3 << u"CAPS"_s;
    QTest::newRow("NUM") << int(Qt::Key_NumLock) << 4 << u"NUM"_s;
    QTest::newRow("INS") << int(Qt::Key_Insert) << 5 << u"INS"_s;
}

void controlsStatusBarTest::lockKeysFollowTheKeysPressed() {
    QFETCH(int, key);
    QFETCH(int, index);
    QFETCH(QString, name);
    BarForm form;
    QVERIFY(form.waitActive());
    const QLabel& panel = form.panel(index);
    QVERIFY(!panel.isEnabled());
    QCOMPARE(panel.accessibleName(), name + u" 關"_s);
    QTest::keyClick(form.windowHandle(), static_cast<Qt::Key>(key));
    QVERIFY(panel.isEnabled());
    QCOMPARE(panel.accessibleName(), name + u" 開"_s);
    // Another window's bar shows the same keys.
    const BarForm later;
    QVERIFY(later.panel(index).isEnabled());
    QTest::keyClick(form.windowHandle(), static_cast<Qt::Key>(key));
    QVERIFY(!panel.isEnabled());
    QVERIFY(!later.panel(index).isEnabled());
}

void controlsStatusBarTest::raisedPanel8Leaves() {
    BarForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy left(&form.bar, &StatusBar::leaveClicked);
    QVERIFY(form.bar.isLeaveRaised());
    QCOMPARE(form.panel(8).frameShadow(), QFrame::Raised);
    click(form.panel(8));
    QCOMPARE(left.count(), 1);
}

void controlsStatusBarTest::sunkenPanel8DoesNothing() {
    BarForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy left(&form.bar, &StatusBar::leaveClicked);
    form.bar.setLeaveRaised(false);
    QCOMPARE(form.panel(8).frameShadow(), QFrame::Sunken);
    click(form.panel(8));
    QCOMPARE(left.count(), 0);
    form.bar.setLeaveRaised(true);
    click(form.panel(8));
    QCOMPARE(left.count(), 1);
}

void controlsStatusBarTest::otherPanelsDoNothing() {
    BarForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy left(&form.bar, &StatusBar::leaveClicked);
    for (int index = 1; index <= 7; ++index)
        click(form.panel(index));
    QCOMPARE(left.count(), 0);
}

void controlsStatusBarTest::panel8AnswersNoReleaseOfAPressElsewhere() {
    BarForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy left(&form.bar, &StatusBar::leaveClicked);
    // As a file chosen by a double click leaves it: the dialog is gone before the button is up.
    const QLabel& leave = form.panel(8);
    QTest::mouseRelease(form.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                        leave.mapTo(&form, leave.rect().center()));
    QCOMPARE(left.count(), 0);
}

void controlsStatusBarTest::panel8TakesNoFocusByTheMouse() {
    BarForm form;
    QVERIFY(form.waitActive());
    click(form.panel(8));
    QVERIFY(form.edit.hasFocus());
}

void controlsStatusBarTest::panel8IsPressedByTheKeyboard_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("the blank") << int(Qt::Key_Space);
    QTest::newRow("Enter") << int(Qt::Key_Return);
}

void controlsStatusBarTest::panel8IsPressedByTheKeyboard() {
    QFETCH(int, key);
    BarForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy left(&form.bar, &StatusBar::leaveClicked);
    QTest::keyClick(form.windowHandle(), Qt::Key_Tab);
    QVERIFY(form.panel(8).hasFocus());
    QTest::keyClick(form.windowHandle(), static_cast<Qt::Key>(key));
    QCOMPARE(left.count(), 1);
}

void controlsStatusBarTest::panel8IsReachedOnlyWhileRaised() {
    BarForm form;
    QVERIFY(form.waitActive());
    form.bar.setLeaveRaised(false);
    QTest::keyClick(form.windowHandle(), Qt::Key_Tab);
    QVERIFY(form.edit.hasFocus());
    QCOMPARE(controlFaults(form).filter(u"StbTool"_s), QStringList());
}

void controlsStatusBarTest::assistiveTechnologyMeetsPanel8AsAButton() {
    BarForm form;
    QVERIFY(form.waitActive());
    const QSignalSpy left(&form.bar, &StatusBar::leaveClicked);
    QCOMPARE(form.bar.accessibleName(), u"狀態列"_s);
    for (int index = 1; index <= 7; ++index)
        QCOMPARE(QAccessible::queryAccessibleInterface(&form.panel(index))->role(), QAccessible::StaticText);
    QAccessibleInterface* leave = QAccessible::queryAccessibleInterface(&form.panel(8));
    QCOMPARE(leave->role(), QAccessible::Button);
    QCOMPARE(leave->text(QAccessible::Name), u"離開"_s);
    QVERIFY(leave->state().focusable && !leave->state().disabled);
    const QString press = QAccessibleActionInterface::pressAction();
    QVERIFY(leave->actionInterface()->actionNames().contains(press));
    leave->actionInterface()->doAction(press);
    QCOMPARE(left.count(), 1);
    // Not behind a dialog, which is no hindrance to an action.
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        leave->actionInterface()->doAction(press);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    MsgBox(u"確定刪除這筆資料?"_s);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(left.count(), 1);
    form.bar.setLeaveRaised(false);
    QVERIFY(leave->state().disabled);
    QVERIFY(!leave->actionInterface()->actionNames().contains(press));
    leave->actionInterface()->doAction(press);
    QCOMPARE(left.count(), 1);
}

void controlsStatusBarTest::textsFitTheirPanels() {
    clock::setSource([] { return QDateTime(QDate(2026, 12, 25), QTime(20, 48)); });
    BarForm form;
    form.bar.showCounter(999'999, 1'000'000);
    form.bar.setText(2, u"新增資料"_s);
    QVERIFY(form.waitActive());
    for (int index = 1; index <= StatusBar::PanelCount; ++index) {
        const QLabel& panel = form.panel(index);
        const int needed = panel.fontMetrics().horizontalAdvance(panel.text());
        QVERIFY2(panel.contentsRect().width() >= needed,
                 qPrintable(u"panel %1 is %2 wide, its text %3"_s.arg(index).arg(panel.width()).arg(needed)));
    }
}

int main(int argc, char** argv) {
    return runTests<controlsStatusBarTest>(argc, argv);
}

#include "controlsStatusBarTest.moc"
