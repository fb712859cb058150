#pragma once
#include <QString>

namespace platform {

/// What the print service says about a queue.
enum class PrinterState { Ready, Missing, Stopped, Rejecting, ServiceSilent };

/// Asks the print service. Where the platform has no such question, every printer counts as ready.
PrinterState printerState(const QString& name);

/// Why the print service did not take the job that this thread handed over last; empty when it took it. To be
/// asked right after the hand-over.
QString refusalOfLastJob();

/// Takes the queue's newest unfinished job of this user back.
void withdrawLastJob(const QString& printer);

/// The place a queue prints to, as the print service names it; empty when unknown.
QString printerPort(const QString& name);

} // namespace platform
