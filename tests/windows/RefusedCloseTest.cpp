#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Patience.h"
#include "support/TestStore.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The controls of the window whose pictures are others than before.
QStringList changedSince(const QMap<QString, QImage>& before, const Window& window) {
    QStringList changed;
    for (auto each = before.cbegin(); each != before.cend(); ++each) {
        if (control(window, each.key()).grab().toImage() != each.value())
            changed += each.key();
    }
    return changed;
}

/// The buttons in sight, and the panel that acts as one, as they look.
QMap<QString, QImage> look(const Window& window) {
    QMap<QString, QImage> pictures;
    for (auto* button : window.findChildren<QPushButton*>()) {
        if (button->isVisible())
            pictures[button->objectName()] = button->grab().toImage();
    }
    if (auto* panel = window.findChild<QWidget*>(u"StbTool(8)"_s))
        pictures[panel->objectName()] = panel->grab().toImage();
    return pictures;
}

} // namespace

/// What a close of the main window shows that is refused because a window stands open in it.
class RefusedCloseTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theWayOutIsMarkedForAMoment_data();
    void theWayOutIsMarkedForAMoment();
    void nothingIsMarkedBeneathTheWindowInFront();
    void aMarkedButtonStillAnswers();
};

void RefusedCloseTest::theWayOutIsMarkedForAMoment_data() {
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("first"); // Pressed ahead of the close, where there is one.
    QTest::addColumn<QStringList>("marked");
    QTest::addRow("master data") << 1 << 0 << QString() << QStringList{u"CtrlCmd0(12)"_s, u"StbTool(8)"_s};
    QTest::addRow("a row being added")
        << 1 << 0 << u"CtrlCmd0(0)"_s << QStringList{u"CtrlCmd0(3)"_s, u"CtrlCmd0(4)"_s};
    QTest::addRow("another tab") << 1 << 3 << QString() << QStringList{u"CtrlCmd3(12)"_s, u"StbTool(8)"_s};
    QTest::addRow("roster") << 2 << 0 << QString() << QStringList{u"StbTool(8)"_s};
    QTest::addRow("attendance") << 3 << 0 << QString() << QStringList{u"CtrlCmd0(8)"_s, u"StbTool(8)"_s};
    QTest::addRow("exceptions, without such a button") << 3 << 2 << QString() << QStringList{u"StbTool(8)"_s};
    QTest::addRow("system") << 8 << -1 << QString() << QStringList{u"CmdSet(3)"_s};
}

void RefusedCloseTest::theWayOutIsMarkedForAMoment() {
    QFETCH(const int, module);
    QFETCH(const int, tab);
    QFETCH(const QString, first);
    QFETCH(const QStringList, marked);
    const TestStore store;
    Shell shell(store);
    OpenToolWindow(static_cast<std::int16_t>(module));
    const Window& form = *moduleWindow(module);
    if (tab >= 0)
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(tab);
    if (!first.isEmpty())
        click(control(form, first));
    const QMap<QString, QImage> before = look(form);
    const QWidget* focus = shell.window().focusWidget();
    QVERIFY(!shell.window().close());
    QVERIFY(!shell.window().close()); // again marks nothing twice
    QCOMPARE(changedSince(before, form), marked);
    QCOMPARE(shell.window().focusWidget(), focus);
    QTRY_COMPARE_WITH_TIMEOUT(changedSince(before, form), QStringList(), PatienceMs);
    QCOMPARE(moduleWindow(module), &form);
}

void RefusedCloseTest::nothingIsMarkedBeneathTheWindowInFront() {
    const TestStore store;
    Shell shell(store);
    OpenToolWindow(8);
    openChildWindow(u"FrmSysSet"_s);
    const Window& settings = *childWindow(u"FrmSysSet"_s);
    const QMap<QString, QImage> before = look(settings);
    const QMap<QString, QImage> beneath = look(*moduleWindow(8));
    QVERIFY(!shell.window().close());
    QCOMPARE(changedSince(before, settings), QStringList{u"CtrlCmd(3)"_s});
    QCOMPARE(changedSince(beneath, *moduleWindow(8)), QStringList());
}

void RefusedCloseTest::aMarkedButtonStillAnswers() {
    const TestStore store;
    Shell shell(store);
    OpenToolWindow(1);
    QVERIFY(!shell.window().close());
    click(control(*moduleWindow(1), u"CtrlCmd0(12)"_s));
    QVERIFY(!moduleWindow(1));
    QVERIFY(shell.window().close());
}

int main(int argc, char** argv) {
    return runTests<RefusedCloseTest>(argc, argv);
}

#include "RefusedCloseTest.moc"
