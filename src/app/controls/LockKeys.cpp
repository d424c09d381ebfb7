#include "app/controls/LockKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLibrary>
#include <QPointer>

#include <optional>

namespace pontrel {

namespace {

struct PlatformLocks {
    bool caps;
    bool num;
};

/// What the X server says of the keyboard's lamps; nothing on other platforms. The one routine needed is
/// looked up in the X library that the platform plugin has loaded anyway.
std::optional<PlatformLocks> platformLocks() {
#if QT_CONFIG(xcb)
    using GetIndicatorState = int (*)(Display*, unsigned int, unsigned int*);
    constexpr unsigned int CoreKeyboard = 0x100;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->display() == nullptr)
        return std::nullopt;
    static const auto getIndicatorState = reinterpret_cast<GetIndicatorState>(
        QLibrary::resolve(QStringLiteral("X11"), 6, "XkbGetIndicatorState"));
    unsigned int lamps = 0;
    if (getIndicatorState == nullptr || getIndicatorState(x11->display(), CoreKeyboard, &lamps) != 0)
        return std::nullopt;
    return PlatformLocks{(lamps & 1u) != 0, (lamps & 2u) != 0};
#else
    return std::nullopt;
#endif
}

} // namespace

LockKeys& LockKeys::instance() {
    static QPointer<LockKeys> keys;
    if (!keys)
        keys = new LockKeys(qGuiApp);
    return *keys;
}

LockKeys::LockKeys(QObject* parent) : QObject(parent) {
    qGuiApp->installEventFilter(this);
    poll();
}

void LockKeys::poll() {
    if (const auto locks = platformLocks())
        set(locks->caps, locks->num, ins_);
}

void LockKeys::set(bool caps, bool num, bool ins) {
    if (caps == caps_ && num == num_ && ins == ins_)
        return;
    caps_ = caps;
    num_ = num;
    ins_ = ins;
    Q_EMIT changed();
}

bool LockKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    // A key reaches the system's window once, and then each control up from the focus: it is counted at the
    // window.
    if ((press || event->type() == QEvent::KeyRelease) && watched->isWindowType())
        noteKey(*static_cast<QKeyEvent*>(event), press);
    return QObject::eventFilter(watched, event);
}

void LockKeys::noteKey(const QKeyEvent& event, bool press) {
    const bool toggles = press && !event.isAutoRepeat();
    switch (event.key()) {
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        if (const auto locks = platformLocks())
            set(locks->caps, locks->num, ins_);
        else if (toggles && event.key() == Qt::Key_CapsLock)
            set(!caps_, num_, ins_);
        else if (toggles)
            set(caps_, !num_, ins_);
        break;
    case Qt::Key_Insert:
        if (toggles)
            set(caps_, num_, !ins_);
        break;
    default:
        break;
    }
}

} // namespace pontrel
