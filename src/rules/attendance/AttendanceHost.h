#pragma once

#include "rules/ActionHost.h"

#include <optional>

namespace pontrel {

/// What the attendance routines ask of whoever runs them: the window, or a program without one.
class AttendanceHost : public ActionHost {
  public:
    /// The punch file chosen in a dialog that opens in the folder; nothing where the user cancels.
    [[nodiscard]] virtual std::optional<QString> choosePunchFile(const QString& folder) = 0;

    /// The user has said Yes, and a day's rows are about to be deleted: the last moment for a copy of them.
    virtual void beforeReplacingDay() {}

    /// Data1(0): refresh, take the statement as source, refresh again.
    virtual void showPunches(const QString& statement) = 0;
    /// Data1(2): refresh as it is.
    virtual void refreshExceptions() = 0;
    /// Data1(2): take the statement as source and refresh.
    virtual void showExceptions(const QString& statement) = 0;
};

} // namespace pontrel
