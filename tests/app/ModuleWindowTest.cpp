#include "app/Lookup.h"
#include "app/ModuleProbes.h"
#include "app/SystemMenu.h"
#include "store/DataSource.h"
#include "store/RunTimeError.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QFile>
#include <QPushButton>

#include <utility>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void failToOpen() {
    throw runTimeError(error::UnknownTable);
}

/// Opens a lookup that cannot read its table, and leaves it again.
void failInADialog(PromptAnswers& answers, QWidget& parent) {
    OpenDB();
    const QString folder = std::exchange(gDbPath, u"/nowhere/DB/"_s);
    answers.expectMsgBox().expectClick(u"QFrmHoliNo"_s, u"Command1(1)"_s);
    Lookup::ask(LookupKind::QFrmHoliNo, &parent);
    gDbPath = folder;
}

/// What lies on top at the corners of the place where module windows stand.
QStringList onTop(const QWidget& area) {
    const QRect place(QPoint(0, 0), ModuleWindowSize);
    QStringList names;
    for (const QPoint& corner :
         {place.topLeft(), place.topRight(), place.bottomLeft(), place.bottomRight(), place.center()}) {
        const QWidget* found = area.childAt(corner);
        names << (found ? found->objectName() : QString());
    }
    names.removeDuplicates();
    return names;
}

} // namespace

class ModuleWindowTest : public QObject {
    Q_OBJECT

  private:
    ModuleProbes probes_;

  private Q_SLOTS:
    void openToolWindowDoesNotLookAtRights();
    void anIndexOutOfRangeOpensNothing();
    void anIndexOutOfRangeStillAnswersAFailedOpen();
    void aModuleThatDoesNotExistEndsIdle();
    void aWindowIsLoadedOnceAndThenShown();
    void aFailedOpenOfForm1To4IsClosedAgain_data();
    void aFailedOpenOfForm1To4IsClosedAgain();
    void aFailedOpenOfForm5To7StaysLoaded_data();
    void aFailedOpenOfForm5To7StaysLoaded();
    void aFailureLeftStandingClosesTheNextWindow();
    void aFailureLeftStandingKeepsForm5To8_data();
    void aFailureLeftStandingKeepsForm5To8();
    void aStoreThatIsGoneEndsTheProgramAtAModuleWindow();
    void openAndCloseAreNotCounted();
    void aWindowMayUnloadItselfAndGoOn();
    void theTabKeyStaysInTheWindowInFront();
    void theWindowBeneathGetsTheFocusBack();
    void theKeyboardReachesTheToolbarWhenIdle();
    void unloadClosesBoundSourcesAtOnce();
};

void ModuleWindowTest::openToolWindowDoesNotLookAtRights() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    setAllRights(false);
    UnlockToolbar();
    OpenToolWindow(7);
    QVERIFY(moduleWindow(7) && moduleWindow(7)->isVisible());
    QCOMPARE(shell.window().windowTitle(), u"報表列印"_s);
    QCOMPARE(enabledButtons(), QList<int>{7});
    moduleWindow(7)->unload();
    QCOMPARE(enabledButtons(), QList<int>());
}

void ModuleWindowTest::anIndexOutOfRangeOpensNothing() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    for (const int index : {0, 9, -1, 32767}) {
        OpenToolWindow(static_cast<std::int16_t>(index));
        QCOMPARE(shell.window().windowTitle(), IdleCaption);
        QVERIFY(shell.window().Tb().isEnabled());
        QVERIFY(gSysMenu->has(SystemMenu::Close));
    }
    for (int index = 1; index <= 8; ++index)
        QVERIFY(!moduleWindow(index));
}

void ModuleWindowTest::anIndexOutOfRangeStillAnswersAFailedOpen() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    OpenToolWindow(4);
    gOpenFailed = true;
    OpenToolWindow(0);
    QVERIFY(!gOpenFailed);
    QVERIFY(!moduleWindow(4));
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
}

void ModuleWindowTest::aModuleThatDoesNotExistEndsIdle() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    registerModuleWindow(6, {});
    UnlockToolbar();
    QVERIFY(!hasModuleWindow(6));
    QCOMPARE(enabledButtons(), QList<int>({1, 2, 3, 4, 5, 7, 8}));
    OpenToolWindow(6);
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    QVERIFY(shell.window().Tb().isEnabled());
    QVERIFY(gSysMenu->has(SystemMenu::Close));
    QVERIFY(!moduleWindow(6));
}

