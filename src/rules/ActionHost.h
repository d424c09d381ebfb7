#pragma once

#include <QString>

namespace pontrel {

/// The titles of messages that several windows show.
inline const QString WarningTitle = QStringLiteral("警告訊息");
inline const QString FaultTitle = QStringLiteral("錯誤訊息");
/// Of a message whose title is not stated.
inline const QString ProgramTitle = QStringLiteral("Pontrel");

/// The pointer over the program's windows.
enum class Pointer { Normal, Hourglass };

/// What the actions of the logic ask of whoever runs them: a window, or a program without one. None of it is
/// called inside a stage but the pointer and the bar. A logic that asks for more has a host derived from
/// this.
class ActionHost {
  public:
    virtual ~ActionHost() = default;

    /// A message with an OK button.
    virtual void tell(const QString& message, const QString& title) = 0;
    /// A question with Yes and No; true for Yes.
    [[nodiscard]] virtual bool confirm(const QString& question, const QString& title) = 0;
    virtual void setPointer(Pointer pointer) = 0;

    /// Shows the progress bar, its range 0 to 110, at 0; or hides it as it stands.
    virtual void setProgressShown(bool shown) = 0;
    [[nodiscard]] virtual int progress() const = 0;
    virtual void setProgress(int value) = 0;
};

/// A host of a program without windows: it shows nothing and answers every question with Yes.
template<typename Host = ActionHost>
class QuietHost : public Host {
  public:
    void tell(const QString& /*message*/, const QString& /*title*/) override {}
    [[nodiscard]] bool confirm(const QString& /*question*/, const QString& /*title*/) override {
        return true;
    }
    void setPointer(Pointer /*pointer*/) override {}
    void setProgressShown(bool shown) override {
        if (shown)
            progress_ = 0;
    }
    [[nodiscard]] int progress() const override { return progress_; }
    void setProgress(int value) override { progress_ = value; }

  private:
    int progress_ = 0;
};

} // namespace pontrel
