#include "app/Printers.h"

#include "app/Prompts.h"
#include "store/RunTimeError.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <dlfcn.h>
#include <memory>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

struct CloseLibrary {
    void operator()(void* library) const { ::dlclose(library); }
};

/// What the queue has answered to this thread's last request, where it was a refusal; empty else. Qt hands a
/// job over and takes no notice of the answer, which the printing library keeps. It is there where Qt has
/// loaded it, and not needed otherwise.
QString refusalOfQueue() {
    constexpr int FirstOfOthers = 0x0200; // below it the protocol's statuses are successes
    const std::unique_ptr<void, CloseLibrary> library(::dlopen("libcups.so.2", RTLD_LAZY | RTLD_NOLOAD));
    if (!library)
        return {};
    const auto status = reinterpret_cast<int (*)()>(::dlsym(library.get(), "cupsLastError"));
    const auto text = reinterpret_cast<const char* (*)()>(::dlsym(library.get(), "cupsLastErrorString"));
    if (!status || !text || (status() >= 0 && status() < FirstOfOthers))
        return {};
    const QString said = QString::fromUtf8(text());
    return said.isEmpty() ? u"status %1"_s.arg(status()) : said;
}

} // namespace

bool askForPrinter(QPrintDialog& dialog) {
    const QString caption = u"列印"_s;
    if (QPrinterInfo::availablePrinters().isEmpty())
        MsgBox(u"這部電腦沒有可用的印表機，只能列印成 PDF 檔。"_s, caption, MsgIcon::Information);
    dialog.setObjectName(u"PrintDialog"_s);
    dialog.setWindowTitle(caption);
    dialog.setAccessibleName(caption);
    return runModal(dialog) == QDialog::Accepted;
}

void failPrinter(const QPrinter& printer, const QString& why) {
    throw RunTimeError(error::Printer, u"無法列印：印表機沒有回應，或已停止工作。"_s,
                       why.isEmpty() ? printer.printerName() : printer.printerName() + u": "_s + why);
}

void requireQueue(const QPrinter& printer) {
    if (printer.outputFormat() == QPrinter::NativeFormat &&
        QPrinterInfo::printerInfo(printer.printerName()).isNull())
        failPrinter(printer);
}

void endPrinting(QPainter& painter, const QPrinter& printer) {
    const bool isEnded = painter.end();
    const QString refusal = printer.outputFormat() == QPrinter::NativeFormat ? refusalOfQueue() : QString();
    if (!isEnded || printer.printerState() == QPrinter::Error || !refusal.isEmpty())
        failPrinter(printer, refusal);
    requireQueue(printer);
}

} // namespace pontrel
