#include "windows/system/Form8.h"
#include "app/ModuleProbes.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QPushButton>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

class Form8Test : public QObject {
    Q_OBJECT

  private:
    ModuleProbes probes_;

  private Q_SLOTS:
    void givingLeaveButtonDoesNothing();
    void leavingForm8GoesBackToIdle();
    void buttonsOfForm8WaitForTheirWindows();
};

void Form8Test::givingLeaveButtonDoesNothing() {
    const TestStore store;
    Shell shell(store);
    const PromptAnswers answers;
    click(button(8));
    auto& giving = control<QPushButton>(*moduleWindow(8), u"CmdSet(2)"_s);
    QCOMPARE(giving.text(), u"給假規定"_s);
    QVERIFY(giving.isEnabled());
    const auto windowsShown = [] {
        int shown = 0;
        const auto windows = gMDI->findChildren<Window*>();
        for (const Window* each : windows)
            shown += each->isVisible() ? 1 : 0;
        return shown;
    };
    const int before = windowsShown();
    const qsizetype topLevels = QApplication::topLevelWidgets().size();
    int clicks = 0;
    connect(&giving, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    click(giving);
    QCOMPARE(clicks, 1);
    QCOMPARE(windowsShown(), before);
    QCOMPARE(QApplication::topLevelWidgets().size(), topLevels);
    QVERIFY(moduleWindow(8)->isVisible());
    QCOMPARE(shell.window().windowTitle(), u"系統管理"_s);
    QCOMPARE(enabledButtons(), QList<int>{8});
    QVERIFY(!gDbOpen);
    QCOMPARE(answers.trouble(), QString());
}

void Form8Test::leavingForm8GoesBackToIdle() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    click(button(8));
    QCOMPARE(control<QPushButton>(*moduleWindow(8), u"CmdSet(0)"_s).text(), u"系統參數設定"_s);
    QCOMPARE(control<QPushButton>(*moduleWindow(8), u"CmdSet(1)"_s).text(), u"權限管理"_s);
    auto& leave = control<QPushButton>(*moduleWindow(8), u"CmdSet(3)"_s);
    QCOMPARE(leave.text(), u"離開"_s);
    click(leave);
    QVERIFY(!moduleWindow(8));
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    QCOMPARE(enabledButtons().size(), 8);
    QTRY_VERIFY_WITH_TIMEOUT(!shell.window().findChild<Form8*>(), PatienceMs);
}

void Form8Test::buttonsOfForm8WaitForTheirWindows() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    const QString name = u"FrmSysSet"_s;
    registerChildWindow(name, {});
    click(button(8));
    QVERIFY(!control(*moduleWindow(8), u"CmdSet(0)"_s).isEnabled());
    moduleWindow(8)->unload();

    ProbeLog log;
    registerChildWindow(
        name, [&log, name](QWidget* parent) -> Window* { return new ProbeWindow(parent, name, log); });
    click(button(8));
    auto& settings = control(*moduleWindow(8), u"CmdSet(0)"_s);
    QVERIFY(settings.isEnabled());
    click(settings);
    QVERIFY(childWindow(name) && childWindow(name)->isVisible());
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(moduleWindow(8)->isVisible());
    openChildWindow(name);
    QCOMPARE(log.loads, 1);
    childWindow(name)->unload();
    QVERIFY(!childWindow(name));
    QCOMPARE(log.unloads, 1);
    registerChildWindow(name, {});
}

int main(int argc, char** argv) {
    return runTests<Form8Test>(argc, argv);
}

#include "Form8Test.moc"
