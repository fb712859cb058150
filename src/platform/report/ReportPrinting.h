#pragma once
#include "platform/Dialogs.h"
#include "platform/report/ReportDocument.h"

namespace platform {

/// Prints on a printer of the system. A printer that is missing, stopped, refuses jobs, or a job that the
/// print service does not take is told to the user and tried again as often as he asks for it; `consolation`
/// ends that message. True when the print service took the job, false when the user gave it up.
bool printOn(const QString& printerName, const ReportDocument& report, Dialogs& dialogs,
             const QString& consolation = {});

} // namespace platform
