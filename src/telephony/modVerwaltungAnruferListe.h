#pragma once
#include <QString>

namespace common {
class Value;
}

/// The list of the calls that the line has seen. DeleteAnruferListe empties it; modTelefonie::RecordCall
/// keeps it to the bound that the owner has set.
namespace modVerwaltungAnruferListe {

/// Query of the list, newest first: lng_ID, txt_Telefon, txt_Zeit, txt_Datum, lng_Datum, flag_Kunde.
QString AnruferListe();
/// Marks the call of that instant as received. Of two calls in one instant only the first is marked. A row
/// without a readable instant is nobody's call to mark.
void MarkCallReceived(const common::Value& lng_Datum);
void DeleteAnruferListe();
/// How many calls since that moment nobody has taken.
qint64 MissedCalls(double since);

} // namespace modVerwaltungAnruferListe
