#pragma once
#include "orders/WorkingOrder.h"
#include "platform/report/Reports.h"

/// The order slip. A setting that names no template leaves the one of the slip before, in this run of the
/// program.
namespace modAuftragswesenBestellschein {

/// Prints the order as it stands in its cells, saved or not: fills the print tables and runs the slip once a
/// printer, with its copies. `Ziel` 1 shows it in windows, any other value prints. A printer that the user
/// gives up gets no further copy; the other one gets its own.
///
/// `note` tells what became of the order, for the message that a slip did not come out.
void PrintBestellung(int Ziel, const orders::WorkingOrder& order, platform::Reports& reports,
                     platform::Printers& printers, const QString& note = {});

/// Shows the slip of the template chosen in the settings, over what was printed last. Before the first order
/// it is an invented one, which leaves nothing behind; advertising text and VAT number of that one are handed
/// in, since the settings may not be taken over yet.
void PreviewVorlage(platform::Reports& reports, platform::Printers& printers, const QString& werbetext,
                    const QString& vatNummer);

} // namespace modAuftragswesenBestellschein
