#pragma once
#include "platform/Progress.h"
#include "store/Recordset.h"
#include <QString>

/// Which orders count in a customer's turnover by product, and its paper.
namespace modAuswertungenUmsatzProduktePerKunde {

/// A condition on the booked orders: those of the customer from the one day to the other, both included.
QString BestellungenSql(qint64 lng_KundenID, qint64 von, qint64 bis);
void FillPrintKundenArtikelUmsatz(store::Recordset& rows, const QString& vonBis, const QString& adresse,
                                  const platform::Progress& progress);

} // namespace modAuswertungenUmsatzProduktePerKunde
