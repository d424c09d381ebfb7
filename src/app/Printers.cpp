#include "app/Printers.h"

#include "app/Prompts.h"
#include "store/RunTimeError.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace pontrel {

using namespace Qt::StringLiterals;

bool askForPrinter(QPrintDialog& dialog) {
    const QString caption = u"列印"_s;
    if (QPrinterInfo::availablePrinters().isEmpty())
        MsgBox(u"這部電腦沒有可用的印表機，只能列印成 PDF 檔。"_s, caption, MsgIcon::Information);
    dialog.setObjectName(u"PrintDialog"_s);
    dialog.setWindowTitle(caption);
    dialog.setAccessibleName(caption);
    return runModal(dialog) == QDialog::Accepted;
}

void failPrinter(const QPrinter& printer) {
    throw RunTimeError(error::Printer, u"無法列印：印表機沒有回應，或已停止工作。"_s, printer.printerName());
}

void requireQueue(const QPrinter& printer) {
    if (printer.outputFormat() == QPrinter::NativeFormat &&
        QPrinterInfo::printerInfo(printer.printerName()).isNull())
        failPrinter(printer);
}

} // namespace pontrel
