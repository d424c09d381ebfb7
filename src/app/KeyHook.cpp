#include "app/KeyHook.h"

#include "app/Events.h"

#include <QApplication>
#include <QHash>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <utility>
#include <vector>

namespace pontrel {

namespace {

using Routine = std::function<bool(const QKeyEvent& key)>;

/// The routines of all boxes. It is a filter of the application, since those run ahead of a box's own
/// filters.
class KeyHooks : public QObject {
  public:
    static KeyHooks& ofApplication() {
        static QPointer<KeyHooks> hooks;
        if (!hooks)
            hooks = new KeyHooks;
        return *hooks;
    }

    void add(QWidget& box, Routine routine) {
        if (!routines_.contains(&box))
            connect(&box, &QObject::destroyed, this, [this](QObject* gone) { routines_.remove(gone); });
        routines_[&box].push_back(std::move(routine));
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto found = routines_.constFind(watched);
        if (found == routines_.cend())
            return false;
        const QPointer<QObject> box(watched);
        const std::vector<Routine> routines = *found; // a routine may close the window
        for (const Routine& routine : routines) {
            bool taken = false;
            guarded([&] { taken = routine(static_cast<const QKeyEvent&>(*event)); });
            if (taken || !box)
                return true;
        }
        return false;
    }

  private:
    KeyHooks() : QObject(qApp) { qApp->installEventFilter(this); }

    QHash<QObject*, std::vector<Routine>> routines_;
};

} // namespace

void onKeyDown(QWidget& box, std::function<bool(const QKeyEvent& key)> routine) {
    KeyHooks::ofApplication().add(box, std::move(routine));
}

QWidget* windowOf(QObject& receiver) {
    if (receiver.isWidgetType())
        return static_cast<QWidget&>(receiver).window();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->windowHandle() == &receiver)
            return window;
    }
    return nullptr;
}

} // namespace pontrel
