#include "app/Form8.h"
#include "app/Module1.h"
#include "app/ProbeWindow.h"
#include "app/SystemMenu.h"
#include "app/Toolbar.h"
#include "store/RunTimeError.h"
#include "support/AppSupport.h"

#include <QPushButton>
#include <QScreen>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

QStringList menuTexts() {
    QStringList texts;
    for (const SystemMenu::Entry& entry : gSysMenu->entries())
        texts << entry.text;
    return texts;
}

/// The numbers of the buttons that are enabled themselves.
QList<int> enabledButtons() {
    QList<int> numbers;
    for (int number = 1; number <= Toolbar::ButtonCount; ++number) {
        if (gMDI->Tb().isButtonEnabled(number))
            numbers << number;
    }
    return numbers;
}

QWidget& button(int number) {
    return *gMDI->Tb().button(number);
}

[[noreturn]] void failToOpen() {
    throw runTimeError(error::UnknownTable);
}

const QString IdleCaption = u"Pontrel V1.1 - Norvale"_s;

} // namespace

class ShellTest : public QObject {
    Q_OBJECT

  private:
    std::array<ProbeLog, 9> logs_;

    /// All modules but Form8, which is the real one, are probes.
    void registerProbes() {
        logs_ = {};
        for (int index = 1; index <= 7; ++index)
            ProbeWindow::registerAs(index, logs_.at(static_cast<std::size_t>(index)));
        UnlockToolbar();
    }

  private Q_SLOTS:
    void aProgramFolderThatIsARootGetsNoDoubledSeparator();
    void theMainWindowStandsAboveTheMiddleOfTheScreen();
    void aResizedMainWindowGoesBackToItsSize();
    void maximisingIsImpossible();
    void captionsStandWholeOnTheirButtons();
    void rightNGivesButtonN();
    void aUserWithoutRightsCanOnlyCloseTheMainWindow();
    void aWindowLocksTheToolbarAndLightsItsButtonAlone();
    void theLitButtonIsPaintedUnlikeTheOthers();
    void noButtonReactsWhileAWindowIsOpen();
    void closeComesBackLastInTheSystemsOwnWords();
    void appendingAnEntryThatIsThereDoesNothing();
    void theMenuIsLeftAloneBeforeItIsFetched();
    void theMainWindowIsClosedInIdleOnly();
    void givingLeaveButtonDoesNothing();
    void leavingForm8GoesBackToIdle();
    void buttonsOfForm8WaitForTheirWindows();
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
    void aStoreThatIsGoneEndsTheProgramAtAModuleWindow();
    void openAndCloseAreNotCounted();
    void aWindowMayUnloadItselfAndGoOn();
    void everyControlIsNamedAndReached();
};

void ShellTest::aProgramFolderThatIsARootGetsNoDoubledSeparator() {
    QCOMPARE(databaseFolder(u"/"_s), u"/DB/"_s);
    QCOMPARE(databaseFolder(u"/srv/pontrel"_s), u"/srv/pontrel/DB/"_s);
    QCOMPARE(databaseFolder(u"/srv/pontrel/"_s), u"/srv/pontrel/DB/"_s);
}

void ShellTest::theMainWindowStandsAboveTheMiddleOfTheScreen() {
    const TestStore store;
    Shell shell(store);
    const QSize screen = QGuiApplication::primaryScreen()->size();
    QCOMPARE(shell.window().size(), QSize(640, 450));
    QCOMPARE(shell.window().pos(), QPoint((screen.width() - 640) / 2, (screen.height() - 450) / 2 - 14));
    QCOMPARE(control(shell.window(), u"Form0"_s).geometry(), QRect(0, 0, 574, 418));
    QVERIFY(control(shell.window(), u"Form0"_s).isVisible());
}

void ShellTest::aResizedMainWindowGoesBackToItsSize() {
    const TestStore store;
    Shell shell(store);
    // As under a window manager that does not keep to the limits.
    shell.window().setMinimumSize(0, 0);
    shell.window().setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    shell.window().resize(800, 600);
    QTRY_COMPARE(shell.window().size(), QSize(640, 450));
    shell.window().windowHandle()->resize(300, 200);
    QTRY_COMPARE(shell.window().size(), QSize(640, 450));
}

