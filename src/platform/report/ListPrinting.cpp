#include "platform/report/ListPrinting.h"
#include "platform/Dialogs.h"
#include "platform/form/FieldHelpers.h"

namespace platform {
namespace {

/// Gives the engine time to show what was written to the report's own connection.
constexpr int kPauseAfterFilling = 1000;

} // namespace

void printList(const Services& services, ReportJob list,
               const std::function<void(const Progress&)>& fillPrintTable) try {
    fillPrintTable(services.dialogs.ShowProgress(list.WindowTitle));
    waitMilliseconds(kPauseAfterFilling);
    list.orientation = ReportJob::kPortrait;
    previewForPrinter(services, std::move(list));

} catch (const GivenUp&) {

    // Nothing was chosen or shown yet.
}

void previewForPrinter(const Services& services, ReportJob report) {
    const auto choice =
        services.dialogs.ChoosePrinter({services.printers.defaultPrinter(), report.orientation});
    if (!choice)
        return;
    report.PrinterName = choice->printer.DeviceName;
    report.PrinterDriver = choice->printer.DriverName;
    report.PrinterPort = choice->printer.Port;
    report.orientation = choice->orientation;
    report.destination = ReportJob::kToWindow;
    report.windowState = ReportJob::kMaximized;
    services.reports.run(report);
}

} // namespace platform
