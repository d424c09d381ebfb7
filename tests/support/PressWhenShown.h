#pragma once

#include "support/AppSupport.h"

#include <QApplication>
#include <QEvent>
#include <QPushButton>

namespace pontrel::test {

/// Presses "取消" of the progress dialog as soon as that is shown, with the mouse.
class PressWhenShown : public QObject {
  public:
    PressWhenShown() { qApp->installEventFilter(this); }
    int pressed = 0; ///< How often that was heard.

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->objectName() == QStringLiteral("ProgressBox")) {
            auto& cancel = control<QPushButton>(*static_cast<QWidget*>(watched), QStringLiteral("Cancel"));
            connect(&cancel, &QPushButton::clicked, this, [this] { ++pressed; });
            // Not by a timer: other events come before those, and the work ends in the meantime.
            QMetaObject::invokeMethod(
                &cancel, [&cancel] { click(cancel); }, Qt::QueuedConnection);
        }
        return false;
    }
};

} // namespace pontrel::test
