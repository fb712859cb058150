#include "platform/report/ListPrinting.h"
#include "platform/Dialogs.h"
#include "platform/form/FieldHelpers.h"
#include "store/StoreGlobals.h"

namespace platform {
namespace {

/// Gives the engine time to show what was written to the report's own connection.
constexpr int kPauseAfterFilling = 1000;

} // namespace

void printList(const Services& services, const QString& reportFile, const QString& title,
               const std::function<void(const Progress&)>& fillPrintTable) try {
    fillPrintTable(services.dialogs.ShowProgress(title));
    waitMilliseconds(kPauseAfterFilling);
    const auto choice =
        services.dialogs.ChoosePrinter({services.printers.defaultPrinter(), ReportControl::kPortrait});
    if (!choice)
        return;
    ReportControl& report = services.reports;
    report.ReportFileName = store::appPath() + QStringLiteral("\\Reports\\") + reportFile;
    report.DataFile = PfadPrintDB;
    report.PrinterName = choice->printer.DeviceName;
    report.PrinterDriver = choice->printer.DriverName;
    report.PrinterPort = choice->printer.Port;
    report.orientation = choice->orientation;
    report.destination = ReportControl::kToWindow;
    report.windowState = ReportControl::kMaximized;
    report.WindowTitle = title;
    report.PrintReport();

} catch (const GivenUp&) {

    // Nothing was chosen or shown yet.
}

} // namespace platform
