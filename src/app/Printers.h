#pragma once

class QPrintDialog;
class QPrinter;

namespace pontrel {

/// Asks for printer and pages: tells first where the machine has no printer and only a file can be made.
/// False where the user cancels.
[[nodiscard]] bool askForPrinter(QPrintDialog& dialog);

/// Throws error 482: the printer does not answer, or has stopped.
[[noreturn]] void failPrinter(const QPrinter& printer);

/// Throws error 482 where the printer's queue has gone. Qt hands a job over and takes no notice of what
/// becomes of it, so this is asked ahead of a job and behind it.
void requireQueue(const QPrinter& printer);

} // namespace pontrel
