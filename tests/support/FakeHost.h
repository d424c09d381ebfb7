#pragma once

#include "rules/attendance/AttendanceHost.h"
#include "support/RecordingHost.h"

#include <optional>

namespace pontrel::test {

/// Stands for the attendance window.
class FakeHost final : public RecordingHost<AttendanceHost> {
  public:
    using RecordingHost::RecordingHost;

    std::optional<QString> punchFile; ///< Chosen in the dialog; nothing cancels it.

    [[nodiscard]] std::optional<QString> choosePunchFile(const QString& folder) override {
        record(QStringLiteral("choosePunchFile ") + folder);
        return punchFile;
    }
    void showPunches(const QString& statement) override {
        record(QStringLiteral("showPunches ") + statement);
    }
    void refreshExceptions() override { record(QStringLiteral("refreshExceptions")); }
    void showExceptions(const QString& statement) override {
        record(QStringLiteral("showExceptions ") + statement);
    }
};

} // namespace pontrel::test
