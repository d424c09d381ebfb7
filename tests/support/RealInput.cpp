#include "support/RealInput.h"

#include <QGuiApplication>
#include <QLibrary>

#include <map>

namespace pontrel::test {

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds that the server lets pass before a movement, so that no two come at once.
constexpr unsigned long Pause = 40;

// By the server's numbers.
constexpr unsigned int LeftButton = 1;
constexpr unsigned int RightButton = 3;

unsigned long symbolOf(Qt::Key key) {
    static const std::map<Qt::Key, unsigned long> symbols = {
        {Qt::Key_Return, 0xff0d}, {Qt::Key_Enter, 0xff8d},   {Qt::Key_Tab, 0xff09},  {Qt::Key_Escape, 0xff1b},
        {Qt::Key_F12, 0xffc9},    {Qt::Key_Right, 0xff53},   {Qt::Key_Menu, 0xff67}, {Qt::Key_F10, 0xffc7},
        {Qt::Key_Shift, 0xffe1},  {Qt::Key_Control, 0xffe3}, {Qt::Key_Down, 0xff54}};
    const auto found = symbols.find(key);
    return found == symbols.end() ? static_cast<unsigned long>(key) : found->second; // those of ASCII
}

/// A routine of a library that the display's own programs need anyway.
template<typename Routine>
Routine* resolve(const QString& library, const char* name) {
    auto* found = reinterpret_cast<Routine*>(QLibrary::resolve(library, 6, name));
    if (!found)
        qFatal("%s is not there", name);
    return found;
}

Display* display() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        qFatal("no X server");
    return x11->display();
}

void flush() {
    static auto* sync = resolve<int(Display*, int)>(u"X11"_s, "XSync");
    sync(display(), 0);
}

void moveButton(unsigned int button, bool down) {
    static auto* fake =
        resolve<int(Display*, unsigned int, int, unsigned long)>(u"Xtst"_s, "XTestFakeButtonEvent");
    fake(display(), button, down ? 1 : 0, Pause);
}

} // namespace

RealInput::RealInput() {
    flush();
}

unsigned int RealInput::code(Qt::Key key) const {
    static auto* codeOf = resolve<unsigned char(Display*, unsigned long)>(u"X11"_s, "XKeysymToKeycode");
    const unsigned int code = codeOf(display(), symbolOf(key));
    if (code == 0)
        qFatal("the keyboard has no key %d", static_cast<int>(key));
    return code;
}

void RealInput::move(Qt::Key key, bool down) {
    static auto* fake =
        resolve<int(Display*, unsigned int, int, unsigned long)>(u"Xtst"_s, "XTestFakeKeyEvent");
    fake(display(), code(key), down ? 1 : 0, Pause);
    flush();
}

void RealInput::press(Qt::Key key) {
    move(key, true);
}

void RealInput::release(Qt::Key key) {
    move(key, false);
}

void RealInput::tap(Qt::Key key) {
    press(key);
    release(key);
}

void RealInput::clickAt(QPoint place, Qt::MouseButton button) {
    static auto* fake =
        resolve<int(Display*, int, int, int, unsigned long)>(u"Xtst"_s, "XTestFakeMotionEvent");
    constexpr int SameScreen = -1;
    fake(display(), SameScreen, place.x(), place.y(), Pause);
    const unsigned int number = button == Qt::RightButton ? RightButton : LeftButton;
    moveButton(number, true);
    moveButton(number, false);
    flush();
}

} // namespace pontrel::test
