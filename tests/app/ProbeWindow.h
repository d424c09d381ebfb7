#pragma once

#include "app/Module1.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "rules/Session.h"

#include <QPushButton>

#include <functional>
#include <utility>

namespace pontrel::test {

/// What a ProbeWindow does when it is loaded and unloaded, and how often it was.
struct ProbeLog {
    std::function<void()> load; ///< Runs under the load trap.
    int loads = 0;
    int unloads = 0;
};

/// A window of a test: one button "離開", the load and unload routines of a module window with data, or where
/// its name does not begin with Form, of a child window.
class ProbeWindow : public Window {
  public:
    ProbeWindow(QWidget* parent, const QString& name, ProbeLog& log) : Window(parent), log_(log) {
        setObjectName(name);
        setGeometry(0, 0, 574, 418);
        auto* leave = new QPushButton(QStringLiteral("離開"), this);
        leave->setObjectName(QStringLiteral("Leave"));
        leave->setGeometry(20, 20, 80, 30);
        connect(leave, &QPushButton::clicked, this, [this] { unload(); });
    }

    /// Makes a window of this kind the module window of that index; the log must outlive it.
    static void registerAs(int index, ProbeLog& log) {
        registerModuleWindow(index, [index, &log](QWidget* parent) -> Window* {
            return new ProbeWindow(parent, QStringLiteral("Form%1").arg(index), log);
        });
    }

  protected:
    void onLoad() override {
        ++log_.loads;
        OpenDB();
        openTrapped([this] {
            if (log_.load)
                log_.load();
        });
    }
    void onUnload() override {
        ++log_.unloads;
        CloseDB();
        if (objectName().startsWith(QStringLiteral("Form")))
            UnlockToolbar();
    }

  private:
    ProbeLog& log_;
};

} // namespace pontrel::test