void ShellTest::maximisingIsImpossible() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    const auto maximiseIsGone = [&] {
        return !gSysMenu->has(SystemMenu::Maximize) &&
               !shell.window().windowFlags().testFlag(Qt::WindowMaximizeButtonHint) &&
               !shell.window().windowHandle()->flags().testFlag(Qt::WindowMaximizeButtonHint);
    };
    QVERIFY(maximiseIsGone());
    for (int round = 0; round < 2; ++round) {
        setFrameButton(shell.window(), Qt::WindowMaximizeButtonHint, true);
        OpenToolWindow(1);
        QVERIFY(maximiseIsGone());
        setFrameButton(shell.window(), Qt::WindowMaximizeButtonHint, true);
        moduleWindow(1)->unload();
        QVERIFY(maximiseIsGone());
    }
    shell.window().showMaximized();
    QTRY_VERIFY(!shell.window().isMaximized());
    shell.window().showFullScreen();
    QTRY_VERIFY(!shell.window().isFullScreen());
    QTRY_COMPARE(shell.window().size(), QSize(640, 450));
}

void ShellTest::captionsStandWholeOnTheirButtons() {
    const TestStore store;
    Shell shell(store);
    const QStringList captions = {u"基本資料"_s, u"制度管理"_s, u"出勤管理"_s, u"差假管理"_s,
                                  u"註銷管理"_s, u"加班管理"_s, u"報表列印"_s, u"系統管理"_s};
    for (int number = 1; number <= 8; ++number) {
        const auto& each = control<QPushButton>(shell.window(), u"Tb(%1)"_s.arg(number));
        QCOMPARE(each.text(), captions.at(number - 1));
        QCOMPARE(each.accessibleName(), each.text());
        QVERIFY(each.fontMetrics().horizontalAdvance(each.text()) <= each.width() - 6);
        QVERIFY(shell.window().rect().contains(QRect(each.mapTo(&shell.window(), QPoint()), each.size())));
    }
}

void ShellTest::rightNGivesButtonN() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    const std::array flags = {&gF1, &gF2, &gF3, &gF4, &gF5, &gF6, &gF7, &gF8};
    for (int number = 1; number <= 8; ++number) {
        setAllRights(false);
        *flags.at(static_cast<std::size_t>(number - 1)) = true;
        UnlockToolbar();
        QCOMPARE(enabledButtons(), QList<int>{number});
        QVERIFY(button(number).isEnabled());
    }
}

void ShellTest::aUserWithoutRightsCanOnlyCloseTheMainWindow() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    setAllRights(false);
    UnlockToolbar();
    QCOMPARE(enabledButtons(), QList<int>());
    for (int number = 1; number <= 8; ++number)
        click(button(number));
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    for (int index = 1; index <= 8; ++index)
        QVERIFY(!moduleWindow(index));
    QVERIFY(shell.window().close());
}

void ShellTest::aWindowLocksTheToolbarAndLightsItsButtonAlone() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    for (const int number : {1, 8}) {
        click(button(number));
        QCOMPARE(shell.window().windowTitle(), shell.window().Tb().caption(number));
        QVERIFY(!shell.window().Tb().isEnabled());
        QCOMPARE(enabledButtons(), QList<int>{number});
        QVERIFY(!gSysMenu->has(SystemMenu::Close));
        Window* window = moduleWindow(number);
        QVERIFY(window && window->isVisible());
        QCOMPARE(window->objectName(), u"Form%1"_s.arg(number));
        QCOMPARE(window->geometry(), QRect(0, 0, 574, 418));
        window->unload();
        QCOMPARE(shell.window().windowTitle(), IdleCaption);
        QVERIFY(shell.window().Tb().isEnabled());
        QCOMPARE(enabledButtons().size(), 8);
        QVERIFY(!moduleWindow(number));
    }
}

void ShellTest::theLitButtonIsPaintedUnlikeTheOthers() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    OpenToolWindow(3);
    const auto backgroundOf = [](int number) { return button(number).grab().toImage().pixelColor(8, 8); };
    QCOMPARE(backgroundOf(2), backgroundOf(4));
    QVERIFY(backgroundOf(3) != backgroundOf(2));
}

void ShellTest::noButtonReactsWhileAWindowIsOpen() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    click(button(2));
    for (int number = 1; number <= 8; ++number)
        click(button(number));
    QCOMPARE(shell.window().windowTitle(), u"制度管理"_s);
    QCOMPARE(logs_.at(2).loads, 1);
    for (const int index : {1, 3, 4, 5, 6, 7, 8})
        QVERIFY(!moduleWindow(index));
}

