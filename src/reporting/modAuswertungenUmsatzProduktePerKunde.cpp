#include "reporting/modAuswertungenUmsatzProduktePerKunde.h"
#include "platform/report/PrintTable.h"
#include "reporting/modProduktUmsatz.h"

using namespace Qt::StringLiterals;

namespace modAuswertungenUmsatzProduktePerKunde {

QString BestellungenSql(qint64 lng_KundenID, qint64 von, qint64 bis) {
    return u"tbl_Auftragswesen_Bestellungen_Master.lng_KundenID = %1 AND "
           u"tbl_Auftragswesen_Bestellungen_Master.lng_BestellDatum >= %2 AND "
           u"tbl_Auftragswesen_Bestellungen_Master.lng_BestellDatum <= %3"_s.arg(lng_KundenID)
               .arg(von)
               .arg(bis);
}

void FillPrintKundenArtikelUmsatz(store::Recordset& rows, const QString& vonBis, const QString& adresse,
                                  const platform::Progress& progress) {
    platform::setPrintHeading(u"KundenUmsatzVonBis"_s, vonBis);
    platform::setPrintHeading(u"KundenUmsatzKunde"_s, adresse);
    modProduktUmsatz::FillPrintUmsatz(u"PrintKundenArtikelUmsatz"_s,
                                      {u"Artikel"_s, u"Ccy"_s, u"Menge"_s, u"Umsatz"_s}, rows, progress);
}

} // namespace modAuswertungenUmsatzProduktePerKunde
