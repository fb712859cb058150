#include "platform/report/CupsPrinters.h"
#include "platform/report/PrinterState.h"
#include <QPrinterInfo>

namespace platform {

namespace {

Printer printerOf(const QPrinterInfo& info) {
    if (info.isNull())
        return {};
    return {info.printerName(), info.makeAndModel(), printerPort(info.printerName())};
}

} // namespace

QList<Printer> CupsPrinters::all() {
    QList<Printer> printers;
    for (const QString& name : QPrinterInfo::availablePrinterNames())
        printers << printerOf(QPrinterInfo::printerInfo(name));
    return printers;
}

Printer CupsPrinters::defaultPrinter() {
    return printerOf(QPrinterInfo::defaultPrinter());
}

} // namespace platform
