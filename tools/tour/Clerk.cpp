#include "tour/Clerk.h"

#include "app/Events.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>
#include <QWindow>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

// Qt's own tests press keys by it: unlike a posted event, it looks for shortcuts first.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text = QString(),
                                    bool repeated = false, ushort count = 1);
QT_END_NAMESPACE

namespace pontrel::tour {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 PatienceMs = 120'000;
constexpr std::chrono::milliseconds BetweenLooks(5);
/// Longer than what makes two clicks a double click.
constexpr qint64 BetweenClicksMs = 1'000;

/// Rounds of the event loop, more than the program lets pass before it takes input again.
constexpr int RoundsToRest = 4;

/// Runs the routine on the window thread, in whatever event loop that stands, and waits for it.
void onWindowThread(const std::function<void()>& routine) {
    QMetaObject::invokeMethod(qApp, routine, Qt::BlockingQueuedConnection);
}

bool isShown(const QWidget& window) {
    return window.isVisible() && window.windowHandle() && window.windowHandle()->isExposed();
}

/// The window that takes the user's clicks; null where there is none.
QWidget* frontWindow() {
    QWidget* front = QApplication::activePopupWidget();
    if (!front)
        front = QApplication::activeModalWidget();
    if (front)
        return isShown(*front) ? front : nullptr;
    // A window beside the main window lies over it.
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (isShown(*window) && window->windowType() != Qt::ToolTip &&
            (!front || front->objectName() == u"MDI"))
            front = window;
    }
    return front;
}

QString describe(const QWidget& window) {
    const QString what = u"%1 \"%2\""_s.arg(window.objectName(), window.windowTitle());
    const auto* box = qobject_cast<const QMessageBox*>(&window);
    return box ? u"%1: \"%2\""_s.arg(what, box->text().simplified()) : what;
}

bool isMessage(const QWidget& window) {
    return window.objectName() == u"MsgBox";
}

/// Whether a click on the spot would reach its widget: it is enabled, in view, and nothing lies over it.
bool takesClick(QWidget& front, const Spot& spot) {
    if (!spot.widget || spot.widget->window() != &front || !spot.widget->isVisible() ||
        !spot.widget->isEnabled() || !spot.widget->rect().contains(spot.point))
        return false;
    const QWidget* hit = front.childAt(spot.widget->mapTo(&front, spot.point));
    return hit && (hit == spot.widget || spot.widget->isAncestorOf(hit));
}

void postMouse(QEvent::Type type, const Spot& spot) {
    QWidget* window = spot.widget->window();
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QCoreApplication::postEvent(window->windowHandle(),
                                new QMouseEvent(type, spot.widget->mapTo(window, spot.point),
                                                spot.widget->mapToGlobal(spot.point), Qt::LeftButton, held,
                                                Qt::NoModifier));
}

void postClick(const Spot& spot) {
    postMouse(QEvent::MouseButtonPress, spot);
    postMouse(QEvent::MouseButtonRelease, spot);
}

void postKey(QWindow* window, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        QCoreApplication::postEvent(window, new QKeyEvent(type, key, modifiers, text));
}

bool isOneColour(const QImage& picture) {
    const QRgb first = picture.pixel(0, 0);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != first)
                return false;
        }
    }
    return true;
}

} // namespace

Spot middleOf(QWidget& widget) {
    return {&widget, widget.rect().center()};
}

Clerk::Glance Clerk::glance(const std::function<bool(QWidget& front)>& look) {
    Glance glance;
    onWindowThread([&] {
        QWidget* front = frontWindow();
        if (!front)
            return;
        glance.answered = look(*front);
        glance.unexpectedMessage = !glance.answered && isMessage(*front);
        glance.inFront = describe(*front);
    });
    return glance;
}

void Clerk::keepLooking(const QString& what, const std::function<bool(QWidget& front)>& look) const {
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        const Glance now = glance(look);
        if (now.answered)
            return;
        if (now.unexpectedMessage)
            throw StepFailed{u"waiting for %1, there came %2."_s.arg(what, now.inFront)};
        if (waited.hasExpired(PatienceMs))
            throw StepFailed{u"%1 did not come within %2 seconds; in front stood %3."_s.arg(what)
                                 .arg(PatienceMs / 1000)
                                 .arg(now.inFront.isEmpty() ? u"no window"_s : now.inFront)};
        std::this_thread::sleep_for(BetweenLooks);
    }
}

void Clerk::seeThat(const QString& what, const std::function<bool(QWidget& front)>& look) {
    keepLooking(what, look);
}

void Clerk::awaitWindow(const QString& name) {
    keepLooking(u"the window %1"_s.arg(name),
                [&name](const QWidget& front) { return front.objectName() == name; });
}

void Clerk::awaitMessage(const QString& title, const QString& text) {
    const QString found =
        see<QString>(u"the message \"%1\""_s.arg(text), [](const QWidget& front) -> std::optional<QString> {
            if (!isMessage(front))
                return std::nullopt;
            return describe(front);
        });
    const QString wanted = u"MsgBox \"%1\": \"%2\""_s.arg(title, text);
    if (found != wanted)
        throw StepFailed{u"instead of %1 there came %2."_s.arg(wanted, found)};
}

