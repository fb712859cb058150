#pragma once
#include "orders/WorkingOrder.h"
#include "platform/report/ReportControl.h"

/// The order slip.
namespace modAuftragswesenBestellschein {

/// Prints the order as it stands in its cells, saved or not: fills the print tables and runs the slip once a
/// copy and printer. `Ziel` 1 shows it in a window, any other value prints. The default printer is the same
/// after it.
void PrintBestellung(int Ziel, const orders::WorkingOrder& order, platform::ReportControl& report,
                     platform::Printers& printers);

/// Shows the slip of the template chosen in the settings, over what the print tables hold.
void PreviewVorlage(platform::ReportControl& report, platform::Printers& printers);

} // namespace modAuftragswesenBestellschein
