#pragma once

#include <cstddef>
#include <functional>

class QString;

namespace pontrel {

/// Told how much of a long work is done, of how much. False: the user wants it to end.
using ProgressStep = std::function<bool(std::size_t done, std::size_t all)>;

/// Runs a work that goes on for some time, and shows how far it is in a dialog with "取消" (object name
/// "ProgressBox") once it has lasted a moment. Returns what the work returns: false where it has ended early.
/// What the user does meanwhile but to cancel is dropped. Throws what the work throws.
bool runWithProgress(const QString& caption, const std::function<bool(const ProgressStep&)>& work);

/// The same, but what the work throws is shown in a message. Whether the work came to its end.
bool attempt(const QString& caption, const std::function<bool(const ProgressStep&)>& work);

/// Replaces the moment, and the time between two looks at what the user does, for tests, in milliseconds; a
/// negative one goes back to the program's own.
void setProgressDelay(int milliseconds);

} // namespace pontrel
