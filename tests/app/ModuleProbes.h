#pragma once

#include "app/MDI.h"
#include "app/ProbeWindow.h"
#include "app/Toolbar.h"

#include <QAbstractButton>

#include <array>

namespace pontrel::test {

inline const QString IdleCaption = QStringLiteral("Pontrel V1.1 - Norvale");

/// Probes in place of all module windows but Form8.
class ModuleProbes {
  public:
    /// Anew, for the main window as it stands idle.
    void registerAll() {
        logs_ = {};
        for (int index = 1; index <= 7; ++index)
            ProbeWindow::registerAs(index, log(index));
        UnlockToolbar();
    }

    [[nodiscard]] ProbeLog& log(int index) { return logs_.at(static_cast<std::size_t>(index)); }

  private:
    std::array<ProbeLog, 8> logs_;
};

/// The numbers of the toolbar buttons that are enabled themselves.
[[nodiscard]] inline QList<int> enabledButtons() {
    QList<int> numbers;
    for (int number = 1; number <= Toolbar::ButtonCount; ++number) {
        if (gMDI->Tb().isButtonEnabled(number))
            numbers << number;
    }
    return numbers;
}

[[nodiscard]] inline QWidget& button(int number) {
    return *gMDI->Tb().button(number);
}

} // namespace pontrel::test