void ModuleWindowTest::aWindowIsLoadedOnceAndThenShown() {
    const TestStore store;
    const Shell shell(store);
    probes_.registerAll();
    OpenToolWindow(5);
    const Window* first = moduleWindow(5);
    OpenToolWindow(5);
    QCOMPARE(moduleWindow(5), first);
    QCOMPARE(probes_.log(5).loads, 1);
    moduleWindow(5)->unload();
    OpenToolWindow(5);
    QCOMPARE(probes_.log(5).loads, 2);
}

void ModuleWindowTest::aFailedOpenOfForm1To4IsClosedAgain_data() {
    QTest::addColumn<int>("index");
    for (int index = 1; index <= 4; ++index)
        QTest::addRow("Form%d", index) << index;
}

void ModuleWindowTest::aFailedOpenOfForm1To4IsClosedAgain() {
    QFETCH(const int, index);
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    probes_.log(index).load = failToOpen;
    PromptAnswers answers;
    answers.expectMsgBox();
    click(button(index));
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QCOMPARE(answers.seen().constFirst().buttons, QStringList{u"確定"_s});
    QVERIFY(!moduleWindow(index));
    QVERIFY(!gOpenFailed);
    QVERIFY(!gDbOpen);
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    QCOMPARE(enabledButtons().size(), 8);
}

void ModuleWindowTest::aFailedOpenOfForm5To7StaysLoaded_data() {
    QTest::addColumn<int>("index");
    for (int index = 5; index <= 7; ++index)
        QTest::addRow("Form%d", index) << index;
}

void ModuleWindowTest::aFailedOpenOfForm5To7StaysLoaded() {
    QFETCH(const int, index);
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    ProbeLog& log = probes_.log(index);
    log.load = failToOpen;
    PromptAnswers answers;
    answers.expectMsgBox();
    click(button(index));
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(!gOpenFailed);
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    // It is still there, beneath Form0.
    QVERIFY(moduleWindow(index) && moduleWindow(index)->isVisible());
    QCOMPARE(onTop(*gMDI->clientArea()), QStringList{u"Form0"_s});
    QCOMPARE(enabledButtons().size(), 8);
    QVERIFY(gDbOpen);
    // Its button shows it again as it is, without a second load.
    click(button(index));
    QCOMPARE(log.loads, 1);
    QCOMPARE(enabledButtons(), QList<int>{index});
    QCOMPARE(onTop(*gMDI->clientArea()), QStringList{u"Form%1"_s.arg(index)});
    click(control(*moduleWindow(index), u"Leave"_s));
    QVERIFY(!moduleWindow(index));
    QCOMPARE(log.unloads, 1);
}

void ModuleWindowTest::aFailureLeftStandingClosesTheNextWindow() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    PromptAnswers answers;
    failInADialog(answers, shell.window());
    QVERIFY(gOpenFailed);
    click(button(1));
    QCOMPARE(probes_.log(1).loads, 1);
    QCOMPARE(probes_.log(1).unloads, 1);
    QVERIFY(!moduleWindow(1));
    QVERIFY(!gOpenFailed);
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    click(button(1));
    QVERIFY(moduleWindow(1) && moduleWindow(1)->isVisible());
    QCOMPARE(answers.trouble(), QString());
}

void ModuleWindowTest::aFailureLeftStandingKeepsForm5To8_data() {
    QTest::addColumn<int>("index");
    for (int index = 5; index <= 8; ++index)
        QTest::addRow("Form%d", index) << index;
}

void ModuleWindowTest::aFailureLeftStandingKeepsForm5To8() {
    QFETCH(const int, index);
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    PromptAnswers answers;
    failInADialog(answers, shell.window());
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().constFirst().title, u"異常警告"_s);
    QVERIFY(gOpenFailed);
    click(button(index));
    QVERIFY(!gOpenFailed);
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    QVERIFY(shell.window().Tb().isEnabled());
    QCOMPARE(enabledButtons().size(), 8);
    QVERIFY(gSysMenu->has(SystemMenu::Close));
    QVERIFY(moduleWindow(index) && !moduleWindow(index)->isUnloaded());
    if (index != 8)
        QCOMPARE(probes_.log(index).unloads, 0);
    QCOMPARE(onTop(*gMDI->clientArea()), QStringList{u"Form0"_s});
    // Its button shows it again, as it is, and this time to stay.
    click(button(index));
    QCOMPARE(shell.window().windowTitle(), shell.window().Tb().caption(index));
    QVERIFY(onTop(*gMDI->clientArea()) != QStringList{u"Form0"_s});
    QCOMPARE(answers.trouble(), QString());
}

