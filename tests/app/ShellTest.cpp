#include "app/ModuleProbes.h"
#include "app/SystemMenu.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

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

} // namespace

class ShellTest : public QObject {
    Q_OBJECT

  private:
    ModuleProbes probes_;

  private Q_SLOTS:
    void aProgramFolderThatIsARootGetsNoDoubledSeparator();
    void theMainWindowStandsAboveTheMiddleOfTheScreen();
    void aResizedMainWindowGoesBackToItsSize();
    void maximisingIsImpossible();
    void captionsStandWholeOnTheirButtons();
    void rightNGivesButtonN();
    void aUserWithoutRightsCanOnlyCloseTheMainWindow();
    void aWindowLocksTheToolbarAndLightsItsButtonAlone();
    void enterAndSpacePressAButton_data();
    void enterAndSpacePressAButton();
    void theLitButtonIsPaintedUnlikeTheOthers();
    void noButtonReactsWhileAWindowIsOpen();
    void closeComesBackLastInTheSystemsOwnWords();
    void appendingAnEntryThatIsThereDoesNothing();
    void theMenuIsLeftAloneBeforeItIsFetched();
    void theMainWindowIsClosedInIdleOnly();
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
    QTRY_COMPARE_WITH_TIMEOUT(shell.window().size(), QSize(640, 450), PatienceMs);
    shell.window().windowHandle()->resize(300, 200);
    QTRY_COMPARE_WITH_TIMEOUT(shell.window().size(), QSize(640, 450), PatienceMs);
}

void ShellTest::maximisingIsImpossible() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
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
    QTRY_VERIFY_WITH_TIMEOUT(!shell.window().isMaximized(), PatienceMs);
    shell.window().showFullScreen();
    QTRY_VERIFY_WITH_TIMEOUT(!shell.window().isFullScreen(), PatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(shell.window().size(), QSize(640, 450), PatienceMs);
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
    }
}

void ShellTest::rightNGivesButtonN() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
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
    probes_.registerAll();
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
    probes_.registerAll();
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

void ShellTest::enterAndSpacePressAButton_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("Space") << int(Qt::Key_Space) << int(Qt::NoModifier);
    QTest::newRow("Enter") << int(Qt::Key_Return) << int(Qt::NoModifier);
    QTest::newRow("Enter of the keypad") << int(Qt::Key_Enter) << int(Qt::KeypadModifier);
}

void ShellTest::enterAndSpacePressAButton() {
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    for (int number = 1; number <= 7; ++number) {
        button(number).setFocus();
        QTest::keyClick(shell.window().windowHandle(), static_cast<Qt::Key>(key),
                        static_cast<Qt::KeyboardModifiers>(modifiers));
        QVERIFY2(probes_.log(number).loads == 1, qPrintable(QString::number(number)));
        moduleWindow(number)->unload();
    }
}

void ShellTest::theLitButtonIsPaintedUnlikeTheOthers() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    OpenToolWindow(3);
    const auto backgroundOf = [](int number) { return button(number).grab().toImage().pixelColor(8, 8); };
    QCOMPARE(backgroundOf(2), backgroundOf(4));
    QVERIFY(backgroundOf(3) != backgroundOf(2));
}

void ShellTest::noButtonReactsWhileAWindowIsOpen() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    click(button(2));
    for (int number = 1; number <= 8; ++number)
        click(button(number));
    QCOMPARE(shell.window().windowTitle(), u"制度管理"_s);
    QCOMPARE(probes_.log(2).loads, 1);
    for (const int index : {1, 3, 4, 5, 6, 7, 8})
        QVERIFY(!moduleWindow(index));
}

void ShellTest::closeComesBackLastInTheSystemsOwnWords() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
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
    probes_.registerAll();
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

void ShellTest::everyControlIsNamedAndReached() {
    const TestStore store;
    Shell shell(store);
    probes_.registerAll();
    QCOMPARE(controlFaults(shell.window()), QStringList());
}

int main(int argc, char** argv) {
    return runTests<ShellTest>(argc, argv);
}

#include "ShellTest.moc"
