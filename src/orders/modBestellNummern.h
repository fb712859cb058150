#pragma once
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include <QString>
#include <optional>

/// The transaction numbers of the journal. All lookups use RsMain.
namespace modBestellNummern {

/// The next number to book: last number + 1, or the settings' first number on an empty journal. Nothing
/// without an order and a settings row.
std::optional<qint64> FindNextTrxNr();
/// Shows the number in the main window. Where none was found the database is damaged: shows the stop message
/// and ends the program.
void ShowTrxNr(std::optional<qint64> trxNr, platform::Dialogs& dialogs, platform::Navigation& navigation);
/// FindNextTrxNr, shown by ShowTrxNr.
std::optional<qint64> GetNextTrxNr(platform::Dialogs& dialogs, platform::Navigation& navigation);
/// Highest number booked; the first number of the settings in memory on an empty journal.
qint64 GetLastTrxNr();
/// Lowest number booked, as text; the same fallback.
QString GetFirstTrxNr();
/// Neighbours of a number; -1 at either end.
qint64 GetFollowingTrxNr(qint64 trxNr);
qint64 GetPrecedingTrxNr(qint64 trxNr);

} // namespace modBestellNummern
