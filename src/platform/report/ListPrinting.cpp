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
    const auto choice =
        services.dialogs.ChoosePrinter({services.printers.defaultPrinter(), ReportJob::kPortrait});
    if (!choice)
        return;
    list.PrinterName = choice->printer.DeviceName;
    list.PrinterDriver = choice->printer.DriverName;
    list.PrinterPort = choice->printer.Port;
    list.orientation = choice->orientation;
    list.destination = ReportJob::kToWindow;
    list.windowState = ReportJob::kMaximized;
    services.reports.run(list);

} catch (const GivenUp&) {

    // Nothing was chosen or shown yet.
}

} // namespace platform
