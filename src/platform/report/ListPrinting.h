#pragma once
#include "platform/Progress.h"
#include "platform/Services.h"
#include <QString>
#include <functional>

namespace platform {

/// Prints a list of a screen: `fillPrintTable` puts its rows into their table of the print database, then the
/// user chooses the printer and sees the list in a window that fills the screen. Nothing is shown when the
/// choice is cancelled or the filling given up.
///
/// `reportFile` is the name of the report file in the program's folder, `title` the window's.
void printList(const Services& services, const QString& reportFile, const QString& title,
               const std::function<void(const Progress&)>& fillPrintTable);

} // namespace platform
