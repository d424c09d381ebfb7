#pragma once

#include "support/AppSupport.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

namespace pontrel::test {

/// Presses "取消" of the progress dialog as soon as that is shown.
class PressWhenShown : public QObject {
  public:
    PressWhenShown() { qApp->installEventFilter(this); }
    int shown = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->objectName() == QStringLiteral("ProgressBox")) {
            ++shown;
            QTimer::singleShot(0, watched, [watched] {
                click(control(*static_cast<QWidget*>(watched), QStringLiteral("Cancel")));
            });
        }
        return false;
    }
};

} // namespace pontrel::test
