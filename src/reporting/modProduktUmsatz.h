#pragma once
#include "platform/Progress.h"
#include "store/Recordset.h"
#include <QString>

/// Quantity, turnover and VAT of booked lines, by product or by category. The lines of extras count with
/// their product.
namespace modProduktUmsatz {

enum class Gliederung { Produkte, Kategorien };

struct Umsatz {
    /// Columns Gruppe, TotalMenge, Ccy, TotalUmsatz, TotalMWST. Products by their keys, one that is gone
    /// without a name; categories by their names, without lines whose product or category is gone.
    store::Rows rows;
    /// Of the rows.
    double umsatz = 0, mwst = 0;
    /// Of all lines whose product is there, with or without its category.
    double umsatzVorhandener = 0;
};

/// `bestellungen` is a condition on tbl_Auftragswesen_Bestellungen_Master.
Umsatz LoadProduktUmsatz(const QString& bestellungen, Gliederung gliederung,
                         const platform::Progress& progress);

/// Puts rows with those columns into a table of the print database whose `columns` take name, currency,
/// quantity, turnover and, where it has a fifth, VAT.
void FillPrintUmsatz(const QString& table, const QStringList& columns, store::Recordset& rows,
                     const platform::Progress& progress);

} // namespace modProduktUmsatz
