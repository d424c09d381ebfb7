#pragma once

#include "app/EnterAsTab.h"
#include "app/controls/StatusBar.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

namespace pontrel::test {

/// A key of a keyboard, as a display server tells of it: by its own clock.
class Keyboard {
  public:
    explicit Keyboard(QWidget& window) : window_(&window) {}

    /// Goes on in another window.
    void turnTo(QWidget& window) { window_ = &window; }
    void press(int key) { send(QEvent::KeyPress, key, now_ += Pace); }
    void release(int key) { send(QEvent::KeyRelease, key, now_ += Pace); }
    /// A release and a press that belong together, Qt's mark missing.
    void repeat(int key, int apart = 0) {
        send(QEvent::KeyRelease, key, now_ += Pace);
        send(QEvent::KeyPress, key, now_ += static_cast<quint32>(apart));
    }

  private:
    static constexpr quint32 Pace = 40;

    void send(QEvent::Type type, int key, quint32 time) {
        constexpr quint32 ScanCode = 36;
        QKeyEvent event(type, key, Qt::NoModifier, ScanCode, 0, 0,
                        key == Qt::Key_Space ? QStringLiteral(" ") : QStringLiteral("\r"));
        event.setTimestamp(time);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(window_->windowHandle(), &event);
    }

    QWidget* window_;
    quint32 now_ = 0xffffffff - 100; // the clock goes round
};

/// A box, a check box and a button, whose routine shows a message.
struct GateForm : QWidget {
    QLineEdit box;
    QCheckBox check;
    QPushButton button{QStringLiteral("按鈕")};
    StatusBar bar;
    int clicks = 0;
    int leaves = 0;
    bool tells = true;
    GateForm() {
        auto* row = new QHBoxLayout(this);
        for (QWidget* each : std::initializer_list<QWidget*>{&box, &check, &button, &bar})
            row->addWidget(each);
        EnterAsTab::install(*this);
        onEvent(&button, &QPushButton::clicked, this, [this] {
            ++clicks;
            if (tells)
                MsgBox(QStringLiteral("訊息"));
        });
        onEvent(&bar, &StatusBar::leaveClicked, this, [this] { ++leaves; });
        button.setFocus();
        show();
        if (!QTest::qWaitForWindowActive(this, PatienceMs))
            qFatal("the window does not become active");
    }
};

} // namespace pontrel::test
