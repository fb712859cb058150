#pragma once
#include "platform/Progress.h"
#include "store/Recordset.h"
#include <QString>
#include <optional>

/// Which orders count in the turnover by product, and its paper.
namespace modAuswertungenUmsatzProdukte {

struct Auswahl {
    qint64 von = 0, bis = 0;         ///< days
    double zeitVon = 0, zeitBis = 0; ///< fractions of the day
    /// The working days from `von` to `bis`, whose hours after midnight count to the day before. The times do
    /// not matter then.
    bool fiktiv = false;
    std::optional<qint64> lng_KurierID{}; ///< nothing: all couriers
};

/// A condition on the booked orders. An order that falls on a bound exactly counts.
QString BestellungenSql(const Auswahl& auswahl);
void FillPrintArtikelUmsatz(store::Recordset& rows, const QString& vonBis,
                            const platform::Progress& progress);

} // namespace modAuswertungenUmsatzProdukte
