#pragma once

#include "rules/attendance/AttendanceHost.h"
#include "store/Database.h"

#include <QStringList>

#include <functional>

namespace pontrel::test {

/// Stands for the attendance window: answers as told and records every call but setProgress and progress, in
/// order.
class FakeHost final : public AttendanceHost {
  public:
    /// With a connection given, a call inside one of its stages is recorded in insideStage as well.
    explicit FakeHost(const Database* database = nullptr) : database_(database) {}

    // What the user does.
    std::optional<QString> punchFile; ///< Chosen in the dialog; nothing cancels it.
    bool answer = true;               ///< To every question.
    /// Runs at each recorded call, with its text: a look at the store in the middle of an action.
    std::function<void(const QString&)> onCall;
    std::function<void(int)> onProgress; ///< Runs at each value set.

    // What the user sees.
    QStringList calls;
    QStringList insideStage;
    QList<int> progressValues; ///< Every value set.
    Pointer pointer = Pointer::Normal;
    bool progressShown = false;
    int progressValue = 0;

    [[nodiscard]] std::optional<QString> choosePunchFile(const QString& folder) override;
    [[nodiscard]] bool confirm(const QString& question) override;
    void tell(const QString& message) override;
    void setPointer(Pointer newPointer) override;
    void setProgressShown(bool shown) override;
    [[nodiscard]] int progress() const override;
    void setProgress(int value) override;
    void showPunches(const QString& statement) override;
    void refreshExceptions() override;
    void showExceptions(const QString& statement) override;

  private:
    void record(const QString& call);

    const Database* database_;
};

} // namespace pontrel::test