void ModuleWindowTest::aStoreThatIsGoneEndsTheProgramAtAModuleWindow() {
    const TestStore store;
    const Shell shell(store);
    probes_.registerAll();
    QVERIFY(QFile::remove(store.path()));
    PromptAnswers answers;
    answers.expectMsgBox();
    const auto end = endOf([] { guarded([] { OpenToolWindow(1); }); });
    QCOMPARE(end, std::optional(1));
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().constFirst().title, u"Pontrel"_s);
    QCOMPARE(answers.seen().constFirst().icon, MsgIcon::Critical);
    QVERIFY2(answers.seen().constFirst().text.contains(u"'3024'"_s),
             qUtf8Printable(answers.seen().constFirst().text));
}

void ModuleWindowTest::openAndCloseAreNotCounted() {
    const TestStore store;
    const Shell shell(store);
    OpenDB();
    const Database* first = gDatabase.get();
    OpenDB();
    QCOMPARE(gDatabase.get(), first);
    QCOMPARE(gDatabase->path(), gDbPath + u"Pontrel.mdb"_s);
    CloseDB();
    QVERIFY(!gDbOpen);
    QVERIFY(!gDatabase);
    CloseDB();
    QVERIFY(!gDbOpen);
    OpenDB();
    QVERIFY(gDbOpen);
    QCOMPARE(gDatabase->select(u"select Account from syst02"_s).count(), std::size_t{1});
}

void ModuleWindowTest::aWindowMayUnloadItselfAndGoOn() {
    const TestStore store;
    const Shell shell(store);
    probes_.registerAll();
    OpenToolWindow(1);
    const QPointer<Window> window = moduleWindow(1);
    bool wentOn = false;
    connect(&control<QPushButton>(*window, u"Leave"_s), &QPushButton::clicked, this, [&] {
        OpenToolWindow(2);
        wentOn = !window.isNull();
    });
    QTest::mouseClick(&control(*window, u"Leave"_s), Qt::LeftButton);
    QVERIFY(wentOn);
    QVERIFY(!moduleWindow(1));
    QVERIFY(moduleWindow(2) && moduleWindow(2)->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!window, PatienceMs);
    QCOMPARE(probes_.log(1).unloads, 1);
}

void ModuleWindowTest::theTabKeyStaysInTheWindowInFront() {
    const TestStore store;
    const Shell shell(store);
    probes_.registerAll();
    OpenToolWindow(5);
    OpenToolWindow(1);
    auto& leave = control(*moduleWindow(1), u"Leave"_s);
    QVERIFY(leave.hasFocus());
    for (int press = 0; press < 3; ++press) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(leave.hasFocus());
    }
}

void ModuleWindowTest::theWindowBeneathGetsTheFocusBack() {
    const TestStore store;
    const Shell shell(store);
    probes_.registerAll();
    ProbeLog log;
    const QString name = u"FrmPsw"_s;
    registerChildWindow(
        name, [&log, name](QWidget* parent) -> Window* { return new ProbeWindow(parent, name, log); });
    click(button(8));
    auto& accounts = control(*moduleWindow(8), u"CmdSet(1)"_s);
    click(accounts);
    auto& leave = control(*childWindow(name), u"Leave"_s);
    QVERIFY(leave.hasFocus());
    click(leave);
    registerChildWindow(name, {});
    QVERIFY(accounts.hasFocus());
    QCOMPARE(enabledButtons(), QList<int>{8});
}

void ModuleWindowTest::theKeyboardReachesTheToolbarWhenIdle() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    for (int round = 0; round < 2; ++round) {
        for (int press = 0; press < 9 && !button(4).hasFocus(); ++press)
            QTest::keyClick(shell.window().windowHandle(), Qt::Key_Tab);
        QVERIFY(button(4).hasFocus());
        QTest::keyClick(shell.window().windowHandle(), Qt::Key_Space);
        QVERIFY(moduleWindow(4));
        QTest::keyClick(shell.window().windowHandle(), Qt::Key_Space);
        QVERIFY(!moduleWindow(4));
    }
}

void ModuleWindowTest::unloadClosesBoundSourcesAtOnce() {
    const TestStore store;
    const Shell shell(store);
    probes_.registerAll();
    OpenToolWindow(2);
    DataSource source(moduleWindow(2));
    source.setDatabaseName(store.path());
    source.setRecordSource(u"syst02"_s);
    source.Refresh();
    QVERIFY(source.recordset().isOpen());
    moduleWindow(2)->unload();
    QVERIFY(!source.recordset().isOpen());
}

int main(int argc, char** argv) {
    return runTests<ModuleWindowTest>(argc, argv);
}

#include "ModuleWindowTest.moc"
