#pragma once
#include "platform/Progress.h"
#include "store/Recordset.h"
#include <QString>

/// The booked orders of a customer, and the customers with the highest turnover.
namespace modAuswertungenBuchungsjournalPerKunde {

/// Lists with the columns Datum, lng_KundenID, AuftragsNr, Ccy, Betrag; of the top customers the highest
/// first, with an empty date and number.
QString KundenStatistikSql(qint64 lng_KundenID);
QString TopKundenSql();

/// 0 without an order.
double TotalKunde(qint64 lng_KundenID, const platform::Progress& progress);
/// The total under the list of the top customers: not theirs, but that of the customer with the lowest
/// number, the cancelled orders among them. The firm's practice.
double TotalTopKunden(const platform::Progress& progress);

void FillPrintKundenUmsatz(store::Recordset& rows, const QString& adresse,
                           const platform::Progress& progress);

} // namespace modAuswertungenBuchungsjournalPerKunde
