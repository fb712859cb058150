#pragma once
#include "platform/Progress.h"
#include "platform/Services.h"
#include "platform/report/Reports.h"
#include <functional>

namespace platform {

/// Prints a list of a screen: `fillPrintTable` puts its rows into their table of the print database, then the
/// user chooses the printer and sees the list in a window that fills the screen. Nothing is shown when the
/// choice is cancelled or the filling given up.
///
/// `list` tells the report file with its data and title; printer and window are settled here.
void printList(const Services& services, ReportJob list,
               const std::function<void(const Progress&)>& fillPrintTable);

/// The second half of it: the user chooses the printer, at first with the paper as `report.orientation`
/// tells, and sees the report. Nothing is shown when he cancels.
void previewForPrinter(const Services& services, ReportJob report);

} // namespace platform
