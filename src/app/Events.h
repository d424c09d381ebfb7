#pragma once

#include "store/RunTimeError.h"

#include <QAbstractButton>

#include <concepts>
#include <functional>
#include <utility>

namespace pontrel {

/// Ends the program after a run-time error that nothing caught: a critical message with number, text and what
/// the store refused, which says that the program ends; open stages committed, all connections closed, the
/// process ended with status 1 at once. The technical cause goes to the standard error output. Does not
/// return.
[[noreturn]] void endWithError(const RunTimeError& error);

/// Writes number, text and technical cause to the standard error output, for whoever looks after the program.
void logError(const RunTimeError& error);

/// Thrown in place of the end of the process where a test has replaced it.
struct ProgramEnded {
    int status;
};

/// Replaces what ends the process, for tests: called with the exit status after everything is closed. It must
/// not return normally; an empty function restores the real end.
void setProcessEnd(std::function<void(int status)> end);

/// Ends the process with that status, through the seam above, without running anything of the callers.
[[noreturn]] void endProcess(int status);

/// Enters an event routine: a run-time error that leaves it ends the program. Every slot and event handler of
/// a window runs its routine through this, since nothing may be thrown out of Qt's own code.
template<typename Routine>
void guarded(Routine&& routine) noexcept(false) {
    try {
        std::forward<Routine>(routine)();
    } catch (const RunTimeError& error) {
        endWithError(error);
    }
}

/// Whether a modal dialog stands before the widget's window. No key or click gets there then, but a press by
/// assistive technology does, which is no event.
[[nodiscard]] bool isBehindDialog(const QWidget& widget);

/// Connects a signal to an event routine, entered through guarded(). A button behind a dialog does nothing.
template<typename Sender, typename Signal, typename Receiver, typename Routine>
QMetaObject::Connection onEvent(Sender* sender, Signal signal, Receiver* receiver, Routine routine) {
    return QObject::connect(sender, signal, receiver, [=](auto&&... arguments) {
        if constexpr (std::derived_from<Sender, QAbstractButton>) {
            if (isBehindDialog(*sender))
                return;
        }
        guarded([&] {
            if constexpr (std::is_invocable_v<Routine, decltype(arguments)...>)
                routine(std::forward<decltype(arguments)>(arguments)...);
            else
                routine();
        });
    });
}

} // namespace pontrel
