#pragma once

#include "rules/ActionHost.h"
#include "store/Database.h"

#include <QStringList>

#include <functional>

namespace pontrel::test {

/// A host that answers as told and records every call but those of the bar's value, in order.
template<typename Host = ActionHost>
class RecordingHost : public Host {
  public:
    /// With a connection given, a call inside one of its stages, the pointer's and the bar's apart, is
    /// recorded in insideStage as well.
    explicit RecordingHost(const Database* database = nullptr) : database_(database) {}

    // What the user does.
    bool answer = true; ///< To every question.
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

    void tell(const QString& message, const QString& title) override {
        record(QStringLiteral("tell ") + titled(message, title, WarningTitle));
    }
    [[nodiscard]] bool confirm(const QString& question, const QString& title) override {
        record(QStringLiteral("confirm ") + titled(question, title, ProgramTitle));
        return answer;
    }
    void setPointer(Pointer newPointer) override {
        pointer = newPointer;
        note(newPointer == Pointer::Hourglass ? QStringLiteral("hourglass")
                                              : QStringLiteral("normal pointer"));
    }
    void setProgressShown(bool shown) override {
        progressShown = shown;
        if (shown)
            progressValue = 0;
        note(shown ? QStringLiteral("bar shown") : QStringLiteral("bar hidden"));
    }
    [[nodiscard]] int progress() const override { return progressValue; }
    void setProgress(int value) override {
        progressValue = value;
        progressValues += value;
        if (onProgress)
            onProgress(value);
    }

  protected:
    void record(const QString& call) {
        noteStage(call);
        note(call);
    }
    void noteStage(const QString& call) {
        if (database_ != nullptr && database_->inStage())
            insideStage += call;
    }

  private:
    /// The title stands before the message where it is not the usual one.
    static QString titled(const QString& message, const QString& title, const QString& usual) {
        return title == usual ? message : title + QStringLiteral(": ") + message;
    }
    void note(const QString& call) {
        calls += call;
        if (onCall)
            onCall(call);
    }

    const Database* database_;
};

} // namespace pontrel::test
