#include "support/FakeHost.h"

namespace pontrel::test {

void FakeHost::record(const QString& call) {
    calls += call;
    if (database_ != nullptr && database_->inStage())
        insideStage += call;
    if (onCall)
        onCall(call);
}

std::optional<QString> FakeHost::choosePunchFile(const QString& folder) {
    record(QStringLiteral("choosePunchFile ") + folder);
    return punchFile;
}

bool FakeHost::confirm(const QString& question) {
    record(QStringLiteral("confirm ") + question);
    return answer;
}

void FakeHost::tell(const QString& message) {
    record(QStringLiteral("tell ") + message);
}

void FakeHost::setPointer(Pointer newPointer) {
    pointer = newPointer;
    record(newPointer == Pointer::Hourglass ? QStringLiteral("hourglass") : QStringLiteral("normal pointer"));
}

void FakeHost::setProgressShown(bool shown) {
    progressShown = shown;
    if (shown)
        progressValue = 0;
    record(shown ? QStringLiteral("bar shown") : QStringLiteral("bar hidden"));
}

int FakeHost::progress() const {
    return progressValue;
}

void FakeHost::setProgress(int value) {
    progressValue = value;
    progressValues += value;
    if (onProgress)
        onProgress(value);
}

void FakeHost::showPunches(const QString& statement) {
    record(QStringLiteral("showPunches ") + statement);
}

void FakeHost::refreshExceptions() {
    record(QStringLiteral("refreshExceptions"));
}

void FakeHost::showExceptions(const QString& statement) {
    record(QStringLiteral("showExceptions ") + statement);
}

} // namespace pontrel::test
