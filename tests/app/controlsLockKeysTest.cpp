#include "app/controls/LockKeys.h"
#include "app/controls/StatusBar.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QLibrary>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

constexpr unsigned int LockMask = 0x02;
constexpr unsigned int NumMask = 0x10;

/// Sets the keyboard's own locks, as its keys do.
bool lockKeyboard(unsigned int mask, bool on) {
    using LockModifiers = int (*)(Display*, unsigned int, unsigned int, unsigned int);
    constexpr unsigned int CoreKeyboard = 0x100;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    const auto lock = reinterpret_cast<LockModifiers>(QLibrary::resolve(u"X11"_s, 6, "XkbLockModifiers"));
    return x11 && lock && lock(x11->display(), CoreKeyboard, mask, on ? mask : 0) != 0;
}

} // namespace

/// Needs an X server, where the keyboard's own locks can be asked for.
class controlsLockKeysTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void panelsShowTheKeyboardsOwnLocks();
    void aKeyEventDoesNotPassForTheLock();
    void insertFollowsTheKeyPressed();
};

void controlsLockKeysTest::init() {
    QVERIFY(lockKeyboard(LockMask | NumMask, false));
    LockKeys::instance().poll();
}

void controlsLockKeysTest::cleanup() {
    QVERIFY(lockKeyboard(LockMask | NumMask, false));
}

void controlsLockKeysTest::panelsShowTheKeyboardsOwnLocks() {
    StatusBar bar;
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar, PatienceMs));
    const auto& caps = control<QLabel>(bar, u"StbTool(3)"_s);
    const auto& num = control<QLabel>(bar, u"StbTool(4)"_s);
    QVERIFY(!caps.isEnabled());
    QVERIFY(!num.isEnabled());
    QVERIFY(lockKeyboard(LockMask, true));
    QTRY_VERIFY_WITH_TIMEOUT(caps.isEnabled(), PatienceMs);
    QVERIFY(!num.isEnabled());
    QVERIFY(lockKeyboard(LockMask, false));
    QVERIFY(lockKeyboard(NumMask, true));
    QTRY_VERIFY_WITH_TIMEOUT(num.isEnabled(), PatienceMs);
    QVERIFY(!caps.isEnabled());
}

void controlsLockKeysTest::aKeyEventDoesNotPassForTheLock() {
    StatusBar bar;
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar, PatienceMs));
    QTest::keyClick(bar.windowHandle(), Qt::Key_CapsLock);
    QVERIFY(!control<QLabel>(bar, u"StbTool(3)"_s).isEnabled());
}

void controlsLockKeysTest::insertFollowsTheKeyPressed() {
    StatusBar bar;
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar, PatienceMs));
    QTest::keyClick(bar.windowHandle(), Qt::Key_Insert);
    QVERIFY(control<QLabel>(bar, u"StbTool(5)"_s).isEnabled());
    QTest::keyClick(bar.windowHandle(), Qt::Key_Insert);
    QVERIFY(!control<QLabel>(bar, u"StbTool(5)"_s).isEnabled());
}

int main(int argc, char** argv) {
    return runTests<controlsLockKeysTest>(argc, argv);
}

#include "controlsLockKeysTest.moc"
