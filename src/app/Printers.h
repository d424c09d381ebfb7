#pragma once

#include <QString>

class QPainter;
class QPrintDialog;
class QPrinter;

namespace pontrel {

/// Asks for printer and pages: tells first where the machine has no printer and only a file can be made.
/// False where the user cancels.
[[nodiscard]] bool askForPrinter(QPrintDialog& dialog);

/// Throws error 482: the printer does not answer, or has stopped. The technical text says why where that is
/// known.
[[noreturn]] void failPrinter(const QPrinter& printer, const QString& why = {});

/// Throws error 482 where the printer's queue has gone. To be asked ahead of a job.
void requireQueue(const QPrinter& printer);

/// Ends the painting and hands the job to the printer's queue. Throws error 482 where the queue has not taken
/// it.
void endPrinting(QPainter& painter, const QPrinter& printer);

} // namespace pontrel