void ShellTest::closeComesBackLastInTheSystemsOwnWords() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    const QStringList before = menuTexts();
    QCOMPARE(before,
             QStringList({u"還原(&R)"_s, u"移動(&M)"_s, u"大小(&S)"_s, u"最小化(&N)"_s, u"關閉(&C)"_s}));
    QCOMPARE(gCloseText, u"關閉(&C)"_s);
    click(button(1));
    QCOMPARE(menuTexts(), before.mid(0, 4));
    QVERIFY(!shell.window().windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(shell.window().isVisible());
    click(control(*moduleWindow(1), u"Leave"_s));
    QCOMPARE(menuTexts(), before);
    QVERIFY(shell.window().windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint));
}

void ShellTest::appendingAnEntryThatIsThereDoesNothing() {
    const TestStore store;
    const Shell shell(store);
    const QStringList before = menuTexts();
    gSysMenu->append(SystemMenu::Close, u"另一個"_s);
    gSysMenu->append(SystemMenu::Restore, u"另一個"_s);
    QCOMPARE(menuTexts(), before);
    gSysMenu->remove(SystemMenu::Maximize);
    QCOMPARE(menuTexts(), before);
}

void ShellTest::theMenuIsLeftAloneBeforeItIsFetched() {
    const TestStore store;
    Shell shell(store);
    gSysMenu = nullptr;
    gCloseText.clear();
    UnlockToolbar();
    QCOMPARE(shell.window().systemMenu().text(SystemMenu::Close), u"關閉(&C)"_s);
    LockToolbar();
    QVERIFY(shell.window().systemMenu().has(SystemMenu::Close));
}

void ShellTest::theMainWindowIsClosedInIdleOnly() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    int closed = 0;
    connect(&shell.window(), &MDI::closed, this, [&closed] { ++closed; });
    click(button(1));
    QVERIFY(!shell.window().close());
    QVERIFY(shell.window().isVisible());
    QCOMPARE(closed, 0);
    moduleWindow(1)->unload();
    QVERIFY(shell.window().close());
    QCOMPARE(closed, 1);
    QVERIFY(!control(shell.window(), u"Form0"_s).isVisible());
}

void ShellTest::givingLeaveButtonDoesNothing() {
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

void ShellTest::leavingForm8GoesBackToIdle() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    click(button(8));
    QCOMPARE(control<QPushButton>(*moduleWindow(8), u"CmdSet(0)"_s).text(), u"系統參數設定"_s);
    QCOMPARE(control<QPushButton>(*moduleWindow(8), u"CmdSet(1)"_s).text(), u"權限管理"_s);
    auto& leave = control<QPushButton>(*moduleWindow(8), u"CmdSet(3)"_s);
    QCOMPARE(leave.text(), u"離開"_s);
    click(leave);
    QVERIFY(!moduleWindow(8));
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    QCOMPARE(enabledButtons().size(), 8);
    QTRY_VERIFY(!shell.window().findChild<Form8*>());
}

void ShellTest::buttonsOfForm8WaitForTheirWindows() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
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

void ShellTest::openToolWindowDoesNotLookAtRights() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    setAllRights(false);
    UnlockToolbar();
    OpenToolWindow(7);
    QVERIFY(moduleWindow(7) && moduleWindow(7)->isVisible());
    QCOMPARE(shell.window().windowTitle(), u"報表列印"_s);
    QCOMPARE(enabledButtons(), QList<int>{7});
    moduleWindow(7)->unload();
    QCOMPARE(enabledButtons(), QList<int>());
}

void ShellTest::anIndexOutOfRangeOpensNothing() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    for (const int index : {0, 9, -1, 32767}) {
        OpenToolWindow(static_cast<std::int16_t>(index));
        QCOMPARE(shell.window().windowTitle(), IdleCaption);
        QVERIFY(shell.window().Tb().isEnabled());
        QVERIFY(gSysMenu->has(SystemMenu::Close));
    }
    for (int index = 1; index <= 8; ++index)
        QVERIFY(!moduleWindow(index));
}

void ShellTest::anIndexOutOfRangeStillAnswersAFailedOpen() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    OpenToolWindow(4);
    gOpenFailed = true;
    OpenToolWindow(0);
    QVERIFY(!gOpenFailed);
    QVERIFY(!moduleWindow(4));
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
}

