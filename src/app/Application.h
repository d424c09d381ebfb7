#pragma once

#include "app/InputGate.h"
#include "app/ZoomKeys.h"

#include <QApplication>

namespace pontrel {

/// The program's application object: its style, its gate for input, and the end of the program for what no
/// event routine has caught.
class PontrelApplication : public QApplication {
    Q_OBJECT
  public:
    /// Takes the program's own name alone from the arguments, which must outlive the object: there are no
    /// others.
    explicit PontrelApplication(char** arguments);

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    [[nodiscard]] bool deliver(QObject* receiver, QEvent* event);

    InputGate gate_{nullptr};
    ZoomKeys zoomKeys_{nullptr};
};

/// Gives the application the program's looks: style and font alike on every desktop, the desktop's colours as
/// far as they can be read, Qt's own texts in Traditional Chinese, the locale of Taiwan.
void applyProgramStyle(QApplication& application);

} // namespace pontrel