void Clerk::acknowledge() {
    QPointer<QWidget> box;
    click(u"the button OK"_s, [&box](QWidget& front) -> std::optional<Spot> {
        const auto* message = qobject_cast<const QMessageBox*>(&front);
        QAbstractButton* button = message ? message->button(QMessageBox::Ok) : nullptr;
        if (!button)
            return std::nullopt;
        box = &front;
        return middleOf(*button);
    });
    QElapsedTimer waited;
    waited.start();
    for (bool gone = false; !gone; std::this_thread::sleep_for(BetweenLooks)) {
        onWindowThread([&] { gone = !box || !box->isVisible(); });
        if (!gone && waited.hasExpired(PatienceMs))
            throw StepFailed{u"the message stays after a click on its button OK."_s};
    }
}

void Clerk::click(const QString& control) {
    click(u"the control %1"_s.arg(control), [&control](const QWidget& front) -> std::optional<Spot> {
        auto* found = front.findChild<QWidget*>(control);
        return found ? std::optional(middleOf(*found)) : std::nullopt;
    });
}

void Clerk::click(const QString& what, const std::function<std::optional<Spot>(QWidget& front)>& find) {
    keepLooking(u"%1, ready for a click,"_s.arg(what), [&find](QWidget& front) {
        const std::optional<Spot> spot = find(front);
        if (!spot || !takesClick(front, *spot))
            return false;
        postClick(*spot);
        return true;
    });
    comeToRest();
}

/// Waits, as a person does, until the program has taken in what was done last: what comes behind a click
/// whose routine has asked something is dropped.
void Clerk::comeToRest() {
    auto rounds = std::make_shared<std::atomic<int>>(0);
    onWindowThread([rounds] {
        auto* round = new QTimer(qApp);
        QObject::connect(round, &QTimer::timeout, round, [rounds, round] {
            if (++*rounds == RoundsToRest)
                round->deleteLater();
        });
        round->start(0);
    });
    QElapsedTimer waited;
    waited.start();
    while (*rounds < RoundsToRest) {
        if (waited.hasExpired(PatienceMs))
            throw StepFailed{u"the program does not come to rest after a click."_s};
        std::this_thread::sleep_for(BetweenLooks);
    }
}

void Clerk::clickUntil(const QString& what, const std::function<std::optional<Spot>(QWidget& front)>& find,
                       const std::function<bool(const QWidget& front)>& done) {
    QElapsedTimer sinceClick;
    keepLooking(what, [&](QWidget& front) {
        if (done(front))
            return true;
        const std::optional<Spot> spot = find(front);
        if (spot && takesClick(front, *spot) &&
            (!sinceClick.isValid() || sinceClick.hasExpired(BetweenClicksMs))) {
            postClick(*spot);
            sinceClick.start();
        }
        return false;
    });
}

void Clerk::type(const QString& text) {
    keepLooking(u"a window to type into"_s, [&text](const QWidget& front) {
        for (const QChar character : text)
            postKey(front.windowHandle(), character.toUpper().unicode(), Qt::NoModifier, character);
        return true;
    });
}

void Clerk::press(Qt::Key key, Qt::KeyboardModifiers modifiers, int times) {
    keepLooking(u"a window for the key"_s, [=](const QWidget& front) {
        for (int count = 0; count < times; ++count)
            postKey(front.windowHandle(), key, modifiers, QString());
        return true;
    });
}

void Clerk::awaitKeyboard() {
    keepLooking(u"a window with the keyboard"_s, [](QWidget& front) {
        // Without a desktop nobody turns to the window that is left.
        if (!front.isActiveWindow() && QGuiApplication::platformName() == u"offscreen")
            front.activateWindow();
        return front.isActiveWindow();
    });
}

void Clerk::pressShortcut(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    awaitKeyboard();
    keepLooking(u"a window for the shortcut"_s, [=](QWidget& front) {
        // Behind the look, which what the key opens would hold up.
        QMetaObject::invokeMethod(
            front.windowHandle(),
            [window = front.windowHandle(), key, modifiers] {
                const QPointer<QWindow> alive(window);
                for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
                    if (alive)
                        qt_handleKeyEvent(window, type, key, modifiers);
            },
            Qt::QueuedConnection);
        return true;
    });
    comeToRest();
}

void Clerk::closeWindow() {
    keepLooking(u"a window to close"_s, [](const QWidget& front) {
        QCoreApplication::postEvent(front.windowHandle(), new QCloseEvent);
        return true;
    });
}

bool Clerk::save(QWidget& window, const QString& name) const {
    const QImage picture = window.grab().toImage();
    return !isOneColour(picture) && picture.save(u"%1/%2.png"_s.arg(pictureFolder_, name));
}

void Clerk::takePicture(const QString& name) {
    bool saved = false;
    keepLooking(u"a window for the picture %1"_s.arg(name), [&](QWidget& front) {
        saved = save(front, name);
        return true;
    });
    if (!saved)
        throw StepFailed{
            u"the picture %1.png is empty or cannot be written in %2."_s.arg(name, pictureFolder_)};
}

void Clerk::watchProgress(const QString& name, int value) {
    seeThat(u"the progress bar"_s, [this, name, value](QWidget& front) {
        auto* bar = front.window()->findChild<QProgressBar*>(u"ProgressBar1"_s);
        if (!bar)
            return false;
        QObject::connect(bar, &QProgressBar::valueChanged, bar, [this, bar, name, value](int now) {
            if (progressSeen_ || now < value || !bar->isVisible())
                return;
            progressSeen_ = save(*bar->window(), name);
        });
        return true;
    });
}

void Clerk::takePictureOfFailure(const QString& name) {
    onWindowThread([this, &name] {
        if (QWidget* front = frontWindow())
            (void)save(*front, name);
    });
}

void Clerk::endProgram() {
    onWindowThread([] { endProcess(1); });
}

} // namespace pontrel::tour