void ShellTest::aModuleThatDoesNotExistEndsIdle() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
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

void ShellTest::aWindowIsLoadedOnceAndThenShown() {
    const TestStore store;
    const Shell shell(store);
    registerProbes();
    OpenToolWindow(5);
    const Window* first = moduleWindow(5);
    OpenToolWindow(5);
    QCOMPARE(moduleWindow(5), first);
    QCOMPARE(logs_.at(5).loads, 1);
    moduleWindow(5)->unload();
    OpenToolWindow(5);
    QCOMPARE(logs_.at(5).loads, 2);
}

void ShellTest::aFailedOpenOfForm1To4IsClosedAgain_data() {
    QTest::addColumn<int>("index");
    for (int index = 1; index <= 4; ++index)
        QTest::addRow("Form%d", index) << index;
}

void ShellTest::aFailedOpenOfForm1To4IsClosedAgain() {
    QFETCH(const int, index);
    const TestStore store;
    Shell shell(store);
    registerProbes();
    logs_.at(static_cast<std::size_t>(index)).load = failToOpen;
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

void ShellTest::aFailedOpenOfForm5To7StaysLoaded_data() {
    QTest::addColumn<int>("index");
    for (int index = 5; index <= 7; ++index)
        QTest::addRow("Form%d", index) << index;
}

void ShellTest::aFailedOpenOfForm5To7StaysLoaded() {
    QFETCH(const int, index);
    const TestStore store;
    Shell shell(store);
    registerProbes();
    ProbeLog& log = logs_.at(static_cast<std::size_t>(index));
    log.load = failToOpen;
    PromptAnswers answers;
    answers.expectMsgBox();
    click(button(index));
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(!gOpenFailed);
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    QVERIFY(moduleWindow(index) && moduleWindow(index)->isVisible());
    QVERIFY(gDbOpen);
    // Its button shows it again as it is, without a second load.
    click(button(index));
    QCOMPARE(log.loads, 1);
    QCOMPARE(enabledButtons(), QList<int>{index});
    click(control(*moduleWindow(index), u"Leave"_s));
    QVERIFY(!moduleWindow(index));
    QCOMPARE(log.unloads, 1);
}

void ShellTest::aFailureLeftStandingClosesTheNextWindow() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    const PromptAnswers answers;
    gOpenFailed = true; // As a failed dialog leaves it.
    click(button(1));
    QCOMPARE(logs_.at(1).loads, 1);
    QCOMPARE(logs_.at(1).unloads, 1);
    QVERIFY(!moduleWindow(1));
    QVERIFY(!gOpenFailed);
    QCOMPARE(shell.window().windowTitle(), IdleCaption);
    click(button(1));
    QVERIFY(moduleWindow(1) && moduleWindow(1)->isVisible());
    QCOMPARE(answers.trouble(), QString());
}

void ShellTest::aStoreThatIsGoneEndsTheProgramAtAModuleWindow() {
    const TestStore store;
    const Shell shell(store);
    registerProbes();
    QVERIFY(QFile::remove(store.path()));
    PromptAnswers answers;
    answers.expectMsgBox();
    const auto end = endOf([] { QTest::mouseClick(&button(1), Qt::LeftButton); });
    QCOMPARE(end, std::optional(1));
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().constFirst().title, u"Pontrel"_s);
    QCOMPARE(answers.seen().constFirst().icon, MsgIcon::Critical);
    QVERIFY2(answers.seen().constFirst().text.contains(u"'3024'"_s),
             qUtf8Printable(answers.seen().constFirst().text));
}

void ShellTest::openAndCloseAreNotCounted() {
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

void ShellTest::aWindowMayUnloadItselfAndGoOn() {
    const TestStore store;
    const Shell shell(store);
    registerProbes();
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
    QTRY_VERIFY(!window);
    QCOMPARE(logs_.at(1).unloads, 1);
}

void ShellTest::everyControlIsNamedAndReached() {
    const TestStore store;
    Shell shell(store);
    registerProbes();
    QCOMPARE(controlFaults(shell.window()), QStringList());
    click(button(8));
    QCOMPARE(controlFaults(*moduleWindow(8)), QStringList());
}

int main(int argc, char** argv) {
    return runTests<ShellTest>(argc, argv);
}

#include "ShellTest.moc"
